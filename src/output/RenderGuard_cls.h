// The checks that stand before a render command of the render page, in their order, with the
// texts the user sees. The page answers the questions with yes/no boxes titled "Warning"; the
// checks themselves need no window, so a test answers them. Main thread only.
#pragma once

#include <wx/string.h>

class ImageOutput_cls;
class View3D_cls;

class RenderGuard_cls {
public:
    // What the checks say and ask.
    class Dialog_cls {
    public:
        virtual ~Dialog_cls() = default;
        // A message that ends the command.
        virtual void ShowMessage(const wxString& strText) = 0;
        // A yes/no question; false is "no".
        virtual bool AskYesNo(const wxString& strText) = 0;
    };

    enum Command_enum { RENDER_ANIM, RENDER_SNAP, RENDER_PATH };

    // What the checks read of the window: the active 3D view's settings, or null without one.
    struct Scene_cls {
        View3D_cls* mpCView = nullptr;
        bool mbBGTransparent = false;
    };

    // Runs the checks of the command; true when it may start. A yes to "Not Sequence" appends
    // the four-digit tag to the pattern, a no to "Output combined stereogram ?" sets
    // "StereoOutput=" 1; rbUpdatePanel tells the page to show the changed settings.
    static bool Check(Command_enum command, ImageOutput_cls& output, const Scene_cls& scene,
                      Dialog_cls& dialog, bool& rbUpdatePanel);

    // The background colour "GLBG" is not opaque, unless the world's fog overwrites it.
    static bool IsBGTransparent();
    // The view's camera drives it with a stereo type that isn't 0 and an eye type of 3 or above.
    static bool IsStereogram(const View3D_cls& view);
};

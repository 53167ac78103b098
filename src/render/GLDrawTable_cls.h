// The drawing of each object kind: the render layer's entry in the kind table, in the draw slot
// of the kind's class word. The scene walks its objects and asks here; a kind with no entry draws
// nothing. Main thread only.
#pragma once

#include <wx/string.h>

class GLDrawStatus_cls;
class SceneObj_cls;

class GLDrawTable_cls {
public:
    // Called with the object's matrix already on the model-view.
    using DrawFunc = void (*)(SceneObj_cls* pObj, GLDrawStatus_cls& status);
    class Entry_cls {
    public:
        DrawFunc mFuncGLDraw = nullptr;
        // The pass after all objects, without depth test.
        DrawFunc mFuncGLDrawXray = nullptr;
        // The shadow volumes of the object (the volume phase of a shadow step); none: it casts
        // no shadow.
        DrawFunc mFuncGLDrawSV = nullptr;
        // Its colour comes from the lights: it is drawn on every shadow step and again in the
        // shadowed area. A kind drawn without light is drawn on the first step only.
        bool mbLit = false;
    };

    // Puts the entry on the kind's own entry of the kind table (made there when the scene has
    // not registered the kind, as in a registry that stops below the scene's kinds).
    static void Register(const wxString& strClass, const Entry_cls& entry);
    // Null for a class word with no draw entry.
    static const Entry_cls* GetPCEntry(const wxString& strClass);
};

// The drawing of each object kind, keyed by class word: one entry per kind, registered once by
// the render layer's registration. The scene walks its objects and asks this table; a kind with
// no entry draws nothing. Main thread only.
#pragma once

#include <wx/string.h>

#include <map>

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
    };

    static void Register(const wxString& strClass, const Entry_cls& entry);
    // Null for a class word with no entry.
    static const Entry_cls* GetPCEntry(const wxString& strClass);
    static void Clear() { Table().clear(); }

private:
    static std::map<wxString, Entry_cls>& Table();
};

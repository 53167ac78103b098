// The few calls the configuration items make upward into the application core. The core
// installs itself; with nothing installed the calls do nothing and paths are written relative.
#pragma once

#include <wx/string.h>

class TextHost_cls {
public:
    virtual ~TextHost_cls() = default;
    // Queue a panel-update request ("OUTLINER::VIEW3D").
    virtual void UpdatePanels(const wxString& strPanels) = 0;
    // Record an undo pair and run its do text.
    virtual void PushCommandPairAndRedo(const wxString& strUndo, const wxString& strDo) = 0;
    // The RelativePath= preference: 0 writes raw paths absolute, anything else relative.
    virtual int GetRelativePathMode() = 0;
    // The PrefGZQuality= preference: 1 compresses fast, anything else small.
    virtual int GetGZQuality() { return 0; }

    // Main thread only. Not owned.
    static void Install(TextHost_cls* pHost) { mspHost = pHost; }
    static TextHost_cls* Get() { return mspHost; }
    // The one road of an edit from below the core: the installed host records the pair and runs
    // the do text; with no host the edit is dropped. Main thread only.
    static void PushAndRedo(const wxString& strUndo, const wxString& strDo) {
        if (mspHost)
            mspHost->PushCommandPairAndRedo(strUndo, strDo);
    }

private:
    static inline TextHost_cls* mspHost = nullptr;
};

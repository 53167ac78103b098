// The preference window: every preference key (paths, tool tips, gzip, memory limits, read
// ahead, particle limits, the GL depth buffer and range) and the mouse preferences as a table
// of fields, and the shortcut keys, one text per command. Every change is a command, so it
// undoes; the window follows edits made elsewhere (undo, a project that holds preferences)
// through the preference's update hook. Main thread only.
#pragma once

#include "PropertyField_cls.h"
#include "Shortcut_cls.h"

#include <wx/dialog.h>

#include <vector>

class PropertyFieldPanel_cls;
class wxTextCtrl;

class PreferenceDialog_cls : public wxDialog {
public:
    explicit PreferenceDialog_cls(wxWindow* pParent);
    ~PreferenceDialog_cls() override;

    static PropertyField_cls::Table_type GetVField();
    // The open window, made on first use; its parent is the first argument of that call.
    static PreferenceDialog_cls* GetInstance(wxWindow* pParent);

    // A shortcut field's Enter: sets the key, or shows the key again when it is refused.
    bool SetShortcutFromText(int index, const wxString& strKey);
    void RefreshFromSettings();

    PropertyFieldPanel_cls* mpCFields = nullptr;
    std::vector<wxTextCtrl*> mVPCShortcut; // one per command of GpCShortcut, then of GpCTextShortcut

private:
    // The entry of a field's index across the two tables, and its table; null past their end.
    static Shortcut_cls::Entry_cls* GetPCShortcutEntry(int index, Shortcut_cls** ppTable);
    static PreferenceDialog_cls* msInstance;
};

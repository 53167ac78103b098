// The control that chooses the interpolation of new keys ("DefaultKey=" of the clock): a combo
// box of the five kinds with their icons, and a button that shows the current kind and applies
// it to the selected keys. Lives in the play strip. Main thread only.
#pragma once

#include <wx/panel.h>

#include <functional>

class wxBitmapButton;
class wxBitmapComboBox;
class wxCommandEvent;

enum DefaultKeyId_enum { ID_DEFAULT_KEY_COMBO = 5003, ID_DEFAULT_KEY_BUTTON = 5157 };

class DefaultKey_cls : public wxPanel {
public:
    explicit DefaultKey_cls(wxWindow* pParent);

    // The icon of a "DefaultKey=" value, normal or pressed; empty outside 0 to 4.
    static wxString GetIconTag(int value, bool bPressed);

    // The combo's choice: looks the text up in the "DefaultKey" list, stores the index through
    // a command pair and updates the panels that draw keys.
    void ProcDefaultKey();
    // Applies the current kind to the selected keys, unless it is the automatic one (-1).
    void ProcButtonDefaultKey();
    // The button and the combo show the clock's current value.
    void UpdateDefaultKeyIcon();

    void OnComboDefaultKey(wxCommandEvent& event);
    void OnButtonDefaultKey(wxCommandEvent& event);

    wxBitmapComboBox* GetPCCombo() const { return mpCCombo; }
    wxBitmapButton* GetPCButton() const { return mpCButton; }

    // Where the button sends (type, ease). Unset, it goes to
    // Main_cls::SetSelectedTLKeyTypeCommand; tests install a recorder.
    static std::function<void(int, double)> msFuncApplyToSelectedKeys;

private:
    wxBitmapComboBox* mpCCombo = nullptr; // child windows: the toolkit deletes them
    wxBitmapButton* mpCButton = nullptr;
    int mShownValue = -1;
};

#include "DefaultKey_cls.h"

#include "ClassProvider_cls.h"
#include "Main_cls.h"
#include "TimeCtrl_cls.h"
#include "UiStringTable_cls.h"

#include <wx/artprov.h>
#include <wx/bmpbuttn.h>
#include <wx/bmpcbox.h>
#include <wx/log.h>
#include <wx/sizer.h>

std::function<void(int, double)> DefaultKey_cls::msFuncApplyToSelectedKeys;

namespace {

const int kDefaultKeyCount = 5;
const wxSize kIconSize(16, 16);

wxBitmap GetIcon(int value, bool bPressed) {
    return wxArtProvider::GetBitmap(DefaultKey_cls::GetIconTag(value, bPressed), wxART_OTHER, kIconSize);
}

} // namespace

DefaultKey_cls::DefaultKey_cls(wxWindow* pParent) : wxPanel(pParent, wxID_ANY) {
    mpCCombo = new wxBitmapComboBox(this, ID_DEFAULT_KEY_COMBO, wxString(), wxDefaultPosition, wxDefaultSize,
                                    0, nullptr, wxCB_READONLY);
    const std::vector<wxString>& vStrEntries = UiStringTable_cls::GetList("DefaultKey");
    for (int i = 0; i < kDefaultKeyCount && i < static_cast<int>(vStrEntries.size()); ++i)
        mpCCombo->Append(vStrEntries[i], GetIcon(i, false));
    mpCButton = new wxBitmapButton(this, ID_DEFAULT_KEY_BUTTON, GetIcon(4, false));
    mpCButton->SetToolTip(_("Apply the key type to the selected keys"));
    auto* pSizer = new wxBoxSizer(wxHORIZONTAL);
    pSizer->Add(mpCCombo, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 2);
    pSizer->Add(mpCButton, 0, wxALIGN_CENTER_VERTICAL);
    SetSizer(pSizer);
    Bind(wxEVT_COMBOBOX, &DefaultKey_cls::OnComboDefaultKey, this, ID_DEFAULT_KEY_COMBO);
    Bind(wxEVT_BUTTON, &DefaultKey_cls::OnButtonDefaultKey, this, ID_DEFAULT_KEY_BUTTON);
    UpdateDefaultKeyIcon();
}

wxString DefaultKey_cls::GetIconTag(int value, bool bPressed) {
    static const char* const sTags[kDefaultKeyCount] = {"wxART_TLICON_LINEAR", "wxART_TLICON_HERMITE_AUTO",
                                                        "wxART_TLICON_HERMITE_EASE", "wxART_TLICON_STEP",
                                                        "wxART_TLICON_AUTO"};
    if (value < 0 || value >= kDefaultKeyCount)
        return wxString();
    wxString strTag = sTags[value];
    if (bPressed)
        return strTag + "_P";
    // The automatic kind has no "_N" form.
    return value == 4 ? strTag : strTag + "_N";
}

void DefaultKey_cls::ProcDefaultKey() {
    if (!GpCTimeCtrl)
        return;
    wxString strText = mpCCombo->GetStringSelection();
    int index = UiStringTable_cls::FindInList("DefaultKey", strText);
    if (index < 0) {
        wxLogWarning("Unknown key type \"%s\"", strText);
        return;
    }
    if (index != GpCTimeCtrl->GetDefaultKey())
        GpCTimeCtrl->mCDefaultKey.PushCommandPair(wxString::Format("%d", index));
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("CONSOLE::TIMELINE::GRAPH::COLOR_CURVE");
    UpdateDefaultKeyIcon();
}

void DefaultKey_cls::ProcButtonDefaultKey() {
    if (!GpCTimeCtrl)
        return;
    int type = -1;
    double ease = 1.0;
    GpCTimeCtrl->GetDefaultKeyTypeAndEase(&type, &ease);
    if (type == -1)
        return;
    if (msFuncApplyToSelectedKeys)
        msFuncApplyToSelectedKeys(type, ease);
    else if (GCClassProvider)
        GCClassProvider->SetSelectedTLKeyTypeCommand(type, ease);
}

void DefaultKey_cls::UpdateDefaultKeyIcon() {
    if (!GpCTimeCtrl)
        return;
    int value = GpCTimeCtrl->GetDefaultKey();
    if (value < 0 || value >= kDefaultKeyCount)
        return;
    if (mpCCombo->GetSelection() != value)
        mpCCombo->SetSelection(value);
    if (value == mShownValue)
        return;
    mShownValue = value;
    mpCButton->SetBitmapLabel(GetIcon(value, false));
    mpCButton->SetBitmapPressed(GetIcon(value, true));
}

void DefaultKey_cls::OnComboDefaultKey(wxCommandEvent&) {
    ProcDefaultKey();
}

void DefaultKey_cls::OnButtonDefaultKey(wxCommandEvent&) {
    ProcButtonDefaultKey();
}

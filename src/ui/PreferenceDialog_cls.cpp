#include "PreferenceDialog_cls.h"

#include "ClassProvider_cls.h"
#include "MousePreference_cls.h"
#include "Preference_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "Shortcut_cls.h"

#include <wx/intl.h>
#include <wx/notebook.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

PreferenceDialog_cls* PreferenceDialog_cls::msInstance = nullptr;

namespace {
using F = PropertyField_cls;
using W = PropertyField_cls::Widget_enum;
} // namespace

PropertyField_cls::Table_type PreferenceDialog_cls::GetVField() {
    const wxString p = "Preference", m = "MousePreference";
    return {
        F::Section("General"),
        F::Item(p, "RelativePath=", "Write paths relative to the project", W::WIDGET_CHECK),
        F::Item(p, "ToolTip=", "Tool tips", W::WIDGET_CHECK),
        F::Item(p, "PrefGZQuality=", "Gzip files", W::WIDGET_CHOICE),
        F::Section("Memory"),
        F::Number(p, "MemoryLimitMB=", "Memory limit (MB)", 16, 1e9),
        F::Number(p, "MemoryLimitTexMB=", "Texture memory limit (MB)", 16, 1e9),
        F::Number(p, "PrefetchLength=", "Frames read ahead", 0, 100000),
        F::Number(p, "ParticleMax=", "Particles read at most (thousands)", 1, 1e12),
        F::Number(p, "ParticleVBOMax=", "Particles per GPU buffer (thousands)", 1, 1e12),
        F::Section("OpenGL"),
        F::Item(p, "GLDepthIndex=", "Depth buffer", W::WIDGET_CHOICE),
        F::Number(p, "GLDepthMin=", "Near plane", 1e-9, 1e300),
        F::Number(p, "GLDepthMax=", "Far plane", 1e-9, 1e300),
        F::Section("Mouse"),
        F::Item(m, "InvertGyrationX=", "Invert orbit left and right", W::WIDGET_CHECK),
        F::Item(m, "InvertGyrationY=", "Invert orbit up and down", W::WIDGET_CHECK),
        F::Item(m, "InvertZoom=", "Invert zoom", W::WIDGET_CHECK),
        F::Item(m, "InvertPan=", "Invert pan", W::WIDGET_CHECK),
    };
}

PreferenceDialog_cls::PreferenceDialog_cls(wxWindow* pParent)
    : wxDialog(pParent, wxID_ANY, _("Preference"), wxDefaultPosition, wxSize(460, 560),
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    auto* pBook = new wxNotebook(this, wxID_ANY);
    auto* pPrefPage = new wxScrolledWindow(pBook, wxID_ANY);
    mpCFields = new PropertyFieldPanel_cls(pPrefPage, GetVField(), [](const wxString& strAttr) {
        ConfListContainer_cls* pList = nullptr;
        if (strAttr == "Preference")
            pList = GpCPreference;
        else if (strAttr == "MousePreference")
            pList = GpCMousePreference;
        return pList;
    });
    auto* pPrefSizer = new wxBoxSizer(wxVERTICAL);
    pPrefSizer->Add(mpCFields, 0, wxEXPAND);
    pPrefPage->SetSizer(pPrefSizer);
    pPrefPage->SetScrollRate(0, 10);
    pBook->AddPage(pPrefPage, _("Preference"), true);

    auto* pKeyPage = new wxScrolledWindow(pBook, wxID_ANY);
    auto* pGrid = new wxFlexGridSizer(2, wxSize(6, 3));
    pGrid->AddGrowableCol(1);
    // The frame's keys, then the text editor's under a heading; the fields count through both.
    for (Shortcut_cls* pTable : {GpCShortcut, GpCTextShortcut}) {
        if (!pTable)
            continue;
        if (pTable == GpCTextShortcut) {
            auto* pHeading = new wxStaticText(pKeyPage, wxID_ANY, _("Text Editor"));
            pHeading->SetFont(pHeading->GetFont().Bold());
            pGrid->Add(pHeading, 0, wxTOP, 8);
            pGrid->AddSpacer(0);
        }
        for (const Shortcut_cls::Entry_cls& entry : pTable->mVEntry) {
            pGrid->Add(new wxStaticText(pKeyPage, wxID_ANY, wxGetTranslation(entry.mStrName)), 0,
                       wxALIGN_CENTER_VERTICAL);
            // The default window name "text" keeps the shortcuts themselves out of typing a key.
            auto* pText = new wxTextCtrl(pKeyPage, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                         wxTE_PROCESS_ENTER);
            const int index = static_cast<int>(mVPCShortcut.size());
            pText->Bind(wxEVT_TEXT_ENTER, [this, index, pText](wxCommandEvent&) {
                SetShortcutFromText(index, pText->GetValue());
            });
            pGrid->Add(pText, 1, wxEXPAND);
            mVPCShortcut.push_back(pText);
        }
    }
    auto* pKeySizer = new wxBoxSizer(wxVERTICAL);
    pKeySizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    pKeyPage->SetSizer(pKeySizer);
    pKeyPage->SetScrollRate(0, 10);
    pBook->AddPage(pKeyPage, _("Shortcut"), false);

    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(pBook, 1, wxEXPAND | wxALL, 4);
    pSizer->Add(CreateButtonSizer(wxCLOSE), 0, wxEXPAND | wxALL, 4);
    SetSizer(pSizer);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Hide(); }, wxID_CLOSE);
    if (GpCPreference)
        GpCPreference->mFuncUpdatePanels = [this](const wxString&) { RefreshFromSettings(); };
    RefreshFromSettings();
}

PreferenceDialog_cls::~PreferenceDialog_cls() {
    if (GpCPreference)
        GpCPreference->mFuncUpdatePanels = nullptr;
    if (msInstance == this)
        msInstance = nullptr;
}

PreferenceDialog_cls* PreferenceDialog_cls::GetInstance(wxWindow* pParent) {
    if (!msInstance)
        msInstance = new PreferenceDialog_cls(pParent);
    return msInstance;
}

Shortcut_cls::Entry_cls* PreferenceDialog_cls::GetPCShortcutEntry(int index, Shortcut_cls** ppTable) {
    for (Shortcut_cls* pTable : {GpCShortcut, GpCTextShortcut}) {
        if (!pTable || index < 0)
            continue;
        if (index < static_cast<int>(pTable->mVEntry.size())) {
            *ppTable = pTable;
            return &pTable->mVEntry[static_cast<size_t>(index)];
        }
        index -= static_cast<int>(pTable->mVEntry.size());
    }
    return nullptr;
}

bool PreferenceDialog_cls::SetShortcutFromText(int index, const wxString& strKey) {
    Shortcut_cls* pTable = nullptr;
    const Shortcut_cls::Entry_cls* pEntry = GetPCShortcutEntry(index, &pTable);
    const bool bOK = pEntry && pTable->SetKeyCommand(pEntry->mStrName, strKey);
    RefreshFromSettings();
    return bOK;
}

void PreferenceDialog_cls::RefreshFromSettings() {
    mpCFields->RefreshFromObject();
    Shortcut_cls* pTable = nullptr;
    for (size_t i = 0; i < mVPCShortcut.size(); ++i)
        if (const Shortcut_cls::Entry_cls* pEntry = GetPCShortcutEntry(static_cast<int>(i), &pTable))
            mVPCShortcut[i]->ChangeValue(pEntry->mStrKey);
}

#include "PlayCtrl_cls.h"

#include "ClassProvider_cls.h"
#include "DefaultKey_cls.h"
#include "Main_cls.h"
#include "TimeCtrl_cls.h"
#include "UiStringTable_cls.h"

#include <wx/artprov.h>
#include <wx/bmpbuttn.h>
#include <wx/combobox.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/tglbtn.h>
#include <wx/wrapsizer.h>

namespace {

const wxSize kIconSize(20, 20);

struct TransportButton {
    int id;
    const char* strArt;
};

// In the order of the strip.
const TransportButton kTransport[6] = {{ID_PLAY_TO_START, "wxART_STARTPOINT"},
                                       {ID_PLAY_BACKWARD, "wxART_PLAY_BACK"},
                                       {ID_PLAY_STEP_BACKWARD, "wxART_STEP_BACKWARD"},
                                       {ID_PLAY_STEP_FORWARD, "wxART_STEP_FORWARD"},
                                       {ID_PLAY_FORWARD, "wxART_PLAY"},
                                       {ID_PLAY_TO_END, "wxART_ENDPOINT"}};

// The largest value the spins offer; the clock itself takes any.
const int kSpinMax = 10000;

} // namespace

PlayCtrl_cls::PlayCtrl_cls(wxWindow* pParent)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, "PlayCtrl") {
    // A narrow host wraps the strip onto a second row rather than cutting it off.
    auto* pSizer = new wxWrapSizer(wxHORIZONTAL);
    for (int i = 0; i < 6; ++i) {
        mpCButtons[i] = new wxBitmapButton(
            this, kTransport[i].id, wxArtProvider::GetBitmap(kTransport[i].strArt, wxART_OTHER, kIconSize));
        pSizer->Add(mpCButtons[i], 0, wxALIGN_CENTER_VERTICAL);
        Bind(wxEVT_BUTTON, &PlayCtrl_cls::OnButton, this, kTransport[i].id);
    }
    pSizer->AddSpacer(8);

    pSizer->Add(new wxStaticText(this, wxID_ANY, _("Stepping")), 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 2);
    mpCSpinStepping = new wxSpinCtrl(this, ID_PLAY_STEPPING, wxString(), wxDefaultPosition, wxDefaultSize,
                                     wxSP_ARROW_KEYS, 1, kSpinMax, 1);
    pSizer->Add(mpCSpinStepping, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 6);
    pSizer->Add(new wxStaticText(this, wxID_ANY, _("Interval")), 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 2);
    mpCSpinInterval = new wxSpinCtrl(this, ID_PLAY_INTERVAL, wxString(), wxDefaultPosition, wxDefaultSize,
                                     wxSP_ARROW_KEYS, 1, kSpinMax, 2);
    pSizer->Add(mpCSpinInterval, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 6);
    Bind(wxEVT_SPINCTRL, &PlayCtrl_cls::OnSpinStepping, this, ID_PLAY_STEPPING);
    Bind(wxEVT_SPINCTRL, &PlayCtrl_cls::OnSpinInterval, this, ID_PLAY_INTERVAL);

    wxArrayString aStrComposite;
    for (const wxString& str : UiStringTable_cls::GetList("Composite"))
        aStrComposite.Add(str);
    mpCComboComposite = new wxComboBox(this, ID_PLAY_COMPOSITE, wxString(), wxDefaultPosition, wxDefaultSize,
                                       aStrComposite, wxCB_READONLY);
    pSizer->Add(mpCComboComposite, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 6);
    Bind(wxEVT_COMBOBOX, &PlayCtrl_cls::OnComboComposite, this, ID_PLAY_COMPOSITE);

    mpCDefaultKey = new DefaultKey_cls(this);
    pSizer->Add(mpCDefaultKey, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 6);

    mpCToggleRepeat = new wxBitmapToggleButton(
        this, ID_PLAY_REPEAT, wxArtProvider::GetBitmap("wxART_REPEAT", "wxART_TOOLBAR_C", kIconSize));
    mpCToggleRepeat->SetToolTip(_("Repeat"));
    pSizer->Add(mpCToggleRepeat, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 2);
    Bind(wxEVT_TOGGLEBUTTON, &PlayCtrl_cls::OnToggleRepeat, this, ID_PLAY_REPEAT);
    mpCToggleAutoAbort = new wxToggleButton(this, ID_PLAY_AUTO_ABORT, _("AutoAbort"));
    pSizer->Add(mpCToggleAutoAbort, 0, wxALIGN_CENTER_VERTICAL);
    Bind(wxEVT_TOGGLEBUTTON, &PlayCtrl_cls::OnToggleAutoAbort, this, ID_PLAY_AUTO_ABORT);

    SetSizer(pSizer);
    // Keys typed in the strip belong to the host's handler (the shortcuts of the panel).
    for (wxWindow* pChild : GetChildren())
        pChild->Bind(wxEVT_KEY_DOWN, &PlayCtrl_cls::OnKeyDown, this);
    Bind(wxEVT_KEY_DOWN, &PlayCtrl_cls::OnKeyDown, this);
    UpdatePanels();
}

wxBitmapButton* PlayCtrl_cls::GetPCButton(int id) const {
    for (int i = 0; i < 6; ++i)
        if (kTransport[i].id == id)
            return mpCButtons[i];
    return nullptr;
}

// ---- showing the clock ----------------------------------------------------------------------

void PlayCtrl_cls::UpdatePanels() {
    UpdateDisplayedValues();
    UpdateButtonColor();
}

void PlayCtrl_cls::UpdateDisplayedValues() {
    if (!GpCTimeCtrl)
        return;
    if (mpCSpinStepping->GetValue() != GpCTimeCtrl->GetSubFrameStepping())
        mpCSpinStepping->SetValue(GpCTimeCtrl->GetSubFrameStepping());
    if (mpCSpinInterval->GetValue() != GpCTimeCtrl->GetSubFrameMax())
        mpCSpinInterval->SetValue(GpCTimeCtrl->GetSubFrameMax());
    int composite = UiStringTable_cls::FindInList("Composite", "Image");
    if (GpCTimeCtrl->IsInterpolateComposite())
        mpCComboComposite->SetSelection(composite);
    else
        mpCComboComposite->SetSelection(composite == 0 ? 1 : 0);
    if (mpCToggleRepeat->GetValue() != GpCTimeCtrl->GetRepeat())
        mpCToggleRepeat->SetValue(GpCTimeCtrl->GetRepeat());
    mpCDefaultKey->UpdateDefaultKeyIcon();
}

void PlayCtrl_cls::MarkButton(wxWindow* pButton, bool bMark) {
    if (bMark)
        pButton->SetBackgroundColour(GetMarkColour());
    else
        pButton->SetBackgroundColour(wxNullColour);
    pButton->Refresh();
}

void PlayCtrl_cls::UpdateButtonColor() {
    int direction = GpCTimeCtrl ? GpCTimeCtrl->GetPlayDirection() : 0;
    MarkButton(GetPCButton(ID_PLAY_FORWARD), direction == 1);
    MarkButton(GetPCButton(ID_PLAY_BACKWARD), direction == -1);
    MarkButton(mpCToggleRepeat, GpCTimeCtrl && GpCTimeCtrl->GetRepeat());
}

// ---- controls -------------------------------------------------------------------------------

void PlayCtrl_cls::OnButton(wxCommandEvent& event) {
    if (!GpCTimeCtrl)
        return;
    switch (event.GetId()) {
    case ID_PLAY_TO_START:
        GpCTimeCtrl->SetCurrentFrameToEndCommand(-1);
        break;
    case ID_PLAY_BACKWARD:
        GpCTimeCtrl->StartPlayCommand(-1);
        if (GCClassProvider)
            GCClassProvider->UpdatePanels("TIMELINE");
        break;
    case ID_PLAY_STEP_BACKWARD:
        GpCTimeCtrl->SetCurrentFrameToNextCommand(-1);
        break;
    case ID_PLAY_STEP_FORWARD:
        GpCTimeCtrl->SetCurrentFrameToNextCommand(1);
        break;
    case ID_PLAY_FORWARD:
        GpCTimeCtrl->StartPlayCommand(1);
        if (GCClassProvider)
            GCClassProvider->UpdatePanels("TIMELINE");
        break;
    case ID_PLAY_TO_END:
        GpCTimeCtrl->SetCurrentFrameToEndCommand(1);
        break;
    default:
        break;
    }
    UpdateButtonColor();
}

void PlayCtrl_cls::WriteSpinValue(wxSpinCtrl* pSpin, bool bStepping) {
    if (!GpCTimeCtrl)
        return;
    ConfItemINT_cls& item = bStepping ? GpCTimeCtrl->mCSubFrameStepping : GpCTimeCtrl->mCSubFrameMax;
    int value = pSpin->GetValue();
    if (value == static_cast<int>(item.GetBodyINT()))
        return;
    item.PushCommandPair(wxString::Format("%d", value));
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("CONSOLE::TIMELINE");
}

void PlayCtrl_cls::OnSpinStepping(wxSpinEvent&) {
    WriteSpinValue(mpCSpinStepping, true);
}

void PlayCtrl_cls::OnSpinInterval(wxSpinEvent&) {
    WriteSpinValue(mpCSpinInterval, false);
}

void PlayCtrl_cls::OnComboComposite(wxCommandEvent&) {
    if (!GpCTimeCtrl)
        return;
    bool bImage = mpCComboComposite->GetStringSelection() == "Image";
    if (bImage != GpCTimeCtrl->IsInterpolateComposite())
        GpCTimeCtrl->mCInterpolateComposite.PushCommandPair(bImage ? "1" : "0");
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("CONSOLE::TIMELINE");
}

void PlayCtrl_cls::OnToggleRepeat(wxCommandEvent&) {
    if (!GpCTimeCtrl)
        return;
    bool bRepeat = mpCToggleRepeat->GetValue();
    if (bRepeat != GpCTimeCtrl->GetRepeat())
        GpCTimeCtrl->SetRepeatCommand(bRepeat);
    UpdateButtonColor();
}

void PlayCtrl_cls::OnToggleAutoAbort(wxCommandEvent&) {}

void PlayCtrl_cls::OnKeyDown(wxKeyEvent& event) {
    wxWindow* pParent = GetParent();
    if (pParent && pParent->GetEventHandler()->ProcessEvent(event))
        return;
    event.Skip();
}

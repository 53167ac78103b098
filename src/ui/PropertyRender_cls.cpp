#include "PropertyRender_cls.h"

#include "ImageOutput_cls.h"
#include "ImgSizeTemplate_cls.h"
#include "Main_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

std::function<View3D_cls*()> PropertyRender_cls::msFuncGetActiveView;

namespace {
// The page's questions as message boxes titled "Warning".
class MessageBoxDialog_cls : public RenderGuard_cls::Dialog_cls {
public:
    explicit MessageBoxDialog_cls(wxWindow* pParent) : mpParent(pParent) {}
    void ShowMessage(const wxString& strText) override {
        wxMessageBox(strText, "Warning", wxOK | wxICON_WARNING, mpParent);
    }
    bool AskYesNo(const wxString& strText) override {
        return wxMessageBox(strText, "Warning", wxYES_NO | wxICON_WARNING, mpParent) == wxYES;
    }

private:
    wxWindow* mpParent;
};

const char* const kSizeGroups[ImgSizeTemplate_cls::msGroupNum] = {"4:3", "16:9", "1:1", "2:1"};
} // namespace

PropertyRender_cls::PropertyRender_cls(wxWindow* pParent) : wxPanelEX(pParent, _PANEL_PROPERTY_RENDER) {
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    auto* pGrid = new wxFlexGridSizer(2, wxSize(6, 4));
    pGrid->AddGrowableCol(1);
    auto addRow = [&](const wxString& strLabel, wxWindow* pControl) {
        pGrid->Add(new wxStaticText(this, wxID_ANY, strLabel), 0, wxALIGN_CENTER_VERTICAL);
        pGrid->Add(pControl, 1, wxEXPAND);
    };
    // The window name "text" keeps the frame's shortcuts out of typing.
    mpCOutput = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxTE_PROCESS_ENTER, wxDefaultValidator, "text");
    addRow(_("Output"), mpCOutput);
    mpCWidth = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxTE_PROCESS_ENTER, wxDefaultValidator, "text");
    addRow(_("Width"), mpCWidth);
    mpCHeight = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxTE_PROCESS_ENTER, wxDefaultValidator, "text");
    addRow(_("Height"), mpCHeight);
    mpCSizeType = new wxChoice(this, wxID_ANY);
    for (const char* p : kSizeGroups)
        mpCSizeType->Append(p);
    addRow(_("Aspect"), mpCSizeType);
    mpCSizeIndex = new wxChoice(this, wxID_ANY);
    addRow(_("Size"), mpCSizeIndex);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    mpCAlpha = new wxCheckBox(this, wxID_ANY, _("Alpha"));
    mpCStereoOutput = new wxCheckBox(this, wxID_ANY, _("A file per eye"));
    mpCRenderFromIn = new wxCheckBox(this, wxID_ANY, "Render From Start Frame");
    for (wxCheckBox* p : {mpCAlpha, mpCStereoOutput, mpCRenderFromIn})
        pSizer->Add(p, 0, wxALL, 4);
    auto* pButtons = new wxBoxSizer(wxHORIZONTAL);
    mpCRenderSnap = new wxButton(this, wxID_ANY, _("Render Snap"));
    mpCRenderAnim = new wxButton(this, wxID_ANY, _("Render Anim"));
    mpCRenderPath = new wxButton(this, wxID_ANY, _("Check Path"));
    for (wxButton* p : {mpCRenderSnap, mpCRenderAnim, mpCRenderPath})
        pButtons->Add(p, 0, wxALL, 2);
    pSizer->Add(pButtons, 0, wxALL, 4);
    SetSizer(pSizer);
    SetScrollRate(0, 10);

    mpCOutput->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) {
        if (GpCImageOutput)
            GpCImageOutput->mCFileFormat.PushCommandPair(mpCOutput->GetValue());
        RefreshFromOutput();
    });
    auto onSize = [this](wxCommandEvent&) {
        if (!SetSizeFromText(mpCWidth->GetValue(), mpCHeight->GetValue()))
            RefreshFromOutput();
    };
    mpCWidth->Bind(wxEVT_TEXT_ENTER, onSize);
    mpCHeight->Bind(wxEVT_TEXT_ENTER, onSize);
    mpCSizeType->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { SetTemplate(mpCSizeType->GetSelection(), 1); });
    mpCSizeIndex->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
        SetTemplate(mpCSizeType->GetSelection(), mpCSizeIndex->GetSelection());
    });
    using ItemOf = ConfItem_cls& (*)(ImageOutput_cls&);
    auto bindCheck = [this](wxCheckBox* pBox, ItemOf funcItem) {
        pBox->Bind(wxEVT_CHECKBOX, [this, funcItem](wxCommandEvent& event) {
            if (GpCImageOutput)
                funcItem(*GpCImageOutput).PushCommandPair(event.IsChecked() ? "1" : "0");
            RefreshFromOutput();
        });
    };
    bindCheck(mpCAlpha, [](ImageOutput_cls& o) -> ConfItem_cls& { return o.mCImageAlpha; });
    bindCheck(mpCStereoOutput, [](ImageOutput_cls& o) -> ConfItem_cls& { return o.mCStereoOutput; });
    bindCheck(mpCRenderFromIn, [](ImageOutput_cls& o) -> ConfItem_cls& { return o.mCRenderFromIn; });
    mpCRenderSnap->Bind(wxEVT_BUTTON, &PropertyRender_cls::OnRenderSnap, this);
    mpCRenderAnim->Bind(wxEVT_BUTTON, &PropertyRender_cls::OnRenderAnim, this);
    mpCRenderPath->Bind(wxEVT_BUTTON, &PropertyRender_cls::OnRenderPath, this);
    RefreshFromOutput();
}

void PropertyRender_cls::UpdatePage(const wxString& strName) {
    if (strName == "PROPERTY_RENDER" || strName == "PROPERTY" || strName == "ALL")
        RefreshFromOutput();
}

void PropertyRender_cls::FillSizeIndex(int group) {
    mpCSizeIndex->Clear();
    for (int i = 0; i < ImgSizeTemplate_cls::msEntryNum; ++i)
        mpCSizeIndex->Append(ImgSizeTemplate_cls::GetStrGeom(group, i));
}

void PropertyRender_cls::RefreshFromOutput() {
    const bool bOutput = GpCImageOutput != nullptr;
    for (wxWindow* p : GetChildren())
        p->Enable(bOutput);
    if (!bOutput)
        return;
    const ImageOutput_cls& output = *GpCImageOutput;
    mpCOutput->ChangeValue(output.mCFileFormat.GetBodySTR());
    mpCWidth->ChangeValue(wxString::Format("%d", output.GetSize().x));
    mpCHeight->ChangeValue(wxString::Format("%d", output.GetSize().y));
    const int group = static_cast<int>(output.mCSizeType.GetBodyINT());
    mpCSizeType->SetSelection(group >= 0 && group < ImgSizeTemplate_cls::msGroupNum ? group : wxNOT_FOUND);
    FillSizeIndex(std::max(0, std::min(group, ImgSizeTemplate_cls::msGroupNum - 1)));
    const int index = static_cast<int>(output.mCSizeIndex.GetBodyINT());
    mpCSizeIndex->SetSelection(index >= 0 && index < ImgSizeTemplate_cls::msEntryNum ? index : wxNOT_FOUND);
    mpCAlpha->SetValue(output.IsAlpha());
    mpCStereoOutput->SetValue(output.GetStereoOutput() == 1);
    mpCRenderFromIn->SetValue(output.IsRenderFromIn());
}

bool PropertyRender_cls::SetSizeFromText(const wxString& strWidth, const wxString& strHeight) {
    long width = 0, height = 0;
    if (!GpCImageOutput || !strWidth.ToLong(&width) || !strHeight.ToLong(&height) || width < 1 || height < 1)
        return false;
    // A typed size is the "Custom" entry of its group.
    GpCUndo->OpenBlock("ImageSize");
    GpCImageOutput->mCWidth.PushCommandPair(wxString::Format("%ld", width));
    GpCImageOutput->mCHeight.PushCommandPair(wxString::Format("%ld", height));
    GpCImageOutput->mCSizeIndex.PushCommandPair("0");
    GpCUndo->CloseBlock("ImageSize");
    RefreshFromOutput();
    return true;
}

void PropertyRender_cls::SetTemplate(int group, int index) {
    if (!GpCImageOutput || group < 0)
        return;
    long long width = GpCImageOutput->GetSize().x, height = GpCImageOutput->GetSize().y;
    ImgSizeTemplate_cls::GetGeometryFromIndex(group, index, width, height);
    GpCUndo->OpenBlock("ImageSize");
    GpCImageOutput->mCSizeType.PushCommandPair(wxString::Format("%d", group));
    GpCImageOutput->mCSizeIndex.PushCommandPair(wxString::Format("%d", index));
    GpCImageOutput->mCWidth.PushCommandPair(wxString::Format("%lld", width));
    GpCImageOutput->mCHeight.PushCommandPair(wxString::Format("%lld", height));
    GpCUndo->CloseBlock("ImageSize");
    RefreshFromOutput();
}

bool PropertyRender_cls::RunChecks(RenderGuard_cls::Command_enum command) {
    if (!GpCImageOutput || !GpCTimeCtrl)
        return false;
    MessageBoxDialog_cls boxes(this);
    RenderGuard_cls::Scene_cls scene;
    scene.mpCView = msFuncGetActiveView ? msFuncGetActiveView() : nullptr;
    scene.mbBGTransparent = IsBGTransparent();
    bool bUpdate = false;
    const bool bOk =
        RenderGuard_cls::Check(command, *GpCImageOutput, scene, mpCDialog ? *mpCDialog : boxes, bUpdate);
    if (bUpdate)
        RefreshFromOutput();
    return bOk;
}

void PropertyRender_cls::OnRenderAnim(wxCommandEvent&) {
    if (RunChecks(RenderGuard_cls::RENDER_ANIM))
        GpCTimeCtrl->AnimCommand(true);
}

void PropertyRender_cls::OnRenderSnap(wxCommandEvent&) {
    if (!RunChecks(RenderGuard_cls::RENDER_SNAP))
        return;
    // One picture: the run stops once the frame is saved.
    GpCTimeCtrl->mbOneShot = true;
    GpCTimeCtrl->AnimCommand(true);
}

void PropertyRender_cls::OnRenderPath(wxCommandEvent&) {
    RunChecks(RenderGuard_cls::RENDER_PATH);
}

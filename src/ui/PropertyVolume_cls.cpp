#include "PropertyVolume_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "Material_cls.h"
#include "ModifierStack_cls.h"
#include "PropertyParticle_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SequencePattern_cls.h"
#include "VolumeBox_cls.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace {

wxArrayString Labels(std::initializer_list<const char*> labels) {
    wxArrayString a;
    for (const char* p : labels)
        a.Add(wxGetTranslation(p));
    return a;
}

const wxSize kCurveSize(160, 16);

} // namespace

PropertyVolume_cls::PropertyVolume_cls(wxWindow* pParent) : PropertyKindPage_cls(pParent, "VolumeBox_cls") {
    auto* pGrid = new wxFlexGridSizer(2, wxSize(6, 3));
    pGrid->AddGrowableCol(1);
    auto heading = [this, pGrid](const wxString& strText) {
        pGrid->Add(new wxStaticText(this, wxID_ANY, strText), 0, wxTOP, 8);
        pGrid->AddSpacer(0);
    };
    heading(_("Data"));
    AddItemRow(this, pGrid, TARGET_OBJECT, "Path=", _("Path"));
    mpCPick = new wxButton(this, wxID_ANY, _("Choose file..."));
    mpCPick->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        wxFileDialog dialog(this, _("Choose a file of the sequence"), wxString(), wxString(),
                            "df3 (*.df3;*.DF3)|*.df3;*.DF3|Images|*.png;*.jpg;*.jpeg;*.bmp;*.tif;*.tiff|*|*",
                            wxFD_OPEN | wxFD_FILE_MUST_EXIST);
        if (dialog.ShowModal() == wxID_OK)
            SetPathFromPicked(dialog.GetPath());
    });
    pGrid->AddSpacer(0);
    pGrid->Add(mpCPick, 0);
    AddItemRow(this, pGrid, TARGET_OBJECT, "UseSequence=", _("Sequence"), wxArrayString(), true);
    AddItemRow(this, pGrid, TARGET_OBJECT, "SeqOffset=", _("Offset"));
    AddItemRow(this, pGrid, TARGET_OBJECT, "ZStack=", _("Image stack along Z"), wxArrayString(), true);
    AddItemRow(this, pGrid, TARGET_OBJECT, "SeqOffsetZ=", _("First slice"));
    pGrid->AddSpacer(0);
    mpCSteps = new wxStaticText(this, wxID_ANY, wxString());
    pGrid->Add(mpCSteps, 0);

    heading(_("Draw"));
    AddItemRow(this, pGrid, TARGET_OBJECT, "Quality=", _("Quality"));
    AddItemRow(this, pGrid, TARGET_OBJECT, "SubQuality=", _("Sub quality"));
    AddItemRow(this, pGrid, TARGET_OBJECT, "Shader=", _("Shader"),
               Labels({"Original", "Volume Basic", "Volume Phong", "Volume Scatter"}));
    AddItemRow(this, pGrid, TARGET_OBJECT, "SelfShadow=", _("Self Shadow"), wxArrayString(), true);
    AddItemRow(this, pGrid, TARGET_OBJECT, "ShaderQuality=", _("Qual./Scat."));
    AddItemRow(this, pGrid, TARGET_OBJECT, "ShaderFactor=", _("Factor"));
    AddItemRow(this, pGrid, TARGET_OBJECT, "Discard0=", _("Skip value 0"), wxArrayString(), true);
    AddItemRow(this, pGrid, TARGET_MATERIAL, "TextureInterp=", _("Voxels"), Labels({"Nearest", "Linear"}));
    AddItemRow(this, pGrid, TARGET_MATERIAL, "VolumeWrap=", _("Wrap"),
               Labels({"Clamp to edge", "Repeat", "Clamp"}));
    AddItemRow(this, pGrid, TARGET_MATERIAL, "BlendType=", _("Blend"),
               Labels({"Alpha", "Add", "Multiply", "None"}));
    AddItemRow(this, pGrid, TARGET_MATERIAL, "DepthWrite=", _("Write depth"), wxArrayString(), true);

    heading(_("Colour curve"));
    pGrid->AddSpacer(0);
    mpCCurve = new wxStaticBitmap(this, wxID_ANY, wxBitmap(kCurveSize.x, kCurveSize.y));
    pGrid->Add(mpCCurve, 0);
    AddItemRow(this, pGrid, TARGET_OBJECT, "RepeatCC=", _("Repeat"), wxArrayString(), true);
    pGrid->Add(new wxStaticText(this, wxID_ANY, _("Preset")), 0, wxALIGN_CENTER_VERTICAL);
    wxArrayString aStrPreset;
    for (int i = 0; GpCColorCurveProvider && i < GpCColorCurveProvider->GetNumColorCurve(); ++i)
        aStrPreset.Add(GpCColorCurveProvider->GetPCColorCurve(i)->GetStrName());
    mpCPreset = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, aStrPreset);
    mpCPreset->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) { ApplyCurvePreset(event.GetSelection()); });
    pGrid->Add(mpCPreset, 1, wxEXPAND);

    // The volume family of modifiers and data processes, each entry with its own page.
    mpCStack = new ModifierStack_cls(
        this, [this]() -> SceneObj_cls* { return GetPCVolume(); }, true);

    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    pSizer->Add(mpCStack, 0, wxEXPAND);
    SetSizer(pSizer);
    SetScrollRate(0, 10);
    RefreshFromObject();
}

wxString PropertyVolume_cls::GetStrLabel() const {
    return _("Volume");
}

VolumeBox_cls* PropertyVolume_cls::GetPCVolume() const {
    return GpCSceneObjCtrl ? dynamic_cast<VolumeBox_cls*>(GpCSceneObjCtrl->GetPCActiveObject()) : nullptr;
}

ConfListContainer_cls* PropertyVolume_cls::GetPCList(int target) const {
    VolumeBox_cls* p = GetPCVolume();
    if (!p)
        return nullptr;
    return target == TARGET_MATERIAL ? static_cast<ConfListContainer_cls*>(p->GetPCMaterial()) : p;
}

wxString PropertyVolume_cls::GetStrSignature() const {
    VolumeBox_cls* p = GetPCVolume();
    if (!p)
        return wxString();
    wxString str = p->GetStrName() + "\n" + p->SerializeAll();
    if (Material_cls* pMat = p->GetPCMaterial())
        str += pMat->SerializeAll();
    if (ColorCurve_cls* pCurve = p->GetPCColorCurve())
        str += pCurve->ParamGroup_cls::GetStrProcCounter();
    return str + mpCStack->GetStrSignature();
}

void PropertyVolume_cls::UpdatePage(const wxString& strName) {
    if (strName == "IDLE") {
        wxWindow* pFocus = wxWindow::FindFocus();
        const bool bTyping = pFocus && dynamic_cast<wxTextCtrl*>(pFocus) && pFocus->GetParent() == this;
        if (!bTyping && GetStrSignature() != mStrSignature)
            RefreshFromObject();
        mpCStack->UpdateIdle();
        return;
    }
    static const wxString vStrOwn[] = {"PROPERTY",          "ALL",
                                       "PROPERTY_OBJECT",   "PROPERTY_INFO",
                                       "PROPERTY_MATERIAL", "PROPERTY_MODIFIER",
                                       "PROPERTY_DATAPROC"};
    for (const wxString& str : vStrOwn)
        if (str == strName) {
            RefreshFromObject();
            return;
        }
}

void PropertyVolume_cls::RefreshFromObject() {
    ++mRefreshCount;
    mStrSignature = GetStrSignature();
    VolumeBox_cls* p = GetPCVolume();
    Enable(p != nullptr);
    RefreshItems();
    if (p && p->IsPathChanged())
        p->CheckFileSequence();
    mpCSteps->SetLabel(p ? wxString::Format(_("Steps: %d"), p->mCSequence.GetSnapCount()) : wxString());
    ColorCurve_cls* pCurve = p ? p->GetPCColorCurve() : nullptr;
    mpCCurve->SetBitmap(pCurve ? PropertyParticle_cls::GetBitmapOfCurve(pCurve, kCurveSize)
                               : wxBitmap(kCurveSize.x, kCurveSize.y));
    mpCPreset->SetSelection(wxNOT_FOUND);
    mpCStack->RefreshFromObject();
    Layout();
}

SceneObj_cls* PropertyVolume_cls::GetPCKindObject() const {
    return GetPCVolume();
}

bool PropertyVolume_cls::SetPathFromPicked(const wxString& strFile) {
    // The number is looked for before the extension: the "3" of "df3" is none.
    const wxString strExt = wxFileName(strFile).GetExt();
    const wxString strBase =
        strExt.empty() ? strFile : strFile.substr(0, strFile.length() - strExt.length() - 1);
    wxString strPattern = SequencePattern_cls::GetStrPattern(strBase) + (strExt.empty() ? "" : "." + strExt);
    VolumeBox_cls* p = GetPCVolume();
    const size_t field = strPattern.rfind('%');
    if (p && p->IsZStack() && field != wxString::npos && strPattern != strFile) {
        // A slice of a stack: the slice number was the last; the time number stands before it.
        strPattern =
            SequencePattern_cls::GetStrPattern(strPattern.substr(0, field)) + strPattern.substr(field);
    }
    return SetItem(TARGET_OBJECT, "Path=", strPattern);
}

bool PropertyVolume_cls::ApplyCurvePreset(int preset) {
    VolumeBox_cls* p = GetPCVolume();
    ColorCurve_cls* pCurve = p ? p->GetPCColorCurve() : nullptr;
    ColorCurve_cls* pSource =
        GpCColorCurveProvider ? GpCColorCurveProvider->GetPCColorCurve(preset) : nullptr;
    if (!pCurve || !pSource)
        return false;
    p->SyncConfListTag();
    pCurve->CopyColorCurveCommand(pSource, wxString(), true);
    RefreshFromObject();
    return true;
}

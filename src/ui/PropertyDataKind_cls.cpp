#include "PropertyDataKind_cls.h"

#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "KindTable_cls.h"
#include "Material_cls.h"
#include "ModifierStack_cls.h"
#include "ParamGroup_cls.h"
#include "Parameter_cls.h"
#include "PropertyObject_cls.h"
#include "PropertyParticle_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "SequencePattern_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/intl.h>
#include <wx/notebook.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <functional>

namespace {

using Row_cls = PropertyDataKind_cls::Row_cls;

wxArrayString Labels(std::initializer_list<const char*> labels) {
    wxArrayString a;
    for (const char* p : labels)
        a.Add(wxGetTranslation(p));
    return a;
}

Row_cls Text(int target, const char* pKey, const char* pLabel) {
    return {target, pKey, wxGetTranslation(pLabel), wxArrayString(), false};
}
Row_cls Check(int target, const char* pKey, const char* pLabel) {
    return {target, pKey, wxGetTranslation(pLabel), wxArrayString(), true};
}
Row_cls Choice(int target, const char* pKey, const char* pLabel, std::initializer_list<const char*> choices) {
    return {target, pKey, wxGetTranslation(pLabel), Labels(choices), false};
}

// The material rows every kind shows under its own draw keys.
void AddMaterialRows(std::vector<Row_cls>& v) {
    const int m = PropertyDataKind_cls::TARGET_MATERIAL;
    v.push_back(Check(m, "Smooth=", "Smooth shading"));
    v.push_back(Check(m, "TwoSide=", "Two sides"));
    v.push_back(Check(m, "UseTexture=", "Texture"));
    v.push_back(Text(m, "TextureFile=", "Texture file"));
    v.push_back(Choice(m, "TextureMode=", "Texture mode", {"Modulate", "Replace"}));
}

wxTextCtrl* NewText(wxWindow* pParent) {
    // The default window name "text" stays: it keeps the shortcuts out of typing.
    return new wxTextCtrl(pParent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                          wxTE_PROCESS_ENTER);
}

} // namespace

PropertyDataKind_cls::Kind_cls PropertyDataKind_cls::GetKind(const wxString& strClassWord) {
    const int o = TARGET_OBJECT;
    Kind_cls k;
    k.mStrClassWord = strClassWord;
    if (strClassWord == "Streamline_cls") {
        k.mStrLabel = _("Streamline");
        k.mVData = {Choice(o, "InterpType=", "Interpolation", {"Step", "Linear"}),
                    Text(o, "Thin=", "Every n-th line"),
                    Check(o, "Clip=", "Clip box"),
                    Text(o, "ClipLow=", "Clip low"),
                    Text(o, "ClipHigh=", "Clip high"),
                    Choice(o, "ValueType=", "Value", {"Value of the file", "Arc length"})};
        k.mVDraw = {Choice(o, "DrawType=", "Draw as", {"Lines", "Ribbons"}), Text(o, "LineWidth=", "Width"),
                    Choice(o, "ColorType=", "Colour", {"Material", "Colour curve"}),
                    Choice(o, "MappingType=", "Ribbon texture", {"Stretched", "Repeated"})};
    } else if (strClassWord == "HeightField_cls") {
        k.mStrLabel = _("Height Field");
        k.mVData = {Choice(o, "Channel=", "Channel", {"Red (grey)", "Green", "Blue", "Alpha"}),
                    Choice(o, "InterpType=", "Interpolation", {"Step", "Linear"}),
                    Text(o, "SizeX=", "Size X"), Text(o, "SizeY=", "Size Y"),
                    Text(o, "HeightScale=", "Height scale")};
        k.mVDraw = {Choice(o, "ColorType=", "Colour", {"Material", "Colour curve"})};
    } else if (strClassWord == "Isosurface_cls") {
        k.mStrLabel = _("Isosurface");
        k.mVData = {Check(o, "ZStack=", "Image stack"), Text(o, "SeqOffsetZ=", "First slice")};
        k.mbIsoValue = true;
        k.mbCurve = false;
    }
    AddMaterialRows(k.mVDraw);
    return k;
}

void PropertyDataKind_cls::RegisterPages() {
    for (const char* pClass : {"Streamline_cls", "HeightField_cls", "Isosurface_cls"}) {
        if (!KindTable_cls::Find(pClass, KindTable_cls::GROUP_OBJECT))
            continue;
        const Kind_cls kind = GetKind(pClass);
        KindTable_cls::Register(pClass, KindTable_cls::GROUP_OBJECT)
            .SetSlot<Maker_fn>(KindTable_cls::SLOT_PROPERTY_PAGE,
                               [kind](wxWindow* pParent) -> PropertyKindPage_cls* {
                                   return new PropertyDataKind_cls(pParent, kind);
                               });
    }
}

PropertyDataKind_cls::PropertyDataKind_cls(wxWindow* pParent, const Kind_cls& kind)
    : PropertyKindPage_cls(pParent, kind.mStrClassWord), mCKind(kind) {
    mpCBook = new wxNotebook(this, wxID_ANY);

    // Files and the kind's data keys.
    wxFlexGridSizer* pGrid = nullptr;
    wxPanel* pData = NewPage({}, _("Data"), pGrid);
    pGrid->Add(new wxStaticText(pData, wxID_ANY, _("Path")), 0, wxALIGN_CENTER_VERTICAL);
    auto* pPathRow = new wxBoxSizer(wxHORIZONTAL);
    wxWindow* pPath = NewText(pData);
    pPath->Bind(wxEVT_TEXT_ENTER, [this, pPath](wxCommandEvent&) {
        SetItem(TARGET_OBJECT, "Path=", static_cast<wxTextCtrl*>(pPath)->GetValue());
    });
    mVCItem.push_back({TARGET_OBJECT, "Path=", pPath});
    mpCPick = new wxButton(pData, wxID_ANY, "...", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    mpCPick->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        wxFileDialog dialog(this, _("Choose a file of the sequence"), wxString(), wxString(), "*",
                            wxFD_OPEN | wxFD_FILE_MUST_EXIST);
        if (dialog.ShowModal() == wxID_OK)
            SetPathFromPicked(dialog.GetPath());
    });
    pPathRow->Add(pPath, 1, wxEXPAND);
    pPathRow->Add(mpCPick, 0, wxLEFT, 2);
    pGrid->Add(pPathRow, 1, wxEXPAND);
    for (const Row_cls& row :
         {Check(TARGET_OBJECT, "UseSequence=", "Sequence"), Text(TARGET_OBJECT, "SeqOffset=", "Offset"),
          Text(TARGET_OBJECT, "Script=", "Look-up script")})
        AddRow(pData, pGrid, row);
    for (const Row_cls& row : mCKind.mVData)
        AddRow(pData, pGrid, row);
    if (mCKind.mbIsoValue) {
        pGrid->Add(new wxStaticText(pData, wxID_ANY, _("Iso value")), 0, wxALIGN_CENTER_VERTICAL);
        mpCIso = NewText(pData);
        mpCIso->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { SetIsoValue(mpCIso->GetValue()); });
        pGrid->Add(mpCIso, 1, wxEXPAND);
    }

    // Drawing, with the colour curve.
    wxPanel* pDraw = NewPage(mCKind.mVDraw, _("Draw"), pGrid);
    if (mCKind.mbCurve) {
        pGrid->Add(new wxStaticText(pDraw, wxID_ANY, _("Colour curve")), 0, wxALIGN_CENTER_VERTICAL);
        mpCCurveBitmap = new wxStaticBitmap(pDraw, wxID_ANY, wxBitmap(160, 14));
        pGrid->Add(mpCCurveBitmap, 0);
        pGrid->Add(new wxStaticText(pDraw, wxID_ANY, _("Preset")), 0, wxALIGN_CENTER_VERTICAL);
        wxArrayString aStrPreset;
        for (int i = 0; i < ColorCurveProvider_cls::kPresetCount; ++i)
            aStrPreset.Add(wxString::Format(_("Preset %d"), i));
        mpCPreset = new wxChoice(pDraw, wxID_ANY, wxDefaultPosition, wxDefaultSize, aStrPreset);
        mpCPreset->Bind(wxEVT_CHOICE,
                        [this](wxCommandEvent& event) { ApplyCurvePreset(event.GetSelection()); });
        pGrid->Add(mpCPreset, 1, wxEXPAND);
    }
    BuildStackPage();

    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCBook, 1, wxEXPAND);
    SetSizer(pSizer);
    SetScrollRate(0, 10);
    RefreshFromObject();
}

wxPanel* PropertyDataKind_cls::NewPage(const std::vector<Row_cls>& vRow, const wxString& strLabel,
                                       wxFlexGridSizer*& pGrid) {
    auto* pPage = new wxPanel(mpCBook);
    pGrid = new wxFlexGridSizer(2, wxSize(6, 3));
    pGrid->AddGrowableCol(1);
    for (const Row_cls& row : vRow)
        AddRow(pPage, pGrid, row);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    pPage->SetSizer(pSizer);
    mpCBook->AddPage(pPage, strLabel);
    return pPage;
}

wxWindow* PropertyDataKind_cls::AddRow(wxWindow* pPage, wxFlexGridSizer* pGrid, const Row_cls& row) {
    return AddItemRow(pPage, pGrid, row.mTarget, row.mStrKey, row.mStrLabel, row.mAStrChoices, row.mbCheck);
}

void PropertyDataKind_cls::BuildStackPage() {
    auto* pPage = new wxScrolledWindow(mpCBook, wxID_ANY);
    mpCStack = new ModifierStack_cls(
        pPage, [this] { return GetPCObject(); }, true);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCStack, 0, wxEXPAND);
    pPage->SetSizer(pSizer);
    pPage->SetScrollRate(0, 10);
    mpCBook->AddPage(pPage, _("Modifier"));
}

// ---- look-up ---------------------------------------------------------------------------------

SceneObj_cls* PropertyDataKind_cls::GetPCObject() const {
    SceneObj_cls* p = GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCActiveObject() : nullptr;
    return p && p->IsClassSameAs(mStrClassWord) ? p : nullptr;
}

ConfListContainer_cls* PropertyDataKind_cls::GetPCList(int target) const {
    SceneObj_cls* p = GetPCObject();
    if (!p)
        return nullptr;
    return target == TARGET_MATERIAL ? static_cast<ConfListContainer_cls*>(p->GetPCMaterial()) : p;
}

// ---- refreshing ------------------------------------------------------------------------------

wxString PropertyDataKind_cls::GetStrSignature() const {
    SceneObj_cls* p = GetPCObject();
    if (!p)
        return wxString();
    wxString str = p->GetStrName() + "\n" + p->SerializeAll();
    if (Material_cls* pMaterial = p->GetPCMaterial())
        str += pMaterial->SerializeAll();
    str += mpCStack->GetStrSignature();
    if (auto* pCurve = static_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", 0)))
        str += pCurve->ParamGroup_cls::GetStrProcCounter();
    if (ParamGroup_cls* pIso = p->GetPCParamGroup("Isosurface", "IsoValue"))
        str += pIso->GetStrProcCounter();
    return str;
}

void PropertyDataKind_cls::UpdatePage(const wxString& strName) {
    if (strName == "IDLE") {
        wxWindow* pFocus = wxWindow::FindFocus();
        const bool bTyping = pFocus && dynamic_cast<wxTextCtrl*>(pFocus) && IsDescendant(pFocus);
        if (!bTyping && GetStrSignature() != mStrSignature)
            RefreshFromObject();
        mpCStack->UpdateIdle();
        return;
    }
    static const wxString vStrOwn[] = {"PROPERTY",          "ALL",
                                       "PROPERTY_OBJECT",   "PROPERTY_INFO",
                                       "PROPERTY_MATERIAL", "PROPERTY_MODIFIER",
                                       "PROPERTY_DATAPROC", "TIMELINE"};
    if (std::find(std::begin(vStrOwn), std::end(vStrOwn), strName) != std::end(vStrOwn))
        RefreshFromObject();
}

void PropertyDataKind_cls::RefreshFromObject() {
    ++mRefreshCount;
    mStrSignature = GetStrSignature();
    SceneObj_cls* p = GetPCObject();
    Enable(p != nullptr);
    RefreshItems();
    if (mpCIso && p) {
        ParamGroup_cls* pIso = p->GetPCParamGroup("Isosurface", "IsoValue");
        const std::vector<double> v =
            pIso ? pIso->GetVInterpolatedValue(TimeCtrl_cls::GetClockNT(), true, nullptr, false)
                 : std::vector<double>();
        if (!v.empty() && wxWindow::FindFocus() != mpCIso)
            mpCIso->ChangeValue(wxString::FromCDouble(v[0]));
    }
    if (mpCCurveBitmap && p) {
        auto* pCurve = static_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", 0));
        mpCCurveBitmap->SetBitmap(PropertyParticle_cls::GetBitmapOfCurve(pCurve, wxSize(160, 14)));
    }
    mpCStack->RefreshFromObject();
    Layout();
}

// ---- edits -----------------------------------------------------------------------------------

bool PropertyDataKind_cls::SetPathFromPicked(const wxString& strFile) {
    return SetItem(TARGET_OBJECT, "Path=", SequencePattern_cls::GetStrPattern(strFile));
}

bool PropertyDataKind_cls::SetIsoValue(const wxString& strValue) {
    SceneObj_cls* p = GetPCObject();
    ParamGroup_cls* pIso = p ? p->GetPCParamGroup("Isosurface", "IsoValue") : nullptr;
    Parameter_cls* pValue = pIso ? pIso->GetPCParameter("Value") : nullptr;
    double value = 0.0;
    if (!pValue || !PropertyObject_cls::ParseNumber(strValue, value)) {
        RefreshFromObject();
        return false;
    }
    p->SyncConfListTag();
    // The attribute stands between the object and its group in the address.
    pValue->SetValueCommand(value, p->GetStrTag() + "::Isosurface::IsoValue::Value", -1, 0.0);
    RefreshFromObject();
    return true;
}

bool PropertyDataKind_cls::ApplyCurvePreset(int preset) {
    SceneObj_cls* p = GetPCObject();
    auto* pCurve =
        p ? static_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", 0)) : nullptr;
    ColorCurve_cls* pPreset =
        GpCColorCurveProvider ? GpCColorCurveProvider->GetPCColorCurve(preset) : nullptr;
    if (!pCurve || !pPreset)
        return false;
    p->SyncConfListTag();
    pCurve->CopyColorCurveCommand(pPreset, p->GetStrTag(), true);
    RefreshFromObject();
    return true;
}

#include "PropertyParticle_cls.h"

#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "KindTable_cls.h"
#include "MaterialParticle_cls.h"
#include "ModifierStack_cls.h"
#include "ParticleFormatPreset_cls.h"
#include "ParticleFormatTable_cls.h"
#include "Particle_cls.h"
#include "PropertyObject_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SequencePattern_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/bmpcbox.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>

namespace {

wxArrayString Labels(std::initializer_list<const char*> labels) {
    wxArrayString a;
    for (const char* p : labels)
        a.Add(wxGetTranslation(p));
    return a;
}

wxChoice* NewChoice(wxWindow* pParent, const wxArrayString& aStr) {
    return new wxChoice(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, aStr);
}

wxTextCtrl* NewText(wxWindow* pParent, long style = 0) {
    // The default window name "text" stays: it keeps the shortcuts out of typing.
    return new wxTextCtrl(pParent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                          wxTE_PROCESS_ENTER | style);
}

wxFlexGridSizer* NewGrid() {
    auto* pGrid = new wxFlexGridSizer(2, wxSize(6, 3));
    pGrid->AddGrowableCol(1);
    return pGrid;
}

// The names of a format table, in index order.
wxArrayString TableNames(bool bHeader, int type) {
    wxArrayString a;
    const int count = bHeader ? static_cast<int>(PH_COUNT) : ParticleFormatTable_cls::GetBodyItemCount(type);
    for (int i = 0; i < count; ++i)
        a.Add(bHeader ? ParticleFormatTable_cls::GetStrHeaderFromIndex(i)
                      : ParticleFormatTable_cls::GetStrBodyFromIndex(i, type));
    return a;
}

// The list as the format's Update commands take it.
wxString JoinForCommand(const wxArrayString& a) {
    wxString str;
    for (size_t i = 0; i < a.GetCount(); ++i)
        str += (i ? "::##::" : "") + a[i];
    return str;
}

} // namespace

PropertyParticle_cls::PropertyParticle_cls(wxWindow* pParent)
    : PropertyKindPage_cls(pParent, "Particle_cls") {
    mpCBook = new wxNotebook(this, wxID_ANY);
    BuildFilePage();
    BuildFormatPage();
    BuildDrawPage();
    BuildMaterialPage();
    BuildStackPage();
    BuildInfoPage();
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCBook, 1, wxEXPAND);
    SetSizer(pSizer);
    SetScrollRate(0, 10);
    RefreshFromObject();
}

wxString PropertyParticle_cls::GetStrLabel() const {
    return _("Particle");
}

// ---- look-up ---------------------------------------------------------------------------------

Particle_cls* PropertyParticle_cls::GetPCParticle() const {
    return GpCSceneObjCtrl ? Particle_cls::GetPCParticle(GpCSceneObjCtrl->GetPCActiveObject()) : nullptr;
}

MaterialParticle_cls* PropertyParticle_cls::GetPCMaterial() const {
    Particle_cls* p = GetPCParticle();
    return p ? p->GetPCMaterialParticle(mMaterialIndex) : nullptr;
}

ConfListContainer_cls* PropertyParticle_cls::GetPCList(int target) const {
    Particle_cls* p = GetPCParticle();
    if (!p)
        return nullptr;
    switch (target) {
    case TARGET_OBJECT:
        return p;
    case TARGET_FORMAT:
        return &p->mCFormat;
    case TARGET_MATERIAL:
        return GetPCMaterial();
    default:
        return nullptr;
    }
}

// ---- building ----------------------------------------------------------------------------------

void PropertyParticle_cls::BuildFilePage() {
    auto* pPage = new wxPanel(mpCBook);
    auto* pGrid = NewGrid();
    pGrid->Add(new wxStaticText(pPage, wxID_ANY, _("Path")), 0, wxALIGN_CENTER_VERTICAL);
    auto* pRow = new wxBoxSizer(wxHORIZONTAL);
    mpCPath = NewText(pPage);
    mpCPath->Bind(wxEVT_TEXT_ENTER,
                  [this](wxCommandEvent&) { SetItem(TARGET_OBJECT, "Path=", mpCPath->GetValue()); });
    mpCPick = new wxButton(pPage, wxID_ANY, "...", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    mpCPick->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        wxFileDialog dialog(this, _("Choose a file of the sequence"), wxString(), wxString(), "*",
                            wxFD_OPEN | wxFD_FILE_MUST_EXIST);
        if (dialog.ShowModal() == wxID_OK)
            SetPathFromPicked(dialog.GetPath());
    });
    pRow->Add(mpCPath, 1, wxEXPAND);
    pRow->Add(mpCPick, 0, wxLEFT, 2);
    pGrid->Add(pRow, 1, wxEXPAND);
    mVCItem.push_back({TARGET_OBJECT, "Path=", mpCPath});
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "UseSequence=", _("Sequence"), wxArrayString(), true);
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "SeqOffset=", _("Offset"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "Script=", _("Look-up script"));
    pGrid->AddSpacer(0);
    mpCSteps = new wxStaticText(pPage, wxID_ANY, wxString());
    pGrid->Add(mpCSteps, 0);

    pGrid->Add(new wxStaticText(pPage, wxID_ANY, _("Interpolation")), 0, wxTOP, 8);
    pGrid->AddSpacer(0);
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "InterpType=", _("Type"),
               Labels({"Step", "Linear", "Hermite", "Bezier", "Bezier (Smooth)"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "InterpolateBy=", _("Match"), Labels({"by index", "by ID"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "VanishSizeType=", _("Disappear"),
               Labels({"Constant size", "Decrease size", "Set to 0"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "ExtrapolateType=", _("Extrapolate"),
               Labels({"Constant location", "Extrapolate location"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "PeriodicBox=", _("Periodic box"),
               Labels({"No periodic box", "Box from the file header", "Box typed in"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "PeriodicBoxLow=", _("Box low"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "PeriodicBoxHigh=", _("Box high"));
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    pPage->SetSizer(pSizer);
    mpCBook->AddPage(pPage, _("Data"));
}

void PropertyParticle_cls::BuildFormatPage() {
    mpCFormatPage = new wxPanel(mpCBook);
    wxPanel* pPage = mpCFormatPage;
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    auto* pGrid = NewGrid();
    AddItemRow(pPage, pGrid, TARGET_FORMAT, "DataType=", _("Data type"), Labels({"Ascii", "Binary"}));
    AddItemRow(pPage, pGrid, TARGET_FORMAT, "ArrayDirection=", _("Layout"),
               Labels({"Horizontal", "Vertical"}));
    AddItemRow(pPage, pGrid, TARGET_FORMAT, "PreSortByID=", _("Do Sort by ID"), wxArrayString(), true);
    AddItemRow(pPage, pGrid, TARGET_FORMAT, "RemoveDupli=", _("Remove Dupli ID"), wxArrayString(), true);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);

    auto* pPresetRow = new wxBoxSizer(wxHORIZONTAL);
    wxArrayString aStrPreset;
    for (int i = 0; i < ParticleFormatPreset_cls::PRESET_COUNT; ++i)
        aStrPreset.Add(ParticleFormatPreset_cls::GetStrLabel(i));
    mpCPreset = NewChoice(pPage, aStrPreset);
    mpCPreset->SetSelection(0);
    auto* pApply = new wxButton(pPage, wxID_ANY, _("Apply preset"));
    pApply->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ApplyPreset(mpCPreset->GetSelection()); });
    pPresetRow->Add(mpCPreset, 1, wxEXPAND);
    pPresetRow->Add(pApply, 0, wxLEFT, 4);
    pSizer->Add(pPresetRow, 0, wxEXPAND | wxALL, 4);

    for (int header = 1; header >= 0; --header) {
        auto* pBox = new wxStaticBoxSizer(wxVERTICAL, pPage, header ? _("Header") : _("Body"));
        auto* pRows = new wxBoxSizer(wxVERTICAL);
        pBox->Add(pRows, 0, wxEXPAND);
        auto* pAdd = new wxButton(pPage, wxID_ANY, header ? _("Add header item") : _("Add body item"));
        pAdd->Bind(wxEVT_BUTTON, [this, header](wxCommandEvent&) { header ? AddHeaderRow() : AddBodyRow(); });
        pBox->Add(pAdd, 0, wxTOP, 2);
        pSizer->Add(pBox, 0, wxEXPAND | wxALL, 4);
        (header ? mpCHeaderSizer : mpCBodySizer) = pRows;
    }
    pPage->SetSizer(pSizer);
    mpCBook->AddPage(pPage, _("Format"));
}

void PropertyParticle_cls::BuildDrawPage() {
    auto* pPage = new wxPanel(mpCBook);
    auto* pGrid = NewGrid();
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "TwoPass=", _("Passes"), Labels({"1 pass", "2 pass"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "SortType=", _("Sort"),
               Labels({"None", "View-Z", "View-Z inverse", "Distance", "Distance inverse", "type",
                       "View-Z (sort object)", "Distance (skip sort)"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "SortFrequency=", _("Sort Frequency"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "SortObject=", _("Sort object"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "DepthMask=", _("Write depth"), wxArrayString(), true);
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "DependDistance=", _("Point size"),
               Labels({"Constant size", "Depend on distance"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "PointSizeFactor=", _("Point size factor"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "DistanceBase=", _("Base distance"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "SphereDepth=", _("Division Depth"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT,
               "AlphaCrit=", _("Ignore particles with size-depend-alpha less than this value"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "TextureNum=", _("Images"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "TexturePath0=", _("Image 1"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "TexturePath1=", _("Image 2"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "TexturePath2=", _("Image 3"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "Dissolve=", _("Dissolve"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "CastShadow=", _("Cast shadow"), wxArrayString(), true);
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "TwistRandom=", _("Random twist"), wxArrayString(), true);
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "ClassifyType=", _("Classify"),
               Labels({"Type from the file", "Type from the script"}));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "Classify=", _("Classify script"));
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "Link=", _("Link"));
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    pPage->SetSizer(pSizer);
    mpCBook->AddPage(pPage, _("Draw"));
}

void PropertyParticle_cls::BuildMaterialPage() {
    auto* pPage = new wxPanel(mpCBook);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    auto* pRow = new wxBoxSizer(wxHORIZONTAL);
    mpCMaterial = NewChoice(pPage, wxArrayString());
    mpCMaterial->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) { SelectMaterial(event.GetSelection()); });
    auto* pAdd = new wxButton(pPage, wxID_ANY, _("Add material"));
    pAdd->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { AddMaterial(); });
    pRow->Add(mpCMaterial, 1, wxEXPAND);
    pRow->Add(pAdd, 0, wxLEFT, 4);
    pSizer->Add(pRow, 0, wxEXPAND | wxALL, 4);

    auto* pGrid = NewGrid();
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "CustomName=", _("Name"));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "BaseType=", _("Base type"),
               Labels({"Point Material", "Billboard Material", "Sphere Material"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "ColorCurveType=", _("Colour"),
               Labels({"Constant Color", "Use Color Curve"}));
    pGrid->Add(new wxStaticText(pPage, wxID_ANY, _("Colour curve")), 0, wxALIGN_CENTER_VERTICAL);
    mpCCurve = new wxBitmapComboBox(pPage, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0, nullptr,
                                    wxCB_READONLY);
    mpCCurve->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent& event) { SetMaterialCurve(event.GetSelection()); });
    pGrid->Add(mpCCurve, 1, wxEXPAND);
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "ColorCurveDepend=", _("Curve input"),
               Labels({"Index depend", "Size depend", "ID depend", "Value0", "Value1", "Value2", "X depend",
                       "Y depend", "Z depend", "Sort index"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "AlphaType=", _("Alpha"), Labels({"Use Data", "Constant(1)"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "SizeType=", _("Size"), Labels({"Use Data", "Constant(1)"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "ShaderTypePoint=", _("Point shader"),
               Labels({"Point", "Circle", "PseudoSphere", "No Rendering"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "ShaderTypeBillboard=", _("Billboard shader"),
               Labels({"Billboard", "PseudoSphere", "PseudoObject", "No Rendering"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "ShaderTypeSphere=", _("Sphere shader"),
               Labels({"Gouraud", "Phong", "Toon", "Normal", "No Rendering"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "BlendType=", _("Blend"),
               Labels({"Alpha Blend", "Additive", "Mix"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "TextureType=", _("Texture"),
               Labels({"Not Use", "Use Texture"}));
    AddItemRow(pPage, pGrid, TARGET_MATERIAL, "TextureIndex=", _("Image"));
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    pPage->SetSizer(pSizer);
    mpCBook->AddPage(pPage, _("Material"));
}

void PropertyParticle_cls::BuildStackPage() {
    auto* pPage = new wxScrolledWindow(mpCBook, wxID_ANY);
    mpCStack = new ModifierStack_cls(
        pPage, [this]() -> SceneObj_cls* { return GetPCParticle(); }, true);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCStack, 0, wxEXPAND);
    pPage->SetSizer(pSizer);
    pPage->SetScrollRate(0, 10);
    mpCBook->AddPage(pPage, _("Modifier"));
}

void PropertyParticle_cls::BuildInfoPage() {
    auto* pPage = new wxPanel(mpCBook);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    auto* pGrid = NewGrid();
    AddItemRow(pPage, pGrid, TARGET_OBJECT, "InfoIndex=", _("Column"), GetAStrInfoColumns());
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    auto* pRead = new wxButton(pPage, wxID_ANY, _("Read current step"));
    pRead->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ReadCurrentStep(); });
    pSizer->Add(pRead, 0, wxALL, 4);
    mpCInfo = new wxTextCtrl(pPage, wxID_ANY, wxString(), wxDefaultPosition, wxSize(-1, 160),
                             wxTE_MULTILINE | wxTE_READONLY);
    pSizer->Add(mpCInfo, 1, wxEXPAND | wxALL, 4);
    pPage->SetSizer(pSizer);
    mpCBook->AddPage(pPage, _("Info"));
}

const wxArrayString& PropertyParticle_cls::GetAStrInfoColumns() {
    static const wxArrayString aStr =
        Labels({"X", "Y", "Z", "Type", "Size", "ID", "Value0", "Value1", "Value2"});
    return aStr;
}

// ---- refreshing ------------------------------------------------------------------------------

wxString PropertyParticle_cls::GetStrSignature() const {
    Particle_cls* p = GetPCParticle();
    if (!p)
        return wxString();
    wxString str = p->GetStrName() + "\n" + p->SerializeAll() + p->mCFormat.SerializeAll();
    for (int m = 0; m < p->GetNumMaterial(); ++m)
        str += p->GetPCMaterialParticle(m)->SerializeAll();
    str += mpCStack->GetStrSignature();
    str += wxString::Format("%d", p->GetNumAttribute("ColorCurve_cls"));
    return str;
}

bool PropertyParticle_cls::IsTyping() const {
    wxWindow* pFocus = wxWindow::FindFocus();
    if (!pFocus || !dynamic_cast<wxTextCtrl*>(pFocus))
        return false;
    for (wxWindow* w = pFocus; w; w = w->GetParent())
        if (w == this)
            return true;
    return false;
}

void PropertyParticle_cls::UpdatePage(const wxString& strName) {
    if (strName == "IDLE") {
        if (!IsTyping() && GetStrSignature() != mStrSignature)
            RefreshFromObject();
        mpCStack->UpdateIdle();
        return;
    }
    static const wxString vStrOwn[] = {"PROPERTY",          "ALL",
                                       "PROPERTY_OBJECT",   "PROPERTY_FORMAT",
                                       "PROPERTY_INFO",     "PROPERTY_MATERIAL",
                                       "PROPERTY_MODIFIER", "PROPERTY_DATAPROC"};
    if (std::find(std::begin(vStrOwn), std::end(vStrOwn), strName) != std::end(vStrOwn))
        RefreshFromObject();
}

void PropertyParticle_cls::RefreshFromObject() {
    ++mRefreshCount;
    mStrSignature = GetStrSignature();
    Particle_cls* p = GetPCParticle();
    Enable(p != nullptr);
    if (p && p->GetNumMaterial() > 0)
        mMaterialIndex = std::min(mMaterialIndex, p->GetNumMaterial() - 1);
    RefreshItems();
    mpCPick->Enable(p != nullptr);
    if (p) {
        if (p->IsDataChanged())
            p->CheckFileSequence();
        mpCSteps->SetLabel(wxString::Format(_("Steps: %d"), p->mCSequence.GetSnapCount()));
    } else {
        mpCSteps->SetLabel(wxString());
    }
    RebuildFormatRows();
    RefreshMaterials();
    mpCStack->RefreshFromObject();
    mpCInfo->ChangeValue(GetStrInfo());
    Layout();
}

void PropertyParticle_cls::RebuildFormatRows() {
    Particle_cls* p = GetPCParticle();
    const int type = p ? p->mCFormat.GetDataType() : 0;
    const wxArrayString aStrHeader = p ? p->mCFormat.mAStrHeader : wxArrayString();
    const wxArrayString aStrBody = p ? p->mCFormat.GetAStrBody(type) : wxArrayString();
    for (int header = 1; header >= 0; --header) {
        wxBoxSizer* pRows = header ? mpCHeaderSizer : mpCBodySizer;
        std::vector<wxChoice*>& vRow = header ? mVPCHeaderRow : mVPCBodyRow;
        const wxArrayString& aStr = header ? aStrHeader : aStrBody;
        const wxArrayString aStrTable = TableNames(header != 0, type);
        // Rows are rebuilt only when their number or their table changed; otherwise set.
        bool bSame = vRow.size() == aStr.GetCount();
        for (size_t i = 0; bSame && i < vRow.size(); ++i)
            bSame = vRow[i]->GetCount() == aStrTable.GetCount() &&
                    (aStrTable.empty() || vRow[i]->GetString(0) == aStrTable[0]);
        if (!bSame) {
            pRows->Clear(true);
            vRow.clear();
            for (size_t i = 0; i < aStr.GetCount(); ++i) {
                auto* pRow = new wxBoxSizer(wxHORIZONTAL);
                wxChoice* pChoice = NewChoice(mpCFormatPage, aStrTable);
                const int row = static_cast<int>(i);
                pChoice->Bind(wxEVT_CHOICE, [this, header, row](wxCommandEvent& event) {
                    header ? SetHeaderRow(row, event.GetSelection()) : SetBodyRow(row, event.GetSelection());
                });
                auto* pDelete = new wxButton(mpCFormatPage, wxID_ANY, "x", wxDefaultPosition, wxDefaultSize,
                                             wxBU_EXACTFIT);
                pDelete->Bind(wxEVT_BUTTON, [this, header, row](wxCommandEvent&) {
                    header ? DeleteHeaderRow(row) : DeleteBodyRow(row);
                });
                pRow->Add(pChoice, 1, wxEXPAND);
                pRow->Add(pDelete, 0, wxLEFT, 2);
                pRows->Add(pRow, 0, wxEXPAND | wxBOTTOM, 1);
                vRow.push_back(pChoice);
            }
        }
        for (size_t i = 0; i < aStr.GetCount(); ++i)
            vRow[i]->SetSelection(aStrTable.Index(aStr[i]));
    }
    mpCFormatPage->Layout();
}

void PropertyParticle_cls::RefreshMaterials() {
    Particle_cls* p = GetPCParticle();
    wxArrayString aStr;
    for (int m = 0; p && m < p->GetNumMaterial(); ++m) {
        MaterialParticle_cls* pMat = p->GetPCMaterialParticle(m);
        aStr.Add(pMat->GetStrName() + " (" + pMat->mCCustomName.GetBodySTR() + ")");
    }
    if (mpCMaterial->GetStrings() != aStr)
        mpCMaterial->Set(aStr);
    mpCMaterial->SetSelection(aStr.empty() ? wxNOT_FOUND : mMaterialIndex);

    // The curves of the object, each with its colours.
    mpCCurve->Clear();
    const int curves = p ? p->GetNumAttribute("ColorCurve_cls") : 0;
    for (int c = 0; c < curves; ++c) {
        auto* pCurve = dynamic_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", c));
        mpCCurve->Append(pCurve ? pCurve->GetStrName() : wxString(),
                         GetBitmapOfCurve(pCurve, wxSize(64, 14)));
    }
    MaterialParticle_cls* pMat = GetPCMaterial();
    const long long index = pMat ? pMat->mCColorCurveIndex.GetBodyINT() : -1;
    mpCCurve->SetSelection(index >= 0 && index < curves ? static_cast<int>(index) : wxNOT_FOUND);
    mpCCurve->Enable(pMat != nullptr);
}

// ---- edits -----------------------------------------------------------------------------------

SceneObj_cls* PropertyParticle_cls::GetPCKindObject() const {
    return GetPCParticle();
}

bool PropertyParticle_cls::SetPathFromPicked(const wxString& strFile) {
    return SetItem(TARGET_OBJECT, "Path=", SequencePattern_cls::GetStrPattern(strFile));
}

bool PropertyParticle_cls::EditParticle(const std::function<bool(Particle_cls&)>& edit) {
    Particle_cls* p = GetPCParticle();
    if (!p)
        return false;
    // The commands address the lists by the object's name: tags follow a rename first.
    p->SyncConfListTag();
    const bool bOK = edit(*p);
    RefreshFromObject();
    return bOK;
}

bool PropertyParticle_cls::ApplyPreset(int preset) {
    return EditParticle([preset](Particle_cls& p) {
        return ParticleFormatPreset_cls::ApplyPresetCommand(p.mCFormat, preset);
    });
}

bool PropertyParticle_cls::SetHeaderRow(int row, int item) {
    return EditParticle([row, item](Particle_cls& p) {
        const wxString strName = ParticleFormatTable_cls::GetStrHeaderFromIndex(item);
        wxArrayString a = p.mCFormat.mAStrHeader;
        if (strName.empty() || row < 0 || row >= static_cast<int>(a.GetCount()))
            return false;
        a[row] = strName;
        p.mCFormat.UpdateHeaderCommand(JoinForCommand(a));
        return true;
    });
}

bool PropertyParticle_cls::AddHeaderRow() {
    return EditParticle([](Particle_cls& p) {
        p.mCFormat.AddHeaderCommand(-1, "Dummy");
        return true;
    });
}

bool PropertyParticle_cls::DeleteHeaderRow(int row) {
    return EditParticle([row](Particle_cls& p) {
        const wxArrayString& a = p.mCFormat.mAStrHeader;
        if (row < 0 || row >= static_cast<int>(a.GetCount()))
            return false;
        p.mCFormat.DeleteHeaderCommand(row, a[row]);
        return true;
    });
}

bool PropertyParticle_cls::SetBodyRow(int row, int item) {
    return EditParticle([row, item](Particle_cls& p) {
        const int type = p.mCFormat.GetDataType();
        const wxString strName = ParticleFormatTable_cls::GetStrBodyFromIndex(item, type);
        wxArrayString a = p.mCFormat.GetAStrBody(type);
        if (strName.empty() || row < 0 || row >= static_cast<int>(a.GetCount()))
            return false;
        a[row] = strName;
        p.mCFormat.UpdateBodyCommand(JoinForCommand(a));
        return true;
    });
}

bool PropertyParticle_cls::AddBodyRow() {
    return EditParticle([](Particle_cls& p) {
        p.mCFormat.AddBodyCommand(-1, p.mCFormat.GetDataType() == 1 ? "Dummy(4byte)" : "Dummy");
        return true;
    });
}

bool PropertyParticle_cls::DeleteBodyRow(int row) {
    return EditParticle([row](Particle_cls& p) {
        const wxArrayString& a = p.mCFormat.GetAStrBody(p.mCFormat.GetDataType());
        if (row < 0 || row >= static_cast<int>(a.GetCount()) || a.GetCount() < 2)
            return false;
        p.mCFormat.DeleteBodyCommand(row, a[row]);
        return true;
    });
}

void PropertyParticle_cls::SelectMaterial(int index) {
    Particle_cls* p = GetPCParticle();
    if (p && index >= 0 && index < p->GetNumMaterial())
        mMaterialIndex = index;
    RefreshFromObject();
}

bool PropertyParticle_cls::AddMaterial() {
    return EditParticle([this](Particle_cls& p) {
        const int before = p.GetNumMaterial();
        p.AddMaterialCommand();
        if (p.GetNumMaterial() <= before)
            return false;
        mMaterialIndex = p.GetNumMaterial() - 1;
        return true;
    });
}

bool PropertyParticle_cls::SetMaterialCurve(int curve) {
    Particle_cls* p = GetPCParticle();
    if (!p || curve < 0 || curve >= p->GetNumAttribute("ColorCurve_cls"))
        return false;
    return SetItem(TARGET_MATERIAL, "ColorCurveIndex=", wxString::Format("%d", curve));
}

// ---- information -----------------------------------------------------------------------------

namespace {

int CurrentStep(Particle_cls* p) {
    Particle_cls::FrameInfo_cls info;
    if (!GpCTimeCtrl || !p->GetFrameInfo(GpCTimeCtrl->GetCurrentNT(false), info))
        return -1;
    return info.mIndex[1];
}

} // namespace

bool PropertyParticle_cls::ReadCurrentStep() {
    Particle_cls* p = GetPCParticle();
    if (!p)
        return false;
    if (p->IsDataChanged())
        p->CheckFileSequence();
    const int step = CurrentStep(p);
    const bool bOK = step >= 0 && p->ReadStepNow(step);
    RefreshFromObject();
    return bOK;
}

wxString PropertyParticle_cls::GetStrColumnInfo(ParticleSnap_cls* pSnap, int column) {
    const int n = pSnap ? pSnap->mNumber.load(std::memory_order_acquire) : 0;
    if (!pSnap || !pSnap->mAllocated || pSnap->IsReading() || n <= 0)
        return _("no data");
    auto value = [&](int i) -> double {
        switch (column) {
        case 0:
        case 1:
        case 2:
            return pSnap->mXYZ[3 * i + column];
        case 3:
            return pSnap->mType[i];
        case 4:
            return pSnap->mSize[i];
        case 5:
            return pSnap->mID ? static_cast<double>(pSnap->mID[i]) : static_cast<double>(pSnap->mIDLong[i]);
        default:
            return pSnap->mValue[column - 6][i];
        }
    };
    const bool bHas = (column >= 0 && column <= 2 && pSnap->mXYZ) || (column == 3 && pSnap->mType) ||
                      (column == 4 && pSnap->mSize) || (column == 5 && (pSnap->mID || pSnap->mIDLong)) ||
                      (column >= 6 && column <= 8 && pSnap->mValue[column - 6]);
    if (!bHas)
        return _("no data");
    double lo = std::numeric_limits<double>::infinity(), hi = -lo, sum = 0.0;
    for (int i = 0; i < n; ++i) {
        const double v = value(i);
        lo = std::min(lo, v);
        hi = std::max(hi, v);
        sum += v;
    }
    return wxString::Format("min %g  max %g  mean %g", lo, hi, sum / n);
}

wxString PropertyParticle_cls::GetStrInfo() {
    Particle_cls* p = GetPCParticle();
    if (!p)
        return _("No particle object");
    wxString str = p->GetStrName() + "\n" + p->mCSequence.GetStrInfo(true) + "\n";
    const int step = CurrentStep(p);
    ParticleSnap_cls* pSnap = step >= 0 ? p->mCSequence.GetPCSnap(step) : nullptr;
    if (pSnap && pSnap->mAllocated && !pSnap->IsReading()) {
        str += pSnap->GetStrInfo(step) + "\n";
        const long long column = p->mCInfoIndex.GetBodyINT();
        if (column >= 0 && column < static_cast<long long>(GetAStrInfoColumns().GetCount()))
            str += GetAStrInfoColumns()[column] + ": " + GetStrColumnInfo(pSnap, static_cast<int>(column)) +
                   "\n";
    } else if (step >= 0) {
        str += wxString::Format(_("Step %d is not read"), step) + "\n";
    }
    str += p->mpCCurrent->GetStrInfo();
    return str;
}

wxBitmap PropertyParticle_cls::GetBitmapOfCurve(ColorCurve_cls* pCurve, const wxSize& size) {
    wxImage image(size);
    for (int x = 0; x < size.x; ++x) {
        double alpha = 1.0;
        std::array<unsigned char, 4> c = {0, 0, 0, 255};
        if (pCurve)
            c = pCurve->GetColor(size.x > 1 ? static_cast<double>(x) / (size.x - 1) : 0.0, &alpha);
        for (int y = 0; y < size.y; ++y) {
            // A checker of 4 pixels shows through where the curve is transparent.
            const unsigned char checker = ((x / 4 + y / 4) % 2) ? 0xCC : 0x88;
            const std::array<unsigned char, 4> back = {checker, checker, checker, 255};
            const std::array<unsigned char, 4> m = ColorCurve_cls::AlphaBlend(back, c, alpha);
            image.SetRGB(x, y, m[0], m[1], m[2]);
        }
    }
    return wxBitmap(image);
}

#include "EditorBase_cls.h"

#include "ClassProvider_cls.h"
#include "GraphCurve_cls.h"
#include "Main_cls.h"
#include "PanelBar_cls.h"
#include "Parameter_cls.h"
#include "SplittableWindow_cls.h"
#include "TLParamLogic_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/wrapsizer.h>

EditorBase_cls::EditorBase_cls(SplittableWindow_cls* pOwner, int type, bool bColor,
                               const wxString& strListTag)
    : wxPanelEX(pOwner, type), mCEdit(bColor) {
    mCList.SetTag(strListTag);
    mStopWatch.Start();
    Bind(wxEVT_BUTTON, &EditorBase_cls::OnTool, this);
    Bind(wxEVT_CHOICE, &EditorBase_cls::OnTool, this, ID_EDITOR_KEY_TYPE);
    Bind(wxEVT_MENU, &EditorBase_cls::OnMenu, this, ID_MENU_EDITOR_DELETE);
    Bind(wxEVT_MENU, &EditorBase_cls::OnMenu, this, ID_MENU_EDITOR_POP_FIRST, ID_MENU_EDITOR_POP_LAST);
    Bind(wxEVT_MENU, &EditorBase_cls::OnMenu, this, ID_MENU_EDITOR_ZOOM_IN, ID_MENU_EDITOR_ZOOM_OUT);
}

void EditorBase_cls::AddRangeItems(double y0, double y1, double x0, double x1) {
    mCList.Add(&mCAAMin, "AAMin=", wxString::Format("%g", y0));
    mCList.Add(&mCAAMax, "AAMax=", wxString::Format("%g", y1));
    mCList.Add(&mCXRangeMin, "XRangeMin=", wxString::Format("%g", x0));
    mCList.Add(&mCXRangeMax, "XRangeMax=", wxString::Format("%g", x1));
    LoadViewFromList();
}

void EditorBase_cls::ConstructBase(GraphCurve_cls* pGraph) {
    mpCGraph = pGraph;
    ConstructPanelBar();
    mpCPanelBar->ConstructBarItemZoom();
    // The tools wrap onto more rows in a narrow leaf, so they never widen the panel past it.
    mpCToolPanel = new wxPanel(this, wxID_ANY);
    mpCTools = new wxWrapSizer(wxHORIZONTAL);
    mpCToolPanel->SetSizer(mpCTools);
    auto addButton = [&](int id, const wxString& strLabel, const wxString& strTip) {
        auto* pButton =
            new wxButton(mpCToolPanel, id, strLabel, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
        pButton->SetToolTip(strTip);
        mpCTools->Add(pButton, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
        return pButton;
    };
    addButton(ID_EDITOR_RESCALE, _("Rescale"), _("Show every key"));
    addButton(ID_EDITOR_INSERT, _("Insert"), _("Insert a key"));
    addButton(ID_MENU_EDITOR_DELETE, _("Delete"), _("Delete the selected keys"));
    wxArrayString astrTypes;
    for (const char* str : {"Step", "Linear", "Hermite", "Hermite Ease"})
        astrTypes.Add(wxGetTranslation(str));
    mpCKeyType = new wxChoice(mpCToolPanel, ID_EDITOR_KEY_TYPE, wxDefaultPosition, wxDefaultSize, astrTypes);
    mpCKeyType->SetToolTip(_("Interpolation of the selected keys"));
    mpCTools->Add(mpCKeyType, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    mpCTools->Add(new wxStaticText(mpCToolPanel, wxID_ANY, _("Ease")), 0, wxALIGN_CENTER_VERTICAL | wxLEFT,
                  4);
    mpCEase = new wxTextCtrl(mpCToolPanel, ID_EDITOR_EASE, "1", wxDefaultPosition, wxSize(40, -1),
                             wxTE_PROCESS_ENTER);
    mpCEase->SetToolTip(_("Ease factor of Hermite keys; Enter sets it on the selected keys"));
    mpCEase->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { ApplyEase(); });
    mpCTools->Add(mpCEase, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);

    mpCGraph->mFuncChanged = [this](bool bCommand) { OnGraphChanged(bCommand); };
    mpCGraph->mFuncBeforeUse = [this]() { RebuildChannels(); };
    mpCGraph->Bind(wxEVT_KEY_DOWN, &EditorBase_cls::OnGraphKey, this);
    mpCGraph->mFuncRightClick = [this](const wxPoint& point) { ShowPopMenu(point); };
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    pSizer->Add(mpCToolPanel, 0, wxEXPAND);
    pSizer->Add(mpCGraph, 1, wxEXPAND);
    SetSizer(pSizer);
}

bool EditorBase_cls::IsUpdateTooFast() {
    if (!GpCTimeCtrl || !GpCTimeCtrl->IsPlaying())
        return false;
    const long now = mStopWatch.Time();
    if (now - mLastUpdate < msUpdateMillis)
        return true;
    mLastUpdate = now;
    return false;
}

void EditorBase_cls::UpdatePanelSelf(const wxString& strName, bool) {
    if (!IsUpdateTarget(strName) && !(strName == "OUTLINER" && IsFollowingOutliner()))
        return;
    if (IsUpdateTooFast())
        return;
    RebuildChannels();
    ++mUpdateCount;
    UpdateKeyTypeChoice();
    UpdateEditorSelf();
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

void EditorBase_cls::StoreViewToList() {
    const GraphGeom_cls& geom = mCEdit.GetGeom();
    mCAAMin.SetBodyFromData(geom.mY0);
    mCAAMax.SetBodyFromData(geom.mY1);
    mCXRangeMin.SetBodyFromData(geom.mX0);
    mCXRangeMax.SetBodyFromData(geom.mX1);
}

void EditorBase_cls::LoadViewFromList() {
    GraphGeom_cls& geom = mCEdit.GetGeom();
    geom.SetXRange(mCXRangeMin.GetBodyDOUBLE(), mCXRangeMax.GetBodyDOUBLE());
    geom.SetYRange(mCAAMin.GetBodyDOUBLE(), mCAAMax.GetBodyDOUBLE());
}

void EditorBase_cls::SerializeSelf(wxString& strOut) {
    StoreViewToList();
    mCList.Serialize(strOut);
}

bool EditorBase_cls::ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) {
    if (!mCList.ReadStrLine(stream, strKey, strRest))
        return false;
    LoadViewFromList();
    mbViewRead = true;
    if (mpCGraph)
        mpCGraph->Refresh(false);
    return true;
}

void EditorBase_cls::SetChannelsAndFrame(std::vector<GraphChannel_cls> vChannel) {
    wxString strTags;
    for (const GraphChannel_cls& channel : vChannel)
        strTags << channel.mStrTag << "\n";
    mCEdit.SetChannels(std::move(vChannel));
    if (strTags == mStrShownTags)
        return;
    const bool bFirst = mStrShownTags.empty();
    mStrShownTags = strTags;
    // A view read from the layout stays for the channels it was saved with.
    if (bFirst && mbViewRead)
        return;
    if (mpCGraph)
        mpCGraph->SyncGeometry();
    mCEdit.FrameAll();
}

void EditorBase_cls::FrameAll() {
    RebuildChannels();
    if (mpCGraph)
        mpCGraph->SyncGeometry();
    mCEdit.FrameAll();
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

void EditorBase_cls::ZoomView(double factor) {
    GraphGeom_cls& geom = mCEdit.GetGeom();
    const int px = (geom.GetPlotLeft() + geom.GetPlotRight()) / 2;
    const int py = (geom.GetPlotTop() + geom.GetPlotBottom()) / 2;
    geom.Zoom(factor, px, py, true, true);
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

void EditorBase_cls::DeleteSelectedKeys() {
    RebuildChannels();
    mCEdit.DeleteSelected();
}

void EditorBase_cls::SetSelectedKeyType(int choice) {
    RebuildChannels();
    double ease = 1.0;
    if (mpCEase)
        mpCEase->GetValue().ToCDouble(&ease);
    if (choice == 3)
        mCEdit.SetSelectedType(2, 0.0);
    else if (choice >= 0 && choice <= 2)
        mCEdit.SetSelectedType(choice, choice == 2 ? ease : 1.0);
}

bool EditorBase_cls::ApplyEase() {
    double ease = 1.0;
    if (!mpCEase || !TLParamLogic_cls::ParseNumber(mpCEase->GetValue(), &ease))
        return false;
    RebuildChannels();
    mCEdit.SetSelectedEase(ease);
    return true;
}

void EditorBase_cls::InsertKeys() {
    RebuildChannels();
    mCEdit.InsertKeysAt(mCEdit.SnapX(GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT() : 0.0));
}

void EditorBase_cls::OnGraphChanged(bool) {}

void EditorBase_cls::UpdateKeyTypeChoice() {
    if (!mpCKeyType)
        return;
    const GraphKeyEdit_cls::Hit_cls hit = mCEdit.GetFirstSelected();
    int choice = wxNOT_FOUND;
    if (hit.IsHit()) {
        const KeyFrame_cls& key = mCEdit.GetChannels()[hit.mChannel].mpCParam->mVCKey[hit.mKey];
        if (key.mType >= KeyFrame_cls::TYPE_STEP && key.mType <= KeyFrame_cls::TYPE_HERMITE)
            choice = static_cast<int>(key.mType);
        if (key.mType == KeyFrame_cls::TYPE_HERMITE && key.mEaseFactor == 0.0)
            choice = 3;
        if (key.mType == KeyFrame_cls::TYPE_HERMITE && mpCEase && key.mEaseFactor != 0.0)
            mpCEase->ChangeValue(wxString::Format("%g", key.mEaseFactor));
    }
    if (mpCKeyType->GetSelection() != choice)
        mpCKeyType->SetSelection(choice);
}

void EditorBase_cls::OnGraphKey(wxKeyEvent& event) {
    RebuildChannels();
    switch (event.GetKeyCode()) {
    case WXK_DELETE:
    case WXK_BACK:
        DeleteSelectedKeys();
        break;
    case WXK_HOME:
        FrameAll();
        break;
    default:
        event.Skip();
        break;
    }
}

void EditorBase_cls::AppendPopItems(wxMenu& menu) {
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_INSERT, _("Insert Key"));
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_DELETE, _("Delete Keys"));
    menu.AppendSeparator();
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_STEP, _("Step"));
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_LINEAR, _("Linear"));
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_HERMITE, _("Hermite"));
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_HERMITE_EASE, _("Hermite Ease"));
    menu.AppendSeparator();
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_FRAME, _("Rescale"));
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_DESELECT, _("Deselect"));
}

void EditorBase_cls::ShowPopMenu(const wxPoint& point) {
    wxMenu menu;
    AppendPopItems(menu);
    PopupMenu(&menu, mpCGraph ? mpCGraph->GetPosition() + point : point);
}

void EditorBase_cls::ProcPopAction(int action) {
    switch (action) {
    case POP_INSERT:
        InsertKeys();
        break;
    case POP_DELETE:
        DeleteSelectedKeys();
        break;
    case POP_STEP:
    case POP_LINEAR:
    case POP_HERMITE:
    case POP_HERMITE_EASE:
        SetSelectedKeyType(action - POP_STEP);
        break;
    case POP_FRAME:
        FrameAll();
        break;
    case POP_DESELECT:
        mCEdit.DeselectAll();
        if (mpCGraph)
            mpCGraph->Refresh(false);
        break;
    default:
        break;
    }
}

void EditorBase_cls::OnTool(wxCommandEvent& event) {
    switch (event.GetId()) {
    case ID_PANEL_ZOOM_P:
        ZoomView(1.25);
        break;
    case ID_PANEL_ZOOM_M:
        ZoomView(0.8);
        break;
    case ID_EDITOR_RESCALE:
        FrameAll();
        break;
    case ID_EDITOR_INSERT:
        InsertKeys();
        break;
    case ID_MENU_EDITOR_DELETE:
        DeleteSelectedKeys();
        break;
    case ID_EDITOR_KEY_TYPE:
        SetSelectedKeyType(event.GetSelection());
        break;
    default:
        event.Skip();
        break;
    }
}

void EditorBase_cls::OnMenu(wxCommandEvent& event) {
    const int id = event.GetId();
    if (id == ID_MENU_EDITOR_DELETE)
        DeleteSelectedKeys();
    else if (id == ID_MENU_EDITOR_ZOOM_IN || id == ID_MENU_EDITOR_ZOOM_OUT)
        ZoomView(id == ID_MENU_EDITOR_ZOOM_IN ? 1.25 : 0.8);
    else
        ProcPopAction(id - ID_MENU_EDITOR_POP_FIRST);
}

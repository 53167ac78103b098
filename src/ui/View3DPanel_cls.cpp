#include "View3DPanel_cls.h"

#include "GLCanvas_cls.h"
#include "PanelBar_cls.h"
#include "PropertyRender_cls.h"
#include "SplittableWindow_cls.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

const char* const View3DPanel_cls::msStrIdleLine = "UpdateByIDLE. Not so good. Try another method if able.";

namespace {
const char* const kFieldLabels[7] = {"Pos X", "Pos Y", "Pos Z", "Tgt X", "Tgt Y", "Tgt Z", "Angle"};
} // namespace

namespace {
// The 3D views of the process, oldest first: the render page records through the first.
std::vector<View3DPanel_cls*> GVPanel;

View3D_cls* GetActiveView() {
    return GVPanel.empty() ? nullptr : &GVPanel.front()->GetView();
}
} // namespace

View3DPanel_cls::View3DPanel_cls(SplittableWindow_cls* pOwner) : wxPanelEX(pOwner, _PANEL_VIEW3D) {
    GVPanel.push_back(this);
    PropertyRender_cls::msFuncGetActiveView = &GetActiveView;
    ConstructPanelBar();
    mpCCanvas = new GLCanvas_cls(this, &mCView);
    mpCCanvas->mFuncPoseChanged = [this] { UpdateNumPanel(); };
    mpCCanvas->mFuncButtonClicked = [this] { ShowNumPanel(true); };

    mpCNumPanel = new wxPanel(this, wxID_ANY);
    auto* pGrid = new wxFlexGridSizer(2, 2, 2);
    for (int i = 0; i < 7; ++i) {
        pGrid->Add(new wxStaticText(mpCNumPanel, wxID_ANY, kFieldLabels[i]), 0, wxALIGN_CENTER_VERTICAL);
        // The default window name "text" keeps the shortcuts out of typing.
        mApCField[i] = new wxTextCtrl(mpCNumPanel, wxID_ANY, wxEmptyString, wxDefaultPosition, wxSize(70, -1),
                                      wxTE_PROCESS_ENTER);
        mApCField[i]->Bind(wxEVT_TEXT_ENTER, &View3DPanel_cls::OnFieldEnter, this);
        pGrid->Add(mApCField[i], 0, wxEXPAND);
    }
    auto* pHide =
        new wxButton(mpCNumPanel, wxID_ANY, "Hide", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    pHide->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ShowNumPanel(false); });
    auto* pNumSizer = new wxBoxSizer(wxVERTICAL);
    pNumSizer->Add(pGrid, 0, wxALL, 4);
    pNumSizer->Add(pHide, 0, wxALL, 4);
    mpCNumPanel->SetSizer(pNumSizer);

    auto* pBody = new wxBoxSizer(wxHORIZONTAL);
    pBody->Add(mpCCanvas, 1, wxEXPAND);
    pBody->Add(mpCNumPanel, 0, wxEXPAND);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    pSizer->Add(pBody, 1, wxEXPAND);
    SetSizer(pSizer);
    mpCNumPanel->Show(IsNumPanelShown());
    UpdateNumPanel();
}

View3DPanel_cls::~View3DPanel_cls() {
    GVPanel.erase(std::remove(GVPanel.begin(), GVPanel.end(), this), GVPanel.end());
    if (GVPanel.empty())
        PropertyRender_cls::msFuncGetActiveView = nullptr;
}

bool View3DPanel_cls::ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) {
    if (!mCView.ReadStrLine(stream, strKey, strRest))
        return false;
    mpCCanvas->ResetCamera();
    mpCNumPanel->Show(IsNumPanelShown());
    Layout();
    UpdateNumPanel();
    mpCCanvas->RefreshEX();
    return true;
}

bool View3DPanel_cls::IsInnertiaExist() {
    return mpCCanvas->IsInnertiaExist();
}

bool View3DPanel_cls::IsNumPanelShown() const {
    return mCView.mCNumPanelShown.GetBodyBOOL();
}

void View3DPanel_cls::ShowNumPanel(bool bShow) {
    mCView.mCNumPanelShown.SetBodyFromDataBOOL(bShow);
    mpCNumPanel->Show(bShow);
    Layout();
    UpdateNumPanel();
    // The button in the corner is drawn only while the panel is hidden.
    mpCCanvas->Refresh(false);
}

void View3DPanel_cls::UpdateNumPanel() {
    const PositionAndDirection_cls pose = mCView.GetPosDir();
    const double values[7] = {pose.mPos[0], pose.mPos[1], pose.mPos[2],          pose.mTgt[0],
                              pose.mTgt[1], pose.mTgt[2], mCView.GetViewAngleL()};
    for (int i = 0; i < 7; ++i)
        mApCField[i]->ChangeValue(wxString::Format("%.4g", values[i]));
}

bool View3DPanel_cls::ApplyNumPanel() {
    double values[7];
    for (int i = 0; i < 7; ++i)
        if (!mApCField[i]->GetValue().ToCDouble(&values[i]))
            return false;
    if (std::fabs(values[3]) + std::fabs(values[4]) + std::fabs(values[5]) <= 0.0 || values[6] <= 0.0 ||
        values[6] >= 180.0)
        return false;
    PositionAndDirection_cls pose = mCView.GetPosDir();
    for (int i = 0; i < 3; ++i) {
        pose.mPos[i] = values[i];
        pose.mTgt[i] = values[3 + i];
    }
    // A target along the top keeps no frame: the top is then taken from the old right.
    const double* t = pose.mTgt;
    const double* u = pose.mTop;
    const double len = std::sqrt(t[0] * t[0] + t[1] * t[1] + t[2] * t[2]);
    if (std::fabs((t[0] * u[0] + t[1] * u[1] + t[2] * u[2]) / len) > 0.999) {
        const double r[3] = {pose.mRight[0], pose.mRight[1], pose.mRight[2]};
        pose.mTop[0] = r[1] * t[2] - r[2] * t[1];
        pose.mTop[1] = r[2] * t[0] - r[0] * t[2];
        pose.mTop[2] = r[0] * t[1] - r[1] * t[0];
    }
    pose.Normalize();
    mCView.SetPosDir(pose);
    mCView.mCViewAngleL.SetBodyFromData(wxString::Format("%g", values[6]));
    mpCCanvas->ResetCamera();
    mpCCanvas->RefreshEX();
    return true;
}

void View3DPanel_cls::OnFieldEnter(wxCommandEvent&) {
    if (!ApplyNumPanel())
        UpdateNumPanel();
}

void View3DPanel_cls::UpdatePanelSelf(const wxString& strName, bool) {
    if (strName == "IDLE") {
        if (mpCCanvas->ProcInertia()) {
            printf("%s\n", msStrIdleLine);
            mpCCanvas->RefreshEX();
            UpdateNumPanel();
        }
        return;
    }
    if (!IsUpdateTarget(strName))
        return;
    mpCCanvas->RefreshEX();
}

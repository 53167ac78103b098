#include "SplittableWindow_cls.h"

#include "FrameMain_cls.h"
#include "PlaceholderPanel_cls.h"
#include "wxPanelEX.h"

#include <wx/log.h>

#include <algorithm>

namespace {

// Corrupt nesting of a layout and misuse of the tree are programmer errors; they are logged
// with the expression that failed and the operation stops, so a bad file cannot crash.
bool CheckTree(bool bCondition, const char* pExpression) {
    if (!bCondition)
        wxLogError("Assertion failed: %s", pExpression);
    return bCondition;
}

wxString ReadLine(std::wistream& stream, bool& bOk) {
    std::wstring line;
    bOk = static_cast<bool>(std::getline(stream, line));
    return wxString(line);
}

} // namespace

SplittableWindow_cls::SplittableWindow_cls(wxWindow* pParent)
    : wxSplitterWindow(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_3D | wxSP_LIVE_UPDATE,
                       "SplittableWindow") {
    mbTop = true;
    InitSplitter();
}

SplittableWindow_cls::SplittableWindow_cls(wxSplitterWindow* pParent)
    : wxSplitterWindow(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_3D | wxSP_LIVE_UPDATE,
                       "splitter") {
    mpCParentSWindow = dynamic_cast<SplittableWindow_cls*>(pParent);
    InitSplitter();
}

void SplittableWindow_cls::InitSplitter() {
    // The sash keeps its distance from the left or top when the window is resized, so the
    // positions read from a layout hold once the frame has its size.
    SetSashGravity(0.0);
}

wxPanelEX* SplittableWindow_cls::GetPCPanel() const {
    if (IsSplit())
        return nullptr;
    return dynamic_cast<wxPanelEX*>(GetWindow1());
}

wxWindow* SplittableWindow_cls::GetTopFrame() const {
    return wxGetTopLevelParent(const_cast<SplittableWindow_cls*>(this));
}

wxPanelEX* SplittableWindow_cls::GeneratePanel(const wxString& strTypeName, bool bShow) {
    if (IsSplit())
        return nullptr;
    int type = wxPanelEX::GetPanelTypeFromName(strTypeName);
    if (!wxPanelEX::IsLeafType(type))
        return nullptr;
    wxPanelEX* pPanel = nullptr;
    if (wxPanelEX::PanelMaker funcMake = wxPanelEX::GetPanelMaker(type))
        pPanel = funcMake(this);
    else if (type == _PANEL_DUMMY)
        pPanel = new wxPanelEX(this, _PANEL_DUMMY);
    else
        pPanel = new PlaceholderPanel_cls(this, type);
    if (!pPanel)
        return nullptr;
    if (pPanel->GetPanelType() != type)
        pPanel->SetPanelType(type);
    wxWindow* pOld = GetWindow1();
    pPanel->SetOwner(this);
    if (!bShow)
        pPanel->Hide();
    Initialize(pPanel);
    if (pOld && pOld != pPanel)
        pOld->Destroy();
    return pPanel;
}

void SplittableWindow_cls::GenerateWindows(const wxString& strTypeA, const wxString& strTypeB) {
    if (IsSplit())
        return;
    wxWindow* pOld = GetWindow1();
    auto* pA = new SplittableWindow_cls(this);
    auto* pB = new SplittableWindow_cls(this);
    pA->GeneratePanel(strTypeA);
    pB->GeneratePanel(strTypeB);
    SplitHorizontally(pA, pB, -msLowerPaneSize);
    SetMinimumPaneSize(msMinimumPaneSize);
    mpCChildSWindow[0] = pA;
    mpCChildSWindow[1] = pB;
    if (pOld)
        pOld->Destroy();
}

void SplittableWindow_cls::ReplaceWindowTo(wxWindow* pOld, wxWindow* pNew) {
    ReplaceWindow(pOld, pNew);
    for (auto& pChild : mpCChildSWindow)
        if (pChild == pOld)
            pChild = dynamic_cast<SplittableWindow_cls*>(pNew);
}

void SplittableWindow_cls::DestroyChildSWindows() {
    if (IsSplit())
        Unsplit();
    Initialize(nullptr);
    for (auto& pChild : mpCChildSWindow) {
        if (pChild)
            pChild->Destroy();
        pChild = nullptr;
    }
}

void SplittableWindow_cls::DestroyPanel(wxPanelEX* pPanel) {
    if (!CheckTree(!IsSplit(), "IsSplit() == FALSE"))
        return;
    if (mbTop)
        return;
    SplittableWindow_cls* pParent = mpCParentSWindow;
    if (!CheckTree(pParent && pParent->IsSplit(), "IsSplit() == TRUE"))
        return;
    wxWindow* pFrame = GetTopFrame();

    Initialize(nullptr);
    if (pPanel)
        pPanel->Destroy();

    // The emptied node goes; from here on only locals are used.
    SplittableWindow_cls* pSibling =
        pParent->mpCChildSWindow[0] == this ? pParent->mpCChildSWindow[1] : pParent->mpCChildSWindow[0];
    pParent->Unsplit(this);
    pParent->mpCChildSWindow[0] = nullptr;
    pParent->mpCChildSWindow[1] = nullptr;
    Destroy();

    if (!pSibling) {
        pParent->Initialize(nullptr);
    } else if (!pSibling->IsSplit()) {
        // The surviving panel moves up into the parent, which becomes a leaf.
        wxPanelEX* pMoved = pSibling->GetPCPanel();
        if (pMoved) {
            pSibling->Initialize(nullptr);
            pMoved->Reparent(pParent);
            pMoved->SetOwner(pParent);
            pParent->ReplaceWindow(pSibling, pMoved);
        } else {
            pParent->Initialize(nullptr);
        }
        pSibling->Destroy();
    } else if (pParent->mbTop) {
        if (auto* pFrameMain = dynamic_cast<FrameMain_cls*>(pFrame))
            pFrameMain->ReplaceTopSplitterbleWindow(pSibling);
    } else {
        // The split sibling takes the parent's place under the grandparent.
        SplittableWindow_cls* pGrand = pParent->mpCParentSWindow;
        pParent->Initialize(nullptr);
        pSibling->Reparent(pGrand);
        pSibling->mpCParentSWindow = pGrand;
        pGrand->ReplaceWindowTo(pParent, pSibling);
        pParent->Destroy();
    }
    SendMenuEvent(pFrame, 6042);
}

bool SplittableWindow_cls::SeparatePanel(bool bVertical) {
    if (!CheckTree(!IsSplit(), "IsSplit() == FALSE"))
        return false;
    wxPanelEX* pPanel = GetPCPanel();
    if (!pPanel)
        return false;
    wxSize size = GetClientSize();
    if (bVertical ? size.x < msSeparateMin : size.y < msSeparateMin)
        return false;

    int type = pPanel->GetPanelType();
    auto* pA = new SplittableWindow_cls(this);
    auto* pB = new SplittableWindow_cls(this);
    ReplaceWindow(pPanel, pA);
    pPanel->Reparent(pA);
    pPanel->SetOwner(pA);
    pA->Initialize(pPanel);
    if (type >= 0 && type < _PANEL_TYPE_COUNT)
        pB->GeneratePanel(wxPanelEX::msVstrPanelName[type]);
    if (bVertical)
        SplitVertically(pA, pB, 0);
    else
        SplitHorizontally(pA, pB, 0);
    SetMinimumPaneSize(msMinimumPaneSize);
    mpCChildSWindow[0] = pA;
    mpCChildSWindow[1] = pB;
    SendMenuEvent(GetTopFrame(), 6042);
    return true;
}

SplittableWindow_cls* SplittableWindow_cls::FindSplitAncestor() {
    SplittableWindow_cls* pNode = this;
    while (pNode && !pNode->IsSplit()) {
        if (pNode->mbTop)
            return nullptr;
        pNode = pNode->mpCParentSWindow;
    }
    return pNode;
}

bool SplittableWindow_cls::SeparationDirection() {
    return Resplit(true, false) != nullptr;
}

bool SplittableWindow_cls::SeparationSwap() {
    SplittableWindow_cls* pNode = Resplit(false, true);
    if (!pNode)
        return false;
    CheckTree(pNode->mpCChildSWindow[1] == pNode->GetWindow1() &&
                  pNode->mpCChildSWindow[0] == pNode->GetWindow2(),
              "mpCChildSWindow[0] == pA && mpCChildSWindow[1] == pB");
    std::swap(pNode->mpCChildSWindow[0], pNode->mpCChildSWindow[1]);
    return true;
}

SplittableWindow_cls* SplittableWindow_cls::Resplit(bool bTurn, bool bSwap) {
    SplittableWindow_cls* pNode = FindSplitAncestor();
    if (!pNode)
        return nullptr;
    wxWindow* pA = pNode->GetWindow1();
    wxWindow* pB = pNode->GetWindow2();
    if (bSwap)
        std::swap(pA, pB);
    const bool bHorizontal = (pNode->GetSplitMode() == wxSPLIT_HORIZONTAL) != bTurn;
    pNode->Unsplit();
    if (bHorizontal)
        pNode->SplitHorizontally(pA, pB, 0);
    else
        pNode->SplitVertically(pA, pB, 0);
    return pNode;
}

int SplittableWindow_cls::SetMinimumSize() {
    if (!IsSplit() || !mpCChildSWindow[0] || !mpCChildSWindow[1])
        return msMinimumPaneSize;
    int a = mpCChildSWindow[0]->SetMinimumSize();
    int b = mpCChildSWindow[1]->SetMinimumSize();
    SetMinimumPaneSize(std::max(a, b));
    return a + b + 6;
}

bool SplittableWindow_cls::IsInnertiaExist() {
    if (IsSplit()) {
        bool bInertia = false;
        for (SplittableWindow_cls* pChild : mpCChildSWindow)
            if (pChild && pChild->IsInnertiaExist())
                bInertia = true;
        return bInertia;
    }
    wxPanelEX* pPanel = GetPCPanel();
    return pPanel && pPanel->GetPanelType() == _PANEL_VIEW3D && pPanel->IsInnertiaExist();
}

void SplittableWindow_cls::UpdatePanels(const wxString& strName, bool bForce) {
    if (IsSplit()) {
        for (SplittableWindow_cls* pChild : mpCChildSWindow)
            if (pChild)
                pChild->UpdatePanels(strName, bForce);
        return;
    }
    if (wxPanelEX* pPanel = GetPCPanel())
        pPanel->UpdatePanels(strName, bForce);
}

void SplittableWindow_cls::ProcAfterMath(const wxString& strWhat, const wxString& strArg) {
    if (IsSplit()) {
        for (SplittableWindow_cls* pChild : mpCChildSWindow)
            if (pChild)
                pChild->ProcAfterMath(strWhat, strArg);
        return;
    }
    if (wxPanelEX* pPanel = GetPCPanel())
        pPanel->ProcAfterMath(strWhat, strArg);
}

bool SplittableWindow_cls::CheckAbortClicked(const wxPoint& point) {
    if (IsSplit()) {
        for (SplittableWindow_cls* pChild : mpCChildSWindow)
            if (pChild && pChild->CheckAbortClicked(point))
                return true;
        return false;
    }
    wxPanelEX* pPanel = GetPCPanel();
    return pPanel && pPanel->CheckAbortClicked(point);
}

wxPanelEX* SplittableWindow_cls::GetPCActiveView3D() {
    if (IsSplit()) {
        for (SplittableWindow_cls* pChild : mpCChildSWindow)
            if (pChild)
                if (wxPanelEX* pView = pChild->GetPCActiveView3D())
                    return pView;
        return nullptr;
    }
    wxPanelEX* pPanel = GetPCPanel();
    if (pPanel && pPanel->GetPanelType() == _PANEL_VIEW3D && pPanel->IsActiveView())
        return pPanel;
    return nullptr;
}

// ---- layout text --------------------------------------------------------------------------

void SplittableWindow_cls::Serialize(wxString& strOut) {
    if (IsSplit() && mpCChildSWindow[0] && mpCChildSWindow[1]) {
        strOut += "SplittableWindow::SeparatePanel::";
        strOut += GetSplitMode() == wxSPLIT_HORIZONTAL ? "H::" : "V::";
        strOut += wxString::Format("%d", GetSashPosition()) + "\n";
        strOut += "PanelA\n";
        mpCChildSWindow[0]->Serialize(strOut);
        strOut += "PanelB\n";
        mpCChildSWindow[1]->Serialize(strOut);
        strOut += "SplittableWindow::Close\n";
        return;
    }
    strOut += "SplittableWindow::Panel\n";
    if (wxPanelEX* pPanel = GetPCPanel())
        pPanel->Serialize(strOut);
    else
        strOut += "wxPanelEX::Undefiend\n"; // an empty leaf reads back as an empty leaf
    strOut += "SplittableWindow::Close\n";
}

bool SplittableWindow_cls::ReadStrLine(std::wistream& stream, const wxString& strKey,
                                       const wxString& strRest) {
    if (strKey == "Panel") {
        ProceedParsePanel(stream);
        return true;
    }
    if (strKey != "SeparatePanel")
        return false;
    wxString strLine = strRest;
    wxString strDirection = PopStrItemFromStrLine(strLine, "::");
    long sash = 0;
    PopStrItemFromStrLine(strLine, "::").ToLong(&sash);
    ProceedParseSplit(stream);
    // A block that lost one side still gives a split node with two children.
    for (auto& pChild : mpCChildSWindow)
        if (!pChild) {
            pChild = new SplittableWindow_cls(this);
            pChild->Hide();
        }
    wxWindow* pOldPanel = IsSplit() ? nullptr : GetWindow1();
    if (IsSplit())
        Unsplit();
    if (strDirection == "H")
        SplitHorizontally(mpCChildSWindow[0], mpCChildSWindow[1], static_cast<int>(sash));
    else
        SplitVertically(mpCChildSWindow[0], mpCChildSWindow[1], static_cast<int>(sash));
    SetMinimumPaneSize(msMinimumPaneSize);
    if (pOldPanel && pOldPanel != mpCChildSWindow[0] && pOldPanel != mpCChildSWindow[1])
        pOldPanel->Destroy();
    return true;
}

void SplittableWindow_cls::ProceedParsePanel(std::wistream& stream) {
    bool bOk = true;
    for (;;) {
        wxString strLine = ReadLine(stream, bOk);
        if (!bOk)
            return;
        wxString strFirst = PopStrItemFromStrLine(strLine, "::");
        if (strFirst == "wxPanelEX") {
            wxString strType = PopStrItemFromStrLine(strLine, "::");
            // The panel's own block starts on the next line. A panel without a block meets
            // the close line here, and the end test below sees that same line.
            strLine = ReadLine(stream, bOk);
            wxPanelEX* pPanel = GeneratePanel(strType);
            if (!bOk)
                return; // the file ends here: the panel stays without its block
            strFirst = PopStrItemFromStrLine(strLine, "::");
            if (pPanel)
                pPanel->ReadStrLine(stream, strFirst, strLine);
        }
        wxString strRest = strLine;
        if (strFirst == "SplittableWindow" && PopStrItemFromStrLine(strRest, "::") == "Close")
            return;
    }
}

void SplittableWindow_cls::ProceedParseSplit(std::wistream& stream) {
    bool bOk = true;
    for (;;) {
        wxString strLine = ReadLine(stream, bOk);
        if (!bOk)
            return;
        wxString strFirst = PopStrItemFromStrLine(strLine, "::");
        if (strFirst == "PanelA" || strFirst == "PanelB") {
            int side = strFirst == "PanelA" ? 0 : 1;
            wxString strNext = ReadLine(stream, bOk);
            if (!bOk)
                return;
            wxString strFirstItem = PopStrItemFromStrLine(strNext, "::");
            if (!CheckTree(strFirstItem == "SplittableWindow",
                           side == 0 ? "strFirstItemA.IsSameAs(wxT(\"SplittableWindow\"))"
                                     : "strFirstItemB.IsSameAs(wxT(\"SplittableWindow\"))"))
                continue;
            wxString strSecond = PopStrItemFromStrLine(strNext, "::");
            if (mpCChildSWindow[side])
                mpCChildSWindow[side]->Destroy();
            auto* pChild = new SplittableWindow_cls(this);
            pChild->Hide();
            mpCChildSWindow[side] = pChild;
            pChild->ReadStrLine(stream, strSecond, strNext);
            continue;
        }
        if (strFirst == "SplittableWindow" && PopStrItemFromStrLine(strLine, "::") == "Close")
            return;
    }
}

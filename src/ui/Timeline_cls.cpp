#include "Timeline_cls.h"

#include "ClassProvider_cls.h"
#include "Main_cls.h"
#include "PanelBar_cls.h"
#include "PlayCtrl_cls.h"
#include "Queue_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SplittableWindow_cls.h"
#include "TLParamLogic_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineAA_cls.h"
#include "TimelineParam_cls.h"
#include "TimelineTics_cls.h"
#include "TimelineWA_cls.h"

#include <wx/button.h>
#include <wx/menu.h>
#include <wx/scrolbar.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <memory>

Timeline_cls::Timeline_cls(SplittableWindow_cls* pOwner)
    : wxPanelEX(pOwner, _PANEL_TIMELINE), mCConf(GpCTimeCtrl ? GpCTimeCtrl->GetFrameMax() : 100) {
    ConstructPanelBar();
    auto update = [this] { UpdatePanels("ALL", false); };
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);

    // The play strip, the frame boxes and the column switches.
    auto* pTop = new wxBoxSizer(wxHORIZONTAL);
    mpCPlayCtrl = new PlayCtrl_cls(this);
    pTop->Add(mpCPlayCtrl, 1, wxALIGN_CENTER_VERTICAL);
    auto addButton = [&](int id, const wxString& strLabel, const wxString& strTip) {
        auto* p = new wxButton(this, id, strLabel, wxDefaultPosition, wxSize(34, -1), wxBU_EXACTFIT);
        p->SetToolTip(strTip);
        pTop->Add(p, 0, wxALIGN_CENTER_VERTICAL | wxLEFT, 2);
    };
    addButton(ID_TL_TICS_MODE, "Tic", _("Ruler mode"));
    addButton(ID_TL_KILROY, "K", _("Group marks"));
    addButton(ID_TL_TIME_DEPEND, "T", _("Time dependency column"));
    addButton(ID_TL_SELECT_ONLY, "Sel", _("Show only the selection"));
    auto addDrop = [&](int id, const wxString& strLabel) {
        auto* p = new wxButton(this, id, strLabel, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
        pTop->Add(p, 0, wxALIGN_CENTER_VERTICAL | wxLEFT, 2);
    };
    addDrop(ID_TL_MENU_VIEW, _("View"));
    addDrop(ID_TL_MENU_SELECT, _("Select"));
    addDrop(ID_TL_MENU_TIMELINE, _("Timeline"));
    addDrop(ID_TL_MENU_CHANNEL, _("Channel"));
    addDrop(ID_TL_MENU_KEY, _("Key"));
    pSizer->Add(pTop, 0, wxEXPAND | wxALL, 1);

    // The three bars, each after its spacer and its side controls.
    auto addBar = [&](int i, wxWindow* pSide, wxWindow* pBar) {
        auto* pRow = new wxBoxSizer(wxHORIZONTAL);
        mpCSpacer[i] = pRow->Add(0, 0, 0);
        auto* pSideSizer = new wxBoxSizer(wxHORIZONTAL);
        pSideSizer->SetMinSize(wxSize(msSideWidth, -1));
        if (pSide)
            pSideSizer->Add(pSide, 1, wxALIGN_CENTER_VERTICAL);
        pRow->Add(pSideSizer, 0, wxEXPAND);
        pRow->Add(pBar, 1, wxEXPAND);
        pSizer->Add(pRow, 0, wxEXPAND);
    };
    mpCAA = new TimelineAA_cls(this, &mCConf, update);
    addBar(0, new wxStaticText(this, wxID_ANY, _("Range")), mpCAA);
    auto* pFrames = new wxPanel(this);
    auto* pFramesSizer = new wxBoxSizer(wxHORIZONTAL);
    mpCFrameCurrent = new wxTextCtrl(pFrames, ID_TL_FRAME_CURRENT, "0", wxDefaultPosition, wxSize(60, -1),
                                     wxTE_PROCESS_ENTER);
    mpCFrameMax = new wxTextCtrl(pFrames, ID_TL_FRAME_MAX, "100", wxDefaultPosition, wxSize(60, -1),
                                 wxTE_PROCESS_ENTER);
    mpCFrameCurrent->SetToolTip(_("Current frame"));
    mpCFrameMax->SetToolTip(_("Last frame"));
    pFramesSizer->Add(mpCFrameCurrent, 1);
    pFramesSizer->Add(mpCFrameMax, 1);
    pFrames->SetSizer(pFramesSizer);
    mpCTics = new TimelineTics_cls(this, &mCConf, update);
    addBar(1, pFrames, mpCTics);
    mpCWA = new TimelineWA_cls(this, &mCConf, update);
    addBar(2, new wxStaticText(this, wxID_ANY, _("Work Area")), mpCWA);

    mpCParam = new TimelineParam_cls(this, &mCConf, update);
    mpCScroll = new wxScrollBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_VERTICAL);
    auto* pRows = new wxBoxSizer(wxHORIZONTAL);
    pRows->Add(mpCParam, 1, wxEXPAND);
    pRows->Add(mpCScroll, 0, wxEXPAND);
    pSizer->Add(pRows, 1, wxEXPAND);
    mpCParam->mFuncScrolled = [this](int rowsHeight, int viewHeight, int scrollY) {
        // Only a change reaches the bar, so a repaint of the rows never loops through it.
        if (mpCScroll->GetRange() != rowsHeight || mpCScroll->GetThumbSize() != viewHeight ||
            mpCScroll->GetThumbPosition() != scrollY)
            mpCScroll->SetScrollbar(scrollY, viewHeight, rowsHeight, viewHeight);
    };
    auto bindScroll = [this](const auto&... types) {
        (mpCScroll->Bind(types, &Timeline_cls::OnScroll, this), ...);
    };
    bindScroll(wxEVT_SCROLL_TOP, wxEVT_SCROLL_BOTTOM, wxEVT_SCROLL_LINEUP, wxEVT_SCROLL_LINEDOWN,
               wxEVT_SCROLL_PAGEUP, wxEVT_SCROLL_PAGEDOWN, wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_CHANGED);
    SetSizer(pSizer);

    Bind(wxEVT_BUTTON, &Timeline_cls::OnTicsMode, this, ID_TL_TICS_MODE);
    Bind(wxEVT_BUTTON, &Timeline_cls::OnKilroy, this, ID_TL_KILROY);
    Bind(wxEVT_BUTTON, &Timeline_cls::OnTimeDepend, this, ID_TL_TIME_DEPEND);
    Bind(wxEVT_BUTTON, &Timeline_cls::OnSelectOnly, this, ID_TL_SELECT_ONLY);
    // The column switches are items of the View menu too.
    Bind(wxEVT_MENU, &Timeline_cls::OnTicsMode, this, ID_TL_TICS_MODE);
    Bind(wxEVT_MENU, &Timeline_cls::OnKilroy, this, ID_TL_KILROY);
    Bind(wxEVT_MENU, &Timeline_cls::OnTimeDepend, this, ID_TL_TIME_DEPEND);
    Bind(wxEVT_MENU, &Timeline_cls::OnSelectOnly, this, ID_TL_SELECT_ONLY);
    for (int id :
         {ID_TL_MENU_VIEW, ID_TL_MENU_SELECT, ID_TL_MENU_TIMELINE, ID_TL_MENU_CHANNEL, ID_TL_MENU_KEY})
        Bind(wxEVT_BUTTON, &Timeline_cls::OnMenuDrop, this, id);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuTimeDepend, this, ID_TL_MENU_TIME_DEPEND);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuShy, this, ID_TL_MENU_SHY);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuKeyType, this, ID_TL_MENU_KEY_TYPE_FIRST,
         ID_TL_MENU_KEY_TYPE_FIRST + 3);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuKeyEase, this, ID_TL_MENU_KEY_EASE);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuOpenMarked, this, ID_TL_MENU_OPEN_MARKED);
    mpCFrameCurrent->Bind(wxEVT_TEXT_ENTER, &Timeline_cls::OnFrame, this);
    mpCFrameMax->Bind(wxEVT_TEXT_ENTER, &Timeline_cls::OnFrame, this);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuZoom, this, ID_TL_MENU_ZOOM_IN, ID_TL_MENU_ZOOM_OUT);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuTLIn, this, ID_TL_MENU_TL_IN);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuTLOut, this, ID_TL_MENU_TL_OUT);
    Bind(wxEVT_MENU, &Timeline_cls::OnDeselect, this, ID_TL_MENU_DESELECT);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuDelete, this, ID_TL_MENU_DELETE);
    Bind(wxEVT_MENU, &Timeline_cls::OnMenuExtrapolate, this, ID_TL_MENU_EXTRAPOLATE_ON,
         ID_TL_MENU_EXTRAPOLATE_OFF);
    mpCParam->Bind(wxEVT_RIGHT_DOWN, &Timeline_cls::OnRowsRightDown, this);
    // The bar's zoom buttons are the row font's.
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Zoom(1); }, ID_PANEL_ZOOM_P);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Zoom(-1); }, ID_PANEL_ZOOM_M);
    mpCParam->Bind(wxEVT_KEY_DOWN, &Timeline_cls::OnKeyDown, this);
    UpdatePanels("ALL", false);
}

// ---- updates --------------------------------------------------------------------------------

void Timeline_cls::UpdatePanelSelf(const wxString& strName, bool bForce) {
    if (IsUpdateTarget(strName))
        UpdatePanels(strName, bForce);
}

void Timeline_cls::UpdatePanels(const wxString& strName, bool bFull) {
    if (strName != GetName() && strName != "ALL")
        return;
    // 1. A new FrameMax carries the shown range along when it showed the whole animation, or
    // when the range now lies past the end.
    if (GpCQueue && GpCTimeCtrl && GpCQueue->IsFrameMaxChanged()) {
        const int frameMax = GpCTimeCtrl->GetFrameMax();
        if (mCConf.GetAAMax() == GpCQueue->GetOldFrameMax() || frameMax < mCConf.GetAAMax())
            mCConf.mCAAMax.SetBodyFromData(static_cast<long long>(frameMax));
        if (mCConf.GetAAMin() >= mCConf.GetAAMax())
            mCConf.mCAAMin.SetBodyFromData(static_cast<long long>(std::max(mCConf.GetAAMax() - 1, 0)));
    }
    // 2. The bars follow the name column's width.
    if (mCConf.GetSashX() != mLastSashX) {
        for (wxSizerItem* p : mpCSpacer)
            p->SetMinSize(wxSize(std::max(mCConf.GetSashX() - msSideWidth, 0), 0));
        Layout();
        mLastSashX = mCConf.GetSashX();
    }
    // 3. The four strips and the play strip.
    RefreshStrips();
    mpCPlayCtrl->UpdatePanels();
    // 4.
    if (bFull)
        Refresh();
    // 5.
    UpdateTextCtrls();
}

void Timeline_cls::RefreshStrips() {
    mpCAA->Refresh();
    mpCTics->Refresh();
    mpCWA->Refresh();
    mpCParam->Refresh();
}

void Timeline_cls::UpdateTextCtrls() {
    if (!GpCTimeCtrl)
        return;
    const wxString strCurrent = wxString::Format("%d", GpCTimeCtrl->GetFrameCurrent());
    const wxString strMax = wxString::Format("%d", GpCTimeCtrl->GetFrameMax());
    if (mpCFrameCurrent->GetValue() != strCurrent)
        mpCFrameCurrent->ChangeValue(strCurrent);
    if (mpCFrameMax->GetValue() != strMax)
        mpCFrameMax->ChangeValue(strMax);
}

void Timeline_cls::Zoom(int d) {
    mCConf.Zoom(d);
    UpdatePanels("ALL", false);
}

void Timeline_cls::ZoomRange(int d) {
    if (!GpCTimeCtrl)
        return;
    const int limit = GpCTimeCtrl->GetFrameMax();
    const int width = mCConf.GetAAMax() - mCConf.GetAAMin();
    const int newWidth = std::clamp(d > 0 ? width / 2 : width * 2, 1, std::max(limit, 1));
    const int centre = std::clamp(GpCTimeCtrl->GetFrameCurrent(), 0, limit);
    int lower = std::max(centre - newWidth / 2, 0);
    const int upper = std::min(lower + newWidth, limit);
    lower = std::max(upper - newWidth, 0);
    mCConf.mCAAMin.SetBodyFromData(static_cast<long long>(lower));
    mCConf.mCAAMax.SetBodyFromData(static_cast<long long>(upper));
    UpdatePanels("ALL", false);
}

bool Timeline_cls::ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) {
    if (!mCConf.ConfListContainer_cls::ReadStrLine(stream, strKey, strRest))
        return false;
    UpdatePanels("ALL", true);
    return true;
}

// ---- handlers -------------------------------------------------------------------------------

void Timeline_cls::ToggleItem(ConfItemBOOL_cls& item) {
    item.SetBodyFromDataBOOL(!item.GetBodyBOOL());
    UpdatePanels("ALL", false);
}

void Timeline_cls::OnTicsMode(wxCommandEvent&) {
    mCConf.mCTicMode.SetBodyFromData(
        static_cast<long long>((mCConf.GetTicMode() + 1) % TimelineConf_cls::msTicModeCount));
    UpdatePanels("ALL", false);
}

void Timeline_cls::OnKilroy(wxCommandEvent&) {
    ToggleItem(mCConf.mCKilroy);
}

void Timeline_cls::OnTimeDepend(wxCommandEvent&) {
    ToggleItem(mCConf.mCTimeDepend);
}

void Timeline_cls::OnSelectOnly(wxCommandEvent&) {
    ToggleItem(mCConf.mCSelectOnly);
}

void Timeline_cls::OnFrame(wxCommandEvent& event) {
    if (!GpCTimeCtrl)
        return;
    long value = 0;
    wxTextCtrl* pText = event.GetId() == ID_TL_FRAME_MAX ? mpCFrameMax : mpCFrameCurrent;
    if (!pText->GetValue().ToLong(&value)) {
        UpdateTextCtrls();
        return;
    }
    if (event.GetId() == ID_TL_FRAME_MAX) {
        if (value > 0 && value != GpCTimeCtrl->GetFrameMax())
            GpCTimeCtrl->SetFrameMaxCommand(static_cast<int>(value));
    } else if (value != GpCTimeCtrl->GetFrameCurrent()) {
        GpCTimeCtrl->SetCurrentFrameCommand(static_cast<int>(value));
    }
}

void Timeline_cls::OnMenuZoom(wxCommandEvent& event) {
    Zoom(event.GetId() == ID_TL_MENU_ZOOM_IN ? 1 : -1);
}

void Timeline_cls::OnMenuTLIn(wxCommandEvent&) {
    ZoomRange(1);
}

void Timeline_cls::OnMenuTLOut(wxCommandEvent&) {
    ZoomRange(-1);
}

void Timeline_cls::OnDeselect(wxCommandEvent&) {
    TLParamLogic_cls::DeselectAllKeys();
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("TIMELINE::GRAPH");
}

void Timeline_cls::OnMenuDelete(wxCommandEvent&) {
    TLParamLogic_cls::DeleteSelectedKeysCommand();
}

void Timeline_cls::OnMenuExtrapolate(wxCommandEvent& event) {
    TLParamLogic_cls::SetExtrapolateOfSelectedCommand(event.GetId() == ID_TL_MENU_EXTRAPOLATE_ON);
}

void Timeline_cls::OnMenuTimeDepend(wxCommandEvent&) {
    if (TLParamLogic_cls::SetItemOfSelectedCommand("TimeDepend=", false) && GCClassProvider)
        GCClassProvider->UpdatePanels("TIMELINE::GRAPH");
}

void Timeline_cls::OnMenuShy(wxCommandEvent&) {
    if (TLParamLogic_cls::ToggleShyOfSelectionCommand())
        UpdatePanels("ALL", false);
}

void Timeline_cls::OnMenuKeyType(wxCommandEvent& event) {
    // The types of the key model: 0 step, 1 linear, 2 Hermite; the last item is Hermite easing
    // fully into and out of its keys (ease 0), as the curve editors' item of that name.
    const int item = event.GetId() - ID_TL_MENU_KEY_TYPE_FIRST;
    if (GCClassProvider)
        GCClassProvider->SetSelectedTLKeyTypeCommand(std::min(item, 2), item == 3 ? 0.0 : 1.0);
}

void Timeline_cls::OnMenuKeyEase(wxCommandEvent&) {
    mpCParam->ConstructEaseTextCtrl();
}

void Timeline_cls::OnMenuOpenMarked(wxCommandEvent&) {
    mCConf.mCKilroy.SetBodyFromDataBOOL(true);
    mpCParam->mCRows.OpenMarkedRows();
    UpdatePanels("ALL", true);
}

namespace {

// The row and time zoom of the View menu and the row menu.
void AppendZoomItems(wxMenu* pMenu) {
    pMenu->Append(ID_TL_MENU_ZOOM_IN, _("Larger Rows"));
    pMenu->Append(ID_TL_MENU_ZOOM_OUT, _("Smaller Rows"));
    pMenu->Append(ID_TL_MENU_TL_IN, _("Zoom In Time"));
    pMenu->Append(ID_TL_MENU_TL_OUT, _("Zoom Out Time"));
}

} // namespace

wxMenu* Timeline_cls::CreateDropMenu(int id) {
    auto* pMenu = new wxMenu;
    switch (id) {
    case ID_TL_MENU_VIEW:
        AppendZoomItems(pMenu);
        pMenu->AppendSeparator();
        pMenu->Append(ID_TL_TICS_MODE, _("Next Ruler Mode"));
        pMenu->AppendCheckItem(ID_TL_KILROY, _("Group Marks"))->Check(mCConf.mCKilroy.GetBodyBOOL());
        pMenu->Append(ID_TL_MENU_OPEN_MARKED, _("Show Marked Groups"));
        pMenu->AppendCheckItem(ID_TL_TIME_DEPEND, _("Time Dependency Column"))
            ->Check(mCConf.mCTimeDepend.GetBodyBOOL());
        break;
    case ID_TL_MENU_SELECT:
        pMenu->AppendCheckItem(ID_TL_SELECT_ONLY, _("Show Only Selection"))->Check(mCConf.IsSelectOnly());
        pMenu->Append(ID_TL_MENU_DESELECT, _("Deselect Keys"));
        break;
    case ID_TL_MENU_TIMELINE:
        pMenu->Append(ID_TL_MENU_SHY, _("Shy Selection"));
        pMenu->Append(ID_TL_MENU_TL_IN, _("Zoom In Time"));
        pMenu->Append(ID_TL_MENU_TL_OUT, _("Zoom Out Time"));
        break;
    case ID_TL_MENU_CHANNEL:
        pMenu->Append(ID_TL_MENU_EXTRAPOLATE_ON, _("Extrapolate On"));
        pMenu->Append(ID_TL_MENU_EXTRAPOLATE_OFF, _("Extrapolate Off"));
        pMenu->Append(ID_TL_MENU_TIME_DEPEND, _("Time Dependency Off"));
        break;
    case ID_TL_MENU_KEY: {
        int i = ID_TL_MENU_KEY_TYPE_FIRST;
        for (const char* str : {"Step", "Linear", "Hermite", "Hermite Ease"})
            pMenu->Append(i++, wxGetTranslation(str));
        pMenu->Append(ID_TL_MENU_KEY_EASE, _("Ease Factor..."));
        pMenu->AppendSeparator();
        pMenu->Append(ID_TL_MENU_DELETE, _("Delete Keys"));
        break;
    }
    default:
        delete pMenu;
        return nullptr;
    }
    return pMenu;
}

void Timeline_cls::OnMenuDrop(wxCommandEvent& event) {
    std::unique_ptr<wxMenu> pMenu(CreateDropMenu(event.GetId()));
    auto* pButton = wxDynamicCast(event.GetEventObject(), wxWindow);
    if (!pMenu || !pButton)
        return;
    PopupMenu(pMenu.get(), pButton->GetPosition() + wxPoint(0, pButton->GetSize().y));
}

wxMenu* Timeline_cls::CreateRowMenu() {
    auto* pMenu = new wxMenu;
    AppendZoomItems(pMenu);
    pMenu->AppendSeparator();
    pMenu->Append(ID_TL_MENU_DESELECT, _("Deselect Keys"));
    pMenu->Append(ID_TL_MENU_EXTRAPOLATE_ON, _("Extrapolate On"));
    pMenu->Append(ID_TL_MENU_EXTRAPOLATE_OFF, _("Extrapolate Off"));
    pMenu->Append(ID_TL_MENU_DELETE, _("Delete Keys"));
    // The row under the click: an object is renamed, a channel or group takes a key.
    const int row = mpCParam->mMenuRow;
    if (row >= 0 && row < static_cast<int>(mpCParam->mCRows.mVCRow.size())) {
        const int kind = mpCParam->mCRows.mVCRow[row].mKind;
        pMenu->AppendSeparator();
        if (kind == TLRow_cls::ROW_OBJECT)
            pMenu->Append(TimelineParam_cls::ID_TL_RENAME, _("Rename"));
        if (kind == TLRow_cls::ROW_PARAM || kind == TLRow_cls::ROW_GROUP)
            pMenu->Append(TimelineParam_cls::ID_TL_INSERT_KEY, _("Insert Key"));
    }
    return pMenu;
}

void Timeline_cls::OnRowsRightDown(wxMouseEvent& event) {
    mpCParam->mCRows.UpdateRows();
    mpCParam->mMenuRow = mpCParam->mCRows.GetIndex(event.GetY());
    std::unique_ptr<wxMenu> pMenu(CreateRowMenu());
    // The menu's commands come to this panel, which binds their ids.
    mpCParam->PopupMenu(pMenu.get(), event.GetPosition());
}

void Timeline_cls::OnScroll(wxScrollEvent& event) {
    // A line of the bar is one row.
    const int h = mpCParam->mCRows.GetLineHeight();
    int y = event.GetPosition();
    if (event.GetEventType() == wxEVT_SCROLL_LINEUP || event.GetEventType() == wxEVT_SCROLL_LINEDOWN)
        y = mpCParam->mCRows.mScrollY + (event.GetEventType() == wxEVT_SCROLL_LINEUP ? -h : h);
    y = std::clamp(y, 0, std::max(mpCScroll->GetRange() - mpCScroll->GetThumbSize(), 0));
    if (y != mpCParam->mCRows.mScrollY) {
        mpCParam->mCRows.mScrollY = y;
        mpCParam->Refresh();
    }
}

void Timeline_cls::OnKeyDown(wxKeyEvent& event) {
    wxCommandEvent menu(wxEVT_MENU);
    switch (event.GetKeyCode()) {
    case WXK_DELETE:
        OnMenuDelete(menu);
        return;
    case '+':
    case WXK_NUMPAD_ADD:
        Zoom(1);
        return;
    case '-':
    case WXK_NUMPAD_SUBTRACT:
        Zoom(-1);
        return;
    default:
        event.Skip();
    }
}

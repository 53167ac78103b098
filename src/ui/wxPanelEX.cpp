#include "wxPanelEX.h"

#include "ClassProvider_cls.h"
#include "PanelBar_cls.h"
#include "Shortcut_cls.h"
#include "SplittableWindow_cls.h"

#include <wx/bmpcbox.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include "BitmapPanel_cls.h"

#include <algorithm>
#include <memory>

std::vector<wxString> wxPanelEX::msVstrPanelName;
std::vector<wxString> wxPanelEX::msVstrPanelNameLocale;
std::vector<wxString> wxPanelEX::msVstrPanelIconTag;

namespace {

struct PanelTableRow {
    const char* pName;
    const char* pDisplay;
    const char* pIcon;
};

const PanelTableRow gPanelTable[_PANEL_TYPE_COUNT] = {
    {"TIMELINE", "Timeline", "wxART_TIMELINE"},
    {"OUTLINER", "Outliner", "wxART_OUTLINER"},
    {"PROPERTY", "Property", "wxART_PROPERTY"},
    {"VIEW3D", "View 3D", "wxART_VIEW3D"},
    {"GRAPH", "Graph Editor", "wxART_GRAPH"},
    {"COLOR_CURVE", "Color Curve", "wxART_COLOR_CURVE"},
    {"TEXT_EDITOR", "Text Editor", "wxART_TEXT"},
    {"CONSOLE", "Console", "wxART_CONSOLE"},
    {"PROPERTY_RENDER", "Property Render", ""},
    {"PROPERTY_SCENE", "Property Scene", ""},
    {"PROPERTY_OBJECT", "Property Object", ""},
    {"PROPERTY_MATERIAL", "Property Material", ""},
    {"PROPERTY_MODIFIER", "Property Modifier", ""},
    {"PROPERTY_DATAPROC", "Property DataProc", ""},
    {"PROPERTY_FORMAT", "Property Format", ""},
    {"PROPERTY_INFO", "Property Info", ""},
    {"CHILDPANEL", "ChildPanel", ""},
    {"DUMMY", "Dummy", ""},
};

// Which panel types hear which model event.
bool IsAfterMathReceiver(const wxString& strWhat, int type) {
    if (strWhat == "SelectParamGroup")
        return type == _PANEL_GRAPH;
    if (strWhat == "SelectExpression" || strWhat == "SelectConfItem")
        return type == _PANEL_TEXT_EDITOR;
    if (strWhat == "SelectColorCurve" || strWhat == "ColorCurveChange")
        return type == _PANEL_COLOR_CURVE;
    if (strWhat == "DeleteObject" || strWhat == "RenameObject")
        return type == _PANEL_TIMELINE || type == _PANEL_OUTLINER || type == _PANEL_PROPERTY ||
               type == _PANEL_GRAPH || type == _PANEL_COLOR_CURVE || type == _PANEL_TEXT_EDITOR;
    if (strWhat == "SelectObject" || strWhat == "ModifierChange" || strWhat == "DataProcChange" ||
        strWhat == "FilterChange" || strWhat == "DeleteFilter" || strWhat == "Quit")
        return type == _PANEL_PROPERTY;
    if (strWhat == "DeleteModifier" || strWhat == "DeleteDataProc" || strWhat == "DeleteColorCurve" ||
        strWhat == "DeleteMaterial")
        return type == _PANEL_TIMELINE;
    return false;
}

} // namespace

wxPanelEX::wxPanelEX(wxWindow* pParent, int type, const wxString& strName)
    : wxScrolled<wxPanel>(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                          wxTAB_TRAVERSAL | wxBORDER_NONE, strName) {
    if (msVstrPanelName.empty())
        InitializeStatic();
    if (type != _PANEL_UNDEFINED)
        SetPanelType(type);

    Bind(wxEVT_COMBOBOX, &wxPanelEX::OnTypeSelector, this, ID_PANEL_TYPE_SELECTOR);
    Bind(wxEVT_BUTTON, &wxPanelEX::OnBtnSeparatePanel, this, ID_PANEL_SEPARATE_H, ID_PANEL_SEPARATE_V);
    Bind(wxEVT_BUTTON, &wxPanelEX::OnBtnDestroyPanel, this, ID_PANEL_DESTROY);
    Bind(wxEVT_BUTTON, &wxPanelEX::OnBtnZoomP, this, ID_PANEL_ZOOM_P);
    Bind(wxEVT_BUTTON, &wxPanelEX::OnBtnZoomM, this, ID_PANEL_ZOOM_M);
    Bind(wxEVT_BUTTON, &wxPanelEX::OnBtnHideBarItem, this, ID_PANEL_HIDE_BAR);
    Bind(wxEVT_BUTTON, &wxPanelEX::OnBtnShowBarItem, this, ID_PANEL_SHOW_BAR);
    Bind(wxEVT_MENU, &wxPanelEX::OnMenuChangePanelType, this, ID_MENU_PANEL_TYPE_FIRST,
         ID_MENU_PANEL_TYPE_LAST);
    Bind(wxEVT_MENU, &wxPanelEX::OnMenuSeparationDirection, this, ID_MENU_SEPARATION_DIRECTION);
    Bind(wxEVT_MENU, &wxPanelEX::OnMenuSeparationSwap, this, ID_MENU_SEPARATION_SWAP);
    Bind(wxEVT_MENU, &wxPanelEX::OnMenuDestroyPanel, this, ID_MENU_DESTROY_PANEL);
    Bind(wxEVT_MENU, &wxPanelEX::OnShowPanelManage, this, ID_MENU_PANEL_MANAGE);
    Bind(wxEVT_RIGHT_DOWN, &wxPanelEX::OnMouse, this);
    Bind(wxEVT_RIGHT_UP, &wxPanelEX::OnMouse, this);
    Bind(wxEVT_MOTION, &wxPanelEX::OnMouse, this);
}

wxPanelEX::~wxPanelEX() = default;

void wxPanelEX::InitializeStatic() {
    msVstrPanelName.clear();
    msVstrPanelNameLocale.clear();
    msVstrPanelIconTag.clear();
    for (const PanelTableRow& row : gPanelTable) {
        msVstrPanelName.push_back(row.pName);
        msVstrPanelNameLocale.push_back(wxGetTranslation(row.pDisplay));
        msVstrPanelIconTag.push_back(row.pIcon);
    }
}

int wxPanelEX::GetPanelTypeFromName(const wxString& strName) {
    if (msVstrPanelName.empty())
        InitializeStatic();
    for (size_t i = 0; i < msVstrPanelName.size(); ++i)
        if (msVstrPanelName[i] == strName)
            return static_cast<int>(i);
    return _PANEL_UNDEFINED;
}

std::vector<wxPanelEX::PanelMaker>& wxPanelEX::Makers() {
    static std::vector<PanelMaker> sMakers(_PANEL_TYPE_COUNT);
    return sMakers;
}

void wxPanelEX::SetPanelMaker(int type, PanelMaker funcMake) {
    if (type >= 0 && type < _PANEL_TYPE_COUNT)
        Makers()[type] = std::move(funcMake);
}

wxPanelEX::PanelMaker wxPanelEX::GetPanelMaker(int type) {
    if (type < 0 || type >= _PANEL_TYPE_COUNT)
        return nullptr;
    return Makers()[type];
}

void wxPanelEX::SetPanelType(int type, int parentType) {
    mPanelType = type;
    if (type >= 0 && type < _PANEL_TYPE_COUNT)
        SetName(msVstrPanelName[type]);
    if (type == _PANEL_CHILDPANEL) {
        mParentPanelType = parentType;
        if (parentType == _PANEL_UNDEFINED)
            wxLogError("Assertion failed: %s", "parentPanelType != _PANEL_UNDEFINED");
    }
}

// ---- dispatch -----------------------------------------------------------------------------

void wxPanelEX::UpdatePanels(const wxString& strName, bool bForce) {
    if (IsLeafType(mPanelType))
        UpdatePanelSelf(strName, bForce);
}

void wxPanelEX::ProcAfterMath(const wxString& strWhat, const wxString& strArg) {
    if (IsAfterMathReceiver(strWhat, mPanelType))
        ProcAfterMathSelf(strWhat, strArg);
}

void wxPanelEX::Serialize(wxString& strOut) {
    if (mPanelType == _PANEL_UNDEFINED) {
        strOut += "wxPanelEX::Undefiend\n"; // the program's own spelling, kept
        return;
    }
    strOut += "wxPanelEX::" + msVstrPanelName[mPanelType] + "\n";
    switch (mPanelType) {
    case _PANEL_TIMELINE:
    case _PANEL_PROPERTY:
    case _PANEL_VIEW3D:
    case _PANEL_GRAPH:
    case _PANEL_COLOR_CURVE:
    case _PANEL_TEXT_EDITOR:
        SerializeSelf(strOut);
        break;
    default:
        break; // the outliner and the console have no block
    }
}

bool wxPanelEX::ReadStrLine(std::wistream&, const wxString&, const wxString&) {
    return false;
}

// ---- bar ----------------------------------------------------------------------------------

void wxPanelEX::ConstructPanelBar() {
    if (mpCPanelBar)
        return;
    mpCPanelBar = new PanelBar_cls(this);
    ConstructTypeSelector(mpCPanelBar);
    mpCPanelBar->ConstructBarItemDefault();
    mpCPanelBar->ConstructBarItemHideShow();
}

void wxPanelEX::ConstructTypeSelector(wxPanelEX* pBar) {
    auto* pBarPanel = dynamic_cast<PanelBar_cls*>(pBar);
    if (!pBarPanel)
        return;
    wxString strIcon =
        (mPanelType >= 0 && mPanelType < _PANEL_TYPE_COUNT) ? msVstrPanelIconTag[mPanelType] : "";
    if (!strIcon.empty()) {
        wxBitmap bmp = GetBitmapFromTag(strIcon, wxSize(18, 18));
        auto* pSelf = new BitmapPanel_cls(pBarPanel, wxID_ANY, bmp, bmp, wxSize(20, 20));
        pBarPanel->mpCSizer->Add(pSelf, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    }
    auto* pCombo = new wxBitmapComboBox(pBarPanel, ID_PANEL_TYPE_SELECTOR, wxEmptyString, wxDefaultPosition,
                                        wxSize(150, -1), 0, nullptr, wxCB_READONLY);
    for (int type = 0; type <= _PANEL_CONSOLE; ++type)
        pCombo->Append(msVstrPanelNameLocale[type],
                       GetBitmapFromTag(msVstrPanelIconTag[type], wxSize(16, 16)));
    if (mPanelType >= 0 && mPanelType <= _PANEL_CONSOLE)
        pCombo->SetSelection(mPanelType);
    pBarPanel->mpCSizer->Add(pCombo, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
}

// ---- handlers -----------------------------------------------------------------------------

void wxPanelEX::RunLaterOnFrame(std::function<void(wxPanelEX*)> funcWork) {
    // The change may destroy this panel and the button whose event is being handled, so it
    // runs on the frame once the current handler has returned.
    wxWindow* pFrame = wxGetTopLevelParent(this);
    wxWeakRef<wxPanelEX> refPanel(this);
    if (!pFrame) {
        funcWork(this);
        return;
    }
    pFrame->CallAfter([refPanel, funcWork]() {
        if (wxPanelEX* pPanel = refPanel.get())
            funcWork(pPanel);
    });
}

void wxPanelEX::OnTypeSelector(wxCommandEvent& event) {
    if (!mpCOwner) {
        event.Skip();
        return;
    }
    wxString strChosen = event.GetString();
    int index = -1;
    for (int i = 0; i < _PANEL_TYPE_COUNT; ++i)
        if (msVstrPanelNameLocale[i] == strChosen) {
            index = i;
            break;
        }
    if (index < 0 || index == mPanelType || index > _PANEL_CONSOLE)
        return;
    PostMenuEvent(this, ID_MENU_PANEL_TYPE_FIRST + index);
}

void wxPanelEX::OnBtnSeparatePanel(wxCommandEvent& event) {
    if (!mpCOwner) {
        event.Skip();
        return;
    }
    mpCOwner->SeparatePanel(event.GetId() == ID_PANEL_SEPARATE_V);
}

void wxPanelEX::OnBtnDestroyPanel(wxCommandEvent& event) {
    if (!mpCOwner) {
        event.Skip();
        return;
    }
    RunLaterOnFrame([](wxPanelEX* pPanel) {
        if (pPanel->mpCOwner)
            pPanel->mpCOwner->DestroyPanel(pPanel);
    });
}

void wxPanelEX::OnMenuDestroyPanel(wxCommandEvent& event) {
    OnBtnDestroyPanel(event);
}

void wxPanelEX::OnBtnZoomP(wxCommandEvent& event) {
    event.Skip(); // the panels with a zoom handle it
}

void wxPanelEX::OnBtnZoomM(wxCommandEvent& event) {
    event.Skip();
}

void wxPanelEX::OnBtnHideBarItem(wxCommandEvent& event) {
    if (!mpCOwner || !mpCPanelBar) {
        event.Skip();
        return;
    }
    mpCPanelBar->HideItem();
}

void wxPanelEX::OnBtnShowBarItem(wxCommandEvent& event) {
    if (!mpCOwner || !mpCPanelBar) {
        event.Skip();
        return;
    }
    mpCPanelBar->ShowItem();
}

void wxPanelEX::OnShowPanelManage(wxCommandEvent& event) {
    if (!mpCOwner || !mpCPanelBar) {
        event.Skip();
        return;
    }
    mpCPanelBar->ToggleItem();
}

void wxPanelEX::OnMenuChangePanelType(wxCommandEvent& event) {
    if (!mpCOwner) {
        event.Skip();
        return;
    }
    int type = event.GetId() - ID_MENU_PANEL_TYPE_FIRST;
    if (type == mPanelType)
        return;
    RunLaterOnFrame([type](wxPanelEX* pPanel) {
        SplittableWindow_cls* pOwner = pPanel->mpCOwner;
        if (!pOwner || type < 0 || type >= _PANEL_TYPE_COUNT)
            return;
        // GeneratePanel builds the new panel in the owner and destroys the old one.
        if (wxPanelEX* pNew = pOwner->GeneratePanel(msVstrPanelName[type]))
            pNew->SetFocus();
    });
}

void wxPanelEX::OnMenuSeparationDirection(wxCommandEvent& event) {
    if (!mpCOwner) {
        event.Skip();
        return;
    }
    mpCOwner->SeparationDirection();
}

void wxPanelEX::OnMenuSeparationSwap(wxCommandEvent& event) {
    if (!mpCOwner) {
        event.Skip();
        return;
    }
    mpCOwner->SeparationSwap();
}

wxMenu* wxPanelEX::CreateContextMenu() {
    auto* pMenu = new wxMenu();
    if (mPanelType == _PANEL_TEXT_EDITOR ||
        (mPanelType == _PANEL_CHILDPANEL && mParentPanelType == _PANEL_TEXT_EDITOR))
        pMenu->Append(ID_MENU_SHOW_UNDO, _("Show Undo"));
    // The commands of the shortcut table, with their keys; their ids take the ribbon's road.
    if (GpCShortcut) {
        for (size_t i = 0; i < GpCShortcut->mVEntry.size(); ++i) {
            const wxString strItem = GpCShortcut->GetMenuString(i);
            pMenu->Append(GpCShortcut->mVEntry[i].mMenuId,
                          wxGetTranslation(strItem.BeforeFirst('\t')) +
                              (strItem.Contains("\t") ? "\t" + strItem.AfterFirst('\t') : wxString()));
        }
        pMenu->AppendSeparator();
    }
    auto* pManage = new wxMenu();
    pManage->Append(ID_MENU_SEPARATION_DIRECTION, _("Change Separate Direction"));
    pManage->Append(ID_MENU_SEPARATION_SWAP, _("Swap Separate windows"));
    pManage->Append(ID_MENU_DESTROY_PANEL, _("Destroy Panel"));
    pMenu->AppendSubMenu(pManage, _("ManagePanel"));
    return pMenu;
}

wxPanelEX* wxPanelEX::GetPCMenuPanel() {
    if (mpCOwner)
        return this;
    // A panel's bar is no leaf of the tree: it gives the menu of the panel it stands in.
    auto* pParent = dynamic_cast<wxPanelEX*>(GetParent());
    return pParent && pParent->mpCOwner ? pParent : nullptr;
}

void wxPanelEX::OnMouse(wxMouseEvent& event) {
    mCMouseCtrl.SetMouseEvent(event);
    event.Skip();
    wxPanelEX* pTarget = GetPCMenuPanel();
    if (!pTarget || !mCMouseCtrl.IsShowMenu())
        return;
    if (HasCapture())
        ReleaseMouse();
    // The menu's items go to the panel that owns it.
    std::unique_ptr<wxMenu> pMenu(pTarget->CreateContextMenu());
    pTarget->PopupMenu(pMenu.get(), pTarget->ScreenToClient(ClientToScreen(event.GetPosition())));
}

// The base of every content panel of the tree of split panels: its type from the panel tables,
// its owner node, its button bar, its context menu, and the dispatch of panel updates and model
// events to the concrete panel. Main thread only.
#pragma once

#include "MouseCtrl_cls.h"
#include "WidgetCommon_cls.h"

#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/string.h>

#include <functional>
#include <istream>
#include <vector>

class PanelBar_cls;
class SplittableWindow_cls;

// The panel types; the value is the index into the three panel tables.
enum PanelType_enum {
    _PANEL_UNDEFINED = -1,
    _PANEL_TIMELINE = 0,
    _PANEL_OUTLINER = 1,
    _PANEL_PROPERTY = 2,
    _PANEL_VIEW3D = 3,
    _PANEL_GRAPH = 4,
    _PANEL_COLOR_CURVE = 5,
    _PANEL_TEXT_EDITOR = 6,
    _PANEL_CONSOLE = 7,
    _PANEL_PROPERTY_RENDER = 8,
    _PANEL_PROPERTY_SCENE = 9,
    _PANEL_PROPERTY_OBJECT = 10,
    _PANEL_PROPERTY_MATERIAL = 11,
    _PANEL_PROPERTY_MODIFIER = 12,
    _PANEL_PROPERTY_DATAPROC = 13,
    _PANEL_PROPERTY_FORMAT = 14,
    _PANEL_PROPERTY_INFO = 15,
    _PANEL_CHILDPANEL = 16,
    _PANEL_DUMMY = 17,
    _PANEL_TYPE_COUNT = 18
};

// Ids of the panel commands, posted by the bar buttons and the context menu.
enum PanelCommand_enum {
    ID_PANEL_TYPE_SELECTOR = 5001,
    ID_PANEL_SEPARATE_H = 5044,
    ID_PANEL_SEPARATE_V = 5045,
    ID_PANEL_DESTROY = 5046,
    ID_PANEL_ZOOM_P = 5047,
    ID_PANEL_ZOOM_M = 5048,
    ID_PANEL_HIDE_BAR = 5049,
    ID_PANEL_SHOW_BAR = 5050,
    ID_MENU_PANEL_TYPE_FIRST = 6044, // 6044 + type, types 0 to 7
    ID_MENU_PANEL_TYPE_LAST = 6051,
    ID_MENU_SEPARATION_DIRECTION = 6052,
    ID_MENU_SEPARATION_SWAP = 6053,
    ID_MENU_DESTROY_PANEL = 6054,
    ID_MENU_SHOW_UNDO = 6057,
    ID_MENU_PANEL_MANAGE = 6094
};

class wxPanelEX : public wxScrolled<wxPanel>, public WidgetCommon_cls {
public:
    // Makes the content panel of one type as a child of its owner node.
    using PanelMaker = std::function<wxPanelEX*(SplittableWindow_cls* pOwner)>;

    wxPanelEX(wxWindow* pParent, int type = _PANEL_UNDEFINED, const wxString& strName = "wxPanelEX");
    ~wxPanelEX() override;

    // Fills the three panel tables; the display names go through the translation catalogue.
    static void InitializeStatic();
    static std::vector<wxString> msVstrPanelName;
    static std::vector<wxString> msVstrPanelNameLocale;
    static std::vector<wxString> msVstrPanelIconTag;
    // The index of a table name, -1 when it is not in the table.
    static int GetPanelTypeFromName(const wxString& strName);
    // Installs the maker of a concrete panel class; types without one get the stand-in panel
    // that says the panel is not available yet.
    static void SetPanelMaker(int type, PanelMaker funcMake);
    static PanelMaker GetPanelMaker(int type);
    // Only these types can be leaves of the tree.
    static bool IsLeafType(int type) { return (type >= 0 && type <= _PANEL_CONSOLE) || type == _PANEL_DUMMY; }

    // Stores the type and renames the window to its table name. Type 16 needs a parent type.
    void SetPanelType(int type, int parentType = _PANEL_UNDEFINED);
    int GetPanelType() const { return mPanelType; }
    int GetParentPanelType() const { return mParentPanelType; }
    void SetOwner(SplittableWindow_cls* pOwner) { mpCOwner = pOwner; }
    SplittableWindow_cls* GetOwner() const { return mpCOwner; }
    PanelBar_cls* GetPanelBar() const { return mpCPanelBar; }

    // ---- what the tree asks of every leaf ----
    // Hands the name to the concrete panel by its type.
    void UpdatePanels(const wxString& strName, bool bForce);
    // Hands a model event to the panel types that listen to it.
    void ProcAfterMath(const wxString& strWhat, const wxString& strArg);
    // The layout line of the panel and, for the types that have one, its own block.
    void Serialize(wxString& strOut);
    // The panel's own block; the key is the first item of the line after "wxPanelEX::<type>".
    virtual bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest);
    // Only the 3D view keeps inertia and knows whether it is the active view.
    virtual bool IsInnertiaExist() { return false; }
    virtual bool IsActiveView() { return false; }
    // Panels with an abort control of their own answer whether the screen point hits it.
    virtual bool CheckAbortClicked(const wxPoint&) { return false; }

    // Builds the bar at the top of the panel: the type selector and the split buttons.
    void ConstructPanelBar();
    // The panel's self icon and the combo box of types 0 to 7, on the given bar.
    void ConstructTypeSelector(wxPanelEX* pBar);

    // The handlers; tests call them as the events would.
    void OnTypeSelector(wxCommandEvent& event);
    void OnBtnSeparatePanel(wxCommandEvent& event);
    void OnBtnDestroyPanel(wxCommandEvent& event);
    void OnBtnZoomP(wxCommandEvent& event);
    void OnBtnZoomM(wxCommandEvent& event);
    void OnBtnHideBarItem(wxCommandEvent& event);
    void OnBtnShowBarItem(wxCommandEvent& event);
    void OnMenuChangePanelType(wxCommandEvent& event);
    void OnMenuSeparationDirection(wxCommandEvent& event);
    void OnMenuSeparationSwap(wxCommandEvent& event);
    void OnMenuDestroyPanel(wxCommandEvent& event);
    void OnShowPanelManage(wxCommandEvent& event);
    void OnMouse(wxMouseEvent& event);

    // Builds the context menu as OnMouse shows it (without the shortcut items).
    wxMenu* CreateContextMenu();
    // The leaf whose menu a right click here gives: this leaf, or the leaf a bar stands in; null
    // for a panel outside the tree.
    wxPanelEX* GetPCMenuPanel();

    int mPanelType = _PANEL_UNDEFINED;
    int mParentPanelType = _PANEL_UNDEFINED;
    MouseCtrl_cls mCMouseCtrl;
    PanelBar_cls* mpCPanelBar = nullptr;      // a child window: the toolkit deletes it
    SplittableWindow_cls* mpCOwner = nullptr; // not owned: the node that holds this leaf

protected:
    // The concrete panel's reaction; it checks the name against its own ("ALL" reaches all).
    virtual void UpdatePanelSelf(const wxString&, bool) {}
    virtual void ProcAfterMathSelf(const wxString&, const wxString&) {}
    // Appends the panel's own block (a configuration list); empty for most panels.
    virtual void SerializeSelf(wxString&) {}
    // True when the name is this panel's own or "ALL".
    bool IsUpdateTarget(const wxString& strName) const { return strName == GetName() || strName == "ALL"; }

private:
    // Runs a change that may destroy this panel after the current handler has returned.
    void RunLaterOnFrame(std::function<void(wxPanelEX*)> funcWork);

    static std::vector<PanelMaker>& Makers();
};

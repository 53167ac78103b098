// The ribbon of the main window: page "Home" with the panes "Home", "Data", "Object" and
// "Preference", page "Help" with the pane "Help". Each tool has a fixed id; the frame binds
// the clicks. Main thread only.
#pragma once

#include <wx/ribbon/bar.h>
#include <wx/ribbon/toolbar.h>
#include <wx/string.h>

#include <vector>

class RibbonPage_cls;

// The ribbon tools and the items of their drop-down menus.
enum RibbonId_enum {
    ID_RBN_OPEN_PROJECT = 5005,
    ID_RBN_OPEN_RECENT = 5006,
    ID_RBN_SAVE_PROJECT = 5007,
    ID_RBN_SAVE_PROJECT_AS = 5008,
    ID_RBN_SCENE = 5009,
    ID_RBN_UNDO = 5010,
    ID_RBN_REDO = 5011,
    ID_RBN_PREFERENCE = 5012,
    ID_RBN_CACHE = 5013,
    ID_MENU_CLEAR_TEXTURE_CACHE = 5014,
    ID_MENU_CLEAR_HF_VBO = 5015,
    ID_RBN_NEW_OBJ = 5016,
    ID_RBN_BOX = 5017,
    ID_RBN_SPHERE = 5018,
    ID_RBN_PLANE = 5019,
    ID_RBN_CONE = 5020,
    ID_RBN_CYLINDER = 5021,
    ID_RBN_MESH_OBJ = 5022,
    ID_RBN_TEXT_OBJ = 5023,
    ID_RBN_PARALLEL_LIGHT = 5025,
    ID_RBN_POINT_LIGHT = 5026,
    ID_RBN_SPOT_LIGHT = 5027,
    ID_RBN_CAMERA = 5028,
    ID_RBN_EMPTY = 5029,
    ID_RBN_WORLD = 5030,
    ID_RBN_DUPLICATE = 5031,
    ID_RBN_DELETE = 5032,
    ID_RBN_VOLUMEBOX = 5033,
    ID_RBN_ISOSURFACE = 5034,
    ID_RBN_PARTICLE = 5035,
    ID_RBN_STREAMLINE = 5036,
    ID_RBN_HEIGHTFIELD = 5037,
    ID_RBN_INFO = 5038,
    ID_RBN_HELP = 5039,
    ID_RBN_TOOLTIP = 5040,
    ID_RBN_GL_INFO = 5041,
    ID_RBN_STATUS_INFO = 5042,
    // A popup item that mirrors a ribbon tool carries the tool's id plus this.
    ID_MENU_MIRROR_OFFSET = 997,
    ID_MENU_COMMON_FIRST = 6001,
    ID_MENU_COMMON_LAST = 6040,
    ID_MENU_RECENT_FIRST = 6078,
    ID_MENU_RECENT_LAST = 6087
};

class RibbonUI_cls {
public:
    explicit RibbonUI_cls(wxWindow* pParent);

    wxRibbonBar* GetBar() const { return mpCBar; }
    // The tool bar that holds the tool, null when none does.
    wxRibbonToolBar* GetToolBar(int id) const;
    // The label of a tool or mirrored menu item (also its help text).
    static wxString GetStrToolLabel(int id);

    // Follows the preference ToolTip: the toggle of tool 5040, the help texts and the tool tips
    // of the whole program.
    void UpdateRibbonState();
    // Sets (true) or clears the help texts of the tools.
    void UpdateRibbonHelp(bool bShow);
    // The preference ToolTip; while the preferences have no such item, the ribbon keeps it.
    bool GetToolTipPreference() const;
    // Through the undo road when the preference item exists.
    void SetToolTipPreference(bool bShow);

    wxRibbonBar* mpCBar = nullptr;         // a child of the frame
    std::vector<RibbonPage_cls*> mVPCPage; // the two pages, children of the bar
    bool mbToolTipLocal = true;
};

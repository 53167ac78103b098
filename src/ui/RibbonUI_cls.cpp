#include "RibbonUI_cls.h"

#include "ClassProvider_cls.h"
#include "Preference_cls.h"
#include "RibbonPage_cls.h"
#include "Shortcut_cls.h"
#include "WidgetCommon_cls.h"

#include <wx/intl.h>
#include <wx/tooltip.h>

namespace {

enum ToolKind_enum { TOOL_NORMAL, TOOL_HYBRID, TOOL_DROPDOWN, TOOL_TOGGLE, TOOL_SEPARATOR };

struct ToolDef {
    int page;
    int pane;
    int id;
    const char* pIcon;
    ToolKind_enum kind;
};

// The tools in the order they stand on their panes.
const ToolDef gTools[] = {
    {0, 0, ID_RBN_OPEN_PROJECT, "wxART_OPEN_FILE", TOOL_NORMAL},
    {0, 0, ID_RBN_OPEN_RECENT, "wxART_OPEN_HISTORY", TOOL_HYBRID},
    {0, 0, ID_RBN_SAVE_PROJECT, "wxART_SAVE_FILE", TOOL_HYBRID},
    {0, 0, 0, nullptr, TOOL_SEPARATOR},
    {0, 0, ID_RBN_SCENE, "wxART_SCENE", TOOL_NORMAL},
    {0, 0, ID_RBN_UNDO, "wxART_UNDO", TOOL_NORMAL},
    {0, 0, ID_RBN_REDO, "wxART_REDO", TOOL_NORMAL},
    {0, 1, ID_RBN_VOLUMEBOX, "wxART_VOLUMEBOX", TOOL_NORMAL},
    {0, 1, ID_RBN_ISOSURFACE, "wxART_ISOSURFACE", TOOL_NORMAL},
    {0, 1, ID_RBN_PARTICLE, "wxART_PARTICLE", TOOL_NORMAL},
    {0, 1, ID_RBN_STREAMLINE, "wxART_STREAMLINE", TOOL_NORMAL},
    {0, 1, ID_RBN_HEIGHTFIELD, "wxART_HEIGHTFIELD", TOOL_NORMAL},
    {0, 2, ID_RBN_NEW_OBJ, "wxART_NEW_OBJ", TOOL_DROPDOWN},
    {0, 2, ID_RBN_DUPLICATE, "wxART_DUPLICATE", TOOL_NORMAL},
    {0, 2, ID_RBN_DELETE, "wxART_CLEAR", TOOL_NORMAL},
    {0, 3, ID_RBN_PREFERENCE, "wxART_PREFERENCE", TOOL_NORMAL},
    {0, 3, ID_RBN_CACHE, "wxART_MEMORY", TOOL_DROPDOWN},
    {1, 0, ID_RBN_TOOLTIP, "wxART_TIPS", TOOL_TOGGLE},
    {1, 0, ID_RBN_INFO, "wxART_INFO", TOOL_HYBRID},
    {1, 0, ID_RBN_HELP, "wxART_HELP", TOOL_NORMAL},
};

wxString AddKind(const char* pKind) {
    return wxString(_("Add")) + ":" + wxGetTranslation(pKind);
}

// The user's keys, or the defaults while the services are not made (a ribbon alone in a test).
const Shortcut_cls& GetShortcuts() {
    static const Shortcut_cls sDefault;
    return GpCShortcut ? *GpCShortcut : sDefault;
}
} // namespace

wxString RibbonUI_cls::GetStrToolLabel(int id) {
    switch (id) {
    case ID_RBN_OPEN_PROJECT:
        return _("Open Project");
    case ID_RBN_OPEN_RECENT:
        return _("Open Recent Project");
    case ID_RBN_SAVE_PROJECT:
        return _("Save Project");
    case ID_RBN_SAVE_PROJECT_AS:
        return _("Save Project as");
    case ID_RBN_SCENE:
        return _("Scene");
    case ID_RBN_UNDO:
        return _("Undo");
    case ID_RBN_REDO:
        return _("Redo");
    case ID_RBN_PREFERENCE:
        return _("Preference");
    case ID_RBN_CACHE:
        return _("Memory");
    case ID_MENU_CLEAR_TEXTURE_CACHE:
        return _("Clear Texture Cache");
    case ID_MENU_CLEAR_HF_VBO:
        return _("Clear Height Field Buffers");
    case ID_RBN_NEW_OBJ:
        return _("Add");
    case ID_RBN_BOX:
        return _("Box");
    case ID_RBN_SPHERE:
        return _("Sphere");
    case ID_RBN_PLANE:
        return _("Plane");
    case ID_RBN_CONE:
        return _("Cone");
    case ID_RBN_CYLINDER:
        return _("Cylinder");
    case ID_RBN_MESH_OBJ:
        return "MeshObj";
    case ID_RBN_TEXT_OBJ:
        return "TextObj";
    case ID_RBN_PARALLEL_LIGHT:
        return _("Parallel Light");
    case ID_RBN_POINT_LIGHT:
        return _("Point Light");
    case ID_RBN_SPOT_LIGHT:
        return _("Spot Light");
    case ID_RBN_CAMERA:
        return _("Camera");
    case ID_RBN_EMPTY:
        return _("Empty");
    case ID_RBN_WORLD:
        return _("World");
    case ID_RBN_DUPLICATE:
        return _("Duplicate");
    case ID_RBN_DELETE:
        return _("Delete");
    case ID_RBN_VOLUMEBOX:
        return AddKind("Volume Box");
    case ID_RBN_ISOSURFACE:
        return AddKind("Isosurface");
    case ID_RBN_PARTICLE:
        return AddKind("Particle");
    case ID_RBN_STREAMLINE:
        return AddKind("Streamline");
    case ID_RBN_HEIGHTFIELD:
        return AddKind("Height Field");
    case ID_RBN_INFO:
        return _("About");
    case ID_RBN_HELP:
        return _("Help");
    case ID_RBN_TOOLTIP:
        return _("Tool Tips");
    case ID_RBN_GL_INFO:
        return "OpenGL Info";
    case ID_RBN_STATUS_INFO:
        return "Status Info";
    default:
        return wxString();
    }
}

RibbonUI_cls::RibbonUI_cls(wxWindow* pParent) {
    mpCBar = new wxRibbonBar(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                             wxRIBBON_BAR_FLOW_HORIZONTAL | wxRIBBON_BAR_SHOW_PAGE_LABELS |
                                 wxRIBBON_BAR_SHOW_PANEL_EXT_BUTTONS | wxRIBBON_BAR_SHOW_TOGGLE_BUTTON);
    mVPCPage.push_back(
        new RibbonPage_cls(mpCBar, _("Home"), {_("Home"), _("Data"), _("Object"), _("Preference")}));
    mVPCPage.push_back(new RibbonPage_cls(mpCBar, _("Help"), {_("Help")}));

    const wxSize sizeTool(24, 24);
    for (const ToolDef& tool : gTools) {
        wxRibbonToolBar* pBar = mVPCPage[tool.page]->mVPCToolBar[tool.pane];
        if (tool.kind == TOOL_SEPARATOR) {
            pBar->AddSeparator();
            continue;
        }
        wxBitmap bmp = WidgetCommon_cls::GetBitmapFromTag(tool.pIcon, sizeTool, wxART_TOOLBAR);
        wxString strHelp = GetShortcuts().GetStrRbnHelp(tool.id, GetStrToolLabel(tool.id));
        switch (tool.kind) {
        case TOOL_HYBRID:
            pBar->AddHybridTool(tool.id, bmp, strHelp);
            break;
        case TOOL_DROPDOWN:
            pBar->AddDropdownTool(tool.id, bmp, strHelp);
            break;
        case TOOL_TOGGLE:
            pBar->AddToggleTool(tool.id, bmp, strHelp);
            break;
        default:
            pBar->AddTool(tool.id, bmp, strHelp);
            break;
        }
    }
    for (RibbonPage_cls* pPage : mVPCPage)
        for (wxRibbonToolBar* pBar : pPage->mVPCToolBar)
            pBar->Realize();
    mpCBar->Realize();
}

wxRibbonToolBar* RibbonUI_cls::GetToolBar(int id) const {
    for (RibbonPage_cls* pPage : mVPCPage)
        for (wxRibbonToolBar* pBar : pPage->mVPCToolBar)
            if (pBar->FindById(id))
                return pBar;
    return nullptr;
}

bool RibbonUI_cls::GetToolTipPreference() const {
    if (GpCPreference)
        if (ConfItem_cls* pItem = GpCPreference->GetPCItem("ToolTip="))
            return pItem->GetBodyBOOL();
    return mbToolTipLocal;
}

void RibbonUI_cls::SetToolTipPreference(bool bShow) {
    if (GpCPreference)
        if (ConfItem_cls* pItem = GpCPreference->GetPCItem("ToolTip=")) {
            pItem->PushCommandPair(bShow ? "1" : "0");
            return;
        }
    mbToolTipLocal = bShow;
}

void RibbonUI_cls::UpdateRibbonState() {
    bool bPref = GetToolTipPreference();
    if (wxRibbonToolBar* pBar = GetToolBar(ID_RBN_TOOLTIP)) {
        if (pBar->GetToolState(ID_RBN_TOOLTIP) != bPref) {
            pBar->ToggleTool(ID_RBN_TOOLTIP, bPref);
            UpdateRibbonHelp(bPref);
        }
    }
    wxToolTip::Enable(bPref);
}

void RibbonUI_cls::UpdateRibbonHelp(bool bShow) {
    for (const ToolDef& tool : gTools) {
        if (tool.kind == TOOL_SEPARATOR)
            continue;
        if (wxRibbonToolBar* pBar = GetToolBar(tool.id))
            GetShortcuts().SetRbnHelpString(pBar, tool.id, GetStrToolLabel(tool.id), bShow);
    }
}

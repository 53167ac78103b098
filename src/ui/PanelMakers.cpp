#include "PanelMakers.h"

#include "ColorCurveEditor_cls.h"
#include "ConsolePanel_cls.h"
#include "GraphEditor_cls.h"
#include "Outliner_cls.h"
#include "PropertyKindPage_cls.h"
#include "Property_cls.h"
#include "TextEntryCtrl_cls.h"
#include "Timeline_cls.h"
#include "View3DPanel_cls.h"

void RegisterPanelMakers() {
    wxPanelEX::SetPanelMaker(_PANEL_TIMELINE, [](SplittableWindow_cls* p) { return new Timeline_cls(p); });
    wxPanelEX::SetPanelMaker(_PANEL_OUTLINER, [](SplittableWindow_cls* p) { return new Outliner_cls(p); });
    wxPanelEX::SetPanelMaker(_PANEL_PROPERTY, [](SplittableWindow_cls* p) { return new Property_cls(p); });
    PropertyKindPage_cls::RegisterPages();
    wxPanelEX::SetPanelMaker(_PANEL_TEXT_EDITOR,
                             [](SplittableWindow_cls* p) { return new TextEntryCtrl_cls(p); });
    wxPanelEX::SetPanelMaker(_PANEL_CONSOLE, [](SplittableWindow_cls* p) { return new ConsolePanel_cls(p); });
    wxPanelEX::SetPanelMaker(_PANEL_VIEW3D, [](SplittableWindow_cls* p) { return new View3DPanel_cls(p); });
    wxPanelEX::SetPanelMaker(_PANEL_GRAPH, [](SplittableWindow_cls* p) { return new GraphEditor_cls(p); });
    wxPanelEX::SetPanelMaker(_PANEL_COLOR_CURVE,
                             [](SplittableWindow_cls* p) { return new ColorCurveEditor_cls(p); });
}

void UnregisterPanelMakers() {
    for (int type : {_PANEL_TIMELINE, _PANEL_OUTLINER, _PANEL_PROPERTY, _PANEL_TEXT_EDITOR, _PANEL_CONSOLE,
                     _PANEL_VIEW3D, _PANEL_GRAPH, _PANEL_COLOR_CURVE})
        wxPanelEX::SetPanelMaker(type, nullptr);
}

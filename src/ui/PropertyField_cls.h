// One row of a property page's table: which setting of the active object it shows (an item of
// a list, or an animated group), under which label, with which control and in which range.
// The pages of the object kinds and of the modifiers are such tables. Any thread (plain data).
#pragma once

#include <wx/string.h>

#include <vector>

class PropertyField_cls {
public:
    enum Widget_enum {
        WIDGET_SECTION, // a heading: mStrLabel only
        WIDGET_NUMBER,  // a number item; arithmetic and Lua are accepted
        WIDGET_TEXT,    // a text item, taken as typed
        WIDGET_FILE,    // a path item, typed or picked
        WIDGET_CHECK,   // a 0/1 item
        WIDGET_CHOICE,  // an item holding the index of an entry of list mStrList
        WIDGET_GROUP,   // an animated group: one number per member, a key and an expression button
    };

    // Where the setting lives: empty for the object's own list, else the name of one of its
    // attributes ("CameraProp", "Material"). A modifier's page leaves it empty: its attribute.
    wxString mStrAttr;
    // The item's key with its "=" ("CameraType="), or the group's name ("ViewAngle").
    wxString mStrKey;
    wxString mStrLabel;
    Widget_enum mWidget = WIDGET_NUMBER;
    // Numbers outside are held to the range.
    double mMin = -1e300;
    double mMax = 1e300;
    wxString mStrList; // WIDGET_CHOICE: the list of UiStringTable_cls

    using Table_type = std::vector<PropertyField_cls>;

    // Short forms for the tables.
    static PropertyField_cls Section(const wxString& strLabel);
    static PropertyField_cls Item(const wxString& strAttr, const wxString& strKey, const wxString& strLabel,
                                  Widget_enum widget, const wxString& strList = wxString());
    static PropertyField_cls Number(const wxString& strAttr, const wxString& strKey, const wxString& strLabel,
                                    double min, double max);
    static PropertyField_cls Group(const wxString& strAttr, const wxString& strGroup,
                                   const wxString& strLabel, double min = -1e300, double max = 1e300);
    // The same rows with mStrAttr set to strAttr where it is empty.
    static Table_type WithAttr(Table_type vField, const wxString& strAttr);
};

#include "PropertyField_cls.h"

PropertyField_cls PropertyField_cls::Section(const wxString& strLabel) {
    PropertyField_cls f;
    f.mStrLabel = strLabel;
    f.mWidget = WIDGET_SECTION;
    return f;
}

PropertyField_cls PropertyField_cls::Item(const wxString& strAttr, const wxString& strKey,
                                          const wxString& strLabel, Widget_enum widget,
                                          const wxString& strList) {
    PropertyField_cls f;
    f.mStrAttr = strAttr;
    f.mStrKey = strKey;
    f.mStrLabel = strLabel;
    f.mWidget = widget;
    f.mStrList = strList.empty() && widget == WIDGET_CHOICE ? strKey.BeforeLast('=') : strList;
    return f;
}

PropertyField_cls PropertyField_cls::Number(const wxString& strAttr, const wxString& strKey,
                                            const wxString& strLabel, double min, double max) {
    PropertyField_cls f = Item(strAttr, strKey, strLabel, WIDGET_NUMBER);
    f.mMin = min;
    f.mMax = max;
    return f;
}

PropertyField_cls PropertyField_cls::Group(const wxString& strAttr, const wxString& strGroup,
                                           const wxString& strLabel, double min, double max) {
    PropertyField_cls f = Item(strAttr, strGroup, strLabel, WIDGET_GROUP);
    f.mMin = min;
    f.mMax = max;
    return f;
}

PropertyField_cls::Table_type PropertyField_cls::WithAttr(Table_type vField, const wxString& strAttr) {
    for (PropertyField_cls& f : vField)
        if (f.mStrAttr.empty() && f.mWidget != WIDGET_SECTION)
            f.mStrAttr = strAttr;
    return vField;
}

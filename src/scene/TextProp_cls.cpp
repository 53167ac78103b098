#include "TextProp_cls.h"

TextProp_cls::TextProp_cls() : Attribute_cls("TextProp_cls", "TextProp") {
    const wxString strTag = "VIEW3D::PROPERTY_OBJECT";
    Add(&mCText, "Text=", "Text", strTag);
    Add(&mCFont, "Font=", "None", strTag);
    mCFont.SetRawString(true);
    Add(&mCAlign, "Align=", "0", strTag);
    Add(&mCBillboard, "Billboard=", "0", strTag);
    AddOneDimParam("FontSize", "Size", 1.0);
    AddOneDimParam("LineSpacing", "Value", 1.2);
}

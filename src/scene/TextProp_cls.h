// The text of a text object, class word "TextProp_cls", attribute name "TextProp": the text
// itself, the font file, the alignment and whether it faces the camera, with the font size and
// line spacing as animated groups. Built in to every text object.
#pragma once

#include "Attribute_cls.h"

class TextProp_cls : public Attribute_cls {
public:
    TextProp_cls();

    wxString GetStrText() const { return mCText.GetBodySTR(); }

    ConfItemSTR_cls mCText;
    ConfItemSTR_cls mCFont;       // a path; "None" is the built-in font
    ConfItemINT_cls mCAlign;      // 0 left, 1 centre, 2 right
    ConfItemBOOL_cls mCBillboard; // faces the camera
};

#include "KeyFrame_cls.h"

#include "Parser_cls.h"

namespace {

// Files are written with "%g" in the C locale; a number the C reader does not take is tried
// once more in the current locale. A field that is neither leaves the target alone.
bool ParseDouble(const wxString& str, double& value) {
    return str.ToCDouble(&value) || str.ToDouble(&value);
}

bool ParseLong(const wxString& str, long& value) {
    return str.ToLong(&value);
}

} // namespace

KeyFrame_cls::KeyFrame_cls(wxString& strLine) {
    ReadStrLine(strLine);
}

int KeyFrame_cls::Select(double x, double tolerance, bool bSelect) {
    if (x - tolerance < mX && mX < x + tolerance) {
        mbSelected = bSelect;
        return 1;
    }
    return 0;
}

void KeyFrame_cls::Serialize(wxString& strOut) const {
    strOut += wxString::Format("%g::%d::%g::%ld::%g\n", mX, mbSelected ? 1 : 0, mValue, mType, mEaseFactor);
}

bool KeyFrame_cls::ReadStrLine(wxString& strLine) {
    double x = mX;
    if (!ParseDouble(Parser_cls::PopStrItemFromStrLine(strLine, "::"), x))
        return false;
    mX = x;
    long selected = mbSelected ? 1 : 0;
    if (ParseLong(Parser_cls::PopStrItemFromStrLine(strLine, "::"), selected))
        mbSelected = selected != 0;
    ParseDouble(Parser_cls::PopStrItemFromStrLine(strLine, "::"), mValue);
    ParseLong(Parser_cls::PopStrItemFromStrLine(strLine, "::"), mType);
    // The undo text of a key deletion carries no ease field: the default 1.0 then stays.
    ParseDouble(Parser_cls::PopStrItemFromStrLine(strLine, "::"), mEaseFactor);
    return true;
}

bool KeyFrame_cls::ReadStrOneLiner(const wxString& strHead, const wxString& strRest) {
    if (strHead == "SetValue")
        return ParseDouble(strRest, mValue);
    if (strHead == "SetX")
        return ParseDouble(strRest, mX);
    if (strHead == "SetType")
        return ParseLong(strRest, mType);
    if (strHead == "SetEaseFactor")
        return ParseDouble(strRest, mEaseFactor);
    return false;
}

wxString KeyFrame_cls::GetStrIconName() const {
    switch (mType) {
    case TYPE_STEP:
        return "TL_STEP";
    case TYPE_HERMITE:
        return mEaseFactor != 0.0 ? "TL_HEMITE_AUTO" : "TL_HEMITE_EASE";
    default:
        return "TL_LINEAR";
    }
}

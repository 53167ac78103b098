// One key of an animated channel: a position in normalised time, a value, and how the segment
// that starts at this key is interpolated. A plain value type.
#pragma once

#include <wx/string.h>

class KeyFrame_cls {
public:
    // Key types as stored in files; other numbers are kept as they are read (see Parameter_cls).
    enum Type_enum : long { TYPE_STEP = 0, TYPE_LINEAR = 1, TYPE_HERMITE = 2 };

    KeyFrame_cls() = default;
    // Builds the key from its text "<x>::<selected>::<value>::<type>::<ease>"; the line is
    // consumed. Missing or unreadable fields keep their defaults.
    explicit KeyFrame_cls(wxString& strLine);

    // Stores bSelect when x - tolerance < mX < x + tolerance and returns 1; else returns 0.
    int Select(double x, double tolerance, bool bSelect);

    // Appends the key line with its newline, "%g" numbers: "0.25::0::3.5::2::1".
    void Serialize(wxString& strOut) const;
    // Pops the five fields in the order of Serialize. False when the position is not a number;
    // the key is then left as it was.
    bool ReadStrLine(wxString& strLine);
    // The key's share of the one-line commands: "SetValue", "SetX", "SetType", "SetEaseFactor"
    // with the number in strRest. False for any other verb.
    bool ReadStrOneLiner(const wxString& strHead, const wxString& strRest);

    // The icon of the key in the timeline: "TL_STEP", "TL_LINEAR", "TL_HEMITE_AUTO" or
    // "TL_HEMITE_EASE". Unknown types draw as linear.
    wxString GetStrIconName() const;

    bool mbSelected = false; // selected in the timeline; saved
    bool mbActive = false;   // the one key the numeric panels show; not saved
    bool mbFlag = false;     // initialised and copied, nothing depends on it; not saved
    double mX = 0.0;
    double mValue = 0.0;
    double mEaseFactor = 1.0;
    long mType = TYPE_LINEAR;
    // Slope cache, meaningful only between Parameter_cls::PrecalcBegin and PrecalcEnd.
    double mVelocity = 0.0;
};

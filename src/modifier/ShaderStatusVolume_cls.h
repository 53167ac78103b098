// The values of a volume shader modifier for which a volume program's text was last built: the
// shader library keeps one of each in every program item, and the modifiers compare themselves
// against it (IsStatusChanged) before a draw. Off is the state of a program with no modifier.
#pragma once

#include <wx/string.h>

class ShaderStatusVolumeCoord_cls {
public:
    void Clear() { *this = ShaderStatusVolumeCoord_cls(); }
    void Update(const ShaderStatusVolumeCoord_cls& now) { *this = now; }
    bool operator==(const ShaderStatusVolumeCoord_cls& o) const {
        for (int i = 0; i < 6; ++i)
            if (mRange[i] != o.mRange[i])
                return false;
        return mbOn == o.mbOn && mType == o.mType && mStrExpression == o.mStrExpression;
    }
    bool operator!=(const ShaderStatusVolumeCoord_cls& o) const { return !(*this == o); }

    bool mbOn = false;
    int mType = 0;
    float mRange[6] = {0.f, 1.f, 0.f, 1.f, 2.f, 2.f};
    wxString mStrExpression;
};

class ShaderStatusVolumeMask_cls {
public:
    void Clear() { *this = ShaderStatusVolumeMask_cls(); }
    void Update(const ShaderStatusVolumeMask_cls& now) { *this = now; }
    bool operator==(const ShaderStatusVolumeMask_cls& o) const { return mbOn == o.mbOn && mType == o.mType; }
    bool operator!=(const ShaderStatusVolumeMask_cls& o) const { return !(*this == o); }

    bool mbOn = false;
    int mType = 0;
};

class ShaderStatusVolume_cls {
public:
    // strText with what stands between the two marks replaced by strBody, on lines of its own
    // (directives must start a line); unchanged when a mark is missing.
    static wxString ReplaceSection(const wxString& strText, const wxString& strBegin, const wxString& strEnd,
                                   const wxString& strBody);
};

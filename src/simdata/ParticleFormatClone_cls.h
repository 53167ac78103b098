// A value copy of a particle format for one read, so that the reader runs while the user edits
// the format. Made on the main thread; then used by one thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "ParticleFormatTable_cls.h"

#include <wx/arrstr.h>

#include <vector>

class ParticleFormat_cls;

class ParticleFormatClone_cls : public ConfListContainer_cls {
public:
    ParticleFormatClone_cls();
    ~ParticleFormatClone_cls() override;

    // byID: the object interpolates by ID (InterpolateBy= 1).
    void CloneFromFormat(const ParticleFormat_cls& format, bool byID);
    // A further copy, for the reader thread.
    void CloneFromClone(const ParticleFormatClone_cls& src);

    int GetDataType() const { return GetItemInt("DataType="); }
    int GetArrayDirection() const { return GetItemInt("ArrayDirection="); }
    bool IsPreSortByID() const { return GetItemInt("PreSortByID=") != 0; }
    bool IsRemoveDupli() const { return GetItemInt("RemoveDupli=") != 0; }

    const wxArrayString& GetAStrBody(int type) const { return type == 1 ? mAStrBodyBinary : mAStrBodyAscii; }
    std::vector<int> GetVFormatHeader() const {
        return ParticleFormatTable_cls::GetVFormatHeader(mAStrHeader);
    }
    std::vector<int> GetVFormatBody(int type) const {
        return ParticleFormatTable_cls::GetVFormatBody(GetAStrBody(type), type);
    }
    bool DoesExistInBody(const wxString& strName, int type) const {
        return GetAStrBody(type).Index(strName) != wxNOT_FOUND;
    }
    int GetHeaderByte() const { return ParticleFormatTable_cls::GetHeaderByte(mAStrHeader); }
    int GetHeaderLine() const { return ParticleFormatTable_cls::GetHeaderLine(mAStrHeader); }
    int GetBodyParticleByte() const { return ParticleFormatTable_cls::GetBodyParticleByte(mAStrBodyBinary); }
    int GetBodyParticleLineAsciiVertical() const {
        return ParticleFormatTable_cls::GetBodyParticleLineAsciiVertical(mAStrBodyAscii);
    }

    // The nine flags: velocity, type, size, ID, long ID, three values, and by-ID. In a text
    // format any of "VXVYVZ", "VX", "VY", "VZ" counts as velocity.
    void GetInfoBinary(bool& velocity, bool& type, bool& size, bool& id, bool& idLong, bool& value0,
                       bool& value1, bool& value2, bool& byID) const;
    void GetInfoAscii(bool& velocity, bool& type, bool& size, bool& id, bool& idLong, bool& value0,
                      bool& value1, bool& value2, bool& byID) const;

    wxArrayString mAStrHeader;
    wxArrayString mAStrBodyBinary;
    wxArrayString mAStrBodyAscii;
    bool mbByID = false;

private:
    int GetItemInt(const wxString& strHead) const;
};

// The user's description of a particle file: data type, layout, the header items and the body
// items of a text and of a binary file, and the sorting switches. Owned by its particle object;
// configuration list of the panel "PROPERTY_FORMAT". Main thread only: readers get a
// ParticleFormatClone_cls.
#pragma once

#include "ConfListContainer_cls.h"
#include "GetPC_cls.h"
#include "ParticleFormatTable_cls.h"

#include <wx/arrstr.h>

#include <vector>

class ParticleFormat_cls : public ConfListContainer_cls, public GetPC_cls {
public:
    ParticleFormat_cls();

    // 0 "Ascii", 1 "Binary".
    int GetDataType() const { return static_cast<int>(mCDataType.GetBodyINT()); }
    // 0 "Horizontal": one record after another; 1 "Vertical": one whole column after another.
    int GetArrayDirection() const { return static_cast<int>(mCArrayDirection.GetBodyINT()); }
    bool IsPreSortByID() const { return mCPreSortByID.GetBodyBOOL(); }
    bool IsRemoveDupli() const { return mCRemoveDupli.GetBodyBOOL(); }

    const wxArrayString& GetAStrBody(int type) const { return type == 1 ? mAStrBodyBinary : mAStrBodyAscii; }
    std::vector<int> GetVFormatHeader() const {
        return ParticleFormatTable_cls::GetVFormatHeader(mAStrHeader);
    }
    std::vector<int> GetVFormatBody(int type) const {
        return ParticleFormatTable_cls::GetVFormatBody(GetAStrBody(type), type);
    }
    wxString GetStrHeaderFromIndex(int index) const {
        return ParticleFormatTable_cls::GetStrHeaderFromIndex(index);
    }
    wxString GetStrBodyFromIndex(int index, int type) const {
        return ParticleFormatTable_cls::GetStrBodyFromIndex(index, type);
    }
    int GetTypeIndexHeader(const wxString& strName) const {
        return ParticleFormatTable_cls::GetTypeIndexHeader(strName);
    }
    int GetTypeIndexBody(const wxString& strName, int type) const {
        return ParticleFormatTable_cls::GetTypeIndexBody(strName, type);
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

    // The panels edit the rows (one item index per row); these rebuild the name lists from them.
    void UpdateHeader();
    void UpdateBody(int type);
    // The other way: the rows from the name lists, after the lists were read from a file.
    void UpdateRowsFromStrings();

    // Edits through the undo road: each pushes the old and the new one-item block of the list.
    // Add inserts name at pos (appends when pos is out of range); Delete removes the item at pos
    // when it has that name. The Update forms take the new list as its file text, the names
    // joined by "::##::". Body edits go to the list of DataType=.
    void AddHeaderCommand(int pos, const wxString& strName);
    void DeleteHeaderCommand(int pos, const wxString& strName);
    void UpdateHeaderCommand(const wxString& strBody);
    void AddBodyCommand(int pos, const wxString& strName);
    void DeleteBodyCommand(int pos, const wxString& strName);
    void UpdateBodyCommand(const wxString& strBody);

    ConfItemUINT_cls mCDataType;
    ConfItemUINT_cls mCArrayDirection;
    ConfItemBOOL_cls mCPreSortByID;
    ConfItemBOOL_cls mCRemoveDupli;
    ConfItemSTRINGARRAY_cls mCParticleFormatHeader;
    ConfItemSTRINGARRAY_cls mCParticleFormatBodyBinary;
    ConfItemSTRINGARRAY_cls mCParticleFormatBodyAscii;

    wxArrayString mAStrHeader;
    wxArrayString mAStrBodyBinary;
    wxArrayString mAStrBodyAscii;
    // One row per list entry, holding the entry's item index, for the panels.
    std::vector<ConfItemUINT_cls> mVCHeader;
    std::vector<ConfItemUINT_cls> mVCBodyBinary;
    std::vector<ConfItemUINT_cls> mVCBodyAscii;

private:
    // Pushes the pair that turns the list of pItem into aStrNew.
    void PushArrayCommand(ConfItemSTRINGARRAY_cls& item, wxArrayString& aStrLive,
                          const wxArrayString& aStrNew);
    static void FillRows(std::vector<ConfItemUINT_cls>& rows, const std::vector<int>& indices);
};

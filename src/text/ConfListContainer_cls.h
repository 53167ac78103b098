// Base of every class that owns one configuration list.
#pragma once

#include "ConfItemList_cls.h"

class ConfListContainer_cls : public ConfItemList_cls {
public:
    ConfListContainer_cls() = default;
    ~ConfListContainer_cls() override;
    ConfListContainer_cls(const ConfListContainer_cls&) = delete;
    ConfListContainer_cls& operator=(const ConfListContainer_cls&) = delete;

    // The heads of the items, in list order.
    wxArrayString GetAstrItemList() const;
    void Serialize(wxString& strOut) { SerializeAllWithTag(strOut); }
    // False unless strHead is "ConfItemList" and the block is addressed to this list.
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    // Rebuilds this list as heap items of the same kinds, heads, counters and bodies as src.
    // The tag and the owning flag stay as they are: the caller decides who frees the items.
    void CloneConfListFrom(const ConfListContainer_cls& src);

    bool mbOwnItems = false;
};

// A named block of configuration items, as written in the project file:
//   ConfItemList::Begin::<tag>
//   <head><body> ...
//   ConfItemList::End
#pragma once

#include "ConfItem_cls.h"

#include <wx/arrstr.h>
#include <wx/string.h>

#include <istream>
#include <vector>

class ConfItemList_cls {
public:
    virtual ~ConfItemList_cls() = default;

    void SetTag(const wxString& strTag) { mStrTag = strTag; }
    const wxString& GetTag() const { return mStrTag; }

    // Sets head, body (an empty body keeps the item's default) and update tag, then appends.
    void Add(ConfItem_cls* pItem, const wxString& strHead, const wxString& strBody,
             const wxString& strUpdateTag = wxString());
    // Takes head, body and update tag from srcList's item of that head; when srcList has none
    // the item gets the head "None" and an empty body text.
    void Add(ConfItem_cls* pItem, ConfItemList_cls& srcList, const wxString& strHead);
    // Forgets the items without deleting them.
    void Clear() { mVPItems.clear(); }
    void DeleteAllItems();

    // The first item whose head is strHead; a missing "=" is appended to strHead first.
    ConfItem_cls* GetPCItem(wxString strHead) const;

    // The item lines alone.
    wxString SerializeAll();
    // Appends the whole block.
    void SerializeAllWithTag(wxString& strOut);
    // Offers the line to every item; true when some item took it. Lines starting "--" are not read.
    bool ReadStrLineAll(const wxString& strLine);
    // The head "ConfItemList" has been popped; strRest must be "Begin::" + this list's tag.
    // Then lines are read until "ConfItemList::End" or the end of the stream.
    bool ReadStrLineAllWithTag(std::wistream& stream, const wxString& strRest);

    // Copies body and counter from the item of the same head in other.
    void SyncFrom(const ConfItemList_cls& other);
    // For each item whose body differs from its partner in other, pushes an undo pair of two
    // one-item blocks and runs it: one pair per differing item.
    void SyncFromCommand(const ConfItemList_cls& other);

    void PushUpdateCache(const wxString& strTag);
    // Joins the cached update tags with "::", clears the cache and queues the panel update.
    void SendUpdateMessage();
    // "::" and the counter of each item: equal strings mean nothing changed.
    wxString GetStrProcCounter() const;

    wxString mStrTag;
    std::vector<ConfItem_cls*> mVPItems; // owned only where the container says so
    std::vector<wxString> mVStrUpdateCache;

protected:
    ConfItem_cls* FindByHead(const wxString& strHead) const;
    void AppendItemBlock(ConfItem_cls* pItem, wxString& strOut);
};

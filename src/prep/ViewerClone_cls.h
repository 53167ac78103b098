// Everything of a data viewer that a preparation worker reads, frozen at one time: the viewer's own
// items and a copy of each of its attributes (materials, modifiers, data processors). Workers never
// read the live scene; they read this. Belongs to the thread that holds it.
#pragma once

#include "AttributeClone_cls.h"
#include "ConfListContainer_cls.h"

#include <wx/string.h>

#include <memory>
#include <vector>

class ViewerClone_cls {
public:
    ViewerClone_cls() { mCConfList.mbOwnItems = true; }
    ViewerClone_cls(const ViewerClone_cls&) = delete;
    ViewerClone_cls& operator=(const ViewerClone_cls&) = delete;

    // An item of the viewer's own list; null if absent.
    ConfItem_cls* GetPCItem(const wxString& strHead) const { return mCConfList.GetPCItem(strHead); }
    // The item's number, or def when the item is absent.
    long long GetINT(const wxString& strHead, long long def) const;
    double GetDOUBLE(const wxString& strHead, double def) const;
    wxString GetSTR(const wxString& strHead, const wxString& def) const;

    // How many attributes of this attribute name (class word) the viewer has.
    int GetNumAttribute(const wxString& strAttribName) const;
    // The index-th attribute of that name, null past the end.
    AttributeClone_cls* GetPCAttribCloneFromAttribName(const wxString& strAttribName, int index);
    // A group of the first attribute with that name; null if absent.
    ParamGroup_cls* GetPCParamGroup(const wxString& strAttribName, const wxString& strGroupName);

    // Takes ownership of pAttribute and appends it.
    void AddAttribute(AttributeClone_cls* pAttribute) { mVPCAttribute.emplace_back(pAttribute); }

    // The counters of the list and of every attribute, for the change stamp of a preparation.
    wxString GetStrProcCounter() const;
    // True when any group of any attribute changes with time.
    bool IsParamGroupTimeDepend() const;

    ConfListContainer_cls mCConfList; // owns its items
    // The object's matrix in the scene at the clone's time, column major; identity by default.
    double mMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::vector<std::unique_ptr<AttributeClone_cls>> mVPCAttribute;
    wxString mStrClassWord;
};

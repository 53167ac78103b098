// A snapshot of an attribute for the render side and the worker threads: a deep copy that needs
// no lock. It belongs to the thread that holds it and has no commands.
#pragma once

#include "ConfListContainer_cls.h"
#include "ParamGroup_cls.h"

#include <wx/string.h>

#include <cstdint>
#include <vector>

class AttributeClone_cls {
public:
    AttributeClone_cls() { mCConfList.mbOwnItems = true; }
    AttributeClone_cls(const AttributeClone_cls& src);
    AttributeClone_cls& operator=(const AttributeClone_cls& src);

    wxString GetStrAttributeName() const { return mStrAttributeName; }
    bool IsAttributeSameAs(const wxString& str) const { return mStrAttributeName == str; }
    wxString GetStrName() const { return mStrName; }
    // An item of the copied list; null if absent.
    ConfItem_cls* GetPCItem(const wxString& strHead) const { return mCConfList.GetPCItem(strHead); }
    // By group name, as Attribute_cls::GetPCParamGroup. Null if absent.
    ParamGroup_cls* GetPCParamGroup(const wxString& strName);
    bool IsParamGroupTimeDepend() const;
    // The list's counters and each group's: a worker recomputes only when this differs from the
    // string of its last result.
    wxString GetStrProcCounter() const;

    ConfListContainer_cls mCConfList; // owns its items
    std::vector<ParamGroup_cls> mVCParamGroup;
    wxString mStrAttributeName;
    wxString mStrName;
    bool mbShy = false;
    bool mbAttrFlag = false;
    int32_t mAttrValue0 = 0;
    int32_t mAttrValue1 = 0;

private:
    void CopyFrom(const AttributeClone_cls& src);
};

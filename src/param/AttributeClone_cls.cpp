#include "AttributeClone_cls.h"

AttributeClone_cls::AttributeClone_cls(const AttributeClone_cls& src) {
    mCConfList.mbOwnItems = true;
    CopyFrom(src);
}

AttributeClone_cls& AttributeClone_cls::operator=(const AttributeClone_cls& src) {
    if (this != &src)
        CopyFrom(src);
    return *this;
}

void AttributeClone_cls::CopyFrom(const AttributeClone_cls& src) {
    mCConfList.SetTag(src.mCConfList.GetTag());
    mCConfList.CloneConfListFrom(src.mCConfList);
    mVCParamGroup = src.mVCParamGroup;
    mStrAttributeName = src.mStrAttributeName;
    mStrName = src.mStrName;
    mbShy = src.mbShy;
    mbAttrFlag = src.mbAttrFlag;
    mAttrValue0 = src.mAttrValue0;
    mAttrValue1 = src.mAttrValue1;
}

ParamGroup_cls* AttributeClone_cls::GetPCParamGroup(const wxString& strName) {
    for (ParamGroup_cls& group : mVCParamGroup)
        if (group.GetStrName() == strName)
            return &group;
    return nullptr;
}

bool AttributeClone_cls::IsParamGroupTimeDepend() const {
    for (const ParamGroup_cls& group : mVCParamGroup)
        if (group.IsTimeDepend())
            return true;
    return false;
}

wxString AttributeClone_cls::GetStrProcCounter() const {
    wxString str = mCConfList.GetStrProcCounter();
    for (const ParamGroup_cls& group : mVCParamGroup)
        str += group.GetStrProcCounter();
    return str;
}

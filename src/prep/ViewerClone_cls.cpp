#include "ViewerClone_cls.h"

long long ViewerClone_cls::GetINT(const wxString& strHead, long long def) const {
    ConfItem_cls* pItem = GetPCItem(strHead);
    return pItem ? pItem->GetBodyINT() : def;
}

double ViewerClone_cls::GetDOUBLE(const wxString& strHead, double def) const {
    ConfItem_cls* pItem = GetPCItem(strHead);
    return pItem ? pItem->GetBodyDOUBLE() : def;
}

wxString ViewerClone_cls::GetSTR(const wxString& strHead, const wxString& def) const {
    ConfItem_cls* pItem = GetPCItem(strHead);
    return pItem ? pItem->GetBodySTR() : def;
}

int ViewerClone_cls::GetNumAttribute(const wxString& strAttribName) const {
    int count = 0;
    for (const auto& p : mVPCAttribute)
        if (p->IsAttributeSameAs(strAttribName))
            ++count;
    return count;
}

AttributeClone_cls* ViewerClone_cls::GetPCAttribCloneFromAttribName(const wxString& strAttribName,
                                                                    int index) {
    for (const auto& p : mVPCAttribute) {
        if (!p->IsAttributeSameAs(strAttribName))
            continue;
        if (index == 0)
            return p.get();
        --index;
    }
    return nullptr;
}

ParamGroup_cls* ViewerClone_cls::GetPCParamGroup(const wxString& strAttribName,
                                                 const wxString& strGroupName) {
    AttributeClone_cls* pAttribute = GetPCAttribCloneFromAttribName(strAttribName, 0);
    return pAttribute ? pAttribute->GetPCParamGroup(strGroupName) : nullptr;
}

wxString ViewerClone_cls::GetStrProcCounter() const {
    wxString str = mCConfList.GetStrProcCounter();
    for (const auto& p : mVPCAttribute)
        str << "/" << p->GetStrAttributeName() << ":" << p->GetStrProcCounter();
    return str;
}

bool ViewerClone_cls::IsParamGroupTimeDepend() const {
    for (const auto& p : mVPCAttribute)
        if (p->IsParamGroupTimeDepend())
            return true;
    return false;
}

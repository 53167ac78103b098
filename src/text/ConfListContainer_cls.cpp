#include "ConfListContainer_cls.h"

ConfListContainer_cls::~ConfListContainer_cls() {
    if (mbOwnItems)
        DeleteAllItems();
}

wxArrayString ConfListContainer_cls::GetAstrItemList() const {
    wxArrayString aStr;
    for (const ConfItem_cls* pItem : mVPItems)
        aStr.Add(pItem->mStrHead);
    return aStr;
}

bool ConfListContainer_cls::ReadStrLine(std::wistream& stream, const wxString& strHead,
                                        const wxString& strRest) {
    if (strHead != "ConfItemList")
        return false;
    return ReadStrLineAllWithTag(stream, strRest);
}

void ConfListContainer_cls::CloneConfListFrom(const ConfListContainer_cls& src) {
    if (mbOwnItems)
        DeleteAllItems();
    else
        Clear();
    for (const ConfItem_cls* pSrc : src.mVPItems) {
        ConfItem_cls* pItem = ConfItem_cls::CreateByKind(pSrc->mKind);
        pItem->mStrHead = pSrc->mStrHead;
        pItem->mProcCounter = pSrc->mProcCounter;
        pItem->SetParentListTag(mStrTag);
        mVPItems.push_back(pItem);
    }
    SyncFrom(src);
}

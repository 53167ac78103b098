#include "ConfItemList_cls.h"

#include "TextHost_cls.h"

#include <string>

void ConfItemList_cls::Add(ConfItem_cls* pItem, const wxString& strHead, const wxString& strBody,
                           const wxString& strUpdateTag) {
    pItem->SetItem(strHead, strBody);
    pItem->mStrUpdateTag = strUpdateTag;
    pItem->SetParentListTag(mStrTag);
    mVPItems.push_back(pItem);
}

void ConfItemList_cls::Add(ConfItem_cls* pItem, ConfItemList_cls& srcList, const wxString& strHead) {
    ConfItem_cls* pSrc = srcList.GetPCItem(strHead);
    if (!pSrc) {
        Add(pItem, "None", wxString());
        return;
    }
    Add(pItem, pSrc->mStrHead, pSrc->mStrBody, pSrc->mStrUpdateTag);
}

void ConfItemList_cls::DeleteAllItems() {
    for (ConfItem_cls* pItem : mVPItems)
        delete pItem;
    mVPItems.clear();
}

ConfItem_cls* ConfItemList_cls::GetPCItem(wxString strHead) const {
    if (!strHead.EndsWith("="))
        strHead += "=";
    return FindByHead(strHead);
}

ConfItem_cls* ConfItemList_cls::FindByHead(const wxString& strHead) const {
    for (ConfItem_cls* pItem : mVPItems)
        if (pItem->mStrHead == strHead)
            return pItem;
    return nullptr;
}

wxString ConfItemList_cls::SerializeAll() {
    wxString str;
    for (ConfItem_cls* pItem : mVPItems)
        pItem->Serialize(str);
    return str;
}

void ConfItemList_cls::SerializeAllWithTag(wxString& strOut) {
    strOut += "ConfItemList::Begin::" + mStrTag + "\n";
    strOut += SerializeAll();
    strOut += "ConfItemList::End\n";
}

bool ConfItemList_cls::ReadStrLineAll(const wxString& strLine) {
    if (strLine.StartsWith("--"))
        return false;
    bool bTaken = false;
    // Every item sees the line: two items of the same head both take it.
    for (ConfItem_cls* pItem : mVPItems) {
        if (!pItem->ReadStrLine(strLine))
            continue;
        bTaken = true;
        PushUpdateCache(pItem->mStrUpdateTag);
    }
    if (bTaken && !mVStrUpdateCache.empty())
        SendUpdateMessage();
    return bTaken;
}

bool ConfItemList_cls::ReadStrLineAllWithTag(std::wistream& stream, const wxString& strRest) {
    if (strRest != "Begin::" + mStrTag)
        return false;
    std::wstring line;
    while (std::getline(stream, line)) {
        wxString strLine(line);
        if (strLine == "ConfItemList::End")
            break;
        ReadStrLineAll(strLine);
    }
    return true;
}

void ConfItemList_cls::SyncFrom(const ConfItemList_cls& other) {
    for (ConfItem_cls* pItem : mVPItems) {
        ConfItem_cls* pOther = other.FindByHead(pItem->mStrHead);
        if (!pOther)
            continue;
        pItem->mStrBody = pOther->mStrBody;
        pItem->mProcCounter = pOther->mProcCounter;
    }
}

void ConfItemList_cls::AppendItemBlock(ConfItem_cls* pItem, wxString& strOut) {
    strOut += "ConfItemList::Begin::" + mStrTag + "\n";
    pItem->Serialize(strOut);
    strOut += "ConfItemList::End";
}

void ConfItemList_cls::SyncFromCommand(const ConfItemList_cls& other) {
    for (ConfItem_cls* pItem : mVPItems) {
        ConfItem_cls* pOther = other.FindByHead(pItem->mStrHead);
        if (!pOther || pOther->mStrBody == pItem->mStrBody)
            continue;
        wxString strUndo, strDo;
        AppendItemBlock(pItem, strUndo);
        AppendItemBlock(pOther, strDo);
        TextHost_cls::PushAndRedo(strUndo, strDo);
    }
}

void ConfItemList_cls::PushUpdateCache(const wxString& strTag) {
    if (strTag.empty())
        return;
    for (const wxString& str : mVStrUpdateCache)
        if (str == strTag)
            return;
    mVStrUpdateCache.push_back(strTag);
}

void ConfItemList_cls::SendUpdateMessage() {
    wxString strJoined;
    for (size_t i = 0; i < mVStrUpdateCache.size(); ++i) {
        if (i > 0)
            strJoined += "::";
        strJoined += mVStrUpdateCache[i];
    }
    mVStrUpdateCache.clear();
    if (TextHost_cls* pHost = TextHost_cls::Get())
        pHost->UpdatePanels(strJoined);
}

wxString ConfItemList_cls::GetStrProcCounter() const {
    wxString str;
    for (const ConfItem_cls* pItem : mVPItems)
        str += wxString::Format("::%d", pItem->mProcCounter);
    return str;
}

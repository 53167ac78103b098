#include "SceneObjCtrl_cls.h"

#include "Attribute_cls.h"
#include "Camera_cls.h"
#include "KindTable_cls.h"
#include "LightSource_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "ParamStream_cls.h"
#include "Primitive_cls.h"
#include "SceneClassWord_cls.h"
#include "SceneObj_cls.h"
#include "TextHost_cls.h"
#include "UndoManager_cls.h"
#include "World_cls.h"

#include <wx/log.h>

#include <algorithm>

namespace {

void UpdatePanels(const wxString& str) {
    if (GCClassProvider)
        GCClassProvider->UpdatePanels(str);
}

void AfterMath(const wxString& strWhat, const wxString& strArg) {
    if (GCClassProvider)
        GCClassProvider->ProcAfterMath(strWhat, strArg);
}

bool IsGoodName(const wxString& strName) {
    return !strName.empty() && !strName.Contains("::") && !strName.Contains("\n") && strName != "ROOT";
}

wxString EscapeNewlines(wxString str) {
    str.Replace("\n", "\\n");
    return str;
}

} // namespace

SceneObjCtrl_cls::SceneObjCtrl_cls() : ParentObj_cls(0, wxString()) {
    SetToDefault();
}

SceneObjCtrl_cls::~SceneObjCtrl_cls() {
    Clear();
}

void SceneObjCtrl_cls::SetToDefault() {
    ConfItemList_cls::Clear();
    SetTag("SceneObjCtrl");
    Add(&mCDummy, "DUMMY", "", "SceneObjCtrl");
    mCDummy.mStrBody.clear();
}

// ---- selection ------------------------------------------------------------------------------

void SceneObjCtrl_cls::Select(const wxString& strName, bool bAdd, bool bUpdate, bool bToggle) {
    SceneObj_cls* pOld = mpCActive;
    // 1. the new active object; the reference is taken before the old one is let go, so an
    // object that stays active is never released to nothing on the way.
    SceneObj_cls* pNew = strName.empty() ? nullptr : GetPCFromName(strName);
    if (pNew)
        pNew->Refer();
    bool bOldIsNew = pOld && pOld == pNew;
    if (pOld)
        pOld->ReferRelease();
    mpCActive = pNew;
    bool bClear = true;
    bool bAppend = true;
    if (strName.empty() && bAdd) {
        bClear = false;
        bAppend = false;
    } else if (bToggle && bOldIsNew) {
        // 2. a second click on the active object takes it out
        mpCActive->ReferRelease();
        mpCActive = nullptr;
        Deselect(strName, bUpdate);
        bAppend = false;
        if (bAdd)
            bClear = false;
    } else if (bToggle) {
        if (bAdd)
            bClear = false;
    } else if (bAdd || bOldIsNew) {
        bClear = false;
    }
    // 3.
    if (bClear)
        ClearSelection();
    // 4.
    if (bAppend && mpCActive && !IsSelected(mpCActive)) {
        mVPCSelected.push_back(mpCActive);
        mpCActive->Refer();
        AfterMath("SelectObject", GetStrSelf() + "Obj::" + mpCActive->GetStrName());
    }
    // 5.
    if (bUpdate)
        UpdatePanels("OUTLINER::TIMELINE::VIEW3D");
}

void SceneObjCtrl_cls::Deselect(const wxString& strName, bool bUpdate) {
    for (size_t i = 0; i < mVPCSelected.size(); ++i) {
        if (mVPCSelected[i]->GetStrName() != strName)
            continue;
        SceneObj_cls* p = mVPCSelected[i];
        mVPCSelected.erase(mVPCSelected.begin() + static_cast<long>(i));
        p->ReferRelease();
        break;
    }
    if (bUpdate)
        UpdatePanels("OUTLINER::TIMELINE");
}

void SceneObjCtrl_cls::ClearSelection() {
    std::vector<SceneObj_cls*> v;
    v.swap(mVPCSelected);
    for (SceneObj_cls* p : v)
        p->ReferRelease();
}

void SceneObjCtrl_cls::SelectActitiveObjectOnly() {
    ClearSelection();
    if (!mpCActive)
        return;
    mVPCSelected.push_back(mpCActive);
    mpCActive->Refer();
}

bool SceneObjCtrl_cls::IsSelected(SceneObj_cls* p) const {
    return std::find(mVPCSelected.begin(), mVPCSelected.end(), p) != mVPCSelected.end();
}

int SceneObjCtrl_cls::GetStatus(SceneObj_cls* p) const {
    if (p && p == mpCActive)
        return 2;
    return IsSelected(p) ? 1 : 0;
}

void SceneObjCtrl_cls::RemoveSelectedObject(int index) {
    if (index < 0 || index >= static_cast<int>(mVPCSelected.size()))
        return;
    SceneObj_cls* p = mVPCSelected[static_cast<size_t>(index)];
    mVPCSelected.erase(mVPCSelected.begin() + index);
    p->ReferRelease();
}

void SceneObjCtrl_cls::SortSelectionList() {
    std::vector<SceneObj_cls*> vAll;
    GetVPCList(vAll);
    std::vector<SceneObj_cls*> vSorted;
    for (SceneObj_cls* p : vAll)
        if (IsSelected(p))
            vSorted.push_back(p);
    // Entries that have left the tree keep their place at the end.
    for (SceneObj_cls* p : mVPCSelected)
        if (std::find(vSorted.begin(), vSorted.end(), p) == vSorted.end())
            vSorted.push_back(p);
    mVPCSelected.swap(vSorted);
}

wxString SceneObjCtrl_cls::GetActiveObjectName() const {
    return mpCActive ? mpCActive->GetStrName() : wxString();
}

// ---- structure commands ---------------------------------------------------------------------

void SceneObjCtrl_cls::AppendCommandBase(const wxString& strClass, const wxString& strName,
                                         const wxString& strArg) {
    TextHost_cls::PushAndRedo(GetStrSelf() + "Delete::" + strName,
                              GetStrSelf() + "New::" + strClass + "::" + strArg + "::" + strName);
}

wxString SceneObjCtrl_cls::AppendSceneObjCommand(const wxString& strKind, wxString strName) {
    const wxString strClass = SceneClassWord_cls::GetStrClassFromKind(strKind);
    if (strClass.empty()) {
        wxLogWarning("SceneObjCtrl: unknown object class \"%s\"", strKind);
        return wxString();
    }
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClass, KindTable_cls::GROUP_OBJECT);
    if (!pKind || !pKind->mFuncMake) {
        wxLogWarning("SceneObjCtrl: %s objects are not available", strClass);
        return wxString();
    }
    if (strName.empty())
        strName = SceneClassWord_cls::GetStrBaseName(strClass);
    if (!IsGoodName(strName))
        return wxString();
    strName = GetStrUniqueName(strName);
    AppendCommandBase(strClass, strName, "ANY");
    return strName;
}

wxString SceneObjCtrl_cls::AppendPrimitiveCommand(int kind, wxString strName) {
    return AppendVariantCommand("Primitive_cls", SceneClassWord_cls::GetAstrPrimitiveType(), kind, strName);
}

wxString SceneObjCtrl_cls::AppendLightCommand(int kind, wxString strName) {
    return AppendVariantCommand("LightSource_cls", SceneClassWord_cls::GetAstrLightType(), kind, strName);
}

wxString SceneObjCtrl_cls::AppendVariantCommand(const wxString& strClass, const wxArrayString& astrVariant,
                                                int kind, wxString strName) {
    if (kind < 0 || kind >= static_cast<int>(astrVariant.GetCount()))
        return wxString();
    const wxString strVariant = astrVariant[static_cast<size_t>(kind)];
    if (strName.empty())
        strName = strVariant;
    if (!IsGoodName(strName))
        return wxString();
    strName = GetStrUniqueName(strName);
    AppendCommandBase(strClass, strName, strVariant);
    return strName;
}

wxString SceneObjCtrl_cls::RenameCommand(const wxString& strFrom, wxString strTo) {
    if (!GetPCFromName(strFrom) || !IsGoodName(strTo) || strFrom == strTo)
        return wxString();
    strTo = GetStrUniqueName(strTo);
    TextHost_cls::PushAndRedo(GetStrSelf() + "Rename::" + strTo + "::To::" + strFrom,
                              GetStrSelf() + "Rename::" + strFrom + "::To::" + strTo);
    return strTo;
}

void SceneObjCtrl_cls::DeleteOneItemCommand(SceneObj_cls* p) {
    const wxString strName = p->GetStrName();
    // The children go to the parent natively with the delete; these undo-only pairs bring each
    // back to its place. Their do text "Skip" is a line no receiver takes.
    int index = 0;
    for (SceneObj_cls* pChild : p->mLPCChild) {
        const wxString strChild = pChild->GetStrName();
        TextHost_cls::PushAndRedo(GetStrSelf() + "SetToChild::" + strChild + "::To::" + strName + "\n" +
                                      GetStrSelf() + "Move::" + strChild + "::" + strName +
                                      wxString::Format("::%d", index),
                                  "Skip");
        ++index;
    }
    wxString strUndo = GetStrSelf() + "New::" + p->mStrClassWord + "::ANY::" + strName + "\n";
    p->SerializePropertiesOnly(strUndo);
    strUndo += GetStrSelf() + "Move::" + strName + "::" + p->GetStrParentName() +
               wxString::Format("::%d", p->GetChildIndex());
    TextHost_cls::PushAndRedo(strUndo, GetStrSelf() + "Delete::" + strName);
}

void SceneObjCtrl_cls::DeleteItemsCommand() {
    SortSelectionList();
    DeleteItemsCommand(mVPCSelected);
}

void SceneObjCtrl_cls::DeleteItemsCommand(std::vector<SceneObj_cls*> vObjects) {
    if (vObjects.empty() || !GpCUndo)
        return;
    // By name: each delete changes the tree the next one sees.
    std::vector<wxString> vStrNames;
    for (SceneObj_cls* p : vObjects)
        vStrNames.push_back(p->GetStrName());
    GpCUndo->OpenBlock("DeleteItems");
    for (const wxString& strName : vStrNames)
        if (SceneObj_cls* p = GetPCFromName(strName))
            DeleteOneItemCommand(p);
    GpCUndo->CloseBlock("DeleteItems");
}

bool SceneObjCtrl_cls::SetToChildCommand(const wxString& strParent) {
    SceneObj_cls* p = mpCActive;
    if (!p || p->mbDetached)
        return false;
    if (p->IsAncestor(strParent) || !GetPCParentFromName(strParent)) {
        wxLogWarning("SceneObjCtrl: %s cannot become a child of %s", p->GetStrName(), strParent);
        return false;
    }
    if (p->GetStrParentName() == strParent)
        return false;
    const wxString strName = p->GetStrName();
    const wxString strOld = p->GetStrParentName();
    TextHost_cls::PushAndRedo(GetStrSelf() + "SetToChild::" + strName + "::To::" + strOld + "\n" +
                                  GetStrSelf() + "Move::" + strName + "::" + strOld +
                                  wxString::Format("::%d", p->GetChildIndex()),
                              GetStrSelf() + "SetToChild::" + strName + "::To::" + strParent);
    return true;
}

void SceneObjCtrl_cls::SetMultipleToChildCommand(const wxString& strParent) {
    if (!GpCUndo)
        return;
    SortSelectionList();
    std::vector<wxString> vStrNames;
    for (SceneObj_cls* p : mVPCSelected)
        vStrNames.push_back(p->GetStrName());
    SceneObj_cls* pActive = mpCActive;
    GpCUndo->OpenBlock("SetMultipleToChild");
    for (const wxString& strName : vStrNames) {
        SceneObj_cls* p = GetPCFromName(strName);
        if (!p)
            continue;
        // The command acts on the active object: lend the role for the step.
        mpCActive = p;
        SetToChildCommand(strParent);
    }
    mpCActive = pActive;
    GpCUndo->CloseBlock("SetMultipleToChild");
}

bool SceneObjCtrl_cls::MoveItemToCommand(const wxString& strTarget, bool bAfter) {
    SceneObj_cls* p = mpCActive;
    SceneObj_cls* pTarget = GetPCFromName(strTarget);
    if (!p || p->mbDetached || !pTarget || p->IsAncestor(strTarget))
        return false;
    ParentObj_cls* pParent = pTarget->mpParent;
    if (!pParent)
        return false;
    // The target's index once the object has left its place.
    int index = 0;
    for (SceneObj_cls* q : pParent->mLPCChild) {
        if (q == pTarget)
            break;
        if (q != p)
            ++index;
    }
    if (bAfter)
        ++index;
    const wxString strName = p->GetStrName();
    const wxString strOld = p->GetStrParentName();
    const int oldIndex = p->GetChildIndex();
    if (pParent == p->mpParent && oldIndex == index)
        return false;
    TextHost_cls::PushAndRedo(
        GetStrSelf() + "Move::" + strName + "::" + strOld + wxString::Format("::%d", oldIndex),
        GetStrSelf() + "Move::" + strName + "::" + pParent->GetStrName() + wxString::Format("::%d", index));
    return true;
}

void SceneObjCtrl_cls::MoveItemMultipleToCommand(const wxString& strTarget, bool bAfter) {
    if (!GpCUndo)
        return;
    SortSelectionList();
    std::vector<wxString> vStrNames;
    for (SceneObj_cls* p : mVPCSelected)
        vStrNames.push_back(p->GetStrName());
    // Before the target each goes in tree order; after it, the last goes first, so the moved
    // objects keep their order either way.
    if (bAfter)
        std::reverse(vStrNames.begin(), vStrNames.end());
    SceneObj_cls* pActive = mpCActive;
    GpCUndo->OpenBlock("MoveItemMultiple");
    for (const wxString& strName : vStrNames) {
        SceneObj_cls* p = GetPCFromName(strName);
        if (!p || strName == strTarget)
            continue;
        mpCActive = p;
        MoveItemToCommand(strTarget, bAfter);
    }
    mpCActive = pActive;
    GpCUndo->CloseBlock("MoveItemMultiple");
}

void SceneObjCtrl_cls::SetVisibleMultipleCommand(bool bVisible) {
    if (!GpCUndo)
        return;
    GpCUndo->OpenBlock("SetVisibleMultiple");
    for (SceneObj_cls* p : std::vector<SceneObj_cls*>(mVPCSelected))
        if (p->mCVisible.GetBodyBOOL() != bVisible)
            p->mCVisible.PushCommandPair(bVisible ? "1" : "0");
    GpCUndo->CloseBlock("SetVisibleMultiple");
}

void SceneObjCtrl_cls::ToggleVisibleCommand(const wxString& strName) {
    SceneObj_cls* p = GetPCFromName(strName);
    if (!p)
        return;
    p->mCVisible.PushCommandPair(p->mCVisible.GetBodyBOOL() ? "0" : "1");
}

void SceneObjCtrl_cls::SetValidMultipleCommand(bool bValid) {
    if (!GpCUndo)
        return;
    GpCUndo->OpenBlock("SetValidMultiple");
    for (SceneObj_cls* p : std::vector<SceneObj_cls*>(mVPCSelected)) {
        ConfItem_cls* pItem = p->GetPCValidItem();
        if (pItem && pItem->GetBodyBOOL() != bValid)
            pItem->PushCommandPair(bValid ? "1" : "0");
    }
    GpCUndo->CloseBlock("SetValidMultiple");
}

void SceneObjCtrl_cls::ToggleValidCommand(const wxString& strName) {
    SceneObj_cls* p = GetPCFromName(strName);
    ConfItem_cls* pItem = p ? p->GetPCValidItem() : nullptr;
    if (!pItem)
        return;
    pItem->PushCommandPair(pItem->GetBodyBOOL() ? "0" : "1");
}

void SceneObjCtrl_cls::MoveModifierCommand(const wxString& strName, int position) {
    if (mpCActive)
        mpCActive->MoveModifierCommand(strName, position);
}

// ---- key commands ---------------------------------------------------------------------------

template <class Func_T> void SceneObjCtrl_cls::ForEachSelectedInBlock(const wxString& strBlock, Func_T func) {
    if (!GpCUndo)
        return;
    GpCUndo->OpenBlock(strBlock);
    // A copy: a command may change the selection.
    for (SceneObj_cls* p : std::vector<SceneObj_cls*>(mVPCSelected))
        func(p);
    GpCUndo->CloseBlock(strBlock);
}

void SceneObjCtrl_cls::DeleteSelectedTLKeyCommand() {
    ForEachSelectedInBlock("DeleteSelectedTLKey", [](SceneObj_cls* p) { p->DeleteSelectedTLKeyCommand(); });
}

void SceneObjCtrl_cls::SetSelectedTLKeyTypeCommand(int type, double ease) {
    ForEachSelectedInBlock("SetSelectedTLKeyType",
                           [=](SceneObj_cls* p) { p->SetSelectedTLKeyTypeCommand(type, ease); });
}

void SceneObjCtrl_cls::MoveSelectedTLKeyCommand(double dx, double dy) {
    ForEachSelectedInBlock("MoveSelectedTLKey",
                           [=](SceneObj_cls* p) { p->MoveSelectedTLKeyCommand(dx, dy); });
}

bool SceneObjCtrl_cls::IsSelectedTLKeyExist() {
    for (SceneObj_cls* p : mVPCSelected)
        if (p->IsSelectedTLKeyExist())
            return true;
    return false;
}

void SceneObjCtrl_cls::DeselectKeyFrame(const wxString& strTag) {
    std::vector<SceneObj_cls*> vList;
    GetVPCList(vList);
    for (SceneObj_cls* p : vList)
        p->DeselectKeyFrame(strTag);
}

void SceneObjCtrl_cls::SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd,
                                      double tolerance) {
    if (Parameter_cls* p = GetPCParameter(strTag))
        p->SelectKeyByIndex(index, bSelect, bAdd, tolerance);
}

bool SceneObjCtrl_cls::ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC) {
    Parameter_cls* p = GetPCParameter(strTag);
    return p && p->ChangeKeyTypeByModKey(strTag, index, bA, bB, bC);
}

// ---- addressing -----------------------------------------------------------------------------

bool SceneObjCtrl_cls::RemoveTagHeader(wxString& strTag) {
    if (PopStrItemFromStrLine(strTag, "::") != "SceneObjCtrl")
        return false;
    const wxString strHead = PopStrItemFromStrLine(strTag, "::");
    if (strHead != "Obj") {
        wxLogWarning("SceneObjCtrl: tag without Obj (strHead.IsSameAs(\"Obj\"))");
        return false;
    }
    return true;
}

ParamGroup_cls* SceneObjCtrl_cls::GetPCParamGroup(wxString strTag) {
    if (!RemoveTagHeader(strTag))
        return nullptr;
    SceneObj_cls* pObj = GetPCFromName(PopStrItemFromStrLine(strTag, "::"));
    if (!pObj)
        return nullptr;
    const wxString strNext = PopStrItemFromStrLine(strTag, "::");
    if (strTag.empty())
        return pObj->GetPCParamGroup(wxString(), strNext);
    return pObj->GetPCParamGroup(strNext, strTag);
}

Parameter_cls* SceneObjCtrl_cls::GetPCParameter(wxString strTag) {
    const wxString strMember = PopLastItemFromStrLine(strTag, "::");
    ParamGroup_cls* pGroup = GetPCParamGroup(strTag);
    return pGroup ? pGroup->GetPCParameter(strMember) : nullptr;
}

ConfItem_cls* SceneObjCtrl_cls::GetPCConfItem(wxString strTag) {
    if (!RemoveTagHeader(strTag))
        return nullptr;
    SceneObj_cls* pObj = GetPCFromName(PopStrItemFromStrLine(strTag, "::"));
    if (!pObj)
        return nullptr;
    const wxString strNext = PopStrItemFromStrLine(strTag, "::");
    if (strNext == "SceneObj")
        return pObj->GetPCItem(GetLastItem(strTag, "::"));
    return pObj->GetPCItemInAttrib(strNext, strTag);
}

wxString SceneObjCtrl_cls::GetStrCommandParamGroup(wxString strTag, ParamGroup_cls* pGroup) {
    if (!pGroup || !RemoveTagHeader(strTag))
        return wxString();
    SceneObj_cls* pObj = GetPCFromName(PopStrItemFromStrLine(strTag, "::"));
    if (!pObj)
        return wxString();
    for (ParamGroup_cls* p : pObj->mVPCParamGroup)
        if (p == pGroup)
            return pObj->GetStrTag(p);
    for (const wxString& strAttr : pObj->GetAstrAttribList()) {
        Attribute_cls* pAttr = pObj->GetPCAttribute(strAttr, 0);
        if (pAttr && pAttr->GetPCParamGroup(pGroup->GetStrName()) == pGroup)
            return pObj->GetStrTag() + "::" + strAttr + "::" + pGroup->GetStrName();
    }
    return wxString();
}

wxString SceneObjCtrl_cls::GetStrUniqueName(wxString strName) {
    while (IsObjExist(strName, nullptr))
        strName = GetStrNewCandidate(strName);
    return strName;
}

bool SceneObjCtrl_cls::SetParamGroupConfCommand(const wxString& strTag, const wxString& strKey,
                                                const wxString& strValue) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strTag);
    if (!pGroup)
        return false;
    ConfItem_cls* pItem = pGroup->GetPCItem(strKey);
    if (!pItem)
        return false;
    const wxString strCanonical = GetStrCommandParamGroup(strTag, pGroup);
    if (strCanonical.empty())
        return false;
    TextHost_cls::PushAndRedo(strCanonical + "::" + pItem->mStrHead + EscapeNewlines(pItem->GetBodySTR()),
                              strCanonical + "::" + pItem->mStrHead + EscapeNewlines(strValue));
    return true;
}

bool SceneObjCtrl_cls::SetParameterConfCommand(const wxString& strTag, const wxString& strKey, bool bValue,
                                               bool bAll) {
    wxString strGroupTag = strTag;
    const wxString strMember = PopLastItemFromStrLine(strGroupTag, "::");
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroupTag);
    if (!pGroup)
        return false;
    return PushParameterConf(pGroup, GetStrCommandParamGroup(strGroupTag, pGroup), strMember, strKey, bValue,
                             bAll);
}

bool SceneObjCtrl_cls::PushParameterConf(ParamGroup_cls* pGroup, const wxString& strCanonical,
                                         const wxString& strMember, const wxString& strKey, bool bValue,
                                         bool bAll) {
    if (!pGroup || !GpCUndo || strCanonical.empty())
        return false;
    const wxString strHead = strKey.EndsWith("=") ? strKey : strKey + "=";
    auto pushOne = [&](Parameter_cls& param) {
        ConfItem_cls* pItem = param.GetPCItem(strHead);
        if (!pItem || pItem->GetBodyBOOL() == bValue)
            return;
        const wxString strMemberTag = strCanonical + "::" + param.GetStrName() + "::" + strHead;
        TextHost_cls::PushAndRedo(strMemberTag + wxString::Format("%d", pItem->GetBodyBOOL() ? 1 : 0),
                                  strMemberTag + wxString::Format("%d", bValue ? 1 : 0));
    };
    if (!bAll) {
        Parameter_cls* pParam = pGroup->GetPCParameter(strMember);
        if (!pParam)
            return false;
        pushOne(*pParam);
        return true;
    }
    GpCUndo->OpenBlock("SetParameterConf");
    for (Parameter_cls& param : pGroup->mVCParam)
        pushOne(param);
    GpCUndo->CloseBlock("SetParameterConf");
    return true;
}

// ---- native operations ----------------------------------------------------------------------

ParentObj_cls* SceneObjCtrl_cls::GetPCParentFromName(const wxString& strName) {
    if (strName == "ROOT")
        return this;
    return GetPCFromName(strName);
}

void SceneObjCtrl_cls::Detatch(SceneObj_cls* p) {
    if (!p || !p->mpParent)
        return;
    ParentObj_cls* pParent = p->mpParent;
    pParent->InheritChilds(p, pParent->GetIndexFromPC(p));
    pParent->RemoveChildNative(p);
    p->mbDetached = true;
}

void SceneObjCtrl_cls::DeleteSceneObj(SceneObj_cls* p) {
    if (!p || p->mbDetached)
        return;
    const wxString strName = p->GetStrName();
    Deselect(strName, false);
    if (mpCActive == p) {
        mpCActive = nullptr;
        p->ReferRelease();
    }
    Detatch(p);
    // The panels drop what they hold of it before it goes.
    AfterMath("DeleteObject", GetStrSelf() + "Obj::" + strName);
    if (p->mReferenceCounter <= 0)
        delete p;
}

bool SceneObjCtrl_cls::MoveItemNative(SceneObj_cls* p, const wxString& strParent, int index) {
    if (!p || p->mbDetached)
        return false;
    ParentObj_cls* pParent = GetPCParentFromName(strParent);
    if (!pParent || p->IsAncestor(strParent)) {
        wxLogWarning("SceneObjCtrl: %s cannot move under %s", p->GetStrName(), strParent);
        return false;
    }
    p->mpParent->RemoveChildNative(p);
    pParent->InsertSceneObjNative(p, index);
    UpdatePanels("OUTLINER::VIEW3D");
    return true;
}

SceneObj_cls* SceneObjCtrl_cls::GetPCNewObject(const wxString& strClass, const wxString& strVariant) {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClass, KindTable_cls::GROUP_OBJECT);
    if (pKind && pKind->mFuncMake)
        return pKind->mFuncMake(this, strVariant);
    // A class word of the language whose layer is not in this registry (a data viewer).
    if (SceneClassWord_cls::IsObjectClass(strClass))
        wxLogWarning("SceneObjCtrl: %s objects are not available", strClass);
    return nullptr;
}

// ---- lines ----------------------------------------------------------------------------------

bool SceneObjCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    // 1. the controller's list: its one item names the active object after a load
    if (ConfListContainer_cls::ReadStrLine(stream, strHead, strRest)) {
        Select(mCDummy.GetBodySTR(), false, false, false);
        return true;
    }
    // 2. the list blocks of objects and their attributes
    if (strHead == "ConfItemList") {
        std::vector<SceneObj_cls*> vList;
        GetVPCList(vList);
        for (SceneObj_cls* p : vList) {
            if (p->ReadStrLine(stream, strHead, strRest)) {
                UpdatePanels(
                    "OUTLINER::CONSOLE::VIEW3D::PROPERTY_OBJECT::PROPERTY_MATERIAL::PROPERTY_MODIFIER::"
                    "PROPERTY_DATAPROC");
                return true;
            }
        }
        return false;
    }
    // 3. the commands
    if (strHead != "SceneObjCtrl")
        return false;
    wxString strLine = strRest;
    const wxString strItem = PopStrItemFromStrLine(strLine, "::");
    if (strItem == "Move")
        return ProcMove(strLine);
    if (strItem == "SetToChild")
        return ProcSetToChild(strLine);
    if (strItem == "Rename")
        return ProcRename(strLine);
    if (strItem == "New")
        return ProcNew(stream, strLine);
    if (strItem == "Delete")
        return ProcDelete(strLine);
    if (strItem == "ReadProperties")
        return ProcReadProperties(stream, strLine);
    if (strItem == "Obj") {
        UpdatePanels(
            "OUTLINER::TIMELINE::CONSOLE::GRAPH::COLOR_CURVE::VIEW3D::PROPERTY_OBJECT::PROPERTY_MATERIAL::"
            "PROPERTY_MODIFIER::PROPERTY_DATAPROC");
        return ProcReadObj(stream, strLine);
    }
    return false;
}

bool SceneObjCtrl_cls::ProcNew(std::wistream&, wxString strRest) {
    const wxString strClass = PopStrItemFromStrLine(strRest, "::");
    const wxString strVariant = PopStrItemFromStrLine(strRest, "::");
    const wxString strName = strRest;
    if (!SceneClassWord_cls::IsObjectClass(strClass)) {
        wxLogWarning("SceneObjCtrl: unknown object class \"%s\"", strClass);
        return false;
    }
    if (!IsGoodName(strName) || IsObjExist(strName, nullptr)) {
        wxLogWarning("SceneObjCtrl: no new object of the name \"%s\"", strName);
        return false;
    }
    SceneObj_cls* p = GetPCNewObject(strClass, strVariant);
    if (!p)
        return false;
    p->Initialize(strName);
    // Appended at the end, also during a load, so the order of a file comes back unchanged.
    InsertSceneObjNative(p, -1);
    Select(strName, false, false, false);
    UpdatePanels("OUTLINER::VIEW3D");
    return true;
}

bool SceneObjCtrl_cls::ProcDelete(wxString strRest) {
    SceneObj_cls* p = GetPCFromName(strRest);
    if (!p)
        return false;
    DeleteSceneObj(p);
    UpdatePanels("OUTLINER::TIMELINE::VIEW3D");
    return true;
}

bool SceneObjCtrl_cls::ProcRename(wxString strRest) {
    const wxString strOld = PopStrItemFromStrLine(strRest, "::");
    if (PopStrItemFromStrLine(strRest, "::") != "To")
        return false;
    const wxString strNew = strRest;
    SceneObj_cls* p = GetPCFromName(strOld);
    if (!p || !IsGoodName(strNew) || IsObjExist(strNew, p))
        return false;
    p->ProcRename(strNew);
    AfterMath("RenameObject", strOld + "::" + strNew);
    UpdatePanels("OUTLINER::TIMELINE::PROPERTY_OBJECT");
    return true;
}

bool SceneObjCtrl_cls::ProcMove(wxString strRest) {
    const wxString strName = PopStrItemFromStrLine(strRest, "::");
    const wxString strParent = PopStrItemFromStrLine(strRest, "::");
    long index = -1;
    if (!strRest.ToLong(&index))
        return false;
    return MoveItemNative(GetPCFromName(strName), strParent, static_cast<int>(index));
}

bool SceneObjCtrl_cls::ProcSetToChild(wxString strRest) {
    const wxString strName = PopStrItemFromStrLine(strRest, "::");
    if (PopStrItemFromStrLine(strRest, "::") != "To")
        return false;
    return MoveItemNative(GetPCFromName(strName), strRest, -1);
}

bool SceneObjCtrl_cls::ProcReadObj(std::wistream& stream, wxString strRest) {
    SceneObj_cls* p = GetPCFromName(PopStrItemFromStrLine(strRest, "::"));
    if (!p)
        return false;
    const wxString strItem = PopStrItemFromStrLine(strRest, "::");
    return p->ReadStrLine(stream, strItem, strRest);
}

bool SceneObjCtrl_cls::ProcReadProperties(std::wistream& stream, wxString strRest) {
    SceneObj_cls* p = GetPCFromName(strRest);
    if (!p)
        wxLogWarning("SceneObjCtrl: properties of an unknown object \"%s\" are skipped", strRest);
    ParamStream_cls reader;
    wxString strLine;
    while (reader.GetLine(stream, strLine)) {
        const wxString strHead = ParamStream_cls::PopHead(strLine);
        if (strHead == "ReadProperties") {
            if (strLine == "End")
                return p != nullptr;
            wxLogWarning("SceneObjCtrl: ReadProperties::%s inside a block (strLine.IsSameAs(\"End\"))",
                         strLine);
            reader.PutBack(stream);
            return p != nullptr;
        }
        if (strHead == "SceneObjCtrl") {
            // A block that never ended: the next command belongs to the loop outside.
            reader.PutBack(stream);
            return p != nullptr;
        }
        if (p)
            p->ReadStrLine(stream, strHead, strLine);
    }
    return p != nullptr;
}

// ---- persistence ----------------------------------------------------------------------------

void SceneObjCtrl_cls::Serialize(wxString& strOut) {
    for (SceneObj_cls* p : mLPCChild)
        p->Serialize(strOut);
    mCDummy.SetBodyFromData(GetActiveObjectName());
    ConfListContainer_cls::Serialize(strOut);
}

void SceneObjCtrl_cls::Clear() {
    ClearSelection();
    Select("", false, false, false);
    ParentObj_cls::Clear();
}

void SceneObjCtrl_cls::MakeDefaultScene() {
    Camera_cls* pCamera = new Camera_cls(this);
    pCamera->Initialize("Camera");
    InsertSceneObjNative(pCamera, 0);
    Primitive_cls* pBox = new Primitive_cls(this, "Box");
    pBox->Initialize("Box");
    InsertSceneObjNative(pBox, 0);
    LightSource_cls* pLight = new LightSource_cls(this, "PointLight");
    pLight->Initialize("Initial Light");
    if (ParamGroup_cls* p = pLight->GetPCParamGroup(wxString(), "Position"))
        p->SetInitValue(5.0, 5.0, 5.0, 0.0);
    if (ParamGroup_cls* p = pLight->GetPCParamGroup(wxString(), "RotationEuler"))
        p->SetInitValue(0.0, -45.0, 45.0, 0.0);
    InsertSceneObjNative(pLight, 0);
    World_cls* pWorld = new World_cls(this);
    pWorld->Initialize("World");
    InsertSceneObjNative(pWorld, 0);
}

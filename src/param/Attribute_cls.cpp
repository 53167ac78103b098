#include "Attribute_cls.h"

#include "AttributeClone_cls.h"
#include "Misc_cls.h"
#include "ParamStream_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/log.h>

#include <map>

const wxString Attribute_cls::msStrSceneObjCtrlSelf = "SceneObjCtrl::";

namespace {

std::map<wxString, Attribute_cls::ClassOps_cls>& ClassOpsTable() {
    static std::map<wxString, Attribute_cls::ClassOps_cls> table;
    return table;
}

const Attribute_cls::ClassOps_cls* FindClassOps(const wxString& strClassWord) {
    auto it = ClassOpsTable().find(strClassWord);
    return it == ClassOpsTable().end() ? nullptr : &it->second;
}

// Deletes p through the hook of its class, or through the base when it has none.
void DeleteThrough(Attribute_cls* p,
                   std::function<void(Attribute_cls*)> Attribute_cls::ClassOps_cls::*pHook) {
    if (!p)
        return;
    const Attribute_cls::ClassOps_cls* pOps = FindClassOps(p->GetStrAttributeName());
    if (pOps && pOps->*pHook)
        (pOps->*pHook)(p);
    else
        delete p;
}

// Keys at the clock's time, of the default key type, for the first values.size() members whose
// value differs from the given one as a float; tagOf(member) addresses a member.
template <class TagOf_T>
void SetChangedMembers(ParamGroup_cls& group, const std::vector<double>& values, TagOf_T tagOf) {
    const double t = TimeCtrl_cls::GetClockNT();
    int type = -1;
    double ease = 1.0;
    if (GpCTimeCtrl)
        GpCTimeCtrl->GetDefaultKeyTypeAndEase(&type, &ease);
    for (size_t i = 0; i < values.size(); ++i) {
        Parameter_cls& param = group.mVCParam[i];
        if (static_cast<float>(values[i]) != static_cast<float>(param.GetValue(t)))
            param.SetValueAtCommand(values[i], t, tagOf(param), type, ease);
    }
}

} // namespace

Attribute_cls::Attribute_cls(const wxString& strAttributeName, const wxString& strName)
    : mCAttributeName("AttributeName=", strAttributeName), mCShy("Shy=", false) {
    mCStrName.SetItem("Name=", strName);
    mCStrName.mStrUpdateTag = "TIMELINE";
    SetTag(strName);
    RegisterItems();
}

Attribute_cls::Attribute_cls(Attribute_cls& src)
    : StrName_cls(src), ConfListContainer_cls(), Parser_cls(), GetPC_cls(),
      mCAttributeName(src.mCAttributeName), mCShy(src.mCShy), mbAttrFlag(src.mbAttrFlag),
      mAttrValue0(src.mAttrValue0), mAttrValue1(src.mAttrValue1) {
    SetTag(src.mStrTag);
    // The items of the base stand in this copy too; those of the derived class become items
    // the copy owns, in the same list order.
    for (ConfItem_cls* pSrc : src.mVPItems) {
        if (pSrc == &src.mCAttributeName) {
            mVPItems.push_back(&mCAttributeName);
        } else if (pSrc == &src.mCStrName) {
            mVPItems.push_back(&mCStrName);
        } else if (pSrc == &src.mCShy) {
            mVPItems.push_back(&mCShy);
        } else {
            std::unique_ptr<ConfItem_cls> pItem(ConfItem_cls::CreateByKind(pSrc->mKind));
            static_cast<ConfItemBase_cls&>(*pItem) = *pSrc;
            pItem->mpAStrLink = nullptr; // the array lives in the source's owner
            mVPItems.push_back(pItem.get());
            mVPCOwnedItems.push_back(std::move(pItem));
        }
        mVPItems.back()->SetParentListTag(mStrTag);
    }
    for (ParamGroup_cls* pGroup : src.mVPCParamGroup)
        mVPCParamGroup.push_back(new ParamGroup_cls(*pGroup));
}

Attribute_cls::~Attribute_cls() {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        delete pGroup;
    mVPCParamGroup.clear();
}

void Attribute_cls::RegisterItems() {
    Add(&mCAttributeName, "AttributeName=", mCAttributeName.mStrBody);
    Add(&mCStrName, "Name=", mCStrName.mStrBody, "TIMELINE");
    Add(&mCShy, "Shy=", "0");
}

// ---- groups ---------------------------------------------------------------------------------

ParamGroup_cls* Attribute_cls::GetPCNewParamGroup(const wxString& strName, const wxString& strMember1,
                                                  const wxString& strMember2, const wxString& strMember3) {
    wxArrayString astrMembers;
    for (const wxString& str : {strMember1, strMember2, strMember3})
        if (!str.empty())
            astrMembers.Add(str);
    return new ParamGroup_cls(strName, astrMembers);
}

void Attribute_cls::InitializeAndPushParam(ParamGroup_cls* p, double a, double b, double c) {
    if (!p)
        return;
    p->SetInitValue(a, b, c, 0.0);
    mVPCParamGroup.push_back(p);
}

ParamGroup_cls* Attribute_cls::AddOneDimParam(const wxString& strName, const wxString& strMemberName,
                                              double value) {
    ParamGroup_cls* p = GetPCNewParamGroup(strName, strMemberName);
    InitializeAndPushParam(p, value);
    return p;
}

ParamGroup_cls* Attribute_cls::GetPCParamGroup(const wxString& strName) {
    if (mpCColorCurveGroup && IsAttributeSameAs("ColorCurve_cls") && strName == GetStrName())
        return mpCColorCurveGroup;
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        if (pGroup->GetStrName() == strName)
            return pGroup;
    return nullptr;
}

bool Attribute_cls::IsParamGroupTimeDepend() const {
    if (mpCColorCurveGroup && mpCColorCurveGroup->IsTimeDepend())
        return true;
    for (const ParamGroup_cls* pGroup : mVPCParamGroup)
        if (pGroup->IsTimeDepend())
            return true;
    return false;
}

bool Attribute_cls::IsSelectedTLKeyExist() const {
    for (const ParamGroup_cls* pGroup : mVPCParamGroup)
        if (pGroup->IsSelectedKeyExist())
            return true;
    return false;
}

void Attribute_cls::DeselectKeyFrame(wxString strTag) {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        pGroup->DeselectKey(strTag + "::" + pGroup->GetStrName());
}

void Attribute_cls::DeleteSelectedTLKeyCommand(wxString strTag) {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        pGroup->DeleteSelectedTLKeyCommand(strTag + "::" + pGroup->GetStrName());
}

void Attribute_cls::SetSelectedTLKeyTypeCommand(wxString strTag, int type, double ease) {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        pGroup->SetSelectedTLKeyTypeCommand(strTag + "::" + pGroup->GetStrName(), type, ease);
}

void Attribute_cls::MoveSelectedTLKeyCommand(wxString strTag, double dx, double dy) {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        pGroup->MoveSelectedTLKeyCommand(dx, dy, strTag + "::" + pGroup->GetStrName());
}

void Attribute_cls::RescaleParametersCommand(wxString strTag, double factor) {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        pGroup->RescaleParametersCommand(factor, strTag + "::" + pGroup->GetStrName());
}

void Attribute_cls::GetVstrParamTag(wxString strTag, std::vector<wxString>& vStrTag) {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        for (const Parameter_cls& param : pGroup->mVCParam)
            vStrTag.push_back(strTag + "::" + pGroup->GetStrName() + "::" + param.GetStrName());
}

void Attribute_cls::SetConfListTagForSceneObjAttribute(const wxString& strAttrName,
                                                       const wxString& strObjName) {
    SetTag("SceneObj::" + strObjName + "::" + strAttrName);
}

// ---- text -----------------------------------------------------------------------------------

void Attribute_cls::Serialize(wxString& strOut) {
    strOut += "ReadAttribute::" + GetStrAttributeName() + "::" + GetStrName() + "::Begin\n";
    ConfListContainer_cls::Serialize(strOut);
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        pGroup->Serialize(strOut);
    strOut += "ReadAttribute::End\n";
}

bool Attribute_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    if (ConfListContainer_cls::ReadStrLine(stream, strHead, strRest))
        return true;
    if (strHead != "ReadAttribute")
        return false;
    wxString strLine = strRest;
    const wxString strClass = PopStrItemFromStrLine(strLine, "::");
    const wxString strName = PopStrItemFromStrLine(strLine, "::");
    if (strClass != GetStrAttributeName() || strName != GetStrName())
        return false; // the block of a sibling
    if (strLine != "Begin") {
        wxLogWarning("Attribute %s: ReadAttribute::%s read, ::Begin expected (strLine.IsSameAs(\"Begin\"))",
                     GetStrName(), strRest);
        return true;
    }
    ParamStream_cls reader;
    while (reader.GetLine(stream, strLine)) {
        const wxString strLineHead = ParamStream_cls::PopHead(strLine);
        if (ConfListContainer_cls::ReadStrLine(stream, strLineHead, strLine))
            continue;
        if (strLineHead == "ReadParamGroup") {
            const wxString strGroup = PopStrItemFromStrLine(strLine, "::");
            ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
            // An unknown group's block is skipped line by line: nothing here takes its lines.
            if (pGroup && strGroup != "End")
                ReadParamGroupBlock(stream, pGroup);
            continue;
        }
        if (strLineHead == "ReadAttribute") {
            if (strLine == "End")
                return true;
            // A block that never ended: leave the next one to the loop that owns it.
            wxLogWarning("Attribute %s: ReadAttribute::%s inside the block (strLine.IsSameAs(\"End\"))",
                         GetStrName(), strLine);
            reader.PutBack(stream);
            return true;
        }
    }
    wxLogWarning("Attribute %s: the text ends inside the block", GetStrName());
    return true;
}

void Attribute_cls::ReadParamGroupBlock(std::wistream& stream, ParamGroup_cls* pGroup) {
    ParamStream_cls reader;
    wxString strLine;
    while (reader.GetLine(stream, strLine)) {
        const wxString strLineHead = ParamStream_cls::PopHead(strLine);
        if (strLineHead == "ReadParamGroup" || strLineHead == "ReadAttribute") {
            if (strLineHead == "ReadParamGroup" && PopStrItemFromStrLine(strLine, "::") == "End")
                return;
            wxLogWarning("ParamGroup %s: %s::%s inside the block (PopStrItemFromStrLine(strLine, "
                         "wxT(\"::\")).IsSameAs(wxT(\"End\")))",
                         pGroup->GetStrName(), strLineHead, strLine);
            reader.PutBack(stream);
            return;
        }
        pGroup->ReadStrLine(stream, strLineHead, strLine);
    }
    wxLogWarning("ParamGroup %s: the text ends inside the block", pGroup->GetStrName());
}

void Attribute_cls::Clone(AttributeClone_cls& clone) {
    clone.mCConfList.mbOwnItems = true;
    clone.mCConfList.SetTag(mStrTag);
    clone.mCConfList.CloneConfListFrom(*this);
    clone.mVCParamGroup.clear();
    clone.mVCParamGroup.reserve(mVPCParamGroup.size() + 1);
    // A copy starts with Lua closed and no remembered text, so its first evaluation compiles a
    // state of its own.
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        clone.mVCParamGroup.push_back(*pGroup);
    if (mpCColorCurveGroup && IsAttributeSameAs("ColorCurve_cls"))
        clone.mVCParamGroup.push_back(*mpCColorCurveGroup);
    for (ParamGroup_cls& group : clone.mVCParamGroup)
        group.mStrCompiledExpression.clear();
    clone.mStrAttributeName = GetStrAttributeName();
    clone.mStrName = GetStrName();
    clone.mbShy = mCShy.GetBodyBOOL();
    clone.mbAttrFlag = mbAttrFlag;
    clone.mAttrValue0 = mAttrValue0;
    clone.mAttrValue1 = mAttrValue1;
}

// ---- Syncronize family ----------------------------------------------------------------------

wxString Attribute_cls::GetStrMemberTag(const wxString& strHead, const wxString& strGroup,
                                        const Parameter_cls& param) const {
    return strHead + GetStrName() + "::" + strGroup + "::" + param.GetStrName();
}

void Attribute_cls::SyncronizeParamAndConf(const wxString& strObjName, const wxString& strGroup,
                                           ConfItemFLOAT_cls& item) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
    if (!pGroup || pGroup->mVCParam.empty()) {
        wxLogWarning("Attribute %s: no group %s", GetStrName(), strGroup);
        return;
    }
    const wxString strHead = msStrSceneObjCtrlSelf + "Obj::" + strObjName + "::";
    SetChangedMembers(*pGroup, {item.GetBodyDOUBLE()},
                      [&](const Parameter_cls& param) { return GetStrMemberTag(strHead, strGroup, param); });
}

void Attribute_cls::SyncronizeParamAndConf2(const wxString& strObjName, const wxString& strGroup,
                                            ConfItemFLOAT_cls& item0, ConfItemFLOAT_cls& item1) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
    if (!pGroup || pGroup->mVCParam.size() < 2) {
        wxLogWarning("Attribute %s: no group %s of two members", GetStrName(), strGroup);
        return;
    }
    const wxString strHead = msStrSceneObjCtrlSelf + "Obj::" + strObjName + "::";
    SetChangedMembers(*pGroup, {item0.GetBodyDOUBLE(), item1.GetBodyDOUBLE()},
                      [&](const Parameter_cls& param) { return GetStrMemberTag(strHead, strGroup, param); });
}

void Attribute_cls::SyncronizeParamAndConf3(const wxString& strObjName, const wxString& strGroup,
                                            ConfItemFLOATARRAY_cls& item) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
    if (!pGroup) {
        wxLogWarning("Attribute %s: no group %s", GetStrName(), strGroup);
        return;
    }
    const std::vector<double> values = item.GetBodyFLOATARRAY();
    if (values.size() != pGroup->mVCParam.size()) {
        wxLogWarning("Attribute %s: %d values for group %s of %d members", GetStrName(),
                     static_cast<int>(values.size()), strGroup, static_cast<int>(pGroup->mVCParam.size()));
        return;
    }
    const wxString strHead = msStrSceneObjCtrlSelf + "Obj::" + strObjName + "::";
    SetChangedMembers(*pGroup, values,
                      [&](const Parameter_cls& param) { return GetStrMemberTag(strHead, strGroup, param); });
}

void Attribute_cls::SyncronizeConfAndParam(double t, const wxString& strGroup, ConfItemFLOAT_cls& item) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
    if (!pGroup)
        return;
    item.SetBodyFromData(pGroup->GetStrValues(t, false));
}

void Attribute_cls::SyncronizeConfAndParam2(double t, const wxString& strGroup, ConfItemFLOAT_cls& item0,
                                            ConfItemFLOAT_cls& item1) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
    if (!pGroup || pGroup->mVCParam.size() < 2)
        return;
    std::vector<double> values = pGroup->GetVInterpolatedValue(t, false, nullptr, false);
    item0.SetBodyFromData(wxString::Format("%g", values[0]));
    item1.SetBodyFromData(wxString::Format("%g", values[1]));
}

void Attribute_cls::SyncronizeParamForModifier(const wxString& strGroup, std::vector<float> values,
                                               SceneObj_cls* pObj) {
    if (!msFuncSceneObjName) {
        wxLogWarning("Attribute %s: no scene to name the object", GetStrName());
        return;
    }
    SetGroupValuesCommand(strGroup, values,
                          msStrSceneObjCtrlSelf + "Obj::" + msFuncSceneObjName(pObj) + "::");
}

void Attribute_cls::SyncronizeParamForFilter(const wxString& strGroup, std::vector<float> values) {
    if (!msFuncFilterCtrlSelf) {
        wxLogWarning("Attribute %s: no filter chain to address", GetStrName());
        return;
    }
    SetGroupValuesCommand(strGroup, values, msFuncFilterCtrlSelf());
}

void Attribute_cls::SetGroupValuesCommand(const wxString& strGroup, const std::vector<float>& values,
                                          const wxString& strHead) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
    if (!pGroup) {
        wxLogWarning("Attribute %s: no group %s", GetStrName(), strGroup);
        return;
    }
    if (values.size() != pGroup->mVCParam.size()) {
        wxLogWarning("Attribute %s: %d values for group %s (dim == pCParamGroup->mVCParam.size())",
                     GetStrName(), static_cast<int>(values.size()), strGroup);
        return;
    }
    const float t = static_cast<float>(TimeCtrl_cls::GetClockNT());
    for (size_t i = 0; i < values.size(); ++i) {
        Parameter_cls& param = pGroup->mVCParam[i];
        if (Misc_cls::IsNearlySame(param.GetValue(t), values[i], 5e-7))
            continue;
        param.SetValueAtCommand(values[i], t, GetStrMemberTag(strHead, strGroup, param), -1, 1.0);
    }
}

// ---- dispatch -------------------------------------------------------------------------------

void Attribute_cls::SetClassOps(const wxString& strClassWord, const ClassOps_cls& ops) {
    ClassOpsTable()[strClassWord] = ops;
}

void Attribute_cls::ClearClassOps() {
    ClassOpsTable().clear();
}

void Attribute_cls::Delete(Attribute_cls* p) {
    DeleteThrough(p, &ClassOps_cls::mFuncDelete);
}

void Attribute_cls::DeleteBuffer(Attribute_cls* p) {
    DeleteThrough(p, &ClassOps_cls::mFuncDeleteBuffer);
}

void Attribute_cls::SyncSrcFromBuffer(SceneObj_cls* pObj) {
    const ClassOps_cls* pOps = FindClassOps(GetStrAttributeName());
    if (pOps && pOps->mFuncSyncSrcFromBuffer)
        pOps->mFuncSyncSrcFromBuffer(this, pObj);
}

void Attribute_cls::SyncBufferFromSrc() {
    const ClassOps_cls* pOps = FindClassOps(GetStrAttributeName());
    if (pOps && pOps->mFuncSyncBufferFromSrc)
        pOps->mFuncSyncBufferFromSrc(this);
}

#include "TLParamLogic_cls.h"

#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "DataSequence_cls.h"
#include "DataViewerBase_cls.h"
#include "FilterBase_cls.h"
#include "FilterCtrl_cls.h"
#include "FilterTagHost_ifc.h"
#include "KindTable_cls.h"
#include "LuaMiniCalc_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TimeCtrl_cls.h"
#include "TimelineConf_cls.h"
#include "UndoManager_cls.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

// The groups of an attribute, the colour curve's own group among them.
std::vector<ParamGroup_cls*> GetVPCGroups(Attribute_cls* pAttr) {
    std::vector<ParamGroup_cls*> v(pAttr->mVPCParamGroup.begin(), pAttr->mVPCParamGroup.end());
    if (pAttr->mpCColorCurveGroup)
        v.push_back(pAttr->mpCColorCurveGroup);
    return v;
}

// The time-dependent channels of a group join the row, each with its tag.
void AppendTimeDependParams(ParamGroup_cls* pGroup, const wxString& strGroupTag, TLRow_cls& row) {
    for (Parameter_cls& param : pGroup->mVCParam)
        if (param.IsTimeDepend()) {
            row.mVPCParam.push_back(&param);
            row.mVStrParamTag.push_back(strGroupTag + "::" + param.GetStrName());
        }
}

bool IsShy(const ConfItemBOOL_cls& item) {
    return item.GetBodyBOOL();
}

} // namespace

TLParamLogic_cls::TLParamLogic_cls(TimelineConf_cls* pConf) : TLDragLogic_cls(TL_KIND_PARAM, pConf) {
    mSetOpen.insert(FilterTagHost_ifc::GetStrLabel());
}

// ---- the row table --------------------------------------------------------------------------

void TLParamLogic_cls::UpdateRows() {
    ClearDisplayedItems();
    if (GpCSceneObjCtrl)
        for (SceneObj_cls* p : GpCSceneObjCtrl->mLPCChild)
            AddObjectRows(p, 0);
    AddFilterRows();
}

void TLParamLogic_cls::AddObjectRows(SceneObj_cls* pObj, int depth) {
    const bool bSelected = GpCSceneObjCtrl && GpCSceneObjCtrl->IsSelected(pObj);
    const bool bShown = !IsShy(pObj->mCShy) && (!mpCConf->IsSelectOnly() || bSelected);
    if (bShown) {
        TLRow_cls row;
        row.mKind = TLRow_cls::ROW_OBJECT;
        row.mDepth = depth;
        row.mStrName = pObj->GetStrName();
        row.mStrTag = pObj->GetStrTag();
        row.mpCObj = pObj;
        row.mbSelected = bSelected;
        for (ParamGroup_cls* p : pObj->mVPCParamGroup)
            AppendTimeDependParams(p, pObj->GetStrTag(p), row);
        // The class's own attributes, then the modifiers, then the data processes.
        std::vector<Attribute_cls*> vAttr;
        for (const wxString& strAttr : pObj->GetAstrAttribList())
            if (Attribute_cls* pAttr = pObj->GetPCAttribute(strAttr, 0))
                vAttr.push_back(pAttr);
        for (Attribute_cls* pAttr : vAttr)
            for (ParamGroup_cls* p : GetVPCGroups(pAttr))
                AppendTimeDependParams(p, row.mStrTag + "::" + pAttr->GetStrName() + "::" + p->GetStrName(),
                                       row);
        const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(pObj->mStrClassWord);
        DataSequence_cls* pSeq = pKind && pKind->mFuncDataSequence ? pKind->mFuncDataSequence(pObj) : nullptr;
        row.mbOpenable = !pObj->mVPCParamGroup.empty() || !vAttr.empty() || pSeq;
        row.mbOpen = IsOpen(row.mStrTag);
        const wxString strTag = row.mStrTag;
        mVCRow.push_back(row);
        if (row.mbOpen) {
            if (pSeq && pSeq->GetSnapCount() > 0) {
                TLRow_cls seq;
                seq.mKind = TLRow_cls::ROW_SEQUENCE;
                seq.mDepth = depth + 1;
                seq.mStrName = wxString::Format("Data (%d)", pSeq->GetSnapCount());
                seq.mStrTag = strTag + "::Sequence";
                seq.mpCObj = pObj;
                seq.mpCSeq = pSeq;
                mVCRow.push_back(seq);
            }
            for (ParamGroup_cls* p : pObj->mVPCParamGroup)
                AddGroupRows(p, pObj->GetStrTag(p), pObj, depth + 1);
            for (Attribute_cls* pAttr : vAttr)
                AddAttributeRows(pAttr, strTag + "::" + pAttr->GetStrName(), pObj, depth + 1);
        }
    }
    for (SceneObj_cls* pChild : pObj->mLPCChild)
        AddObjectRows(pChild, bShown ? depth + 1 : depth);
}

void TLParamLogic_cls::AddAttributeRows(Attribute_cls* pAttr, const wxString& strTag, SceneObj_cls* pObj,
                                        int depth) {
    const std::vector<ParamGroup_cls*> vGroup = GetVPCGroups(pAttr);
    if (vGroup.empty() || IsShy(pAttr->mCShy))
        return;
    TLRow_cls row;
    row.mKind = pObj ? TLRow_cls::ROW_ATTRIBUTE : TLRow_cls::ROW_FILTER;
    row.mDepth = depth;
    row.mStrName = pAttr->GetStrName();
    row.mStrTag = strTag;
    row.mpCObj = pObj;
    row.mpCAttr = pAttr;
    row.mbOpenable = true;
    row.mbOpen = IsOpen(strTag);
    row.mbSelected = pObj ? GpCSceneObjCtrl && GpCSceneObjCtrl->IsSelected(pObj)
                          : GpCFilterCtrl && GpCFilterCtrl->IsSelected(pAttr);
    for (ParamGroup_cls* p : vGroup)
        AppendTimeDependParams(p, strTag + "::" + p->GetStrName(), row);
    mVCRow.push_back(row);
    if (!row.mbOpen)
        return;
    for (ParamGroup_cls* p : vGroup)
        AddGroupRows(p, strTag + "::" + p->GetStrName(), pObj, depth + 1);
}

void TLParamLogic_cls::AddGroupRows(ParamGroup_cls* pGroup, const wxString& strTag, SceneObj_cls* pObj,
                                    int depth) {
    if (IsShy(pGroup->mCShy))
        return;
    TLRow_cls row;
    row.mKind = TLRow_cls::ROW_GROUP;
    row.mDepth = depth;
    row.mStrName = pGroup->GetStrName();
    row.mStrTag = strTag;
    row.mpCObj = pObj;
    row.mpCGroup = pGroup;
    row.mbOpenable = true;
    row.mbOpen = IsOpen(strTag);
    row.mbSelected = mVCRow.empty() ? false : mVCRow.back().mbSelected;
    AppendTimeDependParams(pGroup, strTag, row);
    mVCRow.push_back(row);
    if (!row.mbOpen)
        return;
    for (Parameter_cls& param : pGroup->mVCParam) {
        TLRow_cls member;
        member.mKind = TLRow_cls::ROW_PARAM;
        member.mDepth = depth + 1;
        member.mStrName = param.GetStrName();
        member.mStrTag = strTag + "::" + param.GetStrName();
        member.mpCObj = pObj;
        member.mpCGroup = pGroup;
        member.mpCParam = &param;
        member.mbSelected = row.mbSelected;
        member.mVPCParam.push_back(&param);
        member.mVStrParamTag.push_back(member.mStrTag);
        mVCRow.push_back(member);
    }
}

void TLParamLogic_cls::AddFilterRows() {
    if (!GpCFilterCtrl || GpCFilterCtrl->GetListFilter().empty())
        return;
    TLRow_cls head;
    head.mKind = TLRow_cls::ROW_FILTER_HEAD;
    head.mStrName = FilterTagHost_ifc::GetStrLabel();
    head.mStrTag = FilterTagHost_ifc::GetStrLabel();
    head.mbOpenable = true;
    head.mbOpen = IsOpen(head.mStrTag);
    for (FilterBase_cls* p : GpCFilterCtrl->GetListFilter())
        for (ParamGroup_cls* pGroup : GetVPCGroups(p))
            AppendTimeDependParams(
                pGroup, FilterCtrl_cls::GetStrSelf() + p->GetStrName() + "::" + pGroup->GetStrName(), head);
    mVCRow.push_back(head);
    if (!head.mbOpen)
        return;
    for (FilterBase_cls* p : GpCFilterCtrl->GetListFilter())
        AddAttributeRows(p, FilterCtrl_cls::GetStrSelf() + p->GetStrName(), nullptr, 1);
}

int TLParamLogic_cls::GetLineHeight() const {
    return mpCConf->GetLineHeight();
}

int TLParamLogic_cls::GetIndex(int y) const {
    if (y < 0)
        return -1;
    const int row = (y + mScrollY) / GetLineHeight();
    return row < static_cast<int>(mVCRow.size()) ? row : -1;
}

int TLParamLogic_cls::GetYPos(int row) const {
    return row * GetLineHeight() - mScrollY;
}

void TLParamLogic_cls::UpdateGeometry(int width) {
    mWidth = width;
    mLeftMargin = mpCConf->GetSashX() + 8;
    mRightMargin = 10;
    const int frameMax = GpCTimeCtrl ? GpCTimeCtrl->GetFrameMax() : 0;
    if (frameMax > 0)
        SetTLRegion(static_cast<double>(mpCConf->GetAAMin()) / frameMax,
                    static_cast<double>(mpCConf->GetAAMax()) / frameMax);
}

TLRect_cls TLParamLogic_cls::GetButtonRect(int row, int hit) const {
    if (row < 0 || row >= static_cast<int>(mVCRow.size()))
        return TLRect_cls();
    const TLRow_cls& r = mVCRow[row];
    const int y = GetYPos(row);
    const int h = GetLineHeight();
    const int right = mpCConf->GetSashX() - 4;
    const bool bKeyRow = r.mKind == TLRow_cls::ROW_GROUP || r.mKind == TLRow_cls::ROW_PARAM;
    // Slot n counts from the right edge of the name column.
    auto slot = [&](int n) { return TLRect_cls{right - (n + 1) * msButton, y, msButton, h}; };
    switch (hit) {
    case HIT_OPEN:
        if (!r.mbOpenable)
            return TLRect_cls();
        return TLRect_cls{r.mDepth * msIndent + 2, y, msIndent, h};
    case HIT_KEY_TOGGLE:
        return bKeyRow ? slot(0) : TLRect_cls();
    case HIT_KEY_NEXT:
        return r.mVPCParam.empty() && !bKeyRow ? TLRect_cls() : slot(1);
    case HIT_KEY_PREV:
        return r.mVPCParam.empty() && !bKeyRow ? TLRect_cls() : slot(2);
    case HIT_EXPR:
        return r.mKind == TLRow_cls::ROW_GROUP ? slot(3) : TLRect_cls();
    case HIT_LINK:
        return r.mKind == TLRow_cls::ROW_GROUP ? slot(4) : TLRect_cls();
    case HIT_TEXT:
        return r.mKind == TLRow_cls::ROW_GROUP ? slot(5) : TLRect_cls();
    case HIT_TIMEDEPEND:
        return r.mKind == TLRow_cls::ROW_PARAM && mpCConf->IsTimeDepend() ? slot(3) : TLRect_cls();
    case HIT_KILROY:
        return r.mKind == TLRow_cls::ROW_GROUP && mpCConf->IsKilroy() ? slot(6) : TLRect_cls();
    default:
        return TLRect_cls();
    }
}

int TLParamLogic_cls::HitButton(int row, int x, int y) const {
    if (std::abs(x - mpCConf->GetSashX()) <= 3)
        return HIT_SASH;
    for (int hit : {HIT_OPEN, HIT_LINK, HIT_EXPR, HIT_TEXT, HIT_TIMEDEPEND, HIT_KEY_PREV, HIT_KEY_NEXT,
                    HIT_KEY_TOGGLE, HIT_KILROY})
        if (GetButtonRect(row, hit).Contains(x, y))
            return hit;
    return x < mpCConf->GetSashX() ? HIT_NAME : HIT_NONE;
}

std::vector<TLKeyRef_cls> TLParamLogic_cls::HitKeys(int row, int x) const {
    std::vector<TLKeyRef_cls> v;
    if (row < 0 || row >= static_cast<int>(mVCRow.size()) || x < mpCConf->GetSashX())
        return v;
    for (Parameter_cls* p : mVCRow[row].mVPCParam) {
        int best = -1;
        int bestDistance = msKeyHalf + 1;
        for (int i = 0; i < p->GetKeyNum(); ++i) {
            const int distance = std::abs(GetDevCoordFromN(p->mVCKey[i].mX, 0) - x);
            if (distance < bestDistance) {
                best = i;
                bestDistance = distance;
            }
        }
        if (best >= 0)
            v.push_back({p, best});
    }
    return v;
}

// ---- the actions of the rows -----------------------------------------------------------------

void TLParamLogic_cls::ToggleOpen(int row) {
    const wxString& strTag = mVCRow[row].mStrTag;
    if (!mSetOpen.erase(strTag))
        mSetOpen.insert(strTag);
    UpdateRows();
}

void TLParamLogic_cls::ToggleLink(int row) {
    const TLRow_cls& r = mVCRow[row];
    if (r.mpCGroup && GCClassProvider)
        GCClassProvider->SetParamGroupConfCommand(r.mStrTag, "Linked=", !r.mpCGroup->IsLinked());
}

void TLParamLogic_cls::ToggleExpr(int row) {
    const TLRow_cls& r = mVCRow[row];
    if (r.mpCGroup && GCClassProvider)
        GCClassProvider->SetParamGroupConfCommand(r.mStrTag, "UseExpr=", !r.mpCGroup->IsUseExpr());
}

int TLParamLogic_cls::OpenMarkedRows() {
    int count = 0;
    // The open tags are those UpdateRows walks by: the object's and its attribute's, or the
    // filter head's and the filter's.
    auto visit = [&](const std::vector<ParamGroup_cls*>& vGroup, std::initializer_list<wxString> vStrOpen) {
        for (ParamGroup_cls* p : vGroup)
            if (p->IsKilroy()) {
                ++count;
                mSetOpen.insert(vStrOpen);
            }
    };
    if (GpCSceneObjCtrl) {
        std::vector<SceneObj_cls*> vObj;
        GpCSceneObjCtrl->GetVPCList(vObj);
        for (SceneObj_cls* pObj : vObj) {
            const wxString strTag = pObj->GetStrTag();
            visit(pObj->mVPCParamGroup, {strTag});
            for (const wxString& strAttr : pObj->GetAstrAttribList())
                if (Attribute_cls* pAttr = pObj->GetPCAttribute(strAttr, 0))
                    visit(GetVPCGroups(pAttr), {strTag, strTag + "::" + pAttr->GetStrName()});
        }
    }
    if (GpCFilterCtrl)
        for (FilterBase_cls* p : GpCFilterCtrl->GetListFilter())
            visit(GetVPCGroups(p),
                  {FilterTagHost_ifc::GetStrLabel(), FilterCtrl_cls::GetStrSelf() + p->GetStrName()});
    UpdateRows();
    return count;
}

void TLParamLogic_cls::ToggleKilroy(int row) {
    const TLRow_cls& r = mVCRow[row];
    if (r.mpCGroup && GCClassProvider)
        GCClassProvider->SetParamGroupConfCommand(r.mStrTag, "Kilroy=", !r.mpCGroup->IsKilroy());
}

void TLParamLogic_cls::PushText(int row) {
    // The text editor panels take the group as the property pages' "Expr" buttons give it.
    if (row >= 0 && row < static_cast<int>(mVCRow.size()) && mVCRow[row].mpCGroup && GCClassProvider)
        GCClassProvider->ProcAfterMath("SelectExpression", mVCRow[row].mStrTag);
}

void TLParamLogic_cls::ToggleTimeDepend(int row) {
    const TLRow_cls& r = mVCRow[row];
    if (r.mpCParam && GCClassProvider)
        GCClassProvider->SetParameterConfCommand(r.mStrTag, "TimeDepend=", !r.mpCParam->IsTimeDepend(),
                                                 false);
}

void TLParamLogic_cls::MoveKey(int direction, int row) {
    if (!GpCTimeCtrl || row < 0 || row >= static_cast<int>(mVCRow.size()))
        return;
    const double now = GpCTimeCtrl->GetCurrentNT(false);
    const TLRow_cls& r = mVCRow[row];
    std::vector<Parameter_cls*> vParam = r.mVPCParam;
    if (vParam.empty() && r.mpCParam)
        vParam.push_back(r.mpCParam);
    bool bFound = false;
    double target = 0.0;
    for (Parameter_cls* p : vParam)
        for (const KeyFrame_cls& key : p->mVCKey) {
            const bool bAhead = direction > 0 ? key.mX > now + Parameter_cls::msKeyTolerance
                                              : key.mX < now - Parameter_cls::msKeyTolerance;
            if (bAhead && (!bFound || (direction > 0 ? key.mX < target : key.mX > target))) {
                target = key.mX;
                bFound = true;
            }
        }
    if (bFound)
        GpCTimeCtrl->SetCurrentNTCommand(target);
}

void TLParamLogic_cls::ToggleKey(int row, bool bInsertOnly) {
    if (!GpCTimeCtrl || row < 0 || row >= static_cast<int>(mVCRow.size()))
        return;
    const TLRow_cls& r = mVCRow[row];
    const double now = GpCTimeCtrl->GetCurrentNT(false);
    int type = -1;
    double ease = 1.0;
    GpCTimeCtrl->GetDefaultKeyTypeAndEase(&type, &ease);
    if (r.mKind == TLRow_cls::ROW_PARAM && r.mpCParam) {
        if (r.mpCParam->IsTimeDepend() && r.mpCParam->IsKeyExist(now)) {
            if (!bInsertOnly)
                r.mpCParam->DeleteKeyCommand(now, r.mStrTag, false);
        } else
            r.mpCParam->InsertKeyCommand(now, r.mStrTag, type, ease, false);
    } else if (r.mKind == TLRow_cls::ROW_GROUP && r.mpCGroup) {
        bool bKey = false;
        for (const Parameter_cls& p : r.mpCGroup->mVCParam)
            bKey = bKey || (p.IsTimeDepend() && p.IsKeyExist(now));
        if (bKey) {
            if (!bInsertOnly)
                r.mpCGroup->DeleteKeyCommand(now, r.mStrTag);
        } else
            r.mpCGroup->InsertKeyCommand(now, r.mStrTag, type, ease);
    }
}

bool TLParamLogic_cls::RenameRow(int row, const wxString& strText) {
    if (row < 0 || row >= static_cast<int>(mVCRow.size()) || !GpCSceneObjCtrl)
        return false;
    const TLRow_cls& r = mVCRow[row];
    const wxString strTo = wxString(strText).Trim(true).Trim(false);
    if (r.mKind != TLRow_cls::ROW_OBJECT || !r.mpCObj || strTo.empty() || strTo == r.mStrName)
        return false;
    // The tree may give another name when this one is taken. The open state follows the object,
    // and stays under the old tag too, for an undo of the rename.
    const bool bOpen = IsOpen(r.mStrTag);
    const wxString strNew = GpCSceneObjCtrl->RenameCommand(r.mStrName, strTo);
    if (strNew.empty())
        return false;
    if (bOpen)
        mSetOpen.insert(r.mpCObj->GetStrTag());
    return true;
}

bool TLParamLogic_cls::ProcessInput(int row, const wxString& strText) {
    if (row < 0 || row >= static_cast<int>(mVCRow.size()) || !mVCRow[row].mpCParam)
        return false;
    double value = 0.0;
    if (!ParseNumber(strText, &value))
        return false;
    mVCRow[row].mpCParam->SetValueCommand(value, mVCRow[row].mStrTag, -1, 1.0);
    return true;
}

bool TLParamLogic_cls::ParseNumber(const wxString& strText, double* pValue) {
    const wxString strTrimmed = wxString(strText).Trim(true).Trim(false);
    if (LuaMiniCalc_cls::IsStringExpression(strTrimmed)) {
        *pValue = LuaMiniCalc_cls::GetValue(strTrimmed);
        return true;
    }
    return strTrimmed.ToCDouble(pValue);
}

void TLParamLogic_cls::SelectRow(int row, bool bAdditive, bool bToggle) {
    const TLRow_cls& r = mVCRow[row];
    if (r.mpCObj && GpCSceneObjCtrl)
        GpCSceneObjCtrl->Select(r.mpCObj->GetStrName(), bAdditive, true, bToggle);
    else if (r.mpCAttr && GpCFilterCtrl) {
        GpCFilterCtrl->Select(r.mpCAttr->GetStrName(), bAdditive, bToggle);
        if (GCClassProvider)
            GCClassProvider->UpdatePanels("TIMELINE::PROPERTY_SCENE");
    }
}

// ---- the mouse on the rows -------------------------------------------------------------------

bool TLParamLogic_cls::SetExtrapolateOfSelectedCommand(bool bExtrapolate) {
    return SetItemOfSelectedCommand("Extrapolate=", bExtrapolate);
}

std::vector<wxString> TLParamLogic_cls::GetVStrAllParamTags() {
    std::vector<wxString> vStrTag;
    if (GpCSceneObjCtrl) {
        std::vector<SceneObj_cls*> vObj;
        GpCSceneObjCtrl->GetVPCList(vObj);
        for (SceneObj_cls* p : vObj)
            p->GetVstrParamTag(vStrTag);
    }
    if (FilterTagHost_ifc* pHost = FilterTagHost_ifc::GetPCInstalled())
        pHost->GetVstrParamTag(vStrTag);
    return vStrTag;
}

bool TLParamLogic_cls::SetEaseOfSelectedCommand(double ease) {
    if (!GpCUndo || !GCClassProvider)
        return false;
    const int before = GpCUndo->GetCurrent();
    GpCUndo->OpenBlock("SetEaseOfSelected");
    for (const wxString& strTag : GetVStrAllParamTags())
        if (Parameter_cls* p = GCClassProvider->GetPCParameter(strTag))
            for (int i = 0; i < p->GetKeyNum(); ++i)
                if (p->mVCKey[i].mbSelected)
                    p->SetKeyEaseFactorCommand(i, ease, strTag);
    GpCUndo->CloseBlock("SetEaseOfSelected");
    return GpCUndo->GetCurrent() != before;
}

bool TLParamLogic_cls::ProcessEaseInput(const wxString& strText) {
    double ease = 0.0;
    return ParseNumber(strText, &ease) && SetEaseOfSelectedCommand(ease);
}

double TLParamLogic_cls::GetEaseOfFirstSelected(double fallback) {
    if (GCClassProvider)
        for (const wxString& strTag : GetVStrAllParamTags())
            if (const Parameter_cls* p = GCClassProvider->GetPCParameter(strTag))
                for (const KeyFrame_cls& key : p->mVCKey)
                    if (key.mbSelected)
                        return key.mEaseFactor;
    return fallback;
}

bool TLParamLogic_cls::SetItemOfSelectedCommand(const wxString& strKey, bool bValue) {
    if (!GpCSceneObjCtrl || !GpCUndo || !GCClassProvider)
        return false;
    const int before = GpCUndo->GetCurrent();
    GpCUndo->OpenBlock("SetItemOfSelected");
    for (const wxString& strTag : GetVStrAllParamTags()) {
        Parameter_cls* p = GCClassProvider->GetPCParameter(strTag);
        ConfItem_cls* pItem = p ? p->GetPCItem(strKey) : nullptr;
        if (pItem && p->IsSelectedKeyExist() && pItem->GetBodyBOOL() != bValue)
            GCClassProvider->SetParameterConfCommand(strTag, strKey, bValue, false);
    }
    GpCUndo->CloseBlock("SetItemOfSelected");
    return GpCUndo->GetCurrent() != before;
}

bool TLParamLogic_cls::ToggleShyOfSelectionCommand() {
    if (!GpCSceneObjCtrl || !GpCUndo)
        return false;
    std::vector<SceneObj_cls*> vObj;
    GpCSceneObjCtrl->GetVPCList(vObj);
    std::vector<SceneObj_cls*> vSelected;
    bool bAllShy = true;
    for (SceneObj_cls* p : vObj)
        if (GpCSceneObjCtrl->IsSelected(p)) {
            vSelected.push_back(p);
            bAllShy = bAllShy && IsShy(p->mCShy);
        }
    if (vSelected.empty())
        return false;
    GpCUndo->OpenBlock("ShySelected");
    for (SceneObj_cls* p : vSelected)
        if (IsShy(p->mCShy) == bAllShy)
            p->mCShy.PushCommandPair(bAllShy ? "0" : "1");
    GpCUndo->CloseBlock("ShySelected");
    return true;
}

bool TLParamLogic_cls::DeleteSelectedKeysCommand() {
    if (!GpCUndo)
        return false;
    const int before = GpCUndo->GetCurrent();
    GpCUndo->OpenBlock("DeleteSelectedKeys");
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->DeleteSelectedTLKeyCommand();
    if (FilterTagHost_ifc* pHost = FilterTagHost_ifc::GetPCInstalled())
        pHost->DeleteSelectedTLKeyCommand();
    GpCUndo->CloseBlock("DeleteSelectedKeys");
    return GpCUndo->GetCurrent() != before;
}

void TLParamLogic_cls::DeselectAllKeys() {
    if (GCClassProvider)
        GCClassProvider->DeselectKeyFrame(wxString());
}

void TLParamLogic_cls::PressRows(int x, int y, bool bAdditive, bool bToggle) {
    mPressX = mDragX = x;
    mPressY = mDragY = y;
    mbKeyMoveArmed = mbRegionArmed = mbSashDrag = false;
    if (std::abs(x - mpCConf->GetSashX()) <= 3) {
        mbSashDrag = true;
        return;
    }
    const int row = GetIndex(y);
    if (row < 0) {
        mbRegionArmed = x >= mpCConf->GetSashX();
        return;
    }
    switch (HitButton(row, x, y)) {
    case HIT_OPEN:
        ToggleOpen(row);
        return;
    case HIT_LINK:
        ToggleLink(row);
        return;
    case HIT_EXPR:
        ToggleExpr(row);
        return;
    case HIT_TEXT:
        PushText(row);
        return;
    case HIT_TIMEDEPEND:
        ToggleTimeDepend(row);
        return;
    case HIT_KEY_PREV:
        MoveKey(-1, row);
        return;
    case HIT_KEY_NEXT:
        MoveKey(1, row);
        return;
    case HIT_KEY_TOGGLE:
        ToggleKey(row);
        return;
    case HIT_KILROY:
        ToggleKilroy(row);
        return;
    case HIT_NAME:
        SelectRow(row, bAdditive, bToggle);
        return;
    default:
        break;
    }
    const std::vector<TLKeyRef_cls> vHit = HitKeys(row, x);
    if (vHit.empty()) {
        mbRegionArmed = true;
        return;
    }
    // A press on a key that is already selected keeps the selection, so the drag moves it all.
    bool bHitSelected = false;
    for (const TLKeyRef_cls& k : vHit)
        bHitSelected = bHitSelected || k.mpCParam->mVCKey[k.mIndex].mbSelected;
    if (!bAdditive && !bToggle && !bHitSelected)
        DeselectAllKeys();
    bool bAnySelected = false;
    for (const TLKeyRef_cls& k : vHit) {
        const bool bSelect = bToggle ? !k.mpCParam->mVCKey[k.mIndex].mbSelected : true;
        k.mpCParam->SelectKeyByIndex(k.mIndex, bSelect, true, 1e-9);
        bAnySelected = bAnySelected || bSelect;
    }
    // The key commands reach the selected objects: the key's object joins the selection.
    SceneObj_cls* pObj = mVCRow[row].mpCObj;
    if (pObj && GpCSceneObjCtrl && !GpCSceneObjCtrl->IsSelected(pObj))
        GpCSceneObjCtrl->Select(pObj->GetStrName(), true, true, false);
    mbKeyMoveArmed = bAnySelected;
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("TIMELINE::GRAPH");
}

wxString TLParamLogic_cls::GetStrParamTag(int row, const Parameter_cls* pParam) const {
    const TLRow_cls& r = mVCRow[row];
    for (size_t i = 0; i < r.mVPCParam.size() && i < r.mVStrParamTag.size(); ++i)
        if (r.mVPCParam[i] == pParam)
            return r.mVStrParamTag[i];
    return wxString();
}

bool TLParamLogic_cls::ChangeKeyTypeAt(int x, int y, bool bShift, bool bCtrl) {
    const int row = GetIndex(y);
    if (row < 0 || x < mpCConf->GetSashX() || !GCClassProvider || !GpCUndo)
        return false;
    const std::vector<TLKeyRef_cls> vHit = HitKeys(row, x);
    if (vHit.empty())
        return false;
    bool bChanged = false;
    // A linked group changes all its members' keys at once: it is asked once, or the next
    // member would toggle its keys back.
    std::set<const ParamGroup_cls*> setLinkedDone;
    GpCUndo->OpenBlock("ChangeKeyTypeByModKey");
    for (const TLKeyRef_cls& k : vHit) {
        const ParamGroup_cls* pGroup = k.mpCParam->mpCParamGroup;
        if (pGroup && pGroup->IsLinked() && !setLinkedDone.insert(pGroup).second)
            continue;
        const wxString strTag = GetStrParamTag(row, k.mpCParam);
        bChanged = GCClassProvider->ChangeKeyTypeByModKey(strTag, k.mIndex, true, bShift, bCtrl) || bChanged;
    }
    GpCUndo->CloseBlock("ChangeKeyTypeByModKey");
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("TIMELINE::GRAPH");
    return bChanged;
}

bool TLParamLogic_cls::DragRows(int x, int y) {
    mDragX = x;
    mDragY = y;
    if (mbSashDrag) {
        const int sash = std::clamp(x, msSashMin, std::max(mWidth - 60, msSashMin));
        if (sash == mpCConf->GetSashX())
            return false;
        mpCConf->mCSashX.SetBodyFromData(static_cast<long long>(sash));
        return true;
    }
    return mbKeyMoveArmed || mbRegionArmed;
}

double TLParamLogic_cls::GetDraggedKeyDelta() const {
    if (!mbKeyMoveArmed || !GpCTimeCtrl)
        return 0.0;
    return GpCTimeCtrl->GetQuantized(GetNFromDevCoord(mDragX, 0) - GetNFromDevCoord(mPressX, 0), 0);
}

void TLParamLogic_cls::ReleaseRows(int x, int y, bool bAdditive) {
    if (mbKeyMoveArmed && x != mPressX && GCClassProvider)
        GCClassProvider->MoveSelectedTLKeyCommand(GetNFromDevCoord(x, 0) - GetNFromDevCoord(mPressX, 0), 0.0);
    else if (mbRegionArmed) {
        const int last = static_cast<int>(mVCRow.size()) - 1;
        auto rowAt = [&](int yy) {
            const int r = GetIndex(yy);
            return r >= 0 ? r : (yy < 0 ? 0 : last);
        };
        SelectItemByRegion(rowAt(mPressY), rowAt(y), mPressX, x, bAdditive);
    }
    mbKeyMoveArmed = mbRegionArmed = mbSashDrag = false;
}

void TLParamLogic_cls::SelectItemByRegion(int rowA, int rowB, int xA, int xB, bool bAdditive) {
    if (!bAdditive)
        DeselectAllKeys();
    if (rowA > rowB)
        std::swap(rowA, rowB);
    if (xA > xB)
        std::swap(xA, xB);
    rowA = std::max(rowA, 0);
    rowB = std::min(rowB, static_cast<int>(mVCRow.size()) - 1);
    for (int row = rowA; row <= rowB; ++row) {
        bool bAny = false;
        for (Parameter_cls* p : mVCRow[row].mVPCParam)
            for (int i = 0; i < p->GetKeyNum(); ++i) {
                const int px = GetDevCoordFromN(p->mVCKey[i].mX, 0);
                if (px >= xA - msKeyHalf && px <= xB + msKeyHalf) {
                    p->mVCKey[i].mbSelected = true;
                    bAny = true;
                }
            }
        SceneObj_cls* pObj = mVCRow[row].mpCObj;
        if (bAny && pObj && GpCSceneObjCtrl && !GpCSceneObjCtrl->IsSelected(pObj))
            GpCSceneObjCtrl->Select(pObj->GetStrName(), true, true, false);
    }
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("TIMELINE::GRAPH");
}

int TLParamLogic_cls::GetSequenceIndex(const TLRow_cls& row, int frame) {
    if (!row.mpCSeq || !GpCTimeCtrl)
        return -1;
    const int count = row.mpCSeq->GetSnapCount();
    if (count < 1)
        return -1;
    auto* pViewer = dynamic_cast<DataViewerBase_cls*>(row.mpCObj);
    int dataFrame = frame - (pViewer ? static_cast<int>(pViewer->mCSeqOffset.GetBodyINT()) : 0);
    DataSequence_cls::ModFrame(dataFrame, count, false);
    const int frameMax = GpCTimeCtrl->GetFrameMax();
    const double nt = frameMax > 0 ? static_cast<double>(frame) / frameMax : 0.0;
    const int index =
        row.mpCSeq->GetRemappedIndex(dataFrame, pViewer ? pViewer->GetPCSequenceRemap() : nullptr, nt, false);
    return std::clamp(index, 0, count - 1);
}

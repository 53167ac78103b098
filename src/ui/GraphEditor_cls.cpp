#include "GraphEditor_cls.h"

#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "GraphCurve_cls.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "SplittableWindow_cls.h"
#include "TimeCtrl_cls.h"

#include <algorithm>

namespace {

// The colour of a member by its place in the group: x red, y green, z blue, the fourth grey.
std::array<unsigned char, 3> MemberColour(size_t index, size_t group) {
    static const std::array<unsigned char, 3> kColour[4] = {
        {{236, 88, 88}}, {{110, 210, 96}}, {{96, 150, 240}}, {{210, 210, 210}}};
    std::array<unsigned char, 3> c = kColour[index % 4];
    // Groups after the first are lighter, so two groups of one object stay apart.
    const int lift = static_cast<int>(group % 3) * 18;
    for (unsigned char& v : c)
        v = static_cast<unsigned char>(std::min(255, v + lift));
    return c;
}

void AddGroup(std::vector<GraphChannel_cls>& vChannel, ParamGroup_cls* pGroup, const wxString& strGroupTag,
              const wxString& strLabel, bool bAll, size_t groupIndex) {
    for (size_t m = 0; m < pGroup->mVCParam.size(); ++m) {
        Parameter_cls& param = pGroup->mVCParam[m];
        if (!bAll && !param.IsTimeDepend())
            continue;
        GraphChannel_cls channel;
        channel.mStrTag = strGroupTag + "::" + param.GetStrName();
        channel.mpCParam = &param;
        channel.mStrLabel = strLabel + " " + param.GetStrName();
        channel.mColor = MemberColour(m, groupIndex);
        vChannel.push_back(channel);
    }
}

} // namespace

GraphEditor_cls::GraphEditor_cls(SplittableWindow_cls* pOwner)
    : EditorBase_cls(pOwner, _PANEL_GRAPH, false, "GraphEditor") {
    AddRangeItems(-1.0, 1.0, 0.0, 1.0);
    ConstructBase(new GraphCurve_cls(this, mCEdit, "GraphCurve"));
    RebuildChannels();
}

wxString GraphEditor_cls::GetStrSelection() const {
    wxString str;
    if (GpCSceneObjCtrl)
        for (SceneObj_cls* p : GpCSceneObjCtrl->mVPCSelected)
            str << p->GetStrName() << "\n";
    return str;
}

void GraphEditor_cls::RebuildChannels() {
    std::vector<GraphChannel_cls> vChannel;
    if (!mStrPinnedGroup.empty() && GetStrSelection() != mStrPinnedSelection)
        mStrPinnedGroup.clear(); // the outliner chose anew
    if (!mStrPinnedGroup.empty() && GCClassProvider) {
        ParamGroup_cls* pGroup = GCClassProvider->GetPCParamGroup(mStrPinnedGroup);
        const wxString strTag = GCClassProvider->GetStrCommandParamGroup(mStrPinnedGroup);
        if (pGroup && !strTag.empty())
            AddGroup(vChannel, pGroup, strTag, pGroup->GetStrName(), true, 0);
        else
            mStrPinnedGroup.clear();
    }
    if (mStrPinnedGroup.empty() && GpCSceneObjCtrl) {
        for (SceneObj_cls* pObj : GpCSceneObjCtrl->mVPCSelected) {
            size_t groupIndex = 0;
            for (ParamGroup_cls* pGroup : pObj->mVPCParamGroup)
                AddGroup(vChannel, pGroup, pObj->GetStrTag(pGroup),
                         pObj->GetStrName() + " " + pGroup->GetStrName(), false, groupIndex++);
            for (const wxString& strAttr : pObj->GetAstrAttribList()) {
                Attribute_cls* pAttr = pObj->GetPCAttribute(strAttr, 0);
                if (!pAttr)
                    continue;
                for (ParamGroup_cls* pGroup : pAttr->mVPCParamGroup) {
                    if (pGroup->mbColorCurve)
                        continue; // keyed along the curve, not in time
                    AddGroup(
                        vChannel, pGroup, pObj->GetStrTag() + "::" + strAttr + "::" + pGroup->GetStrName(),
                        pObj->GetStrName() + " " + strAttr + " " + pGroup->GetStrName(), false, groupIndex++);
                }
            }
        }
    }
    if (mpCGraph && GpCTimeCtrl)
        mpCGraph->mXLabelScale = GpCTimeCtrl->GetFrameMax();
    SetChannelsAndFrame(std::move(vChannel));
}

void GraphEditor_cls::ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) {
    if (strWhat == "SelectParamGroup") {
        mStrPinnedGroup = strArg;
        mStrPinnedSelection = GetStrSelection();
    } else if (strWhat == "DeleteObject" || strWhat == "RenameObject") {
        mStrPinnedGroup.clear();
    }
    RebuildChannels();
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

void GraphEditor_cls::OnGraphChanged(bool bCommand) {
    UpdateKeyTypeChoice();
    // A live drag changes keys natively: the pictures that use them follow it.
    if (!bCommand && mCEdit.GetDragMode() == GraphKeyEdit_cls::DRAG_KEYS && GCClassProvider)
        GCClassProvider->UpdatePanels("VIEW3D::TIMELINE");
}

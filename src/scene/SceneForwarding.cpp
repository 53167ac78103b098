// The tag-addressed members of the application core. They live here because only this layer
// knows scene objects and parameter groups; tags of the scene filters ("Scene Filter::..." or the
// chain's own head) go to the filter chain that the filter layer installs.
#include "FilterTagHost_ifc.h"
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "Parser_cls.h"
#include "SceneObjCtrl_cls.h"
#include "UndoManager_cls.h"

namespace {

// The chain when the tag is one of its tags, else null.
FilterTagHost_ifc* GetPCFilterHost(const wxString& strTag) {
    FilterTagHost_ifc* p = FilterTagHost_ifc::GetPCInstalled();
    return p && p->IsFilterTag(strTag) ? p : nullptr;
}

} // namespace

ParamGroup_cls* Main_cls::GetPCParamGroup(const wxString& strTag) {
    if (FilterTagHost_ifc* pHost = GetPCFilterHost(strTag))
        return pHost->GetPCParamGroup(strTag);
    return GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCParamGroup(strTag) : nullptr;
}

Parameter_cls* Main_cls::GetPCParameter(const wxString& strTag) {
    if (FilterTagHost_ifc* pHost = GetPCFilterHost(strTag))
        return pHost->GetPCParameter(strTag);
    return GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCParameter(strTag) : nullptr;
}

wxString Main_cls::GetStrCommandParamGroup(const wxString& strTag) {
    if (FilterTagHost_ifc* pHost = GetPCFilterHost(strTag))
        return pHost->GetStrCommandParamGroup(strTag);
    ParamGroup_cls* pGroup = GetPCParamGroup(strTag);
    if (!pGroup || !GpCSceneObjCtrl)
        return wxString();
    return GpCSceneObjCtrl->GetStrCommandParamGroup(strTag, pGroup);
}

void Main_cls::SetParameterConfCommand(const wxString& strTag, const wxString& strKey, bool bValue,
                                       bool bAll) {
    if (FilterTagHost_ifc* pHost = GetPCFilterHost(strTag)) {
        wxString strGroupTag = strTag;
        const wxString strMember = Parser_cls::PopLastItemFromStrLine(strGroupTag, "::");
        SceneObjCtrl_cls::PushParameterConf(pHost->GetPCParamGroup(strGroupTag),
                                            pHost->GetStrCommandParamGroup(strGroupTag), strMember, strKey,
                                            bValue, bAll);
        return;
    }
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SetParameterConfCommand(strTag, strKey, bValue, bAll);
}

void Main_cls::SetParamGroupConfCommand(const wxString& strTag, const wxString& strKey, bool bValue) {
    // A switch of a filter's group ("Linked=", "UseExpr=", "Shy="): the pair on the chain's tag.
    if (FilterTagHost_ifc* pHost = GetPCFilterHost(strTag)) {
        ParamGroup_cls* pGroup = pHost->GetPCParamGroup(strTag);
        ConfItem_cls* pItem = pGroup ? pGroup->GetPCItem(strKey) : nullptr;
        const wxString strCanonical = pHost->GetStrCommandParamGroup(strTag);
        if (!pItem || strCanonical.empty() || pItem->GetBodyBOOL() == bValue)
            return;
        PushCommandPairAndRedo(strCanonical + "::" + strKey + (pItem->GetBodyBOOL() ? "1" : "0"),
                               strCanonical + "::" + strKey + (bValue ? "1" : "0"));
        return;
    }
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SetParamGroupConfCommand(strTag, strKey, wxString::Format("%d", bValue ? 1 : 0));
}

void Main_cls::SetParamGroupConfCommand(const wxString& strTag, const wxString& strKey,
                                        const wxString& strValue) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SetParamGroupConfCommand(strTag, strKey, strValue);
}

void Main_cls::DeselectKeyFrame(const wxString& strTag) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->DeselectKeyFrame(strTag);
    if (FilterTagHost_ifc* pHost = FilterTagHost_ifc::GetPCInstalled())
        pHost->DeselectKeyFrame();
}

void Main_cls::SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd, double tolerance) {
    if (FilterTagHost_ifc* pHost = GetPCFilterHost(strTag))
        pHost->SelectKeyFrame(strTag, index, bSelect, bAdd, tolerance);
    else if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SelectKeyFrame(strTag, index, bSelect, bAdd, tolerance);
}

bool Main_cls::ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC) {
    if (FilterTagHost_ifc* pHost = GetPCFilterHost(strTag))
        return pHost->ChangeKeyTypeByModKey(strTag, index, bA, bB, bC);
    return GpCSceneObjCtrl && GpCSceneObjCtrl->ChangeKeyTypeByModKey(strTag, index, bA, bB, bC);
}

// The selected keys of the scene and of the filters change in one undo step.
void Main_cls::SetSelectedTLKeyTypeCommand(int type, double ease) {
    if (GpCUndo)
        GpCUndo->OpenBlock("SetSelectedKeysType");
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SetSelectedTLKeyTypeCommand(type, ease);
    if (FilterTagHost_ifc* pHost = FilterTagHost_ifc::GetPCInstalled())
        pHost->SetSelectedTLKeyTypeCommand(type, ease);
    if (GpCUndo)
        GpCUndo->CloseBlock("SetSelectedKeysType");
}

void Main_cls::MoveSelectedTLKeyCommand(double dx, double dy) {
    if (GpCUndo)
        GpCUndo->OpenBlock("MoveSelectedKeys");
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->MoveSelectedTLKeyCommand(dx, dy);
    if (FilterTagHost_ifc* pHost = FilterTagHost_ifc::GetPCInstalled())
        pHost->MoveSelectedTLKeyCommand(dx, dy);
    if (GpCUndo)
        GpCUndo->CloseBlock("MoveSelectedKeys");
}

void Main_cls::RescaleParameters(double factor) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->RescaleParametersRoot(factor);
}

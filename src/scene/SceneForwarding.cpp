// The tag-addressed members of the application core. They live here because only this layer
// knows scene objects and parameter groups; the filter chain joins them when it exists.
#include "Main_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"

ParamGroup_cls* Main_cls::GetPCParamGroup(const wxString& strTag) {
    return GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCParamGroup(strTag) : nullptr;
}

Parameter_cls* Main_cls::GetPCParameter(const wxString& strTag) {
    return GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCParameter(strTag) : nullptr;
}

wxString Main_cls::GetStrCommandParamGroup(const wxString& strTag) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strTag);
    if (!pGroup || !GpCSceneObjCtrl)
        return wxString();
    return GpCSceneObjCtrl->GetStrCommandParamGroup(strTag, pGroup);
}

void Main_cls::SetParameterConfCommand(const wxString& strTag, const wxString& strKey, bool bValue,
                                       bool bAll) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SetParameterConfCommand(strTag, strKey, bValue, bAll);
}

void Main_cls::SetParamGroupConfCommand(const wxString& strTag, const wxString& strKey, bool bValue) {
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
}

void Main_cls::SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd, double tolerance) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SelectKeyFrame(strTag, index, bSelect, bAdd, tolerance);
}

bool Main_cls::ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC) {
    return GpCSceneObjCtrl && GpCSceneObjCtrl->ChangeKeyTypeByModKey(strTag, index, bA, bB, bC);
}

void Main_cls::SetSelectedTLKeyTypeCommand(int type, double ease) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->SetSelectedTLKeyTypeCommand(type, ease);
}

void Main_cls::MoveSelectedTLKeyCommand(double dx, double dy) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->MoveSelectedTLKeyCommand(dx, dy);
}

void Main_cls::RescaleParameters(double factor) {
    if (GpCSceneObjCtrl)
        GpCSceneObjCtrl->RescaleParametersRoot(factor);
}

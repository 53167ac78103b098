#include "LuaInterpreter_cls.h"

#include "Attribute_cls.h"
#include "ParamGroup_cls.h"
#include "SceneClassWord_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <cmath>

namespace {

void PushStr(lua_State* pL, const wxString& str) {
    const wxScopedCharBuffer buf = str.utf8_str();
    lua_pushstring(pL, buf.data());
}

int PushResult(lua_State* pL, bool bOk) {
    lua_pushinteger(pL, bOk ? 1 : 0);
    return 1;
}

int PushStrings(lua_State* pL, const wxArrayString& astr) {
    if (astr.IsEmpty()) {
        lua_pushstring(pL, "None");
        return 1;
    }
    if (!lua_checkstack(pL, static_cast<int>(astr.GetCount())))
        return 0;
    for (const wxString& str : astr)
        PushStr(pL, str);
    return static_cast<int>(astr.GetCount());
}

void OpenBlock(const wxString& strName) {
    if (GpCUndo)
        GpCUndo->OpenBlock(strName);
}

void CloseBlock(const wxString& strName) {
    if (GpCUndo)
        GpCUndo->CloseBlock(strName);
}

SceneObjCtrl_cls* Ctrl() {
    return GpCSceneObjCtrl;
}

// Sets a bool item of an object through the undo road; false when the item is missing.
bool SetItemBool(ConfItem_cls* pItem, bool bValue) {
    if (!pItem)
        return false;
    if (pItem->GetBodyBOOL() != bValue)
        pItem->PushCommandPair(bValue ? "1" : "0");
    return true;
}

int PushItemBool(lua_State* pL, ConfItem_cls* pItem) {
    if (!pItem)
        return 0;
    lua_pushinteger(pL, pItem->GetBodyBOOL() ? 1 : 0);
    return 1;
}

// The group of arguments 1 (object) and 2 (tag), with its canonical tag.
ParamGroup_cls* GetGroupArgs(lua_State* pL, wxString* pStrTag) {
    SceneObj_cls* pObj = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    if (!pObj)
        return nullptr;
    const wxString strTag = LuaInterpreter_cls::GetStrArg(pL, 2);
    ParamGroup_cls* pGroup = LuaInterpreter_cls::GetPCParamGroup(pObj, strTag);
    if (pGroup && pStrTag)
        *pStrTag = pObj->GetStrTag() + "::" + strTag;
    return pGroup;
}

// ---- Ops ------------------------------------------------------------------------------------

int l_Ops_AddPrimitive(lua_State* pL) {
    const wxString strType = LuaInterpreter_cls::GetStrArg(pL, 1);
    const wxString strName = LuaInterpreter_cls::GetStrArg(pL, 2);
    lua_settop(pL, 0);
    const int kind = SceneClassWord_cls::GetPrimitiveTypeFromStr(strType);
    if (kind < 0 || !Ctrl())
        return 0;
    OpenBlock("AddPrimitive");
    const wxString strMade = Ctrl()->AppendPrimitiveCommand(kind, strName);
    CloseBlock("AddPrimitive");
    if (strMade.empty())
        return 0;
    PushStr(pL, strMade);
    return 1;
}

int l_Ops_AddLight(lua_State* pL) {
    const wxString strType = LuaInterpreter_cls::GetStrArg(pL, 1);
    const wxString strName = LuaInterpreter_cls::GetStrArg(pL, 2);
    lua_settop(pL, 0);
    if (!Ctrl())
        return 0;
    int kind = SceneClassWord_cls::GetLightTypeFromStr(strType);
    if (kind < 0)
        kind = SceneClassWord_cls::GetLightTypeFromStr("ParallelLight");
    OpenBlock("AddLightSource");
    const wxString strMade = Ctrl()->AppendLightCommand(kind, strName);
    CloseBlock("AddLightSource");
    if (strMade.empty())
        return 0;
    PushStr(pL, strMade);
    return 1;
}

int l_Ops_AddEmpty(lua_State* pL) {
    const wxString strName = LuaInterpreter_cls::GetStrArg(pL, 1);
    lua_settop(pL, 0);
    if (!Ctrl())
        return 0;
    OpenBlock("AddEmpty");
    const wxString strMade =
        Ctrl()->AppendPrimitiveCommand(SceneClassWord_cls::GetPrimitiveTypeFromStr("Empty"), strName);
    CloseBlock("AddEmpty");
    if (strMade.empty())
        return 0;
    PushStr(pL, strMade);
    return 1;
}

int l_Ops_AddCamera(lua_State* pL) {
    return LuaInterpreter_cls::AddSceneObjBase(pL, "Camera");
}
int l_Ops_AddMesh(lua_State* pL) {
    return LuaInterpreter_cls::AddSceneObjBase(pL, "MeshObj");
}
int l_Ops_AddWorld(lua_State* pL) {
    return LuaInterpreter_cls::AddSceneObjBase(pL, "World");
}
int l_Ops_AddVolumeBox(lua_State* pL) {
    return LuaInterpreter_cls::AddSceneObjBase(pL, "VolumeBox");
}
int l_Ops_AddParticle(lua_State* pL) {
    return LuaInterpreter_cls::AddSceneObjBase(pL, "Particle");
}
int l_Ops_AddStreamline(lua_State* pL) {
    return LuaInterpreter_cls::AddSceneObjBase(pL, "Streamline");
}
int l_Ops_AddHeightField(lua_State* pL) {
    return LuaInterpreter_cls::AddSceneObjBase(pL, "HeightField");
}

int l_Ops_DeleteObject(lua_State* pL) {
    SceneObj_cls* pObj = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    if (!pObj)
        return PushResult(pL, false);
    Ctrl()->DeleteItemsCommand(std::vector<SceneObj_cls*>{pObj});
    return PushResult(pL, true);
}

int l_Ops_DeselectObject(lua_State* pL) {
    SceneObj_cls* pObj = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    if (!pObj)
        return PushResult(pL, false);
    Ctrl()->Deselect(pObj->GetStrName(), true);
    return PushResult(pL, true);
}

int l_Ops_SelectObject(lua_State* pL) {
    SceneObj_cls* pObj = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    if (!pObj)
        return PushResult(pL, false);
    Ctrl()->Select(pObj->GetStrName(), LuaInterpreter_cls::GetBool(LuaInterpreter_cls::GetStrArg(pL, 2)),
                   true, false);
    return PushResult(pL, true);
}

// ---- Ops.ActiveObj --------------------------------------------------------------------------

SceneObj_cls* Active() {
    return Ctrl() ? Ctrl()->GetPCActiveObject() : nullptr;
}

int l_Active_Delete(lua_State* pL) {
    SceneObj_cls* p = Active();
    if (!p)
        return PushResult(pL, false);
    Ctrl()->DeleteItemsCommand(std::vector<SceneObj_cls*>{p});
    return PushResult(pL, true);
}

int l_Active_Rename(lua_State* pL) {
    SceneObj_cls* p = Active();
    if (!p)
        return PushResult(pL, false);
    return PushResult(pL,
                      !Ctrl()->RenameCommand(p->GetStrName(), LuaInterpreter_cls::GetStrArg(pL, 1)).empty());
}

int l_Active_GetVisibility(lua_State* pL) {
    SceneObj_cls* p = Active();
    return p ? PushItemBool(pL, &p->mCVisible) : 0;
}

int l_Active_SetVisibility(lua_State* pL) {
    SceneObj_cls* p = Active();
    return PushResult(pL, p && SetItemBool(&p->mCVisible, LuaInterpreter_cls::GetBool(
                                                              LuaInterpreter_cls::GetStrArg(pL, 1))));
}

int l_Active_GetValidity(lua_State* pL) {
    SceneObj_cls* p = Active();
    return p ? PushItemBool(pL, p->GetPCValidItem()) : 0;
}

int l_Active_SetValidity(lua_State* pL) {
    // For a light the item is the light's own switch; every kind of this layer has one.
    SceneObj_cls* p = Active();
    return PushResult(pL, p && SetItemBool(p->GetPCValidItem(), LuaInterpreter_cls::GetBool(
                                                                    LuaInterpreter_cls::GetStrArg(pL, 1))));
}

int l_Active_GetShy(lua_State* pL) {
    SceneObj_cls* p = Active();
    return p ? PushItemBool(pL, &p->mCShy) : 0;
}

int l_Active_SetShy(lua_State* pL) {
    SceneObj_cls* p = Active();
    return PushResult(
        pL, p && SetItemBool(&p->mCShy, LuaInterpreter_cls::GetBool(LuaInterpreter_cls::GetStrArg(pL, 1))));
}

int l_Active_GetParameterLink(lua_State* pL) {
    SceneObj_cls* p = Active();
    ParamGroup_cls* pGroup =
        p ? LuaInterpreter_cls::GetPCParamGroup(p, LuaInterpreter_cls::GetStrArg(pL, 1)) : nullptr;
    return pGroup ? PushItemBool(pL, &pGroup->mCLinked) : 0;
}

int l_Active_SetParameterLink(lua_State* pL) {
    SceneObj_cls* p = Active();
    if (!p)
        return PushResult(pL, false);
    const wxString strTag = LuaInterpreter_cls::GetStrArg(pL, 1);
    const bool bLink = LuaInterpreter_cls::GetBool(LuaInterpreter_cls::GetStrArg(pL, 2));
    return PushResult(
        pL, Ctrl()->SetParamGroupConfCommand(p->GetStrTag() + "::" + strTag, "Linked=", bLink ? "1" : "0"));
}

// ---- Ops.SelectedObject ---------------------------------------------------------------------

int l_Selected_MoveTo(lua_State* pL) {
    if (!Ctrl())
        return PushResult(pL, false);
    Ctrl()->MoveItemMultipleToCommand(LuaInterpreter_cls::GetStrArg(pL, 1), false);
    return PushResult(pL, true);
}

int l_Selected_SetChildTo(lua_State* pL) {
    if (!Ctrl())
        return PushResult(pL, false);
    Ctrl()->SetMultipleToChildCommand(LuaInterpreter_cls::GetStrArg(pL, 1));
    return PushResult(pL, true);
}

int l_Selected_Delete(lua_State* pL) {
    if (!Ctrl())
        return PushResult(pL, false);
    Ctrl()->DeleteItemsCommand();
    return PushResult(pL, true);
}

int l_Selected_SetVisibility(lua_State* pL) {
    if (!Ctrl())
        return PushResult(pL, false);
    Ctrl()->SetVisibleMultipleCommand(LuaInterpreter_cls::GetBool(LuaInterpreter_cls::GetStrArg(pL, 1)));
    return PushResult(pL, true);
}

int l_Selected_SetValidity(lua_State* pL) {
    if (!Ctrl())
        return PushResult(pL, false);
    Ctrl()->SetValidMultipleCommand(LuaInterpreter_cls::GetBool(LuaInterpreter_cls::GetStrArg(pL, 1)));
    return PushResult(pL, true);
}

// ---- Data -----------------------------------------------------------------------------------

int l_Data_GetName(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    if (!p)
        return 0;
    PushStr(pL, p->GetStrName());
    return 1;
}

int l_Data_GetActiveObject(lua_State* pL) {
    SceneObj_cls* p = Active();
    PushStr(pL, p ? p->GetStrName() : wxString("None"));
    return 1;
}

int l_Data_GetParent(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    PushStr(pL, p ? p->GetStrParentName() : wxString("None"));
    return 1;
}

int l_Data_GetChild(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    // Lua 5.3 gives "1.0" for a whole number reached by division: a whole float is an index too.
    const wxString strIndex = LuaInterpreter_cls::GetStrArg(pL, 2);
    long index = -1;
    double value = 0.0;
    if (!strIndex.ToLong(&index)) {
        // A failed read may leave a partial number behind.
        index = -1;
        if (strIndex.ToCDouble(&value) && value == std::floor(value) && std::fabs(value) < 1e9)
            index = static_cast<long>(value);
    }
    SceneObj_cls* pChild = p ? p->GetPCFromIndex(static_cast<int>(index)) : nullptr;
    PushStr(pL, pChild ? pChild->GetStrName() : wxString("None"));
    return 1;
}

int l_Data_GetChildList(lua_State* pL) {
    if (!Ctrl())
        return 0;
    const wxString strName = LuaInterpreter_cls::GetStrArg(pL, 1);
    wxArrayString astr;
    if (strName == "ROOT") {
        Ctrl()->GetDirectChildrensName(astr);
    } else if (SceneObj_cls* p = Ctrl()->GetPCFromName(strName)) {
        p->GetDirectChildrensName(astr);
    }
    return PushStrings(pL, astr);
}

int GetTransform(lua_State* pL, const char* pGroup) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    if (!p)
        return 0;
    return LuaInterpreter_cls::GetParameterValue(pL, p->GetStrTag() + "::" + pGroup);
}

int l_Data_GetPosition(lua_State* pL) {
    return GetTransform(pL, "Position");
}
int l_Data_GetRotationEuler(lua_State* pL) {
    return GetTransform(pL, "RotationEuler");
}
int l_Data_GetScale(lua_State* pL) {
    return GetTransform(pL, "Scale");
}

// ---- ParamGroup -----------------------------------------------------------------------------

int l_PG_GetDimension(lua_State* pL) {
    ParamGroup_cls* p = GetGroupArgs(pL, nullptr);
    if (!p)
        return 0;
    lua_pushinteger(pL, static_cast<lua_Integer>(p->mVCParam.size()));
    return 1;
}

int l_PG_GetValueAt(lua_State* pL) {
    ParamGroup_cls* p = GetGroupArgs(pL, nullptr);
    if (!p)
        return 0;
    double nt = 0.0;
    LuaInterpreter_cls::GetStrArg(pL, 3).ToCDouble(&nt);
    const std::vector<double> values = p->GetVInterpolatedValue(nt, true, nullptr, false);
    if (!lua_checkstack(pL, static_cast<int>(values.size())))
        return 0;
    for (double v : values)
        lua_pushnumber(pL, v);
    return static_cast<int>(values.size());
}

int l_PG_SetValueAt(lua_State* pL) {
    wxString strTag;
    ParamGroup_cls* p = GetGroupArgs(pL, &strTag);
    if (!p)
        return PushResult(pL, false);
    double nt = 0.0;
    if (!LuaInterpreter_cls::GetStrArg(pL, 3).ToCDouble(&nt))
        return PushResult(pL, false);
    const int n = lua_gettop(pL) - 3;
    if (n != static_cast<int>(p->mVCParam.size()))
        return PushResult(pL, false);
    std::vector<double> values;
    for (int i = 0; i < n; ++i) {
        double v = 0.0;
        if (!LuaInterpreter_cls::GetStrArg(pL, 4 + i).ToCDouble(&v))
            return PushResult(pL, false);
        values.push_back(v);
    }
    const int type = GpCTimeCtrl ? GpCTimeCtrl->GetDefaultKey() : 1;
    OpenBlock("SetValueAt");
    for (int i = 0; i < n; ++i) {
        Parameter_cls& param = p->mVCParam[static_cast<size_t>(i)];
        param.SetValueAtCommand(values[static_cast<size_t>(i)], nt, strTag + "::" + param.GetStrName(), type,
                                1.0);
    }
    CloseBlock("SetValueAt");
    return PushResult(pL, true);
}

int GetGroupItem(lua_State* pL, const char* pKey, bool bText) {
    ParamGroup_cls* p = GetGroupArgs(pL, nullptr);
    ConfItem_cls* pItem = p ? p->GetPCItem(pKey) : nullptr;
    if (!pItem)
        return 0;
    if (bText) {
        PushStr(pL, pItem->GetBodySTR());
        return 1;
    }
    return PushItemBool(pL, pItem);
}

int SetGroupItem(lua_State* pL, const char* pKey, bool bText) {
    wxString strTag;
    ParamGroup_cls* p = GetGroupArgs(pL, &strTag);
    if (!p || !Ctrl())
        return PushResult(pL, false);
    const wxString strArg = LuaInterpreter_cls::GetStrArg(pL, 3);
    const wxString strValue = bText ? strArg : (LuaInterpreter_cls::GetBool(strArg) ? "1" : "0");
    return PushResult(pL, Ctrl()->SetParamGroupConfCommand(strTag, pKey, strValue));
}

int l_PG_GetLink(lua_State* pL) {
    return GetGroupItem(pL, "Linked=", false);
}
int l_PG_SetLink(lua_State* pL) {
    return SetGroupItem(pL, "Linked=", false);
}
int l_PG_GetShy(lua_State* pL) {
    return GetGroupItem(pL, "Shy=", false);
}
int l_PG_SetShy(lua_State* pL) {
    return SetGroupItem(pL, "Shy=", false);
}
int l_PG_GetUseExpression(lua_State* pL) {
    return GetGroupItem(pL, "UseExpr=", false);
}
int l_PG_SetUseExpression(lua_State* pL) {
    return SetGroupItem(pL, "UseExpr=", false);
}
int l_PG_GetExpression(lua_State* pL) {
    return GetGroupItem(pL, "Expression=", true);
}
int l_PG_SetExpression(lua_State* pL) {
    return SetGroupItem(pL, "Expression=", true);
}

int l_PG_GetTimeDependency(lua_State* pL) {
    ParamGroup_cls* p = GetGroupArgs(pL, nullptr);
    if (!p || !lua_checkstack(pL, static_cast<int>(p->mVCParam.size())))
        return 0;
    for (const Parameter_cls& param : p->mVCParam)
        lua_pushinteger(pL, param.IsTimeDepend() ? 1 : 0);
    return static_cast<int>(p->mVCParam.size());
}

int l_PG_SetTimeDependency(lua_State* pL) {
    wxString strTag;
    ParamGroup_cls* p = GetGroupArgs(pL, &strTag);
    const int nFlags = lua_gettop(pL) - 2;
    if (!p || nFlags < 1 || !GpCUndo)
        return PushResult(pL, false);
    std::vector<bool> vFlags;
    for (int i = 0; i < nFlags; ++i)
        vFlags.push_back(LuaInterpreter_cls::GetBool(LuaInterpreter_cls::GetStrArg(pL, 3 + i)));
    // The group's link is off while the member edits run, so each member takes only its own
    // flag; missing flags repeat the last one given.
    const wxString strLinked = p->mCLinked.mStrBody;
    p->mCLinked.mStrBody = "0";
    OpenBlock("SetTimeDependency");
    for (size_t i = 0; i < p->mVCParam.size(); ++i) {
        Parameter_cls& param = p->mVCParam[i];
        const bool bFlag = vFlags[std::min(i, vFlags.size() - 1)];
        if (param.IsTimeDepend() == bFlag)
            continue;
        const wxString strMemberTag = strTag + "::" + param.GetStrName() + "::TimeDepend=";
        GpCUndo->PushCommandPairAndDo(strMemberTag + (bFlag ? "0" : "1"), strMemberTag + (bFlag ? "1" : "0"));
    }
    CloseBlock("SetTimeDependency");
    p->mCLinked.mStrBody = strLinked;
    return PushResult(pL, true);
}

// ---- Object ---------------------------------------------------------------------------------

int l_Obj_GetShy(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return p ? PushItemBool(pL, &p->mCShy) : 0;
}
int l_Obj_SetShy(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return PushResult(
        pL, p && SetItemBool(&p->mCShy, LuaInterpreter_cls::GetBool(LuaInterpreter_cls::GetStrArg(pL, 2))));
}
int l_Obj_GetVisibility(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return p ? PushItemBool(pL, &p->mCVisible) : 0;
}
int l_Obj_SetVisibility(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return PushResult(pL, p && SetItemBool(&p->mCVisible, LuaInterpreter_cls::GetBool(
                                                              LuaInterpreter_cls::GetStrArg(pL, 2))));
}
int l_Obj_GetValid(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return p ? PushItemBool(pL, p->GetPCValidItem()) : 0;
}
int l_Obj_SetValid(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return PushResult(pL, p && SetItemBool(p->GetPCValidItem(), LuaInterpreter_cls::GetBool(
                                                                    LuaInterpreter_cls::GetStrArg(pL, 2))));
}
int l_Obj_GetConfList(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return p ? PushStrings(pL, p->GetAstrItemList()) : 0;
}
int l_Obj_GetConfItem(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    ConfItem_cls* pItem = p ? p->GetPCItem(LuaInterpreter_cls::GetStrArg(pL, 2)) : nullptr;
    if (!pItem)
        return 0;
    PushStr(pL, pItem->GetBodySTR());
    return 1;
}
int l_Obj_GetAttribList(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    return p ? PushStrings(pL, p->GetAstrAttribList()) : 0;
}
int l_Obj_GetAttribConfList(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    Attribute_cls* pAttr = p ? p->GetPCAttribute(LuaInterpreter_cls::GetStrArg(pL, 2), 0) : nullptr;
    return pAttr ? PushStrings(pL, pAttr->GetAstrItemList()) : 0;
}
int l_Obj_GetAttribConfItem(lua_State* pL) {
    SceneObj_cls* p = LuaInterpreter_cls::GetPCSceneObjFromFirstArg(pL);
    ConfItem_cls* pItem =
        p ? p->GetPCItemInAttrib(LuaInterpreter_cls::GetStrArg(pL, 2), LuaInterpreter_cls::GetStrArg(pL, 3))
          : nullptr;
    if (!pItem)
        return 0;
    PushStr(pL, pItem->GetBodySTR());
    return 1;
}

} // namespace

LuaInterpreter_cls::LuaInterpreter_cls() {
    mVOps = {{"AddPrimitive", l_Ops_AddPrimitive},   {"AddCamera", l_Ops_AddCamera},
             {"AddLight", l_Ops_AddLight},           {"AddMesh", l_Ops_AddMesh},
             {"AddEmpty", l_Ops_AddEmpty},           {"AddWorld", l_Ops_AddWorld},
             {"AddVolumeBox", l_Ops_AddVolumeBox},   {"AddParticle", l_Ops_AddParticle},
             {"AddStreamline", l_Ops_AddStreamline}, {"AddHeightField", l_Ops_AddHeightField},
             {"DeleteObject", l_Ops_DeleteObject},   {"DeselectObject", l_Ops_DeselectObject},
             {"SelectObject", l_Ops_SelectObject},   {nullptr, nullptr}};
    mVOpsActiveObj = {{"Delete", l_Active_Delete},
                      {"Rename", l_Active_Rename},
                      {"GetVisibility", l_Active_GetVisibility},
                      {"SetVisibility", l_Active_SetVisibility},
                      {"GetValidity", l_Active_GetValidity},
                      {"SetValidity", l_Active_SetValidity},
                      {"GetShy", l_Active_GetShy},
                      {"SetShy", l_Active_SetShy},
                      {"GetParameterLink", l_Active_GetParameterLink},
                      {"SetParameterLink", l_Active_SetParameterLink},
                      {nullptr, nullptr}};
    mVOpsSelectedObject = {
        {"MoveTo", l_Selected_MoveTo},           {"SetChildTo", l_Selected_SetChildTo},
        {"Delete", l_Selected_Delete},           {"SetVisibility", l_Selected_SetVisibility},
        {"SetValidity", l_Selected_SetValidity}, {nullptr, nullptr}};
    mVData = {{"GetName", l_Data_GetName},
              {"GetActiveObject", l_Data_GetActiveObject},
              {"GetParent", l_Data_GetParent},
              {"GetChild", l_Data_GetChild},
              {"GetChildList", l_Data_GetChildList},
              {"GetPosition", l_Data_GetPosition},
              {"GetRotationEuler", l_Data_GetRotationEuler},
              {"GetScale", l_Data_GetScale},
              {nullptr, nullptr}};
    mVParamGroup = {{"GetDimension", l_PG_GetDimension},
                    {"GetValueAt", l_PG_GetValueAt},
                    {"SetValueAt", l_PG_SetValueAt},
                    {"GetLink", l_PG_GetLink},
                    {"SetLink", l_PG_SetLink},
                    {"GetShy", l_PG_GetShy},
                    {"SetShy", l_PG_SetShy},
                    {"GetUseExpression", l_PG_GetUseExpression},
                    {"SetUseExpression", l_PG_SetUseExpression},
                    {"GetExpression", l_PG_GetExpression},
                    {"SetExpression", l_PG_SetExpression},
                    {"GetTimeDependency", l_PG_GetTimeDependency},
                    {"SetTimeDependency", l_PG_SetTimeDependency},
                    {nullptr, nullptr}};
    mVObject = {{"GetShy", l_Obj_GetShy},
                {"SetShy", l_Obj_SetShy},
                {"GetVisibility", l_Obj_GetVisibility},
                {"SetVisibility", l_Obj_SetVisibility},
                {"GetValid", l_Obj_GetValid},
                {"SetValid", l_Obj_SetValid},
                {"GetConfList", l_Obj_GetConfList},
                {"GetConfItem", l_Obj_GetConfItem},
                {"GetAttribList", l_Obj_GetAttribList},
                {"GetAttribConfList", l_Obj_GetAttribConfList},
                {"GetAttribConfItem", l_Obj_GetAttribConfItem},
                {nullptr, nullptr}};
    for (luaL_Reg* p = ParamGroup_cls::GetThisTable(); p && p->name; ++p)
        mVThis.push_back(*p);
    mVThis.push_back({nullptr, nullptr});
    ParamGroup_cls::SetExpressionDataTable(mVData.data());
}

LuaInterpreter_cls::~LuaInterpreter_cls() {
    ParamGroup_cls::SetExpressionDataTable(nullptr);
}

luaL_Reg* LuaInterpreter_cls::GetTable(const wxString& strName) {
    if (strName == "Ops")
        return mVOps.data();
    if (strName == "Ops.ActiveObj")
        return mVOpsActiveObj.data();
    if (strName == "Ops.SelectedObject")
        return mVOpsSelectedObject.data();
    if (strName == "Data")
        return mVData.data();
    if (strName == "ParamGroup")
        return mVParamGroup.data();
    if (strName == "Object")
        return mVObject.data();
    if (strName == "This")
        return mVThis.data();
    return nullptr;
}

wxArrayString LuaInterpreter_cls::GetAstrConsoleTableNames() {
    wxArrayString astr;
    for (const char* p : {"Ops", "Ops.ActiveObj", "Ops.SelectedObject", "Data", "ParamGroup", "Object"})
        astr.Add(p);
    return astr;
}

wxString LuaInterpreter_cls::GetStrArg(lua_State* pL, int i) {
    if (lua_isboolean(pL, i))
        return lua_toboolean(pL, i) ? "true" : "false";
    size_t len = 0;
    const char* p = lua_tolstring(pL, i, &len);
    return p ? wxString::FromUTF8(p, len) : wxString();
}

bool LuaInterpreter_cls::GetBool(const wxString& str) {
    if (str.empty() || str == "FALSE" || str == "false")
        return false;
    if (str == "TRUE" || str == "true")
        return true;
    long value = 0;
    str.ToLong(&value);
    return value != 0;
}

SceneObj_cls* LuaInterpreter_cls::GetPCSceneObjFromFirstArg(lua_State* pL) {
    if (!GpCSceneObjCtrl)
        return nullptr;
    const wxString strName = GetStrArg(pL, 1);
    return strName.empty() ? nullptr : GpCSceneObjCtrl->GetPCFromName(strName);
}

ParamGroup_cls* LuaInterpreter_cls::GetPCParamGroup(SceneObj_cls* pObj, const wxString& strTag) {
    if (!pObj || strTag.empty())
        return nullptr;
    wxString strAttr = strTag;
    const wxString strGroup = Parser_cls::PopLastItemFromStrLine(strAttr, "::");
    if (strAttr.empty())
        return pObj->GetPCParamGroup(wxString(), strGroup);
    return pObj->GetPCParamGroup(strAttr, strGroup);
}

int LuaInterpreter_cls::GetParameterValue(lua_State* pL, const wxString& strTag) {
    ParamGroup_cls* p = GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCParamGroup(strTag) : nullptr;
    if (!p)
        return 0;
    const double t = TimeCtrl_cls::GetClockNT();
    const std::vector<double> values = p->GetVInterpolatedValue(t, true, nullptr, false);
    if (!lua_checkstack(pL, static_cast<int>(values.size())))
        return 0;
    for (double v : values)
        lua_pushnumber(pL, v);
    return static_cast<int>(values.size());
}

int LuaInterpreter_cls::AddSceneObjBase(lua_State* pL, const wxString& strKind) {
    const wxString strName = GetStrArg(pL, 1);
    lua_settop(pL, 0);
    if (!GpCSceneObjCtrl)
        return 0;
    OpenBlock(strKind + " Adding");
    const wxString strMade = GpCSceneObjCtrl->AppendSceneObjCommand(strKind, strName);
    CloseBlock(strKind + " Adding");
    if (strMade.empty() || !GpCSceneObjCtrl->GetPCFromName(strMade))
        return 0;
    PushStr(pL, strMade);
    return 1;
}

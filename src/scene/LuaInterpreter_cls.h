// The function tables of the host API that scripts see: "Ops", "Ops.ActiveObj",
// "Ops.SelectedObject", "Data", "ParamGroup", "Object" and "This". It holds no Lua state: each
// user opens its own and is handed some of these tables (the console all but "This", a
// parameter expression "Data" and "This"). Scripts name objects by their names, and every
// change goes through the same command strings as the interface, so it is undoable.
// The functions touch the scene: main thread only.
#pragma once

#include "GetPC_cls.h"
#include "Parser_cls.h"

#include <lua.hpp>
#include <wx/arrstr.h>
#include <wx/string.h>

#include <vector>

class ParamGroup_cls;
class SceneObj_cls;

class LuaInterpreter_cls : public GetPC_cls {
public:
    // Builds the seven tables and hands "Data" to the parameter expressions.
    LuaInterpreter_cls();
    ~LuaInterpreter_cls();

    // The table of that name, closed by a null entry; null for an unknown name.
    luaL_Reg* GetTable(const wxString& strName);
    // The six names of the console, in the order it opens them.
    static wxArrayString GetAstrConsoleTableNames();

    // ---- helpers of the functions ----
    // Argument i as text; a boolean arrives as "true" or "false", nothing as empty text.
    static wxString GetStrArg(lua_State* pL, int i);
    // Empty text is false, "TRUE"/"true" true, "FALSE"/"false" false, anything else an integer
    // that is true when not 0.
    static bool GetBool(const wxString& str);
    static SceneObj_cls* GetPCSceneObjFromFirstArg(lua_State* pL);
    // The group named by tag inside the object: "Position", or "<attribute>::<group>".
    static ParamGroup_cls* GetPCParamGroup(SceneObj_cls* pObj, const wxString& strTag);
    // The values of a transform group at the current time.
    static int GetParameterValue(lua_State* pL, const wxString& strTag);
    // Reads argument 1 as the new name, opens the block "<kind> Adding", appends and pushes the
    // name made.
    static int AddSceneObjBase(lua_State* pL, const wxString& strKind);

    std::vector<luaL_Reg> mVOps;
    std::vector<luaL_Reg> mVOpsActiveObj;
    std::vector<luaL_Reg> mVOpsSelectedObject;
    std::vector<luaL_Reg> mVData;
    std::vector<luaL_Reg> mVParamGroup;
    std::vector<luaL_Reg> mVObject;
    std::vector<luaL_Reg> mVThis;
};

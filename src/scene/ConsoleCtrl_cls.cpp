#include "ConsoleCtrl_cls.h"

#include "LuaInterpreter_cls.h"

#include <iostream>
#include <sstream>

namespace {

// Puts std::cout's buffer back however the run ends.
class CoutCapture_cls {
public:
    CoutCapture_cls() : mpOld(std::cout.rdbuf(mStream.rdbuf())) {}
    ~CoutCapture_cls() { std::cout.rdbuf(mpOld); }
    CoutCapture_cls(const CoutCapture_cls&) = delete;
    CoutCapture_cls& operator=(const CoutCapture_cls&) = delete;
    std::string GetText() const { return mStream.str(); }

private:
    std::ostringstream mStream;
    std::streambuf* mpOld;
};

} // namespace

ConsoleCtrl_cls::~ConsoleCtrl_cls() {
    CloseLuaBase();
}

wxString ConsoleCtrl_cls::GetStrLuaConstructors() {
    // The text is fixed. Kept as it stands: the method table of Data.ParamGroup has no
    // GetExpression, and its GetUseExpression calls ParamGroup.GetExpression with no
    // arguments (the second field of that name overrides the first); Data.Object forwards
    // GetValidity and SetValidity to names the Object table does not have.
    wxString str;
    str += "function Data.ParamGroup(obj, param)\n";
    str += "return { \n";
    str += "obj = obj, param = param,\n";
    str += "GetName = function() return Data.GetName(param) end,\n";
    str += "GetDimension = function() return ParamGroup.GetDimension(obj, param) end,\n";
    str += "GetValueAt = function(nt) return ParamGroup.GetValueAt(obj, param, nt) end,\n";
    str += "SetValueAt = function(nt, ...) return ParamGroup.SetValueAt(obj, param, nt, ...) end,\n";
    str += "GetLink = function() return ParamGroup.GetLink(obj, param) end,\n";
    str += "SetLink = function(link) return ParamGroup.SetLink(obj, param, link) end,\n";
    str += "GetShy = function() return ParamGroup.GetShy(obj, param) end,\n";
    str += "SetShy = function(shy) return ParamGroup.SetShy(obj, param, shy) end,\n";
    str += "GetUseExpression = function() return ParamGroup.GetUseExpression() end,\n";
    str += "SetUseExpression = function(use) return ParamGroup.SetUseExpression(obj, param, use) end,\n";
    str += "GetUseExpression = function() return ParamGroup.GetExpression() end,\n";
    str += "SetExpression = function(expr) return ParamGroup.SetExpression(obj, param, expr) end,\n";
    str += "GetTimeDependency = function() return ParamGroup.GetTimeDependency(obj, param) end,\n";
    str += "SetTimeDependency = function(...) return ParamGroup.SetTimeDependency(obj, param, ...) end,\n";
    str += "}\n";
    str += "end\n";
    str += "function Data.Object(obj)\n";
    str += "return {\n";
    str += "obj = obj,\n";
    str += "GetShy = function() return Object.GetShy(obj) end,\n";
    str += "SetShy = function(shy) return Object.SetShy(obj, shy) end,\n";
    str += "GetVisibility = function() return Object.GetVisibility(obj) end,\n";
    str += "SetVisibility = function(visible) return Object.SetVisibility(obj, visible) end,\n";
    str += "GetValidity = function() return Object.GetValidity(obj) end,\n";
    str += "SetValidity = function(valid) return Object.SetValidity(obj, valid) end,\n";
    str += "GetConfList = function() return Object.GetConfList(obj) end,\n";
    str += "GetConfItem = function(tag) return Object.GetConfItem(obj, tag) end,\n";
    str += "GetAttribList = function() return Object.GetAttribList(obj) end,\n";
    str += "GetAttrib = function (attrib) return {\n";
    str += "attrib = attrib,\n";
    str += "GetConfList = function() return Object.GetAttribConfList(obj, attrib) end,\n";
    str += "GetConfItem = function(conf) return Object.GetAttribConfItem(obj, attrib, conf) end,\n";
    str += "} end,\n";
    str += "}\n";
    str += "end\n";
    return str;
}

bool ConsoleCtrl_cls::ProcessOneLiner(const wxString& strCommand) {
    bool bOk = true;
    std::string strCaptured;
    {
        CoutCapture_cls capture;
        // The command starts on the first line, so that Lua's line numbers are the user's; the
        // constructors follow, defined before the script runs all the same.
        const wxString strSource = "function script() " + strCommand + "\nend\n" + GetStrLuaConstructors();
        if (!IsLuaOpen()) {
            wxArrayString astrNames = LuaInterpreter_cls::GetAstrConsoleTableNames();
            luaL_Reg* tables[6] = {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
            static luaL_Reg emptyTable[] = {{nullptr, nullptr}};
            for (size_t i = 0; i < astrNames.GetCount(); ++i) {
                tables[i] = GpCLuaInterpreter ? GpCLuaInterpreter->GetTable(astrNames[i]) : nullptr;
                if (!tables[i])
                    tables[i] = emptyTable;
            }
            // The state only: the text is loaded below, so its errors reach the console.
            OpenLuaBase(wxString(), 6, astrNames, tables, "Console");
        }
        lua_State* pL = mpLuaState;
        if (!pL) {
            std::cout << "Lua is not available" << std::endl;
            bOk = false;
        } else {
            const wxScopedCharBuffer buf = strSource.utf8_str();
            if (LuaBase_cls::LoadText(pL, buf.data(), buf.length(), "console") != LUA_OK ||
                LuaBase_cls::PCall(pL, 0, 0) != LUA_OK) {
                COutErrorMessage();
                bOk = false;
            } else {
                lua_getglobal(pL, "script");
                if (LuaBase_cls::PCall(pL, 0, 0) != LUA_OK) {
                    COutErrorMessage();
                    bOk = false;
                }
            }
            ClearLuaStack();
        }
        strCaptured = capture.GetText();
    }
    mStrOutput += wxString::FromUTF8(strCaptured.data(), strCaptured.size());
    mVStrHistory.push_back(strCommand);
    return bOk;
}

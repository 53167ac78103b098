#include "LuaMiniCalc_cls.h"

#include "LuaBase_cls.h"

bool LuaMiniCalc_cls::IsStringExpression(const wxString& strText) {
    return strText.find_first_of("+-*/") != wxString::npos;
}

float LuaMiniCalc_cls::GetValue(const wxString& strExpr) {
    // The typed text stands on the first line, so that Lua's line numbers are the user's.
    wxString strScript = "function script() return " + strExpr + "\nend\n";
    lua_State* pL = LuaBase_cls::NewLuaState();
    if (!pL)
        return 0;
    const wxScopedCharBuffer buf = strScript.utf8_str();
    if (LuaBase_cls::LoadText(pL, buf.data(), buf.length(), "expression") != LUA_OK ||
        LuaBase_cls::PCall(pL, 0, 0) != LUA_OK) {
        LuaBase_cls::CheckErrorMessage(pL, "MiniCalc::DoString::");
        LuaBase_cls::CloseLuaState(pL);
        return 0;
    }
    lua_getglobal(pL, "script");
    if (LuaBase_cls::PCall(pL, 0, 1) != LUA_OK) {
        LuaBase_cls::CheckErrorMessage(pL, "MiniCalc::");
        LuaBase_cls::CloseLuaState(pL);
        return 0;
    }
    double value = lua_tonumberx(pL, -1, nullptr);
    lua_pop(pL, 1);
    LuaBase_cls::CloseLuaState(pL);
    return static_cast<float>(value);
}

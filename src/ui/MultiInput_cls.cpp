#include "MultiInput_cls.h"

#include "LuaBase_cls.h"

#include <cmath>

bool MultiInput_cls::ParseNumber(const wxString& strText, double& value) {
    wxString str = strText;
    str.Trim(true).Trim(false);
    if (str.empty())
        return false;
    if (str.ToCDouble(&value))
        return std::isfinite(value);
    // A leading "=" is allowed, as spreadsheets have taught users to type.
    if (str.StartsWith("="))
        str = str.Mid(1);
    lua_State* pL = LuaBase_cls::NewLuaState();
    if (!pL)
        return false;
    // The buffer may point into the string: the string must outlive it.
    const wxString strChunk = "return " + str;
    const wxScopedCharBuffer buf = strChunk.utf8_str();
    bool bOK = false;
    if (LuaBase_cls::LoadText(pL, buf.data(), buf.length(), "field") != LUA_OK ||
        LuaBase_cls::PCall(pL, 0, 1) != LUA_OK) {
        LuaBase_cls::CheckErrorMessage(pL, "MultiInput");
    } else if (lua_type(pL, -1) == LUA_TNUMBER) {
        value = lua_tonumber(pL, -1);
        bOK = std::isfinite(value);
    }
    LuaBase_cls::CloseLuaState(pL);
    return bOK;
}

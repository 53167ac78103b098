#include "LuaBase_cls.h"
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

// Per-state bookkeeping of the memory limit and the work bound. It is the allocator's user
// data, so every coroutine of a state reaches the same one through lua_getallocf.
struct LuaGuard_str {
    size_t mMemoryUsed = 0;
    long long mWorkDone = 0;
};

LuaGuard_str* GetGuard(lua_State* pL) {
    void* pUD = nullptr;
    lua_getallocf(pL, &pUD);
    return static_cast<LuaGuard_str*>(pUD);
}

void* GuardedAlloc(void* pUD, void* ptr, size_t oldSize, size_t newSize) {
    LuaGuard_str* pGuard = static_cast<LuaGuard_str*>(pUD);
    size_t oldHeld = ptr ? oldSize : 0; // with no block, oldSize tells the kind of object
    if (newSize == 0) {
        free(ptr);
        pGuard->mMemoryUsed -= oldHeld;
        return nullptr;
    }
    // Shrinking must not fail, so only growth is checked against the limit.
    if (newSize > oldHeld && pGuard->mMemoryUsed - oldHeld + newSize > LuaBase_cls::msMemoryLimit)
        return nullptr;
    void* pNew = realloc(ptr, newSize);
    if (!pNew)
        return nullptr;
    pGuard->mMemoryUsed = pGuard->mMemoryUsed - oldHeld + newSize;
    return pNew;
}

void CountHook(lua_State* pL, lua_Debug*) {
    LuaGuard_str* pGuard = GetGuard(pL);
    pGuard->mWorkDone += lua_gethookcount(pL);
    if (pGuard->mWorkDone < LuaBase_cls::msInstructionLimit) {
        // A coroutine left on a count of 1 by an earlier stop goes back to the normal pace.
        if (lua_gethookcount(pL) != LuaBase_cls::msHookInterval)
            lua_sethook(pL, CountHook, LUA_MASKCOUNT, LuaBase_cls::msHookInterval);
        return;
    }
    // From now on every instruction fails, so a pcall inside the script that catches this
    // error cannot keep a loop going: each enclosing level fails at its next instruction.
    lua_sethook(pL, CountHook, LUA_MASKCOUNT, 1);
    luaL_where(pL, 0); // level 0 inside a hook is the running Lua function: the message names its line
    lua_pushfstring(pL, "script stopped after %d instructions (endless loop?)",
                    static_cast<int>(LuaBase_cls::msInstructionLimit));
    lua_concat(pL, 2);
    lua_error(pL);
}

// A new coroutine starts its own instruction count, so a loop of short-lived coroutines would
// run almost uncounted. Each creation is therefore charged a whole hook interval, the most a
// coroutine can run before its own count reaches the hook.
int ChargedCoroutineMaker(lua_State* pL) {
    GetGuard(pL)->mWorkDone += LuaBase_cls::msHookInterval;
    lua_pushvalue(pL, lua_upvalueindex(1));
    lua_insert(pL, 1);
    lua_call(pL, lua_gettop(pL) - 1, LUA_MULTRET);
    return lua_gettop(pL);
}

void ChargeCoroutineCreation(lua_State* pL) {
    lua_getglobal(pL, "coroutine");
    if (lua_istable(pL, -1)) {
        for (const char* strName : {"create", "wrap"}) {
            lua_getfield(pL, -1, strName);
            lua_pushcclosure(pL, ChargedCoroutineMaker, 1);
            lua_setfield(pL, -2, strName);
        }
    }
    lua_pop(pL, 1);
}

} // namespace

LuaBase_cls::LuaBase_cls(const LuaBase_cls&) : Parser_cls() {}

LuaBase_cls& LuaBase_cls::operator=(const LuaBase_cls& other) {
    if (this != &other)
        CloseLuaBase();
    return *this;
}

LuaBase_cls::~LuaBase_cls() {
    CloseLuaBase();
}

lua_State* LuaBase_cls::NewLuaState() {
    LuaGuard_str* pGuard = new LuaGuard_str;
    lua_State* pL = lua_newstate(GuardedAlloc, pGuard);
    if (!pL) {
        delete pGuard;
        return nullptr;
    }
    lua_sethook(pL, CountHook, LUA_MASKCOUNT, msHookInterval);
    luaL_openlibs(pL);
    ChargeCoroutineCreation(pL);
    return pL;
}

void LuaBase_cls::CloseLuaState(lua_State* pL) {
    if (!pL)
        return;
    LuaGuard_str* pGuard = GetGuard(pL);
    lua_close(pL);
    delete pGuard;
}

int LuaBase_cls::PCall(lua_State* pL, int nArgs, int nResults) {
    GetGuard(pL)->mWorkDone = 0;
    lua_sethook(pL, CountHook, LUA_MASKCOUNT, msHookInterval);
    return lua_pcall(pL, nArgs, nResults, 0);
}

int LuaBase_cls::LoadText(lua_State* pL, const char* pText, size_t length, const char* pName) {
    // A leading "=" makes Lua use the name as it stands.
    const std::string strChunk = std::string("=") + pName;
    return luaL_loadbuffer(pL, pText, length, strChunk.c_str());
}

bool LuaBase_cls::OpenLuaBase(const wxString& strText, int tableCount, const wxArrayString& tableNames,
                              luaL_Reg** tables, const wxString& strContext) {
    // An open state only takes the new text, so a console keeps its globals between lines.
    if (!mpLuaState) {
        mpLuaState = NewLuaState();
        if (!mpLuaState) {
            LuaErrorSink_cls::Post("cannot create a Lua state::" + strContext);
            return false;
        }
        lua_State* pL = mpLuaState;
        int count = tableCount < int(tableNames.GetCount()) ? tableCount : int(tableNames.GetCount());
        for (int i = 0; i < count; i++) {
            if (!tables || !tables[i])
                continue;
            wxString strChild = tableNames[i];
            wxString strParent = PopStrItemFromStrLine(strChild, ".");
            if (strChild.IsEmpty()) {
                lua_newtable(pL);
                luaL_setfuncs(pL, tables[i], 0);
                lua_setglobal(pL, strParent.utf8_str());
                continue;
            }
            lua_getglobal(pL, strParent.utf8_str());
            if (!lua_istable(pL, -1)) {
                // Parents stand earlier in the list; without one the child has nowhere to go.
                lua_pop(pL, 1);
                LuaErrorSink_cls::Post("no parent table for " + tableNames[i] + "::" + strContext);
                continue;
            }
            lua_newtable(pL);
            luaL_setfuncs(pL, tables[i], 0);
            lua_setfield(pL, -2, strChild.utf8_str());
            lua_pop(pL, 1);
        }
        static const luaL_Reg printFuncs[] = {{"print", l_my_print}, {nullptr, nullptr}};
        lua_getglobal(pL, "_G");
        luaL_setfuncs(pL, printFuncs, 0);
        lua_setglobal(pL, "_G");
    }
    lua_State* pL = mpLuaState;
    wxScopedCharBuffer bufText = strText.utf8_str();
    bool bLoaded = true;
    if (bufText.length() > 0) {
        bLoaded = LoadText(pL, bufText.data(), bufText.length(), "expression") == LUA_OK &&
                  PCall(pL, 0, LUA_MULTRET) == LUA_OK;
        if (!bLoaded)
            CheckErrorMessage(pL, strContext);
        lua_settop(pL, 0); // a text that returns values leaves nothing behind
    }
    // Keep the entry point in the registry so each call is one table read, not a name lookup.
    // It is whatever the global "script" is now, after a failed text as well: the same function
    // a lookup by name would find.
    luaL_unref(pL, LUA_REGISTRYINDEX, mScriptRef);
    lua_getglobal(pL, "script");
    if (lua_isfunction(pL, -1)) {
        mScriptRef = luaL_ref(pL, LUA_REGISTRYINDEX);
    } else {
        lua_pop(pL, 1);
        mScriptRef = LUA_NOREF;
    }
    return bLoaded;
}

void LuaBase_cls::CloseLuaBase() {
    if (!mpLuaState)
        return;
    CloseLuaState(mpLuaState);
    mpLuaState = nullptr;
    mScriptRef = LUA_NOREF;
}

void LuaBase_cls::ClearLuaStack() {
    if (mpLuaState)
        lua_settop(mpLuaState, 0);
}

void LuaBase_cls::SetVariable(double value, const char* strName) {
    SetVariable(mpLuaState, value, strName);
}

void LuaBase_cls::SetVariable(int value, const char* strName) {
    SetVariable(mpLuaState, value, strName);
}

void LuaBase_cls::SetVariable(lua_State* pL, double value, const char* strName) {
    if (!pL)
        return;
    lua_pushnumber(pL, value);
    lua_setglobal(pL, strName);
}

void LuaBase_cls::SetVariable(lua_State* pL, int value, const char* strName) {
    SetVariable(pL, static_cast<double>(value), strName);
}

bool LuaBase_cls::CallScript(const double* pArgs, int nArgs, double* pResults, int nResults,
                             const wxString& strContext, bool bReport) {
    lua_State* pL = mpLuaState;
    if (!pL || nArgs < 0 || nResults < 0 || nArgs >= LUAI_MAXSTACK || nResults >= LUAI_MAXSTACK)
        return false;
    if (!lua_checkstack(pL, nArgs + nResults + 1)) {
        if (bReport)
            LuaErrorSink_cls::Post("stack overflow::" + strContext);
        return false;
    }
    if (mScriptRef == LUA_NOREF)
        lua_pushnil(pL); // the call below then fails with Lua's own "attempt to call a nil value"
    else
        lua_rawgeti(pL, LUA_REGISTRYINDEX, mScriptRef);
    for (int i = 0; i < nArgs; i++)
        lua_pushnumber(pL, pArgs[i]);
    if (PCall(pL, nArgs, nResults) != LUA_OK) {
        if (bReport)
            CheckErrorMessage(pL, strContext);
        else
            lua_pop(pL, 1);
        return false;
    }
    for (int i = 0; i < nResults; i++)
        pResults[i] = lua_tonumberx(pL, i - nResults, nullptr);
    lua_pop(pL, nResults);
    return true;
}

void LuaBase_cls::CheckErrorMessage(lua_State* pL, const wxString& strContext) {
    wxString strMessage;
    if (pL && lua_gettop(pL) > 0) {
        int type = lua_type(pL, -1);
        if (type == LUA_TSTRING || type == LUA_TNUMBER)
            strMessage = wxString::FromUTF8(lua_tostring(pL, -1));
        else
            strMessage = wxString::Format("(error object is a %s value)", lua_typename(pL, type));
        lua_pop(pL, 1);
    }
    LuaErrorSink_cls::Post(strMessage + "::" + strContext);
}

void LuaBase_cls::COutErrorMessage() {
    if (!mpLuaState)
        return;
    const char* pMessage = lua_gettop(mpLuaState) > 0 ? lua_tostring(mpLuaState, -1) : nullptr;
    std::cout << (pMessage ? pMessage : "") << "\n";
    lua_settop(mpLuaState, 0);
}

int LuaBase_cls::l_my_print(lua_State* pL) {
    int count = lua_gettop(pL);
    for (int i = 1; i <= count; i++) {
        size_t length = 0;
        const char* pText = luaL_checklstring(pL, i, &length);
        std::cout.write(pText, static_cast<std::streamsize>(length));
        std::cout << ' ';
    }
    std::cout << '\n';
    return 0;
}

bool LuaBase_cls::IsWordExist(const wxString& strText, const wxString& strWord) {
    if (strWord.IsEmpty())
        return false;
    auto isWordChar = [](wxUniChar c) { return c == '_' || (c.IsAscii() && isalnum(int(char(c)))); };
    size_t pos = strText.find(strWord);
    while (pos != wxString::npos) {
        size_t end = pos + strWord.length();
        bool bFreeBefore = pos == 0 || !isWordChar(strText[pos - 1]);
        bool bFreeAfter = end >= strText.length() || !isWordChar(strText[end]);
        if (bFreeBefore && bFreeAfter)
            return true;
        pos = strText.find(strWord, pos + 1);
    }
    return false;
}

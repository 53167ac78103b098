// Owner of one Lua 5.3 state: opens it with a body of text and host function tables, sets
// globals, calls the compiled "script" function with numbers and reports Lua errors.
#pragma once

#include "LuaErrorSink_cls.h"
#include "Parser_cls.h"

#include <lua.hpp>
#include <wx/arrstr.h>
#include <wx/string.h>

#include <cstddef>

// Users derive virtually. A state is touched by one thread at a time; no state is shared
// between threads or between owners. Copies start closed.
class LuaBase_cls : public Parser_cls {
public:
    // Work bound of one protected call, in Lua VM instructions (all coroutines of the state
    // together). A script that is still running then is stopped with a runtime error, so an
    // endless loop in an expression costs a fraction of a second, not the program.
    static constexpr long long msInstructionLimit = 50000000;
    // How many instructions pass between two looks at the bound. The count hook itself makes
    // Lua check each instruction, which roughly halves the speed of long tight loops; short
    // expressions do not notice it.
    static constexpr int msHookInterval = 1000;
    // Memory one state may hold; beyond it allocations fail with Lua's "not enough memory".
    static constexpr size_t msMemoryLimit = size_t(256) << 20;

    LuaBase_cls() = default;
    LuaBase_cls(const LuaBase_cls&);            // the copy starts closed
    LuaBase_cls& operator=(const LuaBase_cls&); // closes this state; it is opened again on demand
    virtual ~LuaBase_cls();

    // Opens the state (libraries, the tables, print) unless one is open, then loads and runs
    // strText, which only defines functions. tableNames[i] names tables[i] ("Data", or
    // "Ops.ActiveObj" with the parent earlier in the list). A load or run failure is reported
    // with strContext through CheckErrorMessage and returns false; the state stays open.
    bool OpenLuaBase(const wxString& strText, int tableCount, const wxArrayString& tableNames,
                     luaL_Reg** tables, const wxString& strContext = "LuaBase");
    void CloseLuaBase();
    bool IsLuaOpen() const { return mpLuaState != nullptr; }
    void ClearLuaStack();

    // Global variables; integers too are Lua numbers. No-ops while closed.
    void SetVariable(double value, const char* strName);
    void SetVariable(int value, const char* strName);
    static void SetVariable(lua_State* pL, double value, const char* strName);
    static void SetVariable(lua_State* pL, int value, const char* strName);

    // The hot path: calls the global "script" as it stood after the last OpenLuaBase with nArgs
    // numbers and reads nResults numbers back in order; a result Lua cannot convert reads as 0.
    // No string is built and nothing is allocated on success. On failure (no state, bad counts,
    // runtime error, stopped by the work bound, out of memory) pResults is untouched, the error
    // is reported with strContext when bReport is true (popped otherwise), the state stays
    // open, and it returns false: the caller decides whether to close.
    bool CallScript(const double* pArgs, int nArgs, double* pResults, int nResults,
                    const wxString& strContext, bool bReport = true);

    // lua_pcall under the work bound: restarts the instruction count first. Every protected
    // call into a state made here must go through it, or the count of earlier calls adds up.
    static int PCall(lua_State* pL, int nArgs, int nResults);
    // Loads a text as a chunk of that name, so that messages read "<name>:<line>: ..." and not
    // with the whole wrapper text quoted.
    static int LoadText(lua_State* pL, const char* pText, size_t length, const char* pName);
    // A state with the work bound, the memory limit and the standard libraries; nullptr when
    // none can be had. Close it with CloseLuaState, never with lua_close alone.
    static lua_State* NewLuaState();
    static void CloseLuaState(lua_State* pL);

    // Reads the error at the top of the stack, pops it, and posts "<message>::<strContext>" to
    // the log through LuaErrorSink_cls. Any thread.
    static void CheckErrorMessage(lua_State* pL, const wxString& strContext);
    // Writes the message at the top of the stack and a newline to std::cout and clears the
    // stack; for the console, which captures std::cout.
    void COutErrorMessage();
    // Replaces Lua's print: each argument as a string to std::cout followed by a blank, then a
    // newline. A non-string, non-number argument raises Lua's bad-argument error.
    static int l_my_print(lua_State* pL);
    // True if strWord stands in strText as a whole identifier: no letter, digit or '_' touches
    // it on either side.
    static bool IsWordExist(const wxString& strText, const wxString& strWord);

    // Null while closed. Owned.
    lua_State* mpLuaState = nullptr;

private:
    // Registry reference of the global "script" taken after the last successful load.
    int mScriptRef = LUA_NOREF;
};

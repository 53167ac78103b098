// Evaluation rate of a parameter expression through LuaBase_cls::CallScript, against the plain
// Lua calling sequence (global lookup, lua_pcall, no work bound) on the same text, and the
// one-shot mini calculator of numeric fields.
#include "LuaBase_cls.h"
#include "LuaMiniCalc_cls.h"

#include <benchmark/benchmark.h>

namespace {

const char* const gStrScript = "function script(nt, seq, sub, frame, x, y, z)\n"
                               "return x * 2, y + math.sin(nt), z - frame\n"
                               "end\n";

void BM_CallScript(benchmark::State& state) {
    LuaBase_cls lua;
    lua.OpenLuaBase(gStrScript, 0, wxArrayString(), nullptr, "bench");
    double args[7] = {0.25, 3, 0, 42, 1, 2, 3};
    double out[3];
    const wxString strContext = "bench";
    for (auto _ : state) {
        args[0] += 1e-6;
        lua.CallScript(args, 7, out, 3, strContext);
        benchmark::DoNotOptimize(out);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CallScript);

// Baseline: the same call by name on a bare state, with no hook and no registry reference.
void BM_PlainLuaCall(benchmark::State& state) {
    lua_State* pL = luaL_newstate();
    luaL_openlibs(pL);
    luaL_dostring(pL, gStrScript);
    double args[7] = {0.25, 3, 0, 42, 1, 2, 3};
    double out[3];
    for (auto _ : state) {
        args[0] += 1e-6;
        lua_getglobal(pL, "script");
        for (double v : args)
            lua_pushnumber(pL, v);
        if (lua_pcall(pL, 7, 3, 0) != LUA_OK)
            state.SkipWithError("call failed");
        for (int i = 0; i < 3; i++)
            out[i] = lua_tonumberx(pL, i - 3, nullptr);
        lua_pop(pL, 3);
        benchmark::DoNotOptimize(out);
    }
    lua_close(pL);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_PlainLuaCall);

// A loop long enough for the work-bound hook to fire many times per call: its cost shows here.
void BM_CallScriptLongLoop(benchmark::State& state) {
    LuaBase_cls lua;
    lua.OpenLuaBase("function script(n)\nlocal s = 0 for i = 1, n do s = s + i end return s\nend\n", 0,
                    wxArrayString(), nullptr, "bench");
    double n = 100000, out = 0;
    for (auto _ : state) {
        lua.CallScript(&n, 1, &out, 1, "bench");
        benchmark::DoNotOptimize(out);
    }
    state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(BM_CallScriptLongLoop);

void BM_PlainLongLoop(benchmark::State& state) {
    lua_State* pL = luaL_newstate();
    luaL_openlibs(pL);
    luaL_dostring(pL, "function script(n)\nlocal s = 0 for i = 1, n do s = s + i end return s\nend\n");
    for (auto _ : state) {
        lua_getglobal(pL, "script");
        lua_pushnumber(pL, 100000);
        lua_pcall(pL, 1, 1, 0);
        benchmark::DoNotOptimize(lua_tonumberx(pL, -1, nullptr));
        lua_pop(pL, 1);
    }
    lua_close(pL);
    state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(BM_PlainLongLoop);

void BM_MiniCalc(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(LuaMiniCalc_cls::GetValue("(2+3)*4/7"));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_MiniCalc);

} // namespace

BENCHMARK_MAIN();

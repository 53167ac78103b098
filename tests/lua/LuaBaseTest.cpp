#include "LuaBase_cls.h"
#include "LuaTestSupport.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

namespace {

// The text a parameter group compiles: its expression as the body of script(nt, seq, sub, frame, ...).
wxString ScriptOf(const wxString& strArgs, const wxString& strBody) {
    return "function script(" + strArgs + ")\n" + strBody + "\nend\n";
}

bool Open(LuaBase_cls& lua, const wxString& strText, const wxString& strContext = "Test") {
    return lua.OpenLuaBase(strText, 0, wxArrayString(), nullptr, strContext);
}

int HostTwo(lua_State* pL) {
    lua_pushnumber(pL, 2);
    return 1;
}
int HostAdd(lua_State* pL) {
    lua_pushnumber(pL, luaL_checknumber(pL, 1) + luaL_checknumber(pL, 2));
    return 1;
}
int HostName(lua_State* pL) {
    lua_pushstring(pL, "Box");
    return 1;
}

} // namespace

// The script gets its arguments in order; missing results and results that are no numbers read as
// 0, extra ones are dropped, and the results are popped.
TEST(LuaBase, ResultsInOrderAndMissingOrUnconvertibleOnesReadAsZero) {
    SinkCapture_cls sink;
    const double args[] = {0.5, 3, 1, 7, 10, 20, 30};
    struct Case {
        const char* strBody;
        double v0, v1, v2;
    } cases[] = {
        {"return x * 2, y + nt, z - frame", 20, 20.5, 23},
        {"local a = x", 0, 0, 0},
        {"return x", 10, 0, 0},
        {"return 'abc', '12', {}", 0, 12, 0}, // strings convert only when they are numbers
        {"return x, y, z, 99", 10, 20, 30},
        {"return 1/0, -1/0, 0", HUGE_VAL, -HUGE_VAL, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.strBody);
        LuaBase_cls lua;
        ASSERT_TRUE(Open(lua, ScriptOf("nt, seq, sub, frame, x, y, z", c.strBody)));
        double out[3] = {-7, -7, -7};
        ASSERT_TRUE(lua.CallScript(args, 7, out, 3, "G"));
        EXPECT_EQ(out[0], c.v0);
        EXPECT_EQ(out[1], c.v1);
        EXPECT_EQ(out[2], c.v2);
        EXPECT_EQ(lua_gettop(lua.mpLuaState), 0);
    }
    EXPECT_EQ(sink.Count(), 0u);
}

TEST(LuaBase, SyntaxErrorIsReportedWithContext) {
    SinkCapture_cls sink;
    LuaBase_cls lua;
    EXPECT_FALSE(Open(lua, ScriptOf("x", "return x +"), "Size"));
    ASSERT_EQ(sink.Count(), 1u);
    EXPECT_EQ(sink.Last(), "expression:3: unexpected symbol near 'end'::Size");
    // The state stays open but has no entry point: a call fails and is reported, never crashes.
    ASSERT_TRUE(lua.IsLuaOpen());
    EXPECT_EQ(lua_gettop(lua.mpLuaState), 0);
    double value = 5, out = -1;
    EXPECT_FALSE(lua.CallScript(&value, 1, &out, 1, "Size"));
    EXPECT_EQ(out, -1) << "results stay untouched on failure";
    EXPECT_EQ(sink.Last(), "attempt to call a nil value::Size");
}

TEST(LuaBase, RuntimeErrorIsReportedAndStateStaysUsable) {
    SinkCapture_cls sink;
    LuaBase_cls lua;
    ASSERT_TRUE(Open(lua, ScriptOf("x", "if x < 0 then return x + nothing end return x * 3")));
    double in = -1, out = 42;
    EXPECT_FALSE(lua.CallScript(&in, 1, &out, 1, "return x*3"));
    EXPECT_EQ(out, 42);
    ASSERT_EQ(sink.Count(), 1u);
    EXPECT_EQ(sink.Last(), "expression:2: attempt to perform arithmetic on a nil value (global "
                           "'nothing')::return x*3");
    EXPECT_EQ(lua_gettop(lua.mpLuaState), 0) << "the message is popped";

    in = 2;
    EXPECT_TRUE(lua.CallScript(&in, 1, &out, 1, "return x*3"));
    EXPECT_EQ(out, 6);
    EXPECT_FALSE(lua.CallScript(&in, -1, &out, 1, "counts"));
    EXPECT_FALSE(lua.CallScript(&in, 1, &out, LUAI_MAXSTACK, "counts"));
    EXPECT_EQ(lua_gettop(lua.mpLuaState), 0);

    // Quiet mode pops the message without a report; error objects that are not strings say so.
    ASSERT_TRUE(Open(lua, ScriptOf("x", "error({})")));
    EXPECT_FALSE(lua.CallScript(&in, 1, &out, 1, "quiet", false));
    EXPECT_EQ(sink.Count(), 1u);
    EXPECT_EQ(lua_gettop(lua.mpLuaState), 0);
    EXPECT_FALSE(lua.CallScript(&in, 1, &out, 1, "loud"));
    EXPECT_EQ(sink.Last(), "(error object is a table value)::loud");
}

TEST(LuaBase, EndlessLoopsAreStoppedAndReported) {
    const char* bodies[] = {
        "while true do end",
        "local n = 0 repeat n = n + 1 until false",
        "local function f() return f() end return f()", // a proper tail call never overflows the stack
        // A script that catches the stop must not keep itself alive with it.
        "while true do pcall(function() while true do end end) end",
        "while true do xpcall(function() while true do end end, function(m) return m end) end",
        "local co = coroutine.wrap(function() while true do end end) co()",
        "while true do coroutine.resume(coroutine.create(function() for i = 1, 900 do end end)) end",
    };
    for (const char* strBody : bodies) {
        SCOPED_TRACE(strBody);
        SinkCapture_cls sink;
        LuaBase_cls lua;
        ASSERT_TRUE(Open(lua, ScriptOf("x", strBody)));
        double in = 1, out = 9;
        EXPECT_FALSE(lua.CallScript(&in, 1, &out, 1, "Loop"));
        EXPECT_EQ(out, 9) << "the caller keeps its key-framed value";
        ASSERT_EQ(sink.Count(), 1u);
        // The line of the loop leads (coroutine.wrap adds its own position in front of that).
        EXPECT_TRUE(sink.Last().StartsWith("expression:2: ")) << sink.Last();
        EXPECT_TRUE(sink.Last().Contains("script stopped after 50000000 instructions (endless loop?)"));
        EXPECT_TRUE(sink.Last().EndsWith("::Loop"));

        // The same state runs a well-behaved script afterwards at full budget.
        ASSERT_TRUE(Open(lua, ScriptOf("x", "local s = 0 for i = 1, 100000 do s = s + i end return s")));
        EXPECT_TRUE(lua.CallScript(&in, 1, &out, 1, "Loop"));
        EXPECT_EQ(out, 5000050000.0);
    }
}

TEST(LuaBase, EndlessLoopInTheLoadedTextIsStopped) {
    SinkCapture_cls sink;
    LuaBase_cls lua;
    // Text that escapes the function body runs at load time.
    EXPECT_FALSE(Open(lua, ScriptOf("x", "return x end while true do end function g()"), "Load"));
    ASSERT_EQ(sink.Count(), 1u);
    EXPECT_TRUE(sink.Last().Contains("endless loop?")) << sink.Last();
    EXPECT_TRUE(sink.Last().EndsWith("::Load"));
}

TEST(LuaBase, WorkBoundCountsEachCallOnItsOwn) {
    // About 25000 instructions a call; together far beyond the bound, each well within it.
    SinkCapture_cls sink;
    LuaBase_cls lua;
    ASSERT_TRUE(Open(lua, ScriptOf("x", "local s = 0 for i = 1, 5000 do s = s + i * x end return s")));
    const long long callCount = 3 * LuaBase_cls::msInstructionLimit / 25000;
    double in = 1, out = 0;
    for (long long i = 0; i < callCount; i++)
        ASSERT_TRUE(lua.CallScript(&in, 1, &out, 1, "Budget")) << "call " << i << ": " << sink.Last();
    EXPECT_EQ(out, 12502500.0);
}

TEST(LuaBase, MemoryIsLimited) {
    SinkCapture_cls sink;
    LuaBase_cls lua;
    ASSERT_TRUE(Open(lua, ScriptOf("x", "local s = string.rep('x', 1 << 30) return #s")));
    double in = 0, out = -1;
    EXPECT_FALSE(lua.CallScript(&in, 1, &out, 1, "Mem"));
    EXPECT_TRUE(sink.Last().Contains("not enough memory")) << sink.Last();
    EXPECT_TRUE(sink.Last().EndsWith("::Mem"));
    // What was refused is not held: a modest script still runs.
    ASSERT_TRUE(Open(lua, ScriptOf("x", "local s = string.rep('x', 1 << 20) return #s")));
    EXPECT_TRUE(lua.CallScript(&in, 1, &out, 1, "Mem"));
    EXPECT_EQ(out, 1 << 20);
}

TEST(LuaBase, RecompilesWhenTheTextChanges) {
    SinkCapture_cls sink;
    LuaBase_cls lua;
    double in = 4, out = 0;
    ASSERT_TRUE(Open(lua, ScriptOf("x", "counter = (counter or 0) + 1 return x + 1")));
    ASSERT_TRUE(lua.CallScript(&in, 1, &out, 1, "E"));
    EXPECT_EQ(out, 5);

    // Loading into an open state replaces script and keeps the globals (the console's way).
    ASSERT_TRUE(Open(lua, ScriptOf("x", "return x * 10 + counter")));
    ASSERT_TRUE(lua.CallScript(&in, 1, &out, 1, "E"));
    EXPECT_EQ(out, 41);

    // Closing and opening again (the parameter group's way) starts with fresh globals.
    lua.CloseLuaBase();
    EXPECT_FALSE(lua.IsLuaOpen());
    EXPECT_FALSE(lua.CallScript(&in, 1, &out, 1, "E")) << "a closed state passes values through";
    EXPECT_EQ(sink.Count(), 0u) << "a closed state is not an error";
    ASSERT_TRUE(Open(lua, ScriptOf("x", "return x - (counter or 100)")));
    ASSERT_TRUE(lua.CallScript(&in, 1, &out, 1, "E"));
    EXPECT_EQ(out, -96);

    // A broken text leaves the script that the state holds, as a lookup by name would find it.
    ASSERT_TRUE(Open(lua, ScriptOf("x", "return 1")));
    EXPECT_FALSE(Open(lua, ScriptOf("x", "return 2 +")));
    EXPECT_TRUE(lua.CallScript(&in, 1, &out, 1, "E"));
    EXPECT_EQ(out, 1);
    EXPECT_FALSE(Open(lua, "script = function() return 3 end error('late')"));
    EXPECT_TRUE(sink.Last().EndsWith("late::Test")) << sink.Last();
    EXPECT_TRUE(lua.CallScript(&in, 1, &out, 1, "E"));
    EXPECT_EQ(out, 3);

    // A text that no longer defines script leaves no stale entry point behind.
    ASSERT_TRUE(Open(lua, "script = nil"));
    EXPECT_FALSE(lua.CallScript(&in, 1, &out, 1, "E"));
    EXPECT_EQ(sink.Last(), "attempt to call a nil value::E");
}

TEST(LuaBase, GlobalsSetFromTheHost) {
    LuaBase_cls lua;
    lua.SetVariable(1.5, "nt"); // closed: nothing happens
    ASSERT_TRUE(Open(lua, ScriptOf("index", "return nt + frame * 100 + index, math.type(frame)")));
    lua.SetVariable(0.25, "nt");
    lua.SetVariable(3, "frame");
    double in = 2, out[2] = {0, 0};
    ASSERT_TRUE(lua.CallScript(&in, 1, out, 2, "G"));
    EXPECT_DOUBLE_EQ(out[0], 302.25);
    // Integers are pushed as Lua numbers (floats), so math.type is "float", which reads as 0.
    EXPECT_EQ(out[1], 0);
    LuaBase_cls::SetVariable(lua.mpLuaState, 7, "frame");
    ASSERT_TRUE(lua.CallScript(&in, 1, out, 1, "G"));
    EXPECT_DOUBLE_EQ(out[0], 702.25);
    LuaBase_cls::SetVariable(nullptr, 1.0, "ignored");
    lua_pushnumber(lua.mpLuaState, 1);
    lua.ClearLuaStack();
    EXPECT_EQ(lua_gettop(lua.mpLuaState), 0);
}

TEST(LuaBase, HostTablesPlainAndNested) {
    SinkCapture_cls sink;
    luaL_Reg ops[] = {{"Add", HostAdd}, {nullptr, nullptr}};
    luaL_Reg active[] = {{"Name", HostName}, {nullptr, nullptr}};
    luaL_Reg data[] = {{"GetTwo", HostTwo}, {nullptr, nullptr}};
    luaL_Reg* tables[] = {ops, active, data, data};
    wxArrayString names;
    names.Add("Ops");
    names.Add("Ops.ActiveObj");
    names.Add("Data");
    names.Add("Orphan.Child"); // its parent never comes: reported, the rest still opens
    LuaBase_cls lua;
    ASSERT_TRUE(lua.OpenLuaBase(
        ScriptOf("x", "return Ops.Add(x, Data.GetTwo()), Ops.ActiveObj.Name() == 'Box' and 1 or 0, Orphan"),
        4, names, tables, "Host"));
    ASSERT_EQ(sink.Count(), 1u);
    EXPECT_EQ(sink.Last(), "no parent table for Orphan.Child::Host");
    double in = 5, out[3] = {0, 0, -1};
    ASSERT_TRUE(lua.CallScript(&in, 1, out, 3, "Host"));
    EXPECT_EQ(out[0], 7);
    EXPECT_EQ(out[1], 1);
    EXPECT_EQ(out[2], 0);

    // A table count beyond the names is cut to the names.
    LuaBase_cls lua2;
    EXPECT_TRUE(lua2.OpenLuaBase(ScriptOf("", "return Ops.Add(1, 2)"), 9, names, tables, "Host"));
    ASSERT_TRUE(lua2.CallScript(nullptr, 0, out, 1, "Host"));
    EXPECT_EQ(out[0], 3);
}

TEST(LuaBase, PrintGoesToStandardOutput) {
    SinkCapture_cls sink;
    LuaBase_cls lua;
    ASSERT_TRUE(Open(lua, ScriptOf("", "print(1, 'a b', 2.5) print() print(_G.print == print)")));
    {
        CoutCapture_cls cout;
        EXPECT_FALSE(lua.CallScript(nullptr, 0, nullptr, 0, "P"));
        EXPECT_EQ(cout.Text(), "1 a b 2.5 \n\n") << "the last print raised before it wrote";
    }
    EXPECT_EQ(sink.Last(), "expression:2: bad argument #1 to 'print' (string expected, got "
                           "boolean)::P");
}

TEST(LuaBase, COutErrorMessageWritesAndClears) {
    LuaBase_cls lua;
    ASSERT_TRUE(Open(lua, ""));
    lua_pushnumber(lua.mpLuaState, 1);
    lua_pushstring(lua.mpLuaState, "broken line");
    CoutCapture_cls cout;
    lua.COutErrorMessage();
    EXPECT_EQ(cout.Text(), "broken line\n");
    EXPECT_EQ(lua_gettop(lua.mpLuaState), 0);
}

TEST(LuaBase, CopiesStartClosed) {
    LuaBase_cls lua;
    ASSERT_TRUE(Open(lua, ScriptOf("", "return 1")));
    LuaBase_cls copy(lua);
    EXPECT_FALSE(copy.IsLuaOpen());
    EXPECT_TRUE(lua.IsLuaOpen());
    LuaBase_cls assigned;
    ASSERT_TRUE(Open(assigned, ScriptOf("", "return 2")));
    assigned = lua;
    EXPECT_FALSE(assigned.IsLuaOpen());
    double out = 0;
    EXPECT_TRUE(lua.CallScript(nullptr, 0, &out, 1, "C"));
    EXPECT_EQ(out, 1);
}

TEST(LuaBase, IsWordExist) {
    struct Case {
        const char* strText;
        const char* strWord;
        bool bExpected;
    } cases[] = {
        {"return nt * 2", "nt", true},
        {"return print(x)", "nt", false},
        {"nt", "nt", true},
        {"return x, nt", "nt", true},
        {"ntx + xnt + nt_1", "nt", false},
        {"ntx + nt", "nt", true},
        {"return frame", "frame", true},
        {"subframe", "frame", false},
        {"", "nt", false},
        {"return x", "", false},
        {"(nt)", "nt", true},
        {"a.nt", "nt", true},
        {"x\xc3\xa9nt", "nt", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(wxString::Format("'%s' / '%s'", c.strText, c.strWord).ToStdString());
        EXPECT_EQ(LuaBase_cls::IsWordExist(wxString::FromUTF8(c.strText), c.strWord), c.bExpected);
    }
}

TEST(LuaBase, WithoutASinkErrorsGoToTheLog) {
    ASSERT_EQ(LuaErrorSink_cls::Get(), nullptr);
    LogCapture_cls log;
    LuaBase_cls lua;
    EXPECT_FALSE(Open(lua, "this is not lua", "NoSink"));
    ASSERT_EQ(log.mVStrLines.size(), 1u);
    EXPECT_TRUE(log.Contains("syntax error near 'is'::NoSink")) << log.mVStrLines[0];
    LuaErrorSink_cls::Post("Reference Loop::Position");
    EXPECT_TRUE(log.Contains("Reference Loop::Position"));
}

TEST(LuaBase, StatesOnSeparateThreadsDoNotMeet) {
    // The per-particle path: each worker opens, runs and closes its own state, while errors of
    // one worker reach the shared sink.
    SinkCapture_cls sink;
    double results[2][100] = {};
    auto work = [&results](int index) {
        LuaBase_cls lua;
        if (!lua.OpenLuaBase(ScriptOf("i", index == 0 ? "return i * 2" : "return i + nope"), 0,
                             wxArrayString(), nullptr, "Worker"))
            return;
        for (int i = 0; i < 100; i++) {
            double in = i;
            if (!lua.CallScript(&in, 1, &results[index][i], 1, "Worker", i == 0))
                results[index][i] = 0;
        }
    };
    std::thread t0(work, 0), t1(work, 1);
    t0.join();
    t1.join();
    for (int i = 0; i < 100; i++) {
        EXPECT_EQ(results[0][i], 2 * i);
        EXPECT_EQ(results[1][i], 0);
    }
    ASSERT_EQ(sink.Count(), 1u);
    EXPECT_TRUE(sink.Last().EndsWith("(global 'nope')::Worker"));
}

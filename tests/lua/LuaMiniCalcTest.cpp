#include "ClassProvider_cls.h"
#include "GetPC_cls.h"
#include "LuaMiniCalc_cls.h"
#include "LuaTestSupport.h"
#include "Main_cls.h"
#include "ServiceRegistry.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

TEST(LuaMiniCalc, WhatCountsAsAnExpression) {
    struct Case {
        const char* strText;
        bool bExpected;
    } cases[] = {
        {"5", false}, {"5.25", false}, {"", false},   {"1e3", false}, {"abc", false}, {"5+1", true},
        {"-3", true}, {"2*3", true},   {"8/2", true}, {"1e-3", true}, {"+", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.strText);
        EXPECT_EQ(LuaMiniCalc_cls::IsStringExpression(c.strText), c.bExpected);
    }
}

TEST(LuaMiniCalc, Arithmetic) {
    SinkCapture_cls sink;
    struct Case {
        const char* strExpr;
        float expected;
    } cases[] = {
        {"5+1", 6},
        {"-3", -3},
        {"2*3+4", 10},
        {"(2+3)*4", 20},
        {"7/2", 3.5f},
        {"2^10", 1024},
        {"7 // 2", 3},
        {"7 % 4", 3},
        {"math.sqrt(16)", 4},
        {"1e3", 1000},
        {"0.1+0.2", 0.3f},
        {"-2*-2", 4},
        {"'12' + 1", 13},
        {"math.pi", float(M_PI)},
        {"123456789+1", 123456792.0f}, // float keeps about seven digits; accepted
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.strExpr);
        EXPECT_FLOAT_EQ(LuaMiniCalc_cls::GetValue(c.strExpr), c.expected);
    }
    EXPECT_TRUE(std::isinf(LuaMiniCalc_cls::GetValue("1/0")));
    EXPECT_EQ(sink.Count(), 0u) << sink.Last();
}

TEST(LuaMiniCalc, BadInputGivesZeroAndAReport) {
    struct Case {
        const char* strExpr;
        const char* strReport; // empty: no report
    } cases[] = {
        {"5+", "expression:2: unexpected symbol near 'end'::MiniCalc::DoString::"},
        {"*3", "expression:1: unexpected symbol near '*'::MiniCalc::DoString::"},
        {"x+1", "expression:1: attempt to perform arithmetic on a nil value (global "
                "'x')::MiniCalc::"},
        {"'a'+1", "expression:1: attempt to perform arithmetic on a string value::MiniCalc::"},
        {"error('typed')", "expression:1: typed::MiniCalc::"},
        {"", ""},      // "return" of nothing: nil reads as 0
        {"'abc'", ""}, // a result that is no number reads as 0
        {"{}", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.strExpr);
        SinkCapture_cls sink;
        EXPECT_EQ(LuaMiniCalc_cls::GetValue(c.strExpr), 0.0f);
        if (*c.strReport) {
            ASSERT_EQ(sink.Count(), 1u);
            EXPECT_EQ(sink.Last(), c.strReport);
        } else {
            EXPECT_EQ(sink.Count(), 0u) << sink.Last();
        }
    }
}

TEST(LuaMiniCalc, NeitherLoopsNorHogsForever) {
    SinkCapture_cls sink;
    // Text that breaks out of the return line runs when the function is defined.
    EXPECT_EQ(LuaMiniCalc_cls::GetValue("1 end while true do end function f() return 1"), 0.0f);
    ASSERT_EQ(sink.Count(), 1u);
    EXPECT_TRUE(sink.Last().Contains("endless loop?")) << sink.Last();
    EXPECT_TRUE(sink.Last().EndsWith("::MiniCalc::DoString::"));

    EXPECT_EQ(LuaMiniCalc_cls::GetValue("(function() while true do end end)()"), 0.0f);
    ASSERT_EQ(sink.Count(), 2u);
    EXPECT_TRUE(sink.Last().Contains("endless loop?")) << sink.Last();
    EXPECT_TRUE(sink.Last().EndsWith("::MiniCalc::"));

    EXPECT_EQ(LuaMiniCalc_cls::GetValue("#string.rep('x', 1 << 30)"), 0.0f);
    ASSERT_EQ(sink.Count(), 3u);
    EXPECT_TRUE(sink.Last().Contains("not enough memory")) << sink.Last();

    // Each evaluation has a fresh state: nothing leaks from one to the next.
    EXPECT_EQ(LuaMiniCalc_cls::GetValue("(function() leak = 5 return 1 end)()"), 1.0f);
    EXPECT_EQ(LuaMiniCalc_cls::GetValue("leak or 0"), 0.0f);
}

TEST(LuaMiniCalc, IsARegistryService) {
    TempDir_cls tempDir;
    std::unique_ptr<Main_cls> main(new Main_cls(tempDir.mStrPath));
    RegisterServices<ServiceLayer_enum::Lua>();
    main->CreateSingleton();
    ASSERT_NE(GpCLuaMinicalc, nullptr);
    EXPECT_EQ(GetPC_cls::GetPCLuaMinicalc()->GetValue("5+1"), 6.0f);
    main.reset();
    EXPECT_EQ(GpCLuaMinicalc, nullptr);
    ClassProvider_cls::ResetRegistrations();
}

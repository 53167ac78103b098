// Expressions of a group: when Lua is opened, what the script receives, re-compilation after an
// edit, errors, and the detection of reference loops.
#include "ParamFixture.h"

#include <map>
#include <string>

namespace {

// A stand-in for the interpreter's "Data" table: Data.Get(name, nt) gives the values of a
// registered group with its expression, so that two expressions can call each other.
std::map<std::string, ParamGroup_cls*> gGroups;

int l_Get(lua_State* pL) {
    const char* pName = lua_tostring(pL, 1);
    auto it = gGroups.find(pName ? pName : "");
    if (it == gGroups.end())
        return 0;
    std::vector<double> values = it->second->GetVInterpolatedValue(lua_tonumber(pL, 2), true, nullptr, false);
    for (double v : values)
        lua_pushnumber(pL, v);
    return static_cast<int>(values.size());
}

luaL_Reg gDataTable[] = {{"Get", l_Get}, {nullptr, nullptr}};

} // namespace

class ParamExpressionTest : public ParamFixture {
protected:
    void SetUp() override {
        ParamFixture::SetUp();
        SetClock(100, 7, 1);
        mpGroup = std::make_unique<ParamGroup_cls>("Size", Names({"s"}));
        mpGroup->SetInitValue(2.0);
        mMapGroups["Size"] = mpGroup.get();
    }
    void TearDown() override {
        ParamGroup_cls::SetExpressionDataTable(nullptr);
        gGroups.clear();
        mMapGroups.clear();
        mpGroup.reset();
        ParamFixture::TearDown();
    }
    static void SetExpression(ParamGroup_cls& group, const wxString& str) {
        group.mCUseExpr.SetBodyFromData(wxString("1"));
        group.mCExpression.SetBodyFromData(str);
    }
    std::vector<double> Eval(ParamGroup_cls& group, double t) {
        return group.GetVInterpolatedValue(t, true, nullptr, false);
    }

    SinkCapture_cls mSink;
    std::unique_ptr<ParamGroup_cls> mpGroup;
};

TEST_F(ParamExpressionTest, OffMeansNoLuaAndTheDefaultPassesValuesThrough) {
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{2.0});
    EXPECT_FALSE(mpGroup->IsLuaOpen());
    mpGroup->mCUseExpr.SetBodyFromData(wxString("1"));
    // Without bExpression the switch is not looked at either.
    EXPECT_EQ(mpGroup->GetVInterpolatedValue(0.5, false, nullptr, false), std::vector<double>{2.0});
    EXPECT_FALSE(mpGroup->IsLuaOpen());
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{2.0});
    EXPECT_TRUE(mpGroup->IsLuaOpen());
    EXPECT_EQ(mSink.Count(), 0u);
}

TEST_F(ParamExpressionTest, TheScriptGetsTimeFrameSubframeAndStep) {
    ParamGroup_cls rgba("RGBA", Names({"R", "G", "B", "A"}));
    SetExpression(rgba, "return nt, seq, sub, frame");
    // nt 0.255 is frame 25 and a half: subframe 1 of 2. frame is the clock's step: 7 * 2 + 1.
    std::vector<double> v = Eval(rgba, 0.255);
    ASSERT_EQ(v.size(), 4u);
    EXPECT_DOUBLE_EQ(v[0], 0.255);
    EXPECT_EQ(v[1], 25.0);
    EXPECT_EQ(v[2], 1.0);
    EXPECT_EQ(v[3], 15.0);
    SetExpression(rgba, "return R + 1, G * 2, B, A");
    rgba.SetInitValue(1, 2, 3, 4);
    EXPECT_EQ(Eval(rgba, 0.0), (std::vector<double>{2, 4, 3, 4}));
    EXPECT_EQ(rgba.GetStrValues(0.0, true), "2 4 3 4");
    EXPECT_EQ(rgba.GetStrValues(0.0, false), "1 2 3 4");
}

TEST_F(ParamExpressionTest, AnEditIsCompiledAtTheNextEvaluation) {
    SetExpression(*mpGroup, "return s * 10");
    EXPECT_EQ(Eval(*mpGroup, 0.1), std::vector<double>{20.0});
    RunText("Test::Size::Expression=return s * 100\n");
    EXPECT_EQ(mpGroup->mStrCompiledExpression, "return s * 10");
    EXPECT_EQ(Eval(*mpGroup, 0.1), std::vector<double>{200.0});
    EXPECT_EQ(mpGroup->mStrCompiledExpression, "return s * 100");
    // A multi-line expression comes through a command line with its newlines escaped.
    RunText("Test::Size::Expression=local k = 3\\nreturn s * k\n");
    EXPECT_EQ(Eval(*mpGroup, 0.1), std::vector<double>{6.0});
    // The key-framed value is the input.
    mpGroup->mVCParam[0].mVCKey[0].mValue = 5.0;
    EXPECT_EQ(Eval(*mpGroup, 0.1), std::vector<double>{15.0});
}

TEST_F(ParamExpressionTest, ReferringToItselfIsALoopThatEnds) {
    SetExpression(*mpGroup, "local a = This.GetValueAt(nt)\nreturn s + 1 + (a or 100)");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{103.0}); // the inner call gave nothing
    EXPECT_EQ(mSink.Count("Reference Loop::Size"), 1);
    EXPECT_EQ(mpGroup->mRecursionDepth, 0);
    EXPECT_TRUE(mpGroup->IsLuaOpen());
    // Again on the next evaluation; the depth does not creep.
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{103.0});
    EXPECT_EQ(mSink.Count("Reference Loop::Size"), 2);
    // Returning the nothing of the inner call reads as 0.
    SetExpression(*mpGroup, "return This.GetValueAt(nt)");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{0.0});
    // The inner call itself sees the empty vector.
    mpGroup->mRecursionDepth = 1;
    EXPECT_TRUE(mpGroup->CallLuaExpression({2.0}, 0.5).empty());
    EXPECT_EQ(mpGroup->mRecursionDepth, 1);
    mpGroup->mRecursionDepth = 0;
}

TEST_F(ParamExpressionTest, TwoGroupsCallingEachOtherEndWithALoopMessage) {
    ParamGroup_cls::SetExpressionDataTable(gDataTable);
    ParamGroup_cls a("A", Names({"v"}));
    ParamGroup_cls b("B", Names({"v"}));
    gGroups["A"] = &a;
    gGroups["B"] = &b;
    SetExpression(a, "local o = Data.Get(\"B\", nt)\nreturn (o or 0) + 1");
    SetExpression(b, "local o = Data.Get(\"A\", nt)\nreturn (o or 0) + 100");
    EXPECT_EQ(Eval(a, 0.2), std::vector<double>{101.0});
    EXPECT_EQ(mSink.Count("Reference Loop::A"), 1);
    EXPECT_EQ(mSink.Count("Reference Loop::B"), 0);
    EXPECT_EQ(a.mRecursionDepth, 0);
    EXPECT_EQ(b.mRecursionDepth, 0);
    // Without the data table installed, Data is empty and the call is a reported error.
    ParamGroup_cls::SetExpressionDataTable(nullptr);
    ParamGroup_cls c("C", Names({"v"}));
    SetExpression(c, "return Data.Get(\"A\", nt)");
    EXPECT_EQ(Eval(c, 0.2), std::vector<double>{0.0});
    EXPECT_EQ(mSink.Count("::C"), 1);
}

TEST_F(ParamExpressionTest, ErrorsAreReportedOnceAndValuesPassThrough) {
    SetExpression(*mpGroup, "return s +");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{2.0});
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{2.0});
    EXPECT_EQ(mSink.Count("::Size"), 1);
    EXPECT_FALSE(mpGroup->IsLuaOpen());

    SetExpression(*mpGroup, "return nil + s");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{2.0});
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{2.0});
    EXPECT_EQ(mSink.Count("::Size"), 2);
    EXPECT_FALSE(mpGroup->IsLuaOpen());
    EXPECT_EQ(mpGroup->mRecursionDepth, 0);

    // The next edit brings it back.
    SetExpression(*mpGroup, "return -s");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{-2.0});
    // No return: every member reads as 0.
    SetExpression(*mpGroup, "local q = s");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{0.0});
    EXPECT_EQ(mSink.Count("::Size"), 2);
}

TEST_F(ParamExpressionTest, AnEndlessLoopIsStoppedAndTheKeyFramedValuesGoOn) {
    // Typed live: the half-written loop must not freeze the program.
    mpGroup->mVCParam[0].mCTimeDepend.SetBodyFromData(wxString("1"));
    mpGroup->mVCParam[0].mVCKey.push_back(mpGroup->mVCParam[0].mVCKey[0]);
    mpGroup->mVCParam[0].mVCKey[1].mX = 1.0;
    mpGroup->mVCParam[0].mVCKey[1].mValue = 4.0;
    SetExpression(*mpGroup, "while true do s = s + 1 end\nreturn s");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{3.0});
    ASSERT_EQ(mSink.Count(), 1u);
    EXPECT_TRUE(mSink.Last().Contains("endless loop")) << mSink.Last();
    EXPECT_TRUE(mSink.Last().EndsWith("::Size")) << mSink.Last();
    EXPECT_FALSE(mpGroup->IsLuaOpen());
    EXPECT_EQ(mpGroup->mRecursionDepth, 0);
    // Reported once; later frames run on the key frames alone without trying again.
    EXPECT_EQ(Eval(*mpGroup, 0.25), std::vector<double>{2.5});
    EXPECT_EQ(mSink.Count(), 1u);
    // The finished text works.
    SetExpression(*mpGroup, "for i = 1, 3 do s = s + 1 end\nreturn s");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{6.0});
    EXPECT_EQ(mSink.Count(), 1u);
}

TEST_F(ParamExpressionTest, ACopyCompilesItsOwnState) {
    SetExpression(*mpGroup, "return s * 3");
    EXPECT_EQ(Eval(*mpGroup, 0.5), std::vector<double>{6.0});
    ParamGroup_cls copy(*mpGroup);
    EXPECT_FALSE(copy.IsLuaOpen());
    EXPECT_TRUE(copy.mStrCompiledExpression.empty());
    EXPECT_EQ(Eval(copy, 0.5), std::vector<double>{6.0});
    EXPECT_TRUE(copy.IsLuaOpen());
    EXPECT_NE(copy.mpLuaState, mpGroup->mpLuaState);
    mpGroup.reset(); // the copy does not depend on the original's state
    mMapGroups.clear();
    EXPECT_EQ(Eval(copy, 0.5), std::vector<double>{6.0});
}

// Errors name the line of the user's own text, not the line inside the function built around it.
TEST_F(ParamExpressionTest, ErrorsGiveTheLineOfTheUsersText) {
    const struct {
        const char* pText;
        const char* pReport;
    } vCases[] = {
        {"return s + nothing",
         "expression:1: attempt to perform arithmetic on a nil value (global 'nothing')"},
        {"local k = 3\nlocal j = 4\nreturn s + k + nothing",
         "expression:3: attempt to perform arithmetic on a nil value (global 'nothing')"},
        {"local k = 3\nreturn s *", "expression:3: unexpected symbol near 'end'"}, // Lua sees the end
        {"local k = = 3\nreturn s", "expression:1: unexpected symbol near '='"},
    };
    for (const auto& c : vCases) {
        SCOPED_TRACE(c.pText);
        mSink.Clear();
        ParamGroup_cls group("Size", Names({"s"}));
        SetExpression(group, c.pText);
        Eval(group, 0.5);
        ASSERT_GE(mSink.Count(), 1u);
        EXPECT_TRUE(mSink.Texts()[0].StartsWith(wxString(c.pReport) + "::")) << mSink.Texts()[0];
    }
}

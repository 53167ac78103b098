// Groups: key commands on all members with their undo blocks, the member and group one-liners,
// tags, initial keys, text form and copies.
#include "ParamFixture.h"

#include <cmath>

class ParamGroupTest : public ParamFixture {
protected:
    void SetUp() override {
        ParamFixture::SetUp();
        mpGroup = std::make_unique<ParamGroup_cls>("Position", Names({"x", "y", "z"}));
        mpGroup->SetInitValue(1, 2, 3);
        mMapGroups["Position"] = mpGroup.get();
        SetClock(100, 0, 0);
    }
    void TearDown() override {
        mMapGroups.clear();
        mpGroup.reset();
        ParamFixture::TearDown();
    }
    Parameter_cls& M(int i) { return mpGroup->mVCParam[i]; }

    std::unique_ptr<ParamGroup_cls> mpGroup;
};

TEST_F(ParamGroupTest, FreshGroupText) {
    EXPECT_EQ(Text(*mpGroup), "ReadParamGroup::Position\n"
                              "ConfItemList::Begin::Position\n"
                              "Name=Position\nLinked=1\nShy=0\nUseExpr=0\nExpression=return x,y,z\n"
                              "ConfItemList::End\n"
                              "Name=x\nTimeDepend=0\nLocked=0\nExtrapolate=0\nkeyNum=1\n0::0::1::1::1\n"
                              "Name=y\nTimeDepend=0\nLocked=0\nExtrapolate=0\nkeyNum=1\n0::0::2::1::1\n"
                              "Name=z\nTimeDepend=0\nLocked=0\nExtrapolate=0\nkeyNum=1\n0::0::3::1::1\n"
                              "ReadParamGroup::End\n");
    EXPECT_EQ(mpGroup->GetStrMemberListCSV(), "x,y,z");
    EXPECT_EQ(mpGroup->GetStrExpressionMessage(),
              "nt, seq, sub, frame = Normalized Time, Index, Subindex, Scene Frame\nx,y,z = members");
    EXPECT_FALSE(mpGroup->IsTimeDepend());
    EXPECT_EQ(mpGroup->GetStrValues(0.3, false), "1 2 3");
}

TEST_F(ParamGroupTest, InsertKeyOnAConstantGroupIsOneUndoStep) {
    const wxString strBefore = Text(*mpGroup);
    const int start = GpCUndo->GetCurrent();
    mpGroup->InsertKeyCommand(0.5, "Test", 1, 1.0);
    const wxString strAfter = Text(*mpGroup);
    EXPECT_TRUE(mpGroup->IsTimeDepend());
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(testing::Message() << "member " << i);
        EXPECT_TRUE(M(i).IsTimeDepend());
        ASSERT_EQ(M(i).GetKeyNum(), 2);
        EXPECT_EQ(M(i).mVCKey[1].mX, 0.5);
        EXPECT_EQ(M(i).mVCKey[1].mValue, i + 1.0); // no change of shape
    }
    EXPECT_EQ(GpCUndo->mVStrDo[start], "OpenBlock::InsertKeyAsGroup\n");
    EXPECT_EQ(GpCUndo->mVStrDo[start + 1], "Test::Position::x::TimeDepend=1\n");
    EXPECT_EQ(GpCUndo->mVStrUndo[start + 1], "Test::Position::x::TimeDepend=0\n");
    EXPECT_EQ(GpCUndo->mVStrDo.back(), "CloseBlock::InsertKeyAsGroup\n");

    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), start);
    EXPECT_EQ(Text(*mpGroup), strBefore);
    EXPECT_FALSE(mpGroup->IsTimeDepend());
    GpCUndo->Redo();
    EXPECT_EQ(Text(*mpGroup), strAfter);

    // A second key where all members have one already adds nothing but the block markers'
    // empty trace, which disappears.
    const int count = GpCUndo->GetCount();
    mpGroup->InsertKeyCommand(0.5, "Test::Position", 1, 1.0);
    EXPECT_EQ(GpCUndo->GetCount(), count);
}

TEST_F(ParamGroupTest, LinkedKeyOnOneMemberKeysAllMembersWithTheirOwnValues) {
    for (int i = 0; i < 3; ++i) {
        M(i).mCTimeDepend.SetBodyFromData(wxString("1"));
        M(i).mVCKey.push_back(M(i).mVCKey[0]);
        M(i).mVCKey[1].mX = 1.0;
        M(i).mVCKey[1].mValue = 10.0 * (i + 1);
    }
    const wxString strBefore = Text(*mpGroup);
    const int start = GpCUndo->GetCurrent();
    M(1).SetNewKeyCommand(-7, 0.5, "Test::Position::y", 1, 1.0, false);
    EXPECT_EQ(M(1).GetValue(0.5), -7.0);
    EXPECT_DOUBLE_EQ(M(0).GetValue(0.5), 5.5);
    EXPECT_DOUBLE_EQ(M(2).GetValue(0.5), 16.5);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(M(i).GetKeyNum(), 3);
    EXPECT_EQ(GpCUndo->mVStrDo[start], "OpenBlock::SetNewKeyAsGroup\n");
    EXPECT_EQ(GpCUndo->mVStrDo[start + 1], "Test::Position::x::InsertKey::1::0.5::0::5.5::1::1\n");
    GpCUndo->Undo();
    EXPECT_EQ(Text(*mpGroup), strBefore);

    // Through the group itself every member gets the given value.
    mpGroup->SetNewKeyCommand(4, 0.25, "Test::Position", 1, 1.0);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(M(i).GetValue(0.25), 4.0);
}

TEST_F(ParamGroupTest, UnlinkedKeyStaysOnItsMember) {
    mpGroup->mCLinked.SetBodyFromData(wxString("0"));
    M(0).mCTimeDepend.SetBodyFromData(wxString("1"));
    M(0).InsertKeyCommand(0.5, "Test::Position::x", 1, 1.0, false);
    EXPECT_EQ(M(0).GetKeyNum(), 2);
    EXPECT_EQ(M(1).GetKeyNum(), 1);
    EXPECT_EQ(M(2).GetKeyNum(), 1);
    M(0).DeleteKeyCommand(0.5, "Test::Position", false);
    EXPECT_EQ(M(0).GetKeyNum(), 1);

    // Inserting twice at one time leaves one key there, as in a linked group: two keys at one
    // x would give a slope of 0 / 0 and a NaN Hermite segment before them.
    mpGroup->InsertKeyCommand(0.5, "Test::Position", 2, 1.0);
    for (int i = 0; i < 3; ++i)
        M(i).mVCKey[0].mType = 2;
    const int count = GpCUndo->GetCount();
    mpGroup->InsertKeyCommand(0.5, "Test::Position", 2, 1.0);
    M(1).InsertKeyCommand(0.5 + 0.5e-6, "Test::Position::y", 2, 1.0, false);
    EXPECT_EQ(GpCUndo->GetCount(), count);
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(testing::Message() << "member " << i);
        EXPECT_EQ(M(i).GetKeyNum(), 2);
        EXPECT_TRUE(std::isfinite(M(i).GetValue(0.25)));
    }
}

TEST_F(ParamGroupTest, GroupDeleteAndTypeChangeActOnMembersWithAKeyThere) {
    mpGroup->InsertKeyCommand(0.5, "Test::Position", 2, 1.0);
    mpGroup->mCLinked.SetBodyFromData(wxString("0"));
    M(2).DeleteKeyCommand(0.5, "Test::Position::z", false); // z alone loses it
    mpGroup->mCLinked.SetBodyFromData(wxString("1"));
    const wxString strBefore = Text(*mpGroup);

    // A click with modifier flags on x changes the type on every member with a key at 0.5.
    EXPECT_TRUE(M(0).ChangeKeyTypeByModKey("Test::Position::x", 1, true, false, true));
    EXPECT_EQ(M(0).mVCKey[1].mType, 0);
    EXPECT_EQ(M(1).mVCKey[1].mType, 0);
    EXPECT_EQ(GpCUndo->mVStrDo.back(), "CloseBlock::ChangeKeyTypeGroup\n");
    GpCUndo->Undo();
    EXPECT_EQ(Text(*mpGroup), strBefore);

    const int start = GpCUndo->GetCurrent();
    M(1).DeleteKeyCommand(0.5, "Test::Position::y", false);
    EXPECT_EQ(M(0).GetKeyNum(), 1);
    EXPECT_EQ(M(1).GetKeyNum(), 1);
    EXPECT_EQ(GpCUndo->GetCurrent(), start + 4); // open, x, y, close
    GpCUndo->Undo();
    EXPECT_EQ(GpCUndo->GetCurrent(), start);
    EXPECT_EQ(Text(*mpGroup), strBefore);
}

TEST_F(ParamGroupTest, SelectedKeyCommandsRunOnEveryMember) {
    mpGroup->InsertKeyCommand(0.5, "Test::Position", 1, 1.0);
    mpGroup->SelectKey(0.5, true, false, 0.01);
    EXPECT_TRUE(mpGroup->IsSelectedKeyExist());
    const wxString strBefore = Text(*mpGroup);
    const int start = GpCUndo->GetCurrent();
    mpGroup->MoveSelectedTLKeyCommand(0.2, 1.0, "Test::Position");
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(M(i).mVCKey[1].mX, 0.7, 1e-7);
        EXPECT_EQ(M(i).mVCKey[1].mValue, i + 2.0);
    }
    mpGroup->SetSelectedTLKeyTypeCommand("Test::Position", 0, 1.0);
    EXPECT_EQ(M(2).mVCKey[1].mType, 0);
    mpGroup->RescaleParametersCommand(0.5, "Test::Position");
    EXPECT_NEAR(M(1).mVCKey[1].mX, 0.35, 1e-7);
    mpGroup->DeleteSelectedTLKeyCommand("Test::Position");
    EXPECT_EQ(M(0).GetKeyNum(), 1);
    UndoAll(start);
    EXPECT_EQ(Text(*mpGroup), strBefore);
    mpGroup->DeselectKey("Test::Position");
    EXPECT_FALSE(mpGroup->IsSelectedKeyExist());
    mpGroup->SelectKeyAll();
    EXPECT_EQ(M(1).GetSelectedKeyNum(), 2);
}

TEST_F(ParamGroupTest, TagsEndingAtOwnerGroupOrMember) {
    struct Case {
        const char* tag;
        bool bLink;
        const char* result;
    };
    for (const Case& c :
         {Case{"Test", false, "Test::Position"}, Case{"Test::Position", false, "Test::Position"},
          Case{"Test::Position::y", true, "Test::Position"}}) {
        SCOPED_TRACE(c.tag);
        wxString strTag = c.tag;
        EXPECT_EQ(mpGroup->CheckCalledAsLink(strTag), c.bLink);
        mpGroup->CheckTag(strTag);
        EXPECT_EQ(strTag, c.result);
    }
    wxString strTag = "Test::Position";
    M(2).CheckTag(strTag);
    EXPECT_EQ(strTag, "Test::Position::z");
    M(2).CheckTag(strTag);
    EXPECT_EQ(strTag, "Test::Position::z");
    // A group with a member of its own name.
    ParamGroup_cls size("Size", Names({"Size"}));
    strTag = "Test::Size";
    EXPECT_FALSE(size.CheckCalledAsLink(strTag));
    strTag = "Test::Size::Size";
    EXPECT_TRUE(size.CheckCalledAsLink(strTag));
    EXPECT_EQ(strTag, "Test::Size");
}

TEST_F(ParamGroupTest, OneLinersAndTheCounterString) {
    const wxString strCounter = mpGroup->GetStrProcCounter();
    mpGroup->GetVInterpolatedValue(0.5, true, nullptr, false);
    EXPECT_EQ(mpGroup->GetStrProcCounter(), strCounter); // reading values changes nothing
    RunText("Test::Position::Shy=1\n");
    EXPECT_TRUE(mpGroup->mCShy.GetBodyBOOL());
    const wxString strAfterShy = mpGroup->GetStrProcCounter();
    EXPECT_NE(strAfterShy, strCounter);
    RunText("Test::Position::z::Key::0::SetValue::9\n");
    EXPECT_EQ(M(2).mVCKey[0].mValue, 9.0);
    EXPECT_NE(mpGroup->GetStrProcCounter(), strAfterShy);
    // An expression with a Lua label keeps its "::" through the tag split.
    RunText("Test::Position::Expression=::top:: return x,y,z\n");
    EXPECT_EQ(mpGroup->mCExpression.GetBodySTR(), "::top:: return x,y,z");
    EXPECT_FALSE(mpGroup->ReadStrOneLiner("w", "TimeDepend=1"));
}

TEST_F(ParamGroupTest, InitialKeyframesNeedFourMembers) {
    double table[3][5] = {{0, 1, 0, 0, 0}, {0.5, 0.5, 0.5, 0, 0.5}, {1, 0, 1, 1, 1}};
    LogCapture_cls log;
    const wxString strBefore = Text(*mpGroup);
    mpGroup->SetInitKeyframes(3, table);
    EXPECT_EQ(Text(*mpGroup), strBefore);
    EXPECT_TRUE(log.Contains("num == 4"));

    ParamGroup_cls rgba("RGBA", Names({"R", "G", "B", "A"}));
    rgba.SetInitKeyframes(3, table);
    for (int m = 0; m < 4; ++m) {
        SCOPED_TRACE(testing::Message() << "member " << m);
        const Parameter_cls& param = rgba.mVCParam[m];
        EXPECT_TRUE(param.IsTimeDepend());
        ASSERT_EQ(param.GetKeyNum(), 3);
        for (int r = 0; r < 3; ++r) {
            EXPECT_EQ(param.mVCKey[r].mX, table[r][0]);
            EXPECT_EQ(param.mVCKey[r].mValue, table[r][1 + m]);
            EXPECT_EQ(param.mVCKey[r].mType, 1);
            EXPECT_FALSE(param.mVCKey[r].mbSelected);
        }
    }
    EXPECT_DOUBLE_EQ(rgba.GetVInterpolatedValue(0.25, false, nullptr, false)[0], 0.75);
    rgba.SwapRGB();
    EXPECT_EQ(rgba.mVCParam[0].mVCKey[2].mValue, 1.0);
    EXPECT_EQ(rgba.mVCParam[2].mVCKey[2].mValue, 0.0);
    std::vector<float> vf = rgba.GetVInterpolatedValue(0.5f, false, nullptr, false);
    ASSERT_EQ(vf.size(), 4u);
    EXPECT_FLOAT_EQ(vf[3], 0.5f);
}

TEST_F(ParamGroupTest, CopiesAreDeepAndIndependent) {
    mpGroup->InsertKeyCommand(0.5, "Test::Position", 1, 1.0);
    ParamGroup_cls copy(*mpGroup);
    EXPECT_EQ(Text(copy), Text(*mpGroup));
    EXPECT_EQ(copy.mVCParam[1].mpCParamGroup, &copy);
    EXPECT_EQ(copy.GetPCItem("Linked=")->mpStrParentTag, &copy.mStrTag);
    M(1).mVCKey[1].mValue = 42;
    mpGroup->mCExpression.SetBodyFromData(wxString("return 0,0,0"));
    EXPECT_EQ(copy.mVCParam[1].mVCKey[1].mValue, 2.0);
    EXPECT_EQ(copy.mCExpression.GetBodySTR(), "return x,y,z");

    ParamGroup_cls assigned("Other", Names({"a"}));
    assigned = *mpGroup;
    EXPECT_EQ(Text(assigned), Text(*mpGroup));
    EXPECT_EQ(assigned.mVCParam[2].mpCParamGroup, &assigned);
    std::vector<ParamGroup_cls> v;
    for (int i = 0; i < 5; ++i)
        v.push_back(*mpGroup); // reallocations keep every back pointer right
    for (ParamGroup_cls& g : v)
        for (Parameter_cls& p : g.mVCParam)
            EXPECT_EQ(p.mpCParamGroup, &g);
}

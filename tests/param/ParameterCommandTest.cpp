// Every key command of a channel as do, undo and redo: the texts it pushes, the state after
// undo equal to the state before, and the do texts replayed on a copy giving the live state.
#include "ParamFixture.h"

#include <functional>

class ParameterCommandTest : public ParamFixture {
protected:
    void SetUp() override {
        ParamFixture::SetUp();
        mpGroup = std::make_unique<ParamGroup_cls>("Size", Names({"s"}));
        mpGroup->mCLinked.SetBodyFromData(wxString("0"));
        mMapGroups["Size"] = mpGroup.get();
        SetClock(100, 0, 0);
    }
    void TearDown() override {
        mMapGroups.clear();
        mpGroup.reset();
        ParamFixture::TearDown();
    }
    Parameter_cls& S() { return mpGroup->mVCParam[0]; }
    void SetKeys(std::vector<KeyFrame_cls> keys, bool bTimeDepend = true) {
        S().mVCKey = std::move(keys);
        S().mCTimeDepend.SetBodyFromData(wxString(bTimeDepend ? "1" : "0"));
    }

    // Runs the command, then checks undo, redo and the replay of the do texts on a copy of the
    // state before. Returns the number of undo steps the command took.
    int DoUndoRedo(const std::function<void()>& command) {
        const wxString strBefore = Text(*mpGroup);
        ParamGroup_cls copy(*mpGroup);
        const int start = GpCUndo->GetCurrent();
        command();
        const wxString strAfter = Text(*mpGroup);
        const int end = GpCUndo->GetCurrent();
        EXPECT_EQ(end, GpCUndo->GetCount());

        int steps = 0;
        while (GpCUndo->GetCurrent() > start) {
            GpCUndo->Undo();
            ++steps;
        }
        EXPECT_EQ(Text(*mpGroup), strBefore) << "after undo";
        RedoAll();
        EXPECT_EQ(GpCUndo->GetCurrent(), end);
        EXPECT_EQ(Text(*mpGroup), strAfter) << "after redo";

        mMapGroups["Size"] = &copy;
        for (int i = start; i < end; ++i)
            RunText(GpCUndo->mVStrDo[i]);
        mMapGroups["Size"] = mpGroup.get();
        EXPECT_EQ(Text(copy), strAfter) << "replayed";
        return steps;
    }
    wxString LastUndo() const { return GpCUndo->mVStrUndo.back(); }
    wxString LastDo() const { return GpCUndo->mVStrDo.back(); }

    std::unique_ptr<ParamGroup_cls> mpGroup;
};

TEST_F(ParameterCommandTest, SetNewKeyPushesInsertAndDelete) {
    SetKeys({Key(0, 1), Key(1, 3)});
    EXPECT_EQ(DoUndoRedo([&] { S().SetNewKeyCommand(5, 0.5, "Test::Size", 2, 0.5, false); }), 1);
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::1::0.5::0::5::2::0.5\n");
    EXPECT_EQ(LastUndo(), "Test::Size::s::DeleteKey::1\n");
    ASSERT_EQ(S().GetKeyNum(), 3);
    EXPECT_EQ(S().GetValue(0.5), 5.0);

    // Before the first key the new key goes to index 0; the tag may end at the channel.
    DoUndoRedo([&] { S().SetNewKeyCommand(-1, -0.25, "Test::Size::s", 1, 1.0, false); });
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::0::-0.25::0::-1::1::1\n");
}

TEST_F(ParameterCommandTest, AutomaticTypeFollowsTheControllingKey) {
    SetKeys({Key(0, 1, 2, 0.0), Key(0.5, 3, 0)});
    S().SetNewKeyCommand(2, 0.25, "Test::Size", -1, 0.7, false);
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::1::0.25::0::2::2::0\n"); // a flat key makes a flat key
    S().SetNewKeyCommand(2, 0.75, "Test::Size", -1, 0.7, false);
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::3::0.75::0::2::0::0.7\n");
    S().SetNewKeyCommand(2, -0.5, "Test::Size", -1, 0.7, false);
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::0::-0.5::0::2::2::0\n"); // before the first: key 0
}

TEST_F(ParameterCommandTest, InsertKeyTakesTheValueAtX) {
    SetKeys({Key(0, 0), Key(1, 10)});
    DoUndoRedo([&] { S().InsertKeyCommand(0.25, "Test::Size", 1, 1.0, false); });
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::1::0.25::0::2.5::1::1\n");
    // A constant channel takes its first key's value.
    SetKeys({Key(0, 4)}, false);
    S().InsertKeyCommand(0.5, "Test::Size", 1, 1.0, false);
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::1::0.5::0::4::1::1\n");
}

TEST_F(ParameterCommandTest, DeleteKeyUndoLosesTheEaseFactor) {
    SetKeys({Key(0, 0), Key(0.5, 3, 2, 0.5), Key(1, 1)});
    S().mVCKey[1].mbSelected = true;
    const int start = GpCUndo->GetCurrent();
    S().DeleteKeyCommand(0.5, "Test::Size", false);
    EXPECT_EQ(LastDo(), "Test::Size::s::DeleteKey::1\n");
    EXPECT_EQ(LastUndo(), "Test::Size::s::InsertKey::1::0.5::1::3::2\n");
    EXPECT_EQ(S().GetKeyNum(), 2);
    UndoAll(start);
    ASSERT_EQ(S().GetKeyNum(), 3);
    EXPECT_EQ(S().mVCKey[1].mValue, 3.0);
    EXPECT_EQ(S().mVCKey[1].mType, 2);
    EXPECT_TRUE(S().mVCKey[1].mbSelected);
    EXPECT_EQ(S().mVCKey[1].mEaseFactor, 1.0); // not 0.5: the undo text has no ease field

    // Between keys the controlling key goes.
    SetKeys({Key(0, 0), Key(0.5, 3), Key(1, 1)});
    DoUndoRedo([&] { S().DeleteKeyCommand(0.7, "Test::Size", false); });
    ASSERT_EQ(S().GetKeyNum(), 2);
    EXPECT_EQ(S().mVCKey[1].mX, 1.0);
}

TEST_F(ParameterCommandTest, TheOnlyKeyIsNotDeleted) {
    SetKeys({Key(0.2, 5)});
    const int count = GpCUndo->GetCount();
    S().DeleteKeyCommand(0.2, "Test::Size", false);
    S().SelectKeyAll(true);
    S().DeleteSelectedTLKeyCommand("Test::Size");
    EXPECT_EQ(GpCUndo->GetCount(), count);
    EXPECT_EQ(S().GetKeyNum(), 1);
}

TEST_F(ParameterCommandTest, DeleteSelectedKeys) {
    SetKeys({Key(0, 0), Key(0.3, 1), Key(0.6, 2), Key(1, 3)});
    S().mVCKey[1].mbSelected = true;
    S().mVCKey[3].mbSelected = true;
    EXPECT_EQ(DoUndoRedo([&] { S().DeleteSelectedTLKeyCommand("Test::Size"); }), 2);
    ASSERT_EQ(S().GetKeyNum(), 2);
    EXPECT_EQ(S().mVCKey[1].mX, 0.6);
}

TEST_F(ParameterCommandTest, SetKeyValueTypeAndEase) {
    SetKeys({Key(0, 0), Key(1, 2)});
    const int count = GpCUndo->GetCount();
    S().SetKeyValueCommand(1, 2.0, "Test::Size");
    S().SetKeyTypeCommand(1, 1, "Test::Size");
    S().SetKeyEaseFactorCommand(1, 1.0, "Test::Size");
    EXPECT_EQ(GpCUndo->GetCount(), count); // nothing changes, nothing is pushed

    DoUndoRedo([&] { S().SetKeyValueCommand(1, 2.5, "Test::Size"); });
    EXPECT_EQ(LastUndo(), "Test::Size::s::Key::1::SetValue::2\n");
    EXPECT_EQ(LastDo(), "Test::Size::s::Key::1::SetValue::2.5\n");
    DoUndoRedo([&] { S().SetKeyTypeCommand(0, 2, "Test::Size"); });
    EXPECT_EQ(LastDo(), "Test::Size::s::Key::0::SetType::2\n");
    DoUndoRedo([&] { S().SetKeyEaseFactorCommand(0, 0.25, "Test::Size"); });
    EXPECT_EQ(LastUndo(), "Test::Size::s::Key::0::SetEaseFactor::1\n");
    EXPECT_EQ(S().mVCKey[0].mEaseFactor, 0.25);

    // A bad index is refused with a log line.
    LogCapture_cls log;
    S().SetKeyValueCommand(-1, 3.0, "Test::Size");
    S().SetKeyValueCommand(7, 3.0, "Test::Size");
    EXPECT_TRUE(log.Contains("index >= 0"));
    EXPECT_EQ(GpCUndo->GetCount(), count + 3);
}

TEST_F(ParameterCommandTest, SetValueAtTheCurrentTime) {
    // A constant: the first key.
    SetKeys({Key(0, 1)}, false);
    SetClock(100, 50, 0);
    DoUndoRedo([&] { S().SetValueCommand(4, "Test::Size", -1, 1.0); });
    EXPECT_EQ(LastDo(), "Test::Size::s::Key::0::SetValue::4\n");

    // A key at the current time takes the value.
    SetKeys({Key(0, 1), Key(0.5, 2)});
    DoUndoRedo([&] { S().SetValueCommand(6, "Test::Size", -1, 1.0); });
    EXPECT_EQ(LastDo(), "Test::Size::s::Key::1::SetValue::6\n");

    // Otherwise a new key of the default type (here the automatic one: the key before it).
    SetKeys({Key(0, 1, 0), Key(1, 2)});
    DoUndoRedo([&] { S().SetValueCommand(6, "Test::Size", -1, 1.0); });
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::1::0.5::0::6::0::1\n");
    GpCTimeCtrl->mCDefaultKey.SetBodyFromData(wxString("2")); // Hermite with ease 0
    DoUndoRedo([&] { S().SetValueAtCommand(7, 0.25, "Test::Size", -1, 1.0); });
    EXPECT_EQ(LastDo(), "Test::Size::s::InsertKey::1::0.25::0::7::2::0\n");
}

TEST_F(ParameterCommandTest, SetSelectedKeyType) {
    SetKeys({Key(0, 0), Key(0.5, 1), Key(1, 2)});
    S().mVCKey[0].mbSelected = true;
    S().mVCKey[2].mbSelected = true;
    EXPECT_EQ(DoUndoRedo([&] { S().SetSelectedTLKeyTypeCommand("Test::Size", 2, 0.0); }), 4);
    EXPECT_EQ(S().mVCKey[0].mType, 2);
    EXPECT_EQ(S().mVCKey[1].mType, 1);
    EXPECT_EQ(S().mVCKey[2].mEaseFactor, 0.0);
}

TEST_F(ParameterCommandTest, MoveSelectedKeysIsOneStepAndSorts) {
    SetKeys({Key(0, 0), Key(0.2, 1), Key(0.5, 2), Key(0.9, 3)});
    S().mVCKey[1].mbSelected = true;
    S().mVCKey[2].mbSelected = true;
    // Moved to the right past an unselected key; snapped to whole frames (FrameMax 100).
    EXPECT_EQ(DoUndoRedo([&] { S().MoveSelectedTLKeyCommand(0.5012, 0.5, "Test::Size"); }), 1);
    ASSERT_EQ(S().GetKeyNum(), 4);
    EXPECT_NEAR(S().mVCKey[1].mX, 0.7, 1e-7);
    EXPECT_EQ(S().mVCKey[1].mValue, 1.5);
    EXPECT_NEAR(S().mVCKey[2].mX, 0.9, 1e-7);
    EXPECT_NEAR(S().mVCKey[3].mX, 1.0, 1e-7);
    EXPECT_EQ(S().mVCKey[3].mValue, 2.5);
    EXPECT_EQ(GpCUndo->mVStrDo[GpCUndo->GetCount() - 2], "Test::Size::s::SortKey\n");
    EXPECT_EQ(GpCUndo->mVStrDo.back(), "CloseBlock::MoveKeyAndSort\n");
    // The keys passed one another: the undo of the sort puts the order back after sorting.
    EXPECT_TRUE(GpCUndo->mVStrUndo[GpCUndo->GetCount() - 2].StartsWith("Test::Size::s::SortKey\n"));
    EXPECT_TRUE(GpCUndo->mVStrUndo[GpCUndo->GetCount() - 2].Contains("InsertKey::2::1::1::2.5::1::1"));
}

TEST_F(ParameterCommandTest, MoveOntoAnotherKeyDeletesIt) {
    for (double dx : {0.3, -0.3}) {
        SCOPED_TRACE(testing::Message() << "dx " << dx);
        SetKeys({Key(0, 0), Key(0.2, 1), Key(0.5, 2), Key(0.8, 3)});
        const int moved = dx > 0 ? 1 : 2;
        S().mVCKey[moved].mbSelected = true;
        EXPECT_EQ(DoUndoRedo([&] { S().MoveSelectedTLKeyCommand(dx, 0, "Test::Size"); }), 1);
        ASSERT_EQ(S().GetKeyNum(), 3);
        const int at = 1;
        EXPECT_NEAR(S().mVCKey[at].mX, dx > 0 ? 0.5 : 0.2, 1e-7);
        EXPECT_EQ(S().mVCKey[at].mValue, dx > 0 ? 1.0 : 2.0); // the moved key survives
        EXPECT_TRUE(S().mVCKey[at].mbSelected);
    }
}

TEST_F(ParameterCommandTest, MoveOnTheColourGridAndValueOnly) {
    SetKeys({Key(0, 0), Key(0.5, 1), Key(1, 1)});
    S().mVCKey[1].mbSelected = true;
    mpGroup->mbColorCurve = true;
    DoUndoRedo([&] { S().MoveSelectedTLKeyCommand(0.0012, 0, "Test::Size"); });
    EXPECT_NEAR(S().mVCKey[1].mX, 513.0 / 1024.0, 1e-6); // "%g" in the command text
    EXPECT_EQ(GpCUndo->mVStrUndo[GpCUndo->GetCount() - 2], "Test::Size::s::SortKey\n"); // no reordering
    mpGroup->mbColorCurve = false;
    SetKeys({Key(0, 0), Key(0.5, 1), Key(1, 1)});
    // Without a change of x only the value pair (and the sort) is made.
    const int count = GpCUndo->GetCount();
    DoUndoRedo([&] { S().MoveTLKeyCommand(1, 0.0, -0.5, "Test::Size"); });
    EXPECT_EQ(GpCUndo->GetCount(), count + 4); // open, value, sort, close
    EXPECT_EQ(GpCUndo->mVStrDo[count + 1], "Test::Size::s::Key::1::SetValue::0.5\n");
}

TEST_F(ParameterCommandTest, RescaleMovesEveryKey) {
    for (double factor : {2.0, 0.5}) {
        SCOPED_TRACE(testing::Message() << "factor " << factor);
        SetKeys({Key(0, 0), Key(0.1, 1), Key(0.3, 2), Key(0.4, 3)});
        DoUndoRedo([&] { S().RescaleCommand(factor, "Test::Size"); });
        ASSERT_EQ(S().GetKeyNum(), 4);
        const double xs[4] = {0, 0.1, 0.3, 0.4};
        for (int i = 0; i < 4; ++i)
            EXPECT_NEAR(S().mVCKey[i].mX, xs[i] * factor, 1e-6);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(S().mVCKey[i].mValue, i);
    }
    // Keys that land on each other merge.
    SetKeys({Key(0, 0), Key(0.01, 1), Key(0.02, 2), Key(0.5, 3)});
    DoUndoRedo([&] { S().RescaleCommand(0.1, "Test::Size"); });
    ASSERT_EQ(S().GetKeyNum(), 2);
    EXPECT_NEAR(S().mVCKey[1].mX, 0.05, 1e-7);
    // Only a time-dependent channel, and not by 1.
    const int count = GpCUndo->GetCount();
    S().RescaleCommand(1.0, "Test::Size");
    S().mCTimeDepend.SetBodyFromData(wxString("0"));
    S().RescaleCommand(2.0, "Test::Size");
    EXPECT_EQ(GpCUndo->GetCount(), count);
}

TEST_F(ParameterCommandTest, ChangeKeyTypeByModifierKeys) {
    struct Case {
        long from;
        bool a, b, c;
        long to; // -1: no change
    };
    for (const Case& k :
         {Case{2, false, false, false, 1}, Case{0, true, true, true, 1}, Case{1, true, false, true, 0},
          Case{1, true, false, false, 2}, Case{2, true, false, false, 1}, Case{1, false, false, false, -1},
          Case{0, true, false, true, -1}}) {
        SCOPED_TRACE(testing::Message() << "from " << k.from << " flags " << k.a << k.b << k.c);
        SetKeys({Key(0, 0, k.from), Key(1, 1)});
        const int count = GpCUndo->GetCount();
        const bool bChanged = S().ChangeKeyTypeByModKey("Test::Size", 0, k.a, k.b, k.c);
        EXPECT_EQ(bChanged, k.to >= 0);
        EXPECT_EQ(S().mVCKey[0].mType, k.to >= 0 ? k.to : k.from);
        EXPECT_EQ(GpCUndo->GetCount(), count + (bChanged ? 1 : 0));
    }
}

TEST_F(ParameterCommandTest, OneLinersOfTheChannel) {
    SetKeys({Key(0, 0), Key(1, 1)});
    const int counter = S().GetProcCounter();
    RunText("Test::Size::s::Extrapolate=1\nTest::Size::s::Key::1::SetX::0.75\n"
            "Test::Size::s::InsertKey::0::-1::1::9::0::0.5\nTest::Size::s::SortKey\n");
    EXPECT_TRUE(S().IsExtrapolate());
    ASSERT_EQ(S().GetKeyNum(), 3);
    EXPECT_EQ(S().mVCKey[0].mValue, 9.0);
    EXPECT_TRUE(S().mVCKey[0].mbSelected);
    EXPECT_EQ(S().mVCKey[0].mEaseFactor, 0.5);
    EXPECT_EQ(S().mVCKey[2].mX, 0.75);
    EXPECT_EQ(S().GetProcCounter(), counter + 4);

    // Bad indices and verbs are refused with a log line, never a crash.
    LogCapture_cls log;
    const wxString strBefore = Text(S());
    RunText("Test::Size::s::Key::-1::SetValue::3\nTest::Size::s::Key::3::SetValue::3\n"
            "Test::Size::s::DeleteKey::9\nTest::Size::s::InsertKey::-2::0::0::0::1::1\n"
            "Test::Size::s::InsertKey::1::nonsense\nTest::Size::s::Key::x::SetValue::3\n"
            "Test::Size::s::Key::0::Explode::3\n");
    EXPECT_EQ(Text(S()), strBefore);
    EXPECT_TRUE(log.Contains("index >= 0"));
    // Deleting through the one-liner is the one way to an empty vector.
    RunText("Test::Size::s::DeleteKey::0\nTest::Size::s::DeleteKey::0\nTest::Size::s::DeleteKey::0\n");
    EXPECT_EQ(S().GetKeyNum(), 0);
    EXPECT_EQ(S().GetValue(0.5), 0.0);
}

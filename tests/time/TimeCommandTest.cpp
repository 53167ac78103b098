#include "TimeFixture.h"

#include <functional>

namespace {

wxString Text(const std::vector<wxString>& v, size_t from) {
    wxString str;
    for (size_t i = from; i < v.size(); ++i)
        str += v[i];
    return str;
}

} // namespace

class TimeCommandTest : public TimeFixture {
protected:
    // Runs the command and checks do / undo / redo on the whole project text: after the undo
    // the text equals the text before, after the redo the text after the command.
    void CheckDoUndoRedo(const std::function<void()>& funcCommand, const wxString& strExpectDo,
                         const wxString& strExpectUndo) {
        const int before = GpCUndo->GetCount();
        const wxString strBefore = mpMain->SerializeProject();
        funcCommand();
        const wxString strAfter = mpMain->SerializeProject();
        EXPECT_EQ(Text(GpCUndo->mVStrDo, before), strExpectDo);
        EXPECT_EQ(Text(GpCUndo->mVStrUndo, before), strExpectUndo);
        GpCUndo->Undo();
        EXPECT_EQ(mpMain->SerializeProject(), strBefore);
        EXPECT_EQ(GpCUndo->GetCurrent(), before); // one step, blocks included
        GpCUndo->Redo();
        EXPECT_EQ(mpMain->SerializeProject(), strAfter);
        EXPECT_EQ(GpCUndo->GetCurrent(), GpCUndo->GetCount());
    }
};

// The do text names the new state exactly; the verbs it uses are read as checked below, and the
// redo runs it again, so the state after each command needs no check of its own.
TEST_F(TimeCommandTest, CommandsPairNewAndOldValueAndBlocksUndoAsOneStep) {
    SetRange(100, 2, 1);
    SetWA(10, 1, 60, 1);
    SetPos(3, 1);
    struct Case {
        const char* name;
        std::function<void()> funcCommand;
        const char *pDo, *pUndo;
    };
    const Case cases[] = {
        {"SetCurrentFrameCommand", [&] { mpTime->SetCurrentFrameCommand(7); },
         "TimeCtrl::SetFrameCurrent::7\n", "TimeCtrl::SetFrameCurrent::3\n"},
        {"SetCurrentSubFrameCommand", [&] { mpTime->SetCurrentSubFrameCommand(0); },
         "TimeCtrl::SetSubFrameCurrent::0\n", "TimeCtrl::SetSubFrameCurrent::1\n"},
        {"SetWAMinCommand", [&] { mpTime->SetWAMinCommand(5); }, "TimeCtrl::SetWAMin::5\n",
         "TimeCtrl::SetWAMin::10\n"},
        {"SetWAMaxCommand", [&] { mpTime->SetWAMaxCommand(80); }, "TimeCtrl::SetWAMax::80\n",
         "TimeCtrl::SetWAMax::60\n"},
        {"SetRepeatCommand", [&] { mpTime->SetRepeatCommand(true); }, "TimeCtrl::SetRepeat::1\n",
         "TimeCtrl::SetRepeat::0\n"},
        {"SetWARegionCommand", [&] { mpTime->SetWARegionCommand(50, 10, 20); },
         "OpenBlock::TimeWARegion\nTimeCtrl::SetWAMin::40\nTimeCtrl::SetWAMax::70\nCloseBlock::"
         "TimeWARegion\n",
         "CloseBlock::TimeWARegion\nTimeCtrl::SetWAMin::5\nTimeCtrl::SetWAMax::80\nOpenBlock::"
         "TimeWARegion\n"},
        {"SetCurrentFrameToEndCommand(1)", [&] { mpTime->SetCurrentFrameToEndCommand(1); },
         "OpenBlock::ToEnd\nTimeCtrl::SetFrameCurrent::70\nTimeCtrl::SetSubFrameCurrent::1\nCloseBlock::"
         "ToEnd\n",
         "CloseBlock::ToEnd\nTimeCtrl::SetFrameCurrent::7\nTimeCtrl::SetSubFrameCurrent::0\nOpenBlock::"
         "ToEnd\n"},
        {"SetCurrentFrameToEndCommand(-1)", [&] { mpTime->SetCurrentFrameToEndCommand(-1); },
         "OpenBlock::ToEnd\nTimeCtrl::SetFrameCurrent::40\nTimeCtrl::SetSubFrameCurrent::1\nCloseBlock::"
         "ToEnd\n",
         "CloseBlock::ToEnd\nTimeCtrl::SetFrameCurrent::70\nTimeCtrl::SetSubFrameCurrent::1\nOpenBlock::"
         "ToEnd\n"},
        // SetCurrentNTCommand issues only what changes.
        {"NT: both", [&] { mpTime->SetCurrentNTCommand(0.12); },
         "OpenBlock\nTimeCtrl::SetFrameCurrent::12\nTimeCtrl::SetSubFrameCurrent::0\nCloseBlock\n",
         "CloseBlock\nTimeCtrl::SetFrameCurrent::40\nTimeCtrl::SetSubFrameCurrent::1\nOpenBlock\n"},
        {"NT: frame only", [&] { mpTime->SetCurrentNTCommand(0.2); }, "TimeCtrl::SetFrameCurrent::20\n",
         "TimeCtrl::SetFrameCurrent::12\n"},
        {"NT: subframe only", [&] { mpTime->SetCurrentNTCommand(0.205); },
         "TimeCtrl::SetSubFrameCurrent::1\n", "TimeCtrl::SetSubFrameCurrent::0\n"},
        {"SetCurrentFrameToEndCommand(other)", [&] { mpTime->SetCurrentFrameToEndCommand(2); },
         "OpenBlock::ToEnd\nTimeCtrl::SetFrameCurrent::0\nTimeCtrl::SetSubFrameCurrent::0\nCloseBlock::"
         "ToEnd\n",
         "CloseBlock::ToEnd\nTimeCtrl::SetFrameCurrent::20\nTimeCtrl::SetSubFrameCurrent::1\nOpenBlock::"
         "ToEnd\n"},
        {"SetFrameMaxCommand", [&] { mpTime->SetFrameMaxCommand(250); }, "TimeCtrl::SetFrameMax::250\n",
         "TimeCtrl::SetFrameMax::100\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const wxString strBefore = mpMain->SerializeProject();
        CheckDoUndoRedo(c.funcCommand, c.pDo, c.pUndo);
        EXPECT_NE(mpMain->SerializeProject(), strBefore);
    }
    const int count = GpCUndo->GetCount();
    mpTime->SetCurrentNTCommand(1e-9); // nothing changes: nothing is pushed
    EXPECT_EQ(GpCUndo->GetCount(), count);
    EXPECT_EQ(Pos(), std::make_pair(0, 0));
}

TEST_F(TimeCommandTest, StepCommandsCarryAndClamp) {
    SetRange(100, 2, 1);
    struct Case {
        int frame, sub, direction, stepping, expFrame, expSub;
    };
    const Case cases[] = {
        {3, 1, 1, 1, 4, 0},    {3, 0, -1, 1, 2, 1},    {0, 0, -1, 1, 0, 0},    {0, 1, -1, 3, 0, 0},
        {99, 1, 1, 1, 100, 0}, {100, 0, 1, 1, 100, 0}, {100, 0, -1, 1, 99, 1}, {40, 1, 1, 7, 44, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.frame << "," << c.sub << " direction " << c.direction
                                        << " stepping " << c.stepping);
        SetPos(c.frame, c.sub);
        Set(mpTime->mCSubFrameStepping, c.stepping);
        wxString strDo = wxString::Format("OpenBlock::ToNext\nTimeCtrl::SetFrameCurrent::%d\n"
                                          "TimeCtrl::SetSubFrameCurrent::%d\nCloseBlock::ToNext\n",
                                          c.expFrame, c.expSub);
        wxString strUndo = wxString::Format("CloseBlock::ToNext\nTimeCtrl::SetFrameCurrent::%d\n"
                                            "TimeCtrl::SetSubFrameCurrent::%d\nOpenBlock::ToNext\n",
                                            c.frame, c.sub);
        CheckDoUndoRedo([&] { mpTime->SetCurrentFrameToNextCommand(c.direction); }, strDo, strUndo);
        EXPECT_EQ(Pos(), std::make_pair(c.expFrame, c.expSub));
    }
}

TEST_F(TimeCommandTest, StartAndStopPlayLeaveTheirDeliberatePairs) {
    SetRange(100, 2, 1);
    SetPos(3, 1);
    const wxString strBefore = mpMain->SerializeProject();

    mpTime->StartPlayCommand(1);
    EXPECT_EQ(mpTime->GetPlayDirection(), 1);
    EXPECT_EQ(Text(GpCUndo->mVStrDo, 0),
              "OpenBlock::StartPlay\nStartPlay(dummy)\nStartPlay(dummy)\nCloseBlock::StartPlay\n");
    // "SetFrameSubCurrent" is not a verb of the reader: undo restores the frame only.
    EXPECT_EQ(Text(GpCUndo->mVStrUndo, 0), "CloseBlock::StartPlay\nTimeCtrl::SetFrameCurrent::3\n"
                                           "TimeCtrl::SetFrameSubCurrent::1\nOpenBlock::StartPlay\n");
    EXPECT_EQ(mpMain->SerializeProject(), strBefore); // the dummy do texts change nothing

    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(mpTime->ProcPlay());
    EXPECT_EQ(Pos(), std::make_pair(6, 0));
    EXPECT_EQ(GpCUndo->GetCount(), 4); // playback itself leaves no pairs
    const wxString strPlayed = mpMain->SerializeProject();

    mpTime->StopPlayCommand();
    EXPECT_EQ(mpTime->GetPlayDirection(), 0);
    EXPECT_EQ(Text(GpCUndo->mVStrDo, 4), "OpenBlock::StopPlay\nTimeCtrl::SetFrameCurrent::6\n"
                                         "TimeCtrl::SetFrameSubCurrent::0\nCloseBlock::StopPlay\n");
    EXPECT_EQ(Text(GpCUndo->mVStrUndo, 4),
              "CloseBlock::StopPlay\nStopPlay(dummy)\nStopPlay(dummy)\nOpenBlock::StopPlay\n");
    EXPECT_EQ(GpCUndo->GetCurrent(), 8); // recorded, not run
    EXPECT_EQ(mpMain->SerializeProject(), strPlayed);

    GpCUndo->Undo(); // the stop: nothing to restore
    EXPECT_EQ(mpMain->SerializeProject(), strPlayed);
    GpCUndo->Undo(); // the start: back to the frame where playback began
    EXPECT_EQ(Pos(), std::make_pair(3, 0));
    GpCUndo->Redo();
    EXPECT_EQ(Pos(), std::make_pair(3, 0));
    GpCUndo->Redo(); // the stop: forward to where playback ended
    EXPECT_EQ(mpMain->SerializeProject(), strPlayed);
    EXPECT_EQ(mpTime->GetPlayDirection(), 0); // undo and redo never start the clock
}

TEST_F(TimeCommandTest, PlayButtonTwiceStopsAndTheOtherDirectionSwitches) {
    mpTime->StartPlayCommand(1);
    mpTime->StartPlayCommand(-1);
    EXPECT_EQ(mpTime->GetPlayDirection(), -1);
    EXPECT_TRUE(Queued(TimeCtrl_cls::msStrUpdateList));
    int count = GpCUndo->GetCount();
    mpTime->StartPlayCommand(-1);
    EXPECT_EQ(mpTime->GetPlayDirection(), 0);
    EXPECT_EQ(GpCUndo->mVStrDo[count], "OpenBlock::StopPlay\n");
    mpTime->StopPlayCommand(); // stopping a stopped clock is harmless
    EXPECT_EQ(mpTime->GetPlayDirection(), 0);
}

TEST_F(TimeCommandTest, AnimCommandStartsAndStopsARun) {
    SetRange(100, 2, 1);
    SetWA(10, 1, 20, 0);
    SetPos(15, 1);
    bool bFromIn = true;
    mpTime->mFuncRenderFromIn = [&] { return bFromIn; };

    mpTime->AnimCommand(false);
    EXPECT_EQ(Pos(), std::make_pair(10, 1)); // the run starts at the work area start
    EXPECT_EQ(mpTime->GetPlayDirection(), 1);
    EXPECT_TRUE(mpTime->mbOutputRunning);
    EXPECT_FALSE(mpTime->mbFrameWritten);
    EXPECT_FALSE(mpTime->mbOutputResumed);
    EXPECT_TRUE(mpTime->GetExpectTime().IsRunning());
    EXPECT_TRUE(Queued("PROPERTY_RENDER::VIEW3D"));

    mpMain->mVStrPanelQueue.clear();
    mpTime->mbFrameWritten = true;
    mpTime->AnimCommand(false); // running: this stops
    EXPECT_EQ(mpTime->GetPlayDirection(), 0);
    EXPECT_FALSE(mpTime->mbOutputRunning);
    EXPECT_FALSE(mpTime->mbFrameWritten);
    EXPECT_FALSE(mpTime->GetExpectTime().IsRunning());
    EXPECT_TRUE(Queued("PROPERTY_RENDER"));

    SetPos(15, 1);
    mpTime->AnimCommand(true); // resumed: stays where it is
    EXPECT_EQ(Pos(), std::make_pair(15, 1));
    EXPECT_TRUE(mpTime->mbOutputResumed);
    mpTime->StopPlayCommand();
    EXPECT_FALSE(mpTime->mbOutputResumed);

    bFromIn = false;
    mpTime->AnimCommand(false);
    EXPECT_EQ(Pos(), std::make_pair(15, 1));
    mpTime->mFuncRenderFromIn = nullptr;
    mpTime->AnimCommand(false);
    mpTime->AnimCommand(false);
    EXPECT_EQ(Pos(), std::make_pair(15, 1));
}

TEST_F(TimeCommandTest, TimeCtrlVerbsOfTheCommandLanguage) {
    SetRange(100, 2, 1);
    struct Case {
        const char* line;
        std::function<int()> read;
        int expected;
    };
    const Case cases[] = {
        {"TimeCtrl::SetWAMin::12", [&] { return mpTime->GetWAMin(); }, 12},
        {"TimeCtrl::SetWAMax::34", [&] { return mpTime->GetWAMax(); }, 34},
        {"TimeCtrl::SetFrameMax::240", [&] { return mpTime->GetFrameMax(); }, 240},
        {"TimeCtrl::SetFrameCurrent::500", [&] { return mpTime->GetFrameCurrent(); }, 500}, // not clamped
        {"TimeCtrl::SetSubFrameCurrent::1", [&] { return mpTime->GetSubFrameCurrent(); }, 1},
        {"TimeCtrl::SetRepeat::1", [&] { return mpTime->GetRepeat() ? 1 : 0; }, 1},
        {"TimeCtrl::SetWAMin::abc", [&] { return mpTime->GetWAMin(); }, 0},                   // unparsable: 0
        {"TimeCtrl::SetFrameSubCurrent::0", [&] { return mpTime->GetSubFrameCurrent(); }, 1}, // not a verb
        {"TimeCtrl::NoSuchVerb::7", [&] { return mpTime->GetFrameCurrent(); }, 500},
        {"Other::SetWAMin::7", [&] { return mpTime->GetWAMin(); }, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        mpMain->mVStrPanelQueue.clear();
        Run(c.line);
        EXPECT_EQ(c.read(), c.expected);
    }
    mpMain->mVStrPanelQueue.clear();
    Run("TimeCtrl::SetRepeat::0");
    EXPECT_FALSE(mpTime->GetRepeat());
    EXPECT_EQ(
        mpMain->mVStrPanelQueue,
        std::vector<wxString>{"TIMELINE::GRAPH::COLOR_CURVE::VIEW3D::PROPERTY_OBJECT::PROPERTY_MATERIAL::"
                              "PROPERTY_MODIFIER::PROPERTY_DATAPROC::PROPERTY_SCENE::PROPERTY_INFO"});

    std::wistringstream stream;
    EXPECT_TRUE(mpTime->ReadStrLine(stream, "TimeCtrl", "SetWAMin::3"));
    EXPECT_FALSE(mpTime->ReadStrLine(stream, "TimeCtrl", "SetFrameSubCurrent::3"));
    EXPECT_FALSE(mpTime->ReadStrLine(stream, "SceneObjCtrl", "SetWAMin::3"));
}

TEST_F(TimeCommandTest, QueueFlagsLiveForOneIdlePass) {
    Queue_cls* pQueue = GpCQueue;
    ASSERT_NE(pQueue, nullptr);
    Run("TimeCtrl::SetWAMin::3");
    EXPECT_FALSE(pQueue->IsTimeChanged());
    EXPECT_FALSE(pQueue->IsFrameMaxChanged());
    Run("TimeCtrl::SetFrameCurrent::4");
    EXPECT_TRUE(pQueue->IsTimeChanged());
    mpMain->UpdatePanelsFlush();
    EXPECT_FALSE(pQueue->IsTimeChanged());
    Run("TimeCtrl::SetSubFrameCurrent::1");
    EXPECT_TRUE(pQueue->IsTimeChanged());

    Run("TimeCtrl::SetFrameMax::150");
    EXPECT_TRUE(pQueue->IsFrameMaxChanged());
    EXPECT_EQ(pQueue->GetOldFrameMax(), 100);
    mpTime->ProcSetFrameMax(90);
    EXPECT_EQ(pQueue->GetOldFrameMax(), 150);
    mpMain->UpdatePanelsFlush();
    EXPECT_FALSE(pQueue->IsFrameMaxChanged());
    EXPECT_FALSE(pQueue->IsTimeChanged());
    mpMain->UpdatePanelsFlush(); // an empty queue still clears
    EXPECT_FALSE(pQueue->IsTimeChanged());
}

TEST_F(TimeCommandTest, ItemUpdateTagsAreSentWhenTheListIsRead) {
    struct Case {
        const char* item;
        const char* update;
    };
    const Case cases[] = {{"SubFrameMax=3", "TIMELINE"},
                          {"SubFrameStepping=2", "TIMELINE"},
                          {"InterpolateComposite=1", "TIMELINE::VIEW3D"},
                          {"DefaultKey=0", "TIMELINE"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.item);
        mpMain->mVStrPanelQueue.clear();
        RunText(wxString("ConfItemList::Begin::TimeCtrl\n") + c.item + "\nConfItemList::End\n");
        EXPECT_EQ(mpMain->mVStrPanelQueue, std::vector<wxString>{c.update});
    }
    mpMain->mVStrPanelQueue.clear();
    RunText("ConfItemList::Begin::TimeCtrl\nFrameCurrent=9\nRepeat=1\nConfItemList::End\n");
    EXPECT_TRUE(mpMain->mVStrPanelQueue.empty());
    EXPECT_EQ(mpTime->GetFrameCurrent(), 9);
    EXPECT_TRUE(mpTime->GetRepeat());
}

// The clock's play strip in the timeline leaf: each transport button moves the clock as its
// command says and one undo takes it back; the spins, the composite choice, repeat and the key
// type of new keys write the clock's items through command pairs; the strip shows changes made
// elsewhere once the panels are updated.
#include "UiFixture.h"

#include "ClassProvider_cls.h"
#include "DefaultKey_cls.h"
#include "PanelMakers.h"
#include "PlayCtrl_cls.h"
#include "TimeCtrl_cls.h"
#include "Timeline_cls.h"
#include "UiStringTable_cls.h"
#include "UndoManager_cls.h"

#include <wx/bmpbuttn.h>
#include <wx/bmpcbox.h>
#include <wx/combobox.h>
#include <wx/spinctrl.h>
#include <wx/tglbtn.h>

#include <utility>

namespace {

void SendSpin(wxSpinCtrl* pSpin, int value) {
    pSpin->SetValue(value);
    wxSpinEvent event(wxEVT_SPINCTRL, pSpin->GetId());
    event.SetEventObject(pSpin);
    event.SetPosition(value);
    pSpin->GetEventHandler()->ProcessEvent(event);
}

class PlayCtrlTest : public UiFixture {
protected:
    void RegisterLayers() override {
        UiFixture::RegisterLayers();
        RegisterPanelMakers();
    }
    void SetUp() override {
        UiFixture::SetUp();
        if (IsSkipped())
            return;
        ReadFrameLayout(Leaf("TIMELINE"));
        ASSERT_EQ(Leaves().size(), 1u);
        auto* pLeaf = dynamic_cast<Timeline_cls*>(Leaves()[0]);
        ASSERT_NE(pLeaf, nullptr);
        mpStrip = pLeaf->GetPCPlayCtrl();
        ASSERT_NE(mpStrip, nullptr);
        ASSERT_NE(GpCTimeCtrl, nullptr);
        // A work area inside the range and a position inside the work area.
        GpCTimeCtrl->SetWAMinCommand(5);
        GpCTimeCtrl->SetWAMaxCommand(50);
        GpCTimeCtrl->SetCurrentFrameCommand(10);
        GpCUndo->Clear();
        Flush();
    }

    void TearDown() override {
        DefaultKey_cls::msFuncApplyToSelectedKeys = nullptr;
        UiFixture::TearDown();
        UnregisterPanelMakers();
    }

    static std::pair<int, int> Position() {
        return {GpCTimeCtrl->GetFrameCurrent(), GpCTimeCtrl->GetSubFrameCurrent()};
    }
    bool IsMarked(wxWindow* pButton) const {
        return pButton->GetBackgroundColour() == PlayCtrl_cls::GetMarkColour();
    }

    PlayCtrl_cls* mpStrip = nullptr;
};

TEST_F(PlayCtrlTest, StepButtonsMoveTheClockAndOneUndoRestoresIt) {
    struct Case {
        int id;
        std::pair<int, int> expected;
    };
    // From frame 10 subframe 0, two subframes a frame, stepping 1, work area 5 to 50.
    const Case cases[] = {{ID_PLAY_TO_START, {5, 0}},
                          {ID_PLAY_STEP_BACKWARD, {9, 1}},
                          {ID_PLAY_STEP_FORWARD, {10, 1}},
                          {ID_PLAY_TO_END, {50, 0}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.id);
        wxBitmapButton* pButton = mpStrip->GetPCButton(c.id);
        ASSERT_NE(pButton, nullptr);
        Send(pButton, wxEVT_BUTTON);
        EXPECT_EQ(Position(), c.expected);
        EXPECT_EQ(GpCTimeCtrl->GetPlayDirection(), 0);
        GpCUndo->Undo();
        EXPECT_EQ(Position(), std::make_pair(10, 0));
    }
    // The steps stop at the ends of the range, and go by the stepping set in the spin.
    GpCTimeCtrl->SetCurrentFrameCommand(0);
    Send(mpStrip->GetPCButton(ID_PLAY_STEP_BACKWARD), wxEVT_BUTTON);
    EXPECT_EQ(Position(), std::make_pair(0, 0));
    GpCTimeCtrl->SetCurrentFrameCommand(100);
    Send(mpStrip->GetPCButton(ID_PLAY_STEP_FORWARD), wxEVT_BUTTON);
    EXPECT_EQ(Position(), std::make_pair(100, 0));
    GpCTimeCtrl->SetCurrentFrameCommand(10);
    SendSpin(mpStrip->GetPCSpinStepping(), 3);
    Send(mpStrip->GetPCButton(ID_PLAY_STEP_FORWARD), wxEVT_BUTTON);
    EXPECT_EQ(Position(), std::make_pair(11, 1));
}

TEST_F(PlayCtrlTest, PlayButtonsStartAndStopAndMarkTheRunningDirection) {
    for (int direction : {1, -1}) {
        SCOPED_TRACE(direction);
        int id = direction == 1 ? ID_PLAY_FORWARD : ID_PLAY_BACKWARD;
        int other = direction == 1 ? ID_PLAY_BACKWARD : ID_PLAY_FORWARD;
        Send(mpStrip->GetPCButton(id), wxEVT_BUTTON);
        EXPECT_EQ(GpCTimeCtrl->GetPlayDirection(), direction);
        EXPECT_TRUE(IsMarked(mpStrip->GetPCButton(id)));
        EXPECT_FALSE(IsMarked(mpStrip->GetPCButton(other)));
        // Two idle passes of playback, then one undo goes back to where the play started.
        EXPECT_TRUE(GpCTimeCtrl->ProcPlay());
        EXPECT_TRUE(GpCTimeCtrl->ProcPlay());
        EXPECT_EQ(Position(), std::make_pair(10 + direction, 0));
        // The same button again stops.
        Send(mpStrip->GetPCButton(id), wxEVT_BUTTON);
        EXPECT_EQ(GpCTimeCtrl->GetPlayDirection(), 0);
        EXPECT_FALSE(IsMarked(mpStrip->GetPCButton(id)));
        GpCUndo->Undo(); // the stop
        GpCUndo->Undo(); // the start: back to the frame it started from
        EXPECT_EQ(Position(), std::make_pair(10, 0));
    }
}

TEST_F(PlayCtrlTest, SpinsWriteSteppingAndIntervalThroughCommandPairs) {
    struct Case {
        wxSpinCtrl* pSpin;
        int (TimeCtrl_cls::*get)() const;
        int before;
        int after;
    };
    const Case cases[] = {{mpStrip->GetPCSpinStepping(), &TimeCtrl_cls::GetSubFrameStepping, 1, 3},
                          {mpStrip->GetPCSpinInterval(), &TimeCtrl_cls::GetSubFrameMax, 2, 5}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.pSpin->GetId());
        EXPECT_EQ(c.pSpin->GetValue(), c.before);
        int current = GpCUndo->GetCurrent();
        SendSpin(c.pSpin, c.after);
        EXPECT_EQ((GpCTimeCtrl->*c.get)(), c.after);
        EXPECT_EQ(GpCUndo->GetCurrent(), current + 1);
        // The same value again is no new step.
        SendSpin(c.pSpin, c.after);
        EXPECT_EQ(GpCUndo->GetCurrent(), current + 1);
        GpCUndo->Undo();
        EXPECT_EQ((GpCTimeCtrl->*c.get)(), c.before);
        Flush();
        EXPECT_EQ(c.pSpin->GetValue(), c.before);
    }
}

TEST_F(PlayCtrlTest, CompositeChoiceOfImageSetsInterpolateComposite) {
    wxComboBox* pCombo = mpStrip->GetPCComboComposite();
    EXPECT_FALSE(GpCTimeCtrl->IsInterpolateComposite());
    EXPECT_NE(pCombo->GetStringSelection(), "Image");
    pCombo->SetStringSelection("Image");
    Send(pCombo, wxEVT_COMBOBOX);
    EXPECT_TRUE(GpCTimeCtrl->IsInterpolateComposite());
    EXPECT_EQ(GpCTimeCtrl->GetImageCompositeNum(), 2);
    GpCUndo->Undo();
    EXPECT_FALSE(GpCTimeCtrl->IsInterpolateComposite());
    Flush();
    EXPECT_NE(pCombo->GetStringSelection(), "Image");
    // The other entry leaves it off and adds no step.
    int count = GpCUndo->GetCount();
    pCombo->SetSelection(pCombo->GetSelection());
    Send(pCombo, wxEVT_COMBOBOX);
    EXPECT_FALSE(GpCTimeCtrl->IsInterpolateComposite());
    EXPECT_EQ(GpCUndo->GetCount(), count);
}

TEST_F(PlayCtrlTest, RepeatToggleIsUndoableAndShownAfterAChangeElsewhere) {
    wxBitmapToggleButton* pRepeat = mpStrip->GetPCToggleRepeat();
    pRepeat->SetValue(true);
    Send(pRepeat, wxEVT_TOGGLEBUTTON);
    EXPECT_TRUE(GpCTimeCtrl->GetRepeat());
    EXPECT_TRUE(IsMarked(pRepeat));
    GpCUndo->Undo();
    EXPECT_FALSE(GpCTimeCtrl->GetRepeat());
    Flush();
    EXPECT_FALSE(pRepeat->GetValue());
    EXPECT_FALSE(IsMarked(pRepeat));
    // A change from the command language, not from the strip.
    GpCTimeCtrl->SetRepeatCommand(true);
    GpCTimeCtrl->SetFrameMaxCommand(200);
    EXPECT_FALSE(pRepeat->GetValue());
    Flush();
    EXPECT_TRUE(pRepeat->GetValue());
    EXPECT_TRUE(IsMarked(pRepeat));
}

TEST_F(PlayCtrlTest, DefaultKeyComboStoresTheIndexAndTheButtonAppliesTypeAndEaseUnlessAutomatic) {
    std::vector<std::pair<int, double>> vApplied;
    DefaultKey_cls::msFuncApplyToSelectedKeys = [&](int type, double ease) {
        vApplied.push_back({type, ease});
    };
    DefaultKey_cls* pKey = mpStrip->GetPCDefaultKey();
    wxBitmapComboBox* pCombo = pKey->GetPCCombo();
    ASSERT_EQ(UiStringTable_cls::GetList("DefaultKey").size(), 5u);
    ASSERT_EQ(pCombo->GetCount(), 5u);
    EXPECT_EQ(GpCTimeCtrl->GetDefaultKey(), 4);
    EXPECT_EQ(pCombo->GetSelection(), 4);
    EXPECT_EQ(DefaultKey_cls::GetIconTag(4, false), "wxART_TLICON_AUTO");
    EXPECT_EQ(DefaultKey_cls::GetIconTag(2, false), "wxART_TLICON_HERMITE_EASE_N");
    EXPECT_EQ(DefaultKey_cls::GetIconTag(5, false), "");
    const std::pair<int, double> expected[] = {{1, 1.0}, {2, 1.0}, {2, 0.0}, {0, 1.0}};
    for (int value : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(value);
        pCombo->SetSelection(value);
        Send(pCombo, wxEVT_COMBOBOX);
        EXPECT_EQ(GpCTimeCtrl->GetDefaultKey(), value);
        vApplied.clear();
        Send(pKey->GetPCButton(), wxEVT_BUTTON);
        if (value == 4) {
            EXPECT_TRUE(vApplied.empty()); // the automatic kind is chosen per key
            continue;
        }
        ASSERT_EQ(vApplied.size(), 1u);
        EXPECT_EQ(vApplied[0], expected[value]);
        GpCUndo->Undo();
        EXPECT_EQ(GpCTimeCtrl->GetDefaultKey(), 4);
        Flush();
        EXPECT_EQ(pCombo->GetSelection(), 4);
    }
}

} // namespace

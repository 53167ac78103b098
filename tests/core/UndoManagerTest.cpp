#include "CoreFixture.h"

namespace {

// A tiny receiver of the command language: "Set::<v>" appends v to a log and sets the value.
class UndoTest : public CoreFixture {
protected:
    void SetUp() override {
        CoreFixture::SetUp();
        mpMain->SetReceiver(
            RECV_SCENE_OBJ_CTRL,
            [this](std::wistream&, const wxString& strHead, const wxString& strRest) {
                if (strHead != "Set")
                    return false;
                mStrValue = strRest;
                mVStrRun.push_back(strRest);
                return true;
            },
            nullptr);
    }
    void Edit(const wxString& strNew) {
        GpCUndo->PushCommandPair("Set::" + mStrValue, "Set::" + strNew);
        GpCUndo->Redo();
    }
    wxString mStrValue = "0";
    std::vector<wxString> mVStrRun;
};

} // namespace

TEST_F(UndoTest, UndoRedoAndLostRedo) {
    UndoManager_cls& undo = *GpCUndo;
    undo.Undo(); // nothing to undo
    EXPECT_TRUE(mVStrRun.empty());
    undo.Redo();
    EXPECT_TRUE(mpMain->mVStrPanelQueue.empty()); // nothing to redo queues nothing

    Edit("1");
    Edit("2");
    Edit("3");
    EXPECT_EQ(mStrValue, "3");
    EXPECT_EQ(mpMain->mVStrPanelQueue, std::vector<wxString>{"CONSOLE"});
    undo.Undo();
    undo.Undo();
    EXPECT_EQ(mStrValue, "1");
    undo.Redo();
    EXPECT_EQ(mStrValue, "2");
    undo.Undo();
    Edit("9"); // drops both redo entries
    EXPECT_EQ(undo.GetCount(), 2);
    undo.Redo();
    EXPECT_EQ(mStrValue, "9");
    undo.Undo();
    undo.Undo();
    EXPECT_EQ(mStrValue, "0");
    undo.Undo();
    EXPECT_EQ(mStrValue, "0");
}

TEST_F(UndoTest, BlocksAreOneStep) {
    UndoManager_cls& undo = *GpCUndo;
    undo.OpenBlock("DeleteItems");
    undo.CloseBlock("DeleteItems");
    EXPECT_EQ(undo.GetCount(), 0); // an empty block leaves no trace
    EXPECT_EQ(undo.GetCurrent(), 0);

    Edit("a");
    undo.OpenBlock("MoveKeyAndSort");
    Edit("b");
    Edit("c");
    Edit("d");
    undo.CloseBlock("MoveKeyAndSort");
    EXPECT_EQ(mStrValue, "d");
    EXPECT_EQ(undo.mVStrDo[1], "OpenBlock::MoveKeyAndSort\n");
    EXPECT_EQ(undo.mVStrUndo[1], "CloseBlock::MoveKeyAndSort\n");

    mVStrRun.clear();
    undo.Undo();
    EXPECT_EQ(mStrValue, "a");
    EXPECT_EQ(mVStrRun, (std::vector<wxString>{"c", "b", "a"})); // reverse order
    mVStrRun.clear();
    undo.Redo();
    EXPECT_EQ(mStrValue, "d");
    EXPECT_EQ(mVStrRun, (std::vector<wxString>{"b", "c", "d"}));
    undo.Undo();
    undo.Undo();
    EXPECT_EQ(mStrValue, "0");
    undo.Redo();
    EXPECT_EQ(mStrValue, "a");

    wxString strAll = undo.GetStrUndoAll(0);
    EXPECT_TRUE(strAll.Contains("<-- mCurrent=1\n"));
    EXPECT_TRUE(undo.GetStrRedoAll(0).StartsWith("Set::a\n<-- mCurrent=1\nOpenBlock::MoveKeyAndSort\n"));
}

TEST_F(UndoTest, SkipPopAndMultiLineTexts) {
    UndoManager_cls& undo = *GpCUndo;
    mStrValue = "5"; // changed natively
    undo.PushCommandPair("Set::0", "Set::5");
    undo.Skip();
    EXPECT_TRUE(mVStrRun.empty());
    // A pair pushed and popped again leaves nothing to redo.
    undo.PushCommandPair("Set::x", "Set::y");
    undo.PopCommandPair();
    EXPECT_EQ(undo.GetCount(), 1);
    undo.Redo();
    EXPECT_EQ(mStrValue, "5");
    undo.Undo();
    EXPECT_EQ(mStrValue, "0");
    undo.Redo();
    EXPECT_EQ(mStrValue, "5");

    // A do text of several lines runs line by line; a list block is one command.
    Preference_cls& pref = *GpCPreference;
    undo.PushCommandPair("ConfItemList::Begin::Preference\nRelativePath=1\nConfItemList::End",
                         "Set::7\nConfItemList::Begin::Preference\nRelativePath=0\nConfItemList::End");
    undo.Redo();
    EXPECT_EQ(mStrValue, "7");
    EXPECT_EQ(pref.GetRelativePath(), 0);
    undo.Undo();
    EXPECT_EQ(pref.GetRelativePath(), 1);
}

TEST_F(UndoTest, ModifiedFollowsTheIndexAgainstTheSavedOne) {
    UndoManager_cls& undo = *GpCUndo;
    EXPECT_FALSE(undo.IsModified());
    Edit("1");
    EXPECT_TRUE(undo.IsModified());
    undo.Undo();
    EXPECT_FALSE(undo.IsModified()) << "undoing back to the opened state";
    undo.Redo();
    Edit("2");
    undo.MarkSaved();
    EXPECT_FALSE(undo.IsModified());
    {
        SCOPED_TRACE("undo and redo around the saved state");
        undo.Undo();
        EXPECT_TRUE(undo.IsModified());
        undo.Redo();
        EXPECT_FALSE(undo.IsModified());
    }
    {
        SCOPED_TRACE("an empty block leaves no trace, so no change");
        undo.OpenBlock("Empty");
        undo.CloseBlock("Empty");
        EXPECT_FALSE(undo.IsModified());
    }
    {
        SCOPED_TRACE("a new edit after an undo cuts off the saved state for good");
        undo.Undo();
        Edit("3");
        EXPECT_EQ(undo.GetCurrent(), 2); // the same index as at the save, yet another state
        EXPECT_TRUE(undo.IsModified());
        undo.Undo();
        EXPECT_TRUE(undo.IsModified());
    }
    {
        SCOPED_TRACE("a popped pair that the saved state needed");
        undo.Redo();
        undo.MarkSaved();
        undo.Undo();
        undo.PopCommandPair();
        EXPECT_TRUE(undo.IsModified());
    }
    undo.Clear(); // what every file load ends with
    EXPECT_FALSE(undo.IsModified());
}

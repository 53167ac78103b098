#include "CoreFixture.h"
#include "UseGZ_cls.h"

#include <random>

using MainTest = CoreFixture;

TEST_F(MainTest, PanelUpdatesQueueOnceAndFlushLastInFirstOut) {
    int clears = 0;
    mpMain->SetFlushHook([&] { ++clears; });
    mpMain->UpdatePanelsFlush();
    EXPECT_EQ(clears, 1); // an empty queue still drops the read requests

    mpMain->UpdatePanels("VIEW3D");
    mpMain->UpdatePanels("VIEW3D");
    mpMain->UpdatePanels("VIEW3D::OUTLINER");
    mpMain->UpdatePanels("TIMELINE::::CONSOLE");
    EXPECT_EQ(mpMain->mVStrPanelQueue.size(), 3u);
    mpMain->UpdatePanelsFlush();
    // Last in first out; an empty item stops its string.
    EXPECT_EQ(mFrame.mVStrPanels, (std::vector<wxString>{"TIMELINE", "VIEW3D", "OUTLINER", "VIEW3D"}));
    EXPECT_TRUE(mpMain->mVStrPanelQueue.empty());
    EXPECT_EQ(clears, 2);

    std::vector<wxString> vPref;
    GpCPreference->mFuncUpdatePanels = [&](const wxString& str) { vPref.push_back(str); };
    mpMain->UpdatePanels("ALL");
    mpMain->UpdatePanelsFlush();
    EXPECT_EQ(vPref, std::vector<wxString>{"ALL"});
}

TEST_F(MainTest, ProjectTextRoundTripsAndCommentsAreSkipped) {
    std::string text = "FrameMain::0::two views\r\n"
                       "-- a comment\r\n"
                       "/* a block comment\r\n"
                       "ConfItemList::Begin::Preference\r\n"
                       "closing text */ RelativePath=0\r\n"
                       "ConfItemList::Begin::MainConfList\r\n"
                       "LastFileIMG=img/a.png\r\n"
                       "VersionProject=0.10\r\n"
                       "Unknown=1\r\n"
                       "ConfItemList::End\r\n"
                       "Foreign::Line\r\n"
                       "a /* b\r\n"
                       "ConfItemList::Begin::NoSuchList\r\n"
                       "ConfItemList::End\r\n";
    ASSERT_TRUE(OpenText(text));
    EXPECT_EQ(mFrame.mStrLayout, "two views");
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "img/a.png");
    EXPECT_EQ(mpMain->mCVersionProject.GetBodySTR(), "0.10");
    EXPECT_EQ(GpCPreference->GetRelativePath(), 1); // the commented block did not run
    EXPECT_EQ(GpCUndo->GetCount(), 0);
    EXPECT_TRUE(mpMain->mbProjectFileCurrent);
    EXPECT_EQ(mFrame.mTitleUpdates, 1);
    EXPECT_EQ(mpMain->mCLastFileOVP.GetBodySTR(), mDir.Path("p.ovp"));
    EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("p.ovp"));

    ASSERT_TRUE(mpMain->SaveProjectMain(mDir.Path("q.ovp"), 0));
    std::string saved = ReadBytes(mDir.Path("q.ovp"));
    // The frame, then the core's own list (the project path relative to it, the version of this
    // program), then the settings lists.
    EXPECT_EQ(saved.substr(0, saved.find("ConfItemList::Begin::Preference\nRelativePath=1\n")),
              "FrameMain::0::two views\n"
              "ConfItemList::Begin::MainConfList\n"
              "LastFileOVP=p.ovp\n"
              "LastFileIMG=img/a.png\n"
              "LastFilePARTICLE=NONE\n"
              "LastFileVOLUME=NONE\n"
              "LastFileMESH=NONE\n"
              "LastFileHF=NONE\n"
              "LastFileSTREAM=NONE\n"
              "VersionProject=0.47 (2018/9/27)\n"
              "ConfItemList::End\n");
    EXPECT_NE(saved.find("ConfItemList::Begin::MousePreference\n"), std::string::npos);
    EXPECT_EQ(wxGetCwd(), wxFileName(mDir.Path("q.ovp")).GetPath());
    EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("q.ovp"));

    // Written, read back and written again: the same text. Opening makes the file the last
    // project, so the first reopen changes LastFileOVP= once.
    ASSERT_TRUE(mpMain->OpenProjectMain(mDir.Path("q.ovp"), true));
    ASSERT_TRUE(mpMain->SaveProjectMain(mDir.Path("q.ovp"), 0));
    std::string once = ReadBytes(mDir.Path("q.ovp"));
    EXPECT_NE(once.find("LastFileOVP=q.ovp\n"), std::string::npos);
    ASSERT_TRUE(mpMain->OpenProjectMain(mDir.Path("q.ovp"), true));
    ASSERT_TRUE(mpMain->SaveProjectMain(mDir.Path("q.ovp"), 0));
    EXPECT_EQ(ReadBytes(mDir.Path("q.ovp")), once);
    // A gzip project loads like a plain one.
    ASSERT_TRUE(UseGZ_cls::SaveMemoryToGZ(mDir.Path("z.ovp.gz"), saved.data(), (long long)saved.size()));
    mFrame.mStrLayout = "changed";
    ASSERT_TRUE(mpMain->OpenProjectMain(mDir.Path("z.ovp.gz"), true));
    EXPECT_EQ(mFrame.mStrLayout, "two views");
}

TEST_F(MainTest, OneLineBlockCommentAndClosingLineIsDropped) {
    ASSERT_TRUE(OpenText(
        "/* one line */\nFrameMain::0::A\n/*\nFrameMain::0::B\nx */ FrameMain::0::C\nFrameMain::0::D\n"));
    EXPECT_EQ(mFrame.mStrLayout, "D");
    ASSERT_TRUE(OpenText("/* one line */\nFrameMain::0::A\n"));
    EXPECT_EQ(mFrame.mStrLayout, "A");
    // A "/*" further along a line is live text and opens nothing.
    ASSERT_TRUE(OpenText("a /* b\nFrameMain::0::E\n"));
    EXPECT_EQ(mFrame.mStrLayout, "E");
}

TEST_F(MainTest, FailedOpensChangeNothing) {
    GpCUndo->PushCommandPair("x", "y");
    mpMain->UpdatePanels("OUTLINER");
    int cleared = 0;
    mpMain->AddClearHook([&] { ++cleared; });
    {
        LogCapture_cls log;
        EXPECT_FALSE(mpMain->OpenProjectMain(mDir.Path("missing.ovp"), true));
        EXPECT_TRUE(log.Contains("Read Configure Fails " + mDir.Path("missing.ovp")));
    }
    {
        LogCapture_cls log;
        EXPECT_FALSE(mpMain->OpenProjectMain(mDir.Path("Orvantis4Configure.txt"), false));
        EXPECT_TRUE(log.mVStrLines.empty()); // a missing settings file is silent
    }
    EXPECT_FALSE(OpenText("", true, "empty.ovp"));
    EXPECT_EQ(cleared, 0);
    EXPECT_EQ(GpCUndo->GetCount(), 1);
    // The pending updates survive, and every panel is to be rebuilt from the unchanged model.
    EXPECT_EQ(mpMain->mVStrPanelQueue, std::vector<wxString>({"OUTLINER", "ALL"}));
    EXPECT_FALSE(mpMain->mbProjectFileCurrent);

    ASSERT_TRUE(OpenText("FrameMain::0::x\n"));
    EXPECT_EQ(cleared, 1);
    EXPECT_EQ(GpCUndo->GetCount(), 0);
}

TEST_F(MainTest, SettingsFilesAreMergedNotCleared) {
    int cleared = 0;
    mpMain->AddClearHook([&] { ++cleared; });
    ASSERT_TRUE(OpenText("ConfItemList::Begin::MainConfList\nLastFileMESH=m.obj\nConfItemList::End\n", false,
                         "Orvantis4Configure.txt"));
    ASSERT_TRUE(OpenText("FrameMain::0::layout\n", false, "InitLayout.ovp"));
    EXPECT_EQ(cleared, 0);
    EXPECT_FALSE(mpMain->mbProjectFileCurrent);
    EXPECT_EQ(mpMain->mCLastFileMESH.GetBodySTR(), "m.obj");
    EXPECT_TRUE(mpMain->GetStrRecent(0).empty()); // neither counts as a recent file
}

TEST_F(MainTest, RecentFilesRotate) {
    for (int i = 0; i < 12; ++i)
        mpMain->PushBackRecent(wxString::Format("f%d", i));
    EXPECT_EQ(Recent(),
              (std::vector<wxString>{"f11", "f10", "f9", "f8", "f7", "f6", "f5", "f4", "f3", "f2"}));
    mpMain->PushBackRecent("f5"); // moves to the front, the others shift down behind it
    const std::vector<wxString> vRotated = {"f5", "f11", "f10", "f9", "f8", "f7", "f6", "f4", "f3", "f2"};
    EXPECT_EQ(Recent(), vRotated);
    mpMain->PushBackRecent("f5");
    EXPECT_EQ(Recent(), vRotated);

    ASSERT_TRUE(mpMain->SaveRecentFile(mDir.Path("recent.txt")));
    std::string saved = ReadBytes(mDir.Path("recent.txt"));
    EXPECT_EQ(saved.substr(0, 8), "f5\nf11\nf");
    Main_cls* pOld = mpMain.release();
    delete pOld;
    mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
    WriteBytes(mDir.Path("recent.txt"), saved + "  \nextra1  \nextra2\n");
    mpMain->OpenRecentFile(mDir.Path("recent.txt"));
    EXPECT_EQ(Recent(), vRotated);
    mpMain->OpenRecentFile(mDir.Path("none.txt"));
    EXPECT_EQ(Recent(), vRotated);
}

TEST_F(MainTest, QuitWritesSettingsAndRecentFiles) {
    int cleared = 0;
    mpMain->AddClearHook([&] { ++cleared; });
    mpMain->PushBackRecent("/data/a.ovp");
    mpMain->mCLastFileOVP.SetBodyFromData(wxString("None"));
    mpMain->ProcAfterMath("Quit", "");
    EXPECT_EQ(cleared, 1);
    EXPECT_EQ(mFrame.mVStrAfterMath, std::vector<wxString>{"Quit"});
    EXPECT_EQ(ReadBytes(mDir.Path("Orvantis4Recent.txt")), "/data/a.ovp\n");
    std::string conf = ReadBytes(mDir.Path("Orvantis4Configure.txt"));
    EXPECT_EQ(conf.substr(0, 48), "ConfItemList::Begin::MainConfList\nLastFileOVP=No");
    EXPECT_EQ(conf.find("Preference"), std::string::npos); // only the main list
}

TEST_F(MainTest, OpenProjectAsksForThePath) {
    EXPECT_FALSE(mpMain->OpenProject("")); // cancelled
    WriteBytes(mDir.Path("asked.ovp"), "FrameMain::0::asked\n");
    mFrame.mStrAnswer = mDir.Path("asked.ovp");
    EXPECT_TRUE(mpMain->OpenProject(""));
    EXPECT_EQ(mFrame.mStrLayout, "asked");
}

// Any bytes given as a project load without a crash or hang: the shipped demo project and
// start-up layout, with the core's own blocks, cut at every byte and mutated at random.
TEST_F(MainTest, TruncatedAndMutatedProjectsLoad) {
    const std::string core = "FrameMain::0::layout\n"
                             "ConfItemList::Begin::MainConfList\nLastFileIMG=a.png\nLastFileHF=h.raw\n"
                             "ConfItemList::End\n"
                             "ConfItemList::Begin::Preference\nRelativePath=0\nConfItemList::End\n";
    const std::string demo = ReadBytes(ORV_SOURCE_DIR "/examples/demo.ovp");
    const std::string layout = ReadBytes(ORV_SOURCE_DIR "/Resource/InitLayout.ovp");
    ASSERT_FALSE(demo.empty());
    ASSERT_FALSE(layout.empty());
    const std::string text = demo + core + layout;
    const size_t beforeImg = demo.size() + core.find("LastFileIMG=") + 12;
    const size_t afterImg = demo.size() + core.find("LastFileHF=");
    const size_t afterHF = demo.size() + core.find("ConfItemList::End");
    const size_t firstHeadEnd = demo.find("\nConfItemList::") + 1 + std::string("ConfItemList").size();

    LogCapture_cls log;
    std::mt19937 rng(1234);
    for (size_t cut = 0; cut <= text.size(); ++cut) {
        SCOPED_TRACE(cut);
        mpMain->mCLastFileIMG.SetBodyFromData(wxString("NONE"));
        mpMain->mCLastFileHF.SetBodyFromData(wxString("NONE"));
        GpCUndo->PushCommandPair("x", "y");
        bool bOk = OpenText(text.substr(0, cut));
        EXPECT_FALSE(GbLockProjectLoading);
        // Until the first head the program knows is complete, the text is no project; neither is it
        // while that line ends in a lone ":", which makes the head "ConfItemList:".
        EXPECT_EQ(bOk, cut >= firstHeadEnd && cut != firstHeadEnd + 1);
        if (bOk) {
            EXPECT_EQ(GpCUndo->GetCount(), 0);
        }
        // A block cut short keeps the items read before the cut.
        if (cut >= afterImg) {
            EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "a.png");
        } else if (cut < beforeImg) {
            EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "NONE");
        }
        if (cut >= afterHF) {
            EXPECT_EQ(mpMain->mCLastFileHF.GetBodySTR(), "h.raw");
        }
    }
    for (int round = 0; round < 400; ++round) {
        const std::string mutated = MutateText(text, rng);
        OpenText(mutated);
        EXPECT_FALSE(GbLockProjectLoading);
    }
    OpenText(RandomBytes(1235, 4096));
    ASSERT_TRUE(OpenText(text));
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "a.png");
    EXPECT_EQ(GpCPreference->GetRelativePath(), 0);
    EXPECT_EQ(mpMain->mCLastFilePARTICLE.GetBodySTR(), "particles/snap_%04d.dat");
}

// Settings and recent files of any bytes, and a folder given as a file, neither crash nor hang.
TEST_F(MainTest, BadSettingsRecentAndFolderPaths) {
    const std::string noise = RandomBytes(99, 2048);
    LogCapture_cls log;
    OpenText(noise, false, "Orvantis4Configure.txt");
    WriteBytes(mDir.Path("recent.txt"), noise);
    mpMain->OpenRecentFile(mDir.Path("recent.txt"));
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(mpMain->GetStrRecent(i).Contains("\n"));

    // A folder opens like a file on Linux and claims an enormous size: it is refused.
    ASSERT_TRUE(wxFileName::Mkdir(mDir.Path("folder.ovp")));
    ASSERT_TRUE(wxFileName::Mkdir(mDir.Path("folder.ovp.gz")));
    EXPECT_FALSE(mpMain->OpenProjectMain(mDir.Path("folder.ovp"), true));
    EXPECT_TRUE(log.Contains("Read Configure Fails " + mDir.Path("folder.ovp")));
    EXPECT_FALSE(mpMain->OpenProjectMain(mDir.Path("folder.ovp.gz"), true));
    mpMain->OpenRecentFile(mDir.Path("folder.ovp"));
}

// Each line is offered to every receiver in the fixed order, taken or not; writing goes in
// the same order.
TEST_F(MainTest, EveryReceiverHearsEveryLineInOrder) {
    // Every slot but the frame, the core's own list and the preferences gets a probe.
    std::vector<int> vSlots;
    for (int slot = RECV_COLOR_PROVIDER; slot < RECV_COUNT; ++slot)
        if (slot != RECV_PREFERENCE)
            vSlots.push_back(slot);
    std::vector<int> vOrder;
    for (int slot : vSlots)
        mpMain->SetReceiver(
            static_cast<Receiver_enum>(slot),
            [&vOrder, slot](std::wistream&, const wxString& strHead, const wxString&) {
                if (strHead != "Probe")
                    return false;
                vOrder.push_back(slot);
                return true; // taking the line does not stop the broadcast
            },
            [slot](wxString& strOut) { strOut += wxString::Format("W%d\n", slot); });
    ASSERT_TRUE(OpenText("Probe::1\nConfItemList::Begin::Preference\nRelativePath=0\nConfItemList::End\n"));
    EXPECT_EQ(vOrder, vSlots);
    EXPECT_EQ(GpCPreference->GetRelativePath(), 0); // a block still reaches its list

    const wxString strText = mpMain->SerializeProject();
    std::vector<size_t> vPos = {strText.find("FrameMain::0::"),
                                strText.find("ConfItemList::Begin::MainConfList")};
    for (int slot : vSlots) {
        if (slot == RECV_MOUSE_PREFERENCE)
            vPos.push_back(strText.find("ConfItemList::Begin::Preference"));
        vPos.push_back(strText.find(wxString::Format("W%d\n", slot)));
    }
    for (size_t i = 0; i < vPos.size(); ++i) {
        SCOPED_TRACE(i);
        ASSERT_NE(vPos[i], wxString::npos);
        if (i > 0) {
            EXPECT_GT(vPos[i], vPos[i - 1]);
        }
    }
    EXPECT_EQ(vPos[0], 0u);
}

// The loading flag stands exactly while the lines are replayed; the panels hear of the load.
TEST_F(MainTest, LoadMarksTheFlagAndUpdatesPanels) {
    std::vector<bool> vSeen;
    mpMain->SetReceiver(
        RECV_SCENE_OBJ_CTRL,
        [&](std::wistream&, const wxString&, const wxString&) {
            vSeen.push_back(GbLockProjectLoading);
            return false;
        },
        nullptr);
    std::vector<wxString> vPref;
    GpCPreference->mFuncUpdatePanels = [&](const wxString& str) { vPref.push_back(str); };
    EXPECT_FALSE(GbLockProjectLoading);
    ASSERT_TRUE(OpenText("a\nb\n", false));
    EXPECT_EQ(vSeen, (std::vector<bool>{true, true}));
    EXPECT_FALSE(GbLockProjectLoading);
    EXPECT_EQ(mpMain->mVStrPanelQueue, std::vector<wxString>{"PROPERTY_OBJECT"});
    EXPECT_EQ(vPref, std::vector<wxString>{"ALL"});
    EXPECT_FALSE(mpMain->OpenProjectMain(mDir.Path("missing.ovp"), false));
    EXPECT_FALSE(GbLockProjectLoading);
}

// A text the locale cannot hold is saved whole, never as an empty file, and reads back.
TEST_F(MainTest, NonAsciiTextSavesAndReadsBack) {
    const wxString strName = wxString::FromUTF8("W\xc3\xbcrfel/\xe7\x90\x83.png");
    mpMain->mCVersionProject.SetBodyFromData(strName);
    mpMain->mCLastFileIMG.SetBodyFromData(strName);
    wxString strConf = mDir.Path("Orvantis4Configure.txt");
    ASSERT_TRUE(mpMain->SaveConfigureFile(strConf));
    EXPECT_NE(ReadBytes(strConf).find("LastFileIMG="), std::string::npos);
    mpMain->mCLastFileIMG.SetBodyFromData(wxString("NONE"));
    ASSERT_TRUE(mpMain->OpenProjectMain(strConf, false));
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), strName);
}

// What is not a project is refused before anything is cleared, and nothing about the current
// project changes: not its path, the title, the recent list, the undo history.
TEST_F(MainTest, FilesThatAreNotProjectsAreRefusedBeforeAnythingIsCleared) {
    ASSERT_TRUE(OpenText("FrameMain::0::current\n", true, "current.ovp"));
    GpCUndo->PushCommandPair("x", "y");
    int cleared = 0;
    mpMain->AddClearHook([&] { ++cleared; });
    const int titleUpdates = mFrame.mTitleUpdates;
    const std::string noise = RandomBytes(7, 4096, true); // no zero byte: the whole noise is read as text
    const struct {
        const char* pName;
        std::string text;
    } vCases[] = {
        {"random bytes", noise},
        {"a text of no known line", "hello world\nsome::thing::else\n\n-- a comment\n"},
        {"only comments", "-- one\n/* two\nFrameMain::0::inside\n*/\n"},
        {"empty", ""},
    };
    for (const auto& c : vCases) {
        SCOPED_TRACE(c.pName);
        mpMain->mVStrPanelQueue.clear();
        LogCapture_cls log;
        EXPECT_FALSE(OpenText(c.text, true, "other.ovp"));
        EXPECT_TRUE(log.Contains("Cannot open \"" + mDir.Path("other.ovp") + "\": not a project file."))
            << (log.mVStrLines.empty() ? wxString() : log.mVStrLines[0]);
        EXPECT_EQ(cleared, 0);
        EXPECT_EQ(mFrame.mStrLayout, "current");
        EXPECT_EQ(mpMain->mStrProjectPath, mDir.Path("current.ovp"));
        EXPECT_EQ(mpMain->mCLastFileOVP.GetBodySTR(), mDir.Path("current.ovp"));
        EXPECT_EQ(Recent(), std::vector<wxString>{mDir.Path("current.ovp")});
        EXPECT_EQ(mFrame.mTitleUpdates, titleUpdates);
        EXPECT_EQ(GpCUndo->GetCount(), 1);
        // The panels are rebuilt all the same, from the model that stayed.
        EXPECT_EQ(mpMain->mVStrPanelQueue, std::vector<wxString>{"ALL"});
    }
    {
        SCOPED_TRACE("through the file dialog: the working folder and the path stay too");
        const wxString strCwd = wxGetCwd();
        wxFileName::Mkdir(mDir.Path("sub"));
        WriteBytes(mDir.Path("sub/junk.ovp"), noise);
        mFrame.mStrAnswer = mDir.Path("sub/junk.ovp");
        GpCUndo->Clear(); // nothing to ask about
        LogCapture_cls log;
        EXPECT_FALSE(mpMain->OpenProject(""));
        EXPECT_EQ(wxGetCwd(), strCwd);
        EXPECT_EQ(mpMain->mStrProjectPath, mDir.Path("current.ovp"));
    }
}

// A project with lines the program does not understand loads the rest and says how many were
// dropped, quoting the first few; the unknown block's own lines are offered one by one, and none
// is taken.
TEST_F(MainTest, DroppedLinesAreCountedAndTheFirstOnesQuoted) {
    std::string many = "FrameMain::0::many\n";
    for (int i = 0; i < 9; ++i)
        many += "Old::Line" + std::to_string(i) + "\n";
    const struct {
        std::string text;
        wxString strLog; // the end of the one line logged, or empty for no line
    } cases[] = {
        {"FrameMain::0::kept\nForeign::Line\n\nConfItemList::Begin::NoSuchList\nItem=1\nConfItemList::End\n--"
         " c\n",
         "\"" + mDir.Path("p.ovp") +
             "\": 4 lines were not understood and dropped; the rest was read. The first:\n    Foreign::Line\n"
             "    ConfItemList::Begin::NoSuchList\n    Item=1\n    ConfItemList::End"},
        {many, ": 9 lines were not understood and dropped; the rest was read. The first:\n    Old::Line0\n"
               "    Old::Line1\n    Old::Line2\n    Old::Line3\n    Old::Line4\n    ..."},
        {"FrameMain::0::one\nOld::Line\n", ": 1 line was not understood and dropped; the rest was read. "
                                           "The first:\n    Old::Line"},
        {"FrameMain::0::clean\n-- only comments besides\n", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        LogCapture_cls log;
        ASSERT_TRUE(OpenText(c.text));
        ASSERT_EQ(log.mVStrLines.size(), c.strLog.empty() ? 0u : 1u);
        if (!c.strLog.empty()) {
            EXPECT_TRUE(log.mVStrLines[0].EndsWith(c.strLog)) << log.mVStrLines[0];
        }
    }
    EXPECT_EQ(mFrame.mStrLayout, "clean");
}

TEST_F(MainTest, SaveAsMakesTheFileTheProjectAndAFailedSaveChangesNothing) {
    GpCUndo->PushCommandPair("x", "y");
    GpCUndo->Skip();
    ASSERT_TRUE(mpMain->IsProjectModified());
    mFrame.mStrAnswer = mDir.Path("named");
    ASSERT_TRUE(mpMain->SaveProjectAs(1));
    EXPECT_EQ(mpMain->mStrProjectPath, mDir.Path("named.ovp"));
    EXPECT_TRUE(mpMain->mbProjectFileCurrent);
    EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("named.ovp"));
    EXPECT_EQ(mpMain->mCLastFileOVP.GetBodySTR(), mDir.Path("named.ovp"));
    EXPECT_EQ(mFrame.mTitleUpdates, 1);
    EXPECT_FALSE(mpMain->IsProjectModified());

    {
        SCOPED_TRACE("a folder that does not exist: the path and the reason are told");
        LogCapture_cls log;
        const wxString strBad = mDir.Path("no/such/dir/x.ovp");
        EXPECT_FALSE(mpMain->SaveProjectMain(strBad, 1));
        EXPECT_TRUE(log.Contains("Cannot save the project to \"" + strBad + "\": No such file or directory."))
            << (log.mVStrLines.empty() ? wxString() : log.mVStrLines[0]);
        EXPECT_EQ(mpMain->mStrProjectPath, mDir.Path("named.ovp"));
        EXPECT_EQ(Recent(), std::vector<wxString>{mDir.Path("named.ovp")});
        EXPECT_EQ(mFrame.mTitleUpdates, 1);
    }
    {
        SCOPED_TRACE("a file that cannot be replaced stays as it was");
        GpCUndo->PushCommandPair("x", "y");
        GpCUndo->Skip();
        ASSERT_TRUE(WriteBytes(mDir.Path("keep.ovp"), "old text\n"));
        wxFileName::Mkdir(mDir.Path("keep.ovp.saving~"));
        LogCapture_cls log;
        EXPECT_FALSE(mpMain->SaveProjectMain(mDir.Path("keep.ovp"), 1));
        EXPECT_TRUE(log.Contains("Cannot save the project to \"" + mDir.Path("keep.ovp") + "\": "));
        EXPECT_EQ(ReadBytes(mDir.Path("keep.ovp")), "old text\n");
        EXPECT_TRUE(mpMain->IsProjectModified());
    }
}

// With unsaved changes, opening another project or a recent one first asks Save / Discard /
// Cancel; without, nothing is asked.
TEST_F(MainTest, UnsavedChangesAreOfferedForSavingBeforeAnOpen) {
    ASSERT_TRUE(WriteBytes(mDir.Path("next.ovp"), "FrameMain::0::next\n"));
    mpMain->mStrProjectPath = mDir.Path("mine.ovp");
    mpMain->mbProjectFileCurrent = true;
    auto edit = [] {
        GpCUndo->PushCommandPair("x", "y");
        GpCUndo->Skip();
    };
    {
        SCOPED_TRACE("unmodified: no question");
        EXPECT_TRUE(mpMain->CheckUnsavedChanges());
        EXPECT_TRUE(mFrame.mVStrAsked.empty());
    }
    edit();
    {
        SCOPED_TRACE("Cancel, or closing the question: nothing opens");
        for (int answer : {int(Main_cls::ANSWER_CANCEL), -1}) {
            mFrame.mAnswer = answer;
            EXPECT_FALSE(mpMain->OpenProject(mDir.Path("next.ovp")));
            EXPECT_EQ(mFrame.mStrLayout, "single");
            EXPECT_TRUE(mpMain->IsProjectModified());
        }
        ASSERT_EQ(mFrame.mVStrAsked.size(), 2u);
        EXPECT_EQ(mFrame.mVStrAsked[0], "Unsaved changes: Save the changes to \"" + mDir.Path("mine.ovp") +
                                            "\" before it is closed?");
        EXPECT_FALSE(wxFileExists(mDir.Path("mine.ovp")));
    }
    {
        SCOPED_TRACE("Save: the project is written to its file, then the other opens");
        mFrame.mAnswer = Main_cls::ANSWER_SAVE;
        EXPECT_TRUE(mpMain->OpenProject(mDir.Path("next.ovp")));
        EXPECT_EQ(ReadBytes(mDir.Path("mine.ovp")).rfind("FrameMain::0::single", 0), 0u);
        EXPECT_EQ(mFrame.mStrLayout, "next");
        EXPECT_FALSE(mpMain->IsProjectModified());
    }
    {
        SCOPED_TRACE("Discard: opened without saving");
        edit();
        mFrame.mStrLayout = "changed";
        mFrame.mAnswer = Main_cls::ANSWER_DISCARD;
        EXPECT_TRUE(mpMain->OpenProject(mDir.Path("mine.ovp")));
        EXPECT_EQ(mFrame.mStrLayout, "single");
        EXPECT_EQ(ReadBytes(mDir.Path("next.ovp")), "FrameMain::0::next\n");
    }
    {
        SCOPED_TRACE("Save of a new project whose name is not given: nothing opens");
        edit();
        mpMain->mStrProjectPath.clear();
        mpMain->mbProjectFileCurrent = false;
        mFrame.mStrAnswer.clear();
        mFrame.mAnswer = Main_cls::ANSWER_SAVE;
        EXPECT_FALSE(mpMain->OpenProject(mDir.Path("next.ovp")));
        EXPECT_TRUE(mFrame.mVStrAsked.back().Contains("Save the changes to the new project"));
        EXPECT_EQ(mFrame.mStrLayout, "single");
    }
}

TEST_F(MainTest, ARecentProjectThatMovedIsOfferedForRemoval) {
    ASSERT_TRUE(WriteBytes(mDir.Path("here.ovp"), "FrameMain::0::here\n"));
    mpMain->PushBackRecent(mDir.Path("here.ovp"));
    mpMain->PushBackRecent(mDir.Path("gone.ovp"));
    mpMain->PushBackRecent(mDir.Path("moved.ovp"));
    {
        LogCapture_cls log;
        mFrame.mAnswer = 1; // keep it
        EXPECT_FALSE(mpMain->OpenRecentProject(0));
        EXPECT_TRUE(
            log.Contains("The recent project \"" + mDir.Path("moved.ovp") + "\" is not there any more."));
        ASSERT_EQ(mFrame.mVStrAsked.size(), 1u);
        EXPECT_TRUE(mFrame.mVStrAsked[0].Contains("Remove it from the recent list?"));
        EXPECT_EQ(mpMain->GetStrRecent(0), mDir.Path("moved.ovp"));
    }
    {
        LogCapture_cls log;
        mFrame.mAnswer = 0; // remove it: the others move up
        EXPECT_FALSE(mpMain->OpenRecentProject(1));
        EXPECT_EQ(Recent(), (std::vector<wxString>{mDir.Path("moved.ovp"), mDir.Path("here.ovp")}));
    }
    EXPECT_FALSE(mpMain->OpenRecentProject(5)); // an empty slot does nothing
    EXPECT_EQ(mFrame.mVStrAsked.size(), 2u);
    EXPECT_TRUE(mpMain->OpenRecentProject(1));
    EXPECT_EQ(mFrame.mStrLayout, "here");
}

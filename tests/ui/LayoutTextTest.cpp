// The window layout as lines of the project file: written and read in their exact order,
// through the core's command language like any other block.
#include "UiFixture.h"

#include "PlaceholderPanel_cls.h"

namespace {

const wxString gLayout =
    Frame(Split('V', 600,
                Split('H', 420, Leaf("VIEW3D"),
                      Leaf("TIMELINE", "ConfItemList::Begin::TimeLine\nShowKeyOnly=1\nConfItemList::End\n")),
                Split('H', 250, Leaf("OUTLINER"), Split('V', 200, Leaf("CONSOLE"), Leaf("Undefiend")))));

} // namespace

using LayoutTextTest = UiFixture;

TEST_F(LayoutTextTest, ALayoutReadsBackToTheSameText) {
    ReadLayout(gLayout);
    std::vector<wxString> vNames;
    for (wxPanelEX* pPanel : Leaves())
        vNames.push_back(pPanel->GetName());
    EXPECT_EQ(vNames, std::vector<wxString>({"VIEW3D", "TIMELINE", "OUTLINER", "CONSOLE"}));

    wxString strOut;
    mpFrame->Serialize(strOut, 0);
    EXPECT_EQ(strOut, gLayout);

    SCOPED_TRACE("the project text starts with the window block, and a save reads back the same");
    wxString strProject = mpMain->SerializeProject();
    EXPECT_TRUE(strProject.StartsWith(gLayout)) << strProject;
    wxString strPath = mDir.Path("saved.ovp");
    ASSERT_TRUE(mpMain->SaveProjectMain(strPath, 0));
    mpFrame->MakeSinglePanel();
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, false));
    mpFrame->Layout();
    wxString strAgain;
    mpFrame->Serialize(strAgain, 0);
    EXPECT_EQ(strAgain, gLayout);
    EXPECT_EQ(mpFrame->GetStrWindows() + "FrameMain::Close\n", strAgain.Mid(strAgain.Find('\n') + 1));
}

TEST_F(LayoutTextTest, BodylessPanelsAndUnknownNamesAreReadInOrder) {
    struct Case {
        const char* pName;
        wxString strLayout;
        wxString strExpected; // the text written back; empty: the same as read
        std::vector<wxString> vLeaves;
    };
    const wxString strUndefined = Frame(Leaf("Undefiend"));
    const Case vCases[] = {
        // The close line ends the panel block at once.
        {"an outliner leaf with an empty block", Frame(Leaf("OUTLINER")), "", {"OUTLINER"}},
        {"a dummy leaf", Frame(Leaf("DUMMY")), "", {"DUMMY"}},
        {"a name outside the table leaves the leaf empty", Frame(Leaf("NOSUCHPANEL")), strUndefined, {}},
        {"a property page type is no leaf", Frame(Leaf("PROPERTY_OBJECT")), strUndefined, {}},
        {"a window block without a tree gets the single 3D view",
         Frame(""),
         Frame(Leaf("VIEW3D")),
         {"VIEW3D"}},
        {"a block of a panel that has none is not written back",
         Frame(Leaf("CONSOLE", "ConfItemList::Begin::Console\nLines=3\nConfItemList::End\n")),
         Frame(Leaf("CONSOLE")),
         {"CONSOLE"}},
    };
    for (const Case& c : vCases) {
        SCOPED_TRACE(c.pName);
        ReadLayout(c.strLayout);
        std::vector<wxString> vNames;
        for (wxPanelEX* pPanel : Leaves())
            vNames.push_back(pPanel->GetName());
        EXPECT_EQ(vNames, c.vLeaves);
        wxString strOut;
        mpFrame->Serialize(strOut, 0);
        EXPECT_EQ(strOut, c.strExpected.empty() ? c.strLayout : c.strExpected);
    }
}

TEST_F(LayoutTextTest, TheFrameTakesTheSizeOfItsBlockAndLinesAroundItPass) {
    ReadLayout("-- a comment\n" + Frame(Leaf("GRAPH"), "0::900::700") +
               "ConfItemList::Begin::MainConfList\n"
               "LastFileIMG=/tmp/picture.png\n"
               "ConfItemList::End\n");
    EXPECT_EQ(mpFrame->GetSize(), wxSize(900, 700));
    ASSERT_EQ(Leaves().size(), 1u);
    EXPECT_EQ(Leaves()[0]->GetName(), "GRAPH");
    EXPECT_EQ(mpMain->mCLastFileIMG.GetBodySTR(), "/tmp/picture.png");
}

TEST_F(LayoutTextTest, CorruptNestingIsLoggedAndDoesNotStopTheProgram) {
    LogCapture_cls log;
    ReadLayout(Frame("SplittableWindow::SeparatePanel::H::300\nPanelA\nwxPanelEX::VIEW3D\nPanelB\n" +
                     Leaf("OUTLINER") + "SplittableWindow::Close\n"));
    EXPECT_TRUE(log.Contains("strFirstItemA.IsSameAs(wxT(\"SplittableWindow\"))"));
    // The side that was lost becomes an empty leaf; the other side is read.
    SplittableWindow_cls* pTop = mpFrame->GetPCTopWindow();
    ASSERT_TRUE(pTop->IsSplit());
    EXPECT_EQ(pTop->mpCChildSWindow[0]->GetPCPanel(), nullptr);
    ASSERT_NE(pTop->mpCChildSWindow[1]->GetPCPanel(), nullptr);
    EXPECT_EQ(pTop->mpCChildSWindow[1]->GetPCPanel()->GetName(), "OUTLINER");

    SCOPED_TRACE("a layout cut short ends where the file ends");
    ReadLayout("FrameMain::0::1000::800\nSplittableWindow::SeparatePanel::V::300\nPanelA\n"
               "SplittableWindow::Panel\nwxPanelEX::CONSOLE\n");
    EXPECT_EQ(Leaves().size(), 1u);
}

TEST_F(LayoutTextTest, AStandInPanelSaysWhatItIsAndKeepsItsBlock) {
    ReadLayout(gLayout);
    auto* pTimeline = dynamic_cast<PlaceholderPanel_cls*>(Leaves().at(1));
    ASSERT_NE(pTimeline, nullptr);
    EXPECT_EQ(pTimeline->mStrBlock, "ConfItemList::Begin::TimeLine\nShowKeyOnly=1\nConfItemList::End\n");
    EXPECT_EQ(PlaceholderPanel_cls::GetStrNotAvailable(_PANEL_TIMELINE),
              "The Timeline panel is not available yet.");
    bool bFound = false;
    for (wxWindow* pChild : pTimeline->GetChildren())
        if (auto* pText = dynamic_cast<wxStaticText*>(pChild))
            bFound = bFound || pText->GetLabel() == "The Timeline panel is not available yet.";
    EXPECT_TRUE(bFound);
}

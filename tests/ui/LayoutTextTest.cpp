// The window layout as lines of the project file: written and read in their exact order,
// through the core's command language like any other block.
#include "UiFixture.h"

#include "PlaceholderPanel_cls.h"

namespace {

const char* const gLayout = "FrameMain::0::1000::800\n"
                            "SplittableWindow::SeparatePanel::V::600\n"
                            "PanelA\n"
                            "SplittableWindow::SeparatePanel::H::420\n"
                            "PanelA\n"
                            "SplittableWindow::Panel\n"
                            "wxPanelEX::VIEW3D\n"
                            "SplittableWindow::Close\n"
                            "PanelB\n"
                            "SplittableWindow::Panel\n"
                            "wxPanelEX::TIMELINE\n"
                            "ConfItemList::Begin::TimeLine\n"
                            "ShowKeyOnly=1\n"
                            "ConfItemList::End\n"
                            "SplittableWindow::Close\n"
                            "SplittableWindow::Close\n"
                            "PanelB\n"
                            "SplittableWindow::SeparatePanel::H::250\n"
                            "PanelA\n"
                            "SplittableWindow::Panel\n"
                            "wxPanelEX::OUTLINER\n"
                            "SplittableWindow::Close\n"
                            "PanelB\n"
                            "SplittableWindow::SeparatePanel::V::200\n"
                            "PanelA\n"
                            "SplittableWindow::Panel\n"
                            "wxPanelEX::CONSOLE\n"
                            "SplittableWindow::Close\n"
                            "PanelB\n"
                            "SplittableWindow::Panel\n"
                            "wxPanelEX::Undefiend\n"
                            "SplittableWindow::Close\n"
                            "SplittableWindow::Close\n"
                            "SplittableWindow::Close\n"
                            "SplittableWindow::Close\n"
                            "FrameMain::Close\n";

wxString Text(const char* p) {
    return wxString::FromUTF8(p);
}

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
    EXPECT_EQ(strOut, Text(gLayout));

    SCOPED_TRACE("the project text starts with the window block, and a save reads back the same");
    wxString strProject = mpMain->SerializeProject();
    EXPECT_TRUE(strProject.StartsWith(Text(gLayout))) << strProject;
    wxString strPath = mDir.Path("saved.ovp");
    ASSERT_TRUE(mpMain->SaveProjectMain(strPath, 0));
    mpFrame->MakeSinglePanel();
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, false));
    mpFrame->Layout();
    wxString strAgain;
    mpFrame->Serialize(strAgain, 0);
    EXPECT_EQ(strAgain, Text(gLayout));
    EXPECT_EQ(mpFrame->GetStrWindows() + "FrameMain::Close\n", strAgain.Mid(strAgain.Find('\n') + 1));
}

TEST_F(LayoutTextTest, BodylessPanelsAndUnknownNamesAreReadInOrder) {
    struct Case {
        const char* pName;
        const char* pLayout;
        const char* pExpected; // the text written back; null: the same as read
        std::vector<wxString> vLeaves;
    };
    const Case vCases[] = {
        {"an outliner leaf with an empty block", // the close line ends the panel block at once
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::OUTLINER\nSplittableWindow::Close\n"
         "FrameMain::Close\n",
         nullptr,
         {"OUTLINER"}},
        {"a dummy leaf",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::DUMMY\nSplittableWindow::Close\n"
         "FrameMain::Close\n",
         nullptr,
         {"DUMMY"}},
        {"a name outside the table leaves the leaf empty",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::NOSUCHPANEL\nSplittableWindow::Close\n"
         "FrameMain::Close\n",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::Undefiend\nSplittableWindow::Close\n"
         "FrameMain::Close\n",
         {}},
        {"a property page type is no leaf",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::PROPERTY_OBJECT\n"
         "SplittableWindow::Close\nFrameMain::Close\n",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::Undefiend\nSplittableWindow::Close\n"
         "FrameMain::Close\n",
         {}},
        {"a window block without a tree gets the single 3D view",
         "FrameMain::0::1000::800\nFrameMain::Close\n",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::VIEW3D\nSplittableWindow::Close\n"
         "FrameMain::Close\n",
         {"VIEW3D"}},
        {"a block of a panel that has none is not written back",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::CONSOLE\nConfItemList::Begin::"
         "Console\n"
         "Lines=3\nConfItemList::End\nSplittableWindow::Close\nFrameMain::Close\n",
         "FrameMain::0::1000::800\nSplittableWindow::Panel\nwxPanelEX::CONSOLE\nSplittableWindow::Close\n"
         "FrameMain::Close\n",
         {"CONSOLE"}},
    };
    for (const Case& c : vCases) {
        SCOPED_TRACE(c.pName);
        ReadLayout(Text(c.pLayout));
        std::vector<wxString> vNames;
        for (wxPanelEX* pPanel : Leaves())
            vNames.push_back(pPanel->GetName());
        EXPECT_EQ(vNames, c.vLeaves);
        wxString strOut;
        mpFrame->Serialize(strOut, 0);
        EXPECT_EQ(strOut, Text(c.pExpected ? c.pExpected : c.pLayout));
    }
}

TEST_F(LayoutTextTest, TheFrameTakesTheSizeOfItsBlockAndLinesAroundItPass) {
    ReadLayout("-- a comment\n"
               "FrameMain::0::900::700\n"
               "SplittableWindow::Panel\n"
               "wxPanelEX::GRAPH\n"
               "SplittableWindow::Close\n"
               "FrameMain::Close\n"
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
    ReadLayout("FrameMain::0::1000::800\n"
               "SplittableWindow::SeparatePanel::H::300\n"
               "PanelA\n"
               "wxPanelEX::VIEW3D\n"
               "PanelB\n"
               "SplittableWindow::Panel\n"
               "wxPanelEX::OUTLINER\n"
               "SplittableWindow::Close\n"
               "SplittableWindow::Close\n"
               "FrameMain::Close\n");
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

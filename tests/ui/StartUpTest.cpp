// The start of the process as the application object runs it: the services are made on a
// worker while the first window is built, then the settings file is read.
#include "UiFixture.h"

#include "MyApp.h"
#include "PanelMakers.h"
#include "SceneObjCtrl_cls.h"
#include "UndoManager_cls.h"
#include "wxLogGuiEX.h"

TEST(StartUpTest, ServicesWindowAndSettingsComeUpInOrder) {
    SKIP_WITHOUT_DISPLAY();
    TempDir_cls temp;
    ASSERT_TRUE(
        WriteBytes(temp.Path("Orvantis4Configure.txt"),
                   "ConfItemList::Begin::MainConfList\nLastFileMESH=/models/bunny.obj\nConfItemList::End\n"));
    ASSERT_TRUE(WriteBytes(temp.Path("Orvantis4Recent.txt"), "/p/b.ovp  \n\n/p/a.ovp\n"));

    // Every layer, as the program's entry registers them.
    RegisterServices();
    auto pMain = std::make_unique<Main_cls>(temp.mStrPath);
    FrameMain_cls* pFrame = MyApp::StartCore(pMain.get());
    ASSERT_NE(pFrame, nullptr);

    EXPECT_NE(GpCPreference, nullptr);
    EXPECT_NE(GpCUndo, nullptr);
    EXPECT_NE(GpCTimeCtrl, nullptr);
    ASSERT_NE(GpCSceneObjCtrl, nullptr);
    EXPECT_NE(GpCSceneObjCtrl->GetPCFromName("World"), nullptr); // the default scene, made on the worker
    ASSERT_NE(GpCwxLogGuiEX, nullptr);
    EXPECT_EQ(wxLog::GetActiveTarget(), GpCwxLogGuiEX); // installed on the main thread after the worker
    ASSERT_EQ(pMain->mVPFrameMain.size(), 1u);
    EXPECT_EQ(pMain->GetPCFrameHost(0), pFrame);
    EXPECT_EQ(pFrame->GetTitle(), "Orvantis4 ver 0.47 (2018/9/27)");
    EXPECT_EQ(pFrame->GetPosition(), wxPoint(0, 0));
    EXPECT_EQ(pFrame->GetSize(), wxSize(1280, 960));
    EXPECT_FALSE(pFrame->IsShown()); // the first idle shows it
    EXPECT_EQ(pMain->mCLastFileMESH.GetBodySTR(), "/models/bunny.obj");
    EXPECT_EQ(pMain->GetStrRecent(0), "/p/b.ovp"); // read on the worker
    EXPECT_EQ(pMain->GetStrRecent(1), "/p/a.ovp");
    EXPECT_GE(pMain->mMillisParallel, 0);

    wxLogMessage("a line for the console");
    ASSERT_FALSE(GpCwxLogGuiEX->GetLines().empty());
    EXPECT_EQ(GpCwxLogGuiEX->GetLines().back(), "a line for the console");

    delete pFrame;
    pMain.reset();
    UnregisterPanelMakers(); // start-up installed the real panels; later tests choose their own
    // The core took its log target with it; the tests go on logging to stderr.
    wxLog* pOld = wxLog::SetActiveTarget(new wxLogStderr);
    EXPECT_EQ(pOld, nullptr);
    delete pOld;
}

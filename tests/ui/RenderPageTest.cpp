#include "ScenePanelsFixture.h"

#include "ImageOutput_cls.h"
#include "PropertyRender_cls.h"
#include "TimeCtrl_cls.h"
#include "View3D_cls.h"
#include "ViewWindowFixture.h"

// The property panel with the image output's services behind its render page.
class RenderPageTest : public ScenePanelsFixture {
protected:
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Output>();
        RegisterPanelMakers();
    }
    void SetUp() override {
        ScenePanelsFixture::SetUp();
        if (IsSkipped())
            return;
        mpRender = mpProperty->mpCPageRender;
        ASSERT_NE(mpRender, nullptr);
        ASSERT_NE(GpCImageOutput, nullptr);
        mpRender->mpCDialog = &mDialog;
    }
    void TearDown() override {
        PropertyRender_cls::msFuncGetActiveView = nullptr;
        ScenePanelsFixture::TearDown();
    }
    static void Click(wxWindow* pButton) { Send(pButton, wxEVT_BUTTON); }
    PropertyRender_cls* mpRender = nullptr;
    ScriptedDialog_cls mDialog;
};

TEST_F(RenderPageTest, FieldsShowAndEditTheImageOutputUndoably) {
    EXPECT_EQ(mpRender->mpCOutput->GetValue(), "preview.png");
    EXPECT_EQ(mpRender->mpCWidth->GetValue(), "640");
    EXPECT_EQ(mpRender->mpCSizeType->GetSelection(), 1);
    EXPECT_EQ(mpRender->mpCSizeIndex->GetStringSelection(), "640x360");

    SendTextEnter(mpRender->mpCOutput, mDir.Path("frames/f%04d.png"));
    EXPECT_EQ(GpCImageOutput->mCFileFormat.GetBodySTR(), mDir.Path("frames/f%04d.png"));
    SendTextEnter(mpRender->mpCWidth, "320");
    EXPECT_EQ(GpCImageOutput->GetSize(), wxSize(320, 360));
    EXPECT_EQ(GpCImageOutput->mCSizeIndex.GetBodyINT(), 0) << "a typed size is the Custom entry";
    SendTextEnter(mpRender->mpCHeight, "not a number");
    EXPECT_EQ(mpRender->mpCHeight->GetValue(), "360") << "the field shows the value again";

    SCOPED_TRACE("a template sets the size in one undo step");
    mpRender->SetTemplate(2, 6);
    EXPECT_EQ(GpCImageOutput->GetSize(), wxSize(512, 512));
    EXPECT_EQ(mpRender->mpCSizeIndex->GetStringSelection(), "512x512");
    GpCUndo->Undo();
    Flush();
    EXPECT_EQ(GpCImageOutput->GetSize(), wxSize(320, 360));
    GpCUndo->Undo();
    GpCUndo->Undo();
    Flush();
    mpRender->RefreshFromOutput();
    EXPECT_EQ(GpCImageOutput->GetSize(), wxSize(640, 360));
    EXPECT_EQ(GpCImageOutput->mCFileFormat.GetBodySTR(), "preview.png");

    SCOPED_TRACE("check boxes");
    SendCheck(mpRender->mpCAlpha, true);
    EXPECT_TRUE(GpCImageOutput->IsAlpha());
    GpCUndo->Undo();
    EXPECT_FALSE(GpCImageOutput->IsAlpha());
}

TEST_F(RenderPageTest, RenderButtonsRunTheChecksBeforeRecording) {
    SCOPED_TRACE("no 3D view: nothing starts");
    SendTextEnter(mpRender->mpCOutput, mDir.Path("shot.png"));
    Click(mpRender->mpCRenderAnim);
    EXPECT_EQ(mDialog.mVStrTexts,
              (std::vector<wxString>{"Not Sequence. Append 4-digit tag ?", "No Active 3DView Panel"}));
    EXPECT_EQ(mpRender->mpCOutput->GetValue(), mDir.Path("shot%04d.png"))
        << "the panel shows the new pattern";
    EXPECT_FALSE(GpCTimeCtrl->IsOutputRunning());

    SCOPED_TRACE("with a view the run starts, and the same button stops it");
    View3D_cls view;
    PropertyRender_cls::msFuncGetActiveView = [&view] { return &view; };
    mDialog.mVStrTexts.clear();
    Click(mpRender->mpCRenderAnim);
    EXPECT_TRUE(mDialog.mVStrTexts.empty());
    EXPECT_TRUE(GpCTimeCtrl->IsOutputRunning());
    EXPECT_EQ(GpCTimeCtrl->GetPlayDirection(), 1);
    Click(mpRender->mpCRenderAnim);
    EXPECT_FALSE(GpCTimeCtrl->IsOutputRunning());

    SCOPED_TRACE("one picture: a run flagged to stop after its frame");
    Click(mpRender->mpCRenderSnap);
    EXPECT_TRUE(GpCTimeCtrl->IsOutputRunning());
    EXPECT_TRUE(GpCTimeCtrl->mbOneShot);
    GpCTimeCtrl->StopPlayCommand();
    GpCTimeCtrl->mbOneShot = false;

    SCOPED_TRACE("a bad path stops every command");
    SendTextEnter(mpRender->mpCOutput, mDir.Path("missing/f%04d.png"));
    mDialog.mVStrTexts.clear();
    Click(mpRender->mpCRenderPath);
    Click(mpRender->mpCRenderSnap);
    EXPECT_EQ(mDialog.mVStrTexts, (std::vector<wxString>{"Filepath is invalid", "Filepath is invalid"}));
    EXPECT_FALSE(GpCTimeCtrl->IsOutputRunning());
}

#include "EnsembleCtrl_cls.h"
#include "FrameOutput_cls.h"
#include "ImageIO_cls.h"
#include "ImageOutput_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "ServicesFixture.h"

// The output layer's services with no GL context: they make no GL object until a frame runs.
using OutputServicesTest = ServicesFixture<ServiceLayer_enum::Output>;

TEST_F(OutputServicesTest, ServicesAndTheFrameOutputAreInstalled) {
    ASSERT_NE(GpCImageOutput, nullptr);
    ASSERT_NE(GpCImageIO, nullptr);
    EXPECT_NE(GpCReadPNG, nullptr);
    EXPECT_NE(GpCHalton, nullptr);
    ASSERT_NE(GpCFrameOutput, nullptr);
    // The sampling controllers free their buffers through the output layer.
    EXPECT_TRUE(static_cast<bool>(GpCEnsembleCtrl->mFuncDeleteFBO));
    EXPECT_TRUE(static_cast<bool>(GpCBlurCtrl->mFuncDeleteFBO));
    // No recording run: no record buffer, whatever the size.
    EXPECT_EQ(GpCFrameOutput->GetPCNewFBOForRecord(256, nullptr), nullptr);
    EXPECT_EQ(GpCFrameOutput->GetStereoOutput(), 0);
    GpCImageOutput->mCStereoOutput.SetBodyFromData("1");
    EXPECT_EQ(GpCFrameOutput->GetStereoOutput(), 1);
}

TEST_F(OutputServicesTest, ProjectLinesReachTheImageOutputAndAreSavedBack) {
    RunText("ConfItemList::Begin::ImageOutput\n"
            "FileFormat=render/shot%03d.png\n"
            "Width=320\n"
            "Height=200\n"
            "ImageAlpha=1\n"
            "PNGCompression=9\n"
            "ConfItemList::End\n");
    EXPECT_EQ(GpCImageOutput->GetSize(), wxSize(320, 200));
    EXPECT_DOUBLE_EQ(GpCImageOutput->GetAspectRatioWonH(), 1.6);
    EXPECT_TRUE(GpCImageOutput->IsAlpha());
    EXPECT_EQ(GpCImageOutput->GetPNGCompression(), 9);
    EXPECT_EQ(GpCImageOutput->GetModifiedStr(4, 0), "render/shot004.png");
    const wxString strSaved = mpMain->SerializeProject();
    EXPECT_TRUE(strSaved.Contains("ConfItemList::Begin::ImageOutput\n")) << strSaved;
    EXPECT_TRUE(strSaved.Contains("FileFormat=render/shot%03d.png\n")) << strSaved;
    EXPECT_TRUE(strSaved.Contains("Width=320\n")) << strSaved;
    // Every item of the image output is saved.
    for (const wxString& strKey : GpCImageOutput->GetAstrItemList())
        EXPECT_TRUE(strSaved.Contains("\n" + strKey)) << strKey;
    // The saved text read into a fresh process gives the same settings.
    mpMain.reset();
    RegisterLayers();
    mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
    mpMain->CreateSingleton();
    EXPECT_EQ(GpCImageOutput->GetSize(), wxSize(640, 360));
    RunText(strSaved);
    EXPECT_EQ(GpCImageOutput->GetSize(), wxSize(320, 200));
    EXPECT_EQ(GpCImageOutput->mCFileFormat.GetBodySTR(), "render/shot%03d.png");
}

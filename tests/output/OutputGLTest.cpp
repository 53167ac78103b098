#include "EnsembleCtrl_cls.h"
#include "FBO_cls.h"
#include "FrameOutput_cls.h"
#include "FramePasses_cls.h"
#include "ImageIO_cls.h"
#include "ImageOutput_cls.h"
#include "Main_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "ReadPNG_cls.h"
#include "RenderFixture.h"
#include "ServiceRegistry.h"
#include "ShaderItem_cls.h"
#include "TestSupport.h"
#include "TimeCtrl_cls.h"
#include "View3D_cls.h"

#include <epoxy/gl.h>
#include <wx/dir.h>
#include <wx/image.h>

#include <cmath>

namespace {
const wxString kResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";

// A buffer filled with one colour.
void Fill(FBO_cls& fbo, float r, float g, float b, float a) {
    fbo.Begin(true, false);
    glClearColor(r, g, b, a);
    glClear(GL_COLOR_BUFFER_BIT);
    fbo.End();
}

int ToByte(double v) {
    return static_cast<int>(std::lround(std::fmin(std::fmax(v, 0.0), 1.0) * 255.0));
}
} // namespace

// The output layer over the whole process, in a context with no display.
class OutputGLTest : public RenderFixture {
protected:
    static void TearDownTestSuite() {
        if (mspCContext && mspCContext->IsValid()) {
            mspCContext->MakeCurrent();
            FramePasses_cls::DeleteGLCommon();
        }
        RenderFixture::TearDownTestSuite();
    }
    void SetUp() override {
        RenderFixture::SetUp();
        if (IsSkipped())
            return;
        mStrOldResourceDir = ShaderItem_cls::msStrResourceDir;
        ShaderItem_cls::msStrResourceDir = kResourceDir;
        RegisterServices<ServiceLayer_enum::Output>();
        mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
        mpMain->CreateSingleton();
    }
    void TearDown() override {
        mpMain.reset();
        ShaderItem_cls::msStrResourceDir = mStrOldResourceDir;
        RenderFixture::TearDown();
    }
    std::unique_ptr<FBO_cls> MakeBuffer(int side) {
        auto p = std::make_unique<FBO_cls>(side, side, nullptr);
        p->SetGeometryFBO(side, side);
        p->MakeFBO(true, false);
        return p;
    }
    // Averages the images through the controller's buffer as the frame does, into a new buffer.
    Pixel_cls Accumulate(Accumulation_enum kind, const std::vector<std::array<float, 4>>& vColors) {
        auto pImage = MakeBuffer(8);
        auto pTarget = MakeBuffer(8);
        const int samples = static_cast<int>(vColors.size());
        for (int step = 0; step < samples; ++step) {
            if (kind == Accumulation_enum::Ensemble)
                GpCEnsembleCtrl->SetEnsembleStep(step);
            else
                GpCBlurCtrl->SetBlurStep(step);
            if (step == 0)
                GpCFrameOutput->PrepareBuffer(kind, pImage.get());
            Fill(*pImage, vColors[step][0], vColors[step][1], vColors[step][2], vColors[step][3]);
            GpCFrameOutput->DrawOnBuffer(kind, pImage.get(), samples);
        }
        Fill(*pTarget, 1.f, 0.f, 1.f, 1.f);
        GpCFrameOutput->DrawFromBuffer(kind, pTarget.get());
        ReadTexture(pTarget->GetTexture(), 8, 8);
        return At(3, 4);
    }

    TempDir_cls mDir;
    std::unique_ptr<Main_cls> mpMain;
    wxString mStrOldResourceDir;
};

TEST_F(OutputGLTest, WriterRingWritesEveryFrameWhole) {
    ImageIO_cls& io = *GpCImageIO;
    auto pFBO = MakeBuffer(32);
    const int frames = 40;
    for (int i = 0; i < frames; ++i) {
        // A different colour per frame, and a resized half of the frames.
        Fill(*pFBO, (i % 8) / 7.f, (i / 8) / 4.f, 0.5f, 1.f);
        const wxSize size = i % 2 ? wxSize(24, 12) : wxSize(32, 32);
        io.mTag = i;
        io.SaveImageFromFBO(pFBO.get(), size, mDir.Path(wxString::Format("f%03d.png", i)), false);
        EXPECT_LE(io.GetBusyCount(), ImageIO_cls::msSlotNum);
    }
    std::vector<ImageIO_cls::Result_cls> vResults = io.WaitAll();
    ASSERT_EQ(static_cast<int>(vResults.size()), frames);
    std::vector<bool> vSeen(frames, false);
    for (const ImageIO_cls::Result_cls& r : vResults) {
        EXPECT_TRUE(r.mbOk) << r.mStrPath;
        ASSERT_GE(r.mTag, 0);
        ASSERT_LT(r.mTag, frames);
        vSeen[r.mTag] = true;
    }
    EXPECT_EQ(std::count(vSeen.begin(), vSeen.end(), true), frames);
    for (int i = 0; i < frames; ++i) {
        SCOPED_TRACE(i);
        PNGImage_cls image;
        ASSERT_TRUE(ReadPNG_cls::ReadPNG(mDir.Path(wxString::Format("f%03d.png", i)), image));
        EXPECT_EQ(image.mWidth, i % 2 ? 24 : 32);
        EXPECT_EQ(image.mHeight, i % 2 ? 12 : 32);
        for (int k = 0; k < image.mWidth * image.mHeight; k += 37) {
            ASSERT_NEAR(image.mVRGB8[k * 3 + 0], ToByte((i % 8) / 7.0), 1);
            ASSERT_NEAR(image.mVRGB8[k * 3 + 1], ToByte((i / 8) / 4.0), 1);
            ASSERT_NEAR(image.mVRGB8[k * 3 + 2], 128, 1);
        }
    }
    // No half-written file is left beside them.
    wxArrayString astrFiles;
    wxDir::GetAllFiles(mDir.mStrPath, &astrFiles, "*part*", wxDIR_FILES | wxDIR_HIDDEN);
    EXPECT_TRUE(astrFiles.empty());
}

TEST_F(OutputGLTest, SavedFileIsFlippedCutToTheMiddleBandAndSixteenBit) {
    ImageIO_cls& io = *GpCImageIO;
    // Bottom half red, top half green, as GL counts rows.
    auto pFBO = MakeBuffer(16);
    pFBO->Begin(true, false);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 16, 8);
    glClearColor(1.f, 0.f, 0.f, 1.f);
    glClear(GL_COLOR_BUFFER_BIT);
    glScissor(0, 8, 16, 8);
    glClearColor(0.f, 1.f, 0.f, 0.5f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    pFBO->End();
    io.mPNGBitDepth = 16;
    io.SaveImageFromFBO(pFBO.get(), wxSize(16, 4), mDir.Path("band.png"), true);
    ASSERT_TRUE(io.WaitAll().at(0).mbOk);
    PNGImage_cls image;
    ASSERT_TRUE(ReadPNG_cls::ReadPNG(mDir.Path("band.png"), image));
    ASSERT_EQ(image.mBitDepth, 16);
    ASSERT_TRUE(image.mbAlpha);
    ASSERT_EQ(image.mHeight, 4);
    // The middle band is rows 6 to 9 of the source: the file's top rows are green (GL's upper
    // rows), the bottom ones red.
    EXPECT_EQ(image.mVRGB16[0 * 3 + 1], 65535);
    EXPECT_EQ(image.mVAlpha16[0], 32768);
    EXPECT_EQ(image.mVRGB16[(3 * 16) * 3 + 0], 65535);
    EXPECT_EQ(image.mVAlpha16[3 * 16], 65535);
    // A folder that does not exist saves nothing and says nothing.
    const long long before = io.mSaveCount;
    io.SaveImageFromFBO(pFBO.get(), wxSize(16, 4), mDir.Path("none/x.png"), false);
    EXPECT_EQ(io.mSaveCount, before);
    EXPECT_TRUE(io.WaitAll().empty());
}

TEST_F(OutputGLTest, EachFormatByExtensionReadsBackWithTheFramesPixels) {
    ImageIO_cls& io = *GpCImageIO;
    // A frame of smooth ramps with a hard-edged block, and alpha falling from left to right.
    const int side = 32;
    auto pFBO = MakeBuffer(side);
    pFBO->Begin(true, false);
    glClearColor(0.f, 0.f, 0.f, 0.f);
    glClear(GL_COLOR_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, side, 0, side, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glBegin(GL_QUADS);
    glColor4f(0.1f, 0.2f, 0.9f, 1.f);
    glVertex2f(0, 0);
    glColor4f(0.9f, 0.3f, 0.1f, 0.2f);
    glVertex2f(side, 0);
    glColor4f(0.8f, 0.9f, 0.2f, 0.2f);
    glVertex2f(side, side);
    glColor4f(0.2f, 0.7f, 0.6f, 1.f);
    glVertex2f(0, side);
    glColor4f(1.f, 1.f, 1.f, 1.f);
    glVertex2f(4, 20);
    glVertex2f(12, 20);
    glVertex2f(12, 28);
    glVertex2f(4, 28);
    glEnd();
    pFBO->End();
    // The frame as GL holds it, rows bottom to top.
    std::vector<unsigned char> vFrame(static_cast<size_t>(side) * side * 4);
    pFBO->Bind();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, vFrame.data());
    glBindTexture(GL_TEXTURE_2D, 0);

    struct Case {
        const char* name;
        bool bAlpha;      // the file takes the alpha channel (and the format keeps it)
        double meanError; // mean absolute difference per sample allowed (JPEG at the toolkit's quality)
        int maxError;
    };
    const Case cases[] = {
        {"f.png", true, 0, 0}, {"f.jpg", false, 4, 64}, {"f.JPEG", false, 4, 64},
        {"f.tif", true, 0, 0}, {"f.tiff", false, 0, 0}, {"f.bmp", false, 0, 0},
        {"f.tga", true, 0, 0}, {"f.pnm", false, 0, 0},  {"f.pcx", false, 0, 0},
    };
    // All started before any is collected: the writers save side by side.
    for (const Case& c : cases)
        io.SaveImageFromFBO(pFBO.get(), wxSize(side, side), mDir.Path(c.name), c.bAlpha);
    for (const ImageIO_cls::Result_cls& r : io.WaitAll())
        EXPECT_TRUE(r.mbOk) << r.mStrPath;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        wxImage image;
        ASSERT_TRUE(image.LoadFile(mDir.Path(c.name)));
        ASSERT_EQ(image.GetWidth(), side);
        ASSERT_EQ(image.GetHeight(), side);
        EXPECT_EQ(image.HasAlpha(), c.bAlpha);
        double sum = 0;
        int worst = 0;
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const unsigned char* pGL = &vFrame[(static_cast<size_t>(side - 1 - y) * side + x) * 4];
                const int got[4] = {image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y),
                                    c.bAlpha ? image.GetAlpha(x, y) : 255};
                for (int k = 0; k < (c.bAlpha ? 4 : 3); ++k) {
                    const int d = std::abs(got[k] - pGL[k]);
                    sum += d;
                    worst = std::max(worst, d);
                }
            }
        }
        EXPECT_LE(sum / (side * side * (c.bAlpha ? 4 : 3)), c.meanError);
        EXPECT_LE(worst, c.maxError);
    }

    // An extension no writer takes: no file, a failed result.
    io.SaveImageFromFBO(pFBO.get(), wxSize(side, side), mDir.Path("f.xyz"), false);
    const std::vector<ImageIO_cls::Result_cls> vBad = io.WaitAll();
    ASSERT_EQ(vBad.size(), 1u);
    EXPECT_FALSE(vBad[0].mbOk);
    EXPECT_FALSE(wxFileExists(mDir.Path("f.xyz")));
}

TEST_F(OutputGLTest, EnsembleAndMotionBlurAverageTheirSteps) {
    ASSERT_NE(GpCFrameOutput, nullptr);
    const std::vector<std::array<float, 4>> vColors = {
        {0.f, 0.2f, 1.f, 1.f}, {1.f, 0.6f, 1.f, 1.f}, {0.f, 0.2f, 0.f, 1.f}, {1.f, 1.f, 0.f, 1.f}};
    // The plain average, and the average in linear light: each step through the exposure's gamma
    // 2.2 (c^2.2), the sum encoded again with gamma 0.4545.
    auto average = [&](int c, bool bGamma) {
        double sum = 0.0;
        for (const auto& col : vColors)
            sum += bGamma ? std::pow(col[c], 2.2) : col[c];
        sum /= vColors.size();
        return bGamma ? std::pow(sum, 0.4545) : sum;
    };
    for (Accumulation_enum kind : {Accumulation_enum::Ensemble, Accumulation_enum::MotionBlur}) {
        for (bool bGamma : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << (kind == Accumulation_enum::Ensemble ? "ensemble" : "motion blur")
                         << (bGamma ? ", gamma" : ", no gamma"));
            if (kind == Accumulation_enum::Ensemble)
                GpCEnsembleCtrl->mCUseGammaForEnsemble.SetBodyFromData(bGamma ? "1" : "0");
            else
                GpCBlurCtrl->mCUseGammaForBlur.SetBodyFromData(bGamma ? "1" : "0");
            const Pixel_cls px = Accumulate(kind, vColors);
            EXPECT_TRUE(
                PixelNear(px, average(0, bGamma), average(1, bGamma), average(2, bGamma), 1.f, 0.01f));
        }
    }
    // Gamma on and off differ on a mix of dark and bright: 0.5 against about 0.73.
    GpCEnsembleCtrl->mCUseGammaForEnsemble.SetBodyFromData("1");
    const float linear = Accumulate(Accumulation_enum::Ensemble, {{0, 0, 0, 1}, {1, 1, 1, 1}}).r;
    GpCEnsembleCtrl->mCUseGammaForEnsemble.SetBodyFromData("0");
    const float plain = Accumulate(Accumulation_enum::Ensemble, {{0, 0, 0, 1}, {1, 1, 1, 1}}).r;
    EXPECT_NEAR(plain, 0.5f, 0.01f);
    EXPECT_NEAR(linear, std::pow(0.5, 0.4545), 0.01f);
    // One sample adds the image once at full weight.
    const Pixel_cls one = Accumulate(Accumulation_enum::MotionBlur, {{0.3f, 0.6f, 0.9f, 1.f}});
    EXPECT_TRUE(PixelNear(one, 0.3f, 0.6f, 0.9f, 1.f, 0.01f));
    // Colours above 1 survive in the float buffer.
    GpCBlurCtrl->mCUseGammaForBlur.SetBodyFromData("0");
    const Pixel_cls bright =
        Accumulate(Accumulation_enum::MotionBlur, {{3.f, 0.f, 0.f, 1.f}, {1.f, 0.f, 0.f, 1.f}});
    EXPECT_NEAR(bright.r, 2.f, 0.02f);
    // The buffer is freed through the deleter the output layer installed.
    EXPECT_NE(GpCBlurCtrl->mpCFBOBuffer, nullptr);
    GpCBlurCtrl->ClearFBOBuffer();
    EXPECT_EQ(GpCBlurCtrl->mpCFBOBuffer, nullptr);
}

TEST_F(OutputGLTest, AbortSkipsDrawingTheAverageBack) {
    TimeCtrl_cls::msbForceAbort.store(true);
    const Pixel_cls px = Accumulate(Accumulation_enum::Ensemble, {{0.f, 1.f, 0.f, 1.f}});
    TimeCtrl_cls::msbForceAbort.store(false);
    // The target keeps what it had.
    EXPECT_TRUE(PixelNear(px, 1.f, 0.f, 1.f, 1.f));
}

TEST_F(OutputGLTest, RecordingFrameWritesTheComposedPictureOnlyWhileOutputRuns) {
    View3D_cls view;
    view.mCBufSizeIdx.SetBodyFromData("0"); // 256
    view.mCDispGrid.SetBodyFromData("0");
    view.mCDispLightCam.SetBodyFromData("0");
    GpCImageOutput->mCFileFormat.SetBodyFromData(mDir.Path("rec%04d.png"));
    GpCImageOutput->mCWidth.SetBodyFromData("64");
    GpCImageOutput->mCHeight.SetBodyFromData("32");
    auto pTarget = MakeBuffer(64);
    GpCTimeCtrl->ProcSetFrameCurrent(3);
    GpCTimeCtrl->ProcSetSubFrameCurrent(1);
    {
        FramePasses_cls passes(&view);
        passes.PaintDirectly(64, 32, 64, 32, pTarget->GetFramebuffer());
    }
    EXPECT_EQ(GpCImageIO->mSaveCount, 0) << "not recording: no file";
    GpCTimeCtrl->mbOutputRunning = true;
    GpCTimeCtrl->mbFrameWritten = false;
    for (bool bEnsemble : {false, true}) {
        SCOPED_TRACE(bEnsemble ? "ensemble of 3" : "plain");
        GpCEnsembleCtrl->mCUseEnsemble.SetBodyFromData(bEnsemble ? "1" : "0");
        GpCEnsembleCtrl->mCEnsembleSampleNum.SetBodyFromData("3");
        GpCEnsembleCtrl->mCUseGammaForEnsemble.SetBodyFromData("0");
        FramePasses_cls passes(&view);
        passes.PaintDirectly(64, 32, 64, 32, pTarget->GetFramebuffer());
        EXPECT_TRUE(GpCTimeCtrl->mbFrameWritten);
        const std::vector<ImageIO_cls::Result_cls> v = GpCImageIO->WaitAll();
        ASSERT_EQ(v.size(), 1u);
        EXPECT_TRUE(v[0].mbOk);
        // Step = 3 * SubFrameMax (2) + 1.
        EXPECT_EQ(wxString::FromUTF8(v[0].mStrPath), mDir.Path("rec0007.png"));
        PNGImage_cls image;
        ASSERT_TRUE(ReadPNG_cls::ReadPNG(mDir.Path("rec0007.png"), image));
        EXPECT_EQ(image.mWidth, 64);
        EXPECT_EQ(image.mHeight, 32);
        // The empty scene is the background "GLBG" (0.22, 0.22, 0.24).
        EXPECT_NEAR(image.mVRGB8[0], ToByte(0.22), 1);
        EXPECT_NEAR(image.mVRGB8[2], ToByte(0.24), 1);
    }
    GpCTimeCtrl->mbOutputRunning = false;
}

// Under ThreadSanitizer: Mesa's llvmpipe runs its rasteriser threads inside the uninstrumented
// driver, which TSan reports as races on the driver's own mutexes. No frame of ours is involved.
extern "C" const char* __tsan_default_suppressions() {
    return "race:swrast_dri.so\n";
}

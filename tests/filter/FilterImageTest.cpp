// Each filter on a small image drawn by the test, its result read back.
#include "Blur_cls.h"
#include "FilterFixture.h"
#include "Overlay_cls.h"
#include "ShaderItem_cls.h"

#include <wx/filefn.h>

#include <epoxy/gl.h>
#include <png.h>

#include <cmath>

namespace {

// Writes an RGBA image of one colour.
bool WritePNG(const wxString& strPath, int width, int height, const unsigned char* rgba) {
    std::vector<unsigned char> pixels;
    for (int i = 0; i < width * height; ++i)
        pixels.insert(pixels.end(), rgba, rgba + 4);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGBA;
    return png_image_write_to_file(&image, strPath.utf8_str().data(), 0, pixels.data(), 0, nullptr) != 0;
}

void Rect(float x0, float y0, float x1, float y1, float r, float g, float b, float a) {
    glColor4f(r, g, b, a);
    glRectf(x0, y0, x1, y1);
}

} // namespace

TEST_F(FilterFixture, ExposureMapsLevelsAndGammaByItsFormula) {
    // Four grey columns; out = max((in - min) / (max - min), 0) ^ gamma.
    const float inputs[4] = {0.1f, 0.3f, 0.5f, 0.9f};
    auto source = MakeSource(16, [&] {
        for (int i = 0; i < 4; ++i)
            Rect(i * 4.f, 0, i * 4.f + 4, 16, inputs[i], inputs[i], inputs[i], 1);
    });
    Run("FilterCtrl::New::Exposure_cls::E");
    struct Case_cls {
        double min, max, gamma;
    };
    for (const Case_cls& c : {Case_cls{0, 1, 1}, Case_cls{0.2, 0.8, 1}, Case_cls{0, 1, 0.4545},
                              Case_cls{0, 1, 2.2}, Case_cls{0.1, 0.6, 0.5}}) {
        SCOPED_TRACE(::testing::Message() << c.min << ".." << c.max << " gamma " << c.gamma);
        SetGroup("E", "Level", c.min, c.max);
        SetGroup("E", "Gamma", c.gamma);
        RunChain(*source);
        for (int i = 0; i < 4; ++i) {
            const double v = std::pow(std::max((inputs[i] - c.min) / (c.max - c.min), 0.0), c.gamma);
            EXPECT_NEAR(At(i * 4 + 2, 8).r, v, kOneStep) << "input " << inputs[i];
            EXPECT_NEAR(At(i * 4 + 2, 8).a, 1.0, kOneStep);
        }
    }
}

TEST_F(FilterFixture, BlurSpreadsALineAlongItsAxisOnlyAndKeepsAFlatFieldFlat) {
    // A one-pixel vertical line at x = 16 and a one-pixel horizontal line at y = 16, apart.
    auto line = MakeSource(32, [] {
        Rect(16, 0, 17, 8, 1, 1, 1, 1);
        Rect(24, 16, 32, 17, 1, 1, 1, 1);
    });
    Run("FilterCtrl::New::Blur_cls::B");
    SetItem("B", "UseGamma=", "0");
    SetItem("B", "Quality=", "4");
    SetGroup("B", "Width", 4);
    struct Case_cls {
        const char* strType;
        bool bVerticalLineSpreads, bHorizontalLineSpreads;
    };
    for (const Case_cls& c :
         {Case_cls{"0", true, false}, Case_cls{"1", false, true}, Case_cls{"2", true, true}}) {
        SCOPED_TRACE(c.strType);
        SetItem("B", "Type=", c.strType);
        RunChain(*line);
        // Across the vertical line, two pixels beside it.
        EXPECT_EQ(At(18, 4).r > 0.05f, c.bVerticalLineSpreads);
        EXPECT_EQ(At(16, 4).r < 0.9f, c.bVerticalLineSpreads);
        // Across the horizontal line.
        EXPECT_EQ(At(28, 18).r > 0.05f, c.bHorizontalLineSpreads);
        EXPECT_EQ(At(28, 16).r < 0.9f, c.bHorizontalLineSpreads);
        // Along a line nothing changes in the middle of it.
        if (!c.bHorizontalLineSpreads) {
            EXPECT_NEAR(At(16, 4).r, At(16, 2).r, 1e-3);
        }
        // Far from both, black stays black.
        EXPECT_NEAR(At(4, 28).r, 0.f, 1e-4);
    }
    // The kernel sums to one: a flat field stays flat, with and without the gamma pair.
    auto flat = MakeSource(32, [] { Rect(0, 0, 32, 32, 0.5f, 0.25f, 0.75f, 1); });
    for (const char* strGamma : {"0", "1"}) {
        for (const char* strKernel : {"0", "1"}) {
            SCOPED_TRACE(::testing::Message() << "gamma " << strGamma << " kernel " << strKernel);
            SetItem("B", "UseGamma=", strGamma);
            SetItem("B", "Kernel=", strKernel);
            SetItem("B", "Type=", "2");
            RunChain(*flat);
            for (int x : {0, 15, 31})
                EXPECT_TRUE(PixelNear(At(x, x), 0.5f, 0.25f, 0.75f, 1, kOneStep));
            EXPECT_EQ(GpCFilterCtrl->GetPassCount(), strGamma[0] == '1' ? 4 : 2);
        }
    }
}

TEST_F(FilterFixture, GlareSpreadsABrightPixelIntoTheGivenNumberOfRays) {
    auto source = MakeSource(64, [] { Rect(32, 32, 33, 33, 1, 1, 1, 1); });
    Run("FilterCtrl::New::Glare_cls::G");
    SetItem("G", "Quality=", "8");
    SetGroup("G", "Width", 16);
    SetGroup("G", "Critical", 0.0);
    SetGroup("G", "Enh./Fade", 8.0, 1.0);
    for (int rays : {3, 4, 5, 6}) {
        SCOPED_TRACE(rays);
        SetItem("G", "Number=", wxString::Format("%d", rays));
        RunChain(*source);
        // Lit runs on a circle of radius 7 about the pixel.
        int runs = 0;
        bool bPrev = false, bFirst = false;
        for (int k = 0; k < 720; ++k) {
            const double a = k * M_PI / 360.0;
            const int x = static_cast<int>(std::lround(32.5 + 7 * std::cos(a) - 0.5));
            const int y = static_cast<int>(std::lround(32.5 + 7 * std::sin(a) - 0.5));
            const bool bLit = At(x, y).r > 0.02f;
            if (k == 0)
                bFirst = bLit;
            else if (bLit && !bPrev)
                ++runs;
            bPrev = bLit;
        }
        if (bFirst && !bPrev)
            ++runs;
        EXPECT_EQ(runs, rays);
    }
}

TEST_F(FilterFixture, RemoveAlphaComposesOverTheBackgroundAsItsItemsSay) {
    auto source = MakeSource(16, [] { Rect(0, 0, 16, 16, 1, 0.5f, 0, 0.5f); });
    Run("FilterCtrl::New::RemoveAlpha_cls::R");
    struct Case_cls {
        const char *strExtreme, *strConvert, *strTile;
        int x;
        float r, g, b;
    };
    // Tile cells are 8 pixels: (0, 0) is grey 0.5, (1, 0) grey 0.75.
    for (const Case_cls& c :
         {Case_cls{"0", "0", "0", 2, 1, 0.5f, 0}, Case_cls{"0", "1", "0", 2, 0.5f, 0.25f, 0},
          Case_cls{"1", "1", "0", 2, 1, 0.5f, 0}, Case_cls{"0", "1", "1", 2, 0.75f, 0.5f, 0.25f},
          Case_cls{"0", "1", "1", 10, 0.875f, 0.625f, 0.375f}}) {
        SCOPED_TRACE(::testing::Message() << c.strExtreme << c.strConvert << c.strTile << " at " << c.x);
        SetItem("R", "ExtremeAlpha=", c.strExtreme);
        SetItem("R", "Convert=", c.strConvert);
        SetItem("R", "BackgroundTile=", c.strTile);
        RunChain(*source);
        EXPECT_TRUE(PixelNear(At(c.x, 2), c.r, c.g, c.b, 1, kOneStep));
    }
}

TEST_F(FilterFixture, OverlayPutsItsImageWhereItsFitAndScaleSay) {
    // Scales as fractions of the square: a 2:1 image in a square frame and in a 2:1 passepartout.
    struct Scale_cls {
        int fit;
        float aspect;
        float x, y;
    };
    for (const Scale_cls& c : {Scale_cls{0, -1, 1, 0.5f}, Scale_cls{1, -1, 2, 1}, Scale_cls{2, -1, 1, 1},
                               Scale_cls{0, 2, 1, 0.5f}, Scale_cls{0, 0.5f, 0.5f, 0.25f}}) {
        SCOPED_TRACE(::testing::Message() << "fit " << c.fit << " frame " << c.aspect);
        float x = 0, y = 0;
        Overlay_cls::GetScale(c.fit, 2.0, {c.aspect, 1.f, 1.f}, x, y);
        EXPECT_FLOAT_EQ(x, c.x);
        EXPECT_FLOAT_EQ(y, c.y);
    }
    // On pixels: a red 2:1 image fitted in the square covers the middle half of the rows.
    const unsigned char red[4] = {255, 0, 0, 255};
    ASSERT_TRUE(WritePNG(mDir.Path("red.png"), 8, 4, red));
    auto source = MakeSource(64, [] { Rect(0, 0, 64, 64, 0, 0, 1, 1); });
    Run("FilterCtrl::New::Overlay_cls::O");
    SetItem("O", "strPath=", mDir.Path("red.png"));
    RunChain(*source);
    for (int y : {20, 32, 44})
        EXPECT_TRUE(PixelNear(At(32, y), 1, 0, 0, 1)) << y;
    for (int y : {4, 12, 52, 60})
        EXPECT_TRUE(PixelNear(At(32, y), 0, 0, 1, 1)) << y;
    SetGroup("O", "Alpha", 0.5);
    RunChain(*source);
    EXPECT_TRUE(PixelNear(At(32, 32), 0.5f, 0, 0.5f, 1));
}

TEST_F(FilterFixture, OverlaySequenceWithMissingFilesLogsOnceAndPassesThrough) {
    const unsigned char green[4] = {0, 255, 0, 255};
    ASSERT_TRUE(WritePNG(mDir.Path("seq.03.png"), 4, 4, green));
    auto source = MakeSource(16, [] { Rect(0, 0, 16, 16, 0, 0, 1, 1); });
    Run("FilterCtrl::New::Overlay_cls::O");
    SetItem("O", "strPath=", mDir.Path("seq.%02d.png"));
    SetItem("O", "Sequence=", "1");
    {
        LogCapture_cls log;
        RunChain(*source); // frame 0: seq.00.png is missing
        RunChain(*source);
        EXPECT_EQ(CountLines(log, {"seq.00.png", "cannot be read"}), 1);
        EXPECT_TRUE(PixelNear(At(8, 8), 0, 0, 1, 1));
    }
    SetItem("O", "sequenceOffset=", "3");
    RunChain(*source);
    EXPECT_TRUE(PixelNear(At(8, 8), 0, 1, 0, 1));
    // A file that is there but no image: its reader says so, the picture passes unchanged.
    FILE* fp = fopen(mDir.Path("bad.png").utf8_str().data(), "wb");
    ASSERT_NE(fp, nullptr);
    fputs("\x89PNG\r\n\x1a\n but nothing after the signature", fp);
    fclose(fp);
    SetItem("O", "Sequence=", "0");
    SetItem("O", "strPath=", mDir.Path("bad.png"));
    LogCapture_cls log;
    RunChain(*source);
    RunChain(*source);
    EXPECT_EQ(CountLines(log, {"bad.png"}), 1);
    EXPECT_TRUE(PixelNear(At(8, 8), 0, 0, 1, 1));
}

TEST_F(FilterFixture, ProgramThatFailsToCompileIsLoggedOnceAndTheImagePassesThrough) {
    // A resource folder whose exposure program is broken.
    TempDir_cls dir;
    wxMkdir(dir.Path("GL"));
    for (const char* str : {"ClampAlpha.vert", "ClampAlpha.frag", "Exposure.vert"}) {
        wxCopyFile(wxString(ORV_SOURCE_DIR) + "/Resource/GL/" + str, dir.Path(wxString("GL/") + str));
    }
    FILE* fp = fopen(dir.Path("GL/Exposure.frag").utf8_str().data(), "w");
    ASSERT_NE(fp, nullptr);
    fputs("#version 120\nvoid main() { gl_FragColor = oops; }\n", fp);
    fclose(fp);
    mpPasses.reset();
    mpMain.reset();
    ShaderItem_cls::msStrResourceDir = dir.mStrPath;
    mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
    mpMain->CreateSingleton();
    Run("FilterCtrl::New::Exposure_cls::E");
    SetGroup("E", "Level", 0.0, 0.5);
    auto source = MakeSource(16, [] { Rect(0, 0, 16, 16, 0.25f, 0.5f, 0.75f, 1); });
    LogCapture_cls log;
    RunChain(*source);
    RunChain(*source);
    EXPECT_EQ(CountLines(log, {"Filter E: program \"Exposure\" cannot be used"}), 1);
    EXPECT_TRUE(PixelNear(At(8, 8), 0.25f, 0.5f, 0.75f, 1, kOneStep));
}

TEST_F(FilterFixture, EmptyOrSwitchedOffChainYieldsAFreshCopyWithAlphaClamped) {
    auto source = MakeSource(16, [] { Rect(0, 0, 16, 16, 1, 1, 1, 1); });
    for (const char* strChain :
         {"", "FilterCtrl::New::Exposure_cls::E\n"
              "ConfItemList::Begin::FilterCtrl::Filter::E\nValidity=0\nConfItemList::End"}) {
        SCOPED_TRACE(strChain);
        Run(strChain);
        RunChain(*source);
        EXPECT_EQ(GpCFilterCtrl->GetPassCount(), 0);
        EXPECT_TRUE(PixelNear(At(3, 3), 1, 1, 1, 1, kOneStep));
    }
}

#include "FBO_cls.h"
#include "GLPerspective_cls.h"
#include "GlyphAtlas_cls.h"
#include "Material_cls.h"
#include "RenderFixture.h"
#include "TestSupport.h"
#include "TextDraw_cls.h"
#include "TextObj_cls.h"
#include "TextProp_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <memory>
#include <random>

namespace {

// The lit pixels of a frame: their bounding box and how many there are.
struct Lit_cls {
    int mMinX = 1 << 20, mMinY = 1 << 20, mMaxX = -1, mMaxY = -1, mCount = 0;
};

} // namespace

// Text drawn into a 64 x 64 buffer in pixel coordinates, y up.
class TextDrawTest : public RenderFixture {
protected:
    void SetUp() override {
        RenderFixture::SetUp();
        if (IsSkipped())
            return;
        mpCText = std::make_unique<TextDraw_cls>();
        mpCFBO = std::make_unique<FBO_cls>(kSize, kSize, nullptr);
        mpCFBO->MakeFBO(true, false);
    }
    void TearDown() override {
        mpCText.reset();
        mpCFBO.reset();
        RenderFixture::TearDown();
    }
    template <class Func_cls> void Frame(Func_cls funcDraw) {
        mpCFBO->Begin(true, false);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDisable(GL_DEPTH_TEST);
        GLPerspective_cls::Push2DMatrix(kSize, kSize);
        funcDraw();
        GLPerspective_cls::Pop2DMatrix();
        mpCFBO->End();
        ReadTexture(mpCFBO->GetTexture(), kSize, kSize);
    }
    // Pixels with coverage inside rows y0..y1 (all rows by default).
    Lit_cls Lit(int y0 = 0, int y1 = kSize - 1) const {
        Lit_cls lit;
        for (int y = y0; y <= y1; ++y)
            for (int x = 0; x < kSize; ++x)
                if (At(x, y).a > 0.05f) {
                    lit.mMinX = std::min(lit.mMinX, x);
                    lit.mMaxX = std::max(lit.mMaxX, x);
                    lit.mMinY = std::min(lit.mMinY, y);
                    lit.mMaxY = std::max(lit.mMaxY, y);
                    ++lit.mCount;
                }
        return lit;
    }

    static constexpr int kSize = 64;
    std::unique_ptr<TextDraw_cls> mpCText;
    std::unique_ptr<FBO_cls> mpCFBO;
};

TEST_F(TextDrawTest, TheDefaultFontIsFoundWithoutADisplay) {
    const wxString strFile = GlyphAtlas_cls::FindFontFile("None");
    ASSERT_FALSE(strFile.empty());
    EXPECT_TRUE(wxFileExists(strFile)) << strFile;
    EXPECT_EQ(GlyphAtlas_cls::FindFontFile(strFile), strFile);
    EXPECT_EQ(GlyphAtlas_cls::FindFontFile("/no/such/font.ttf"), wxString());
    EXPECT_GT(mpCText->GetAscender(20), 10.0);
    EXPECT_GT(mpCText->GetDescender(20), 1.0);
    // Widths add up and scale with the size.
    EXPECT_NEAR(mpCText->GetLineWidth("HH", 20), 2 * mpCText->GetLineWidth("H", 20), 1e-9);
    EXPECT_NEAR(mpCText->GetLineWidth("H", 40), 2 * mpCText->GetLineWidth("H", 20), 1e-9);
    EXPECT_EQ(mpCText->GetLineWidth("", 20), 0.0);
}

TEST_F(TextDrawTest, TextLightsPixelsInItsBoxOnlyInItsColour) {
    const float orange[4] = {1.0f, 0.5f, 0.0f, 1.0f};
    const double size = 20;
    const double width = mpCText->GetLineWidth("HI", size);
    const double ascender = mpCText->GetAscender(size), descender = mpCText->GetDescender(size);
    ASSERT_GT(width, 10.0);
    ASSERT_LT(width, 50.0);
    const struct {
        int align;
        double x;
        double left; // where the line's box starts
    } cases[] = {{0, 4, 4}, {1, 32, 32 - width / 2}, {2, 60, 60 - width}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "align " << c.align);
        Frame([&] { mpCText->Draw("HI", c.x, 24, size, orange, c.align, 1.2); });
        const Lit_cls lit = Lit();
        EXPECT_GT(lit.mCount, 40);
        // Inside the box of advance width and ascender/descender, and filling most of its width.
        EXPECT_GE(lit.mMinX, static_cast<int>(c.left) - 1);
        EXPECT_LE(lit.mMaxX, static_cast<int>(c.left + width) + 1);
        EXPECT_LE(lit.mMinX, static_cast<int>(c.left) + 4);
        EXPECT_GE(lit.mMaxX, static_cast<int>(c.left + width) - 5);
        EXPECT_GE(lit.mMinY, static_cast<int>(24 - descender) - 1);
        EXPECT_LE(lit.mMaxY, static_cast<int>(24 + ascender) + 1);
        // Capitals stand on the baseline and reach most of the way up.
        EXPECT_GE(lit.mMinY, 23);
        EXPECT_GE(lit.mMaxY, 24 + static_cast<int>(size * 0.6));
    }
    // A stem of the H is covered fully: there the colour is the one asked for.
    int full = 0;
    for (const Pixel_cls& px : mVFrame)
        if (px.a > 0.99f) {
            ++full;
            EXPECT_TRUE(PixelNear(px, 1.0f, 0.5f, 0.0f, 1.0f));
        }
    EXPECT_GT(full, 10);
}

TEST_F(TextDrawTest, LinesStandLineSpacingTimesTheSizeApart) {
    const double size = 12;
    for (const double spacing : {1.0, 2.0}) {
        SCOPED_TRACE(testing::Message() << "spacing " << spacing);
        Frame([&] { mpCText->Draw("H\nH", 20, 48, size, nullptr, 0, spacing); });
        const int second = 48 - static_cast<int>(size * spacing);
        const Lit_cls top = Lit(48 - 1, kSize - 1), bottom = Lit(second - 1, second + 11);
        EXPECT_GT(top.mCount, 10);
        EXPECT_GT(bottom.mCount, 10);
        EXPECT_EQ(bottom.mMinY, second) << "the second capital stands on its own baseline";
        EXPECT_EQ(Lit().mMinY, second);
        EXPECT_EQ(Lit().mCount, top.mCount + bottom.mCount) << "nothing between or below the lines";
    }
}

TEST_F(TextDrawTest, ABadFontLogsOneLineAndTheDefaultDraws) {
    TempDir_cls dir;
    std::string strFont;
    {
        FILE* fp = fopen(GlyphAtlas_cls::FindFontFile("None").fn_str(), "rb");
        ASSERT_NE(fp, nullptr);
        std::vector<char> buf(1 << 20);
        strFont.assign(buf.data(), fread(buf.data(), 1, buf.size(), fp));
        fclose(fp);
    }
    std::string strRandom(4000, '\0');
    std::mt19937 random(5);
    for (char& ch : strRandom)
        ch = static_cast<char>(random());
    const struct {
        const char* pName;
        std::string bytes;
        bool bWrite;
    } cases[] = {
        {"missing.ttf", "", false},
        {"empty.ttf", "", true},
        {"random.ttf", strRandom, true},
        {"header-only.ttf", strFont.substr(0, 200), true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pName);
        const wxString strPath = dir.Path(c.pName);
        if (c.bWrite) {
            ASSERT_TRUE(WriteBytes(strPath, c.bytes));
        }
        LogCapture_cls log;
        Frame([&] { mpCText->Draw("H", 10, 10, 20, nullptr, 0, 1.2, strPath); });
        ASSERT_EQ(log.mVStrLines.size(), 1u);
        EXPECT_TRUE(log.Contains("Text: font " + strPath)) << log.mVStrLines[0];
        EXPECT_GT(Lit().mCount, 20) << "the default font drew the text";
        Frame([&] { mpCText->Draw("H", 10, 10, 20, nullptr, 0, 1.2, strPath); });
        EXPECT_EQ(log.mVStrLines.size(), 1u) << "reported once";
    }
}

TEST_F(TextDrawTest, ATextObjectDrawsItsTextInItsMaterialColour) {
    TextObj_cls obj(nullptr);
    obj.GetPCTextProp()->mCText.SetBodyFromData(wxString("L"));
    const double scale[16] = {20, 0, 0, 0, 0, 20, 0, 0, 0, 0, 20, 0, 8, 30, 0, 1}; // size 1 -> 20 px
    Frame([&] { mpCText->DrawTextObj(obj, scale, 0.0); });
    const Lit_cls lit = Lit();
    EXPECT_GT(lit.mCount, 20);
    EXPECT_GE(lit.mMinX, 8);
    EXPECT_GE(lit.mMinY, 29);
    EXPECT_LE(lit.mMaxY, 30 + 20);
    // The default material's diffuse is 0.8 grey.
    bool bFull = false;
    for (const Pixel_cls& px : mVFrame)
        if (px.a > 0.99f) {
            bFull = true;
            EXPECT_TRUE(PixelNear(px, 0.8f, 0.8f, 0.8f, 1.0f));
        }
    EXPECT_TRUE(bFull);
    // Right alignment puts the text left of the object's origin.
    obj.GetPCTextProp()->mCAlign.SetBodyFromData(wxString("2"));
    Frame([&] { mpCText->DrawTextObj(obj, scale, 0.0); });
    EXPECT_LE(Lit().mMaxX, 8);
    EXPECT_GT(Lit().mCount, 20);
    obj.mCValid.SetBodyFromData(wxString("0"));
    Frame([&] { mpCText->DrawTextObj(obj, scale, 0.0); });
    EXPECT_EQ(Lit().mCount, 0);
}

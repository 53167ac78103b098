#include "FBO_cls.h"
#include "GLPerspective_cls.h"
#include "GlyphAtlas_cls.h"
#include "MeshDraw_cls.h"
#include "MeshObj_cls.h"
#include "RenderFixture.h"
#include "TestSupport.h"
#include "TextDraw_cls.h"
#include "TextObj_cls.h"
#include "TextProp_cls.h"
#include "TextureProvider_cls.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <functional>

namespace {

wxString ObjPath(const char* pName) {
    return wxString(ORV_TEST_DATA_DIR) + "/obj/" + pName;
}

std::string ReadFileBytes(const wxString& strPath, size_t limit) {
    std::vector<char> buf(limit);
    FILE* fp = fopen(strPath.fn_str(), "rb");
    const size_t n = fp ? fread(buf.data(), 1, limit, fp) : 0;
    if (fp)
        fclose(fp);
    return std::string(buf.data(), n);
}

// Turns about x by 90 degrees (+y to +z, towards the viewer); shifts right by a quarter view.
const double kTurnX90[16] = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};
const double kShiftRight[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.5, 0, 0, 1};

// The bounding box and count of the pixels with coverage.
struct Lit_cls {
    int mMinX = 1 << 20, mMinY = 1 << 20, mMaxX = -1, mMaxY = -1, mCount = 0;
};

} // namespace

// Meshes and text drawn into a 64 x 64 buffer with no lights, read back after each frame. The
// mesh projection looks down -z at the square -1..1; text is drawn in pixels, y up.
class AssetDrawTest : public RenderFixture {
protected:
    static constexpr int kSize = 64;
    void SetUp() override {
        RenderFixture::SetUp();
        if (IsSkipped())
            return;
        mpCTextures = std::make_unique<TextureProvider_cls>();
        mpCMeshDraw = std::make_unique<MeshDraw_cls>(mpCTextures.get());
        mpCText = std::make_unique<TextDraw_cls>();
        mpCFBO = std::make_unique<FBO_cls>(kSize, kSize, nullptr);
        mpCFBO->MakeFBO(true, false);
    }

    void TearDown() override {
        mpCMeshDraw.reset();
        mpCText.reset();
        mpCFBO.reset();
        mpCTextures.reset();
        RenderFixture::TearDown();
    }

    std::unique_ptr<MeshObj_cls> Mesh(const wxString& strPath) {
        auto pObj = std::make_unique<MeshObj_cls>(nullptr);
        pObj->mCFileName.SetBodyFromData(strPath);
        return pObj;
    }

    void Frame(const std::function<void()>& funcDraw, bool bPixels = false) {
        mpCFBO->Begin(true, false);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDisable(GL_LIGHTING);
        GLPerspective_cls::Push2DMatrix(kSize, kSize);
        if (bPixels) {
            glDisable(GL_DEPTH_TEST);
        } else {
            glEnable(GL_DEPTH_TEST);
            glMatrixMode(GL_PROJECTION);
            glLoadIdentity();
            glOrtho(-1, 1, -1, 1, -10, 10);
            glMatrixMode(GL_MODELVIEW);
        }
        funcDraw();
        GLPerspective_cls::Pop2DMatrix();
        mpCFBO->End();
        ReadTexture(mpCFBO->GetTexture(), kSize, kSize);
    }

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

    std::unique_ptr<TextureProvider_cls> mpCTextures;
    std::unique_ptr<MeshDraw_cls> mpCMeshDraw;
    std::unique_ptr<TextDraw_cls> mpCText;
    std::unique_ptr<FBO_cls> mpCFBO;
};

TEST_F(AssetDrawTest, TheTexelsOfTheMaterialsPictureLieOnThePlane) {
    auto pPlane = Mesh(ObjPath("plane.obj"));
    LogCapture_cls log;
    Frame([&] { mpCMeshDraw->Draw(*pPlane, nullptr, 0.0); });
    EXPECT_TRUE(log.mVStrLines.empty());
    // Top row of the picture red, green; bottom row blue, yellow; the pixels sit near texel centres.
    const struct {
        int x, y;
        float r, g, b;
    } cases[] = {{15, 48, 1, 0, 0}, {48, 48, 0, 1, 0}, {15, 15, 0, 0, 1}, {48, 15, 1, 1, 0}};
    for (const auto& c : cases)
        EXPECT_TRUE(PixelNear(At(c.x, c.y), c.r, c.g, c.b, 1.0f, 0.05f)) << c.x << ", " << c.y;
    EXPECT_EQ(mpCTextures->GetReferenceCount(ObjPath("textures/quadrants.png")), 1);
}

TEST_F(AssetDrawTest, MeshSilhouetteAndColourComeFromTheFileAndItsMaterials) {
    auto pCube = Mesh(ObjPath("cube.obj"));
    LogCapture_cls log;
    Frame([&] { mpCMeshDraw->Draw(*pCube, nullptr, 0.0); });
    // The unit cube covers pixels 16..47; the face towards the viewer is "Red" (Kd 0.8 0.1 0.1).
    for (const int x : {15, 16, 31, 47, 48})
        EXPECT_TRUE(PixelNear(At(x, 30), x >= 16 && x <= 47 ? 0.8f : 0.0f, x >= 16 && x <= 47 ? 0.1f : 0.0f,
                              x >= 16 && x <= 47 ? 0.1f : 0.0f, x >= 16 && x <= 47 ? 1.0f : 0.0f))
            << x;
    // "Blue" names a picture that is not there: one line naming it, and the white default.
    ASSERT_EQ(log.mVStrLines.size(), 1u);
    EXPECT_TRUE(log.Contains("Texture " + ObjPath("textures/blue.png") + ": the file does not exist"));
    // Turned so the "Blue" top (Tr 0.25) faces the viewer, the red bottom shows through it.
    Frame([&] { mpCMeshDraw->Draw(*pCube, kTurnX90, 0.0); });
    const float a = 0.75f, b = 1 - a;
    EXPECT_TRUE(PixelNear(At(31, 31), a * 0.1f + b * 0.8f, 0.1f, a * 0.9f + b * 0.1f, a * a + b));
    Frame([&] { mpCMeshDraw->Draw(*pCube, kShiftRight, 0.0); });
    EXPECT_TRUE(PixelNear(At(31, 31), 0, 0, 0, 0));
    EXPECT_TRUE(PixelNear(At(32, 31), 0.8f, 0.1f, 0.1f, 1.0f));
    EXPECT_EQ(log.mVStrLines.size(), 1u) << "nothing is read again";
}

TEST_F(AssetDrawTest, AMeshFileIsUploadedOnceForEveryObjectNamingIt) {
    auto pFirst = Mesh(ObjPath("cube.obj")), pSecond = Mesh(ObjPath("../obj/cube.obj"));
    auto pThird = Mesh(ObjPath("plane.obj"));
    Frame([&] {
        for (MeshObj_cls* p : {pFirst.get(), pSecond.get(), pThird.get()})
            mpCMeshDraw->Draw(*p, kShiftRight, 0.0);
    });
    EXPECT_EQ(mpCMeshDraw->GetNumMesh(), 2u);
    EXPECT_FALSE(pSecond->IsLoaded()) << "the second object did not read the file";
    mpCMeshDraw->Release(pFirst.get());
    EXPECT_EQ(mpCMeshDraw->GetNumMesh(), 2u);
    mpCMeshDraw->Release(pSecond.get());
    EXPECT_EQ(mpCMeshDraw->GetNumMesh(), 1u);
    // Naming another file lets go of the old one and its texture.
    pThird->mCFileName.SetBodyFromData(ObjPath("cube.obj"));
    Frame([&] { mpCMeshDraw->Draw(*pThird, nullptr, 0.0); });
    EXPECT_EQ(mpCMeshDraw->GetNumMesh(), 1u);
    EXPECT_EQ(mpCTextures->GetReferenceCount(ObjPath("textures/quadrants.png")), 0);
    pThird->mCValid.SetBodyFromData(wxString("0"));
    Frame([&] { mpCMeshDraw->Draw(*pThird, nullptr, 0.0); });
    EXPECT_EQ(Lit().mCount, 0) << "an object that is not valid draws nothing";
}

TEST_F(AssetDrawTest, TextLightsPixelsInItsBoxOnlyInItsColour) {
    const float orange[4] = {1.0f, 0.5f, 0.0f, 1.0f};
    const double size = 20, width = mpCText->GetLineWidth("HI", size);
    const double ascender = mpCText->GetAscender(size), descender = mpCText->GetDescender(size);
    ASSERT_GT(width, 10.0);
    ASSERT_LT(width, 50.0);
    EXPECT_NEAR(mpCText->GetLineWidth("HIHI", 2 * size), 4 * width, 1e-9);
    const struct {
        int align;
        double x, left; // the anchor and where the line's box starts
    } cases[] = {{0, 4, 4}, {1, 32, 32 - width / 2}, {2, 60, 60 - width}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "align " << c.align);
        Frame([&] { mpCText->Draw("HI", c.x, 24, size, orange, c.align, 1.2); }, true);
        const Lit_cls lit = Lit();
        EXPECT_GT(lit.mCount, 40);
        // Within the advance width and the font's height, filling most of the width.
        EXPECT_GE(lit.mMinX, static_cast<int>(c.left) - 1);
        EXPECT_LE(lit.mMinX, static_cast<int>(c.left) + 4);
        EXPECT_LE(lit.mMaxX, static_cast<int>(c.left + width) + 1);
        EXPECT_GE(lit.mMaxX, static_cast<int>(c.left + width) - 5);
        EXPECT_GE(lit.mMinY, static_cast<int>(24 - descender) - 1);
        EXPECT_LE(lit.mMaxY, static_cast<int>(24 + ascender) + 1);
        // Capitals stand on the baseline and reach most of the way up.
        EXPECT_GE(lit.mMinY, 23);
        EXPECT_GE(lit.mMaxY, 24 + static_cast<int>(size * 0.6));
    }
    int full = 0; // the stems are covered fully: there the colour is the one asked for
    for (const Pixel_cls& px : mVFrame)
        if (px.a > 0.99f && ++full) {
            EXPECT_TRUE(PixelNear(px, 1.0f, 0.5f, 0.0f, 1.0f));
        }
    EXPECT_GT(full, 10);
}

TEST_F(AssetDrawTest, TextLinesStandLineSpacingTimesTheSizeApart) {
    for (const double spacing : {1.0, 2.0}) {
        SCOPED_TRACE(testing::Message() << "spacing " << spacing);
        Frame([&] { mpCText->Draw("H\nH", 20, 48, 12, nullptr, 0, spacing); }, true);
        const int second = 48 - static_cast<int>(12 * spacing);
        const Lit_cls top = Lit(47, kSize - 1), bottom = Lit(second - 1, second + 11);
        EXPECT_GT(top.mCount, 10);
        EXPECT_EQ(bottom.mMinY, second) << "the second capital stands on its own baseline";
        EXPECT_EQ(Lit().mCount, top.mCount + bottom.mCount) << "nothing between or below the lines";
    }
}

TEST_F(AssetDrawTest, ATextObjectDrawsItsTextInItsMaterialColour) {
    TextObj_cls obj(nullptr);
    obj.GetPCTextProp()->mCText.SetBodyFromData(wxString("L"));
    const double scale[16] = {20, 0, 0, 0, 0, 20, 0, 0, 0, 0, 20, 0, 8, 30, 0, 1}; // size 1 is 20 px
    Frame([&] { mpCText->DrawTextObj(obj, scale, 0.0); }, true);
    Lit_cls lit = Lit();
    EXPECT_GT(lit.mCount, 20);
    EXPECT_GE(lit.mMinX, 8);
    EXPECT_GE(lit.mMinY, 29);
    EXPECT_LE(lit.mMaxY, 50);
    // Upright: the foot of the L is wider than its top.
    EXPECT_GT(Lit(lit.mMinY, lit.mMinY).mCount, Lit(lit.mMaxY, lit.mMaxY).mCount + 3);
    int full = 0; // the default material's diffuse is 0.8 grey
    for (const Pixel_cls& px : mVFrame)
        if (px.a > 0.99f && ++full) {
            EXPECT_TRUE(PixelNear(px, 0.8f, 0.8f, 0.8f, 1.0f));
        }
    EXPECT_GT(full, 5);
    obj.GetPCTextProp()->mCAlign.SetBodyFromData(wxString("2"));
    Frame([&] { mpCText->DrawTextObj(obj, scale, 0.0); }, true);
    lit = Lit();
    EXPECT_GT(lit.mCount, 20);
    EXPECT_LE(lit.mMaxX, 8) << "right alignment ends the text at the object's origin";
    obj.mCValid.SetBodyFromData(wxString("0"));
    Frame([&] { mpCText->DrawTextObj(obj, scale, 0.0); }, true);
    EXPECT_EQ(Lit().mCount, 0);
}

// Missing, empty, truncated and random files of each kind: one line naming the file, a default
// drawn in its place, and nothing read again on the next frame.
TEST_F(AssetDrawTest, ABadFileLogsOneLineNamingItAndDrawsADefault) {
    TempDir_cls dir;
    const std::string strPng = ReadFileBytes(ObjPath("textures/quadrants.png"), 4096);
    const std::string strObj = ReadFileBytes(ObjPath("cube.obj"), 4096);
    const std::string strTtf = ReadFileBytes(GlyphAtlas_cls::FindFontFile("None"), 4096);
    const std::string strRandom = RandomBytes(7, 3000);
    ASSERT_FALSE(strPng.empty() || strObj.empty() || strTtf.empty());
    const size_t vertices = strObj.find("\nv "), faces = strObj.find("usemtl");
    enum { Texture, MeshFile, Font };
    const struct {
        int kind;
        const char* pName;
        std::string bytes;
        bool bWrite; // false: the file is missing
    } cases[] = {
        {Texture, "missing.png", "", false},
        {Texture, "empty.png", "", true},
        {Texture, "truncated.png", strPng.substr(0, strPng.size() / 2), true},
        {Texture, "random.jpg", strRandom, true},
        {Texture, "png-head.png", strPng.substr(0, 8) + strRandom, true},
        {Texture, "not.tif", std::string("II*\0 not a TIFF", 15), true},
        {Texture, "grey-only.bmp", "BM" + strRandom, true},
        {MeshFile, "missing.obj", "", false},
        {MeshFile, "empty.obj", "", true},
        {MeshFile, "vertices-only.obj", strObj.substr(vertices, faces - vertices), true},
        {MeshFile, "random.obj", strRandom, true},
        {MeshFile, "random.obj.gz", "\x1f\x8b\x08" + strRandom, true},
        {Font, "missing.ttf", "", false},
        {Font, "empty.ttf", "", true},
        {Font, "random.ttf", strRandom, true},
        {Font, "header-only.ttf", strTtf.substr(0, 200), true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pName);
        const wxString strPath = dir.Path(c.pName);
        if (c.bWrite) {
            ASSERT_TRUE(WriteBytes(strPath, c.bytes));
        }
        auto pObj = Mesh(c.kind == Texture ? ObjPath("plane.obj") : strPath);
        std::function<void()> funcDraw = [&] { mpCMeshDraw->Draw(*pObj, nullptr, 0.0); };
        if (c.kind == Font)
            funcDraw = [&] { mpCText->Draw("H", 10, 10, 20, nullptr, 0, 1.2, strPath); };
        LogCapture_cls log;
        for (int frame = 0; frame < 2; ++frame) {
            if (c.kind == Texture) {
                EXPECT_EQ(mpCTextures->Acquire(strPath), mpCTextures->GetDefaultTexture());
            }
            Frame(funcDraw, c.kind == Font);
            ASSERT_EQ(log.mVStrLines.size(), 1u) << log.mVStrLines.back();
            EXPECT_TRUE(log.Contains(strPath)) << log.mVStrLines[0];
        }
        if (c.kind == MeshFile) { // the default unit cube in the object's own 0.8 grey
            EXPECT_TRUE(PixelNear(At(31, 31), 0.8f, 0.8f, 0.8f, 1.0f) && PixelNear(At(8, 8), 0, 0, 0, 0));
        } else if (c.kind == Font) {
            EXPECT_GT(Lit().mCount, 20) << "the default font drew the text";
        } else {
            EXPECT_TRUE(PixelNear(At(48, 48), 0, 1, 0, 1, 0.05f))
                << "a bad picture elsewhere changes nothing";
        }
        mpCMeshDraw->Release(pObj.get());
    }
}

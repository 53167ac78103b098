// Stream lines, height fields and isosurfaces drawn through their kind-table entries into a small
// buffer with an orthographic camera that maps one unit to one pixel: lines and ribbons on their
// pixels, a lit ramp shaded as its normals say, a ball's surface filling its disc, and the bad
// inputs that must draw nothing.
#include "GLDrawTable_cls.h"
#include "GLKindResources_cls.h"
#include "HeightFieldDraw_cls.h"
#include "HeightField_cls.h"
#include "IsosurfaceDraw_cls.h"
#include "Isosurface_cls.h"
#include "Material_cls.h"
#include "MeshDraw_cls.h"
#include "OrthoDrawFixture.h"
#include "ShaderCtrl_cls.h"
#include "StreamlineDraw_cls.h"
#include "Streamline_cls.h"
#include "TextureProvider_cls.h"

#include <cstdint>
#include <cstring>
#include <functional>
#include <sstream>

namespace {

void PutU32(std::string& s, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        s.push_back(static_cast<char>((v >> (8 * i)) & 0xff));
}

} // namespace

class DataKindDrawTest : public OrthoDrawFixture {
protected:
    void SetUp() override {
        OrthoDrawFixture::SetUp();
        if (IsSkipped())
            return;
        mpResources = std::make_unique<GLKindResources_cls>();
    }
    void TearDown() override {
        mpResources.reset();
        OrthoDrawFixture::TearDown();
    }

    template <class T> T* Make(const char* pKind, const wxString& strPath) {
        auto* p = dynamic_cast<T*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand(pKind, "")));
        EXPECT_NE(p, nullptr);
        if (p)
            p->mCPath.SetBodyFromData(strPath);
        return p;
    }
    static void SetDiffuse(SceneObj_cls* p, double r, double g, double b) {
        p->GetPCMaterial()->GetPCParamGroup("Diffuse")->SetInitValue(r, g, b);
    }
    // The object's first curve from red at 0 to blue at 1, over the range.
    static void RedToBlue(SceneObj_cls* p, double r0, double r1) {
        SetCurve(p, {{0, 1, 0, 0, 1}, {1, 0, 0, 1, 1}}, r0, r1);
    }
    // One stream-line file: lines of (x, y, z, value) points, a blank row between lines.
    wxString WriteLines(const wxString& strName,
                        const std::vector<std::vector<std::array<float, 4>>>& vLine) {
        std::ostringstream text;
        text << "# x y z value\n";
        for (const auto& line : vLine) {
            for (const auto& p : line)
                text << p[0] << " " << p[1] << " " << p[2] << " " << p[3] << "\n";
            text << "\n";
        }
        EXPECT_TRUE(WriteBytes(mDir.Path(strName), text.str()));
        return mDir.Path(strName);
    }
    // A raw height grid "HF32" of w x h heights h(x, y).
    wxString WriteGrid(const wxString& strName, int w, int h, const std::function<float(int, int)>& height) {
        std::string s = "HF32";
        PutU32(s, static_cast<uint32_t>(w));
        PutU32(s, static_cast<uint32_t>(h));
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                const float v = height(x, y);
                uint32_t bits;
                std::memcpy(&bits, &v, 4);
                PutU32(s, bits);
            }
        EXPECT_TRUE(WriteBytes(mDir.Path(strName), s));
        return mDir.Path(strName);
    }
    // A df3 cube of n voxels a side: 128 + 8 (radius - distance from the centre), clamped.
    wxString WriteBall(const wxString& strName, int n, double radius) {
        const std::string s = BallDF3(n, radius);
        EXPECT_TRUE(WriteBytes(mDir.Path(strName), s));
        return mDir.Path(strName);
    }

    // Draws the object alone through its kind's draw entry, scaled by scale, and reads it back.
    // lightDir (eye space, towards the light) switches on one white parallel light.
    void Draw(SceneObj_cls* p, double scale = 1.0, const float* pLightDir = nullptr) {
        GLDrawStatus_cls status = Begin();
        glDisable(GL_DEPTH_TEST);
        status.mpCKindResources = mpResources.get();
        status.mpCMeshDraw = mpMeshDraw;
        if (pLightDir) {
            const GLfloat position[4] = {pLightDir[0], pLightDir[1], pLightDir[2], 0.f};
            const GLfloat white[4] = {1.f, 1.f, 1.f, 1.f}, black[4] = {0.f, 0.f, 0.f, 1.f};
            glLightfv(GL_LIGHT0, GL_POSITION, position);
            glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
            glLightfv(GL_LIGHT0, GL_AMBIENT, black);
            glLightfv(GL_LIGHT0, GL_SPECULAR, black);
            glLightModelfv(GL_LIGHT_MODEL_AMBIENT, black);
            glEnable(GL_LIGHT0);
            status.mLightNumber = 1;
        }
        glScaled(scale, scale, scale);
        const GLDrawTable_cls::Entry_cls* pEntry = GLDrawTable_cls::GetPCEntry(p->mStrClassWord);
        ASSERT_NE(pEntry, nullptr);
        pEntry->mFuncGLDraw(p, status);
        End();
    }
    template <class T> T* Drawer(const char* pClass) { return mpResources->GetPC<T>(pClass); }

    std::unique_ptr<GLKindResources_cls> mpResources;
    MeshDraw_cls* mpMeshDraw = nullptr; // the images of materials, when a test gives one
};

TEST_F(DataKindDrawTest, StreamLinesLandOnTheirPixelsAsLinesAndRibbons) {
    // A horizontal line along pixel row 20 from x = -24 to 24 (pixels 8 .. 55), a point every 4
    // units, its value its x; and a line of one point at pixel (40, 45).
    std::vector<std::array<float, 4>> line;
    for (int i = 0; i <= 12; ++i)
        line.push_back({-24.f + 4.f * i, World(20), 0.f, -24.f + 4.f * i});
    const wxString strPath = WriteLines("lines_000.txt", {line, {{World(40), World(45), 0.f, 0.f}}});
    struct Case {
        const char* name;
        int drawType;
        int width;
        const char* clipHigh; // the object's own box up to this corner; "" for none
        double trimX;         // a trimming modifier's box up to this x; 0 for none
        double thinning;      // its "Thinning"
        bool bHideNegative;   // a data process hides the points of negative value
        int firstX, lastX;    // the pixels of row 20 drawn
        int halfWidth;        // rows 20 +- this are drawn, 20 +- (this + 2) are not
        bool bPoint;          // the one-point line shows
    };
    const Case cases[] = {
        {"lines", 0, 1, "", 0, 0, false, 8, 55, 0, true},
        {"wide lines", 0, 5, "", 0, 0, false, 8, 55, 2, true},
        {"ribbons", 1, 5, "", 0, 0, false, 8, 55, 2, true},
        {"wide ribbons", 1, 9, "", 0, 0, false, 8, 55, 4, true},
        {"the object's clip box up to x = 0", 0, 1, "0 100 100", 0, 0, false, 8, 31, 0, false},
        {"a trimming box up to x = 2, between two points", 1, 5, "", 2.0, 0, false, 8, 33, 2, false},
        {"all thinned away", 0, 1, "", 100.0, 1.0, false, 99, -1, 0, false},
        {"negative values hidden", 0, 1, "", 0, 0, true, 32, 55, 0, true},
    };
    ASSERT_TRUE(GpCShaderCtrl);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto* p = Make<Streamline_cls>("Streamline", strPath);
        ASSERT_NE(p, nullptr);
        SetDiffuse(p, 0.2, 0.9, 0.3);
        Set(p->mCDrawType, wxString::Format("%d", c.drawType));
        Set(p->mCLineWidth, wxString::Format("%d", c.width));
        if (*c.clipHigh) {
            Set(p->mCClip, "1");
            Set(p->mCClipLow, "-100 -100 -100");
            Set(p->mCClipHigh, c.clipHigh);
        }
        if (c.trimX != 0) {
            p->AddModifierCommand("Trimming_cls", "Trim");
            auto* pTrim = p->GetPCAttribute("Trim", 1);
            ASSERT_NE(pTrim, nullptr);
            pTrim->GetPCParamGroup("X Min/Max")->SetInitValue(-100, c.trimX);
            pTrim->GetPCParamGroup("Y Min/Max")->SetInitValue(-100, 100);
            pTrim->GetPCParamGroup("Z Min/Max")->SetInitValue(-100, 100);
            pTrim->GetPCParamGroup("Thinning")->SetInitValue(c.thinning);
        }
        if (c.bHideNegative) {
            p->AddDataProcCommand("StreamSetAlpha_cls", "Hide");
            ASSERT_NE(p->GetPCAttribute("Hide", 2), nullptr);
        }
        Draw(p);
        EXPECT_TRUE(
            GpCShaderCtrl->GetPCItem(c.drawType ? "StreamlineTriangles" : "StreamlineBasic")->IsValid());
        for (int x : {9, 20, 26, 34, 40, 50, 54}) {
            SCOPED_TRACE(x);
            if (x >= c.firstX && x <= c.lastX) {
                EXPECT_TRUE(PixelNear(At(x, 20), 0.2f, 0.9f, 0.3f, 1.f, 0.03f));
                EXPECT_FALSE(IsEmpty(At(x, 20 + c.halfWidth)));
                EXPECT_FALSE(IsEmpty(At(x, 20 - c.halfWidth)));
            } else {
                EXPECT_TRUE(IsEmpty(At(x, 20)));
            }
            EXPECT_TRUE(IsEmpty(At(x, 22 + c.halfWidth)));
            EXPECT_TRUE(IsEmpty(At(x, 18 - c.halfWidth)));
        }
        if (c.lastX > 0 && c.lastX < 55) {
            EXPECT_FALSE(IsEmpty(At(c.lastX, 20))) << "the last pixel inside the box";
            EXPECT_TRUE(IsEmpty(At(c.lastX + 1, 20))) << "the first pixel outside";
        }
        EXPECT_TRUE(IsEmpty(At(4, 20))) << "before the line's start";
        EXPECT_TRUE(IsEmpty(At(59, 20))) << "after its end";
        EXPECT_EQ(!IsEmpty(At(40, 45)), c.bPoint) << "the one-point line";
        GpCSceneObjCtrl->Clear();
    }
}

TEST_F(DataKindDrawTest, StreamLinesTakeTheColourCurveOverTheirValueAndUploadOnlyNewFrames) {
    std::vector<std::array<float, 4>> line;
    for (int i = 0; i <= 12; ++i)
        line.push_back({-24.f + 4.f * i, World(32), 0.f, -24.f + 4.f * i});
    auto* p = Make<Streamline_cls>("Streamline", WriteLines("lines_000.txt", {line}));
    ASSERT_NE(p, nullptr);
    Set(p->mCColorType, "1");
    RedToBlue(p, -24.0, 24.0);
    Draw(p);
    // Pixel x lies at value World(x); the curve goes from red at -24 to blue at 24.
    for (int x : {8, 20, 32, 44, 55}) {
        SCOPED_TRACE(x);
        const float f = std::clamp((World(x) + 24.f) / 48.f, 0.f, 1.f);
        EXPECT_TRUE(PixelNear(At(x, 32), 1.f - f, 0.f, f, 1.f, 0.04f));
    }
    auto* pDraw = Drawer<StreamlineDraw_cls>("Streamline_cls");
    ASSERT_NE(pDraw, nullptr);
    EXPECT_EQ(pDraw->GetUploadCount(p), 1);
    EXPECT_EQ(pDraw->GetDrawnPointCount(p), 13);
    Draw(p);
    EXPECT_EQ(pDraw->GetUploadCount(p), 1) << "the same frame again uploads nothing";
    RedToBlue(p, 0.0, 24.0);
    Draw(p);
    EXPECT_EQ(pDraw->GetUploadCount(p), 2) << "a new range gives new curve coordinates";
    EXPECT_TRUE(PixelNear(At(20, 32), 1.f, 0.f, 0.f, 1.f, 0.04f)) << "below the range: the curve's start";
}

TEST_F(DataKindDrawTest, HeightFieldRampShadesAsItsNormalsSay) {
    // A 40 x 40 unit grid of 11 x 11 heights rising along x (or y) by slope units per unit; one
    // parallel light; the material's colour white: a pixel is |n . l|.
    struct Case {
        const char* name;
        bool bAlongY;
        double slope;
        float light[3];
        bool bFlat;
    };
    const Case cases[] = {
        {"level, light above", false, 0.0, {0.f, 0.f, 1.f}, false},
        {"slope 1, light above", false, 1.0, {0.f, 0.f, 1.f}, false},
        {"slope 0.5, light above", false, 0.5, {0.f, 0.f, 1.f}, false},
        {"slope 1, light along the normal", false, 1.0, {-1.f, 0.f, 1.f}, false},
        {"slope 1, light along the surface", false, 1.0, {1.f, 0.f, 1.f}, false},
        {"slope 2 along y, light from -y", true, 2.0, {0.f, -1.f, 1.f}, false},
        {"slope 1, flat shading", false, 1.0, {-1.f, 0.f, 2.f}, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const wxString strPath = WriteGrid("ramp.f32", 11, 11, [&c](int x, int y) {
            return static_cast<float>((c.bAlongY ? y : x) / 10.0);
        });
        auto* p = Make<HeightField_cls>("HeightField", strPath);
        ASSERT_NE(p, nullptr);
        Set(p->mCUseSequence, "0");
        Set(p->mCSizeX, "40");
        Set(p->mCSizeY, "40");
        Set(p->mCHeightScale, wxString::Format("%g", 40.0 * c.slope));
        Set(p->mCColorType, "0");
        SetDiffuse(p, 1.0, 1.0, 1.0);
        Set(p->GetPCMaterial()->mCSmooth, c.bFlat ? "0" : "1");
        Draw(p, 1.0, c.light);
        const double nl = std::sqrt(1.0 + c.slope * c.slope);
        const double ll =
            std::sqrt(c.light[0] * c.light[0] + c.light[1] * c.light[1] + c.light[2] * c.light[2]);
        const double slopeLight = c.bAlongY ? c.light[1] : c.light[0];
        const float expect = static_cast<float>(std::fabs(-c.slope * slopeLight + c.light[2]) / (nl * ll));
        for (int q : {20, 32, 44}) {
            SCOPED_TRACE(q);
            EXPECT_TRUE(PixelNear(At(q, 32), expect, expect, expect, 1.f, 0.03f));
            EXPECT_TRUE(PixelNear(At(32, q), expect, expect, expect, 1.f, 0.03f));
        }
        EXPECT_TRUE(IsEmpty(At(5, 32))) << "outside the grid";
        EXPECT_TRUE(IsEmpty(At(32, 58)));
        GpCSceneObjCtrl->Clear();
    }
}

TEST_F(DataKindDrawTest, HeightFieldColourCurveFollowsTheHeightAndTrianglesAreOffered) {
    auto* p = Make<HeightField_cls>(
        "HeightField", WriteGrid("ramp.f32", 5, 3, [](int x, int) { return static_cast<float>(x / 4.0); }));
    ASSERT_NE(p, nullptr);
    Set(p->mCUseSequence, "0");
    Set(p->mCSizeX, "40");
    Set(p->mCSizeY, "20");
    Set(p->mCHeightScale, "0");
    RedToBlue(p, 0.0, 1.0);
    Draw(p); // no light: the colour as it stands
    for (int x : {13, 22, 32, 42, 51}) {
        SCOPED_TRACE(x);
        const float f = std::clamp((World(x) + 20.f) / 40.f, 0.f, 1.f);
        EXPECT_TRUE(PixelNear(At(x, 32), 1.f - f, 0.f, f, 1.f, 0.04f));
    }
    // What the shadow volumes take: 5 x 3 vertices, two triangles a cell, in the buffers too.
    HeightFieldDraw_cls::Triangles_cls tri;
    ASSERT_TRUE(HeightFieldDraw_cls::GetTriangles(*p, tri));
    EXPECT_EQ(tri.mNumVertex, 15);
    EXPECT_EQ(tri.mNumIndex, 4 * 2 * 2 * 3);
    EXPECT_FLOAT_EQ(tri.mpXYZ[0], -20.f);
    EXPECT_FLOAT_EQ(tri.mpXYZ[3 * 14 + 1], 10.f);
    GLuint position = 0, element = 0;
    int count = 0;
    ASSERT_TRUE(Drawer<HeightFieldDraw_cls>("HeightField_cls")->GetBuffers(p, position, element, count));
    EXPECT_NE(position, 0u);
    EXPECT_NE(element, 0u);
    EXPECT_EQ(count, tri.mNumIndex);

    // The material's image in place of the colour: a 7 x 5 picture whose red grows by 28 a column
    // from 20 (plus 4 a row), green is 255 - red, blue 128, spread over the whole grid.
    auto* pMaterial = p->GetPCMaterial();
    Set(pMaterial->mCUseTexture, "1");
    Set(pMaterial->mCTextureFile, wxString(ORV_TEST_DATA_DIR) + "/png/rgb8_000.png");
    Set(pMaterial->mCTextureMode, "1");
    Set(pMaterial->mCTextureInterp, "0");
    MeshDraw_cls meshDraw(GpCTextureProvider);
    mpMeshDraw = &meshDraw;
    Draw(p);
    mpMeshDraw = nullptr;
    for (int x : {13, 32, 51}) {
        SCOPED_TRACE(x);
        const int column = std::clamp(static_cast<int>((World(x) + 20.f) / 40.f * 7.f), 0, 6);
        const Pixel_cls px = At(x, 32);
        EXPECT_NEAR(px.b, 128.f / 255.f, 0.01f);
        EXPECT_NEAR(px.r + px.g, 1.f, 0.01f);
        EXPECT_NEAR(px.r, (20.f + 28.f * column) / 255.f, 8.5f / 255.f) << "a row's share at most";
    }
}

TEST_F(DataKindDrawTest, IsosurfaceOfABallFillsItsDiscAndFollowsTheIsoValue) {
    // 24 voxels a side, 1 / 23 object units apart; 46 pixels per unit: 2 pixels a voxel. The
    // value falls by 8 a voxel from 128 at radius 8: iso v is a sphere of radius 8 - (v - 128) / 8
    // voxels.
    auto* p = Make<Isosurface_cls>("Isosurface", WriteBall("ball.df3", 24, 8.0));
    ASSERT_NE(p, nullptr);
    Set(p->mCUseSequence, "0");
    const float light[3] = {0.f, 0.f, 1.f};
    auto* pDraw = Drawer<IsosurfaceDraw_cls>("Isosurface_cls");
    ASSERT_NE(pDraw, nullptr);
    int uploads = 0;
    for (double iso : {128.0, 160.0, 112.0}) {
        SCOPED_TRACE(iso);
        p->GetPCParamGroup("Isosurface", "IsoValue")->SetInitValue(iso);
        Draw(p, 46.0, light);
        const double radius = 2.0 * (8.0 - (iso - 128.0) / 8.0);
        EXPECT_EQ(pDraw->GetUploadCount(p), ++uploads);
        EXPECT_GT(pDraw->GetDrawnTriangleCount(p), 0);
        const double c = 32.0; // the ball's centre is the buffer's
        int inside = 0, outside = 0;
        for (int y = 0; y < kSize; ++y)
            for (int x = 0; x < kSize; ++x) {
                const double r = std::hypot(x + 0.5 - c, y + 0.5 - c);
                if (r < radius - 1.5)
                    inside += IsEmpty(At(x, y)) ? 1 : 0;
                else if (r > radius + 1.5)
                    outside += IsEmpty(At(x, y)) ? 0 : 1;
            }
        EXPECT_EQ(inside, 0) << "holes in the disc";
        EXPECT_EQ(outside, 0) << "pixels outside the disc";
        EXPECT_NEAR(CountDrawn(), M_PI * radius * radius, 0.08 * M_PI * radius * radius);
        // Lit from the eye: brightest at the centre, where the normal faces the light.
        EXPECT_GT(At(32, 32).r, 0.75f);
        EXPECT_GT(At(32, 32).r, At(32, 32 + static_cast<int>(radius) - 2).r);
        Draw(p, 46.0, light);
        EXPECT_EQ(pDraw->GetUploadCount(p), uploads) << "the same iso value makes no new surface";
    }
}

TEST_F(DataKindDrawTest, BadInputDrawsNothing) {
    std::vector<std::array<float, 4>> line;
    for (int i = 0; i <= 12; ++i)
        line.push_back({-24.f + 4.f * i, 0.f, 0.f, 0.f});
    WriteLines("seq_000.txt", {line});
    struct Case {
        const char* name;
        std::function<SceneObj_cls*()> make;
        const char* log; // a part of the log line that says why
    };
    const auto lines = [this](const char* pName, const std::string& text, long long frame) {
        EXPECT_TRUE(WriteBytes(mDir.Path(pName), text));
        SetFrame(2, frame);
        return Make<Streamline_cls>("Streamline", mDir.Path(pName));
    };
    const Case cases[] = {
        {"ragged stream lines", [&] { return lines("ragged.txt", "0 0 0\n1 1 1\n2 2 2 5\n", 0); }, "row 3"},
        {"cut stream lines", [&] { return lines("cut.txt", "0 0 0\n10 10", 0); },
         "the file ends inside a row"},
        {"not numbers", [&] { return lines("nan.txt", "0 0 0\n1 x 1\n", 0); }, "row 2"},
        {"a bad step after a good one",
         [&] {
             // Step 0 drawn first; step 1 is bad and must not show step 0's lines.
             EXPECT_TRUE(WriteBytes(mDir.Path("seq_001.txt"), "0 0 0 1\n4 4 4\n"));
             auto* p = lines("seq_000.txt", ReadBytes(mDir.Path("seq_000.txt")), 0);
             Set(p->mCInterpType, "0");
             Draw(p);
             EXPECT_GT(CountDrawn(), 40);
             SetFrame(2, 1);
             return p;
         },
         "row 2"},
        {"a height field of 1 bit",
         [&] {
             EXPECT_TRUE(WriteBytes(mDir.Path("bits1.png"),
                                    ReadBytes(wxString(ORV_TEST_DATA_DIR) + "/heightfield/bits1.png")));
             SetFrame(1, 0);
             auto* p = Make<HeightField_cls>("HeightField", mDir.Path("bits1.png"));
             Set(p->mCUseSequence, "0");
             Set(p->mCSizeX, "40");
             Set(p->mCSizeY, "40");
             return p;
         },
         "heights need 8 or 16 bits"},
        {"a height grid cut short",
         [&] {
             std::string s = "HF32";
             PutU32(s, 4);
             PutU32(s, 4);
             s += std::string(20, '\0');
             EXPECT_TRUE(WriteBytes(mDir.Path("short.f32"), s));
             SetFrame(1, 0);
             auto* p = Make<HeightField_cls>("HeightField", mDir.Path("short.f32"));
             Set(p->mCUseSequence, "0");
             return p;
         },
         "the raw grid is short"},
        {"an iso value above the data",
         [&] {
             SetFrame(1, 0);
             auto* p = Make<Isosurface_cls>("Isosurface", WriteBall("ball.df3", 12, 3.0));
             Set(p->mCUseSequence, "0");
             p->GetPCParamGroup("Isosurface", "IsoValue")->SetInitValue(300.0);
             return p;
         },
         "lies outside the data range"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        SceneObj_cls* p = c.make();
        ASSERT_NE(p, nullptr);
        Draw(p, 30.0);
        EXPECT_EQ(CountDrawn(), 0);
        EXPECT_TRUE(log.Contains(c.log));
        GpCSceneObjCtrl->Clear();
    }
}

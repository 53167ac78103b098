// Particle objects drawn into a small buffer with an orthographic camera that maps one unit to
// one pixel: points, billboards, ray-cast and mesh spheres where their data put them, colours
// through the colour curve, two-pass drawing, batches, uploads, and the frames that cannot be drawn.
#include "DataSnap_cls.h"
#include "MaterialParticle_cls.h"
#include "OrthoDrawFixture.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "TextureProvider_cls.h"

#include <cstring>
#include <fstream>
#include <functional>

namespace {

struct Atom_cls {
    float x, y, z;
    int type;
    float size;
};

} // namespace

class ParticleDrawTest : public OrthoDrawFixture {
protected:
    void SetUp() override {
        OrthoDrawFixture::SetUp();
        if (IsSkipped())
            return;
        mpDraw = std::make_unique<ParticleDraw_cls>(GpCTextureProvider);
    }
    void TearDown() override {
        mpDraw.reset();
        OrthoDrawFixture::TearDown();
    }

    // A particle object over one text file of the atoms (x y z type size per line).
    Particle_cls* AddParticles(const wxString& strName, const std::vector<Atom_cls>& vAtom,
                               const wxString& strBody = "XYZ::##::Type::##::Size") {
        std::ostringstream text;
        text << vAtom.size() << "\n0\n";
        for (const Atom_cls& a : vAtom)
            text << a.x << " " << a.y << " " << a.z << " " << a.type << " " << a.size << "\n";
        const wxString strPath = mDir.Path(strName + "0000.txt");
        EXPECT_TRUE(WriteBytes(strPath, text.str()));
        Particle_cls* p = dynamic_cast<Particle_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", strName)));
        EXPECT_NE(p, nullptr);
        p->mCFormat.mCDataType.SetBodyFromData("0");
        p->mCFormat.UpdateBodyCommand(strBody);
        p->mCPath.SetBodyFromData(strPath);
        p->mCPointSizeFactor.SetBodyFromData("1");
        p->mCAlphaCrit.SetBodyFromData("0");
        return p;
    }
    static MaterialParticle_cls* Mat(Particle_cls* p, int m = 0) { return p->GetPCMaterialParticle(m); }
    // Colour by x through a curve from red (at x0 and left) to blue (at x1 and right), opaque.
    static void ColourByX(Particle_cls* p, double x0, double x1, int m = 0) {
        SetCurve(p, {{0, 1, 0, 0, 1}, {1, 0, 0, 1, 1}}, x0, x1);
        Set(Mat(p, m)->mCColorCurveType, "1");
        Set(Mat(p, m)->mCColorCurveDepend, "6");
    }

    // Draws the object alone into the buffer, clears first unless told not to, reads it back.
    void Draw(Particle_cls* p, bool bClear = true, bool bPerspective = false) {
        GLDrawStatus_cls status = Begin(bClear, kSize / 2, bPerspective);
        mpDraw->GLDraw(*p, status);
        End();
    }
    // The object drawn in one buffer, then in batches of each size: the same pixels, to the bit.
    void ExpectBatchesDrawAsOneBuffer(Particle_cls* p, int count, std::initializer_list<int> batches,
                                      int minDrawn) {
        mpDraw->mBatchOverride = 0;
        Draw(p);
        ASSERT_FALSE(mpDraw->WasLarge(p));
        const std::vector<Pixel_cls> vNormal = mVFrame;
        EXPECT_GT(CountDrawn(), minDrawn);
        for (int batch : batches) {
            SCOPED_TRACE(batch);
            mpDraw->mBatchOverride = batch;
            Draw(p);
            EXPECT_TRUE(mpDraw->WasLarge(p));
            EXPECT_EQ(mpDraw->GetNumBatches(p), (count + batch - 1) / batch);
            int differ = 0;
            for (size_t i = 0; i < vNormal.size(); ++i)
                differ += std::memcmp(&vNormal[i], &mVFrame[i], sizeof(Pixel_cls)) != 0 ? 1 : 0;
            EXPECT_EQ(differ, 0) << "pixels that differ from the drawing in one buffer";
        }
        mpDraw->mBatchOverride = 0;
    }

    std::unique_ptr<ParticleDraw_cls> mpDraw;
};

TEST_F(ParticleDrawTest, EachDrawTypePutsItsParticlesOnTheirPixels) {
    struct Case {
        const char* name;
        int base;
        const char* key; // the shader-type key of the base type
        int shader;
        bool bSquare; // the corner of the particle's box is covered
    };
    const Case cases[] = {
        {"Point", 0, "ShaderTypePoint=", 0, true},
        {"Circle", 0, "ShaderTypePoint=", 1, false},
        {"PseudoSphere point", 0, "ShaderTypePoint=", 2, false},
        {"Billboard", 1, "ShaderTypeBillboard=", 0, true},
        {"PseudoSphere billboard", 1, "ShaderTypeBillboard=", 1, false},
        {"Gouraud", 2, "ShaderTypeSphere=", 0, false},
        {"Phong", 2, "ShaderTypeSphere=", 1, false},
        {"Toon", 2, "ShaderTypeSphere=", 2, false},
        {"Normal", 2, "ShaderTypeSphere=", 3, false},
    };
    // Three particles at known pixels; points take 9 pixels, the others a radius (half side) of 4.5.
    const int px[3][2] = {{10, 12}, {32, 40}, {50, 20}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const float size = c.base == 0 && c.shader < 2 ? 9.f : 4.5f;
        std::vector<Atom_cls> vAtom;
        for (const auto& q : px)
            vAtom.push_back({World(q[0]), World(q[1]), 0.f, 0, size});
        Particle_cls* p = AddParticles(wxString("P") << c.base << c.shader, vAtom);
        Set(Mat(p)->mCBaseType, wxString::Format("%d", c.base));
        Set(*Mat(p)->GetPCItem(c.key), wxString::Format("%d", c.shader));
        if (c.base == 1) {
            // Billboards face the camera squarely: a tweak with its focus at zero.
            p->AddModifierCommand("ParticleTweak_cls", "Tweak");
        }
        Draw(p);
        for (const auto& q : px) {
            SCOPED_TRACE(q[0] * 100 + q[1]);
            EXPECT_FALSE(IsEmpty(At(q[0], q[1]))) << "the centre";
            EXPECT_FALSE(IsEmpty(At(q[0] + 3, q[1]))) << "inside";
            EXPECT_TRUE(IsEmpty(At(q[0] + 6, q[1]))) << "outside";
            EXPECT_EQ(!IsEmpty(At(q[0] + 4, q[1] + 4)), c.bSquare) << "the corner";
        }
        // Nothing anywhere else.
        EXPECT_TRUE(IsEmpty(At(32, 5)));
        EXPECT_TRUE(IsEmpty(At(2, 60)));
    }
}

TEST_F(ParticleDrawTest, OverlappingImposterSpheresMeetWhereTheirSurfacesDo) {
    // A (left, red) and B (right, blue, nearer by 3). B comes first in the data, so without true
    // depth per fragment the later A would cover B, or the flat sprites would cut straight.
    const float r = 16.f;
    const float ax = -6.f, bx = 6.f, bz = 3.f;
    Particle_cls* p = AddParticles("Imposter", {{bx, 0.f, bz, 0, r}, {ax, 0.f, 0.f, 0, r}});
    Set(Mat(p)->mCShaderTypePoint, "2");
    ColourByX(p, ax, bx);
    Draw(p);
    int checked = 0, nearA = 0, nearB = 0;
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const double wx = World(x), wy = World(y);
            const double dA = r * r - (wx - ax) * (wx - ax) - wy * wy;
            const double dB = r * r - (wx - bx) * (wx - bx) - wy * wy;
            if (dA < 2.0 * r || dB < 2.0 * r)
                continue; // outside the overlap, or at an outline
            const double zA = std::sqrt(dA), zB = bz + std::sqrt(dB);
            if (std::fabs(zA - zB) < 1.0)
                continue; // at the arc where they meet
            SCOPED_TRACE(x * 100 + y);
            const Pixel_cls px = At(x, y);
            if (zA > zB) {
                EXPECT_GT(px.r, px.b + 0.5f) << "A is nearer here";
                ++nearA;
            } else {
                EXPECT_GT(px.b, px.r + 0.5f) << "B is nearer here";
                ++nearB;
            }
            ++checked;
        }
    }
    EXPECT_GT(nearA, 20);
    EXPECT_GT(nearB, 20);
    // The depth written at A's centre is that of A's front, not of a flat sprite.
    const double cx = World(static_cast<int>(ax) + kSize / 2) - ax, cy = World(kSize / 2);
    const double zFront = std::sqrt(r * r - cx * cx - cy * cy); // eye z of A's front there
    EXPECT_NEAR(ReadDepth(static_cast<int>(ax) + kSize / 2, kSize / 2), 0.5 - zFront / 4000.0, 1e-5);
    std::cout << checked << " pixels of the overlap checked\n";
}

TEST_F(ParticleDrawTest, ValueThroughTheColourCurveGivesTheCurvesColour) {
    // Points coloured by their z over the range 0 to 1025: z = k + 0.5 reads texel k, which holds
    // the curve at k / 1025.
    const int kTexel[] = {0, 100, 300, 512, 700, 1000, 1024};
    std::vector<Atom_cls> vAtom;
    for (size_t i = 0; i < std::size(kTexel); ++i)
        vAtom.push_back({World(4 + 8 * static_cast<int>(i)), World(32), kTexel[i] + 0.5f, 0, 5.f});
    Particle_cls* p = AddParticles("Curve", vAtom);
    ColorCurve_cls* pCurve = SetCurve(
        p,
        {{0, 0.1, 0.9, 0.2, 1}, {0.3, 0.8, 0.3, 0.05, 1}, {0.55, 0.2, 0.5, 1.0, 1}, {1, 1.0, 0.95, 0.6, 1}},
        0, 1025);
    Set(Mat(p)->mCColorCurveType, "1");
    Set(Mat(p)->mCColorCurveDepend, "8"); // "Z depend"
    Draw(p);
    for (size_t i = 0; i < std::size(kTexel); ++i) {
        SCOPED_TRACE(kTexel[i]);
        const std::vector<double> v = pCurve->GetVInterpolatedValue(kTexel[i] / 1025.0, true, nullptr, false);
        ASSERT_GE(v.size(), 3u);
        const Pixel_cls px = At(4 + 8 * static_cast<int>(i), 32);
        const float tol = 1.f / 255.f + 1e-4f;
        EXPECT_NEAR(px.r, std::clamp(v[0], 0.0, 1.0), tol);
        EXPECT_NEAR(px.g, std::clamp(v[1], 0.0, 1.0), tol);
        EXPECT_NEAR(px.b, std::clamp(v[2], 0.0, 1.0), tol);
        EXPECT_NEAR(px.a, 1.f, tol);
    }
}

TEST_F(ParticleDrawTest, TwoPassDrawsTheSecondListBehindWithoutWritingDepth) {
    // Type 1 is additive (the second list) and nearer; it comes first in the data.
    const int x = 20, y = 30;
    Particle_cls* p =
        AddParticles("TwoPass", {{World(x), World(y), 10.f, 1, 7.f}, {World(x), World(y), 0.f, 0, 7.f}});
    p->AddMaterialCommand();
    ASSERT_EQ(p->GetNumMaterial(), 2);
    // By "Index depend" over 0 to 1: the near particle (element 0) red, the far one blue.
    SetCurve(p, {{0, 1, 0, 0, 1}, {1, 0, 0, 1, 1}}, 0, 1);
    for (int m = 0; m < 2; ++m) {
        Set(Mat(p, m)->mCColorCurveType, "1");
        Set(Mat(p, m)->mCColorCurveDepend, "0");
    }
    Set(Mat(p, 1)->mCBlendType, "1");
    const double depthFar = 0.5 - 0.0 / 4000.0, depthNear = 0.5 - 10.0 / 4000.0;
    struct Case {
        const char* name;
        const char* twoPass;
        bool bBoth;   // both colours add up at the pixel
        double depth; // what stands in the depth buffer afterwards
    };
    const Case cases[] = {
        {"one pass: the near additive particle hides the far one", "0", false, depthNear},
        {"two pass: the far opaque particle first, the other over it", "1", true, depthFar}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Set(p->mCTwoPass, c.twoPass);
        Draw(p);
        const Pixel_cls px = At(x, y);
        EXPECT_GT(px.r, 0.9f) << "the near particle shows";
        EXPECT_EQ(px.b > 0.9f, c.bBoth) << "the far one shows through";
        EXPECT_NEAR(ReadDepth(x, y), c.depth, 1e-4);
    }
}

TEST_F(ParticleDrawTest, BatchesGiveTheSamePictureAsOneBuffer) {
    // Many overlapping points of three materials (two programs, two blendings), in data order.
    std::vector<Atom_cls> vAtom;
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> pos(-30.f, 30.f), size(1.f, 6.f);
    for (int i = 0; i < 700; ++i)
        vAtom.push_back({pos(rng), pos(rng), pos(rng), i % 3, size(rng)});
    Particle_cls* p = AddParticles("Batches", vAtom);
    p->AddMaterialCommand();
    p->AddMaterialCommand();
    ColourByX(p, -30, 30, 0);
    Set(Mat(p, 1)->mCShaderTypePoint, "1");
    Set(Mat(p, 2)->mCBlendType, "1");
    Set(Mat(p, 2)->mCShaderTypePoint, "2");
    ExpectBatchesDrawAsOneBuffer(p, 700, {64, 100, 699}, 1000);
}

TEST_F(ParticleDrawTest, SpheresInBatchesGiveTheSamePictureAsOneBuffer) {
    // Overlapping spheres of three materials: two drawn (runs change material in sorted order),
    // one "No Rendering", which leaves gaps in the batches' instances.
    struct Case {
        const char* name;
        int base;
        const char* key;
        int shader, none;
    };
    const Case cases[] = {
        {"PseudoSphere point", 0, "ShaderTypePoint=", 2, 3},
        {"PseudoSphere billboard", 1, "ShaderTypeBillboard=", 1, 3},
        {"Gouraud", 2, "ShaderTypeSphere=", 0, 4},
        {"Phong", 2, "ShaderTypeSphere=", 1, 4},
        {"Toon", 2, "ShaderTypeSphere=", 2, 4},
        {"Normal", 2, "ShaderTypeSphere=", 3, 4},
    };
    std::vector<Atom_cls> vAtom;
    std::mt19937 rng(11);
    std::uniform_real_distribution<float> pos(-28.f, 28.f), size(1.f, 4.f);
    for (int i = 0; i < 500; ++i)
        vAtom.push_back({pos(rng), pos(rng), pos(rng), i % 7 == 0 ? 2 : (i / 3) % 2, size(rng)});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Particle_cls* p = AddParticles(wxString("Balls") << c.base << c.shader, vAtom);
        p->AddMaterialCommand();
        p->AddMaterialCommand();
        for (int m = 0; m < 3; ++m) {
            Set(Mat(p, m)->mCBaseType, wxString::Format("%d", c.base));
            Set(*Mat(p, m)->GetPCItem(c.key), wxString::Format("%d", m == 2 ? c.none : c.shader));
        }
        ColourByX(p, -28, 28, 0);
        if (c.base == 1)
            p->AddModifierCommand("ParticleTweak_cls", "Tweak");
        ExpectBatchesDrawAsOneBuffer(p, 500, {64, 499}, 1500);
        p->mCVisible.SetBodyFromDataBOOL(false);
    }
}

TEST_F(ParticleDrawTest, AFrameWhoseDataDidNotChangeUploadsNothing) {
    std::vector<Atom_cls> vAtom;
    for (int i = 0; i < 40; ++i)
        vAtom.push_back({World(i + 10), World(20 + i % 5), 0.f, i / 10, 2.f});
    struct Case {
        const char* name;
        int base;
    };
    for (const Case& c : {Case{"points", 0}, Case{"spheres", 2}}) {
        SCOPED_TRACE(c.name);
        Particle_cls* p = AddParticles(wxString("Still") << c.base, vAtom);
        for (int m = 1; m < 4; ++m)
            p->AddMaterialCommand();
        for (int m = 0; m < 4; ++m)
            Set(Mat(p, m)->mCBaseType, wxString::Format("%d", c.base));
        Draw(p);
        const size_t first = mpDraw->GetUploadedBytes(p);
        EXPECT_GE(first, 40u * 4u);
        const std::vector<Pixel_cls> vFirst = mVFrame;
        Draw(p);
        EXPECT_EQ(mpDraw->GetUploadedBytes(p), first) << "the same frame again";
        EXPECT_EQ(0, std::memcmp(vFirst.data(), mVFrame.data(), vFirst.size() * sizeof(Pixel_cls)));
        if (c.base == 2) {
            // Types in runs of ten: one instanced draw per run of a material.
            EXPECT_EQ(mpDraw->GetSphereDrawCalls(p), 4);
        }
        // A material edit rebuilds what depends on it.
        Set(Mat(p, 1)->mCBlendType, "1");
        Draw(p);
        EXPECT_GT(mpDraw->GetUploadedBytes(p), first);
    }
}

TEST_F(ParticleDrawTest, FramesThatCannotBeDrawnSayWhyOnceAndDrawNothing) {
    struct Case {
        const char* name;
        const char* log; // a piece of the one line
        std::function<void(Particle_cls*, const wxString& strDir)> spoil;
    };
    const Case cases[] = {
        {"curve index past the curves", "uses colour curve 3",
         [](Particle_cls* p, const wxString&) {
             Set(Mat(p)->mCColorCurveType, "1");
             Set(Mat(p)->mCColorCurveIndex, "3");
         }},
        {"image file missing", "which does not exist",
         [](Particle_cls* p, const wxString& strDir) {
             Set(p->mCTexturePath0, strDir + "/no-such-image.png");
             Set(Mat(p)->mCTextureType, "1");
         }},
        {"image slot not named", "which the object does not name",
         [](Particle_cls* p, const wxString&) {
             Set(Mat(p)->mCTextureType, "1");
             Set(Mat(p)->mCTextureIndex, "2");
         }},
        {"colour by a column the format lacks", "colours by Value1",
         [](Particle_cls* p, const wxString&) {
             Set(Mat(p)->mCColorCurveType, "1");
             Set(Mat(p)->mCColorCurveDepend, "4");
         }},
        {"a sequence without particles", "has no particles",
         [](Particle_cls* p, const wxString& strDir) {
             ASSERT_TRUE(WriteBytes(strDir + "/Empty0000.txt", "0\n0\n"));
             Set(p->mCPath, strDir + "/Empty0000.txt");
         }},
        {"base types mixed", "",
         [](Particle_cls* p, const wxString&) {
             p->AddMaterialCommand();
             Set(Mat(p, 1)->mCBaseType, "2");
         }},
    };
    int index = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const wxString strName = wxString::Format("Bad%d", index++);
        Particle_cls* p =
            AddParticles(strName, {{World(20), World(20), 0.f, 0, 6.f}, {World(40), World(44), 0.f, 0, 6.f}});
        Draw(p);
        ASSERT_FALSE(IsEmpty(At(20, 20))) << "a good frame first";
        LogCapture_cls log;
        c.spoil(p, mDir.mStrPath);
        for (int pass = 0; pass < 2; ++pass) {
            Draw(p);
            EXPECT_EQ(CountDrawn(), 0) << "nothing, and nothing of the frame before";
        }
        int lines = 0;
        for (const wxString& line : log.mVStrLines)
            lines += line.Contains("Particle object \"" + strName + "\"") ? 1 : 0;
        if (*c.log) {
            EXPECT_EQ(lines, 1) << "one line for both draws";
            EXPECT_TRUE(log.Contains(c.log));
        }
        p->mCVisible.SetBodyFromDataBOOL(false);
    }
}

TEST_F(ParticleDrawTest, LammpsDumpDrawsItsAtomsThroughTheFramePasses) {
    // The Lennard-Jones melt of LAMMPS (256 atoms in a box of 6.72), seen through the view's passes
    // from the front: atoms where they project, background where none can.
    mpView->mCDispGrid.SetBodyFromData("0");
    Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
    Particle_cls* p = dynamic_cast<Particle_cls*>(
        GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", "Melt")));
    ASSERT_NE(p, nullptr);
    p->mCFormat.mCDataType.SetBodyFromData("0");
    p->mCFormat.UpdateHeaderCommand(
        "Dummy::##::Time::##::Dummy::##::ParticleNumber::##::Dummy::##::BoxBounds::##::Dummy");
    p->mCFormat.UpdateBodyCommand("ID::##::Type::##::XYZ");
    p->mCPath.SetBodyFromData(wxString(ORV_TEST_DATA_DIR) + "/lammps/dump.melt.0000.txt");
    Set(Mat(p)->mCShaderTypePoint,
        "2"); // ray-cast spheres: the dump has no sizes, so the factor is the radius
    p->GetPCMaterialParticle(0)->GetPCParamGroup("SizeFactor")->SetInitValue(0.5, 1.0);
    GpCSceneObjCtrl->Select("", false, false, false);
    const double tgt[3] = {0, 0, -1}, top[3] = {0, 1, 0};
    LookFrom(3.36, 3.36, 20, tgt, top);
    PaintMain(256, 256);
    ASSERT_EQ(p->mpCCurrent->mNumber, 256);
    // The box of atoms covers the middle of the picture and nothing near the edges.
    const Pixel_cls bg = At(5, 5);
    int covered = 0;
    for (int y = 100; y < 156; ++y)
        for (int x = 100; x < 156; ++x)
            covered += PixelNear(At(x, y), bg.r, bg.g, bg.b, bg.a, 0.02f) ? 0 : 1;
    EXPECT_GT(covered, 56 * 56 / 3) << "atoms fill the middle";
    for (int x : {5, 250})
        for (int y : {5, 128, 250})
            EXPECT_TRUE(PixelNear(At(x, y), bg.r, bg.g, bg.b, bg.a, 0.02f)) << x << "," << y;
}

TEST_F(ParticleDrawTest, PointSizesFollowDistanceAndTinyPointsFadeBelowAlphaCrit) {
    // In perspective (90 degrees, eye at z = 100): the far point left of the middle at z = 0, the
    // near one right of it at z = 50.
    Particle_cls* p = AddParticles("Sizes", {{-20.f, 0.f, 0.f, 0, 10.f}, {20.f, 0.f, 50.f, 0, 10.f}});
    Set(Mat(p)->mCShaderTypePoint, "0");
    auto width = [this](int y, int x0, int x1) {
        int n = 0;
        for (int x = x0; x < x1; ++x)
            n += IsEmpty(At(x, y)) ? 0 : 1;
        return n;
    };
    struct Case {
        const char* name;
        const char* depend;
        int far, near; // widths in pixels of the point at z = 0 and at z = 50
    };
    // "Depend on distance" with DistanceBase= 100: nominal at the origin's distance, twice at half of it.
    const Case cases[] = {{"constant size", "0", 10, 10}, {"depend on distance", "1", 10, 20}};
    Set(p->mCDistanceBase, "100");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Set(p->mCDependDistance, c.depend);
        Draw(p, true, true);
        EXPECT_NEAR(width(32, 0, 32), c.far, 1);
        EXPECT_NEAR(width(32, 32, 64), c.near, 1);
    }
    // Half a pixel wide: drawn as one pixel with a quarter of its alpha, or not at all below the
    // criterion.
    Set(p->mCDependDistance, "0");
    Set(p->mCPointSizeFactor, "0.05");
    struct Crit {
        const char* crit;
        bool bDrawn;
    };
    for (const Crit& c : {Crit{"0.2", true}, Crit{"0.3", false}}) {
        SCOPED_TRACE(c.crit);
        Set(p->mCAlphaCrit, c.crit);
        Draw(p, true, true);
        EXPECT_EQ(CountDrawn(), c.bDrawn ? 2 : 0);
        if (c.bDrawn) {
            float maxAlpha = 0.f;
            for (const Pixel_cls& px : mVFrame)
                maxAlpha = std::max(maxAlpha, px.a);
            EXPECT_NEAR(maxAlpha, 0.25f, 0.01f);
        }
    }
}

TEST_F(ParticleDrawTest, BillboardsLeanByTheFocusAndShowTheirImage) {
    Particle_cls* p = AddParticles("Boards", {{World(32), World(32), 0.f, 0, 12.f}});
    Set(Mat(p)->mCBaseType, "1");
    // Without a tweak the focus pitches the square by -60 degrees: half as high as wide.
    Draw(p);
    EXPECT_FALSE(IsEmpty(At(32 + 10, 32)));
    EXPECT_FALSE(IsEmpty(At(32, 32 + 4)));
    EXPECT_TRUE(IsEmpty(At(32, 32 + 8)));
    // An image on the square: its texels in the square's colour (white).
    const wxString strImage = wxString(ORV_TEST_DATA_DIR) + "/png/rgb8_000.png";
    Set(p->mCTexturePath0, strImage);
    Set(Mat(p)->mCTextureType, "1");
    p->AddModifierCommand("ParticleTweak_cls", "Tweak");
    Draw(p);
    const GLuint texture = GpCTextureProvider->Find(strImage);
    ASSERT_NE(texture, 0u);
    GLint w = 0, h = 0;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &w);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &h);
    std::vector<float> texels(static_cast<size_t>(w) * h * 4);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_FLOAT, texels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    // Pixels of the square against the texel under them, away from texel edges by the filtering.
    int compared = 0;
    for (int dy : {-6, 0, 6}) {
        for (int dx : {-6, 0, 6}) {
            SCOPED_TRACE(dx * 100 + dy);
            const double u = (World(32 + dx) - World(32) + 12.0) / 24.0,
                         v = (World(32 + dy) - World(32) + 12.0) / 24.0;
            const int tx = std::min(w - 1, static_cast<int>(u * w)),
                      ty = std::min(h - 1, static_cast<int>(v * h));
            const float* t = &texels[(static_cast<size_t>(ty) * w + tx) * 4];
            const Pixel_cls px = At(32 + dx, 32 + dy);
            EXPECT_NEAR(px.r, t[0], 0.12f);
            EXPECT_NEAR(px.g, t[1], 0.12f);
            EXPECT_NEAR(px.b, t[2], 0.12f);
            ++compared;
        }
    }
    EXPECT_EQ(compared, 9);
}

TEST_F(ParticleDrawTest, PlayingDrawsTheFramePreparedInTheBackground) {
    // Three steps; the particle moves right by 10 pixels a step.
    for (int step = 0; step < 3; ++step) {
        std::ostringstream text;
        text << "1\n" << step << "\n" << World(10 + 10 * step) << " " << World(32) << " 0 0 4\n";
        ASSERT_TRUE(WriteBytes(mDir.Path(wxString::Format("Play%04d.txt", step)), text.str()));
    }
    Particle_cls* p = AddParticles("Play", {{World(10), World(32), 0.f, 0, 4.f}});
    GpCTimeCtrl->mCFrameMax.SetBodyFromData(3LL);
    GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(1LL);
    GpCTimeCtrl->mCSubFrameStepping.SetBodyFromData(1LL);
    GpCTimeCtrl->mPlayDirection = 1;
    LogCapture_cls log;
    size_t uploaded = 0;
    for (int frame = 0; frame < 3; ++frame) {
        SCOPED_TRACE(frame);
        GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(static_cast<long long>(frame));
        // The read-ahead of the idle passes: every step in memory before the frame.
        p->PrefetchData();
        for (int i = 0; i < p->mCSequence.GetSnapCount(); ++i)
            if (DataSnap_cls* pSnap = p->mCSequence.GetPCSnap(i))
                pSnap->WaitReadingThread(1);
        Draw(p);
        EXPECT_FALSE(IsEmpty(At(10 + 10 * frame, 32))) << "the particle of this frame";
        EXPECT_TRUE(IsEmpty(At(10 + 10 * ((frame + 1) % 3), 32)));
        EXPECT_GT(mpDraw->GetUploadedBytes(p), uploaded) << "a new frame goes up";
        uploaded = mpDraw->GetUploadedBytes(p);
    }
    GpCTimeCtrl->mPlayDirection = 0;
    EXPECT_TRUE(log.Contains("Swap Render Snap")) << "a frame came from the background";
}

TEST_F(ParticleDrawTest, ImposterSpheresInPerspectiveCoverTheirWholeOutlineOffTheAxis) {
    // Eye at z = 100 looking down -z with 90 degrees: pixel (i, j) looks along
    // ((i + 0.5) / 32 - 1, (j + 0.5) / 32 - 1, -1). Spheres near the middle and far off it.
    struct Ball {
        float x, y, z, r;
    };
    const Ball balls[] = {{-30.f, -20.f, 0.f, 12.f}, {45.f, 40.f, 30.f, 10.f}};
    std::vector<Atom_cls> vAtom;
    for (const Ball& b : balls)
        vAtom.push_back({b.x, b.y, b.z, 0, b.r});
    Particle_cls* p = AddParticles("Perspective", vAtom);
    Set(Mat(p)->mCShaderTypePoint, "2");
    Draw(p, true, true);
    int inside = 0;
    for (int j = 0; j < kSize; ++j) {
        for (int i = 0; i < kSize; ++i) {
            const double d[3] = {(i + 0.5) / 32.0 - 1.0, (j + 0.5) / 32.0 - 1.0, -1.0};
            const double len = std::sqrt(d[0] * d[0] + d[1] * d[1] + 1.0);
            int hits = 0, near = 0;
            for (const Ball& b : balls) {
                const double c[3] = {b.x, b.y, b.z - 100.0};
                const double t = (c[0] * d[0] + c[1] * d[1] + c[2] * d[2]) / len;
                const double miss2 = c[0] * c[0] + c[1] * c[1] + c[2] * c[2] - t * t;
                const double dist = std::sqrt(std::max(0.0, miss2));
                // A pixel spans about t / 32 units across at that distance.
                if (std::fabs(dist - b.r) < t / 32.0)
                    ++near;
                else if (dist < b.r)
                    ++hits;
            }
            if (near > 0)
                continue;
            SCOPED_TRACE(i * 100 + j);
            EXPECT_EQ(!IsEmpty(At(i, j)), hits > 0);
            inside += hits > 0 ? 1 : 0;
        }
    }
    EXPECT_GT(inside, 60); // two discs of about 4 and 5 pixels radius
}

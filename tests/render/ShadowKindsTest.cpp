// Shadows of the further kinds and of the awkward receivers, through the frame passes: a white
// floor seen from (0, 10, 0) straight down with 90 degrees, so that floor point (x, z) is pixel
// (128 + 12.8 x, 128 - 12.8 z) of the 256 buffer, under a parallel light going (1, -1, 0): what
// stands at height y over x throws its shadow to x + y. And a ribbon's image along its length.
#include "FBO_cls.h"
#include "HeightField_cls.h"
#include "Isosurface_cls.h"
#include "LightSource_cls.h"
#include "Material_cls.h"
#include "PassesFixture.h"
#include "ShadowVolumeCtrl_cls.h"
#include "Streamline_cls.h"
#include "TimeCtrl_cls.h"

#include <cmath>
#include <cstring>
#include <functional>

namespace {

int PixelX(double x) {
    return static_cast<int>(std::floor(128 + 12.8 * x));
}
int PixelY(double z) {
    return static_cast<int>(std::floor(128 - 12.8 * z));
}
float Grey(const Pixel_cls& p) {
    return (p.r + p.g + p.b) / 3.f;
}

// A raw grid "HF32" of 3 x 3 heights h(column).
std::string Grid3(const float h[3]) {
    std::string s = "HF32";
    const uint32_t head[2] = {3, 3};
    s.append(reinterpret_cast<const char*>(head), sizeof(head));
    for (int i = 0; i < 9; ++i)
        s.append(reinterpret_cast<const char*>(&h[i % 3]), sizeof(float));
    return s;
}

} // namespace

class ShadowKindsTest : public PassesFixture {
protected:
    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        mpView->mCDispGrid.SetBodyFromData("0");
        mpView->mCViewAngleL.SetBodyFromData("90");
        PositionAndDirection_cls pose;
        pose.mPos[1] = 10;
        const double down[3] = {0, -1, 0}, north[3] = {0, 0, -1};
        for (int i = 0; i < 3; ++i)
            pose.mTgt[i] = down[i], pose.mTop[i] = north[i];
        pose.Normalize();
        mpView->SetPosDir(pose);
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(1LL);
        GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(0LL);
        Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
        mpFloor = AddPrimitive("Plane", "Floor", 0, 0, 5);
        mpLight = static_cast<LightSource_cls*>(Obj("Initial Light"));
        mpLight->mCLightType.SetBodyFromData("0");
        mpLight->mCCastShadow.SetBodyFromData("1");
        SetGroup(mpLight, "", "RotationEuler", -90, -45, 0);
        SetGroup(mpLight, "Material", "Diffuse", 1, 1, 1);
        SetGroup(mpLight, "Material", "Specular", 0, 0, 0);
    }
    SceneObj_cls* AddPrimitive(const wxString& strKind, const wxString& strName, double y, double turnX,
                               double scale) {
        RunCommandText(*mpMain, "SceneObjCtrl::New::Primitive_cls::" + strKind + "::" + strName);
        SceneObj_cls* p = Obj(strName);
        SetGroup(p, "", "Position", 0, y, 0);
        SetGroup(p, "", "RotationEuler", turnX, 0, 0);
        SetGroup(p, "", "Scale", scale, scale, scale);
        SetGroup(p, "Material", "Diffuse", 1, 1, 1);
        SetGroup(p, "Material", "Specular", 0, 0, 0);
        GpCSceneObjCtrl->Select("", false, false, false);
        return p;
    }
    template <class T> T* AddData(const char* pKind, const wxString& strName, const std::string& bytes) {
        EXPECT_TRUE(WriteBytes(mDir.Path(strName), bytes));
        auto* p = dynamic_cast<T*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand(pKind, strName)));
        EXPECT_NE(p, nullptr);
        if (p) {
            p->mCPath.SetBodyFromData(mDir.Path(strName));
            p->mCUseSequence.SetBodyFromData("0");
        }
        GpCSceneObjCtrl->Select("", false, false, false);
        return p;
    }
    std::vector<Pixel_cls> Paint(bool bShadow) {
        GpCShadowVolumeCtrl->mCUseShadowVolume.SetBodyFromData(bShadow ? "1" : "0");
        FBO_cls target(64, 64, nullptr);
        target.SetGeometryFBO(64, 64);
        target.MakeFBO(true, false);
        mpPasses->RefreshEX();
        mpPasses->PaintDirectly(64, 64, 64, 64, target.GetFramebuffer());
        FBO_cls* pMain = mpPasses->GetPCFBOMain();
        return ReadTexture(pMain->GetTexture(), pMain->GetWidth(), pMain->GetHeight());
    }
    static Pixel_cls AtFloor(const std::vector<Pixel_cls>& v, double x, double z) {
        return v[static_cast<size_t>(PixelY(z)) * 256 + static_cast<size_t>(PixelX(x))];
    }

    SceneObj_cls* mpFloor = nullptr;
    LightSource_cls* mpLight = nullptr;
};

TEST_F(ShadowKindsTest, CastersShadowTheFloorWhicheverSideFacesTheLight) {
    struct Point_cls {
        double x, z;
        bool bShadow;
    };
    const float level[3] = {0.f, 0.f, 0.f}, ramp[3] = {0.f, 0.5f, 1.f};
    // Sheets of 1 by 1 at height 2 shadow x 1.5 .. 2.5; the ramp rising from 2 to 3 along x
    // shadows x 1.5 .. 3.5 (only 1.5 .. 2.5 if its grid were not lifted); the ribbon along z,
    // 0.56 units wide at that distance, x 1.72 .. 2.28; the ball of radius 0.35 an ellipse around
    // x 2.
    const std::vector<Point_cls> vSheet = {{2.0, 0.0, true},   {1.7, 0.3, true},  {2.3, -0.3, true},
                                           {1.2, 0.0, false},  {2.8, 0.0, false}, {2.0, 0.8, false},
                                           {-2.0, 0.0, false}, {3.3, 0.0, false}};
    const struct {
        const char* name;
        std::function<SceneObj_cls*()> funcMake;
        std::vector<Point_cls> points;
    } cases[] = {
        {"plane, front to the light", [&] { return AddPrimitive("Plane", "Front", 2, 0, 0.5); }, vSheet},
        {"plane, back to the light", [&] { return AddPrimitive("Plane", "Back", 2, 180, 0.5); }, vSheet},
        {"height field, back to the light",
         [&] {
             auto* p = AddData<HeightField_cls>("HeightField", "level.f32", Grid3(level));
             SetGroup(p, "", "Position", 0, 2, 0);
             SetGroup(p, "", "RotationEuler", 90, 0, 0);
             return p;
         },
         vSheet},
        {"height field lifted on the GPU",
         [&] {
             auto* p = AddData<HeightField_cls>("HeightField", "ramp.f32", Grid3(ramp));
             p->mCHeightScale.SetBodyFromData("1");
             SetGroup(p, "", "Position", 0, 2, 0);
             SetGroup(p, "", "RotationEuler", -90, 0, 0);
             return p;
         },
         {{1.7, 0.0, true},
          {2.5, 0.0, true},
          {3.3, 0.0, true},
          {3.0, 0.3, true},
          {3.7, 0.0, false},
          {1.2, 0.0, false},
          {3.0, 0.8, false}}},
        {"stream-line ribbon, 9 pixels wide",
         [&] {
             auto* p = AddData<Streamline_cls>("Streamline", "ribbon_000.txt", "0 2 -0.5\n0 2 0.5\n");
             p->mCDrawType.SetBodyFromData("1");
             p->mCLineWidth.SetBodyFromData("9");
             return p;
         },
         {{2.0, 0.0, true},
          {2.0, 0.3, true},
          {2.15, -0.3, true},
          {2.5, 0.0, false},
          {1.5, 0.0, false},
          {2.0, 0.8, false}}},
        {"isosurface",
         [&] {
             auto* p = AddData<Isosurface_cls>("Isosurface", "ball.df3", BallDF3(24, 8.0));
             SetGroup(p, "", "Position", 0, 2, 0);
             return p;
         },
         {{2.0, 0.0, true},
          {2.3, 0.0, true},
          {2.0, 0.2, true},
          {2.0, 0.6, false},
          {2.8, 0.0, false},
          {1.2, 0.0, false}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        SceneObj_cls* pCaster = c.funcMake();
        ASSERT_NE(pCaster, nullptr);
        const std::vector<Pixel_cls> vPlain = Paint(false);
        const std::vector<Pixel_cls> vShadow = Paint(true);
        const float lit = Grey(AtFloor(vPlain, 4.0, 3.0));
        for (const Point_cls& q : c.points) {
            SCOPED_TRACE(wxString::Format("x %g z %g", q.x, q.z).ToStdString());
            const Pixel_cls plain = AtFloor(vPlain, q.x, q.z);
            EXPECT_NEAR(Grey(plain), lit, 0.01f) << "the floor, seen";
            if (q.bShadow)
                EXPECT_LT(Grey(AtFloor(vShadow, q.x, q.z)), lit - 0.25f);
            else
                EXPECT_TRUE(PixelNear(AtFloor(vShadow, q.x, q.z), plain.r, plain.g, plain.b, plain.a, 2e-3f));
        }
        pCaster->mCVisible.SetBodyFromDataBOOL(false);
    }
}

TEST_F(ShadowKindsTest, ReceiversShowTheirShadowOnce) {
    // A box over the floor shadows x 1 .. 3. A second light that casts nothing makes two steps.
    SceneObj_cls* pBox = AddPrimitive("Cube", "Caster", 2, 0, 0.5);
    SetGroup(pBox, "Material", "Diffuse", 1, 0, 0);
    RunCommandText(*mpMain, "SceneObjCtrl::New::LightSource_cls::PointLight::Fill");
    SetGroup(Obj("Fill"), "", "Position", 0, 6, 4);
    GpCSceneObjCtrl->Select("", false, false, false);
    // A ribbon and a ball straddle the shadow's edge at z 0.5.
    Streamline_cls* pRibbon = nullptr;
    const struct {
        const char* name;
        std::function<void(bool bOn)> funcSet;
        double x, z;         // a point of the receiver in the shadow, as the floor maps it
        double ox, oz;       // and one out of it
        bool bShadowChanges; // else the shadow leaves it as it is
    } cases[] = {
        {"half transparent floor", [&](bool bOn) { SetGroup(mpFloor, "Material", "Alpha", bOn ? 0.5 : 1.0); },
         2.0, 0.0, 2.0, 1.5, true},
        {"image in place of the floor's light",
         [&](bool bOn) {
             Material_cls* p = mpFloor->GetPCMaterial();
             p->mCUseTexture.SetBodyFromData(bOn ? "1" : "0");
             p->mCTextureFile.SetBodyFromData(wxString(ORV_TEST_DATA_DIR) + "/png/rgb8_000.png");
             p->mCTextureMode.SetBodyFromData("1");
         },
         2.0, 0.0, 2.0, 1.5, false},
        {"stream-line ribbon over the floor, its colour its own",
         [&](bool bOn) {
             if (bOn) {
                 pRibbon = AddData<Streamline_cls>("Streamline", "over_000.txt", "2 0.5 -0.3\n2 0.5 1.5\n");
                 if (!pRibbon)
                     return;
                 pRibbon->mCDrawType.SetBodyFromData("1");
                 pRibbon->mCLineWidth.SetBodyFromData("9");
             } else if (pRibbon) {
                 pRibbon->mCVisible.SetBodyFromDataBOOL(false);
             }
         },
         2.1, 0.0, 2.1, 1.0, false},
        {"isosurface ball on the floor",
         [&](bool) {
             auto* p = AddData<Isosurface_cls>("Isosurface", "ball.df3", BallDF3(24, 8.0));
             SetGroup(p, "", "Position", 2, 0.4, 0.5);
         },
         2.1, 0.3, 2.1, 0.7, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        c.funcSet(true);
        // Where the box casts nothing the steps add up to the plain frame; in the shadow the
        // receiver keeps all but the casting light.
        const std::vector<Pixel_cls> vPlain = Paint(false);
        const std::vector<Pixel_cls> vShadow = Paint(true);
        for (const auto& xz : {std::pair<double, double>{-3.0, 2.0}, {4.0, -3.0}, {c.ox, c.oz}}) {
            SCOPED_TRACE(wxString::Format("outside x %g z %g", xz.first, xz.second).ToStdString());
            const Pixel_cls p = AtFloor(vPlain, xz.first, xz.second);
            EXPECT_TRUE(PixelNear(AtFloor(vShadow, xz.first, xz.second), p.r, p.g, p.b, p.a, 3e-3f));
        }
        // The casting light's own light gone, its ambient kept.
        const Pixel_cls plain = AtFloor(vPlain, c.x, c.z);
        SetGroup(mpLight, "Material", "Diffuse", 0, 0, 0);
        const std::vector<Pixel_cls> vUnlit = Paint(false);
        SetGroup(mpLight, "Material", "Diffuse", 1, 1, 1);
        const Pixel_cls expect = c.bShadowChanges ? AtFloor(vUnlit, c.x, c.z) : plain;
        if (c.bShadowChanges) {
            ASSERT_LT(Grey(expect), Grey(plain) - 0.1f) << "the casting light matters there";
        }
        EXPECT_TRUE(PixelNear(AtFloor(vShadow, c.x, c.z), expect.r, expect.g, expect.b, expect.a, 4e-3f));
        c.funcSet(false);
    }
}

TEST_F(ShadowKindsTest, RibbonImageRunsAlongTheArcLength) {
    // A ribbon just over the floor from x -4 to 2 (points unevenly apart), then 3 units north:
    // 9 units long. Its image: 7 columns whose red grows by 28 from 20 (and 4 a row across).
    mpFloor->mCVisible.SetBodyFromDataBOOL(false);
    const std::string strLines = "-4 0.05 0\n-3.5 0.05 0\n-1 0.05 0\n2 0.05 0\n2 0.05 -3\n";
    auto* p = AddData<Streamline_cls>("Streamline", "lines_000.txt", strLines);
    ASSERT_NE(p, nullptr);
    p->mCDrawType.SetBodyFromData("1");
    Material_cls* pMaterial = p->GetPCMaterial();
    pMaterial->mCUseTexture.SetBodyFromData("1");
    pMaterial->mCTextureFile.SetBodyFromData(wxString(ORV_TEST_DATA_DIR) + "/png/rgb8_000.png");
    pMaterial->mCTextureInterp.SetBodyFromData("0");
    SetGroup(p, "Material", "Diffuse", 1, 1, 1);
    const struct {
        const char* name;
        const char* mapping;
        double period; // of the image along the line, in units
    } cases[] = {{"stretched once", "0", 9.0}, {"repeated every line width", "1", 5.0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        p->mCMappingType.SetBodyFromData(c.mapping);
        p->mCLineWidth.SetBodyFromData("5");
        Paint(false);
        for (double along = 0.3; along < 8.8; along += 0.45) {
            SCOPED_TRACE(along);
            const double share = along / c.period - std::floor(along / c.period);
            const double column = std::floor(share * 7.0);
            // Away from the columns' borders and the bend.
            if (share * 7.0 - column < 0.2 || share * 7.0 - column > 0.8 || std::fabs(along - 6.0) < 0.3)
                continue;
            const Pixel_cls px =
                along < 6.0 ? At(PixelX(-4.0 + along), PixelY(0.0)) : At(PixelX(2.0), PixelY(-(along - 6.0)));
            EXPECT_NEAR(px.b, 128.f / 255.f, 0.01f);
            EXPECT_NEAR(px.r, (28.0 + 28.0 * column) / 255.0, 8.5 / 255.0) << "column " << column;
        }
    }
}

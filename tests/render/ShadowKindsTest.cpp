// Shadows of the further kinds and awkward receivers through the frame passes: a floor seen from
// (0, 10, 0) straight down with 90 degrees (floor point x, z is pixel 128 + 12.8 x, 128 - 12.8 z)
// under a parallel light going (1, -1, 0), so what stands at height y over x shades x + y; a box
// at (0, 2, -3) shades x 1 .. 3, z -3.5 .. -2.5; a second light casts nothing. And a ribbon's image.
#include "FBO_cls.h"
#include "Material_cls.h"
#include "PassesFixture.h"
#include "ShadowVolumeCtrl_cls.h"
#include "TimeCtrl_cls.h"

#include <array>
#include <cmath>
#include <functional>

#define IMAGE "TextureFile=" ORV_TEST_DATA_DIR "/png/rgb8_000.png"

class ShadowKindsTest : public PassesFixture {
protected:
    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        PositionAndDirection_cls pose;
        for (int i = 0; i < 3; ++i)
            pose.mPos[i] = i == 1 ? 10 : 0, pose.mTgt[i] = i == 1 ? -1 : 0, pose.mTop[i] = i == 2 ? -1 : 0;
        pose.Normalize();
        mpView->SetPosDir(pose);
        mpView->mCDispGrid.SetBodyFromData("0");
        mpView->mCViewAngleL.SetBodyFromData("90");
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(1LL);
        SetGroup(Obj("Box"), "", "Position", 0, 2, -3);
        SetGroup(Obj("Box"), "", "Scale", .5, .5, .5);
        mpFloor = Add("Primitive_cls::Plane", "", 0, 0, 5);
        Set(mpLight = Obj("Initial Light"), "LightType=0 CastShadow=1");
        SetGroup(mpLight, "", "RotationEuler", -90, -45, 0);
        SetGroup(mpLight, "Material", "Specular", 0, 0, 0);
        SetGroup(Add("LightSource_cls::PointLight", "", 6, 0, 1), "", "Position", 0, 6, 4);
    }
    // Keys of a list, "Key=value" apart by blanks.
    static void Set(ConfListContainer_cls* p, const wxString& strKeys) {
        for (const wxString& str : wxSplit(strKeys, ' ')) {
            ConfItem_cls* pItem = p->GetPCItem(str.BeforeFirst('=') + "=");
            EXPECT_NE(pItem, nullptr) << str;
            if (pItem)
                pItem->SetBodyFromData(str.AfterFirst('='));
        }
    }
    // A kind ("Primitive_cls::Plane"; a data kind reads the bytes) at height y turned about x.
    SceneObj_cls* Add(const wxString& strKind, const std::string& bytes, double y, double turnX,
                      double scale) {
        const wxString strName = wxString::Format("O%zu", mVPCAdded.size()),
                       strPath = mDir.Path(strName + ".df3"); // the volume reader goes by the name
        RunCommandText(*mpMain, "SceneObjCtrl::New::" + strKind + (strKind.Contains(":") ? "::" : "::ANY::") +
                                    strName);
        SceneObj_cls* p = mVPCAdded.emplace_back(Obj(strName));
        if (!bytes.empty() && WriteBytes(strPath, bytes))
            Set(p, "Path=" + strPath + " UseSequence=0");
        SetGroup(p, "", "Position", 0, y, 0);
        SetGroup(p, "", "RotationEuler", turnX, 0, 0);
        SetGroup(p, "", "Scale", scale, scale, scale);
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
        return ReadTexture(mpPasses->GetPCFBOMain()->GetTexture(), 256, 256);
    }
    static Pixel_cls At(const std::vector<Pixel_cls>& v, double x, double z) {
        return v[static_cast<size_t>(128 - 12.8 * z) * 256 + static_cast<size_t>(128 + 12.8 * x)];
    }
    std::vector<SceneObj_cls*> mVPCAdded;
    SceneObj_cls* mpFloor = nullptr;
    SceneObj_cls* mpLight = nullptr;
};

TEST_F(ShadowKindsTest, EachKindCastsAndReceivesOnceWhicheverSideFacesTheLight) {
    const float g[9] = {0, .5f, 1, 0, .5f, 1, 0, .5f, 1}; // 3 x 3 heights rising along x
    const std::string strRamp =
        std::string("HF32\3\0\0\0\3\0\0\0", 12) + std::string(reinterpret_cast<const char*>(g), 36);
    const wxString strRibbon = "DrawType=1 LineWidth=9";
    const std::string strFlat = strRamp.substr(0, 12) + std::string(36, '\0');
    // Points (x, z) that the row's object darkens (1), leaves as without shadows (0), or shows as
    // with no casting light (2). Casters are 1 by 1 at height 2, a ribbon 0.56 units wide there.
    const struct {
        const char* name;
        std::function<void()> funcMake;
        std::vector<std::array<double, 3>> points;
    } cases[] = {
        {"sheet, back to the light",
         [&] { Add("Primitive_cls::Plane", "", 2, 180, .5); },
         {{2, 0, 1}, {1.7, .3, 1}, {2.3, -.3, 1}, {1.2, 0, 0}, {2.8, 0, 0}, {2, .8, 0}}},
        {"height field, back to the light",
         [&] { Add("HeightField_cls", strFlat, 2, 90, 1); },
         {{2, 0, 1}, {1.7, .3, 1}, {2.3, -.3, 1}, {1.2, 0, 0}, {2.8, 0, 0}}},
        // From 2 to 3 along x it shades x 1.5 .. 3.5; a grid not lifted only 1.5 .. 2.5.
        {"height field lifted",
         [&] { Set(Add("HeightField_cls", strRamp, 2, -90, 1), "HeightScale=1"); },
         {{1.7, 0, 1}, {2.5, 0, 1}, {3.3, 0, 1}, {3, .3, 1}, {3.7, 0, 0}, {1.2, 0, 0}, {3, .8, 0}}},
        {"ribbon",
         [&] { Set(Add("Streamline_cls", "0 0 -.5\n0 0 .5\n", 2, 0, 1), strRibbon); },
         {{2, 0, 1}, {2.15, -.3, 1}, {2.5, 0, 0}, {1.5, 0, 0}, {2, .8, 0}}},
        {"isosurface of radius 0.35",
         [&] { Add("Isosurface_cls", BallDF3(24, 8.0), 2, 0, 1); },
         {{2, 0, 1}, {2.3, 0, 1}, {2, .2, 1}, {2, .6, 0}, {2.8, 0, 0}}},
        {"isosurface half in the box's shadow",
         [&] { SetGroup(Add("Isosurface_cls", BallDF3(24, 8.0), 0, 0, 1), "", "Position", 2, .4, -2.5); },
         {{2.15, -2.95, 2}, {2.15, -2.45, 0}}},
        {"half transparent floor",
         [&] { SetGroup(mpFloor, "Material", "Alpha", .5); },
         {{2, -3, 2}, {-3, 2, 0}, {4, -1, 0}}},
        {"image in place of the floor's light",
         [&] { Set(mpFloor->GetPCMaterial(), "UseTexture=1 " IMAGE); },
         {{2, -3, 0}, {-3, 2, 0}, {4, -1, 0}}},
        {"ribbon's own colour",
         [&] { Set(Add("Streamline_cls", "2 .5 -3.3\n2 .5 -1.5\n", 0, 0, 1), strRibbon); },
         {{2.05, -3.1, 0}, {2.05, -1.8, 0}}},
    };
    Set(mpFloor->GetPCMaterial(), "TextureMode=1");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const size_t first = mVPCAdded.size();
        c.funcMake();
        const std::vector<Pixel_cls> vShadow = Paint(true), vPlain = Paint(false);
        SetGroup(mpLight, "Material", "Diffuse", 0, 0, 0);
        const std::vector<Pixel_cls> vUnlit = Paint(false);
        for (const auto& q : c.points) {
            const Pixel_cls s = At(vShadow, q[0], q[1]), p = At(q[2] == 2 ? vUnlit : vPlain, q[0], q[1]);
            if (q[2] == 1)
                EXPECT_LT(s.r + s.g + s.b, p.r + p.g + p.b - 0.5f) << q[0] << " " << q[1];
            else
                EXPECT_TRUE(PixelNear(s, p.r, p.g, p.b, p.a, 4e-3f)) << q[0] << " " << q[1];
        }
        for (size_t i = first; i < mVPCAdded.size(); ++i)
            mVPCAdded[i]->mCVisible.SetBodyFromDataBOOL(false);
        SetGroup(mpLight, "Material", "Diffuse", 1, 1, 1);
        SetGroup(mpFloor, "Material", "Alpha", 1);
        Set(mpFloor->GetPCMaterial(), "UseTexture=0");
    }
}

TEST_F(ShadowKindsTest, RibbonImageRunsAlongTheArcLength) {
    // 9 units from x -4 to 2 (points unevenly apart), then north; the image's 7 columns have red
    // 20 + 28 a column (+ 4 a row), stretched once or repeated every 5 units (the line width).
    mpFloor->mCVisible.SetBodyFromDataBOOL(false);
    SceneObj_cls* p = Add("Streamline_cls", "-4 0 0\n-3.5 0 0\n-1 0 0\n2 0 0\n2 0 -3\n", .05, 0, 1);
    Set(p->GetPCMaterial(), "UseTexture=1 TextureInterp=0 " IMAGE);
    SetGroup(p, "Material", "Diffuse", 1, 1, 1);
    for (const double period : {9.0, 5.0}) {
        Set(p, wxString::Format("DrawType=1 LineWidth=5 MappingType=%d", period == 9.0 ? 0 : 1));
        const std::vector<Pixel_cls> v = Paint(false);
        for (double along = 0.3; along < 8.8; along += 0.45) {
            const double column = std::fmod(along, period) / period * 7.0, part = column - std::floor(column);
            if (part < 0.2 || part > 0.8 || std::fabs(along - 6) < 0.3)
                continue; // the columns' borders and the bend
            const Pixel_cls px = At(v, std::min(along - 4.0, 2.0), -std::max(0.0, along - 6.0));
            EXPECT_NEAR(px.b, 128.f / 255.f, 0.01f) << period << " " << along;
            EXPECT_NEAR(px.r, (28.0 + 28.0 * std::floor(column)) / 255.0, 8.5 / 255.0)
                << period << " " << along;
        }
    }
}

// Shadow volumes through the frame passes: a box over a floor under a parallel light coming down
// at 45 degrees from -x, seen from straight above, so the box's shadow lies on the floor from
// x = 1 to 3 and z = -0.5 to 0.5. Frames are read back and compared with the frame without
// shadows, pixel by pixel.
#include "HeightFieldForRender_cls.h"
#include "HeightField_cls.h"
#include "LightSource_cls.h"
#include "MaterialParticle_cls.h"
#include "Material_cls.h"
#include "Particle_cls.h"
#include "PassesFixture.h"
#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "TimeCtrl_cls.h"
#include "VBOBaseObject_cls.h"
#include "VBOCone_cls.h"
#include "VBOCylinder_cls.h"
#include "VBOPlane_cls.h"
#include "VBOSphere_cls.h"

#include "DrawParticle_cls.h"

#include <cstring>
#include <functional>
#include <map>
#include <tuple>

namespace {

const double kDown[3] = {0, -1, 0};
const double kNorth[3] = {0, 0, -1};

// The floor point (x, 0, z) in the buffer of 256 seen from (0, 10, 0) with 90 degrees.
int PixelX(double x) {
    return static_cast<int>(std::floor(128 + 12.8 * x));
}
int PixelY(double z) {
    return static_cast<int>(std::floor(128 - 12.8 * z));
}

float Grey(const Pixel_cls& p) {
    return (p.r + p.g + p.b) / 3.f;
}

// A flat grid of 4 by 4 cells over -1..1 in x and y, as a height field prepares it.
HeightFieldForRender_cls gGrid;
void MakeGrid() {
    gGrid.Clear();
    gGrid.mWidth = gGrid.mHeight = 5;
    for (int j = 0; j < 5; ++j)
        for (int i = 0; i < 5; ++i)
            gGrid.mXYZ.insert(gGrid.mXYZ.end(), {i * 0.5f - 1.f, j * 0.5f - 1.f, 0.f});
    for (unsigned j = 0; j < 4; ++j)
        for (unsigned i = 0; i < 4; ++i) {
            const unsigned a = j * 5 + i;
            gGrid.mIndex.insert(gGrid.mIndex.end(), {a, a + 1, a + 6, a, a + 6, a + 5});
        }
    ++gGrid.mDataCounter;
}

} // namespace

class ShadowVolumeTest : public PassesFixture {
protected:
    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        ASSERT_NE(GpCShadowVolumeCtrl, nullptr);
        mpView->mCDispGrid.SetBodyFromData("0");
        mpView->mCViewAngleL.SetBodyFromData("90");
        LookFrom(0, 10, 0, kDown, kNorth);
        // The box: half size 0.5, from y = 1.5 to 2.5.
        SceneObj_cls* pBox = Obj("Box");
        SetGroup(pBox, "", "Position", 0, 2, 0);
        SetGroup(pBox, "", "Scale", 0.5, 0.5, 0.5);
        SetGroup(pBox, "Material", "Diffuse", 1, 0, 0);
        // The floor: white, 10 by 10.
        RunCommandText(*mpMain, "SceneObjCtrl::New::Primitive_cls::Plane::Floor");
        SceneObj_cls* pFloor = Obj("Floor");
        SetGroup(pFloor, "", "Scale", 5, 1, 5);
        SetGroup(pFloor, "Material", "Diffuse", 1, 1, 1);
        SetGroup(pFloor, "Material", "Specular", 0, 0, 0);
        // The light shines along its local -z: turned to (1, -1, 0) / sqrt 2.
        mpLight = static_cast<LightSource_cls*>(Obj("Initial Light"));
        mpLight->mCLightType.SetBodyFromData("0");
        mpLight->mCCastShadow.SetBodyFromData("1");
        SetGroup(mpLight, "", "RotationEuler", -90, -45, 0);
        double dir[3];
        mpLight->GetDirectionGlobal(0.0, dir);
        ASSERT_NEAR(dir[0], M_SQRT1_2, 1e-6);
        ASSERT_NEAR(dir[1], -M_SQRT1_2, 1e-6);
        ASSERT_NEAR(dir[2], 0.0, 1e-6);
        GpCSceneObjCtrl->Select("", false, false, false);
    }
    static void SetShadow(bool bOn) {
        GpCShadowVolumeCtrl->mCUseShadowVolume.SetBodyFromData(bOn ? "1" : "0");
    }
    // One frame; the main buffer is read back and returned.
    std::vector<Pixel_cls> Paint() {
        mpPasses->RefreshEX();
        return PaintMain();
    }
    Pixel_cls Floor(double x, double z) const { return At(PixelX(x), PixelY(z)); }
    static Pixel_cls AtFloor(const std::vector<Pixel_cls>& v, double x, double z) {
        return v[static_cast<size_t>(PixelY(z)) * 256 + static_cast<size_t>(PixelX(x))];
    }

    LightSource_cls* mpLight = nullptr;
};

TEST_F(ShadowVolumeTest, BoxShadowFallsWhereTheLightIsBlockedAndNowhereElse) {
    struct Point_cls {
        double x, z;
        bool bShadow; // the box stands between the floor point and the light
    };
    // The parallel light of the set-up, and a point light at (-4, 6, 0), which throws the box's
    // shadow from x = 0.67 to 3.71, wider where it is farther.
    const struct {
        const char* name;
        const char* type;
        std::vector<Point_cls> points;
    } cases[] = {
        {"parallel",
         "0",
         {{2.0, 0.0, true},
          {1.3, 0.3, true},
          {2.7, -0.3, true},
          {1.6, -0.35, true},
          {3.4, 0.0, false},
          {2.0, 0.9, false},
          {2.0, -0.9, false},
          {-2.0, 0.0, false},
          {-1.2, 0.3, false},
          {4.0, -3.0, false},
          {0.8, 2.0, false}}},
        {"point",
         "1",
         {{2.0, 0.0, true},
          {1.0, 0.0, true},
          {3.3, 0.0, true},
          {2.5, 0.5, true},
          {4.2, 0.0, false},
          {2.0, 1.2, false},
          {2.0, -1.2, false},
          {-2.0, 0.0, false}}},
    };
    SetGroup(mpLight, "", "Position", -4, 6, 0);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        mpLight->mCLightType.SetBodyFromData(c.type);
        SetShadow(false);
        const std::vector<Pixel_cls> vPlain = Paint();
        SetShadow(true);
        Paint();
        const float lit = Grey(AtFloor(vPlain, 2.0, 0.0));
        for (const auto& q : c.points) {
            SCOPED_TRACE(wxString::Format("x %g z %g", q.x, q.z).ToStdString());
            const Pixel_cls plain = AtFloor(vPlain, q.x, q.z);
            const Pixel_cls now = Floor(q.x, q.z);
            if (q.bShadow) {
                EXPECT_LT(Grey(now), lit - 0.25f) << "dark under the box";
                EXPECT_NEAR(now.a, 1.f, 1e-3);
            } else {
                EXPECT_TRUE(PixelNear(now, plain.r, plain.g, plain.b, plain.a, 1e-3f))
                    << "as without shadows";
            }
        }
        // The box itself keeps its colour where the camera sees it.
        const Pixel_cls box = vPlain[128 * 256 + 128];
        EXPECT_TRUE(PixelNear(At(128, 128), box.r, box.g, box.b, 1.f, 1e-3f));
    }
}

TEST_F(ShadowVolumeTest, MaterialAndLightSwitchesRemoveTheShadow) {
    SetShadow(false);
    const std::vector<Pixel_cls> vPlain = Paint();
    const Pixel_cls plain = AtFloor(vPlain, 2.0, 0.0);
    Material_cls* pBoxMaterial = Obj("Box")->GetPCMaterial();
    Material_cls* pFloorMaterial = Obj("Floor")->GetPCMaterial();
    const struct {
        const char* name;
        ConfItem_cls* pItem;
    } cases[] = {{"CastShadow= of the box", &pBoxMaterial->mCCastShadow},
                 {"ReceiveShadow= of the floor", &pFloorMaterial->mCReceiveShadow},
                 {"CastShadow= of the light", &mpLight->mCCastShadow},
                 {"UseShadowVolume=", &GpCShadowVolumeCtrl->mCUseShadowVolume}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        // The key reaches the controller as a line of the project, and is written with it.
        RunCommandText(*mpMain,
                       "ConfItemList::Begin::ShadowVolumeCtrl\nUseShadowVolume=1\nConfItemList::End");
        EXPECT_TRUE(
            mpMain->SerializeProject().Contains("ConfItemList::Begin::ShadowVolumeCtrl\nUseShadowVolume=1"));
        Paint();
        ASSERT_LT(Grey(Floor(2.0, 0.0)), Grey(plain) - 0.25f) << "the shadow is there";
        c.pItem->SetBodyFromData("0");
        Paint();
        EXPECT_TRUE(PixelNear(Floor(2.0, 0.0), plain.r, plain.g, plain.b, plain.a, 1e-3f));
        c.pItem->SetBodyFromData("1");
    }
}

TEST_F(ShadowVolumeTest, MeshesCastToo) {
    SetShadow(false);
    const std::vector<Pixel_cls> vPlain = Paint();
    const float lit = Grey(AtFloor(vPlain, 2.0, 0.0));
    SetShadow(true);
    // A unit cube from a file where the box stood, the box hidden: the same shadow.
    Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
    RunCommandText(*mpMain, "SceneObjCtrl::New::MeshObj_cls::ANY::Mesh");
    SceneObj_cls* pMesh = Obj("Mesh");
    pMesh->GetPCItem("FileName")->SetBodyFromData(wxString(ORV_TEST_DATA_DIR) + "/obj/cube.obj");
    SetGroup(pMesh, "", "Position", 0, 2, 0);
    GpCSceneObjCtrl->Select("", false, false, false);
    Paint();
    EXPECT_LT(Grey(Floor(2.0, 0.0)), lit - 0.25f) << "the mesh's shadow";
    EXPECT_NEAR(Grey(Floor(3.4, 0.0)), Grey(AtFloor(vPlain, 3.4, 0.0)), 1e-3f);
    pMesh->GetPCMaterial()->mCCastShadow.SetBodyFromData("0");
    Paint();
    EXPECT_NEAR(Grey(Floor(2.0, 0.0)), lit, 1e-3f) << "no shadow from a mesh that casts none";
}

TEST_F(ShadowVolumeTest, HeightFieldObjectCastsThroughItsDrawEntry) {
    SetShadow(false);
    Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
    const std::vector<Pixel_cls> vPlain = Paint();
    const float lit = Grey(AtFloor(vPlain, 2.0, 0.0));
    // A level grid of 3 by 3 heights, 1 by 1 units, where the box stood and turned like the
    // sheet above: its shadow falls from x = 1.5 to 2.5.
    std::string bytes = "HF32";
    const uint32_t head[2] = {3, 3};
    bytes.append(reinterpret_cast<const char*>(head), sizeof(head));
    const float heights[9] = {};
    bytes.append(reinterpret_cast<const char*>(heights), sizeof(heights));
    ASSERT_TRUE(WriteBytes(mDir.Path("level.f32"), bytes));
    RunCommandText(*mpMain, "SceneObjCtrl::New::HeightField_cls::ANY::Field");
    auto* pField = dynamic_cast<HeightField_cls*>(Obj("Field"));
    ASSERT_NE(pField, nullptr);
    pField->mCPath.SetBodyFromData(mDir.Path("level.f32"));
    pField->mCUseSequence.SetBodyFromData("0");
    pField->mCSizeX.SetBodyFromData("1");
    pField->mCSizeY.SetBodyFromData("1");
    pField->mCHeightScale.SetBodyFromData("0");
    SetGroup(pField, "", "Position", 0, 2, 0);
    SetGroup(pField, "", "RotationEuler", -90, 0, 0);
    GpCSceneObjCtrl->Select("", false, false, false);
    SetShadow(true);
    Paint();
    EXPECT_LT(Grey(Floor(2.0, 0.0)), lit - 0.25f) << "the height field's shadow";
    EXPECT_NEAR(Grey(Floor(3.4, 0.0)), Grey(AtFloor(vPlain, 3.4, 0.0)), 1e-3f);
    pField->GetPCMaterial()->mCCastShadow.SetBodyFromData("0");
    Paint();
    EXPECT_NEAR(Grey(Floor(2.0, 0.0)), lit, 1e-3f) << "no shadow from a field that casts none";
}

TEST_F(ShadowVolumeTest, ShadowsOffLeaveTheFrameBitForBit) {
    // The plain road: no controller at all, the key off, and the key on with no casting light.
    ShadowVolumeCtrl_cls* pCtrl = GpCShadowVolumeCtrl;
    GpCShadowVolumeCtrl = nullptr;
    const std::vector<Pixel_cls> vNone = Paint();
    GpCShadowVolumeCtrl = pCtrl;
    const struct {
        const char* name;
        bool bUse, bLightCasts;
    } cases[] = {{"key off", false, true}, {"no light casts", true, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        SetShadow(c.bUse);
        mpLight->mCCastShadow.SetBodyFromData(c.bLightCasts ? "1" : "0");
        const std::vector<Pixel_cls> v = Paint();
        ASSERT_EQ(v.size(), vNone.size());
        EXPECT_EQ(0, std::memcmp(v.data(), vNone.data(), v.size() * sizeof(Pixel_cls)));
        EXPECT_EQ(GpCShadowVolumeCtrl->GetPCFBOBuffer(), nullptr) << "no sum of steps";
    }
}

TEST_F(ShadowVolumeTest, StepsAddUpToThePlainFrameOutsideTheShadow) {
    // A second light that casts nothing (step 0) and one that casts: two steps added up. And the
    // camera standing inside the shadow sees it all the same (depth-fail counting).
    RunCommandText(*mpMain, "SceneObjCtrl::New::LightSource_cls::PointLight::Fill");
    SceneObj_cls* pFill = Obj("Fill");
    SetGroup(pFill, "", "Position", 0, 6, 4);
    GpCSceneObjCtrl->Select("", false, false, false);
    SetShadow(false);
    const std::vector<Pixel_cls> vPlain = Paint();
    SetShadow(true);
    GpCShadowVolumeCtrl->PrepareSteps(GpCSceneObjCtrl, 0.0);
    EXPECT_EQ(GpCShadowVolumeCtrl->GetFirstStep(), 0);
    EXPECT_EQ(GpCShadowVolumeCtrl->GetEndStep(), 2);
    const std::vector<Pixel_cls> vTwo = Paint();
    for (const auto& xz : {std::pair<double, double>{3.4, 0.0}, {-2.0, 0.0}, {2.0, 0.9}}) {
        SCOPED_TRACE(xz.first * 10 + xz.second);
        const Pixel_cls p = AtFloor(vPlain, xz.first, xz.second);
        EXPECT_TRUE(PixelNear(AtFloor(vTwo, xz.first, xz.second), p.r, p.g, p.b, p.a, 2e-3f));
    }
    // In the shadow the fill light still shines: brighter than with the one light alone.
    mpLight->mCCastShadow.SetBodyFromData("1");
    Obj("Fill")->mCVisible.SetBodyFromDataBOOL(false);
    const std::vector<Pixel_cls> vOne = Paint();
    EXPECT_GT(Grey(AtFloor(vTwo, 2.0, 0.0)), Grey(AtFloor(vOne, 2.0, 0.0)) + 0.05f);
    EXPECT_LT(Grey(AtFloor(vTwo, 2.0, 0.0)), Grey(AtFloor(vPlain, 2.0, 0.0)) - 0.25f);

    // The camera at (2, 0.8, 0), between the box and its shadow, looks straight down.
    LookFrom(2.0, 0.8, 0, kDown, kNorth);
    SetShadow(false);
    const std::vector<Pixel_cls> vInsidePlain = Paint();
    SetShadow(true);
    const std::vector<Pixel_cls> vInside = Paint();
    EXPECT_LT(Grey(vInside[128 * 256 + 128]), Grey(vInsidePlain[128 * 256 + 128]) - 0.25f);
}

TEST_F(ShadowVolumeTest, SoftLightGivesAPenumbraOfIntermediateValues) {
    SetShadow(true);
    // Across the shadow's edge at z = 0.5, along x = 2.
    auto profile = [&]() {
        std::vector<float> v;
        for (int y = PixelY(1.4); y <= PixelY(-0.0); ++y)
            v.push_back(Grey(At(PixelX(2.0), y)));
        return v;
    };
    Paint();
    const std::vector<float> vHard = profile();
    const float lit = vHard.front(), dark = vHard.back();
    ASSERT_GT(lit, dark + 0.25f);
    auto between = [&](const std::vector<float>& v) {
        int n = 0;
        for (float g : v)
            n += g > dark + 0.05f && g < lit - 0.05f ? 1 : 0;
        return n;
    };
    EXPECT_LE(between(vHard), 1) << "a hard edge";
    mpLight->mCSoftShadow.SetBodyFromData("1");
    GpCShadowVolumeCtrl->mCSoftShadowSampleNum.SetBodyFromData("16");
    GpCShadowVolumeCtrl->mCSoftShadowSize.SetBodyFromData("0.1");
    Paint();
    const std::vector<float> vSoft = profile();
    EXPECT_GE(between(vSoft), 4) << "a penumbra";
    // Far from the edge the samples add up to the whole light, and the core stays dark.
    EXPECT_NEAR(vSoft.front(), lit, 0.02f);
    EXPECT_NEAR(vSoft.back(), dark, 0.01f);
    // Monotonic from light to dark, up to the noise of the samples.
    for (size_t i = 1; i < vSoft.size(); ++i)
        EXPECT_LE(vSoft[i], vSoft[i - 1] + 0.02f) << i;
}

TEST_F(ShadowVolumeTest, ParticleSphereCastsARoundShadow) {
    Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
    GpCTimeCtrl->mCFrameMax.SetBodyFromData(1LL);
    GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(0LL);
    // One sphere of radius 0.6 at (0, 2, 0): its shadow is an ellipse around x = 2, z = 0, with
    // half axes 0.6 across the light (z) and 0.6 sqrt 2 along it (x).
    const wxString strPath = mDir.Path("Ball0000.txt");
    ASSERT_TRUE(WriteBytes(strPath, "1\n0\n0 2 0 0 0.6\n"));
    auto* p = dynamic_cast<Particle_cls*>(
        GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", "Ball")));
    ASSERT_NE(p, nullptr);
    p->mCFormat.mCDataType.SetBodyFromData("0");
    p->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
    p->mCPath.SetBodyFromData(strPath);
    p->mCPointSizeFactor.SetBodyFromData("1");
    p->mCAlphaCrit.SetBodyFromData("0");
    p->GetPCMaterialParticle(0)->mCBaseType.SetBodyFromData("2");
    p->mCSphereDepth.SetBodyFromData("3");
    GpCSceneObjCtrl->Select("", false, false, false);
    SetShadow(false);
    const std::vector<Pixel_cls> vPlain = Paint();
    SetShadow(true);
    Paint();
    const float lit = Grey(AtFloor(vPlain, 2.0, 0.0));
    const double a = 0.6 * M_SQRT2, b = 0.6;
    // Points around the ellipse: inside at 0.75 of its radius, outside at 1.3.
    for (int k = 0; k < 12; ++k) {
        const double phi = k * M_PI / 6;
        for (const auto& rc : {std::pair<double, bool>{0.75, true}, {1.3, false}}) {
            const double x = 2.0 + rc.first * a * std::cos(phi), z = rc.first * b * std::sin(phi);
            SCOPED_TRACE(wxString::Format("phi %d r %g", k * 30, rc.first).ToStdString());
            // The sphere itself hides the floor below x = 0.8.
            if (x < 1.0)
                continue;
            if (rc.second)
                EXPECT_LT(Grey(Floor(x, z)), lit - 0.25f);
            else
                EXPECT_TRUE(PixelNear(Floor(x, z), AtFloor(vPlain, x, z).r, AtFloor(vPlain, x, z).g,
                                      AtFloor(vPlain, x, z).b, 1.f, 1e-3f));
        }
    }
    // "CastShadow=" of the particle object.
    p->mCCastShadow.SetBodyFromData("0");
    Paint();
    EXPECT_NEAR(Grey(Floor(2.0, 0.0)), lit, 1e-3f);
}

TEST_F(ShadowVolumeTest, ExampleProjectShowsTheBoxsShadowBesideIt) {
    ASSERT_TRUE(mpMain->OpenProject(wxString(ORV_SOURCE_DIR) + "/examples/shadows/shadows.ovp"));
    ASSERT_TRUE(GpCShadowVolumeCtrl->mCUseShadowVolume.GetBodyBOOL());
    GpCSceneObjCtrl->Select("", false, false, false);
    Paint();
    const float lit = Grey(Floor(-1.5, 0.0));
    EXPECT_LT(Grey(Floor(1.5, 0.0)), lit - 0.25f) << "the shadow, x 0.5 to 2.5";
    EXPECT_NEAR(Grey(Floor(1.5, 1.0)), lit, 0.01f) << "beside it";
    EXPECT_NEAR(Grey(Floor(3.0, 0.0)), lit, 0.01f) << "beyond it";
}

TEST(ShadowAdjacencyTest, IndexedGridIsOneSheetWithItsRimOpen) {
    MakeGrid();
    const std::vector<uint32_t> vAdj = ShadowAdjacency_cls::GetVAdjacencyIndexed(
        gGrid.mXYZ.data(), 3, gGrid.mIndex.data(), static_cast<int>(gGrid.mIndex.size()));
    ASSERT_EQ(vAdj.size(), 32u * 6);
    EXPECT_EQ(ShadowAdjacency_cls::CountOpenEdges(vAdj), 16) << "four cells along each side";
    // The first cell's diagonal (0 -> 6) has the second triangle's far corner 5 across it.
    EXPECT_EQ(vAdj[0], 0u);
    EXPECT_EQ(vAdj[4], 6u);
    EXPECT_EQ(vAdj[5], 5u);
}

TEST(ShadowAdjacencyTest, ClosedShapesFindEveryNeighbourAndOpenOnesTheirRim) {
    const struct {
        const char* name;
        std::vector<float> v;
        int stride;
        int triangles; // with area
        int open;
    } cases[] = {
        {"cube", VBOBaseObject_cls::GetVCube(), 8, 12, 0},
        {"plane", VBOPlane_cls::GetVPlane(), 8, 2, 4},
        {"lat-long sphere with poles and a seam", VBOSphere_cls::GetVSphere(16, 8), 8, 16 * 8 * 2 - 2 * 16,
         0},
        {"cone", VBOCone_cls::GetVCone(12), 8, 24, 0},
        {"cylinder", VBOCylinder_cls::GetVCylinder(12), 8, 48, 0},
        {"particle icosphere", DrawParticle_cls::GetVSphereMesh(2), 6, 320, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const int vertices = static_cast<int>(c.v.size()) / c.stride;
        const std::vector<uint32_t> vAdj = ShadowAdjacency_cls::GetVAdjacency(c.v.data(), c.stride, vertices);
        ASSERT_EQ(vAdj.size(), static_cast<size_t>(c.triangles) * 6);
        EXPECT_EQ(ShadowAdjacency_cls::CountOpenEdges(vAdj), c.open);
        // Each neighbour is a triangle that runs the shared edge the other way: the triangle
        // (b, a, n) is in the list, and n lies off the edge.
        auto pos = [&](uint32_t i) {
            const float* p = &c.v[static_cast<size_t>(i) * static_cast<size_t>(c.stride)];
            return std::make_tuple(std::lround(p[0] * 1e5), std::lround(p[1] * 1e5), std::lround(p[2] * 1e5));
        };
        std::map<std::tuple<long, long, long, long, long, long>, std::tuple<long, long, long>> edges;
        for (size_t t = 0; t < vAdj.size(); t += 6)
            for (int e = 0; e < 3; ++e) {
                const auto a = pos(vAdj[t + 2 * e]), b = pos(vAdj[t + (2 * e + 2) % 6]);
                edges[std::tuple_cat(a, b)] = pos(vAdj[t + (2 * e + 4) % 6]);
            }
        int checked = 0;
        for (size_t t = 0; t < vAdj.size(); t += 6) {
            for (int e = 0; e < 3; ++e) {
                const uint32_t ia = vAdj[t + 2 * e], in = vAdj[t + 2 * e + 1], ib = vAdj[t + (2 * e + 2) % 6];
                if (in == ia)
                    continue;
                const auto it = edges.find(std::tuple_cat(pos(ib), pos(ia)));
                ASSERT_NE(it, edges.end());
                EXPECT_EQ(it->second, pos(in));
                EXPECT_NE(pos(in), pos(ia));
                EXPECT_NE(pos(in), pos(ib));
                ++checked;
            }
        }
        EXPECT_EQ(checked, c.triangles * 3 - c.open);
    }
}

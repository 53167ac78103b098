#include "CameraProp_cls.h"
#include "Camera_cls.h"
#include "ColorProvider_cls.h"
#include "EnsembleCtrl_cls.h"
#include "FogProp_cls.h"
#include "GLDrawKinds_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLDrawTable_cls.h"
#include "LightSource_cls.h"
#include "Material_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "PassesFixture.h"
#include "Primitive_cls.h"
#include "SceneObjDraw_cls.h"
#include "SceneObjInstance_cls.h"
#include "StereoProp_cls.h"
#include "World_cls.h"

#include <epoxy/gl.h>
#include <wx/dir.h>

#include <functional>

namespace {

const wxString kResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";
const Pixel_cls kBG = {0.22f, 0.22f, 0.24f, 1.f}; // the default "GLBG="

// The lowest and highest index in [0, n) for which the predicate holds; -1, -1 for none.
std::pair<int, int> Extent(int n, const std::function<bool(int)>& pred) {
    int lo = -1, hi = -1;
    for (int i = 0; i < n; ++i) {
        if (pred(i)) {
            if (lo < 0)
                lo = i;
            hi = i;
        }
    }
    return {lo, hi};
}

bool IsRed(const Pixel_cls& p) {
    return p.r > 0.6f && p.g < 0.3f && p.b < 0.3f;
}
bool IsGreen(const Pixel_cls& p) {
    return p.g > 0.6f && p.r < 0.3f && p.b < 0.3f;
}

} // namespace

class FramePassesTest : public PassesFixture {
protected:
    static void Set(ConfItem_cls& item, const wxString& strBody) { item.SetBodyFromData(strBody); }
    // Only what the test adds: no box, no grid.
    void Bare() {
        Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
        Set(mpView->mCDispGrid, "0");
    }
    // A full frame again after a change of the scene.
    void Repaint() {
        mpPasses->RefreshEX();
        Paint();
    }
    void Paint(int width = 64, int height = 64) { PaintMain(width, height); }
    // Renders one frame and reads the window's picture instead.
    void PaintTarget(int width, int height) { PaintMain(width, height, true); }
};

namespace {
const double kDown[3] = {0, -1, 0};
const double kFront[3] = {0, 0, -1};
const double kUp[3] = {0, 1, 0};
const double kNorth[3] = {0, 0, -1};
} // namespace

TEST_F(FramePassesTest, GridLinesLieWhereTheProjectionPutsThem) {
    Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
    Set(mpView->mCViewAngleL, "90");
    LookFrom(0, 10, 0, kDown, kNorth);
    Paint();
    // Looking down from 10 with 90 degrees, line i of the grid is at 128 + 12.8 i.
    const std::array<float, 4> grid = GpCColorProvider->GetColor("GLGrid");
    for (int i : {-7, -3, 1, 5}) {
        SCOPED_TRACE(i);
        const int px = static_cast<int>(std::floor(128 + 12.8 * i));
        const int row = 128 + 40; // between lines, away from the others
        // A line on a pixel edge may fall on either side of it.
        auto isGrid = [&](int x, int y) {
            return PixelNear(At(x, y), grid[0], grid[1], grid[2], 1.f, 0.05f);
        };
        EXPECT_TRUE(isGrid(px - 1, row) || isGrid(px, row) || isGrid(px + 1, row));
        EXPECT_TRUE(PixelNear(At(px + 6, row), kBG.r, kBG.g, kBG.b, 1.f));
        // The lines of the other direction, by rows.
        EXPECT_TRUE(isGrid(row, px - 1) || isGrid(row, px) || isGrid(row, px + 1));
    }
    // Beyond the tenth line there is no grid.
    EXPECT_TRUE(PixelNear(At(2, 2), kBG.r, kBG.g, kBG.b, 1.f));
    Set(mpView->mCDispGrid, "0");
    Repaint();
    EXPECT_TRUE(PixelNear(At(128, 168), kBG.r, kBG.g, kBG.b, 1.f));
}

TEST_F(FramePassesTest, RedBoxHasItsSilhouetteAndItsLitSideBrighter) {
    SceneObj_cls* pBox = Obj("Box");
    SetGroup(pBox, "Material", "Diffuse", 1, 0, 0);
    SetGroup(pBox, "", "RotationEuler", 0, 45, 0);
    SceneObj_cls* pLight = Obj("Initial Light");
    SetGroup(pLight, "", "Position", 10, 0, 3);
    Set(mpView->mCDispGrid, "0");
    LookFrom(0, 0, 10, kFront, kUp);
    Paint();
    // The corners at x = +-1.414, z = 0 are 43.7 pixels from the middle; the top edge 31 to 36.
    for (int dx : {-40, -20, 0, 20, 40}) {
        SCOPED_TRACE(dx);
        EXPECT_FALSE(PixelNear(At(128 + dx, 128), kBG.r, kBG.g, kBG.b, 1.f));
    }
    for (const auto& xy :
         {std::pair<int, int>{128 - 50, 128}, {128 + 50, 128}, {128, 128 + 42}, {128, 128 - 42}}) {
        SCOPED_TRACE(xy.first * 1000 + xy.second);
        EXPECT_TRUE(PixelNear(At(xy.first, xy.second), kBG.r, kBG.g, kBG.b, 1.f));
    }
    // The light stands to the right: the right face is lit, the left one only by ambient light.
    const Pixel_cls lit = At(128 + 20, 128);
    const Pixel_cls far = At(128 - 20, 128);
    EXPECT_GT(lit.r, far.r + 0.3f);
    EXPECT_GT(lit.r, lit.g + 0.3f);
    EXPECT_LT(far.r, 0.15f);
}

TEST_F(FramePassesTest, MeshObjectDrawsThroughThePassesInItsFilesMaterial) {
    Bare();
    RunCommandText(*mpMain, "SceneObjCtrl::New::MeshObj_cls::ANY::Mesh");
    Obj("Mesh")->GetPCItem("FileName")->SetBodyFromData(wxString(ORV_TEST_DATA_DIR) + "/obj/cube.obj");
    GpCSceneObjCtrl->Select("", false, false, false);
    LookFrom(0, 0, 10, kFront, kUp);
    Paint();
    // The unit cube's front face is "Red" in the .mtl: red where the cube stands, the background
    // beside it.
    const Pixel_cls centre = At(128, 128);
    EXPECT_GT(centre.r, centre.g + 0.2f);
    EXPECT_GT(centre.r, centre.b + 0.2f);
    EXPECT_TRUE(PixelNear(At(128 + 60, 128), kBG.r, kBG.g, kBG.b, 1.f));
}

TEST_F(FramePassesTest, SphereOutlineRadiusFollowsTheViewAngle) {
    Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
    AddGlowing("Sphere", "Ball", 0, 1, 0);
    Set(mpView->mCDispGrid, "0");
    LookFrom(0, 0, 5, kFront, kUp);
    for (double angle : {30.0, 45.0, 60.0}) {
        SCOPED_TRACE(angle);
        Set(mpView->mCViewAngleL, wxString::Format("%g", angle));
        Repaint();
        // A sphere of radius 1 at distance 5 is seen under asin(1 / 5).
        const double expected = tan(asin(0.2)) / tan(angle * 3.14159 / 360.0) * 128.0;
        const auto row = Extent(256, [&](int x) { return IsGreen(At(x, 128)); });
        const auto column = Extent(256, [&](int y) { return IsGreen(At(128, y)); });
        EXPECT_NEAR((row.second - row.first + 1) / 2.0, expected, 1.5);
        EXPECT_NEAR((column.second - column.first + 1) / 2.0, expected, 1.5);
    }
}

TEST_F(FramePassesTest, FogTakesTheFogColourByDistanceAndOverwritesTheBackground) {
    AddGlowing("Box", "White", 1, 1, 1);
    Bare();
    LookFrom(0, 0, 10, kFront, kUp);
    World_cls* pWorld = static_cast<World_cls*>(Obj("World"));
    FogProp_cls* pFog = pWorld->GetPCFogProp();
    SetGroup(pWorld, "Fog", "FogColor", 0, 0, 1);
    SetGroup(pWorld, "Fog", "FogRange", 2, 16);
    SetGroup(pWorld, "Fog", "FogDensity", 0.1);
    Set(pFog->mCFogOverwrite, "1");
    // The front face is 9 from the eye: the part of the object's own colour that stays.
    const struct {
        const char* pType;
        double kept;
    } cases[] = {{"1", (16.0 - 9.0) / 14.0}, {"2", exp(-0.9)}, {"3", exp(-0.81)}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pType);
        Set(pFog->mCFogType, c.pType);
        Repaint();
        const Pixel_cls px = At(128, 128);
        EXPECT_NEAR(px.r, c.kept, 0.02);
        EXPECT_NEAR(px.b, 1.0, 0.02);
        EXPECT_TRUE(PixelNear(At(3, 3), 0, 0, 1, 1));
    }
    // Without overwrite the background stays; without fog the object is white.
    Set(pFog->mCFogOverwrite, "0");
    Repaint();
    EXPECT_TRUE(PixelNear(At(3, 3), kBG.r, kBG.g, kBG.b, 1.f));
    Set(pFog->mCFogType, "0");
    Set(pFog->mCFogOverwrite, "1");
    Repaint();
    EXPECT_TRUE(PixelNear(At(128, 128), 1, 1, 1, 1));
    EXPECT_TRUE(PixelNear(At(3, 3), kBG.r, kBG.g, kBG.b, 1.f));
}

TEST_F(FramePassesTest, WideWindowCropsTopAndBottomTallWindowLeftAndRight) {
    Bare();
    Set(mpView->mCViewAngleL, "90");
    LookFrom(0, 0, 10, kFront, kUp);
    // Red near the left edge of the buffer, green near its top.
    SetGroup(AddGlowing("Box", "Left", 1, 0, 0), "", "Position", -7, 0, 0);
    SetGroup(AddGlowing("Box", "Top", 0, 1, 0), "", "Position", 0, 7, 0);
    for (SceneObj_cls* p : {Obj("Left"), Obj("Top")})
        SetGroup(p, "", "Scale", 0.5, 0.5, 0.5);
    auto count = [&](int w, int h, bool (*pred)(const Pixel_cls&)) {
        int n = 0;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                n += pred(At(x, y)) ? 1 : 0;
        return n;
    };
    PaintTarget(128, 64);
    EXPECT_GT(count(128, 64, IsRed), 20);
    EXPECT_EQ(count(128, 64, IsGreen), 0);
    mpPasses->RefreshEX();
    PaintTarget(64, 128);
    EXPECT_EQ(count(64, 128, IsRed), 0);
    EXPECT_GT(count(64, 128, IsGreen), 20);
    // A square window shows both.
    mpPasses->RefreshEX();
    PaintTarget(64, 64);
    EXPECT_GT(count(64, 64, IsRed), 5);
    EXPECT_GT(count(64, 64, IsGreen), 5);
}

TEST_F(FramePassesTest, LinesWidenWithTheBufferAsTheFactorTableSays) {
    Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
    Set(mpView->mCViewAngleL, "90");
    LookFrom(0, 10, 0, kDown, kNorth);
    const std::array<float, 4> grid = GpCColorProvider->GetColor("GLGrid");
    const struct {
        const char* pIndex;
        int size;
        int width;
    } cases[] = {{"2", 1024, 1}, {"3", 2048, 2}, {"4", 4096, 4}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.size);
        Set(mpView->mCBufSizeIdx, c.pIndex);
        mpPasses->RefreshEX();
        PaintTarget(16, 16);
        // Only a strip across the line x = 0 is read: the big buffers are large.
        const int y = c.size / 2 + c.size / 7;
        std::vector<Pixel_cls> row(64);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, mpPasses->GetPCFBOMain()->GetFramebuffer());
        glReadPixels(c.size / 2 - 32, y, 64, 1, GL_RGBA, GL_FLOAT, row.data());
        glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
        int n = 0;
        for (const Pixel_cls& p : row)
            n += PixelNear(p, grid[0], grid[1], grid[2], 1.f, 0.05f) ? 1 : 0;
        EXPECT_EQ(n, c.width);
    }
}

TEST_F(FramePassesTest, PlainRepaintOnlyRefiltersRefreshExDrawsTheScene) {
    AddGlowing("Box", "Glow", 1, 0, 0);
    Bare();
    LookFrom(0, 0, 10, kFront, kUp);
    Paint();
    ASSERT_TRUE(IsRed(At(128, 128)));
    const long long drawn = mpPasses->GetDrawCount();
    EXPECT_FALSE(mpPasses->mbObjectRedraw);
    SetGroup(Obj("Glow"), "Material", "Emission", 0, 1, 0);
    PaintTarget(64, 64);
    EXPECT_EQ(mpPasses->GetDrawCount(), drawn);
    EXPECT_TRUE(IsRed(At(32, 32))) << "the window shows the last frame's buffer";
    mpPasses->RefreshEX();
    PaintTarget(64, 64);
    EXPECT_EQ(mpPasses->GetDrawCount(), drawn + 1);
    EXPECT_TRUE(IsGreen(At(32, 32)));
}

TEST_F(FramePassesTest, PassepartoutDarkensOutsideTheCameraFrameWhenTheCameraDrivesTheView) {
    Bare();
    Camera_cls* pCamera = static_cast<Camera_cls*>(Obj("Camera"));
    CameraProp_cls* pProp = pCamera->GetPCCameraProp();
    Set(pProp->mCPassepartout, "1");
    Set(pProp->mCPassepartoutAspect, "2");
    Set(pProp->mCPassepartoutAlpha, "1");
    Paint();
    EXPECT_TRUE(PixelNear(At(128, 10), kBG.r, kBG.g, kBG.b, 1.f)) << "the view does not use the camera";
    Set(mpView->mCFollow, "1");
    Repaint();
    // A frame of aspect 2 in the square: the quarters above and below are black.
    for (int y : {5, 60, 196, 250})
        EXPECT_TRUE(PixelNear(At(128, y), 0, 0, 0, 1)) << y;
    for (int y : {70, 128, 185})
        EXPECT_TRUE(PixelNear(At(128, y), kBG.r, kBG.g, kBG.b, 1.f)) << y;
    const std::vector<float> v = mpPasses->GetVPasspartoutInfo();
    ASSERT_EQ(v.size(), 3u);
    EXPECT_FLOAT_EQ(v[0], 2.f);
    EXPECT_NEAR(v[2], tan(45.0 * 3.14159 / 360.0), 1e-6);
}

TEST_F(FramePassesTest, SelectionDrawsTheActiveObjectsWireInTheHighlight) {
    Set(mpView->mCDispGrid, "0");
    LookFrom(0, 0, 10, kFront, kUp);
    auto highlighted = [&] {
        int n = 0;
        for (int y = 0; y < 256; ++y)
            for (int x = 0; x < 256; ++x)
                n += PixelNear(At(x, y), 1.f, 0.65f, 0.2f, 1.f, 0.03f) ? 1 : 0;
        return n;
    };
    Paint();
    EXPECT_EQ(highlighted(), 0);
    GpCSceneObjCtrl->Select("Box", false, false, false);
    Repaint();
    EXPECT_GT(highlighted(), 100);
}

TEST_F(FramePassesTest, ObjectsSortLightsFirstThenWorldThenFarToNear) {
    RunCommandText(*mpMain, "SceneObjCtrl::New::Primitive_cls::Sphere::Near\n"
                            "SceneObjCtrl::New::Primitive_cls::Box::Far");
    SetGroup(Obj("Near"), "", "Position", 0, 0, 8);
    SetGroup(Obj("Far"), "", "Position", 0, 0, -30);
    Position_cls camera;
    camera.mPos[2] = 10;
    std::vector<SceneObjInstance_cls*> v =
        SceneObjDraw_cls::GetVNewPCSortedInstance(GpCSceneObjCtrl, camera, 0);
    wxArrayString astr;
    for (SceneObjInstance_cls* p : v) {
        astr.Add(p->mpCSceneObj->GetStrName());
        delete p;
    }
    // The camera stands at the origin, 10 away like the box.
    EXPECT_EQ(wxJoin(astr, ','), "Initial Light,World,Far,Box,Camera,Near");
}

TEST_F(FramePassesTest, GLErrorInADrawIsLoggedAtItsCheckpointAndTheFrameGoesOn) {
    // A kind whose draw leaves an error behind, in the place of the mesh's entry.
    GLDrawTable_cls::Register("MeshObj_cls",
                              {[](SceneObj_cls*, GLDrawStatus_cls&) { glEnable(0x7FFF); }, nullptr});
    RunCommandText(*mpMain, "SceneObjCtrl::New::MeshObj_cls::ANY::Mesh");
    LogCapture_cls log;
    Paint();
    EXPECT_TRUE(log.Contains("error = INVALID_ENUM SceneObjCtrl::GLDrawEnd_XRayBegin"));
    EXPECT_FALSE(log.Contains("PAINT END"));
    GLDrawTable_cls::Register("MeshObj_cls", {&GLDrawKinds_cls::GLDrawMesh, nullptr});
}

TEST_F(FramePassesTest, ShaderThatFailsToCompileIsNamedOnceAndTheObjectDrawsWithTheDefault) {
    // Services again, over a resource folder whose object program is broken.
    mpPasses.reset();
    mpMain.reset();
    TempDir_cls dir;
    wxMkdir(dir.Path("GL"));
    wxMkdir(dir.Path("GL/FUNCTION"));
    wxArrayString astrFiles;
    wxDir::GetAllFiles(kResourceDir + "/GL", &astrFiles);
    for (const wxString& strFile : astrFiles) {
        const wxString strRel = strFile.Mid(kResourceDir.length() + 1);
        ASSERT_TRUE(WriteBytes(dir.Path(strRel), ReadBytes(strFile)));
    }
    ASSERT_TRUE(
        WriteBytes(dir.Path("GL/Phong.frag"), "#version 120\nvoid main() { gl_FragColor = oops; }\n"));
    ShaderItem_cls::msStrResourceDir = dir.mStrPath;
    StartServices();
    SetGroup(Obj("Box"), "Material", "Diffuse", 1, 0, 0);
    Set(mpView->mCDispGrid, "0");
    LookFrom(0, 0, 10, kFront, kUp);
    LogCapture_cls log;
    Paint();
    Repaint();
    int n = 0;
    for (const wxString& line : log.mVStrLines)
        n += line.Contains("GL/Phong.frag") ? 1 : 0;
    EXPECT_EQ(n, 1);
    EXPECT_GT(At(128, 128).r, At(128, 128).g + 0.2f) << "the box is drawn red by the fixed pipeline";
    mpPasses.reset();
    mpMain.reset();
}

TEST_F(FramePassesTest, ColourProviderIsAProjectReceiverAndSetsTheBackground) {
    RunCommandText(*mpMain, "ConfItemList::Begin::ColorProvider\nGLBG=1 0 0 1\nConfItemList::End");
    Bare();
    Paint();
    EXPECT_TRUE(PixelNear(At(10, 10), 1, 0, 0, 1));
    wxString strProject;
    GpCColorProvider->Serialize(strProject);
    EXPECT_TRUE(strProject.Contains("GLBG=1")) << strProject;
}

TEST_F(FramePassesTest, DummyDrawStepsTheGreyByATenth) {
    FBO_cls target(4, 4, nullptr);
    target.SetGeometryFBO(4, 4);
    target.MakeFBO(true, false);
    const float expected[] = {0.f, 0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f, 0.7f, 0.8f, 0.9f, 1.f, 0.f};
    for (float grey : expected) {
        mpPasses->DummyDraw(target.GetFramebuffer());
        ReadTexture(target.GetTexture(), 4, 4);
        EXPECT_TRUE(PixelNear(At(1, 1), grey, grey, grey, 1.f, 0.01f)) << grey;
    }
}

TEST_F(FramePassesTest, ViewAndWindowArithmetic) {
    for (const auto& c : {std::pair<int, int>{0, 256}, {1, 512}, {2, 1024}, {6, 16384}, {7, 256}, {-1, 256}})
        EXPECT_EQ(View3D_cls::GetBufferSizeFromIndex(c.first), c.second) << c.first;
    EXPECT_EQ(View3D_cls().GetBufferSize(), 1024);
    EXPECT_EQ(View3D_cls().GetBufferSize1st(), 512);
    // Fit: the square fills a wide window by its width, a tall one by its height; the wide types
    // 2, 3 and 5 the other way round.
    const struct {
        int type;
        double aspect;
        int fit;
    } fits[] = {{0, 2.0, 0}, {0, 0.5, 1}, {1, 1.0, 0}, {2, 2.0, 1}, {3, 0.5, 0}, {4, 2.0, 0}, {5, 2.0, 1}};
    for (const auto& f : fits)
        EXPECT_EQ(FramePasses_cls::GetFitIndex(f.type, f.aspect), f.fit) << f.type << " " << f.aspect;
    EXPECT_EQ(FramePasses_cls::GetPercent(1, 2, 1, 3, 0, 1), 66);
    EXPECT_EQ(FramePasses_cls::GetPercent(0, 4, 0, 1, 1, 2), 12);
    mpPasses->mVisibleWidth = 200;
    mpPasses->mVisibleHeight = 100;
    EXPECT_DOUBLE_EQ(mpPasses->GetModByAspectX(), 1.0);
    EXPECT_DOUBLE_EQ(mpPasses->GetModByAspectY(), 0.5);
    double angle = 1.0;
    mpPasses->AdjustAngleByScreenAspect(angle);
    EXPECT_DOUBLE_EQ(angle, 1.0);
    std::swap(mpPasses->mVisibleWidth, mpPasses->mVisibleHeight);
    EXPECT_DOUBLE_EQ(mpPasses->GetModByAspectX(), 0.5);
    EXPECT_DOUBLE_EQ(mpPasses->GetModByAspectY(), 1.0);
    mpPasses->AdjustAngleByScreenAspect(angle);
    EXPECT_NEAR(angle, 2.0 * atan(tan(0.5) * 2.0), 1e-12);
    // No camera of the name: every camera value is the view's own.
    Set(mpView->mCFollow, "1");
    Set(mpView->mCCamera, "Box");
    EXPECT_EQ(mpPasses->GetPCCamera(), nullptr);
    EXPECT_EQ(mpPasses->GetStereoNum(), 1);
    EXPECT_DOUBLE_EQ(mpPasses->GetViewAngle(), 45.0);
    EXPECT_EQ(mpPasses->GetVMinMax(), (std::vector<double>{0.01, 1000.0}));
}

TEST_F(FramePassesTest, LightsOfEachTypeWithSpotCutoffAndAttenuation) {
    Bare();
    Set(mpView->mCViewAngleL, "90");
    LookFrom(0, 10, 0, kDown, kNorth);
    RunCommandText(*mpMain, "SceneObjCtrl::New::Primitive_cls::Plane::Floor");
    GpCSceneObjCtrl->Select("", false, false, false);
    SceneObj_cls* pFloor = Obj("Floor");
    SetGroup(pFloor, "", "Scale", 5, 5, 5);
    for (const char* group : {"Ambient", "Specular"})
        SetGroup(pFloor, "Material", group, 0, 0, 0);
    SetGroup(pFloor, "Material", "Diffuse", 1, 1, 1);
    // The light 4 above the floor, shining down.
    LightSource_cls* pLight = static_cast<LightSource_cls*>(Obj("Initial Light"));
    SetGroup(pLight, "", "Position", 0, 4, 0);
    SetGroup(pLight, "", "RotationEuler", 90, 0, 0);
    double dir[3];
    pLight->GetDirectionGlobal(0.0, dir);
    if (dir[1] > 0)
        SetGroup(pLight, "", "RotationEuler", -90, 0, 0);
    SetGroup(pLight, "Material", "SpotCutoff", 30);
    SetGroup(pLight, "Material", "SpotExponent", 0);
    // x = 1 is inside the 30 degree cone (radius 2.3 on the floor), x = 3.5 outside; a pixel is
    // 1 / 12.8 of a unit. The diffuse light is 0.8 and falls with the cosine at the floor.
    const double cosOut = 4.0 / std::hypot(3.5, 4.0);
    const struct {
        const char* pType;
        double quadratic;
        double centre, inside, outside;
    } cases[] = {
        {"2", 0.0, 0.8, 0.8 * 4.0 / std::hypot(1.0, 4.0), 0.0},
        {"1", 0.0, 0.8, 0.8 * 4.0 / std::hypot(1.0, 4.0), 0.8 * cosOut},
        {"1", 0.1, 0.8 / 2.6, 0.8 * 4.0 / std::hypot(1.0, 4.0) / 2.7, 0.8 * cosOut / (1 + 0.1 * 28.25)},
        {"0", 0.1, 0.8, 0.8, 0.8}};
    for (const auto& c : cases) {
        SCOPED_TRACE(wxString::Format("type %s, quadratic %g", c.pType, c.quadratic).ToStdString());
        Set(pLight->mCLightType, c.pType);
        SetGroup(pLight, "Material", "Attenuation", 1, 0, c.quadratic);
        Repaint();
        EXPECT_NEAR(At(128, 128).r, c.centre, 0.03);
        EXPECT_NEAR(At(128 + 13, 128).r, c.inside, 0.03);
        EXPECT_NEAR(At(128 + 45, 128).r, c.outside, 0.03);
    }
}

TEST_F(FramePassesTest, CamerasLightsAndEmptiesDrawAsGuidesWhenTheViewShowsThem) {
    Bare();
    LookFrom(0, 0, 10, kFront, kUp);
    SetGroup(Obj("Initial Light"), "", "Position", 2, 2, 0);
    SetGroup(Obj("Camera"), "", "Position", -2, -2, 0);
    RunCommandText(*mpMain, "SceneObjCtrl::New::Primitive_cls::Empty::Cross");
    GpCSceneObjCtrl->Select("", false, false, false);
    SetGroup(Obj("Cross"), "", "Position", 2, -2, 0);
    // Pixels of a guide's colour in the quarter of the frame where its object stands.
    auto count = [&](int x0, int y0, float r, float g, float b) {
        int n = 0;
        for (int y = y0; y < y0 + 128; ++y)
            for (int x = x0; x < x0 + 128; ++x)
                n += PixelNear(At(x, y), r, g, b, 1.f, 0.05f) ? 1 : 0;
        return n;
    };
    for (const char* pShown : {"1", "0"}) {
        SCOPED_TRACE(pShown);
        Set(mpView->mCDispLightCam, pShown);
        Set(mpView->mCDispGuideObj, pShown);
        Repaint();
        const bool bShown = pShown[0] == '1';
        EXPECT_EQ(count(128, 128, 1.f, 0.9f, 0.3f) > 10, bShown) << "light";
        EXPECT_EQ(count(0, 0, 0.8f, 0.8f, 0.8f) > 10, bShown) << "camera";
        EXPECT_EQ(count(128, 0, 0.7f, 0.7f, 0.7f) > 10, bShown) << "empty";
    }
}

TEST_F(FramePassesTest, SubPassesRunOncePerEyeBlurStepAndEnsembleStep) {
    Camera_cls* pCamera = static_cast<Camera_cls*>(Obj("Camera"));
    SetGroup(pCamera, "", "Position", 0, 0, 10);
    const struct {
        const char* pEnsemble;
        const char* pBlur;
        const char* pEyeType;
        long long subPasses;
    } cases[] = {{"0", "0", "0", 1}, {"4", "0", "0", 4}, {"0", "3", "0", 3},
                 {"2", "3", "0", 6}, {"0", "0", "3", 2}, {"2", "0", "4", 4}};
    for (const auto& c : cases) {
        SCOPED_TRACE(wxString::Format("%s %s %s", c.pEnsemble, c.pBlur, c.pEyeType).ToStdString());
        Set(GpCEnsembleCtrl->mCUseEnsemble, c.pEnsemble[0] == '0' ? "0" : "1");
        Set(GpCEnsembleCtrl->mCEnsembleSampleNum, c.pEnsemble);
        Set(GpCBlurCtrl->mCUseMotionBlur, c.pBlur[0] == '0' ? "0" : "1");
        Set(GpCBlurCtrl->mCBlurQuality, c.pBlur);
        Set(pCamera->GetPCStereoProp()->mCStereoType, c.pEyeType[0] == '0' ? "0" : "1");
        Set(pCamera->GetPCStereoProp()->mCEyeType, c.pEyeType);
        Set(mpView->mCFollow, c.pEyeType[0] == '0' ? "0" : "1");
        const long long before = mpPasses->GetDrawCount();
        Repaint();
        EXPECT_EQ(mpPasses->GetDrawCount() - before, c.subPasses);
        // Every step leaves its counter at 0 for what runs after the frame.
        EXPECT_EQ(GpCEnsembleCtrl->GetEnsembleStep(), 0);
        EXPECT_EQ(GpCBlurCtrl->GetBlurStep(), 0);
        // The picture is the scene's, whatever the sampling: the box in the middle.
        EXPECT_FALSE(PixelNear(At(128, 128), kBG.r, kBG.g, kBG.b, 1.f));
    }
}

TEST_F(FramePassesTest, PrimitiveMaterialsTextureThePlaneWithScaleAndOffset) {
    Bare();
    Set(mpView->mCViewAngleL, "90");
    SceneObj_cls* pPlane = AddGlowing("Plane", "Floor", 1, 1, 1);
    SetGroup(pPlane, "", "Scale", 5, 5, 5);
    Material_cls* pMaterial = pPlane->GetPCMaterial();
    Set(pMaterial->mCUseTexture, "1");
    Set(pMaterial->mCTextureFile, wxString(ORV_TEST_DATA_DIR) + "/obj/textures/quadrants.png");
    Set(pMaterial->mCTextureMode, "1"); // replace: the texel as it is
    Set(pMaterial->mCTextureInterp, "0");
    LookFrom(0, 10, 0, kDown, kNorth);
    struct Quadrant_cls {
        int x, y;
        float r, g, b;
    };
    // Seen from above with north up, the picture lies upright: red top left, green top right,
    // blue bottom left, yellow bottom right. The plane covers pixels 64 to 192.
    const Quadrant_cls upright[] = {
        {96, 160, 1, 0, 0}, {160, 160, 0, 1, 0}, {96, 96, 0, 0, 1}, {160, 96, 1, 1, 0}};
    Paint();
    for (const Quadrant_cls& q : upright)
        EXPECT_TRUE(PixelNear(At(q.x, q.y), q.r, q.g, q.b, 1.f, 0.05f)) << q.x << ", " << q.y;
    // Half a picture of offset in u moves the right half's colours to the left (the texture
    // repeats).
    SetGroup(pPlane, "Material", "TexOffset", 0.5, 0);
    Repaint();
    EXPECT_TRUE(PixelNear(At(96, 160), 0, 1, 0, 1.f, 0.05f));
    EXPECT_TRUE(PixelNear(At(160, 96), 0, 0, 1, 1.f, 0.05f));
    // Modulate multiplies the texel by the lit material: black emission and no light leave
    // nothing of the picture.
    SetGroup(pPlane, "Material", "TexOffset", 0, 0);
    Set(pMaterial->mCTextureMode, "0");
    SetGroup(pPlane, "Material", "Emission", 0, 0, 0);
    Obj("Initial Light")->mCVisible.SetBodyFromDataBOOL(false);
    Repaint();
    const Pixel_cls dark = At(96, 160);
    EXPECT_LT(dark.r + dark.g + dark.b, 0.3f);
    // A file that is not there draws the material's own colour (the white default texel).
    Set(pMaterial->mCTextureMode, "1");
    Set(pMaterial->mCTextureFile, mDir.mStrPath + "/missing.png");
    Repaint();
    EXPECT_TRUE(PixelNear(At(96, 160), 1, 1, 1, 1.f, 0.05f));
}

TEST_F(FramePassesTest, ArrayCopiesDrawAtTheirOwnOffsets) {
    Bare();
    SceneObj_cls* pBox = AddGlowing("Box", "Red", 1, 0, 0);
    pBox->AddModifierCommand("ArrayCopy_cls", "Row");
    Attribute_cls* pCopy = pBox->GetPCAttribute("Row", 0);
    ASSERT_NE(pCopy, nullptr);
    pCopy->GetPCItem("AxisX")->SetBodyFromData(wxString("3 0 0"));
    SetGroup(pBox, "Row", "X Min/Max", 0, 2);
    Set(mpView->mCViewAngleL, "90");
    // From 10 above the middle copy with 90 degrees, x = 3 is 38.4 pixels aside.
    LookFrom(3, 10, 0, kDown, kNorth);
    Paint();
    for (int x : {128 - 38, 128, 128 + 38}) {
        SCOPED_TRACE(x);
        EXPECT_TRUE(IsRed(At(x, 128)));
    }
    // Between the copies, and where a fourth copy would stand, the background.
    for (int x : {128 - 19, 128 + 19, 128 + 77})
        EXPECT_TRUE(PixelNear(At(x, 128), kBG.r, kBG.g, kBG.b, 1.f)) << x;
    // Fewer copies leave their places empty.
    SetGroup(pBox, "Row", "X Min/Max", 0, 1);
    Repaint();
    EXPECT_TRUE(IsRed(At(128, 128)));
    EXPECT_TRUE(PixelNear(At(128 + 38, 128), kBG.r, kBG.g, kBG.b, 1.f));
}

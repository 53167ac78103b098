#include "CameraProp_cls.h"
#include "Camera_cls.h"
#include "ImageComposer_cls.h"
#include "PassesFixture.h"
#include "StereoProp_cls.h"
#include "WideCamera_cls.h"

#include <epoxy/gl.h>

#include <set>

namespace {
constexpr double kPi = 3.14159265358979323846;

struct Point_cls {
    double x, y;
};

// The mean place of the pixels that pass the test, and how many did; y counts from the bottom.
Point_cls Centroid(const std::function<Pixel_cls(int, int)>& at, int w, int h,
                   const std::function<bool(const Pixel_cls&)>& pred, int* pCount) {
    double sx = 0, sy = 0;
    int n = 0;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            if (pred(at(x, y))) {
                sx += x + 0.5;
                sy += y + 0.5;
                ++n;
            }
    *pCount = n;
    return n ? Point_cls{sx / n, sy / n} : Point_cls{-1, -1};
}

bool Red(const Pixel_cls& p) {
    return p.r > 0.6f && p.g < 0.3f && p.b < 0.3f;
}
bool Green(const Pixel_cls& p) {
    return p.g > 0.6f && p.r < 0.3f && p.b < 0.3f;
}
bool Blue(const Pixel_cls& p) {
    return p.b > 0.6f && p.r < 0.3f && p.g < 0.3f;
}
} // namespace

// The numbers of the types, the turns of the faces and the meshes, without GL.
TEST(WideCameraTest, TypesFacesAndViewports) {
    const struct {
        int type, faces;
        double degree, degreeAt150;
        int fitWide, fitTall;
    } types[] = {
        {0, 1, 45, 120, 0, 1}, {1, 1, 45, 150, 0, 1}, {2, 4, 94, 94, 1, 0}, {3, 3, 126.8698, 126.8698, 1, 0},
        {4, 6, 94, 94, 0, 1},  {5, 6, 94, 94, 1, 0},  {6, 6, 90, 90, 0, 1}, {7, 1, 45, 150, 0, 1},
        {-1, 1, 45, 150, 0, 1}};
    for (const auto& t : types) {
        SCOPED_TRACE(t.type);
        EXPECT_EQ(WideCamera_cls::GetFBONum(t.type), t.faces);
        EXPECT_DOUBLE_EQ(WideCamera_cls::GetDegreeV(t.type, 45), t.degree);
        EXPECT_DOUBLE_EQ(WideCamera_cls::GetDegreeV(t.type, 150), t.degreeAt150);
        EXPECT_EQ(WideCamera_cls::GetFitIndex(t.type, 1.5), t.fitWide);
        EXPECT_EQ(WideCamera_cls::GetFitIndex(t.type, 0.5), t.fitTall);
    }
    // The three-face type draws 4q square viewports, q = size / 3 cut.
    const struct {
        int part, size, x, y, side;
    } viewports[] = {{0, 300, 0, -100, 400},
                     {1, 300, -100, -100, 400},
                     {2, 300, -100, 0, 400},
                     {0, 256, 0, -85, 340},
                     {2, 256, -85, 0, 340}};
    for (const auto& v : viewports) {
        int vp[4];
        ASSERT_TRUE(WideCamera_cls::GetPartViewport(3, v.part, v.size, vp));
        EXPECT_EQ(std::vector<int>(vp, vp + 4), (std::vector<int>{v.x, v.y, v.side, v.side}));
    }
    int vp[4];
    EXPECT_FALSE(WideCamera_cls::GetPartViewport(2, 0, 300, vp));
    EXPECT_NEAR(WideCamera_cls::AdjustUV(1.0), 0.5 + 0.5 * tan(kPi / 4) / tan(47 * kPi / 180), 1e-7);
    EXPECT_DOUBLE_EQ(WideCamera_cls::AdjustUV(0.5), 0.5);

    // Where each face looks, from a pose looking along -z with +y up.
    const struct {
        int type, part;
        double tilt, tgt[3];
    } faces[] = {{6, 0, 0, {0, 0, -1}},
                 {6, 1, 0, {-1, 0, 0}},
                 {6, 2, 0, {0, 0, 1}},
                 {6, 3, 0, {1, 0, 0}},
                 {6, 4, 0, {0, -1, 0}},
                 {6, 5, 0, {0, 1, 0}},
                 {2, 0, 0, {-M_SQRT1_2, 0, -M_SQRT1_2}},
                 {2, 1, 0, {M_SQRT1_2, 0, -M_SQRT1_2}},
                 {5, 4, 0, {M_SQRT1_2, 0, M_SQRT1_2}},
                 {0, 0, 90, {0, 1, 0}},
                 {6, 0, 30, {0, 0.5, -std::sqrt(0.75)}}};
    for (const auto& f : faces) {
        SCOPED_TRACE(f.type * 100 + f.part * 10 + static_cast<int>(f.tilt));
        PositionAndDirection_cls pose;
        WideCamera_cls::ModifyCamera(&pose, f.part, f.type, f.tilt);
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(pose.mTgt[k], f.tgt[k], 1e-9);
    }
    // The three faces are the corners' faces of a cube: orthogonal, their mean straight ahead.
    double mean[3] = {0, 0, 0};
    PositionAndDirection_cls f3[3];
    for (int part = 0; part < 3; ++part) {
        WideCamera_cls::ModifyCamera(&f3[part], part, 3, 0);
        for (int k = 0; k < 3; ++k)
            mean[k] += f3[part].mTgt[k] / std::sqrt(3.0);
    }
    for (int a = 0; a < 3; ++a)
        for (int b = a + 1; b < 3; ++b)
            EXPECT_NEAR(f3[a].mTgt[0] * f3[b].mTgt[0] + f3[a].mTgt[1] * f3[b].mTgt[1] +
                            f3[a].mTgt[2] * f3[b].mTgt[2],
                        0, 1e-5);
    EXPECT_NEAR(mean[2], -1.0, 1e-5);
}

// The faces' meshes leave no hole: every cell of the image (the disks, or the whole of the
// equirectangular band) holds mesh points. Cells are 1/16 of the target.
TEST(WideCameraTest, MeshesCoverTheWholeImage) {
    const struct {
        int type;
        double angle;
    } cases[] = {{2, 180}, {3, 180}, {4, 180}, {5, 360}, {6, 360}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        const int n = 32;
        std::set<int> hit;
        for (int disk = 0; disk < (c.type == 4 ? 2 : 1); ++disk)
            for (int part = 0; part < WideCamera_cls::GetFBONum(c.type); ++part) {
                const WideCameraMesh_cls mesh = WideCamera_cls::MakeMesh(c.type, part, c.angle, 300, disk);
                for (const std::vector<float>* pV : {&mesh.mVStrip, &mesh.mVQuads})
                    for (size_t i = 0; i + 3 < pV->size(); i += 4) {
                        const int cx = static_cast<int>(((*pV)[i] + 1.f) * 0.5f * n);
                        const int cy = static_cast<int>(((*pV)[i + 1] + 1.f) * 0.5f * n);
                        if (cx >= 0 && cx < n && cy >= 0 && cy < n)
                            hit.insert(cy * n + cx);
                    }
            }
        int missing = 0, inside = 0;
        for (int cy = 0; cy < n; ++cy)
            for (int cx = 0; cx < n; ++cx) {
                // The corners of the cell farthest from the image's edge must all be inside it.
                bool bInside = true;
                for (int corner = 0; corner < 4; ++corner) {
                    const double x = (cx + corner % 2) * 2.0 / n - 1.0, y = (cy + corner / 2) * 2.0 / n - 1.0;
                    if (c.type == 6)
                        bInside = bInside && std::fabs(y) <= 0.5;
                    else if (c.type == 4)
                        bInside = bInside && std::hypot(std::fabs(x) - 0.5, y) < 0.5;
                    else
                        bInside = bInside && std::hypot(x, y) < 1.0;
                }
                inside += bInside;
                missing += bInside && !hit.count(cy * n + cx);
            }
        EXPECT_GT(inside, 100);
        EXPECT_EQ(missing, 0);
    }
}

class WideCameraGLTest : public PassesFixture {
protected:
    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        EmptyViewFromOrigin();
    }
    // A sphere of the radius that shines in one colour, at the point.
    void AddMarker(const wxString& strName, const double* pPos, double radius, double r, double g, double b) {
        SceneObj_cls* p = AddGlowing("Sphere", strName, r, g, b);
        SetGroup(p, "", "Position", pPos[0], pPos[1], pPos[2]);
        SetGroup(p, "", "Scale", radius, radius, radius);
    }
    void Paint(int width, int height, bool bTarget) {
        mpPasses->RefreshEX();
        PaintMain(width, height, bTarget);
    }
    Point_cls Find(bool (*pred)(const Pixel_cls&), int* pCount) {
        return Centroid([this](int x, int y) { return At(x, y); }, mFrameWidth, mFrameHeight, pred, pCount);
    }
};

TEST_F(WideCameraGLTest, EquirectangularPutsAheadInTheCentreBehindAtTheEdgesAboveOnTop) {
    const double ahead[3] = {0, 0, -5}, behind[3] = {0, 0, 5}, above[3] = {0, 5, 0};
    AddMarker("Ahead", ahead, 0.6, 1, 0, 0);
    AddMarker("Behind", behind, 0.6, 0, 1, 0);
    AddMarker("Above", above, 0.6, 0, 0, 1);
    mpView->mCWideCameraType.SetBodyFromData("6");
    // A 2:1 window shows the band of the square buffer that holds the whole sphere.
    Paint(128, 64, true);
    int n = 0;
    const Point_cls red = Find(Red, &n);
    ASSERT_GT(n, 4);
    EXPECT_NEAR(red.x, 64, 1.0);
    EXPECT_NEAR(red.y, 32, 1.0);
    // Behind: split over the left and the right edge.
    EXPECT_TRUE(Green(At(0, 32)));
    EXPECT_TRUE(Green(At(127, 32)));
    EXPECT_FALSE(Green(At(64, 32)));
    // Above: the whole top row, nothing of it at the bottom.
    for (int x : {0, 40, 64, 100, 127}) {
        SCOPED_TRACE(x);
        EXPECT_TRUE(Blue(At(x, 63)));
        EXPECT_FALSE(Blue(At(x, 0)));
    }
}

// Each fisheye puts a marker at the radius its projection gives for the marker's angle from the
// axis: the equidistant disk, radius over half the disk = angle over half the fisheye's angle.
TEST_F(WideCameraGLTest, FisheyesPlaceMarkersByTheirAngleFromTheAxis) {
    const struct {
        const char* pName;
        int type;
        double fisheyeAngle, markerAngle, azimuth; // degrees; azimuth 0 right, 90 up
        double centreX, halfSize;                  // of the disk, in pixels of the 256 buffer
    } cases[] = {
        {"Fisheye4 right", 2, 180, 60, 0, 128, 128},    {"Fisheye4 up", 2, 180, 30, 90, 128, 128},
        {"Fisheye4 narrow", 2, 120, 40, 200, 128, 128}, {"Fisheye3", 3, 180, 45, 0, 128, 128},
        {"Fisheye3 wide", 3, 180, 80, 135, 128, 128},   {"Spherical", 5, 360, 120, 0, 128, 128},
        {"Spherical up", 5, 360, 60, 90, 128, 128},     {"Dual front", 4, 180, 60, 0, 64, 64},
        {"Dual front left", 4, 180, 45, 180, 64, 64},
    };
    const double kDistance = 5.0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pName);
        const double t = c.markerAngle * kPi / 180, a = c.azimuth * kPi / 180;
        const double pos[3] = {kDistance * sin(t) * cos(a), kDistance * sin(t) * sin(a), -kDistance * cos(t)};
        AddMarker("Marker", pos, 0.25, 1, 0, 0);
        mpView->mCWideCameraType.SetBodyFromData(wxString::Format("%d", c.type));
        mpView->mCViewAngleL.SetBodyFromData(wxString::Format("%g", c.fisheyeAngle));
        Paint(64, 64, false);
        int n = 0;
        const Point_cls p = Find(Red, &n);
        ASSERT_GT(n, 2);
        const double r = c.markerAngle / (c.fisheyeAngle * 0.5) * c.halfSize;
        EXPECT_NEAR(p.x, c.centreX + r * cos(a), 1.5);
        EXPECT_NEAR(p.y, 128 + r * sin(a), 1.5);
        RunCommandText(*mpMain, "SceneObjCtrl::Delete::Marker");
    }
    // Outside the disk the buffer stays transparent; inside it is the background.
    EXPECT_FLOAT_EQ(At(2, 2).a, 0.f);
}

class StereoGLTest : public WideCameraGLTest {
protected:
    void SetUp() override {
        WideCameraGLTest::SetUp();
        if (IsSkipped())
            return;
        const double origin[3] = {0, 0, 0};
        AddMarker("Ball", origin, 1.0, 1, 1, 1);
        mpCamera = static_cast<Camera_cls*>(GpCSceneObjCtrl->GetPCFromName("Camera"));
        SetGroup(mpCamera, "", "Position", 0, 0, 10);
        SetGroup(mpCamera, "Stereo", "EyeSeparation", 2.0);
        SetGroup(mpCamera, "Stereo", "FocusDistance", 1e9); // the eyes look in parallel
        mpCamera->GetPCStereoProp()->mCStereoType.SetBodyFromData("1");
        mpView->mCFollow.SetBodyFromData("1");
    }
    Camera_cls* mpCamera = nullptr;
    // An eye 1 from the middle, 10 from a ball of radius 1, at 45 degrees on 256 pixels.
    const double mShift = 1.0 / 10.0 / tan(22.5 * kPi / 180) * 128;
};

// The two eyes of an anaglyph land in their colours, each shifted by its half of the separation
// less what the focus takes back ("Off Axis": zero parallax on the plane in focus; "Toe-in": the
// eyes turn to it); one eye alone is drawn from its own place.
TEST_F(StereoGLTest, EyesLandInTheirColoursOffsetByTheSeparation) {
    auto white = [](const Pixel_cls& p) { return p.r > 0.6f && p.g > 0.6f && p.b > 0.6f; };
    const struct {
        const char *pEyeType, *pStereoType;
        double focus;
        bool (*eye0)(const Pixel_cls&);
        bool (*eye1)(const Pixel_cls&);
        double shift0, shift1; // of each eye's ball, in units of mShift
    } cases[] = {
        {"4", "1", 1e9, [](const Pixel_cls& p) { return p.r > 0.6f; },
         [](const Pixel_cls& p) { return p.g > 0.6f && p.b > 0.6f; }, 1, -1},
        {"5", "1", 1e9, [](const Pixel_cls& p) { return p.r > 0.6f && p.g > 0.6f; },
         [](const Pixel_cls& p) { return p.b > 0.6f; }, 1, -1},
        {"4", "1", 20, [](const Pixel_cls& p) { return p.r > 0.6f; },
         [](const Pixel_cls& p) { return p.g > 0.6f && p.b > 0.6f; }, 0.5, -0.5},
        {"4", "1", 10, [](const Pixel_cls& p) { return p.r > 0.6f; },
         [](const Pixel_cls& p) { return p.g > 0.6f && p.b > 0.6f; }, 0, 0},
        {"4", "2", 10, [](const Pixel_cls& p) { return p.r > 0.6f; },
         [](const Pixel_cls& p) { return p.g > 0.6f && p.b > 0.6f; }, 0, 0},
        {"1", "1", 1e9, white, nullptr, 1, 0},
        {"2", "1", 1e9, white, nullptr, -1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(
            wxString::Format("eye type %s, stereo type %s, focus %g", c.pEyeType, c.pStereoType, c.focus)
                .ToStdString());
        mpCamera->GetPCStereoProp()->mCEyeType.SetBodyFromData(c.pEyeType);
        mpCamera->GetPCStereoProp()->mCStereoType.SetBodyFromData(c.pStereoType);
        SetGroup(mpCamera, "Stereo", "FocusDistance", c.focus);
        Paint(256, 256, true);
        int n = 0;
        const Point_cls p0 = Find(c.eye0, &n);
        ASSERT_GT(n, 100);
        EXPECT_NEAR(p0.x, 128 + c.shift0 * mShift, 1.0);
        EXPECT_NEAR(p0.y, 128, 1.0);
        if (!c.eye1)
            continue;
        const Point_cls p1 = Find(c.eye1, &n);
        ASSERT_GT(n, 100);
        EXPECT_NEAR(p1.x, 128 + c.shift1 * mShift, 1.0);
        // The left eye's channels hold nothing of the right eye where only that one sees the ball.
        if (c.shift0 > 0) {
            EXPECT_FALSE(c.eye0(At(static_cast<int>(128 - mShift), 128)));
        }
    }
}

TEST_F(StereoGLTest, ScanLinesAlternateTheEyesRowByRow) {
    mpCamera->GetPCStereoProp()->mCEyeType.SetBodyFromData("3");
    Paint(256, 256, true);
    // Only the left eye sees the ball right of the middle, only the right eye left of it.
    const int leftOnly = static_cast<int>(128 + mShift + 4), rightOnly = static_cast<int>(128 - mShift - 4);
    auto white = [](const Pixel_cls& p) { return p.r > 0.6f && p.g > 0.6f && p.b > 0.6f; };
    for (int y = 120; y < 136; ++y) {
        SCOPED_TRACE(y);
        const bool bEye1Row = (255 - y) % 2 == 1; // odd rows from the top
        EXPECT_EQ(white(At(leftOnly, y)), !bEye1Row);
        EXPECT_EQ(white(At(rightOnly, y)), bEye1Row);
    }
}

TEST_F(WideCameraGLTest, ComposerStoresTheFirstImageAndLaysItOverTheSecond) {
    auto filled = [](float r, float g, float b, float a) {
        auto p = std::make_unique<FBO_cls>(16, 16, nullptr);
        p->MakeFBO(true, false);
        p->Begin(true, false);
        glClearColor(r, g, b, a);
        glClear(GL_COLOR_BUFFER_BIT);
        p->End();
        return p;
    };
    auto first = filled(1, 0, 0, 0.5f), second = filled(0, 0, 1, 1), store = filled(0, 1, 0, 1);
    ImageComposer_cls composer;
    composer.StoreInBuffer(first.get(), store.get());
    ReadTexture(store->GetTexture(), 16, 16);
    EXPECT_TRUE(PixelNear(At(8, 8), 0.5f, 0, 0, 0.5f)) << At(8, 8).r << " " << At(8, 8).a;
    composer.OverlapBuffer(second.get(), store.get());
    ReadTexture(second->GetTexture(), 16, 16);
    EXPECT_TRUE(PixelNear(At(8, 8), 0.25f, 0, 0.5f, 1.f)) << At(8, 8).r << " " << At(8, 8).b;
}

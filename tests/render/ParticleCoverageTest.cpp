// Billboards leave the depth of their tilted square where each pixel's ray meets it, in both
// projections; squares and circles of whole and of fractional pixels cover the pixel centres inside
// them; particles blend over what stands unless every fragment is opaque.
#include "MaterialParticle_cls.h"
#include "OrthoDrawFixture.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "SceneObjCtrl_cls.h"

#include <cmath>
#include <sstream>

class ParticleCoverageTest : public OrthoDrawFixture {
protected:
    Particle_cls* Add(const wxString& strName, float size, int base) {
        std::ostringstream text;
        text << "1\n0\n0.5 0.5 0 0 " << size << "\n";
        EXPECT_TRUE(WriteBytes(mDir.Path(strName + "0000.txt"), text.str()));
        auto* p = dynamic_cast<Particle_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", strName)));
        p->mCFormat.mCDataType.SetBodyFromData("0");
        p->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
        p->mCPath.SetBodyFromData(mDir.Path(strName + "0000.txt"));
        Set(p->mCPointSizeFactor, "1");
        Set(p->mCAlphaCrit, "0");
        Set(p->GetPCMaterialParticle(0)->mCBaseType, wxString::Format("%d", base));
        return p;
    }
    ParticleDraw_cls mDraw{nullptr};
};

TEST_F(ParticleCoverageTest, TiltedSquaresWriteTheDepthOfTheirPlane) {
    if (IsSkipped())
        GTEST_SKIP();
    const struct {
        bool bPerspective;
        float size;
    } cases[] = {{false, 12.f}, {true, 40.f}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bPerspective ? "perspective" : "orthographic");
        Particle_cls* p = Add(c.bPerspective ? "P" : "O", c.size, 1);
        GLDrawStatus_cls status = Begin(true, kSize / 2, c.bPerspective);
        mDraw.GLDraw(*p, status);
        End();
        float f[16];
        ParticleDraw_cls::GetBillboardFocus(*p, 0.0, f);
        const double n[3] = {f[1] * f[6] - f[2] * f[5], f[2] * f[4] - f[0] * f[6], f[0] * f[5] - f[1] * f[4]};
        const double cz = c.bPerspective ? -100.0 : 0.0;
        for (int dy : {-3, 0, 3}) {
            SCOPED_TRACE(dy);
            const int i = 36, j = 32 + dy;
            // The pixel's ray: from the eye through the near plane, or straight down the view.
            const double o[3] = {c.bPerspective ? 0.0 : World(i), c.bPerspective ? 0.0 : World(j), 0.0};
            const double d[3] = {c.bPerspective ? (i + 0.5) / 32.0 - 1.0 : 0.0,
                                 c.bPerspective ? (j + 0.5) / 32.0 - 1.0 : 0.0, -1.0};
            const double t = (n[0] * (0.5 - o[0]) + n[1] * (0.5 - o[1]) + n[2] * (cz - o[2])) /
                             (n[0] * d[0] + n[1] * d[1] + n[2] * d[2]);
            const double z = o[2] + t * d[2];
            const double ndc = c.bPerspective ? (1001.0 * z + 2000.0) / (999.0 * z) : -z / 2000.0;
            EXPECT_NEAR(ReadDepth(i, j), 0.5 * ndc + 0.5, 2e-6);
        }
    }
}

TEST_F(ParticleCoverageTest, OnlyFullyOpaqueParticlesReplaceWhatStands) {
    if (IsSkipped())
        GTEST_SKIP();
    // Over blue: white at alpha a leaves red a. Table alpha from a flat curve; points of half a
    // pixel fade to a quarter.
    const struct {
        int base;
        float size, tableAlpha, red;
    } cases[] = {{0, 7.f, 1.f, 1.f},
                 {0, 7.f, 0.5f, 0.5f},
                 {0, 0.5f, 1.f, 0.25f},
                 {1, 7.f, 1.f, 1.f},
                 {1, 7.f, 0.5f, 0.5f}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.base << " " << c.size << " " << c.tableAlpha);
        Particle_cls* p = Add(wxString::Format("B%d", static_cast<int>(&c - cases)), c.size, c.base);
        SetCurve(p, {{0, 1, 1, 1, c.tableAlpha}, {1, 1, 1, 1, c.tableAlpha}}, 0, 1);
        Set(p->GetPCMaterialParticle(0)->mCColorCurveType, "1");
        Set(p->GetPCMaterialParticle(0)->mCColorCurveDepend, "0");
        GLDrawStatus_cls status = Begin(true, kSize / 2, false);
        glClearColor(0.f, 0.f, 1.f, 1.f);
        glClear(GL_COLOR_BUFFER_BIT);
        mDraw.GLDraw(*p, status);
        End();
        EXPECT_NEAR(At(32, 32).r, c.red, 0.01f);
        EXPECT_NEAR(At(32, 32).b, 1.f, 0.01f);
    }
}

TEST_F(ParticleCoverageTest, PointsCoverThePixelCentresInsideTheirShape) {
    if (IsSkipped())
        GTEST_SKIP();
    const struct {
        const char* shader; // "Point" 0 or "Circle" 1
        float size;
    } cases[] = {{"0", 2.f}, {"0", 7.f}, {"0", 2.5f}, {"1", 3.f}, {"1", 8.f}, {"1", 4.5f}};
    const float x = 32.3f, y = 31.8f; // window position of the particle (0.3, -0.2)
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "shader " << c.shader << " size " << c.size);
        Particle_cls* p = Add(wxString::Format("S%d", static_cast<int>(&c - cases)), c.size, 0);
        Set(p->GetPCMaterialParticle(0)->mCShaderTypePoint, c.shader);
        GLDrawStatus_cls status = Begin(true, kSize / 2, false);
        glTranslatef(-0.2f, -0.7f, 0.f);
        mDraw.GLDraw(*p, status);
        End();
        int wrong = 0;
        for (int i = 0; i < kSize * kSize; ++i) {
            const float dx = i % kSize + 0.5f - x, dy = i / kSize + 0.5f - y, r = 0.5f * c.size;
            const bool bInside =
                c.shader[0] == '0' ? std::fabs(dx) < r && std::fabs(dy) < r : dx * dx + dy * dy <= r * r;
            wrong += bInside == IsEmpty(mVFrame[static_cast<size_t>(i)]) ? 1 : 0;
        }
        EXPECT_EQ(wrong, 0);
    }
}

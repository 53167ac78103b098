// Billboards leave the depth of their tilted square where each pixel's ray meets it; squares and
// circles of whole and of fractional pixels cover the pixel centres inside them, and blend over
// what stands unless every fragment is opaque.
#include "MaterialParticle_cls.h"
#include "OrthoDrawFixture.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "SceneObjCtrl_cls.h"

#include <cmath>

class ParticleCoverageTest : public OrthoDrawFixture {
protected:
    // One particle at (0.5, 0.5, 0), drawn alone; the fixture's camera.
    Particle_cls* Draw(const wxString& strName, float size, int base, bool bPerspective = false,
                       const char* strShader = "0", float tableAlpha = 1.f) {
        const wxString strPath = mDir.Path(strName + "0000.txt");
        EXPECT_TRUE(WriteBytes(strPath, wxString::Format("1\n0\n0.5 0.5 0 0 %g\n", size).ToStdString()));
        auto* p = dynamic_cast<Particle_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", strName)));
        p->mCFormat.mCDataType.SetBodyFromData("0");
        p->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
        p->mCPath.SetBodyFromData(strPath);
        Set(p->mCPointSizeFactor, "1");
        Set(p->mCAlphaCrit, "0");
        MaterialParticle_cls* pMat = p->GetPCMaterialParticle(0);
        Set(pMat->mCBaseType, wxString::Format("%d", base));
        Set(pMat->mCShaderTypePoint, strShader);
        SetCurve(p, {{0, 1, 1, 1, tableAlpha}, {1, 1, 1, 1, tableAlpha}}, 0, 1);
        Set(pMat->mCColorCurveType, "1");
        Set(pMat->mCColorCurveDepend, "0");
        GLDrawStatus_cls status = Begin(true, kSize / 2, bPerspective);
        glClearColor(0.f, 0.f, 1.f, 1.f); // blue to blend over
        glClear(GL_COLOR_BUFFER_BIT);
        glTranslatef(-0.2f, -0.7f, 0.f);
        mDraw.GLDraw(*p, status);
        End();
        return p;
    }
    ParticleDraw_cls mDraw{nullptr};
};

TEST_F(ParticleCoverageTest, TiltedSquaresWriteTheDepthOfTheirPlane) {
    if (IsSkipped())
        GTEST_SKIP();
    for (bool bPerspective : {false, true}) {
        SCOPED_TRACE(bPerspective);
        Particle_cls* p = Draw(bPerspective ? "P" : "O", bPerspective ? 40.f : 12.f, 1, bPerspective);
        float f[16];
        ParticleDraw_cls::GetBillboardFocus(*p, 0.0, f);
        const double n[3] = {f[1] * f[6] - f[2] * f[5], f[2] * f[4] - f[0] * f[6], f[0] * f[5] - f[1] * f[4]};
        const double c[3] = {0.3, -0.2, bPerspective ? -100.0 : 0.0};
        for (int j : {29, 32, 35}) {
            // The ray of pixel (36, j): from the eye through the near plane, or straight down the view.
            const double o[2] = {bPerspective ? 0.0 : World(36), bPerspective ? 0.0 : World(j)};
            const double d[3] = {bPerspective ? 36.5 / 32.0 - 1.0 : 0.0,
                                 bPerspective ? (j + 0.5) / 32.0 - 1.0 : 0.0, -1.0};
            const double z = -(n[0] * (c[0] - o[0]) + n[1] * (c[1] - o[1]) + n[2] * c[2]) /
                             (n[0] * d[0] + n[1] * d[1] + n[2] * d[2]);
            const double ndc = bPerspective ? (1001.0 * z + 2000.0) / (999.0 * z) : -z / 2000.0;
            EXPECT_NEAR(ReadDepth(36, j), 0.5 * ndc + 0.5, 2e-6) << j;
        }
    }
}

TEST_F(ParticleCoverageTest, PointsCoverTheCentresInsideTheirShapeAndBlendUnlessOpaque) {
    if (IsSkipped())
        GTEST_SKIP();
    // Over blue, white at alpha a leaves red a; a point of half a pixel draws one at a quarter.
    const struct {
        const char* shader; // "Point" or "Circle"
        float size, tableAlpha, red;
    } cases[] = {{"0", 2.f, 1.f, 1.f}, {"0", 7.f, 0.5f, 0.5f}, {"0", 2.5f, 1.f, 1.f}, {"0", 0.5f, 1.f, 0.25f},
                 {"1", 3.f, 1.f, 1.f}, {"1", 8.f, 0.5f, 0.5f}, {"1", 4.5f, 1.f, 1.f}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.shader << " " << c.size << " " << c.tableAlpha);
        Draw(wxString::Format("S%d", static_cast<int>(&c - cases)), c.size, 0, false, c.shader, c.tableAlpha);
        int wrong = 0;
        for (int i = 0; i < kSize * kSize; ++i) {
            const float dx = i % kSize + 0.5f - 32.3f, dy = i / kSize + 0.5f - 31.8f;
            const float r = std::max(0.5f, 0.5f * c.size);
            const bool bIn =
                *c.shader == '0' ? std::fabs(dx) < r && std::fabs(dy) < r : dx * dx + dy * dy <= r * r;
            const Pixel_cls& px = mVFrame[static_cast<size_t>(i)];
            wrong += std::fabs(px.r - (bIn ? c.red : 0.f)) > 0.01f || std::fabs(px.b - 1.f) > 0.01f ? 1 : 0;
        }
        EXPECT_EQ(wrong, 0);
        // Depth where the particle is, and none in the corner of a circle's square.
        EXPECT_NEAR(ReadDepth(32, 31), 0.5, 1e-6);
        EXPECT_EQ(ReadDepth(28, 28), 1.f);
    }
}

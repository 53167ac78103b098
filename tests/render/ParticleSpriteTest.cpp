// Imposter spheres and billboards off the axis of a perspective camera draw exactly the pixels
// whose view rays meet their surface: their sprites reach the whole outline and no further.
#include "GLDrawStatus_cls.h"
#include "MaterialParticle_cls.h"
#include "ParamGroup_cls.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "RenderProcessFixture.h"
#include "SceneObjCtrl_cls.h"
#include "TimeCtrl_cls.h"

#include <epoxy/gl.h>

#include <array>
#include <cmath>

using ParticleSpriteTest = RenderProcessFixture;

// Rays that graze the edge within a thousandth are left out.
TEST_F(ParticleSpriteTest, SpritesOffTheAxisDrawExactlyTheirOutline) {
    if (IsSkipped())
        GTEST_SKIP();
    constexpr int kSide = 64;
    ASSERT_TRUE(MakeTarget(kSide));
    GpCTimeCtrl->mCFrameMax.SetBodyFromData(1LL);
    ParticleDraw_cls draw(nullptr);
    // base 0 with "PseudoSphere" or base 1 with "Billboard"; centre at z = 0, the eye at z = 100.
    const struct {
        int base;
        double x, y, size;
    } cases[] = {{0, 0, 0, 20}, {0, 62, 10, 16},  {0, -55, 55, 18},
                 {1, 0, 0, 20}, {1, -60, -5, 16}, {1, 50, -52, 18}};
    using Vec3 = std::array<double, 3>;
    auto dot = [](const Vec3& a, const Vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "base " << c.base << " at " << c.x << ", " << c.y);
        const wxString strPath = mDir.Path(wxString::Format("p%d0000.txt", static_cast<int>(&c - cases)));
        ASSERT_TRUE(
            WriteBytes(strPath, wxString::Format("1\n0\n%g %g 0 0 %g\n", c.x, c.y, c.size).ToStdString()));
        auto* p =
            dynamic_cast<Particle_cls*>(GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand(
                "Particle", wxString::Format("P%d", static_cast<int>(&c - cases)))));
        ASSERT_NE(p, nullptr);
        p->mCFormat.mCDataType.SetBodyFromData("0");
        p->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
        p->mCPath.SetBodyFromData(strPath);
        p->mCAlphaCrit.SetBodyFromData("0");
        MaterialParticle_cls* pMat = p->GetPCMaterialParticle(0);
        pMat->mCBaseType.SetBodyFromData(wxString::Format("%d", c.base));
        pMat->GetPCItem(c.base == 0 ? "ShaderTypePoint=" : "ShaderTypeBillboard=")
            ->SetBodyFromData(c.base == 0 ? "2" : "0");
        pMat->GetPCParamGroup("SizeFactor")->SetInitValue(1.0, 1.0);
        glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
        glViewport(0, 0, kSide, kSide);
        glClearColor(0.f, 0.f, 0.f, 0.f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glFrustum(-1, 1, -1, 1, 1, 1000);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(0.f, 0.f, -100.f);
        GLDrawStatus_cls status;
        draw.GLDraw(*p, status);
        glFinish();
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        ReadTexture(mColor.Get(), kSide, kSide);
        // The square's axes in eye space: the object's default focus.
        float f[16];
        ParticleDraw_cls::GetBillboardFocus(*p, 0.0, f);
        const Vec3 u = {f[0], f[1], f[2]}, v = {f[4], f[5], f[6]}, centre = {c.x, c.y, -100.0};
        const Vec3 n = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
        int drawn = 0, wrong = 0;
        for (int i = 0; i < kSide * kSide; ++i) {
            const Vec3 d = {(i % kSide + 0.5) * 2.0 / kSide - 1.0, (i / kSide + 0.5) * 2.0 / kSide - 1.0,
                            -1.0};
            const double b = dot(d, centre), t = dot(centre, n) / dot(d, n);
            const Vec3 rel = {t * d[0] - centre[0], t * d[1] - centre[1], t * d[2] - centre[2]};
            // Above 0 inside the outline, below 0 outside.
            const double margin =
                c.base == 0 ? (b * b - dot(d, d) * (dot(centre, centre) - c.size * c.size)) /
                                  (dot(d, d) * c.size * c.size)
                            : 1.0 - std::max(std::fabs(dot(rel, u)), std::fabs(dot(rel, v))) / c.size;
            const bool bDrawn = mVFrame[static_cast<size_t>(i)].a > 0.5f;
            drawn += bDrawn ? 1 : 0;
            wrong += std::fabs(margin) > 1e-3 && bDrawn != (margin > 0.0) ? 1 : 0;
        }
        EXPECT_GT(drawn, 20);
        EXPECT_EQ(wrong, 0) << "pixels drawn outside the outline or missed inside it";
    }
}

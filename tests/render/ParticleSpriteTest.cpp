// Imposter spheres and billboards off the axis of a perspective camera cover exactly the pixels
// whose view rays meet their surface, and a frame sends to GL only the arrays it needs.
#include "GLDrawStatus_cls.h"
#include "MaterialParticle_cls.h"
#include "ParamGroup_cls.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "RenderProcessFixture.h"
#include "SceneObjCtrl_cls.h"
#include "TextureProvider_cls.h"
#include "TimeCtrl_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace {

constexpr int kSide = 64;
using Vec3 = std::array<double, 3>;

double Dot(const Vec3& a, const Vec3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

} // namespace

class ParticleSpriteTest : public RenderProcessFixture {
protected:
    void SetUp() override {
        RenderProcessFixture::SetUp();
        if (IsSkipped())
            return;
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(1LL);
        mpDraw = std::make_unique<ParticleDraw_cls>(GpCTextureProvider);
        ASSERT_TRUE(MakeTarget(kSide));
    }
    void TearDown() override {
        mpDraw.reset();
        RenderProcessFixture::TearDown();
    }
    // Particles (x y z type size per row) of one object; point sizes in pixels by factor 1.
    Particle_cls* Add(const wxString& strName, const std::vector<std::array<float, 5>>& vRow) {
        std::ostringstream text;
        text << vRow.size() << "\n0\n";
        for (const auto& r : vRow)
            text << r[0] << " " << r[1] << " " << r[2] << " " << r[3] << " " << r[4] << "\n";
        const wxString strPath = mDir.Path(strName + "0000.txt");
        EXPECT_TRUE(WriteBytes(strPath, text.str()));
        auto* p = dynamic_cast<Particle_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", strName)));
        EXPECT_NE(p, nullptr);
        p->mCFormat.mCDataType.SetBodyFromData("0");
        p->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
        p->mCPath.SetBodyFromData(strPath);
        p->mCPointSizeFactor.SetBodyFromData("1");
        p->mCAlphaCrit.SetBodyFromData("0");
        return p;
    }
    // The object alone, seen by a 90-degree frustum from z = 100 (or one unit per pixel when
    // orthographic), read back.
    void Draw(Particle_cls* p, bool bPerspective) {
        glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
        glViewport(0, 0, kSide, kSide);
        glClearColor(0.f, 0.f, 0.f, 0.f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        if (bPerspective)
            glFrustum(-1, 1, -1, 1, 1, 1000);
        else
            glOrtho(-kSide / 2, kSide / 2, -kSide / 2, kSide / 2, -2000, 2000);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        if (bPerspective)
            glTranslatef(0.f, 0.f, -100.f);
        glEnable(GL_DEPTH_TEST);
        GLDrawStatus_cls status;
        status.mTime = GpCTimeCtrl->GetCurrentNT(false);
        mpDraw->GLDraw(*p, status);
        glFinish();
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        ReadTexture(mColor.Get(), kSide, kSide);
    }

    std::unique_ptr<ParticleDraw_cls> mpDraw;
};

// The sprite of each particle must reach every pixel of its outline wherever it stands in the
// view: a pixel is drawn exactly when its ray meets the sphere or the square (rays that graze the
// edge within a thousandth are left out).
TEST_F(ParticleSpriteTest, SpritesOffTheAxisDrawExactlyTheirOutline) {
    if (IsSkipped())
        GTEST_SKIP();
    struct Case_cls {
        const char* strName;
        int base;         // 0 point, 1 billboard
        int shader;       // "PseudoSphere" (2 of points) or "Billboard" (0 of billboards)
        float x, y, size; // centre at z = 0, 100 in front of the eye
    } cases[] = {
        {"sphere on the axis", 0, 2, 0.f, 0.f, 20.f},
        {"sphere off to the right", 0, 2, 62.f, 10.f, 16.f},
        {"sphere off in a corner", 0, 2, -55.f, 55.f, 18.f},
        {"billboard on the axis", 1, 0, 0.f, 0.f, 20.f},
        {"billboard off to the left", 1, 0, -60.f, -5.f, 16.f},
        {"billboard off in a corner", 1, 0, 50.f, -52.f, 18.f},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strName);
        Particle_cls* p =
            Add(wxString::Format("s%d", static_cast<int>(&c - cases)), {{c.x, c.y, 0.f, 0, c.size}});
        MaterialParticle_cls* pMat = p->GetPCMaterialParticle(0);
        pMat->mCBaseType.SetBodyFromData(wxString::Format("%d", c.base));
        pMat->GetPCItem(c.base == 0 ? "ShaderTypePoint=" : "ShaderTypeBillboard=")
            ->SetBodyFromData(wxString::Format("%d", c.shader));
        pMat->GetPCParamGroup("SizeFactor")->SetInitValue(1.0, 1.0);
        Draw(p, true);
        // The square's axes in eye space: the object's default focus, no roll.
        float focus[16];
        ParticleDraw_cls::GetBillboardFocus(*p, 0.0, focus);
        const Vec3 u = {focus[0], focus[1], focus[2]}, v = {focus[4], focus[5], focus[6]};
        const Vec3 n = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
        const Vec3 centre = {c.x, c.y, -100.0};
        int drawn = 0, wrong = 0;
        for (int py = 0; py < kSide; ++py)
            for (int px = 0; px < kSide; ++px) {
                const Vec3 d = {(px + 0.5) * 2.0 / kSide - 1.0, (py + 0.5) * 2.0 / kSide - 1.0, -1.0};
                double margin = 0.0; // above 0 inside, below 0 outside
                if (c.base == 0) {
                    const double b = Dot(d, centre), dd = Dot(d, d);
                    margin = (b * b - dd * (Dot(centre, centre) - c.size * c.size)) / (dd * c.size * c.size);
                } else {
                    const double t = Dot(centre, n) / Dot(d, n);
                    const Vec3 rel = {t * d[0] - centre[0], t * d[1] - centre[1], t * d[2] - centre[2]};
                    margin = 1.0 - std::max(std::fabs(Dot(rel, u)), std::fabs(Dot(rel, v))) / c.size;
                }
                const bool bDrawn = mVFrame[static_cast<size_t>(py * kSide + px)].a > 0.5f;
                drawn += bDrawn ? 1 : 0;
                if (std::fabs(margin) > 1e-3 && bDrawn != (margin > 0.0))
                    ++wrong;
            }
        EXPECT_GT(drawn, 20);
        EXPECT_EQ(wrong, 0) << "pixels drawn outside the outline or missed inside it";
    }
}

// Bytes a new frame gives to GL per particle: positions (12), S, T, alpha and size (16); the
// param bits (4) only when the materials' bits differ; the element lists (4) only when they do
// not just count 0 to n - 1. Every particle is drawn either way.
TEST_F(ParticleSpriteTest, AFrameSendsOnlyTheArraysItNeeds) {
    if (IsSkipped())
        GTEST_SKIP();
    struct Case_cls {
        const char* strName;
        int materials;
        const char* strSecondBlend; // "BlendType=" of the second material
        bool bTwoPass;
        size_t bytesPerParticle;
    } cases[] = {
        {"one material", 1, "0", false, 28},
        {"two alike", 2, "0", false, 28},
        {"two that blend differently", 2, "1", false, 32},
        {"two in two passes", 2, "1", true, 36},
    };
    constexpr int kCount = 32;
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strName);
        std::vector<std::array<float, 5>> vRow;
        for (int i = 0; i < kCount; ++i)
            vRow.push_back({static_cast<float>(4 * (i % 8) - 15), static_cast<float>(4 * (i / 8) - 15), 0.f,
                            static_cast<float>(i % 2), 2.f});
        Particle_cls* p = Add(wxString::Format("u%d", static_cast<int>(&c - cases)), vRow);
        while (p->GetNumMaterial() < c.materials)
            p->AddMaterialCommand();
        if (c.materials > 1)
            p->GetPCMaterialParticle(1)->mCBlendType.SetBodyFromData(c.strSecondBlend);
        p->mCTwoPass.SetBodyFromData(c.bTwoPass ? "1" : "0");
        Draw(p, false);
        const size_t first = mpDraw->GetUploadedBytes(p);
        EXPECT_EQ(first, c.bytesPerParticle * kCount);
        int drawn = 0;
        for (const Pixel_cls& px : mVFrame)
            drawn += px.a > 0.01f ? 1 : 0;
        EXPECT_EQ(drawn, 4 * kCount) << "every particle a square of two by two pixels";
        Draw(p, false);
        EXPECT_EQ(mpDraw->GetUploadedBytes(p), first) << "the same frame again sends nothing";
    }
}

// Particle objects drawn into a small buffer with an orthographic camera that maps one unit to
// one pixel: points, billboards, ray-cast and mesh spheres where their data put them, colours
// through the colour curve, two-pass drawing, batches, uploads, and the frames that cannot be drawn.
#include "ColorCurve_cls.h"
#include "FBO_cls.h"
#include "FramePasses_cls.h"
#include "GLDrawStatus_cls.h"
#include "Main_cls.h"
#include "MaterialParticle_cls.h"
#include "ParamGroup_cls.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "RenderFixture.h"
#include "SceneObjCtrl_cls.h"
#include "ServiceRegistry.h"
#include "ShaderItem_cls.h"
#include "TestSupport.h"
#include "TextureProvider_cls.h"
#include "TimeCtrl_cls.h"
#include "View3D_cls.h"

#include <epoxy/gl.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <sstream>

namespace {

const wxString kResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";
constexpr int kSize = 64;

struct Atom_cls {
    float x, y, z;
    int type;
    float size;
};

// World x (or y) of the centre of pixel i.
float World(int i) {
    return static_cast<float>(i) + 0.5f - kSize / 2;
}

bool IsEmpty(const Pixel_cls& p) {
    return p.a < 0.01f && p.r < 0.01f && p.g < 0.01f && p.b < 0.01f;
}

} // namespace

class ParticleDrawTest : public RenderFixture {
protected:
    void SetUp() override {
        RenderFixture::SetUp();
        if (IsSkipped())
            return;
        mStrOldResourceDir = ShaderItem_cls::msStrResourceDir;
        ShaderItem_cls::msStrResourceDir = kResourceDir;
        RegisterServices<ServiceLayer_enum::Render>();
        mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
        mpMain->CreateSingleton();
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(1LL);
        GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(0LL);
        mpDraw = std::make_unique<ParticleDraw_cls>(GpCTextureProvider);
        mColor = GLTexture_cls::Make();
        glBindTexture(GL_TEXTURE_2D, mColor.Get());
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, kSize, kSize, 0, GL_RGBA, GL_FLOAT, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glBindTexture(GL_TEXTURE_2D, 0);
        mDepth = GLRenderbuffer_cls::Make();
        glBindRenderbuffer(GL_RENDERBUFFER, mDepth.Get());
        glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, kSize, kSize);
        mFramebuffer = GLFramebuffer_cls::Make();
        glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mColor.Get(), 0);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, mDepth.Get());
        ASSERT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), static_cast<GLenum>(GL_FRAMEBUFFER_COMPLETE));
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
    }
    void TearDown() override {
        if (getenv("ORV_SAVE_FRAMES") && !mVFrame.empty())
            SaveFrame(std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".png");
        mpPasses.reset();
        mpView.reset();
        mpDraw.reset();
        mFramebuffer.Reset();
        mDepth.Reset();
        mColor.Reset();
        mpMain.reset();
        if (!mStrOldResourceDir.empty())
            ShaderItem_cls::msStrResourceDir = mStrOldResourceDir;
        RenderFixture::TearDown();
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
    static void Set(ConfItem_cls& item, const wxString& str) { item.SetBodyFromData(str); }
    // The object's first curve as the given keys (position, R, G, B, A), over the range.
    static ColorCurve_cls* SetCurve(Particle_cls* p, std::vector<std::array<double, 5>> vKey, double r0,
                                    double r1) {
        auto* pCurve = static_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", 0));
        std::vector<double[5]> rows(vKey.size());
        for (size_t i = 0; i < vKey.size(); ++i)
            std::copy(vKey[i].begin(), vKey[i].end(), rows[i]);
        pCurve->SetInitKeyframes(static_cast<int>(vKey.size()), rows.data());
        pCurve->GetPCRange()->SetInitValue(r0, r1);
        return pCurve;
    }
    // Colour by x through a curve from red (left edge) to blue (right edge), opaque.
    static void ColourByX(Particle_cls* p, int m = 0) {
        SetCurve(p, {{0, 1, 0, 0, 1}, {1, 0, 0, 1, 1}}, -kSize / 2, kSize / 2);
        Set(Mat(p, m)->mCColorCurveType, "1");
        Set(Mat(p, m)->mCColorCurveDepend, "6");
    }

    // Draws the object alone into the buffer, clears first unless told not to, reads it back.
    void Draw(Particle_cls* p, bool bClear = true) {
        glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
        glViewport(0, 0, kSize, kSize);
        if (bClear) {
            glClearColor(0.f, 0.f, 0.f, 0.f);
            glDepthMask(GL_TRUE);
            glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        }
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-kSize / 2, kSize / 2, -kSize / 2, kSize / 2, -2000, 2000);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glEnable(GL_DEPTH_TEST);
        GLDrawStatus_cls status;
        status.mTime = GpCTimeCtrl->GetCurrentNT(false);
        mpDraw->GLDraw(*p, status);
        glFinish();
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        ReadTexture(mColor.Get(), kSize, kSize);
    }
    float ReadDepth(int x, int y) {
        float depth = -1.f;
        glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
        glReadPixels(x, y, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        return depth;
    }
    int CountDrawn() const {
        int n = 0;
        for (const Pixel_cls& p : mVFrame)
            n += IsEmpty(p) ? 0 : 1;
        return n;
    }

    TempDir_cls mDir;
    wxString mStrOldResourceDir;
    std::unique_ptr<Main_cls> mpMain;
    std::unique_ptr<ParticleDraw_cls> mpDraw;
    std::unique_ptr<View3D_cls> mpView;
    std::unique_ptr<FramePasses_cls> mpPasses;
    GLTexture_cls mColor;
    GLRenderbuffer_cls mDepth;
    GLFramebuffer_cls mFramebuffer;
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

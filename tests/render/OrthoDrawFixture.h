// Objects drawn straight through their draw code into a 64-pixel buffer, with an orthographic
// camera that maps one unit to one pixel (or 90 degrees of perspective from z = 100), over the
// whole process up to the renderer.
#pragma once

#include "ColorCurve_cls.h"
#include "GLDrawStatus_cls.h"
#include "PassesFixture.h"
#include "TimeCtrl_cls.h"

#include <epoxy/gl.h>

#include <array>
#include <vector>

class OrthoDrawFixture : public PassesFixture {
protected:
    static constexpr int kSize = 64;

    void SetUp() override {
        PassesFixture::SetUp();
        if (IsSkipped())
            return;
        SetFrame(1, 0);
        ASSERT_TRUE(MakeTarget(kSize));
    }
    static void SetFrame(long long frameMax, long long frame) {
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(frameMax);
        GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(frame);
    }
    static void Set(ConfItem_cls& item, const wxString& str) { item.SetBodyFromData(str); }
    // World x (or y) of the centre of pixel i.
    static float World(int i) { return static_cast<float>(i) + 0.5f - kSize / 2; }
    static bool IsEmpty(const Pixel_cls& p, float tol = 0.01f) {
        return p.a < tol && p.r < tol && p.g < tol && p.b < tol;
    }
    // The object's first curve as the given keys (position, R, G, B, A), over the range.
    static ColorCurve_cls* SetCurve(SceneObj_cls* p, const std::vector<std::array<double, 5>>& vKey,
                                    double r0, double r1) {
        auto* pCurve = static_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", 0));
        std::vector<double[5]> rows(vKey.size());
        for (size_t i = 0; i < vKey.size(); ++i)
            std::copy(vKey[i].begin(), vKey[i].end(), rows[i]);
        pCurve->SetInitKeyframes(static_cast<int>(vKey.size()), rows.data());
        pCurve->GetPCRange()->SetInitValue(r0, r1);
        return pCurve;
    }
    // Binds the buffer, clears it unless told not to, and sets the camera: half units to each
    // side, or the perspective. Returns the status of the current time.
    GLDrawStatus_cls Begin(bool bClear = true, double half = kSize / 2, bool bPerspective = false) {
        glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
        glViewport(0, 0, kSize, kSize);
        if (bClear) {
            glClearColor(0.f, 0.f, 0.f, 0.f);
            glDepthMask(GL_TRUE);
            glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        }
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        if (bPerspective)
            glFrustum(-1, 1, -1, 1, 1, 1000);
        else
            glOrtho(-half, half, -half, half, -2000, 2000);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        if (bPerspective)
            glTranslatef(0.f, 0.f, -100.f);
        glEnable(GL_DEPTH_TEST);
        GLDrawStatus_cls status;
        status.mTime = GpCTimeCtrl->GetCurrentNT(false);
        return status;
    }
    // Ends the frame and reads it back.
    void End() {
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
    // The pixels in the rectangle that hold anything.
    int CountDrawn(int x0 = 0, int x1 = kSize, int y0 = 0, int y1 = kSize, float tol = 0.01f) const {
        int n = 0;
        for (int y = y0; y < y1; ++y)
            for (int x = x0; x < x1; ++x)
                n += IsEmpty(At(x, y), tol) ? 0 : 1;
        return n;
    }
};

// One surfaceless EGL context per test suite; every test draws into small buffers and reads
// them back. A test that fails writes the last frame it read as a PNG beside the test log.
#pragma once

#include "EGLContext_cls.h"
#include "GLObject_cls.h"
#include "ShaderItem_cls.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// The shader library reads its sources from strDir while this lives.
class ResourceDir_cls {
public:
    explicit ResourceDir_cls(const wxString& strDir) : mStrOld(ShaderItem_cls::msStrResourceDir) {
        ShaderItem_cls::msStrResourceDir = strDir;
    }
    ~ResourceDir_cls() { ShaderItem_cls::msStrResourceDir = mStrOld; }
    ResourceDir_cls(const ResourceDir_cls&) = delete;
    ResourceDir_cls& operator=(const ResourceDir_cls&) = delete;

private:
    wxString mStrOld;
};

// One RGBA float pixel read back from a buffer.
struct Pixel_cls {
    float r, g, b, a;
};

class RenderFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    // Reads level 0 of a 2D texture as floats and remembers it as the frame of this test.
    std::vector<Pixel_cls> ReadTexture(unsigned int texture, int width, int height);
    // The pixel at (x, y), y counted from the bottom like GL.
    Pixel_cls At(int x, int y) const { return mVFrame[static_cast<size_t>(y) * mFrameWidth + x]; }
    // Writes the remembered frame to a PNG (8 bits, clamped) under the given name, in the folder
    // ORV_FRAME_DIR (the test log's, under ctest) or /tmp.
    void SaveFrame(const std::string& strName) const;
    // A square float RGBA texture with a 24-bit depth buffer in mFramebuffer; false when the
    // framebuffer is not complete. TearDown frees them.
    bool MakeTarget(int size);

    static std::unique_ptr<EGLContext_cls> mspCContext;
    static std::string msStrSkip;

    std::vector<Pixel_cls> mVFrame;
    int mFrameWidth = 0;
    int mFrameHeight = 0;
    GLTexture_cls mColor;
    GLRenderbuffer_cls mDepth;
    GLFramebuffer_cls mFramebuffer;
};

// Expects a pixel to match the colour within the tolerance.
::testing::AssertionResult PixelNear(const Pixel_cls& px, float r, float g, float b, float a,
                                     float tol = 0.02f);

#include "RenderFixture.h"

#include "FramePasses_cls.h"

#include <epoxy/gl.h>
#include <png.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

std::unique_ptr<EGLContext_cls> RenderFixture::mspCContext;
std::string RenderFixture::msStrSkip;

void RenderFixture::SetUpTestSuite() {
    mspCContext = std::make_unique<EGLContext_cls>();
    if (!mspCContext->Create())
        msStrSkip = mspCContext->GetStrError().ToStdString();
}

void RenderFixture::TearDownTestSuite() {
    // The shared primitive buffers of any frame passes the suite ran go with its context, or the
    // next suite would draw with names of a context that is gone.
    if (mspCContext && mspCContext->IsValid()) {
        mspCContext->MakeCurrent();
        FramePasses_cls::DeleteGLCommon();
    }
    mspCContext.reset();
}

void RenderFixture::SetUp() {
    if (!mspCContext || !mspCContext->IsValid())
        GTEST_SKIP() << "no GL context: " << msStrSkip;
    mspCContext->MakeCurrent();
    // Leftovers of an earlier test must not be reported as this test's errors.
    while (glGetError() != GL_NO_ERROR) {
    }
}

void RenderFixture::TearDown() {
    if (HasFailure() && !mVFrame.empty()) {
        const ::testing::TestInfo* pInfo = ::testing::UnitTest::GetInstance()->current_test_info();
        SaveFrame(std::string(pInfo->test_suite_name()) + "." + pInfo->name() + ".png");
    }
    mFramebuffer.Reset();
    mDepth.Reset();
    mColor.Reset();
}

std::vector<Pixel_cls> RenderFixture::ReadTexture(unsigned int texture, int width, int height) {
    mVFrame.assign(static_cast<size_t>(width) * height, Pixel_cls{-1.f, -1.f, -1.f, -1.f});
    mFrameWidth = width;
    mFrameHeight = height;
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_FLOAT, mVFrame.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return mVFrame;
}

void RenderFixture::SaveFrame(const std::string& strName) const {
    const char* strDir = getenv("ORV_FRAME_DIR");
    const std::string strPath = std::string(strDir ? strDir : "/tmp") + "/" + strName;
    FILE* fp = fopen(strPath.c_str(), "wb");
    if (!fp)
        return;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        fclose(fp);
        return;
    }
    png_init_io(png, fp);
    png_set_IHDR(png, info, mFrameWidth, mFrameHeight, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    std::vector<png_byte> row(static_cast<size_t>(mFrameWidth) * 4);
    auto toByte = [](float v) {
        return static_cast<png_byte>(std::lround(std::fmin(std::fmax(v, 0.f), 1.f) * 255));
    };
    // GL counts rows from the bottom, PNG from the top.
    for (int y = mFrameHeight - 1; y >= 0; --y) {
        for (int x = 0; x < mFrameWidth; ++x) {
            const Pixel_cls& px = mVFrame[static_cast<size_t>(y) * mFrameWidth + x];
            row[x * 4 + 0] = toByte(px.r);
            row[x * 4 + 1] = toByte(px.g);
            row[x * 4 + 2] = toByte(px.b);
            row[x * 4 + 3] = toByte(px.a);
        }
        png_write_row(png, row.data());
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    fclose(fp);
}

::testing::AssertionResult PixelNear(const Pixel_cls& px, float r, float g, float b, float a, float tol) {
    if (std::fabs(px.r - r) <= tol && std::fabs(px.g - g) <= tol && std::fabs(px.b - b) <= tol &&
        std::fabs(px.a - a) <= tol)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "pixel (" << px.r << ", " << px.g << ", " << px.b << ", " << px.a
                                         << ") is not (" << r << ", " << g << ", " << b << ", " << a << ")";
}

bool RenderFixture::MakeTarget(int size) {
    mColor = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_2D, mColor.Get());
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, size, size, 0, GL_RGBA, GL_FLOAT, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, 0);
    mDepth = GLRenderbuffer_cls::Make();
    glBindRenderbuffer(GL_RENDERBUFFER, mDepth.Get());
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, size, size);
    mFramebuffer = GLFramebuffer_cls::Make();
    glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer.Get());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mColor.Get(), 0);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, mDepth.Get());
    const bool bComplete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return bComplete;
}

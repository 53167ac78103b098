#include "FBOHost_cls.h"
#include "FBO_cls.h"
#include "GLCheckError_cls.h"
#include "GLPerspective_cls.h"
#include "RenderFixture.h"
#include "TestSupport.h"

#include <epoxy/gl.h>

namespace {

// Fills a rectangle of the buffer being drawn with one colour, in pixel coordinates.
void FillRect(int size, float x0, float y0, float x1, float y1, float r, float g, float b, float a) {
    GLPerspective_cls::Push2DMatrix(size, size);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glColor4f(r, g, b, a);
    glBegin(GL_QUADS);
    glVertex2f(x0, y0);
    glVertex2f(x1, y0);
    glVertex2f(x1, y1);
    glVertex2f(x0, y1);
    glEnd();
    GLPerspective_cls::Pop2DMatrix();
}

GLint TextureLevelValue(GLuint texture, GLenum what) {
    GLint value = -1;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, what, &value);
    glBindTexture(GL_TEXTURE_2D, 0);
    return value;
}

GLint AttachmentValue(GLuint framebuffer, GLenum attachment, GLenum what) {
    GLint value = -1;
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glGetFramebufferAttachmentParameteriv(GL_FRAMEBUFFER, attachment, what, &value);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return value;
}

} // namespace

class FBOTest : public RenderFixture {
protected:
    void SetUp() override {
        RenderFixture::SetUp();
        FBO_cls::msFuncGetDepthIndex = nullptr;
    }
    void TearDown() override {
        FBO_cls::msFuncGetDepthIndex = nullptr;
        RenderFixture::TearDown();
    }
};

TEST_F(FBOTest, GLObjectIsDeletedExactlyOnceByItsLastOwner) {
    GLTexture_cls first = GLTexture_cls::Make();
    const GLuint name = first.Get();
    ASSERT_NE(name, 0u);
    glBindTexture(GL_TEXTURE_2D, name); // a name becomes an object on its first binding
    glBindTexture(GL_TEXTURE_2D, 0);
    {
        GLTexture_cls second(std::move(first));
        EXPECT_EQ(first.Get(), 0u);
        EXPECT_EQ(second.Get(), name);
        first.Reset(); // the moved-from owner holds nothing and deletes nothing
        EXPECT_TRUE(glIsTexture(name));
    }
    EXPECT_FALSE(glIsTexture(name));

    // Move assignment deletes what the target held before.
    GLBuffer_cls a = GLBuffer_cls::Make();
    GLBuffer_cls b = GLBuffer_cls::Make();
    glBindBuffer(GL_ARRAY_BUFFER, a.Get());
    glBindBuffer(GL_ARRAY_BUFFER, b.Get());
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    const GLuint nameA = a.Get();
    const GLuint nameB = b.Get();
    a = std::move(b);
    EXPECT_FALSE(glIsBuffer(nameA));
    EXPECT_TRUE(glIsBuffer(nameB));
    EXPECT_EQ(a.Get(), nameB);

    GLShader_cls shader = GLShader_cls::Make(GLenum(GL_FRAGMENT_SHADER));
    GLProgram_cls program = GLProgram_cls::Make();
    EXPECT_TRUE(glIsShader(shader.Get()));
    EXPECT_TRUE(glIsProgram(program.Get()));
    const GLuint nameShader = shader.Release();
    EXPECT_TRUE(glIsShader(nameShader)); // released, not deleted
    glDeleteShader(nameShader);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(FBOTest, MakeFBOBuildsTheRequestedFormats) {
    struct Case_cls {
        const char* strName;
        int colorDepth;
        bool bAlpha;
        bool bDepthTexture;
        int depthIndex;
        GLint colorFormat;
        GLint depthBits;
        GLint stencilBits;
    };
    const Case_cls cases[] = {
        {"16-bit with alpha", 16, true, false, 0, GL_RGBA16F, 24, 8},
        {"16-bit without alpha", 16, false, false, 0, GL_RGB16F, 24, 8},
        {"8-bit with alpha", 8, true, false, 0, GL_RGBA, 24, 8},
        {"8-bit without alpha", 8, false, false, 0, GL_RGB, 24, 8},
        {"float depth and stencil", 16, true, false, 1, GL_RGBA16F, 32, 8},
        {"depth index other than 1", 16, true, false, 5, GL_RGBA16F, 24, 8},
        {"depth texture, no stencil", 8, true, true, 0, GL_RGBA, 24, 0},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strName);
        FBO_cls::msFuncGetDepthIndex = [&c] { return c.depthIndex; };
        LogCapture_cls log;
        FBO_cls fbo(16, 16, nullptr);
        fbo.SetColorDepth(c.colorDepth);
        fbo.MakeFBO(c.bAlpha, c.bDepthTexture);
        EXPECT_EQ(fbo.GetWidth(), 16);
        EXPECT_EQ(fbo.GetHeight(), 16);
        EXPECT_EQ(TextureLevelValue(fbo.GetTexture(), GL_TEXTURE_INTERNAL_FORMAT), c.colorFormat);
        glBindFramebuffer(GL_FRAMEBUFFER, fbo.GetFramebuffer());
        EXPECT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), GLenum(GL_FRAMEBUFFER_COMPLETE));
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        EXPECT_EQ(
            AttachmentValue(fbo.GetFramebuffer(), GL_DEPTH_ATTACHMENT, GL_FRAMEBUFFER_ATTACHMENT_DEPTH_SIZE),
            c.depthBits);
        if (c.stencilBits > 0)
            EXPECT_EQ(AttachmentValue(fbo.GetFramebuffer(), GL_STENCIL_ATTACHMENT,
                                      GL_FRAMEBUFFER_ATTACHMENT_STENCIL_SIZE),
                      c.stencilBits);
        else
            EXPECT_EQ(AttachmentValue(fbo.GetFramebuffer(), GL_STENCIL_ATTACHMENT,
                                      GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE),
                      GL_NONE);
        if (c.bDepthTexture) {
            ASSERT_NE(fbo.GetPCDepthTexture(), nullptr);
            EXPECT_EQ(TextureLevelValue(fbo.GetPCDepthTexture()->GetTexture(), GL_TEXTURE_INTERNAL_FORMAT),
                      GL_DEPTH_COMPONENT24);
        } else {
            EXPECT_EQ(fbo.GetPCDepthTexture(), nullptr);
        }
        // A fresh buffer reads transparent black.
        ReadTexture(fbo.GetTexture(), 16, 16);
        EXPECT_TRUE(PixelNear(At(7, 7), 0, 0, 0, c.bAlpha ? 0.f : 1.f));
        for (const wxString& line : log.mVStrLines)
            ADD_FAILURE() << "unexpected log: " << line.ToStdString();
    }
    // The context without a display has buffers; a colour depth other than 8 or 16 leaves no storage.
    EXPECT_TRUE(FBO_cls::msbSupported);
    EXPECT_TRUE(FBO_cls::msbInitialized);
    FBO_cls fbo(8, 8, nullptr);
    fbo.SetColorDepth(12);
    fbo.MakeFBO(true, false);
    EXPECT_EQ(TextureLevelValue(fbo.GetTexture(), GL_TEXTURE_WIDTH), 0);
    EXPECT_EQ(fbo.GetColorDepthBuilt(), 12);
}

TEST_F(FBOTest, MakeFBORebuildsOnlyWhenTheRequestChanges) {
    int depthIndex = 0;
    FBO_cls::msFuncGetDepthIndex = [&depthIndex] { return depthIndex; };
    FBO_cls fbo(16, 16, nullptr);
    fbo.MakeFBO(true, false);
    auto paint = [&] {
        fbo.Begin(true, false);
        FillRect(16, 0, 0, 16, 16, 1, 0, 0, 1);
        fbo.End();
    };
    auto painted = [&] {
        ReadTexture(fbo.GetTexture(), fbo.GetWidth(), fbo.GetHeight());
        return At(3, 3).r > 0.5f;
    };
    paint();
    fbo.MakeFBO(true, false);
    EXPECT_TRUE(painted()) << "same request: nothing rebuilt, the picture stays";

    struct Change_cls {
        const char* strName;
        std::function<void()> funcChange;
        bool bAlpha;
        bool bDepthTexture;
    };
    const Change_cls changes[] = {
        {"size", [&] { fbo.SetGeometryFBO(32, 32); }, true, false},
        {"colour depth", [&] { fbo.SetColorDepth(8); }, true, false},
        {"depth index", [&] { depthIndex = 1; }, true, false},
        {"alpha", [] {}, false, false},
        {"depth texture", [] {}, false, true},
    };
    for (const Change_cls& c : changes) {
        SCOPED_TRACE(c.strName);
        paint();
        c.funcChange();
        fbo.MakeFBO(c.bAlpha, c.bDepthTexture);
        EXPECT_FALSE(painted()) << "a changed request builds a new, cleared buffer";
        paint();
        fbo.MakeFBO(c.bAlpha, c.bDepthTexture);
        EXPECT_TRUE(painted());
    }
    EXPECT_EQ(fbo.GetWidth(), 32);
}

TEST_F(FBOTest, BeginClearsBeginWithoutClearKeepsTheDrawingAndColoursAboveOneStay) {
    FBO_cls fbo(8, 8, nullptr);
    fbo.MakeFBO(true, false);
    fbo.Begin(true, false);
    FillRect(8, 0, 0, 8, 8, 0, 1, 0, 1);
    fbo.End();
    fbo.Begin(false, false);
    FillRect(8, 0, 0, 4, 8, 0, 0, 1, 1);
    fbo.End();
    ReadTexture(fbo.GetTexture(), 8, 8);
    EXPECT_TRUE(PixelNear(At(1, 4), 0, 0, 1, 1));
    EXPECT_TRUE(PixelNear(At(6, 4), 0, 1, 0, 1));
    fbo.ClearFBO();
    ReadTexture(fbo.GetTexture(), 8, 8);
    EXPECT_TRUE(PixelNear(At(6, 4), 0, 0, 0, 0));
    // The float buffer keeps colours above one.
    fbo.Begin(true, false);
    glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    FillRect(8, 0, 0, 8, 8, 2.5f, 0.25f, 0.f, 1.f);
    fbo.End();
    ReadTexture(fbo.GetTexture(), 8, 8);
    EXPECT_TRUE(PixelNear(At(2, 2), 2.5f, 0.25f, 0, 1));
}

TEST_F(FBOTest, NestedBeginEndReturnsToTheOuterBuffer) {
    FBOHost_cls host;
    FBO_cls outer(16, 16, &host);
    FBO_cls inner(8, 8, &host);
    outer.MakeFBO(true, false);
    inner.MakeFBO(true, false);
    LogCapture_cls log;

    outer.Begin(true, false);
    EXPECT_EQ(host.mpCFBOCurrent, &outer);
    FillRect(16, 0, 0, 16, 16, 1, 0, 0, 1);
    glLineWidth(3.f);
    inner.Begin(true, false);
    EXPECT_EQ(host.mpCFBOCurrent, &inner);
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 8);
    FillRect(8, 0, 0, 8, 8, 0, 1, 0, 1);
    glLineWidth(7.f);
    inner.End();
    // Back in the outer buffer, with its drawing kept and the inner pass's state undone.
    EXPECT_EQ(host.mpCFBOCurrent, &outer);
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 16);
    GLfloat lineWidth = 0.f;
    glGetFloatv(GL_LINE_WIDTH, &lineWidth);
    EXPECT_FLOAT_EQ(lineWidth, 3.f);
    FillRect(16, 8, 0, 16, 16, 0, 0, 1, 1); // lands in the outer buffer, not in the inner one
    outer.End();
    EXPECT_EQ(host.mpCFBOCurrent, nullptr);
    GLint bound = -1;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &bound);
    EXPECT_EQ(bound, 0);

    ReadTexture(inner.GetTexture(), 8, 8);
    EXPECT_TRUE(PixelNear(At(6, 6), 0, 1, 0, 1));
    ReadTexture(outer.GetTexture(), 16, 16);
    EXPECT_TRUE(PixelNear(At(2, 8), 1, 0, 0, 1));
    EXPECT_TRUE(PixelNear(At(12, 8), 0, 0, 1, 1));
    SaveFrame("NestedOuter.png");
    for (const wxString& line : log.mVStrLines)
        ADD_FAILURE() << "unexpected log: " << line.ToStdString();
}

TEST_F(FBOTest, CheckpointLogsTheErrorNameAndLabel) {
    struct Case_cls {
        std::function<void()> funcProvoke;
        const char* strExpected;
    };
    const Case_cls cases[] = {
        {[] { glEnable(0x1234); }, "error = INVALID_ENUM MakeFBO"},
        {[] { glLineWidth(-1.f); }, "error = INVALID_VALUE MakeFBO"},
        {[] { glPopAttrib(); }, "error = Unknown MakeFBO"},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strExpected);
        LogCapture_cls log;
        c.funcProvoke();
        FBO_cls fbo(4, 4, nullptr);
        fbo.MakeFBO(true, false); // the first checkpoint of a build
        ASSERT_EQ(log.mVStrLines.size(), 1u);
        EXPECT_TRUE(log.mVStrLines[0].EndsWith(c.strExpected)) << log.mVStrLines[0].ToStdString();
        // The error is consumed: the build went on and the buffer works.
        EXPECT_EQ(fbo.GetWidth(), 4);
    }
    LogCapture_cls log;
    GLCheckError_cls::CheckGLError("PAINT END");
    EXPECT_TRUE(log.mVStrLines.empty());
}

TEST_F(FBOTest, LineWidthFactorFollowsTheBufferWidth) {
    const std::pair<int, double> table[] = {{256, 0.125}, {512, 0.25}, {1024, 0.5}, {2048, 1.0},
                                            {4096, 2.0},  {8192, 1.0}, {16, 1.0}};
    for (const auto& [size, factor] : table) {
        SCOPED_TRACE(size);
        FBO_cls fbo(size, size, nullptr);
        fbo.SetColorDepth(8);
        fbo.MakeFBO(false, false);
        EXPECT_DOUBLE_EQ(fbo.GetLineWidthFactor(), factor);
    }
}

TEST_F(FBOTest, DrawOnScreen2DFitCutsTheSquareToTheWindow) {
    // Source: bottom half red, top half blue.
    FBO_cls source(16, 16, nullptr);
    source.MakeFBO(true, false);
    source.Begin(true, false);
    FillRect(16, 0, 0, 16, 8, 1, 0, 0, 1);
    FillRect(16, 0, 8, 16, 16, 0, 0, 1, 1);
    source.End();
    // Another source split left/right for the tall window.
    FBO_cls sourceLR(16, 16, nullptr);
    sourceLR.MakeFBO(true, false);
    sourceLR.Begin(true, false);
    FillRect(16, 0, 0, 8, 16, 1, 0, 0, 1);
    FillRect(16, 8, 0, 16, 16, 0, 1, 0, 1);
    sourceLR.End();

    FBO_cls target(32, 32, nullptr);
    target.MakeFBO(true, false);
    auto drawFit = [&](const FBO_cls& from, int width, int height, int fit, int yOffset) {
        target.Begin(true, false);
        from.DrawOnScreen2DFit(width, height, fit, false, yOffset);
        target.End();
        ReadTexture(target.GetTexture(), 32, 32);
    };

    // Wide window 32 by 16, fit 0: the square is 32 wide and stands from y = -8 to 24, so the
    // window shows the middle half of the picture: rows 0 to 7 red, 8 to 15 blue.
    drawFit(source, 32, 16, 0, 0);
    SaveFrame("FitWide.png");
    EXPECT_TRUE(PixelNear(At(16, 2), 1, 0, 0, 1));
    EXPECT_TRUE(PixelNear(At(16, 13), 0, 0, 1, 1));
    EXPECT_TRUE(PixelNear(At(16, 20), 0, 0, 0, 0)) << "outside the window nothing is drawn";

    // The picture moves down by the y offset (GL counts y upwards): with -4 it moves up and
    // rows 0 to 11 are red.
    drawFit(source, 32, 16, 0, -4);
    EXPECT_TRUE(PixelNear(At(16, 10), 1, 0, 0, 1));
    EXPECT_TRUE(PixelNear(At(16, 13), 0, 0, 1, 1));

    // Tall window 16 by 32, fit 1: cut left and right, columns 0 to 7 red, 8 to 15 green.
    drawFit(sourceLR, 16, 32, 1, 0);
    SaveFrame("FitTall.png");
    EXPECT_TRUE(PixelNear(At(2, 16), 1, 0, 0, 1));
    EXPECT_TRUE(PixelNear(At(13, 16), 0, 1, 0, 1));
    EXPECT_TRUE(PixelNear(At(20, 16), 0, 0, 0, 0));

    // Any other fit stretches: the whole picture in 32 by 16, red below row 8, blue above.
    drawFit(source, 32, 16, 2, 0);
    EXPECT_TRUE(PixelNear(At(16, 5), 1, 0, 0, 1));
    EXPECT_TRUE(PixelNear(At(16, 10), 0, 0, 1, 1));
}

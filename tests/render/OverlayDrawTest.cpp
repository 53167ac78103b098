// The 2D overlays of a view drawn into a small buffer: the navigator's axes follow the pose,
// the button stands in the top right corner and knows its clicks, the message lines read as
// the view shows them.
#include "FBO_cls.h"
#include "GLButton_cls.h"
#include "GLPerspective_cls.h"
#include "GLStrings2D_cls.h"
#include "Navigator_cls.h"
#include "RenderFixture.h"

#include <epoxy/gl.h>

namespace {

bool IsRedish(const Pixel_cls& p) {
    return p.r > 0.8f && p.g < 0.4f && p.b < 0.4f;
}
bool IsGreenish(const Pixel_cls& p) {
    return p.g > 0.8f && p.r < 0.4f && p.b < 0.4f;
}
bool IsBlueish(const Pixel_cls& p) {
    return p.b > 0.8f && p.r < 0.5f && p.g < 0.6f;
}

} // namespace

class OverlayDrawTest : public RenderFixture {
protected:
    // Clears a 64 by 64 buffer to black and runs the drawing in 2D matrices over it.
    template <class Func_T> void Draw2D(Func_T func) {
        FBO_cls fbo(64, 64, nullptr);
        fbo.SetColorDepth(8);
        fbo.MakeFBO(true, false);
        fbo.Begin(true, false);
        GLPerspective_cls::Push2DMatrix(64, 64);
        func();
        GLPerspective_cls::Pop2DMatrix();
        fbo.End();
        ReadTexture(fbo.GetTexture(), 64, 64);
    }
};

TEST_F(OverlayDrawTest, NavigatorAxesFollowThePose) {
    struct Case_cls {
        const char* strWhat;
        double tgt[3], top[3];
        // Pixels 20 to the right of, above and below the centre: red x, green y, blue z or nothing.
        char right, up, down;
    };
    const Case_cls cases[] = {
        {"from the front: x right, y up", {0, 0, -1}, {0, 1, 0}, 'r', 'g', '-'},
        {"from above, north up: x right, z down", {0, -1, 0}, {0, 0, -1}, 'r', '-', 'b'},
        {"from the right side: z left, y up", {-1, 0, 0}, {0, 1, 0}, '-', 'g', '-'},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strWhat);
        Direction_cls direction;
        for (int i = 0; i < 3; ++i) {
            direction.mTgt[i] = c.tgt[i];
            direction.mTop[i] = c.top[i];
        }
        direction.Normalize();
        Navigator_cls navigator;
        navigator.SetPose(direction);
        Draw2D([&] { navigator.Draw(0, 0, 64); });
        auto check = [&](char kind, const Pixel_cls& p) {
            switch (kind) {
            case 'r':
                return IsRedish(p);
            case 'g':
                return IsGreenish(p);
            case 'b':
                return IsBlueish(p);
            default:
                return p.r + p.g + p.b < 0.05f;
            }
        };
        EXPECT_TRUE(check(c.right, At(52, 32))) << "right";
        EXPECT_TRUE(check(c.up, At(32, 52))) << "up";
        EXPECT_TRUE(check(c.down, At(32, 12))) << "down";
    }
}

TEST_F(OverlayDrawTest, ButtonStandsInTheTopRightCornerAndTakesItsClicks) {
    GLButton_cls button;
    button.SetGeometry(64, 64);
    Draw2D([&] { button.DrawButton(); });
    // Its square covers x 40 to 59 and y 40 to 59 (GL rows from the bottom); outside stays black.
    EXPECT_GT(At(50, 50).r + At(50, 50).g, 0.05f);
    EXPECT_LT(At(30, 50).r + At(30, 50).g + At(30, 50).b, 0.01f);
    EXPECT_LT(At(50, 30).r + At(50, 30).g + At(50, 30).b, 0.01f);
    struct Case_cls {
        int x, y; // window pixel, rows from the top
        bool bInside;
    };
    for (const Case_cls& c :
         {Case_cls{50, 10, true}, Case_cls{40, 4, true}, Case_cls{59, 23, true}, Case_cls{39, 10, false},
          Case_cls{50, 24, false}, Case_cls{60, 10, false}, Case_cls{50, 50, false}}) {
        SCOPED_TRACE(testing::Message() << c.x << ", " << c.y);
        EXPECT_EQ(button.IsInside(c.x, c.y, 64), c.bInside);
    }
}

TEST(GLStrings2DTest, MessageLinesReadAsTheViewShowsThem) {
    EXPECT_EQ(GLStrings2D_cls::GetStrFPS(59.9449), "59.94 fps");
    EXPECT_EQ(GLStrings2D_cls::GetStrFPS(1000.0), "1000.00 fps");
    EXPECT_EQ(GLStrings2D_cls::GetStrDragAngle(89.96), "90.0 deg");
    GLStrings2D_cls strings;
    strings.AddLine("a");
    strings.AddLine("b");
    EXPECT_EQ(strings.GetVStrLines().size(), 2u);
    strings.Clear();
    EXPECT_TRUE(strings.GetVStrLines().empty());
}

#include "FBO_cls.h"
#include "MeshDraw_cls.h"
#include "MeshObj_cls.h"
#include "RenderFixture.h"
#include "TestSupport.h"
#include "TextureProvider_cls.h"

#include <epoxy/gl.h>

#include <cmath>
#include <memory>
#include <random>

namespace {

wxString ObjPath(const char* pName) {
    return wxString(ORV_TEST_DATA_DIR) + "/obj/" + pName;
}

// Turns about x by 90 degrees: +y goes to +z, towards the viewer.
const double kTurnX90[16] = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};
const double kShiftRight[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.5, 0, 0, 1};

} // namespace

// Meshes drawn into a 16 x 16 buffer looking down -z at the square -1..1, no lights, so a
// surface shows its diffuse colour times its texture.
class MeshDrawTest : public RenderFixture {
protected:
    void SetUp() override {
        RenderFixture::SetUp();
        if (IsSkipped())
            return;
        mpCTextures = std::make_unique<TextureProvider_cls>();
        mpCDraw = std::make_unique<MeshDraw_cls>(mpCTextures.get());
        mpCFBO = std::make_unique<FBO_cls>(kSize, kSize, nullptr);
        mpCFBO->SetColorDepth(16);
        mpCFBO->MakeFBO(true, false);
    }
    void TearDown() override {
        mpCDraw.reset();
        mpCFBO.reset();
        mpCTextures.reset();
        RenderFixture::TearDown();
    }
    std::unique_ptr<MeshObj_cls> Mesh(const wxString& strPath) {
        auto pObj = std::make_unique<MeshObj_cls>(nullptr);
        pObj->mCFileName.SetBodyFromData(strPath);
        return pObj;
    }
    // Draws the objects with their matrices into a cleared buffer and reads it back.
    void Frame(std::initializer_list<std::pair<MeshObj_cls*, const double*>> objects) {
        mpCFBO->Begin(true, false);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-1, 1, -1, 1, -10, 10);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glDisable(GL_LIGHTING);
        glEnable(GL_DEPTH_TEST);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (const auto& item : objects)
            mpCDraw->Draw(*item.first, item.second, 0.0);
        mpCFBO->End();
        ReadTexture(mpCFBO->GetTexture(), kSize, kSize);
    }

    static constexpr int kSize = 16;
    std::unique_ptr<TextureProvider_cls> mpCTextures;
    std::unique_ptr<MeshDraw_cls> mpCDraw;
    std::unique_ptr<FBO_cls> mpCFBO;
};

TEST_F(MeshDrawTest, TheTexelsOfTheMaterialsPictureLieOnThePlane) {
    auto pPlane = Mesh(ObjPath("plane.obj"));
    LogCapture_cls log;
    Frame({{pPlane.get(), nullptr}});
    EXPECT_TRUE(log.mVStrLines.empty()) << log.mVStrLines.front();
    // The picture's top row is red, green; its bottom row blue, yellow. Linear filtering of the
    // 2 x 2 picture blends a sixteenth of the neighbouring texels each way into the pixels here.
    const struct {
        int x, y;
        float r, g, b;
    } cases[] = {{3, 12, 1, 0, 0}, {12, 12, 0, 1, 0}, {3, 3, 0, 0, 1}, {12, 3, 1, 1, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "pixel " << c.x << ", " << c.y);
        EXPECT_TRUE(PixelNear(At(c.x, c.y), c.r, c.g, c.b, 1.0f, 0.13f));
    }
    EXPECT_EQ(mpCTextures->GetNumTexture(), 1u);
    EXPECT_EQ(mpCTextures->GetReferenceCount(ObjPath("textures/quadrants.png")), 1);
}

TEST_F(MeshDrawTest, SilhouetteAndColourComeFromTheFileAndItsMaterials) {
    auto pCube = Mesh(ObjPath("cube.obj"));
    LogCapture_cls log;
    Frame({{pCube.get(), nullptr}});
    // The face towards the viewer is "Red" (Kd 0.8 0.1 0.1); the unit cube covers pixels 4..11.
    EXPECT_TRUE(PixelNear(At(7, 7), 0.8f, 0.1f, 0.1f, 1.0f));
    EXPECT_TRUE(PixelNear(At(4, 11), 0.8f, 0.1f, 0.1f, 1.0f));
    for (const auto& xy :
         {std::make_pair(3, 7), std::make_pair(12, 7), std::make_pair(7, 3), std::make_pair(7, 12)})
        EXPECT_TRUE(PixelNear(At(xy.first, xy.second), 0, 0, 0, 0)) << xy.first << ", " << xy.second;
    // Its "Blue" names a picture that is not there: one line naming it, and the white default.
    ASSERT_EQ(log.mVStrLines.size(), 1u);
    EXPECT_TRUE(log.Contains("Texture " + ObjPath("textures/blue.png") + ": the file does not exist"));

    // Turned so the "Blue" top faces the viewer, it shows through Tr 0.25 onto the red bottom.
    Frame({{pCube.get(), kTurnX90}});
    const float a = 0.75f;
    EXPECT_TRUE(PixelNear(At(7, 7), a * 0.1f + (1 - a) * 0.8f, a * 0.1f + (1 - a) * 0.1f,
                          a * 0.9f + (1 - a) * 0.1f, a * a + (1 - a) * 1.0f));
    // The matrix moves it: shifted right by a quarter of the view, it covers pixels 8..15.
    Frame({{pCube.get(), kShiftRight}});
    EXPECT_TRUE(PixelNear(At(7, 7), 0, 0, 0, 0));
    EXPECT_TRUE(PixelNear(At(8, 7), 0.8f, 0.1f, 0.1f, 1.0f));
    EXPECT_TRUE(PixelNear(At(15, 7), 0.8f, 0.1f, 0.1f, 1.0f));
    EXPECT_EQ(log.mVStrLines.size(), 1u) << "nothing is read again";
}

TEST_F(MeshDrawTest, AFileIsUploadedOnceForEveryObjectNamingIt) {
    auto pFirst = Mesh(ObjPath("cube.obj"));
    auto pSecond = Mesh(ObjPath("../obj/cube.obj"));
    auto pThird = Mesh(ObjPath("plane.obj"));
    Frame({{pFirst.get(), nullptr}, {pSecond.get(), kShiftRight}, {pThird.get(), kTurnX90}});
    EXPECT_EQ(mpCDraw->GetNumMesh(), 2u);
    EXPECT_FALSE(pSecond->IsLoaded()) << "the second object did not read the file";
    EXPECT_TRUE(PixelNear(At(12, 7), 0.8f, 0.1f, 0.1f, 1.0f));
    mpCDraw->Release(pFirst.get());
    EXPECT_EQ(mpCDraw->GetNumMesh(), 2u);
    mpCDraw->Release(pSecond.get());
    EXPECT_EQ(mpCDraw->GetNumMesh(), 1u);
    // Naming another file lets go of the old one and its textures.
    pThird->mCFileName.SetBodyFromData(ObjPath("cube.obj"));
    Frame({{pThird.get(), nullptr}});
    EXPECT_EQ(mpCDraw->GetNumMesh(), 1u);
    EXPECT_EQ(mpCTextures->GetReferenceCount(ObjPath("textures/quadrants.png")), 0);
    // An object that is not valid draws nothing.
    pThird->mCValid.SetBodyFromData(wxString("0"));
    Frame({{pThird.get(), nullptr}});
    EXPECT_TRUE(PixelNear(At(7, 7), 0, 0, 0, 0));
}

TEST_F(MeshDrawTest, ABadMeshFileLogsOneLineAndDrawsTheDefaultCube) {
    TempDir_cls dir;
    const std::string strCube = [] {
        FILE* fp = fopen(ObjPath("cube.obj").fn_str(), "rb");
        char buf[4096];
        const size_t n = fp ? fread(buf, 1, sizeof buf, fp) : 0;
        if (fp)
            fclose(fp);
        return std::string(buf, n);
    }();
    ASSERT_FALSE(strCube.empty());
    std::string strRandom(5000, '\0');
    std::mt19937 random(11);
    for (char& ch : strRandom)
        ch = static_cast<char>(random());
    const struct {
        const char* pName;
        std::string bytes;
        bool bWrite;
    } cases[] = {
        {"missing.obj", "", false},
        {"empty.obj", "", true},
        {"vertices-only.obj",
         strCube.substr(strCube.find("\nv "), strCube.find("usemtl") - strCube.find("\nv ")), true},
        {"random.obj", strRandom, true},
        {"binary.obj.gz", "\x1f\x8b\x08" + strRandom, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pName);
        const wxString strPath = dir.Path(c.pName);
        if (c.bWrite) {
            ASSERT_TRUE(WriteBytes(strPath, c.bytes));
        }
        auto pObj = Mesh(strPath);
        LogCapture_cls log;
        Frame({{pObj.get(), nullptr}});
        ASSERT_EQ(log.mVStrLines.size(), 1u) << log.mVStrLines.back();
        EXPECT_TRUE(log.Contains(strPath)) << log.mVStrLines[0];
        // The default cube in the object's own material (diffuse 0.8 grey).
        EXPECT_TRUE(PixelNear(At(7, 7), 0.8f, 0.8f, 0.8f, 1.0f));
        EXPECT_TRUE(PixelNear(At(2, 2), 0, 0, 0, 0));
        Frame({{pObj.get(), nullptr}});
        EXPECT_EQ(log.mVStrLines.size(), 1u) << "the frame goes on without reading the file again";
        mpCDraw->Release(pObj.get());
    }
}

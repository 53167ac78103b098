// Volume objects drawn into a small buffer with an orthographic camera that maps one unit to
// one pixel, the box scaled to 32 units (pixels 16 to 48): df3 voxels where the box puts them,
// steps mixed between frames, the clip box, the order against particles by depth, and the
// programs with the shader modifiers.
#include "MaterialParticle_cls.h"
#include "Material_cls.h"
#include "OrthoDrawFixture.h"
#include "ParticleDraw_cls.h"
#include "Particle_cls.h"
#include "SceneObjDraw_cls.h"
#include "ShaderCtrl_cls.h"
#include "TextureProvider1D_cls.h"
#include "TextureProvider_cls.h"
#include "VolumeBox_cls.h"
#include "VolumeDraw_cls.h"

#include <wx/filefn.h>

#include <functional>

namespace {

constexpr int kN = 16; // voxels per side

// A df3 file of kN cubed voxels, voxel(x, y, z) as given.
std::string Df3(const std::function<int(int, int, int)>& voxel) {
    std::string s;
    for (int k = 0; k < 3; ++k) {
        s.push_back(0);
        s.push_back(static_cast<char>(kN));
    }
    for (int z = 0; z < kN; ++z)
        for (int y = 0; y < kN; ++y)
            for (int x = 0; x < kN; ++x)
                s.push_back(static_cast<char>(voxel(x, y, z)));
    return s;
}

} // namespace

class VolumeDrawTest : public OrthoDrawFixture {
protected:
    void SetUp() override {
        OrthoDrawFixture::SetUp();
        if (IsSkipped())
            return;
        SetFrame(2, 0);
        GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(1LL);
        Obj("Box")->mCVisible.SetBodyFromDataBOOL(false);
        mpDraw = std::make_unique<VolumeDraw_cls>(GpCTextureProvider1D);
        mpParticleDraw = std::make_unique<ParticleDraw_cls>(GpCTextureProvider);
    }
    void TearDown() override {
        if (GpCTimeCtrl)
            GpCTimeCtrl->mPlayDirection = 0;
        mpDraw.reset();
        mpParticleDraw.reset();
        OrthoDrawFixture::TearDown();
    }

    // A volume object over the df3 files (one per step, named <name>NNN.df3), its box 32 units
    // wide, nearest voxels, its curve white with alpha from 0 at value 0 to maxAlpha at 255.
    VolumeBox_cls* AddVolume(const wxString& strName, const std::vector<std::string>& vStep,
                             double maxAlpha = 1.0, double blue = 1.0) {
        for (size_t i = 0; i < vStep.size(); ++i)
            EXPECT_TRUE(WriteBytes(mDir.Path(strName + wxString::Format("%03d.df3", int(i))), vStep[i]));
        auto* p = dynamic_cast<VolumeBox_cls*>(
            GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("VolumeBox", strName)));
        EXPECT_NE(p, nullptr);
        p->mCPath.SetBodyFromData(mDir.Path(strName + "000.df3"));
        p->GetPCParamGroup("", "Scale")->SetInitValue(32.0, 32.0, 32.0);
        p->GetPCMaterial()->mCTextureInterp.SetBodyFromData("0");
        SetCurve(p, {{0, 1, 1, blue, 0}, {1, 1, 1, blue, maxAlpha}}, 0.0, 1.0);
        return p;
    }
    GLDrawStatus_cls Status(double half = kSize / 2) {
        GLDrawStatus_cls status = Begin(true, half);
        status.mpCVolumeDraw = mpDraw.get();
        status.mpCParticleDraw = mpParticleDraw.get();
        status.mPosDirNow.mPos[2] = status.mPosDirNext.mPos[2] = 100.0;
        return status;
    }
    // The whole scene through the scene's own order, as a sub-pass draws it.
    void DrawScene(double half = kSize / 2) {
        GLDrawStatus_cls status = Status(half);
        SceneObjDraw_cls::GLDrawObjects(GpCSceneObjCtrl, status, status.mPosDirNow, status.mPosDirNext);
        End();
    }
    // One object alone, its matrix pushed as the scene does.
    void Draw(VolumeBox_cls* p) {
        GLDrawStatus_cls status = Status();
        glPushMatrix();
        glScaled(32.0, 32.0, 32.0);
        mpDraw->GLDraw(*p, status);
        glPopMatrix();
        End();
    }
    // Pixels of the box (16 .. 47) that hold anything, and those outside it.
    int CountDrawn(int x0 = 0, int x1 = kSize, int y0 = 0, int y1 = kSize) const {
        return OrthoDrawFixture::CountDrawn(x0, x1, y0, y1, 0.02f);
    }
    static bool IsEmpty(const Pixel_cls& p) { return OrthoDrawFixture::IsEmpty(p, 0.02f); }

    std::unique_ptr<VolumeDraw_cls> mpDraw;
    std::unique_ptr<ParticleDraw_cls> mpParticleDraw;
};

TEST_F(VolumeDrawTest, BrightBlockShowsWhereTheBoxPutsItInEachProgram) {
    // Voxels x 4..7, y 8..11, all z: in box space x -0.25 .. 0, y 0 .. 0.25: pixels 24..31, 32..39.
    VolumeBox_cls* p = AddVolume(
        "Block", {Df3([](int x, int y, int) { return x >= 4 && x < 8 && y >= 8 && y < 12 ? 255 : 0; })});
    for (int shader : {0, 1, 2, 3}) {
        for (bool bShadow : {false, true}) {
            if (shader < 2 && bShadow)
                continue;
            SCOPED_TRACE(shader * 10 + bShadow);
            p->mCShader.SetBodyFromData(wxString::Format("%d", shader));
            p->mCSelfShadow.SetBodyFromDataBOOL(bShadow);
            Draw(p);
            if (shader > 0) {
                ShaderItem_cls* pItem = VolumeDraw_cls::GetPCShaderItem(shader, bShadow);
                ASSERT_NE(pItem, nullptr);
                EXPECT_TRUE(pItem->IsValid()) << pItem->mStrName;
            }
            if (shader == 0) {
                // "Original": the luminance texture on the slices, with no colour curve.
                EXPECT_GT(At(27, 35).r, 0.5f);
                continue;
            }
            for (int y = 33; y < 39; ++y)
                for (int x = 25; x < 31; ++x)
                    ASSERT_GT(At(x, y).a, 0.9f) << x << "," << y;
            EXPECT_EQ(CountDrawn(0, kSize, 0, 32), 0) << "below the block";
            EXPECT_EQ(CountDrawn(0, 23), 0) << "left of the block";
            EXPECT_EQ(CountDrawn(33, kSize), 0) << "right of the block";
            EXPECT_EQ(CountDrawn(0, kSize, 41, kSize), 0) << "above the block";
        }
    }
    // One upload for all those draws: the bytes did not change.
    EXPECT_EQ(mpDraw->mUploadCount, 1);
}

TEST_F(VolumeDrawTest, HalfWayBetweenEmptyAndFullGivesHalfTheDensity) {
    // Curve alpha 0.5 at 255: a full box is half opaque over its depth, a half-full one a quarter.
    VolumeBox_cls* p =
        AddVolume("Mix", {Df3([](int, int, int) { return 0; }), Df3([](int, int, int) { return 255; })}, 0.5);
    VolumeBox_cls* pRef = AddVolume("Ref", {Df3([](int, int, int) { return 127; })}, 0.5);
    GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(2LL);
    GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(1LL);
    Draw(p);
    ASSERT_EQ(p->mpCCurrent->mFactor, 0.5f);
    EXPECT_EQ(p->mpCCurrent->mData[0], 127);
    const Pixel_cls mixed = At(32, 32);
    Draw(pRef);
    const Pixel_cls ref = At(32, 32);
    EXPECT_NEAR(mixed.a, ref.a, 0.01f);
    // The curve's alpha of 127 / 255 is a quarter: that opacity over the box's depth.
    EXPECT_NEAR(mixed.a, 0.5f * 127 / 255, 0.03f);
    GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(0LL);
    GpCTimeCtrl->mCFrameCurrent.SetBodyFromData(1LL);
    Draw(p);
    EXPECT_NEAR(At(32, 32).a, 0.5f, 0.03f) << "the full step alone";
}

TEST_F(VolumeDrawTest, TheClipBoxAndTrimmingLeaveTheirPartEmpty) {
    VolumeBox_cls* p = AddVolume("Clip", {Df3([](int, int, int) { return 255; })});
    Draw(p);
    EXPECT_EQ(CountDrawn(16, 48, 16, 48), 32 * 32) << "the whole box";
    EXPECT_EQ(CountDrawn(), 32 * 32) << "nothing outside it";
    // The right half of the box cut by the material, then the top quarter by a trimming.
    p->GetPCMaterial()->GetPCParamGroup("ClipMax")->SetInitValue(0.0, 0.5, 0.5);
    Draw(p);
    EXPECT_EQ(CountDrawn(16, 31, 16, 48), 15 * 32);
    EXPECT_EQ(CountDrawn(33, 48, 16, 48), 0);
    p->AddModifierCommand("Trimming_cls", "Trim");
    p->GetPCParamGroup("Trim", "Y Min/Max")->SetInitValue(-1.0, 0.25);
    Draw(p);
    EXPECT_EQ(CountDrawn(16, 31, 16, 39), 15 * 23);
    EXPECT_EQ(CountDrawn(16, 48, 41, 48), 0);
    EXPECT_GT(mpDraw->GetNumSlices(p), 10);
}

TEST_F(VolumeDrawTest, ParticlesInFrontShowAndThoseBehindAreHidden) {
    // An opaque blue volume and two white points: one in front of it, one behind it.
    AddVolume("Fog", {Df3([](int, int, int) { return 255; })}, 1.0, 1.0);
    auto* pColour = static_cast<VolumeBox_cls*>(GpCSceneObjCtrl->GetPCFromName("Fog"))->GetPCColorCurve();
    double keys[2][5] = {{0, 0, 0, 1, 0}, {1, 0, 0, 1, 1}};
    pColour->SetInitKeyframes(2, keys);
    const wxString strPath = mDir.Path("atoms0000.txt");
    ASSERT_TRUE(WriteBytes(strPath, "2\n0\n-10.5 -10.5 20 0 5\n10.5 10.5 -20 0 5\n"));
    auto* pAtoms = dynamic_cast<Particle_cls*>(
        GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("Particle", "Atoms")));
    ASSERT_NE(pAtoms, nullptr);
    pAtoms->mCFormat.mCDataType.SetBodyFromData("0");
    pAtoms->mCFormat.UpdateBodyCommand("XYZ::##::Type::##::Size");
    pAtoms->mCPath.SetBodyFromData(strPath);
    pAtoms->mCPointSizeFactor.SetBodyFromData("1");
    pAtoms->mCAlphaCrit.SetBodyFromData("0");
    pAtoms->GetPCMaterialParticle(0)->mCShaderTypePoint.SetBodyFromData("0");
    // The points alone first: their own colour, whatever the lights make of it.
    GpCSceneObjCtrl->GetPCFromName("Fog")->mCVisible.SetBodyFromDataBOOL(false);
    DrawScene();
    const Pixel_cls front = At(21, 21), behind = At(42, 42);
    ASSERT_FALSE(IsEmpty(behind));
    ASSERT_FALSE(IsEmpty(front));
    ASSERT_LT(front.b, 0.5f) << "not the volume's blue";
    GpCSceneObjCtrl->GetPCFromName("Fog")->mCVisible.SetBodyFromDataBOOL(true);
    DrawScene();
    EXPECT_TRUE(PixelNear(At(21, 21), front.r, front.g, front.b, front.a)) << "the point in front";
    EXPECT_TRUE(PixelNear(At(42, 42), 0.f, 0.f, 1.f, 1.f)) << "the point behind, under the volume";
    EXPECT_TRUE(PixelNear(At(32, 32), 0.f, 0.f, 1.f, 1.f));
}

TEST_F(VolumeDrawTest, ShaderModifiersRewriteTheProgramOnlyWhenTheyChange) {
    VolumeBox_cls* p = AddVolume("Masked", {Df3([](int, int, int) { return 255; })});
    p->AddModifierCommand("VolumeMask_cls", "Mask");
    Draw(p);
    ShaderItem_cls* pItem = VolumeDraw_cls::GetPCShaderItem(1, false);
    ASSERT_TRUE(pItem->IsValid());
    EXPECT_TRUE(pItem->mStrFragCompiled.Contains("#define VOLUME_MASK_TYPE 0"));
    // The inscribed sphere: its centre drawn, the box's corners empty.
    EXPECT_FALSE(IsEmpty(At(32, 32)));
    EXPECT_TRUE(IsEmpty(At(18, 18)));
    EXPECT_TRUE(IsEmpty(At(45, 45)));
    EXPECT_FALSE(VolumeDraw_cls::ProcShaderModifiers(*pItem, *p)) << "no change, no rebuild";
    // A custom coordinate goes into the text; the program is built again at its next use.
    p->AddModifierCommand("VolumeCoord_cls", "Coord");
    p->GetPCItemInAttrib("Coord", "CoordType=")->SetBodyFromData("3");
    p->GetPCItemInAttrib("Coord", "CustomCoord=")->SetBodyFromData("vec3(0.0, p.y, p.z)");
    EXPECT_TRUE(VolumeDraw_cls::ProcShaderModifiers(*pItem, *p));
    EXPECT_FALSE(pItem->IsTried());
    EXPECT_TRUE(pItem->mStrFragCompiled.Contains("#define VOLUME_COORD_CUSTOM(p) (vec3(0.0, p.y, p.z))"));
    p->SetModifierValidityCommand("Mask", false);
    p->SetModifierValidityCommand("Coord", false);
    Draw(p);
    EXPECT_TRUE(pItem->IsValid());
    EXPECT_EQ(pItem->mStrFragCompiled, pItem->mStrFrag) << "back to the program as read";
    EXPECT_FALSE(IsEmpty(At(18, 18)));
}

TEST_F(VolumeDrawTest, FilesOnDiskReachThePixels) {
    // The ball of tests/data (radius 3 of 8 voxels: 12 pixels here) through a volume object.
    auto* p = dynamic_cast<VolumeBox_cls*>(
        GpCSceneObjCtrl->GetPCFromName(GpCSceneObjCtrl->AppendSceneObjCommand("VolumeBox", "Ball")));
    ASSERT_NE(p, nullptr);
    p->mCPath.SetBodyFromData(wxString(ORV_TEST_DATA_DIR) + "/df3/ball.df3");
    p->mCUseSequence.SetBodyFromDataBOOL(false);
    Draw(p);
    EXPECT_EQ(p->mpCCurrent->mWidth, 8);
    EXPECT_FALSE(IsEmpty(At(32, 32)));
    EXPECT_FALSE(IsEmpty(At(32, 42)));
    for (int xy : {21, 43})
        EXPECT_TRUE(IsEmpty(At(xy, xy))) << "the box's corners lie outside the ball";
    p->mCVisible.SetBodyFromDataBOOL(false);

    // The bundled example: a lit cloud in a box 4 units wide, half way between its two steps.
    // Relative data paths resolve against the project's folder, as the window's open sets it.
    const wxString strOldDir = wxGetCwd();
    wxSetWorkingDirectory(wxString(ORV_SOURCE_DIR) + "/examples/volume");
    const bool bOpened = mpMain->OpenProjectMain("cloud.ovp", true);
    auto* pCloud = dynamic_cast<VolumeBox_cls*>(GpCSceneObjCtrl->GetPCFromName("Cloud"));
    GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(2LL);
    GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(1LL);
    if (bOpened && pCloud)
        DrawScene(4.0);
    wxSetWorkingDirectory(strOldDir);
    ASSERT_TRUE(bOpened);
    ASSERT_NE(pCloud, nullptr);
    EXPECT_EQ(pCloud->mpCCurrent->mFactor, 0.5f);
    EXPECT_GT(CountDrawn(16, 48, 16, 48), 100) << "the cloud fills the middle of its box";
    EXPECT_EQ(CountDrawn(0, 8) + CountDrawn(56, kSize), 0) << "nothing beside the box";
}

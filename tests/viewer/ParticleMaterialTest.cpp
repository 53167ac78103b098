// Materials and colour curves of a particle object: what a new object starts with, the commands
// that add materials and copy curves, their way through the project text, and what of them the
// preparation sees through the viewer's clone.
#include "ViewerFixture.h"

#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "CommandText.h"
#include "MaterialParticle_cls.h"
#include "Particle_cls.h"
#include "PrepareSetting_cls.h"
#include "ViewerClone_cls.h"

namespace {

const wxString kSelf = "SceneObjCtrl::";

ColorCurve_cls* Curve(SceneObj_cls* p, int index) {
    return static_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", index));
}

std::vector<double> Keys(ColorCurve_cls* p, int member) {
    std::vector<double> v;
    for (const KeyFrame_cls& key : p->mVCParam[static_cast<size_t>(member)].mVCKey) {
        v.push_back(key.mX);
        v.push_back(key.mValue);
    }
    return v;
}

} // namespace

class ParticleMaterialFixture : public ViewerFixture {
protected:
    void SetUp() override {
        ViewerFixture::SetUp();
        ASSERT_EQ(Ctrl()->AppendSceneObjCommand("Particle", "Stars"), "Stars");
        mpStars = dynamic_cast<Particle_cls*>(Obj("Stars"));
        ASSERT_NE(mpStars, nullptr);
    }

    // Runs lines as a project would: each through the command reader.
    void RunText(const wxString& strText) { RunCommandText(*mpMain, strText); }

    // Saves, clears the scene, opens the file again; the object pointer is renewed.
    void SaveAndReopen() {
        const wxString strProject = mDir.Path("materials.ovp");
        ASSERT_TRUE(mpMain->SaveProjectMain(strProject, 0));
        Ctrl()->Clear();
        ASSERT_EQ(Obj("Stars"), nullptr);
        ASSERT_TRUE(mpMain->OpenProjectMain(strProject, true));
        mpStars = dynamic_cast<Particle_cls*>(Obj("Stars"));
        ASSERT_NE(mpStars, nullptr);
    }

    Particle_cls* mpStars = nullptr;
};

TEST_F(ParticleMaterialFixture, NewObjectDrawsWithOneMaterialAndOneCurve) {
    ASSERT_EQ(mpStars->GetNumMaterial(), 1);
    ASSERT_EQ(mpStars->GetNumAttribute("ColorCurve_cls"), 1);
    MaterialParticle_cls* pMat = mpStars->GetPCMaterialParticle(0);
    ASSERT_NE(pMat, nullptr);
    EXPECT_EQ(pMat->GetStrName(), "Material");
    EXPECT_EQ(pMat->GetTag(), "SceneObj::Stars::Material");
    EXPECT_DOUBLE_EQ(pMat->GetAlpha(0.0), 1.0);

    // The curve is a copy of "Red Yellow", not the preset itself.
    ColorCurve_cls* pCurve = Curve(mpStars, 0);
    ColorCurve_cls* pPreset = GpCColorCurveProvider->GetPCColorCurve(0);
    ASSERT_NE(pCurve, nullptr);
    ASSERT_NE(pCurve, pPreset);
    EXPECT_EQ(pCurve->GetStrName(), "ColorCurve");
    for (int m = 0; m < 4; ++m)
        EXPECT_EQ(Keys(pCurve, m), Keys(pPreset, m)) << "member " << m;
    EXPECT_EQ(pCurve->GetColor(0.0, nullptr), (std::array<unsigned char, 4>{255, 0, 0, 255}));

    // The built-in ones come with the object: the project does not announce them.
    const wxString strText = SceneText();
    EXPECT_TRUE(strText.Contains("ReadAttribute::MaterialParticle_cls::Material::Begin")) << strText;
    EXPECT_TRUE(strText.Contains("ReadColorCurve::ColorCurve::Begin")) << strText;
    EXPECT_FALSE(strText.Contains("New::Material::")) << strText;
    EXPECT_FALSE(strText.Contains("New::ColorCurve::")) << strText;
}

TEST_F(ParticleMaterialFixture, AlphaLawsAndPanelItems) {
    MaterialParticle_cls* pMat = mpStars->GetPCMaterialParticle(0);
    ParamGroup_cls* pAlpha = pMat->GetPCParamGroup("Alpha Modifier");
    ASSERT_NE(pAlpha, nullptr);
    pAlpha->SetInitValue(0.8, 2.0, 0.5);
    {
        SCOPED_TRACE("No Modify: the factor alone");
        EXPECT_DOUBLE_EQ(pMat->GetAlpha(0.0), 0.8);
    }
    pMat->mCAlphaModifier.SetBodyFromData(1LL);
    {
        SCOPED_TRACE("Square Inverse: 1 / base^2 under the maximum");
        EXPECT_DOUBLE_EQ(pMat->GetAlpha(0.0), 0.8 * 0.25);
        pAlpha->SetInitValue(0.8, 1.0, 0.5);
        EXPECT_DOUBLE_EQ(pMat->GetAlpha(0.0), 0.8 * 0.5);
        pAlpha->SetInitValue(0.8, 0.0, 0.5);
        EXPECT_DOUBLE_EQ(pMat->GetAlpha(0.0), 0.8 * 0.5);
    }
    pMat->GetPCParamGroup("SizeFactor")->SetInitValue(2.0, 3.5);
    pMat->GetPCParamGroup("Diffuse")->SetInitValue(0.25);
    EXPECT_DOUBLE_EQ(pMat->GetSizeFactor(0.0, true), 3.5);
    pMat->SetMaterialInfo();
    EXPECT_EQ(pMat->mCSizeFactorPoint.GetBodySTR(), "2");
    EXPECT_EQ(pMat->mCSizeFactorSphere.GetBodySTR(), "3.5");
    EXPECT_EQ(pMat->mCDiffuse.GetBodySTR(), "0.25");
    EXPECT_EQ(pMat->mCAlphaFactor.GetBodySTR(), "0.8");
    EXPECT_EQ(pMat->mCAlphaModBase.GetBodySTR(), "0");
    EXPECT_EQ(pMat->mCAlphaModMax.GetBodySTR(), "0.5");
    // A second refresh with nothing changed does not stamp the material as edited.
    const wxString strStamp = pMat->GetStrProcCounter();
    pMat->SetMaterialInfo();
    EXPECT_EQ(pMat->GetStrProcCounter(), strStamp);
}

TEST_F(ParticleMaterialFixture, AddMaterialUndoRedoAndTheEleventhIsRefused) {
    const wxString strBefore = SceneText();
    mpStars->AddMaterialCommand();
    ASSERT_EQ(mpStars->GetNumMaterial(), 2);
    EXPECT_EQ(mpStars->GetPCMaterialParticle(1)->GetStrName(), "Material.001");
    EXPECT_EQ(mpStars->GetPCMaterialParticle(1)->GetTag(), "SceneObj::Stars::Material.001");
    const wxString strAfter = SceneText();
    GpCUndo->Undo();
    EXPECT_EQ(mpStars->GetNumMaterial(), 1);
    EXPECT_EQ(SceneText(), strBefore);
    GpCUndo->Redo();
    EXPECT_EQ(mpStars->GetNumMaterial(), 2);
    EXPECT_EQ(SceneText(), strAfter);

    for (int i = 2; i < 10; ++i)
        mpStars->AddMaterialCommand();
    ASSERT_EQ(mpStars->GetNumMaterial(), 10);
    const int undoCount = GpCUndo->GetCount();
    const int undoCurrent = GpCUndo->GetCurrent();
    LogCapture_cls log;
    mpStars->AddMaterialCommand();
    EXPECT_EQ(mpStars->GetNumMaterial(), 10);
    EXPECT_TRUE(log.Contains("at most 10 materials")) << (log.mVStrLines.empty() ? "" : log.mVStrLines[0]);
    // No empty step: the last undo still removes the tenth material.
    EXPECT_EQ(GpCUndo->GetCount(), undoCount);
    EXPECT_EQ(GpCUndo->GetCurrent(), undoCurrent);
    GpCUndo->Undo();
    EXPECT_EQ(mpStars->GetNumMaterial(), 9);
    // The same limit holds for lines in a project.
    RunText(kSelf + "Obj::Stars::New::Material::M10\n" + kSelf + "Obj::Stars::New::Material::M11\n");
    EXPECT_EQ(mpStars->GetNumMaterial(), 10);
    EXPECT_EQ(mpStars->GetPCAttribute("M11", 0), nullptr);
}

TEST_F(ParticleMaterialFixture, ProjectRoundTripOfTwoMaterialsAndTwoCurves) {
    mpStars->AddMaterialCommand();
    MaterialParticle_cls* pSecond = mpStars->GetPCMaterialParticle(1);
    ASSERT_NE(pSecond, nullptr);
    pSecond->mCBaseType.PushCommandPair("2");
    pSecond->mCCustomName.PushCommandPair("Big spheres");
    pSecond->mCColorCurveIndex.PushCommandPair("1");
    RunText(kSelf + "Obj::Stars::New::ColorCurve::Heat\n");
    ColorCurve_cls* pHeat = Curve(mpStars, 1);
    ASSERT_NE(pHeat, nullptr);
    EXPECT_EQ(pHeat->GetStrName(), "Heat");
    pHeat->CopyColorCurveCommand(GpCColorCurveProvider->GetPCColorCurve(2), "", true);
    // Edited keys through their command addresses: a key on a channel and on the range.
    pHeat->mVCParam[1].SetValueAtCommand(0.75, 0.5, kSelf + "Obj::Stars::Heat::Heat::G", -1, 1.0);
    pHeat->GetPCRange()->mVCParam[1].SetValueAtCommand(7.0, 0.0, kSelf + "Obj::Stars::Heat::Range::max", -1,
                                                       1.0);
    ASSERT_EQ(pHeat->mVCParam[1].GetKeyNum(), 3);
    ASSERT_DOUBLE_EQ(pHeat->GetRemapX(3.5, 0.0), 0.5);
    Curve(mpStars, 0)
        ->mVCParam[3]
        .SetValueAtCommand(0.5, 0.25, kSelf + "Obj::Stars::ColorCurve::ColorCurve::A", -1, 1.0);
    ASSERT_EQ(Curve(mpStars, 0)->mVCParam[3].GetKeyNum(), 3);

    const wxString strText = SceneText();
    EXPECT_TRUE(
        strText.Contains("New::Material::Material.001\nReadAttribute::MaterialParticle_cls::Material.001"))
        << strText;
    EXPECT_TRUE(strText.Contains("New::ColorCurve::Heat\nReadColorCurve::Heat::Begin")) << strText;

    SaveAndReopen();
    EXPECT_EQ(SceneText(), strText);
    ASSERT_EQ(mpStars->GetNumMaterial(), 2);
    ASSERT_EQ(mpStars->GetNumAttribute("ColorCurve_cls"), 2);
    ColorCurve_cls* pHeatRead = Curve(mpStars, 1);
    EXPECT_EQ(pHeatRead->mpCOwner, mpStars);
    EXPECT_DOUBLE_EQ(pHeatRead->GetRemapX(3.5, 0.0), 0.5);
    // "Black White" survives the trip: the end of the curve is still white.
    EXPECT_EQ(pHeatRead->GetColor(1.0, nullptr), (std::array<unsigned char, 4>{255, 255, 255, 255}));

    // A built-in material that the user deleted stays deleted after the trip.
    RunText(kSelf + "Obj::Stars::Delete::Material::Material\n");
    ASSERT_EQ(mpStars->GetNumMaterial(), 1);
    const wxString strDeleted = SceneText();
    EXPECT_TRUE(strDeleted.Contains("Delete::Material::Material\n")) << strDeleted;
    SaveAndReopen();
    EXPECT_EQ(SceneText(), strDeleted);
    ASSERT_EQ(mpStars->GetNumMaterial(), 1);
    EXPECT_EQ(mpStars->GetPCMaterialParticle(0)->GetStrName(), "Material.001");
}

TEST_F(ParticleMaterialFixture, CopyColorCurveIsOneUndoStep) {
    ColorCurve_cls* pCurve = Curve(mpStars, 0);
    ColorCurve_cls* pSpectrum = GpCColorCurveProvider->GetPCColorCurve(5);
    const wxString strBefore = SceneText();
    const std::vector<double> alphaBefore = Keys(pCurve, 3);
    const int undoBefore = GpCUndo->GetCurrent();
    {
        SCOPED_TRACE("without alpha: the A channel stays");
        pCurve->CopyColorCurveCommand(pSpectrum, "", false);
        EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore + 1);
        EXPECT_EQ(Keys(pCurve, 0), Keys(pSpectrum, 0));
        EXPECT_EQ(Keys(pCurve, 2), Keys(pSpectrum, 2));
        EXPECT_EQ(Keys(pCurve, 3), alphaBefore);
        GpCUndo->Undo();
        EXPECT_EQ(SceneText(), strBefore);
    }
    {
        SCOPED_TRACE("with alpha, undo, redo");
        pCurve->CopyColorCurveCommand(pSpectrum, kSelf + "Obj::Stars", true);
        const wxString strAfter = SceneText();
        EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore + 1);
        EXPECT_EQ(pCurve->mVCParam[0].GetKeyNum(), 7);
        EXPECT_EQ(Keys(pCurve, 3), Keys(pSpectrum, 3));
        GpCUndo->Undo();
        EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore);
        EXPECT_EQ(SceneText(), strBefore);
        EXPECT_EQ(pCurve->mVCParam[0].GetKeyNum(), 2);
        GpCUndo->Redo();
        EXPECT_EQ(SceneText(), strAfter);
        GpCUndo->Undo();
    }
    {
        SCOPED_TRACE("paste of a clipboard text of another curve");
        wxString strClip;
        GpCColorCurveProvider->GetPCColorCurve(2)->Serialize(strClip);
        ASSERT_TRUE(pCurve->Paste(strClip, ""));
        EXPECT_EQ(pCurve->GetStrName(), "ColorCurve");
        EXPECT_EQ(pCurve->GetColor(1.0, nullptr), (std::array<unsigned char, 4>{255, 255, 255, 255}));
        EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore + 1);
        GpCUndo->Undo();
        EXPECT_EQ(SceneText(), strBefore);
        wxString strJunk = "not a curve";
        LogCapture_cls log;
        EXPECT_FALSE(pCurve->Paste(strJunk, ""));
        EXPECT_TRUE(log.Contains("no colour curve"));
        EXPECT_EQ(GpCUndo->GetCurrent(), undoBefore);
    }
}

TEST_F(ParticleMaterialFixture, MalformedCurveBlocksAreLoggedAndReadingGoesOn) {
    RunText(kSelf + "Obj::Stars::New::ColorCurve::Heat\n");
    ASSERT_EQ(mpStars->GetNumAttribute("ColorCurve_cls"), 2);
    const wxString strBefore = SceneText();
    {
        SCOPED_TRACE("a block for a curve the object does not have");
        LogCapture_cls log;
        RunText(
            kSelf + "ReadProperties::Stars\n" + "ReadColorCurve::Nope::Begin\n" +
            "ReadParamGroup::Nope\nName=R\nkeyNum=1\n" + "ReadParamGroup::End\n" + "ReadColorCurve::End\n" +
            "ConfItemList::Begin::SceneObj::Stars\nVisible=0\nConfItemList::End\n" + "ReadProperties::End\n");
        int count = 0;
        for (const wxString& str : log.mVStrLines)
            count += str.Contains("strName.IsSameAs(mCstrName.GetBodySTR())") ? 1 : 0;
        EXPECT_EQ(count, 1);
        EXPECT_FALSE(mpStars->mCVisible.GetBodyBOOL()); // the line after the block was read
        mpStars->mCVisible.SetBodyFromData("1");
    }
    {
        SCOPED_TRACE("a block without its end line");
        LogCapture_cls log;
        RunText(kSelf + "ReadProperties::Stars\n" + "ReadColorCurve::Heat::Begin\n" +
                "ReadProperties::End\n" + kSelf + "New::Particle_cls::ANY::After\n");
        EXPECT_TRUE(log.Contains("PopStrItemFromStrLine(strLine, wxT(\"::\")).IsSameAs(wxT(\"End\"))"));
        EXPECT_NE(Obj("After"), nullptr);
    }
    {
        SCOPED_TRACE("the text ends inside the block");
        LogCapture_cls log;
        RunText(kSelf + "Obj::Stars::ReadColorCurve::Heat::Begin\nReadParamGroup::Heat\nName=R\n");
        EXPECT_FALSE(log.mVStrLines.empty());
    }
    EXPECT_EQ(Curve(mpStars, 1)->GetStrName(), "Heat");
    EXPECT_EQ(Curve(mpStars, 0)->GetColor(1.0, nullptr), (std::array<unsigned char, 4>{255, 255, 0, 255}));
}

TEST_F(ParticleMaterialFixture, ClonedMaterialsAndCurvesReachThePreparation) {
    mpStars->AddMaterialCommand();
    RunText(kSelf + "Obj::Stars::New::ColorCurve::Heat\n");
    MaterialParticle_cls* pSecond = mpStars->GetPCMaterialParticle(1);
    pSecond->mCBaseType.PushCommandPair("2");
    pSecond->mCColorCurveIndex.PushCommandPair("1");
    pSecond->mCAlphaModifier.PushCommandPair("1");
    pSecond->GetPCParamGroup("SizeFactor")->SetInitValue(0.5, 3.5);
    pSecond->GetPCParamGroup("Alpha Modifier")->SetInitValue(0.8, 2.0, 1.0);
    Curve(mpStars, 1)->GetPCRange()->SetInitValue(-2.0, 6.0);

    ViewerClone_cls clone;
    mpStars->Clone(clone, 0.0);
    // Edits after the clone do not reach it.
    pSecond->mCBaseType.PushCommandPair("1");

    PrepareSetting_cls setting;
    setting.ReadFromClone(&clone, nullptr, 0.0);
    EXPECT_EQ(setting.mMaterialCount, 2);
    EXPECT_EQ(setting.mCurveCount, 2);
    EXPECT_EQ(setting.mBaseType[0], 0);
    EXPECT_EQ(setting.mBaseType[1], 2);
    EXPECT_DOUBLE_EQ(setting.mSizeFactor[0], 1.0);
    EXPECT_DOUBLE_EQ(setting.mSizeFactor[1], 3.5); // the sphere component for a sphere material
    EXPECT_DOUBLE_EQ(setting.mAlpha[1], 0.8 * 0.25);
    EXPECT_DOUBLE_EQ(setting.mAlpha[1], pSecond->GetAlpha(0.0));
    EXPECT_EQ(setting.mColorCurveIndex[1], 1);
    EXPECT_DOUBLE_EQ(setting.mRange0[1], -2.0);
    EXPECT_DOUBLE_EQ(setting.mRange1[1], 6.0);
    EXPECT_DOUBLE_EQ(setting.mRange1[0], 1.0);
}

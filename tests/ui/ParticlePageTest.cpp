// The property page of a particle object in a window with the services up to the modifiers: it
// follows the selection, its controls edit the object, its format, its materials and its stacks
// through commands (each edit undoes and redoes), the LAMMPS preset with a picked dump of
// examples/lammps reads the atoms, and the curve choice shows the curve's colours.
#include "PropertyPageFixture.h"

#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "MaterialParticle_cls.h"
#include "ModifierStack_cls.h"
#include "ParticleFormatPreset_cls.h"
#include "Particle_cls.h"
#include "PropertyParticle_cls.h"
#include "ReadEventSink_cls.h"
#include "SceneObjCtrl_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/bmpcbox.h>
#include <wx/checklst.h>
#include <wx/notebook.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>

#include <functional>

namespace {

const wxString gStrExamples = wxString(ORV_SOURCE_DIR) + "/examples";

class ParticlePageTest : public PropertyPageFixture {
protected:
    void SetUp() override {
        PropertyPageFixture::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        mStrName = GpCSceneObjCtrl->AppendSceneObjCommand("Particle", wxString());
        ASSERT_FALSE(mStrName.empty());
        Select(mStrName);
        mpPage = dynamic_cast<PropertyParticle_cls*>(mpProperty->mpCPageKind);
        ASSERT_NE(mpPage, nullptr);
        GpCUndo->Clear();
    }

    Particle_cls* Obj() { return Particle_cls::GetPCParticle(GpCSceneObjCtrl->GetPCFromName(mStrName)); }
    // Everything the page edits, as the project would write it.
    wxString State() {
        Particle_cls* p = Obj();
        wxString str = p->SerializeAll() + p->mCFormat.SerializeAll();
        for (int m = 0; m < p->GetNumMaterial(); ++m)
            str += p->GetPCMaterialParticle(m)->GetStrName() + p->GetPCMaterialParticle(m)->SerializeAll();
        for (int stack = 0; stack < 2; ++stack)
            for (Attribute_cls* pAttr : mpPage->mpCStack->GetVPCEntries(stack))
                str += pAttr->GetStrName() + pAttr->SerializeAll();
        return str;
    }
    void Undo() {
        GpCUndo->Undo();
        Sync();
    }
    void Redo() {
        GpCUndo->Redo();
        Sync();
    }

    PropertyParticle_cls* mpPage = nullptr;
    wxString mStrName;
};

TEST_F(ParticlePageTest, PageFollowsTheActiveObjectsKind) {
    ASSERT_NE(mpProperty->mpCPageKind, nullptr);
    const int index = mpProperty->mpCBook->FindPage(mpProperty->mpCPageKind);
    ASSERT_GE(index, 0);
    EXPECT_EQ(mpProperty->mpCBook->GetPageText(static_cast<size_t>(index)), "Particle");
    const int pages = static_cast<int>(mpProperty->mpCBook->GetPageCount());
    Select("Box");
    ASSERT_NE(mpProperty->mpCPageKind, nullptr);
    EXPECT_EQ(mpProperty->mpCPageKind->mStrClassWord, "Primitive_cls") << "the particle page gives way";
    EXPECT_EQ(static_cast<int>(mpProperty->mpCBook->GetPageCount()), pages);
    Select(mStrName);
    ASSERT_NE(mpProperty->mpCPageKind, nullptr);
    EXPECT_EQ(mpProperty->mpCPageKind->mStrClassWord, "Particle_cls");
    EXPECT_EQ(static_cast<int>(mpProperty->mpCBook->GetPageCount()), pages);
}

TEST_F(ParticlePageTest, EachEditUndoesAndRedoes) {
    using P = PropertyParticle_cls;
    ExpectEditsUndoAndRedo(
        {
            {"interpolation type", [&] { SendChoice(Ctrl<wxChoice>(P::TARGET_OBJECT, "InterpType="), 2); },
             [&] { return Obj()->mCInterpType.GetBodyINT() == 2; }},
            {"match by ID", [&] { SendChoice(Ctrl<wxChoice>(P::TARGET_OBJECT, "InterpolateBy="), 1); },
             [&] { return Obj()->IsInterpolateByID(); }},
            {"point size by arithmetic",
             [&] { SendTextEnter(Ctrl<wxTextCtrl>(P::TARGET_OBJECT, "PointSizeFactor="), "2*3"); },
             [&] { return Obj()->mCPointSizeFactor.GetBodyDOUBLE() == 6.0; }},
            {"depth mask off", [&] { SendCheck(Ctrl<wxCheckBox>(P::TARGET_OBJECT, "DepthMask="), false); },
             [&] { return !Obj()->mCDepthMask.GetBodyBOOL(); }},
            {"sequence off", [&] { SendCheck(Ctrl<wxCheckBox>(P::TARGET_OBJECT, "UseSequence="), false); },
             [&] { return !Obj()->mCUseSequence.GetBodyBOOL(); }},
            {"offset", [&] { SendTextEnter(Ctrl<wxTextCtrl>(P::TARGET_OBJECT, "SeqOffset="), "5"); },
             [&] { return Obj()->mCSeqOffset.GetBodyINT() == 5; }},
            {"look-up script",
             [&] { SendTextEnter(Ctrl<wxTextCtrl>(P::TARGET_OBJECT, "Script="), "return index * 2"); },
             [&] { return Obj()->GetStrScript() == "return index * 2"; }},
            {"sort type", [&] { SendChoice(Ctrl<wxChoice>(P::TARGET_OBJECT, "SortType="), 3); },
             [&] { return Obj()->mCSortType.GetBodyINT() == 3; }},
            {"data type text", [&] { SendChoice(Ctrl<wxChoice>(P::TARGET_FORMAT, "DataType="), 0); },
             [&] {
                 return Obj()->mCFormat.GetDataType() == 0 && mpPage->mVPCBodyRow.size() == 3 &&
                        mpPage->mVPCBodyRow[0]->GetString(0) == "XYZ";
             }},
            {"sort by ID", [&] { SendCheck(Ctrl<wxCheckBox>(P::TARGET_FORMAT, "PreSortByID="), true); },
             [&] { return Obj()->mCFormat.IsPreSortByID(); }},
            {"header row becomes Time", [&] { SendChoice(mpPage->mVPCHeaderRow.at(0), PH_TIME); },
             [&] {
                 return Obj()->mCFormat.mAStrHeader[0] == "Time" &&
                        mpPage->mVPCHeaderRow[0]->GetSelection() == 1;
             }},
            {"body row added", [&] { mpPage->AddBodyRow(); },
             [&] {
                 return Obj()->mCFormat.mAStrBodyAscii.GetCount() == 4 && mpPage->mVPCBodyRow.size() == 4;
             }},
            {"header row deleted", [&] { mpPage->DeleteHeaderRow(1); },
             [&] {
                 return Obj()->mCFormat.mAStrHeader.GetCount() == 1 && mpPage->mVPCHeaderRow.size() == 1;
             }},
            {"XYZ preset",
             [&] {
                 SendChoice(mpPage->mpCPreset, ParticleFormatPreset_cls::PRESET_XYZ);
                 mpPage->ApplyPreset(mpPage->mpCPreset->GetSelection());
             },
             [&] { return Obj()->mCFormat.mAStrBodyAscii[0] == "Type" && mpPage->mVPCBodyRow.size() == 2; }},
            {"picked file", [&] { mpPage->SetPathFromPicked("/data/run/dump.melt.0050.txt"); },
             [&] { return mpPage->mpCPath->GetValue() == "/data/run/dump.melt.%04d.txt"; }},
            {"material base type", [&] { SendChoice(Ctrl<wxChoice>(P::TARGET_MATERIAL, "BaseType="), 2); },
             [&] { return Obj()->GetPCMaterialParticle(0)->mCBaseType.GetBodyINT() == 2; }},
            {"material name",
             [&] { SendTextEnter(Ctrl<wxTextCtrl>(P::TARGET_MATERIAL, "CustomName="), "Oxygen"); },
             [&] { return Obj()->GetPCMaterialParticle(0)->mCCustomName.GetBodySTR() == "Oxygen"; }},
            {"material added", [&] { mpPage->AddMaterial(); },
             [&] { return Obj()->GetNumMaterial() == 2 && mpPage->mpCMaterial->GetCount() == 2; }},
            {"info column", [&] { SendChoice(Ctrl<wxChoice>(P::TARGET_OBJECT, "InfoIndex="), 3); },
             [&] { return Obj()->mCInfoIndex.GetBodyINT() == 3; }},
        },
        [&] { return State(); });
    SCOPED_TRACE("a number field keeps its value on a text that is no number");
    const wxString strBefore = State();
    SendTextEnter(Ctrl<wxTextCtrl>(P::TARGET_OBJECT, "DistanceBase="), "ten");
    EXPECT_EQ(State(), strBefore);
    EXPECT_EQ(Ctrl<wxTextCtrl>(P::TARGET_OBJECT, "DistanceBase=")->GetValue(), "10");
    SCOPED_TRACE("the last body item stays");
    while (Obj()->mCFormat.GetAStrBody(Obj()->mCFormat.GetDataType()).GetCount() > 1)
        ASSERT_TRUE(mpPage->DeleteBodyRow(0));
    EXPECT_FALSE(mpPage->DeleteBodyRow(0));
}

TEST_F(ParticlePageTest, LammpsPresetAndAPickedDumpReadTheAtoms) {
    mpPage->ApplyPreset(ParticleFormatPreset_cls::PRESET_LAMMPS_CUSTOM);
    ASSERT_TRUE(mpPage->SetPathFromPicked(gStrExamples + "/lammps/dump.melt.0050.txt"));
    Sync();
    EXPECT_EQ(Obj()->GetStrPath(), gStrExamples + "/lammps/dump.melt.%04d.txt");
    EXPECT_EQ(mpPage->mpCSteps->GetLabel(), "Steps: 11");
    ASSERT_TRUE(mpPage->ReadCurrentStep());
    ParticleSnap_cls* pSnap = Obj()->mCSequence.GetPCSnap(0);
    ASSERT_NE(pSnap, nullptr);
    EXPECT_EQ(pSnap->mNumber.load(), 256);
    EXPECT_TRUE(pSnap->AreIDsAscending());
    EXPECT_EQ(pSnap->mID[255], 256);
    Sync();
    EXPECT_TRUE(mpPage->mpCInfo->GetValue().Contains("Particles: 256")) << mpPage->mpCInfo->GetValue();
    EXPECT_TRUE(mpPage->mpCInfo->GetValue().Contains("Steps: 11"));

    SCOPED_TRACE("a change of the format reads the step again");
    SendChoice(mpPage->mVPCBodyRow.at(0), PA_DUMMY); // the ID column skipped: the IDs are gone
    ASSERT_TRUE(mpPage->ReadCurrentStep());
    pSnap = Obj()->mCSequence.GetPCSnap(0);
    ASSERT_NE(pSnap, nullptr);
    EXPECT_EQ(pSnap->mNumber.load(), 256);
    EXPECT_EQ(pSnap->mID, nullptr);
}

TEST_F(ParticlePageTest, XyzExampleShowsItsElementsInTheInformation) {
    mpPage->ApplyPreset(ParticleFormatPreset_cls::PRESET_XYZ);
    ASSERT_TRUE(mpPage->SetPathFromPicked(gStrExamples + "/xyz/molecules.xyz"));
    EXPECT_EQ(Obj()->GetStrPath(), gStrExamples + "/xyz/molecules.xyz") << "no digits: one file";
    SendChoice(Ctrl<wxChoice>(PropertyParticle_cls::TARGET_OBJECT, "InfoIndex="), 3);
    ASSERT_TRUE(mpPage->ReadCurrentStep());
    const wxString strInfo = mpPage->GetStrInfo();
    EXPECT_TRUE(strInfo.Contains("Type: min 1  max 17")) << strInfo;
    EXPECT_EQ(PropertyParticle_cls::GetStrColumnInfo(nullptr, 0), "no data");
    EXPECT_EQ(PropertyParticle_cls::GetStrColumnInfo(Obj()->mCSequence.GetPCSnap(0), 4), "no data")
        << "the XYZ preset reads no size";
}

TEST_F(ParticlePageTest, BundledXyzExampleOpensWithItsFormatOnThePage) {
    ASSERT_TRUE(mpMain->OpenProject(gStrExamples + "/xyz/molecules.ovp"));
    mStrName = "Molecules";
    Select(mStrName);
    mpPage = dynamic_cast<PropertyParticle_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(mpPage, nullptr);
    ASSERT_EQ(mpPage->mVPCBodyRow.size(), 2u);
    EXPECT_EQ(mpPage->mVPCBodyRow[0]->GetStringSelection(), "Type");
    EXPECT_EQ(mpPage->mVPCHeaderRow.at(1)->GetStringSelection(), "Dummy");
    EXPECT_EQ(mpPage->mpCSteps->GetLabel(), "Steps: 1");
    ASSERT_TRUE(mpPage->ReadCurrentStep());
    ParticleSnap_cls* pSnap = Obj()->mCSequence.GetPCSnap(0);
    ASSERT_NE(pSnap, nullptr);
    ASSERT_EQ(pSnap->mNumber.load(), 13);
    EXPECT_EQ(pSnap->mType[0], 8) << "oxygen";
    EXPECT_EQ(pSnap->mType[12], 17) << "chlorine";
}

TEST_F(ParticlePageTest, ModifierStackAddReorderSwitchRemoveRoundTrip) {
    const int stack = ModifierStack_cls::STACK_MODIFIER;
    wxChoice* pKind = mpPage->mpCStack->mpCKind[stack];
    ASSERT_NE(pKind->FindString("ParticleFiltering_cls"), wxNOT_FOUND);
    EXPECT_EQ(pKind->FindString("VolumeMask_cls"), wxNOT_FOUND) << "a volume kind does not fit";
    EXPECT_NE(
        mpPage->mpCStack->mpCKind[ModifierStack_cls::STACK_DATA_PROC]->FindString("ParticleDownsizing_cls"),
        wxNOT_FOUND);
    auto names = [&] {
        wxString str;
        for (Attribute_cls* p : mpPage->mpCStack->GetVPCEntries(stack))
            str += p->GetStrName() + (p->GetPCItem("Validity=")->GetBodyBOOL() ? " " : "(off) ");
        return str;
    };
    auto shown = [&] {
        wxString str;
        for (unsigned i = 0; i < mpPage->mpCStack->mpCList[stack]->GetCount(); ++i)
            str += mpPage->mpCStack->mpCList[stack]->GetString(i).BeforeFirst(' ') +
                   (mpPage->mpCStack->mpCList[stack]->IsChecked(i) ? " " : "(off) ");
        return str;
    };
    const struct {
        const char* what;
        std::function<bool()> edit;
        const char* after;
    } steps[] = {
        {"add filtering", [&] { return mpPage->mpCStack->AddEntry(stack, "ParticleFiltering_cls"); },
         "ParticleFiltering "},
        {"add tweak", [&] { return mpPage->mpCStack->AddEntry(stack, "ParticleTweak_cls"); },
         "ParticleFiltering ParticleTweak "},
        {"tweak up", [&] { return mpPage->mpCStack->MoveEntry(stack, 1, -1); },
         "ParticleTweak ParticleFiltering "},
        {"filtering off", [&] { return mpPage->mpCStack->SetValidity(stack, 1, false); },
         "ParticleTweak ParticleFiltering(off) "},
        {"filtering down past the end", [&] { return !mpPage->mpCStack->MoveEntry(stack, 1, 1); },
         "ParticleTweak ParticleFiltering(off) "},
        {"remove tweak", [&] { return mpPage->mpCStack->DeleteEntry(stack, 0); }, "ParticleFiltering(off) "},
    };
    std::vector<wxString> vHistory = {names()};
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        EXPECT_TRUE(s.edit());
        Sync();
        EXPECT_EQ(names(), s.after);
        EXPECT_EQ(shown(), s.after);
        if (vHistory.back() != names())
            vHistory.push_back(names());
    }
    SCOPED_TRACE("undo walks back through every step, redo forward");
    for (size_t i = vHistory.size() - 1; i > 0; --i) {
        Undo();
        EXPECT_EQ(names(), vHistory[i - 1]);
        EXPECT_EQ(shown(), vHistory[i - 1]);
    }
    for (size_t i = 1; i < vHistory.size(); ++i) {
        Redo();
        EXPECT_EQ(names(), vHistory[i]);
    }
}

TEST_F(ParticlePageTest, MaterialsStopAtTen) {
    for (int m = 1; m < MaterialParticle_cls::kMaterialMax; ++m)
        ASSERT_TRUE(mpPage->AddMaterial()) << m;
    EXPECT_EQ(mpPage->mpCMaterial->GetCount(), 10u);
    EXPECT_EQ(mpPage->mpCMaterial->GetSelection(), 9) << "the new material is the chosen one";
    const int undoIndex = GpCUndo->GetCurrent();
    {
        LogCapture_cls log;
        EXPECT_FALSE(mpPage->AddMaterial());
        EXPECT_TRUE(log.Contains("at most 10 materials"));
    }
    EXPECT_EQ(Obj()->GetNumMaterial(), 10);
    EXPECT_EQ(GpCUndo->GetCurrent(), undoIndex) << "a refused material leaves no undo step";
    SCOPED_TRACE("the rows edit the chosen material");
    mpPage->SelectMaterial(4);
    SendChoice(Ctrl<wxChoice>(PropertyParticle_cls::TARGET_MATERIAL, "BlendType="), 1);
    EXPECT_EQ(Obj()->GetPCMaterialParticle(4)->mCBlendType.GetBodyINT(), 1);
    EXPECT_EQ(Obj()->GetPCMaterialParticle(3)->mCBlendType.GetBodyINT(), 0);
}

TEST_F(ParticlePageTest, WaitingForAReadShowsItsProgressInTheStatusBar) {
    // The frame's read sink: what the main thread shows while it waits for a step.
    wxStatusBar* pStatus = mpFrame->GetStatusBar();
    ReadEventSink_cls::ShowProgress(42, true);
    EXPECT_EQ(pStatus->GetStatusText(2), "42%");
    EXPECT_NE(pStatus->GetStatusText(4), "Aborted");
    TimeCtrl_cls::msbForceAbort = true; // the abort button was pressed
    ReadEventSink_cls::ShowProgress(60, true);
    TimeCtrl_cls::msbForceAbort = false;
    EXPECT_EQ(pStatus->GetStatusText(2), "60%");
    EXPECT_EQ(pStatus->GetStatusText(4), "Aborted");
}

TEST_F(ParticlePageTest, CurveChoiceShowsTheCurvesColours) {
    ASSERT_EQ(mpPage->mpCCurve->GetCount(), 1u);
    EXPECT_EQ(mpPage->mpCCurve->GetSelection(), 0);
    const wxBitmap bitmap = mpPage->mpCCurve->GetItemBitmap(0);
    ASSERT_TRUE(bitmap.IsOk());
    const wxImage image = bitmap.ConvertToImage();
    // The object's curve has the keys of "Red Yellow": red and transparent at 0, opaque yellow at 1.
    const int w = image.GetWidth();
    EXPECT_EQ(image.GetRed(w - 1, 0), 255);
    EXPECT_EQ(image.GetGreen(w - 1, 0), 255);
    EXPECT_EQ(image.GetBlue(w - 1, 0), 0);
    EXPECT_EQ(image.GetRed(0, 0), 0x88) << "transparent: the checker shows";
    EXPECT_EQ(image.GetRed(0, 4), 0xCC);
    const int mid = w / 2;
    EXPECT_GT(image.GetRed(mid, 0), image.GetGreen(mid, 0)) << "half way from red to yellow";
    image.SaveFile(wxFileName::GetTempDir() + "/orv_particle_curve.png", wxBITMAP_TYPE_PNG);
}

} // namespace

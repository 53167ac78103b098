#include "ModifierFixture.h"

#include "SequenceRemap_cls.h"

namespace {

SequenceRemap_cls* AddRemap(Particle_cls* p) {
    p->AddModifierCommand("SequenceRemap_cls", "Remap");
    return dynamic_cast<SequenceRemap_cls*>(p->GetPCAttribute("Remap", 1));
}

} // namespace

TEST_F(ModifierFixture, RemapTakesTheStepAfterATinyToleranceAndFollowsClampAndRepeat) {
    Particle_cls* p = NewParticle("P");
    ASSERT_NE(p, nullptr);
    SequenceRemap_cls* pRemap = AddRemap(p);
    ASSERT_NE(pRemap, nullptr);
    ParamGroup_cls* pGroup = pRemap->GetPCParamGroup("Remap");
    ASSERT_NE(pGroup, nullptr);

    struct Case {
        double value;
        int step;
        double factor;
    };
    for (const Case& c :
         {Case{2.9999999, 3, 0.0}, Case{3.0, 3, 0.0}, Case{2.5, 2, 0.5}, Case{0.25, 0, 0.25}}) {
        SCOPED_TRACE(c.value);
        pGroup->SetInitValue(c.value);
        EXPECT_EQ(pRemap->GetRemappedFrame(0.3, 7, 10), c.step);
        EXPECT_NEAR(pRemap->GetInterpFactor(0.3, 7, -1.0), c.factor, 1e-9);
    }
    // The scene's own lookup of the active remap finds this entry.
    EXPECT_EQ(p->GetPCSequenceRemap(), static_cast<SequenceRemapBase_cls*>(pRemap));

    // Outside the sequence: clamp and repeat.
    struct Outside {
        bool clamp;
        bool repeat;
        double value;
        int step;
    };
    const Outside cases[] = {
        {true, false, 25.0, 9},   // past the end: the last step
        {true, false, -4.0, 0},   // before the start: the first step
        {true, true, 23.0, 3},    // wrapped into the count
        {false, false, 25.0, 25}, // passed on; the sequence applies its own limit
        {false, false, -4.0, -4}, // likewise below
        {false, true, 23.0, 3},   // repeat also without clamp
        {true, false, 1.0e12, 9}, // far outside the int range: still the last step
        {false, false, -1.0e12, -2000000000},
    };
    for (const Outside& c : cases) {
        SCOPED_TRACE(
            wxString::Format("clamp %d repeat %d value %g", c.clamp, c.repeat, c.value).ToStdString());
        pRemap->mCClamp.SetBodyFromData(static_cast<long long>(c.clamp));
        pRemap->mCRepeat.SetBodyFromData(static_cast<long long>(c.repeat));
        pGroup->SetInitValue(c.value);
        EXPECT_EQ(pRemap->GetRemappedFrame(0.0, 1, 10), c.step);
        EXPECT_EQ(pRemap->GetRemapRepeat(), c.repeat);
    }
    // An unknown count (0) is not wrapped or clamped from above; a negative step still becomes 0.
    pRemap->mCClamp.SetBodyFromData(1LL);
    pRemap->mCRepeat.SetBodyFromData(1LL);
    pGroup->SetInitValue(25.0);
    EXPECT_EQ(pRemap->GetRemappedFrame(0.0, 1, 0), 25);
    pGroup->SetInitValue(-3.0);
    EXPECT_EQ(pRemap->GetRemappedFrame(0.0, 1, 0), 0);

    // Switched off, the frame passes through and the factor falls back.
    p->SetModifierValidityCommand("Remap", false);
    EXPECT_EQ(pRemap->GetRemappedFrame(0.0, 6, 10), 6);
    EXPECT_EQ(pRemap->GetInterpFactor(0.0, 6, 0.75), 0.75);
    EXPECT_EQ(p->GetPCSequenceRemap(), nullptr);
}

TEST_F(ModifierFixture, ModifierKindsRefuseObjectsTheyDoNotFit) {
    const wxString strBox = Ctrl()->AppendSceneObjCommand("TextObj", "");
    SceneObj_cls* pBox = Obj(strBox);
    ASSERT_NE(pBox, nullptr);
    pBox->AddModifierCommand("SequenceRemap_cls", "Remap");
    pBox->AddModifierCommand("ParticleFiltering_cls", "Filter");
    EXPECT_EQ(pBox->GetPCAttribute("Remap", 1), nullptr);
    EXPECT_EQ(pBox->GetPCAttribute("Filter", 1), nullptr);
    const wxString strVolume = Ctrl()->AppendSceneObjCommand("VolumeBox", "");
    SceneObj_cls* pVolume = Obj(strVolume);
    ASSERT_NE(pVolume, nullptr);
    pVolume->AddModifierCommand("SequenceRemap_cls", "Remap");
    pVolume->AddModifierCommand("ParticleFiltering_cls", "Filter");
    EXPECT_NE(dynamic_cast<SequenceRemap_cls*>(pVolume->GetPCAttribute("Remap", 1)), nullptr);
    EXPECT_EQ(pVolume->GetPCAttribute("Filter", 1), nullptr);
}

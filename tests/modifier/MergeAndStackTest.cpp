#include "ModifierFixture.h"

#include "AttributeClone_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleMergeExe_cls.h"
#include "ParticleMerge_cls.h"
#include "TexSpaceMod_cls.h"
#include "ViewerClone_cls.h"

#include <vector>

namespace {

// n elements whose values all start at base.
void Fill(ParticleForRender_cls& set, int n, float base) {
    ASSERT_TRUE(set.Allocate(n));
    for (int i = 0; i < n; ++i) {
        for (int k = 0; k < 3; ++k)
            set.mXYZ[3 * i + k] = base + i;
        set.mType[i] = static_cast<unsigned char>(base);
        set.mSize[i] = base + i;
        set.mColorS[i] = base;
        set.mColorT[i] = base;
        set.mOrder[i] = ArrayAndIndex_cls{n - 1 - i, base + i};
    }
}

} // namespace

TEST_F(ModifierFixture, MergeAppendsTheOtherSet) {
    ParticleMerge_cls mod("Merge");
    AttributeClone_cls clone;
    mod.Clone(clone);
    ParticleForRender_cls own, other, empty;
    Fill(own, 2, 10.0f);
    Fill(other, 3, 20.0f);
    ASSERT_TRUE(ParticleMergeExe_cls(&clone, &own, &empty).Execute());
    EXPECT_EQ(own.mNumber, 2) << "an empty other changes nothing";

    ASSERT_TRUE(ParticleMergeExe_cls(&clone, &own, &other).Execute());
    ASSERT_EQ(own.mNumber, 5);
    const std::vector<float> size(own.mSize.get(), own.mSize.get() + 5);
    EXPECT_EQ(size, (std::vector<float>{10, 11, 20, 21, 22}));
    EXPECT_EQ(own.mXYZ[3 * 3 + 2], 21.0f);
    EXPECT_EQ(own.mType[1], 10);
    EXPECT_EQ(own.mType[4], 20);
    std::vector<int> index;
    for (int i = 0; i < 5; ++i)
        index.push_back(own.mOrder[i].mIndex);
    EXPECT_EQ(index, (std::vector<int>{1, 0, 4, 3, 2})) << "the other's order points past own's elements";
    EXPECT_EQ(other.mNumber, 3);

    mod.mValidity.SetBodyFromData(0LL);
    AttributeClone_cls off;
    mod.Clone(off);
    ASSERT_TRUE(ParticleMergeExe_cls(&off, &own, &other).Execute());
    EXPECT_EQ(own.mNumber, 5);
}

TEST_F(ModifierFixture, MergeTargetMustBeAnotherParticleObject) {
    Particle_cls* pA = NewParticle("A");
    Particle_cls* pB = NewParticle("B");
    ASSERT_NE(pA, nullptr);
    ASSERT_NE(pB, nullptr);
    const wxString strText = Ctrl()->AppendSceneObjCommand("TextObj", "T");
    pA->AddDataProcCommand("ParticleMerge_cls", "Merge");
    auto* pMerge = dynamic_cast<ParticleMerge_cls*>(pA->GetPCAttribute("Merge", 2));
    ASSERT_NE(pMerge, nullptr);
    for (const wxString& str : {wxString("None"), wxString("A"), strText, wxString("Nowhere")}) {
        SCOPED_TRACE(str.ToStdString());
        pMerge->mCTarget.SetBodyFromData(str);
        EXPECT_EQ(pMerge->GetPCTargetParticle(pA), nullptr);
    }
    pMerge->mCTarget.SetBodyFromData(wxString("B"));
    EXPECT_EQ(pMerge->GetPCTargetParticle(pA), pB);
}

TEST_F(ModifierFixture, TexSpaceScalesCoordinatesByTheObjectsScale) {
    TexSpaceMod_cls mod("Tex");
    const double scale[2] = {2.0, 3.0};
    std::vector<double> coord = {0.5, 0.5, 1.0, 0.25};
    mod.Execute(coord, 2, scale);
    EXPECT_EQ(coord, (std::vector<double>{1.0, 1.5, 2.0, 0.75}));
    mod.mCAdjustScale.SetBodyFromData(0LL);
    mod.Execute(coord, 2, scale);
    EXPECT_EQ(coord, (std::vector<double>{1.0, 1.5, 2.0, 0.75}));
}

TEST_F(ModifierFixture, ValidityAndOrderChangeTheStamp) {
    Particle_cls* p = NewParticle("P");
    ASSERT_NE(p, nullptr);
    p->AddModifierCommand("ParticleFiltering_cls", "F");
    p->AddModifierCommand("ModifyApparentSize_cls", "S");
    ParticleForRender_cls set;
    auto stamp = [&]() {
        ViewerClone_cls clone;
        p->Clone(clone, 0.0);
        return set.GetStrProcCounterClone(&clone, 0.0);
    };
    const wxString s0 = stamp();
    EXPECT_EQ(stamp(), s0) << "nothing changed, nothing to recompute";
    p->SetModifierValidityCommand("F", false);
    const wxString s1 = stamp();
    EXPECT_NE(s1, s0);
    p->MoveModifierCommand("S", p->GetIndexModifierInit());
    EXPECT_NE(stamp(), s1);
}

TEST_F(ModifierFixture, EveryKindSurvivesSaveAndReopen) {
    Particle_cls* p = NewParticle("Stars");
    ASSERT_NE(p, nullptr);
    for (const char* pKind : {"SequenceRemap_cls", "ParticleFiltering_cls", "ModifyParticleSize_cls",
                              "ModifyApparentSize_cls", "ParticleBoolean_cls", "ParticleTweak_cls",
                              "Trimming_cls", "Tracking_cls", "ArrayCopy_cls", "TexSpaceMod_cls"})
        p->AddModifierCommand(pKind, wxString(pKind).BeforeFirst('_'));
    for (const char* pKind : {"ParticleDownsizing_cls", "ParticleMerge_cls"})
        p->AddDataProcCommand(pKind, wxString(pKind).BeforeFirst('_'));
    const wxString strText = SceneText();
    for (const char* pKey : {"Clamp=", "FilteringString=", "ChannelType=", "PowerAlphaMax=", "BooleanObject=",
                             "BillboardRotOrder=", "ThinningFactor=", "BaseTopDirection=", "AxisZ=",
                             "AdjustScale=", "Downsize=", "ParticleMerge_cls"})
        EXPECT_TRUE(strText.Contains(pKey)) << pKey;

    const wxString strProject = mDir.Path("all.ovp");
    ASSERT_TRUE(mpMain->SaveProjectMain(strProject, 0));
    Ctrl()->Clear();
    ASSERT_TRUE(mpMain->OpenProjectMain(strProject, true));
    EXPECT_EQ(SceneText(), strText);
}

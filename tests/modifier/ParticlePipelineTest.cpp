// The particle modifiers inside a frame's preparation: filters and shapes set the filter alpha of
// the elements they name, thinning keeps the names on the particles of the file, the size limit
// runs on fresh sizes only, and a merge appends the other object's frame.
#include "ModifierFixture.h"

#include "BooleanBase_cls.h"
#include "ModifyApparentSize_cls.h"
#include "ParticleDownsizing_cls.h"
#include "ParticleFiltering_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleMerge_cls.h"
#include "ParticleSnap_cls.h"
#include "ViewerClone_cls.h"

#include <memory>
#include <vector>

namespace {

// Four particles on the -z axis at depths 10, 20, 30, 40, IDs 10 .. 13, size 1.
std::unique_ptr<ParticleSnap_cls> MakeAxisSnap() {
    auto pSnap = std::make_unique<ParticleSnap_cls>(nullptr, 0);
    pSnap->mHasID = true;
    pSnap->mHasSize = true;
    pSnap->AllocateIfNot(4);
    for (int i = 0; i < 4; ++i) {
        pSnap->mXYZ[3 * i] = 0.0f;
        pSnap->mXYZ[3 * i + 1] = 0.0f;
        pSnap->mXYZ[3 * i + 2] = -10.0f * (i + 1);
        pSnap->mID[i] = 10 + i;
        pSnap->mSize[i] = 1.0f;
    }
    return pSnap;
}

std::vector<float> Alphas(const ParticleForRender_cls& set) {
    return std::vector<float>(set.mAlpha.get(), set.mAlpha.get() + set.mNumber);
}

} // namespace

class PipelineTest : public ModifierFixture {
protected:
    void SetUp() override {
        ModifierFixture::SetUp();
        mpP = NewParticle("P");
        ASSERT_NE(mpP, nullptr);
        mpSnap = MakeAxisSnap();
    }

    // Prepares the frame at time 0 into set with a fresh clone of the object, camera at the origin
    // looking down -z unless given.
    bool Prepare(ParticleForRender_cls& set, PositionAndDirection_cls camera = PositionAndDirection_cls()) {
        auto* pClone = new ViewerClone_cls;
        mpP->Clone(*pClone, 0.0);
        return set.PrepareData(mpSnap.get(), mpSnap.get(), nullptr, nullptr, 0, 0, 0, 0.0, pClone, nullptr,
                               0.0, camera, false);
    }

    template <class T> T* AddModifier(const wxString& strClass, const wxString& strName) {
        mpP->AddModifierCommand(strClass, strName);
        return dynamic_cast<T*>(mpP->GetPCAttribute(strName, 1));
    }

    Particle_cls* mpP = nullptr;
    std::unique_ptr<ParticleSnap_cls> mpSnap;
};

TEST_F(PipelineTest, FiltersNameTheParticlesOfTheFile) {
    ParticleForRender_cls set;
    ASSERT_TRUE(Prepare(set));
    EXPECT_EQ(Alphas(set), (std::vector<float>{1, 1, 1, 1})) << "no modifier: all shown";

    auto* pFilter = AddModifier<ParticleFiltering_cls>("ParticleFiltering_cls", "F");
    ASSERT_NE(pFilter, nullptr);
    {
        SCOPED_TRACE("\"Show following particles\" with an empty string shows none");
        ASSERT_TRUE(Prepare(set));
        EXPECT_EQ(Alphas(set), (std::vector<float>{0, 0, 0, 0}));
    }
    {
        SCOPED_TRACE("by ID");
        pFilter->mCIndexType.SetBodyFromData(1LL);
        pFilter->mCFilteringString.SetBodyFromData(wxString("11-12"));
        ASSERT_TRUE(Prepare(set));
        EXPECT_EQ(Alphas(set), (std::vector<float>{0, 1, 1, 0}));
    }
    {
        SCOPED_TRACE("switched off: the alpha of the last run does not stay");
        mpP->SetModifierValidityCommand("F", false);
        ASSERT_TRUE(Prepare(set));
        EXPECT_EQ(Alphas(set), (std::vector<float>{1, 1, 1, 1}));
        mpP->SetModifierValidityCommand("F", true);
    }
    {
        SCOPED_TRACE("thinned by index: the list still names particles of the file");
        mpP->AddDataProcCommand("ParticleDownsizing_cls", "D");
        auto* pDown = dynamic_cast<ParticleDownsizing_cls*>(mpP->GetPCAttribute("D", 2));
        ASSERT_NE(pDown, nullptr);
        pDown->mCDownsize.SetBodyFromData(2LL);
        pFilter->mCIndexType.SetBodyFromData(0LL);
        pFilter->mCFilteringString.SetBodyFromData(wxString("2"));
        ASSERT_TRUE(Prepare(set));
        ASSERT_EQ(set.mNumber, 2); // particles 0 and 2
        EXPECT_EQ(Alphas(set), (std::vector<float>{0, 1}));
        SCOPED_TRACE("thinned by ID: places left empty stay hidden, even when forced");
        pDown->mCDownsizeType.SetBodyFromData(1LL); // IDs 10 and 12 pass
        pFilter->mCFilteringType.SetBodyFromData(2LL);
        pFilter->mCFilteringString.SetBodyFromData(wxString("0-3"));
        ASSERT_TRUE(Prepare(set));
        ASSERT_EQ(set.mNumber, 4);
        int shown = 0;
        for (int e = 0; e < 4; ++e)
            if (set.mAlpha[e] != 0.0f) {
                ++shown;
                EXPECT_NE(set.mSize[e], 0.0f) << "element " << e;
            }
        EXPECT_EQ(shown, 2);
    }
}

TEST_F(PipelineTest, ShapeHidesOutsideTheBox) {
    auto* pBool = AddModifier<ParticleBoolean_cls>("ParticleBoolean_cls", "B");
    ASSERT_NE(pBool, nullptr);
    pBool->GetPCParamGroup("Z Min/Max")->SetInitValue(-25.0, -5.0);
    ParticleForRender_cls set;
    ASSERT_TRUE(Prepare(set));
    EXPECT_EQ(Alphas(set), (std::vector<float>{1, 1, 0, 0}));
    pBool->mCBooleanType.SetBodyFromData(1LL); // "Diffierence"
    ASSERT_TRUE(Prepare(set));
    EXPECT_EQ(Alphas(set), (std::vector<float>{0, 0, 1, 1}));
}

TEST_F(PipelineTest, ApparentSizeLimitRunsOnFreshSizesOnly) {
    auto* pSize = AddModifier<ModifyApparentSize_cls>("ModifyApparentSize_cls", "S");
    ASSERT_NE(pSize, nullptr);
    pSize->GetPCParamGroup("Parameters")->SetInitValue(0.05, 1.0);
    mpP->mCSortType.SetBodyFromData(3LL); // the key is minus the distance: a depth
    ParticleForRender_cls set;
    // Apparent sizes 1/10 .. 1/40 against the limit 0.05: ratios 0.5, 1, 1.5, 2.
    auto expect = [&set](const std::vector<double>& ratio) {
        for (int e = 0; e < 4; ++e) {
            const double r = ratio[e] >= 1.0 ? ratio[e] : 1.0;
            EXPECT_NEAR(set.mSize[e], r, 1e-5) << "element " << e;
            EXPECT_NEAR(set.mAlpha[e], ratio[e] >= 1.0 ? 1.0 / (r * r) : 1.0, 1e-5) << "element " << e;
        }
    };
    ASSERT_TRUE(Prepare(set));
    expect({0.5, 1.0, 1.5, 2.0});
    const int data = set.mDataCounter;
    {
        SCOPED_TRACE("the same frame again: nothing runs");
        ASSERT_TRUE(Prepare(set));
        EXPECT_EQ(set.mDataCounter, data);
        expect({0.5, 1.0, 1.5, 2.0});
    }
    {
        SCOPED_TRACE("the camera moved back by 10: a fresh pass, not a second scaling");
        PositionAndDirection_cls camera;
        camera.mPos[2] = 10.0;
        ASSERT_TRUE(Prepare(set, camera));
        EXPECT_EQ(set.mDataCounter, data + 1);
        expect({1.0, 1.5, 2.0, 2.5});
    }
}

TEST_F(PipelineTest, MergeAppendsTheShownTargetOnTheMainThreadOnly) {
    Particle_cls* pOther = NewParticle("Q");
    ASSERT_NE(pOther, nullptr);
    {
        auto* pClone = new ViewerClone_cls;
        pOther->Clone(*pClone, 0.0);
        ASSERT_TRUE(pOther->mpCCurrent->PrepareData(mpSnap.get(), mpSnap.get(), nullptr, nullptr, 0, 0, 0,
                                                    0.0, pClone, nullptr, 0.0, PositionAndDirection_cls(),
                                                    false));
    }
    mpP->AddDataProcCommand("ParticleMerge_cls", "M");
    auto* pMerge = dynamic_cast<ParticleMerge_cls*>(mpP->GetPCAttribute("M", 2));
    ASSERT_NE(pMerge, nullptr);
    ViewerClone_cls clone;
    mpP->Clone(clone, 0.0);
    EXPECT_FALSE(Particle_cls::IsPreparedOnMainThreadOnly(clone)) << "Target= None";

    pMerge->mCTarget.SetBodyFromData(pOther->GetStrName());
    ViewerClone_cls cloneTarget;
    mpP->Clone(cloneTarget, 0.0);
    EXPECT_TRUE(Particle_cls::IsPreparedOnMainThreadOnly(cloneTarget));
    ParticleForRender_cls set;
    ASSERT_TRUE(Prepare(set));
    ASSERT_EQ(set.mNumber, 8);
    EXPECT_EQ(Alphas(set), std::vector<float>(8, 1.0f));
    EXPECT_FLOAT_EQ(set.mXYZ[3 * 5 + 2], -20.0f);
    {
        SCOPED_TRACE("a filter names this object's particles only: the merged ones lie past them");
        auto* pFilter = AddModifier<ParticleFiltering_cls>("ParticleFiltering_cls", "F");
        ASSERT_NE(pFilter, nullptr);
        pFilter->mCFilteringString.SetBodyFromData(wxString("0-3"));
        ASSERT_TRUE(Prepare(set));
        EXPECT_EQ(Alphas(set), (std::vector<float>{1, 1, 1, 1, 0, 0, 0, 0}));
    }
    {
        SCOPED_TRACE("a hidden target is not merged");
        pOther->mCVisible.SetBodyFromData(0LL);
        ASSERT_TRUE(Prepare(set));
        EXPECT_EQ(set.mNumber, 4);
    }
}

#include "ModifierFixture.h"

#include "ArrayCopy_cls.h"
#include "SceneObjInstance_cls.h"
#include "Tracking_cls.h"

#include <cmath>
#include <vector>

namespace {

std::vector<double> Column(const double* m, int k) {
    return {m[4 * k], m[4 * k + 1], m[4 * k + 2]};
}

void ExpectNear(const std::vector<double>& a, const std::vector<double>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i)
        EXPECT_NEAR(a[i], b[i], 1e-9) << "component " << i;
}

} // namespace

TEST_F(ModifierFixture, TrackingTurnsTheBaseAxisToTheTarget) {
    SceneObj_cls* pA = Obj(Ctrl()->AppendSceneObjCommand("TextObj", "A"));
    SceneObj_cls* pB = Obj(Ctrl()->AppendSceneObjCommand("TextObj", "B"));
    ASSERT_NE(pA, nullptr);
    ASSERT_NE(pB, nullptr);
    ParamGroup_cls* pPosB = pB->GetPCParamGroup("", "Position");
    ASSERT_NE(pPosB, nullptr);
    pPosB->SetInitValue(5.0, 0.0, 0.0);
    pA->AddModifierCommand("Tracking_cls", "Track");
    auto* pTrack = dynamic_cast<Tracking_cls*>(pA->GetPCAttribute("Track", 1));
    ASSERT_NE(pTrack, nullptr);
    double m[16];
    {
        SCOPED_TRACE("Target= None: the object keeps its orientation");
        pA->GetMatrix16(m, 0.0);
        ExpectNear(Column(m, 2), {0, 0, 1});
    }
    pTrack->mCTarget.SetBodyFromData(wxString("B"));
    {
        SCOPED_TRACE("+Z towards the target, Y kept up");
        pA->GetMatrix16(m, 0.0);
        ExpectNear(Column(m, 2), {1, 0, 0});
        ExpectNear(Column(m, 1), {0, 1, 0});
        ExpectNear(Column(m, 0), {0, 0, -1});
    }
    {
        SCOPED_TRACE("-X towards the target");
        pTrack->mCBaseDirection.SetBodyFromData(1LL);
        pA->GetMatrix16(m, 0.0);
        ExpectNear(Column(m, 0), {-1, 0, 0});
        ExpectNear(Column(m, 1), {0, 1, 0});
        ExpectNear(Column(m, 2), {0, 0, -1});
        pTrack->mCBaseDirection.SetBodyFromData(4LL);
    }
    {
        SCOPED_TRACE("half influence: half way from the own direction");
        pTrack->GetPCParamGroup("Influence")->SetInitValue(0.5);
        pA->GetMatrix16(m, 0.0);
        const double h = std::sqrt(0.5);
        ExpectNear(Column(m, 2), {h, 0, h});
        pTrack->GetPCParamGroup("Influence")->SetInitValue(1.0);
    }
    {
        SCOPED_TRACE("switched off");
        pA->SetModifierValidityCommand("Track", false);
        pA->GetMatrix16(m, 0.0);
        ExpectNear(Column(m, 2), {0, 0, 1});
        pA->SetModifierValidityCommand("Track", true);
    }
    {
        SCOPED_TRACE("two objects tracking each other end, and still face each other");
        pB->AddModifierCommand("Tracking_cls", "Back");
        auto* pBack = dynamic_cast<Tracking_cls*>(pB->GetPCAttribute("Back", 1));
        ASSERT_NE(pBack, nullptr);
        pBack->mCTarget.SetBodyFromData(wxString("A"));
        pA->GetMatrix16(m, 0.0);
        ExpectNear(Column(m, 2), {1, 0, 0});
        pB->GetMatrix16(m, 0.0);
        ExpectNear(Column(m, 2), {-1, 0, 0});
    }
}

TEST_F(ModifierFixture, ArrayCopyMakesAGridWithoutTheObjectsOwnPlace) {
    SceneObj_cls* pA = Obj(Ctrl()->AppendSceneObjCommand("TextObj", "A"));
    ASSERT_NE(pA, nullptr);
    pA->AddModifierCommand("ArrayCopy_cls", "Copies");
    auto* pCopy = dynamic_cast<ArrayCopy_cls*>(pA->GetPCAttribute("Copies", 1));
    ASSERT_NE(pCopy, nullptr);
    EXPECT_EQ(pCopy->GetCopyCount(0.0), 0) << "all ranges 0 .. 0: the object alone";

    pCopy->GetPCParamGroup("X Min/Max")->SetInitValue(-1.0, 1.0);
    pCopy->GetPCParamGroup("Z Min/Max")->SetInitValue(0.0, 1.0);
    pCopy->mCAxisX.SetBodyFromData(wxString("2 0 0"));
    EXPECT_EQ(pCopy->GetCopyCount(0.0), 5);
    std::vector<std::vector<double>> offsets;
    for (int i = 1; i <= 5; ++i) {
        double o[3];
        ASSERT_TRUE(pCopy->GetCopyOffset(i, 0.0, o));
        offsets.push_back({o[0], o[1], o[2]});
    }
    const std::vector<std::vector<double>> expect = {{-2, 0, 0}, {-2, 0, 1}, {0, 0, 1}, {2, 0, 0}, {2, 0, 1}};
    EXPECT_EQ(offsets, expect);
    double o[3];
    EXPECT_FALSE(pCopy->GetCopyOffset(6, 0.0, o));
    EXPECT_FALSE(pCopy->GetCopyOffset(0, 0.0, o));

    // The scene draws the object and its copies through the installed seam.
    std::vector<SceneObjInstance_cls*> v = pA->GetVNewPCInstance();
    EXPECT_EQ(v.size(), 6u);
    for (SceneObjInstance_cls* p : v)
        delete p;

    // A range without the own place copies every step; switched off, none.
    pCopy->GetPCParamGroup("X Min/Max")->SetInitValue(1.0, 3.0);
    EXPECT_EQ(pCopy->GetCopyCount(0.0), 6);
    pA->SetModifierValidityCommand("Copies", false);
    EXPECT_EQ(pCopy->GetCopyCount(0.0), 0);
    // A huge range is bounded.
    pA->SetModifierValidityCommand("Copies", true);
    pCopy->GetPCParamGroup("Y Min/Max")->SetInitValue(-1.0e9, 1.0e9);
    EXPECT_EQ(pCopy->GetCopyCount(0.0), ArrayCopy_cls::kMaxCopies);
}

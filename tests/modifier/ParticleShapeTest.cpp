#include "ModifierFixture.h"

#include "AttributeClone_cls.h"
#include "BooleanBase_cls.h"
#include "ParticleBooleanExec_cls.h"
#include "ParticleTweak_cls.h"
#include "Trimming_cls.h"

#include <vector>

namespace {

// Points on the x axis at 0, 1.5, 2.5, 3.5 and one off the axis at (2, 0.9, 0.9).
float gXYZ[5][3] = {{0, 0, 0}, {1.5f, 0, 0}, {2.5f, 0, 0}, {3.5f, 0, 0}, {2, 0.9f, 0.9f}};

std::vector<float> RunBoolean(ParticleBoolean_cls& mod, float start) {
    AttributeClone_cls clone;
    mod.Clone(clone);
    ParticleBooleanExec_cls exec(&clone, 0.0);
    std::vector<float> alpha(5, start);
    exec.CheckBoolean(alpha.data(), gXYZ, 5, false);
    return alpha;
}

} // namespace

TEST_F(ModifierFixture, BooleanBoxAndSphere) {
    ParticleBoolean_cls mod("Bool");
    // The box x 1 .. 3, y and z -1 .. 1: points 1, 2 and 4 are inside it; the ellipsoid inside
    // the box holds points 1 and 2 but not the corner point 4.
    mod.GetPCParamGroup("X Min/Max")->SetInitValue(3.0, 1.0); // reversed bounds are the same box
    struct Case {
        int shape;
        int type;
        float start;
        std::vector<float> expect;
    };
    const Case cases[] = {
        {0, 0, 1.0f, {0, 1, 1, 0, 1}},          // "Intersect"
        {0, 1, 1.0f, {1, 0, 0, 1, 0}},          // "Diffierence"
        {0, 2, 0.25f, {0.25f, 1, 1, 0.25f, 1}}, // "Add"
        {1, 0, 1.0f, {0, 1, 1, 0, 0}},          {1, 1, 0.5f, {0.5f, 0, 0, 0.5f, 0.5f}},
        {1, 2, 0.0f, {0, 1, 1, 0, 0}},          {2, 0, 1.0f, {1, 1, 1, 1, 1}}, // no object named: no effect
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(wxString::Format("shape %d type %d", c.shape, c.type).ToStdString());
        mod.mCBooleanShape.SetBodyFromData(static_cast<long long>(c.shape));
        mod.mCBooleanType.SetBodyFromData(static_cast<long long>(c.type));
        EXPECT_EQ(RunBoolean(mod, c.start), c.expect);
    }
    SCOPED_TRACE("switched off");
    mod.mCBooleanShape.SetBodyFromData(0LL);
    mod.mCBooleanType.SetBodyFromData(0LL);
    mod.mValidity.SetBodyFromData(0LL);
    EXPECT_EQ(RunBoolean(mod, 1.0f), std::vector<float>(5, 1.0f));
}

TEST_F(ModifierFixture, BooleanObjectIsFoundOnlyWhenItFits) {
    Particle_cls* p = NewParticle("P");
    ASSERT_NE(p, nullptr);
    p->AddModifierCommand("ParticleBoolean_cls", "Bool");
    auto* pBool = dynamic_cast<ParticleBoolean_cls*>(p->GetPCAttribute("Bool", 1));
    ASSERT_NE(pBool, nullptr);
    EXPECT_EQ(pBool->mCBooleanObject.GetBodySTR(), "None");
    EXPECT_EQ(pBool->SelectObject(), nullptr);
    const wxString strText = Ctrl()->AppendSceneObjCommand("TextObj", "");
    pBool->mCBooleanObject.SetBodyFromData(strText);
    EXPECT_EQ(pBool->SelectObject(), nullptr) << "a text object is no shape";
    double m[16];
    EXPECT_FALSE(pBool->GetMatrix16TgtInv(m, 0.0));
    EXPECT_EQ(pBool->GetStrProcCounterForTgtObj(0.0), "-");
}

TEST_F(ModifierFixture, TrimmingAndTweakReadTheirGroups) {
    Trimming_cls trim("Trim");
    trim.GetPCParamGroup("Y Min/Max")->SetInitValue(5.0, -2.0);
    double lo[3] = {9, 9, 9}, hi[3] = {9, 9, 9};
    trim.Execute(0.5, lo, hi);
    EXPECT_EQ(std::vector<double>(lo, lo + 3), (std::vector<double>{-1, -2, -1}));
    EXPECT_EQ(std::vector<double>(hi, hi + 3), (std::vector<double>{1, 5, 1}));
    trim.mValidity.SetBodyFromData(0LL);
    double lo2[3] = {9, 9, 9}, hi2[3] = {8, 8, 8};
    trim.Execute(0.5, lo2, hi2);
    EXPECT_EQ(lo2[1], 9.0);
    EXPECT_EQ(hi2[1], 8.0);

    ParticleTweak_cls tweak("Tweak");
    tweak.GetPCParamGroup("BillboardFocus")->SetInitValue(10.0, 20.0, 30.0);
    tweak.mCBillboardRotOrder.SetBodyFromData(1LL);
    float y = 0, pi = 0, r = 0;
    int order = 0;
    tweak.GetBillboartFocus(y, pi, r, order);
    EXPECT_EQ(y, 10.0f);
    EXPECT_EQ(pi, 20.0f);
    EXPECT_EQ(r, 30.0f);
    EXPECT_EQ(order, 1);
}

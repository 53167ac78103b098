#include "ModifierFixture.h"

#include "AttributeClone_cls.h"
#include "ColorCurve_cls.h"
#include "ModifyApparentSizeExec_cls.h"
#include "ModifyApparentSize_cls.h"
#include "ModifyParticleSizeExec_cls.h"
#include "ModifyParticleSize_cls.h"
#include "ParticleDownsizing_cls.h"
#include "PrepareSetting_cls.h"
#include "ViewerClone_cls.h"

#include <cmath>
#include <vector>

namespace {

AttributeClone_cls CloneOf(Attribute_cls& a) {
    AttributeClone_cls c;
    a.Clone(c);
    return c;
}

// n particles in their own order; particle e at depth depths[e] (sort key -depth).
std::vector<ArrayAndIndex_cls> Order(const std::vector<float>& depths) {
    std::vector<ArrayAndIndex_cls> v;
    for (size_t e = 0; e < depths.size(); ++e)
        v.push_back(ArrayAndIndex_cls{static_cast<int>(e), -depths[e]});
    return v;
}

} // namespace

TEST_F(ModifierFixture, DownsizingEntriesMultiplyInThePreparation) {
    Particle_cls* p = NewParticle("P");
    ASSERT_NE(p, nullptr);
    p->AddDataProcCommand("ParticleDownsizing_cls", "D1");
    p->AddDataProcCommand("ParticleDownsizing_cls", "D2");
    auto* p1 = dynamic_cast<ParticleDownsizing_cls*>(p->GetPCAttribute("D1", 2));
    auto* p2 = dynamic_cast<ParticleDownsizing_cls*>(p->GetPCAttribute("D2", 2));
    ASSERT_NE(p1, nullptr);
    ASSERT_NE(p2, nullptr);
    p1->mCDownsize.SetBodyFromData(2LL);
    p2->mCDownsize.SetBodyFromData(3LL);
    p2->mCDownsizeType.SetBodyFromData(1LL);
    auto read = [p]() {
        ViewerClone_cls clone;
        p->Clone(clone, 0.0);
        PrepareSetting_cls setting;
        setting.ReadFromClone(&clone, nullptr, 0.0);
        return setting;
    };
    PrepareSetting_cls s = read();
    EXPECT_EQ(s.mDownsize, 6);
    EXPECT_EQ(s.mDownsizeType, 1);
    p->SetDataProcValidityCommand("D2", false);
    s = read();
    EXPECT_EQ(s.mDownsize, 2);
    EXPECT_EQ(s.mDownsizeType, 0);
}

TEST_F(ModifierFixture, ModifyParticleSizeLooksUpTheCurve) {
    ModifyParticleSize_cls mod("Size");
    mod.mCDependType.SetBodyFromData(2LL); // by size
    AttributeClone_cls clone = CloneOf(mod);
    ModifyParticleSizeExec_cls exec(&clone, nullptr, 0.0);
    EXPECT_FALSE(exec.IsReady()) << "no curve, no table";
    // A ramp 0 .. 1023 makes the picked entry visible in the result.
    exec.mVTable.resize(ModifyParticleSizeExec_cls::kTableSize);
    for (int j = 0; j < ModifyParticleSizeExec_cls::kTableSize; ++j)
        exec.mVTable[j] = static_cast<float>(j);
    exec.mRange0 = 2.0;
    exec.mRange1 = 4.0;
    ASSERT_TRUE(exec.IsReady());

    const std::vector<float> sizeIn = {1.0f, 3.0f, 4.0f, 9.0f, 3.0f};
    std::vector<float> size = sizeIn;
    const std::vector<float> alpha = {1, 1, 1, 1, 0};
    const std::vector<ArrayAndIndex_cls> order = Order({1, 1, 1, 1, 1});
    const std::vector<unsigned char> type = {0, 1, 1, 1, 1};
    exec.Execute(alpha.data(), size.data(), type.data(), order.data(), 5, ModifySizeSource_cls());
    EXPECT_FLOAT_EQ(size[0], 0.0f);           // below the range: entry 0
    EXPECT_FLOAT_EQ(size[1], 3.0f * 511.0f);  // half way: (int)(0.5 * 1023)
    EXPECT_FLOAT_EQ(size[2], 4.0f * 1023.0f); // at the top
    EXPECT_FLOAT_EQ(size[3], 9.0f * 1023.0f); // above: the last entry
    EXPECT_FLOAT_EQ(size[4], 3.0f);           // hidden particles are left alone

    SCOPED_TRACE("TargetType= 2 touches type 1 only; an empty range counts as 1");
    exec.mTargetType = 2;
    exec.mRange0 = exec.mRange1 = 0.0;
    size = {0.5f, 0.5f, 0.25f, 0.5f, 0.5f};
    exec.Execute(alpha.data(), size.data(), type.data(), order.data(), 5, ModifySizeSource_cls());
    EXPECT_FLOAT_EQ(size[0], 0.5f);
    EXPECT_FLOAT_EQ(size[1], 0.5f * 511.0f);
    EXPECT_FLOAT_EQ(size[2], 0.25f * 255.0f);
}

TEST_F(ModifierFixture, ModifyParticleSizeReadsTheViewersCurve) {
    ColorCurve_cls curve("Curve", Names({"R", "G", "B", "A"}));
    curve.SetInitValue(0.2, 0.4, 0.6, 0.8);
    curve.GetPCRange()->SetInitValue(10.0, 20.0);
    ViewerClone_cls viewer;
    viewer.AddAttribute(new AttributeClone_cls(CloneOf(curve)));

    ModifyParticleSize_cls mod("Size");
    struct Case {
        int channel;
        float value;
    };
    for (const Case& c : {Case{0, 0.2f}, Case{3, 0.299f * 0.2f + 0.587f * 0.4f + 0.114f * 0.6f},
                          Case{4, 0.6f}, Case{5, 0.8f}}) {
        SCOPED_TRACE(c.channel);
        mod.mCChannelType.SetBodyFromData(static_cast<long long>(c.channel));
        AttributeClone_cls clone = CloneOf(mod);
        ModifyParticleSizeExec_cls exec(&clone, &viewer, 0.0);
        ASSERT_TRUE(exec.IsReady());
        EXPECT_DOUBLE_EQ(exec.mRange0, 10.0);
        EXPECT_DOUBLE_EQ(exec.mRange1, 20.0);
        EXPECT_NEAR(exec.mVTable[0], c.value, 1e-6);
        EXPECT_NEAR(exec.mVTable[1023], c.value, 1e-6);
    }
    SCOPED_TRACE("a curve index beyond the viewer's curves, or switched off: nothing to do");
    mod.mCColorCurveIndex.SetBodyFromData(1LL);
    AttributeClone_cls beyond = CloneOf(mod);
    EXPECT_FALSE(ModifyParticleSizeExec_cls(&beyond, &viewer, 0.0).IsReady());
    mod.mCColorCurveIndex.SetBodyFromData(0LL);
    mod.mValidity.SetBodyFromData(0LL);
    AttributeClone_cls off = CloneOf(mod);
    EXPECT_FALSE(ModifyParticleSizeExec_cls(&off, &viewer, 0.0).IsReady());
}

TEST_F(ModifierFixture, ModifyApparentSizeKeepsSizesWithinTheLimits) {
    ModifyApparentSize_cls mod("Apparent");
    ParamGroup_cls* pGroup = mod.GetPCParamGroup("Parameters");
    ASSERT_NE(pGroup, nullptr);
    pGroup->SetInitValue(0.01, 0.5);
    mod.mCLimitApparentMax.SetBodyFromData(1LL);
    const float factor[2] = {1.0f, 2.0f};
    // Particle 0 far (apparent 0.001), 1 within, 2 near (apparent 2), 3 of type 1 far.
    const std::vector<float> depths = {1000.0f, 10.0f, 0.5f, 1000.0f};
    const std::vector<unsigned char> type = {0, 0, 0, 1};
    struct Case {
        int powerMin;
        bool alphaMax;
        int target;
        std::vector<float> size, alpha;
    };
    const float r0 = 10.0f, r3 = 5.0f; // ratios of the far particles
    const Case cases[] = {
        {2, false, 0, {r0, 1, 0.25f, r3}, {1 / (r0 * r0), 1, 1, 1 / (r3 * r3)}},
        {0, false, 0, {r0, 1, 0.25f, r3}, {1 / std::sqrt(r0), 1, 1, 1 / std::sqrt(r3)}},
        {1, true, 0, {r0, 1, 0.25f, r3}, {1 / r0, 1, 0.25f * 0.25f * 0.25f, 1 / r3}},
        {1, false, 2, {1, 1, 1, r3}, {1, 1, 1, 1 / r3}}, // TargetType= 2: type 1 only
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(wxString::Format("power %d alphaMax %d target %d", c.powerMin, c.alphaMax, c.target)
                         .ToStdString());
        mod.mCPowerAlphaMin.SetBodyFromData(static_cast<long long>(c.powerMin));
        mod.mCModifyAlphaMax.SetBodyFromData(static_cast<long long>(c.alphaMax));
        mod.mCTargetType.SetBodyFromData(static_cast<long long>(c.target));
        AttributeClone_cls clone = CloneOf(mod);
        ModifyApparentSizeExec_cls exec(&clone, 0.0, 1);
        std::vector<float> size(4, 1.0f), alpha(4, 1.0f);
        const std::vector<ArrayAndIndex_cls> order = Order(depths);
        exec.Execute(alpha.data(), factor, 2, size.data(), type.data(), order.data(), 4);
        for (int e = 0; e < 4; ++e) {
            EXPECT_NEAR(size[e], c.size[e], 1e-5) << "size of " << e;
            EXPECT_NEAR(alpha[e], c.alpha[e], 1e-5) << "alpha of " << e;
        }
    }
    {
        SCOPED_TRACE("a sort type without depth key uses the camera, or leaves all alone without one");
        mod.mCTargetType.SetBodyFromData(0LL);
        AttributeClone_cls clone = CloneOf(mod);
        ModifyApparentSizeExec_cls exec(&clone, 0.0, 0);
        std::vector<float> size(1, 1.0f), alpha(1, 1.0f);
        std::vector<ArrayAndIndex_cls> order = {ArrayAndIndex_cls{0, 0.0f}};
        exec.Execute(alpha.data(), factor, 2, size.data(), type.data(), order.data(), 1);
        EXPECT_FLOAT_EQ(size[0], 1.0f);
        const float xyz[3] = {0.0f, 0.0f, -1000.0f};
        const double pos[3] = {0, 0, 0}, dir[3] = {0, 0, -1};
        exec.SetCamera(xyz, pos, dir);
        exec.Execute(alpha.data(), factor, 2, size.data(), type.data(), order.data(), 1);
        EXPECT_NEAR(size[0], 10.0f, 1e-4);
    }
    {
        SCOPED_TRACE("switched off");
        mod.mValidity.SetBodyFromData(0LL);
        AttributeClone_cls clone = CloneOf(mod);
        ModifyApparentSizeExec_cls exec(&clone, 0.0, 1);
        std::vector<float> size(4, 1.0f), alpha(4, 1.0f);
        const std::vector<ArrayAndIndex_cls> order = Order(depths);
        exec.Execute(alpha.data(), factor, 2, size.data(), type.data(), order.data(), 4);
        EXPECT_EQ(size, std::vector<float>(4, 1.0f));
        EXPECT_EQ(alpha, std::vector<float>(4, 1.0f));
    }
}

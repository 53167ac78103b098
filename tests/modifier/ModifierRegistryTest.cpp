// The kind table as each registry leaves it: every kind of the layers it reached, with the hooks
// its layers add, and nothing of a registry before it.
#include "ClassProvider_cls.h"
#include "KindTable_cls.h"
#include "ParticleForRender_cls.h"
#include "ServiceRegistry.h"

#include <gtest/gtest.h>

namespace {

using Group = KindTable_cls::Group_enum;
using Layer = ServiceLayer_enum;

const struct {
    const char* pClass;
    Group group;
    Layer layer;
} kKinds[] = {
    {"Primitive_cls", KindTable_cls::GROUP_OBJECT, Layer::Scene},
    {"MeshObj_cls", KindTable_cls::GROUP_OBJECT, Layer::Scene},
    {"TextObj_cls", KindTable_cls::GROUP_OBJECT, Layer::Scene},
    {"LightSource_cls", KindTable_cls::GROUP_OBJECT, Layer::Scene},
    {"Camera_cls", KindTable_cls::GROUP_OBJECT, Layer::Scene},
    {"World_cls", KindTable_cls::GROUP_OBJECT, Layer::Scene},
    {"Particle_cls", KindTable_cls::GROUP_OBJECT, Layer::Viewer},
    {"VolumeBox_cls", KindTable_cls::GROUP_OBJECT, Layer::Viewer},
    {"Isosurface_cls", KindTable_cls::GROUP_OBJECT, Layer::Viewer},
    {"HeightField_cls", KindTable_cls::GROUP_OBJECT, Layer::Viewer},
    {"Streamline_cls", KindTable_cls::GROUP_OBJECT, Layer::Viewer},
    {"ColorCurve_cls", KindTable_cls::GROUP_COLOR_CURVE, Layer::Viewer},
    {"SequenceRemap_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"ParticleFiltering_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"ModifyParticleSize_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"ModifyApparentSize_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"ParticleBoolean_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"ParticleTweak_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"Trimming_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"Tracking_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"ArrayCopy_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"TexSpaceMod_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"VolumeCoord_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"VolumeMask_cls", KindTable_cls::GROUP_MODIFIER, Layer::Modifier},
    {"ParticleDownsizing_cls", KindTable_cls::GROUP_DATA_PROC, Layer::Modifier},
    {"ParticleMerge_cls", KindTable_cls::GROUP_DATA_PROC, Layer::Modifier},
    {"VolumeBoolean_cls", KindTable_cls::GROUP_DATA_PROC, Layer::Modifier},
    {"VolumeDownsize_cls", KindTable_cls::GROUP_DATA_PROC, Layer::Modifier},
    {"StreamFiltering_cls", KindTable_cls::GROUP_DATA_PROC, Layer::Modifier},
    {"StreamSetAlpha_cls", KindTable_cls::GROUP_DATA_PROC, Layer::Modifier},
    {"StreamTransform_cls", KindTable_cls::GROUP_DATA_PROC, Layer::Modifier},
};

// Each kind of a layer up to top is there in its group with its maker; no other kind is.
void ExpectKindsUpTo(Layer top) {
    size_t expected = 0;
    for (const auto& k : kKinds) {
        SCOPED_TRACE(k.pClass);
        const KindTable_cls::Entry_cls* p = KindTable_cls::Find(k.pClass, k.group);
        ASSERT_EQ(p != nullptr, k.layer <= top);
        if (!p)
            continue;
        ++expected;
        EXPECT_TRUE(k.group == KindTable_cls::GROUP_OBJECT ? bool(p->mFuncMake)
                                                           : bool(p->mFuncMakeAttribute));
    }
    size_t count = 0;
    for (Group g : {KindTable_cls::GROUP_OBJECT, KindTable_cls::GROUP_MODIFIER,
                    KindTable_cls::GROUP_DATA_PROC, KindTable_cls::GROUP_COLOR_CURVE})
        count += KindTable_cls::GetClassWords(g).size();
    EXPECT_EQ(count, expected);
}

} // namespace

TEST(ModifierRegistry, EachRegistryHoldsTheKindsOfItsLayersAndNothingOfTheLast) {
    RegisterServices<Layer::Modifier>();
    {
        SCOPED_TRACE("modifier registry");
        ExpectKindsUpTo(Layer::Modifier);
    }
    EXPECT_NE(ParticleForRender_cls::GetModifierFunc(), nullptr);
    EXPECT_TRUE(KindTable_cls::Find("Tracking_cls")->mFuncTransform);
    EXPECT_TRUE(KindTable_cls::Find("ArrayCopy_cls")->mFuncCopyCount);
    EXPECT_TRUE(KindTable_cls::Find("Particle_cls")->mFuncNewMaterial); // the viewer's hooks stay

    // The next test stops at the viewers: the pipeline of the last one must not run in its passes.
    RegisterServices<Layer::Viewer>();
    {
        SCOPED_TRACE("viewer registry");
        ExpectKindsUpTo(Layer::Viewer);
    }
    EXPECT_EQ(ParticleForRender_cls::GetModifierFunc(), nullptr);

    RegisterServices<Layer::Scene>();
    {
        SCOPED_TRACE("scene registry");
        ExpectKindsUpTo(Layer::Scene);
    }

    ClassProvider_cls::ResetRegistrations();
    KindTable_cls::Clear();
}

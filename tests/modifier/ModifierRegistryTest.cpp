// The kind table as each registry leaves it: every kind of the layers it reached, with the hooks
// its layers add, and nothing of a registry before it.
#include "ClassProvider_cls.h"
#include "KindTable_cls.h"
#include "ParticleForRender_cls.h"
#include "ServiceRegistry.h"

#include <gtest/gtest.h>

namespace {

using Layer = ServiceLayer_enum;

// The number of kinds in each group (objects, modifiers, data processes, colour curves); each
// object kind has its maker and every other kind its attribute maker.
std::vector<size_t> KindCounts() {
    std::vector<size_t> v;
    for (auto g : {KindTable_cls::GROUP_OBJECT, KindTable_cls::GROUP_MODIFIER, KindTable_cls::GROUP_DATA_PROC,
                   KindTable_cls::GROUP_COLOR_CURVE}) {
        v.push_back(KindTable_cls::GetClassWords(g).size());
        for (const wxString& str : KindTable_cls::GetClassWords(g)) {
            const KindTable_cls::Entry_cls* p = KindTable_cls::Find(str, g);
            EXPECT_TRUE(g == KindTable_cls::GROUP_OBJECT ? bool(p->mFuncMake) : bool(p->mFuncMakeAttribute))
                << str;
        }
    }
    return v;
}

} // namespace

TEST(ModifierRegistry, EachRegistryHoldsTheKindsOfItsLayersAndNothingOfTheLast) {
    RegisterServices<Layer::Modifier>();
    EXPECT_EQ(KindCounts(), (std::vector<size_t>{11, 12, 7, 1}));
    EXPECT_NE(ParticleForRender_cls::GetModifierFunc(), nullptr);
    EXPECT_TRUE(KindTable_cls::Find("Tracking_cls", KindTable_cls::GROUP_MODIFIER)->mFuncTransform);
    EXPECT_TRUE(KindTable_cls::Find("ArrayCopy_cls", KindTable_cls::GROUP_MODIFIER)->mFuncCopyCount);
    EXPECT_NE(KindTable_cls::Find("ParticleDownsizing_cls", KindTable_cls::GROUP_DATA_PROC), nullptr);
    EXPECT_TRUE(KindTable_cls::Find("Particle_cls")->mFuncNewMaterial); // the viewer's hooks stay

    // The next test stops at the viewers: the pipeline of the last one must not run in its passes.
    RegisterServices<Layer::Viewer>();
    EXPECT_EQ(KindCounts(), (std::vector<size_t>{11, 0, 0, 1}));
    EXPECT_EQ(ParticleForRender_cls::GetModifierFunc(), nullptr);
    EXPECT_NE(KindTable_cls::Find("Streamline_cls", KindTable_cls::GROUP_OBJECT), nullptr);

    RegisterServices<Layer::Scene>();
    EXPECT_EQ(KindCounts(), (std::vector<size_t>{6, 0, 0, 0}));
    EXPECT_EQ(KindTable_cls::Find("Particle_cls"), nullptr);

    ClassProvider_cls::ResetRegistrations();
    KindTable_cls::Clear();
}

// The modifier layer's part of the registry, and what a lower registry made after it leaves.
#include "ClassProvider_cls.h"
#include "ParticleForRender_cls.h"
#include "SceneObj_cls.h"
#include "ServiceRegistry.h"

#include <gtest/gtest.h>

TEST(ModifierRegistry, ALowerRegistryAfterAHigherOneLeavesNoModifierSeamBehind) {
    RegisterServices<ServiceLayer_enum::Modifier>();
    EXPECT_TRUE(ParticleForRender_cls::msFuncParticleModifier);
    EXPECT_TRUE(SceneObj_cls::msFuncTracking);
    EXPECT_TRUE(SceneObj_cls::msFuncArrayCopyCount);

    // The next test stops at the viewers: the pipeline of the last one must not run in its passes.
    RegisterServices<ServiceLayer_enum::Viewer>();
    EXPECT_FALSE(ParticleForRender_cls::msFuncParticleModifier);
    EXPECT_FALSE(SceneObj_cls::msFuncTracking);
    EXPECT_FALSE(SceneObj_cls::msFuncArrayCopyCount);

    ClassProvider_cls::ResetRegistrations();
    SceneObj_cls::ResetRegistrations();
}

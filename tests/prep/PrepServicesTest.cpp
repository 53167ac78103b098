#include "ClassProvider_cls.h"
#include "ParticleForRender_cls.h"
#include "ServiceRegistry.h"
#include "ThreadCommon_cls.h"

#include <gtest/gtest.h>
#include <wx/thread.h>

TEST(PrepServices, StartUpSizesThePassesByTheMachine) {
    int old = ThreadCommon_cls::msCPUCount.load();
    ThreadCommon_cls::msCPUCount = 1;
    RegisterServices<ServiceLayer_enum::Prep>();
    ClassProvider_cls::InitializeStaticMembers();
    EXPECT_EQ(ThreadCommon_cls::msCPUCount.load(), std::max(1, wxThread::GetCPUCount()));
    ClassProvider_cls::ResetRegistrations();
    ThreadCommon_cls::msCPUCount = old;
}

TEST(PrepServices, ANewRegistryForgetsTheModifierSeamOfTheLastOne) {
    // What the modifier layer of an earlier registry installed.
    ParticleForRender_cls::msFuncParticleModifier = [](int, ParticleModifierCall_cls&) {};
    RegisterServices<ServiceLayer_enum::Prep>();
    EXPECT_FALSE(ParticleForRender_cls::msFuncParticleModifier);
    ClassProvider_cls::ResetRegistrations();
}

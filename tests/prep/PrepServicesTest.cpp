#include "ClassProvider_cls.h"
#include "KindTable_cls.h"
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

TEST(PrepServices, ANewRegistryForgetsTheModifierPipelineOfTheLastOne) {
    // What the modifier layer of an earlier registry put in the particle kind.
    KindTable_cls::Register("Particle_cls", KindTable_cls::GROUP_OBJECT)
        .SetSlot(KindTable_cls::SLOT_PREPARE,
                 ParticleForRender_cls::ModifierFunc([](int, ParticleModifierCall_cls&) {}));
    ASSERT_NE(ParticleForRender_cls::GetModifierFunc(), nullptr);
    RegisterServices<ServiceLayer_enum::Prep>();
    EXPECT_EQ(ParticleForRender_cls::GetModifierFunc(), nullptr);
    ClassProvider_cls::ResetRegistrations();
    KindTable_cls::Clear();
}

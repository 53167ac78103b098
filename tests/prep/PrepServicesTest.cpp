#include "PrepServices.h"
#include "ClassProvider_cls.h"
#include "ThreadCommon_cls.h"

#include <gtest/gtest.h>
#include <wx/thread.h>

TEST(PrepServices, StartUpSizesThePassesByTheMachine) {
    int old = ThreadCommon_cls::msCPUCount.load();
    ThreadCommon_cls::msCPUCount = 1;
    ClassProvider_cls::ResetRegistrations();
    RegisterPrepServices();
    ClassProvider_cls::InitializeStaticMembers();
    EXPECT_EQ(ThreadCommon_cls::msCPUCount.load(), std::max(1, wxThread::GetCPUCount()));
    ClassProvider_cls::ResetRegistrations();
    ThreadCommon_cls::msCPUCount = old;
}

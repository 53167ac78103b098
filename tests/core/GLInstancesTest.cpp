// The registry's GL objects follow the shared context: made once while it is current, freed once
// before it goes, made again for a later context; nothing without a registration.
#include "ClassProvider_cls.h"

#include <gtest/gtest.h>

#include <utility>

TEST(GLInstancesTest, MadeOncePerContextAndFreedOnceBeforeItGoes) {
    ClassProvider_cls::ResetRegistrations();
    int made = 0, freed = 0;
    ClassProvider_cls::SetGLInstanceMaker([&] { ++made; }, [&] { ++freed; });
    ClassProvider_cls provider;
    struct Step_cls {
        const char* strWhat;
        bool bCreate;
        std::pair<int, int> counts; // made, freed
    };
    const Step_cls steps[] = {
        {"the first context", true, {1, 0}},     {"a second canvas in the same context", true, {1, 0}},
        {"the last canvas goes", false, {1, 1}}, {"nothing left to free", false, {1, 1}},
        {"a new context", true, {2, 1}},         {"and its end", false, {2, 2}},
    };
    for (const Step_cls& step : steps) {
        SCOPED_TRACE(step.strWhat);
        if (step.bCreate)
            provider.CreateGLInstances();
        else
            provider.DeleteGLInstances();
        EXPECT_EQ(std::make_pair(made, freed), step.counts);
    }
    // Without a registration both do nothing.
    ClassProvider_cls::ResetRegistrations();
    provider.CreateGLInstances();
    provider.DeleteGLInstances();
    EXPECT_EQ(std::make_pair(made, freed), std::make_pair(2, 2));
}

#include "ModifierFixture.h"

#include "ArrayAndIndex_cls.h"
#include "AttributeClone_cls.h"
#include "ParticleFilteringExec_cls.h"
#include "ParticleFiltering_cls.h"

#include <vector>

namespace {

// Runs the filter over n particles shown in reverse order, every alpha starting at start.
std::vector<float> RunFilter(ParticleFiltering_cls& mod, int n, float start, long long count = -1,
                             const int64_t* pID = nullptr) {
    AttributeClone_cls clone;
    mod.Clone(clone);
    ParticleFilteringExec_cls exec(&clone);
    exec.SetIDs(pID);
    std::vector<ArrayAndIndex_cls> order(n);
    for (int i = 0; i < n; ++i)
        order[i] = ArrayAndIndex_cls{n - 1 - i, static_cast<float>(i)};
    std::vector<float> alpha(n, start);
    exec.CheckFiltering(alpha.data(), order.data(), n, count < 0 ? n : count);
    // Back into particle order, so the expectations read by particle.
    std::vector<float> byParticle(n);
    for (int i = 0; i < n; ++i)
        byParticle[order[i].mIndex] = alpha[i];
    return byParticle;
}

} // namespace

TEST_F(ModifierFixture, FilteringShowHideAndForce) {
    ParticleFiltering_cls mod("Filter");
    struct Case {
        int type;
        const char* list;
        float start;
        std::vector<float> expect;
    };
    const Case cases[] = {
        {0, "", 1.0f, {0, 0, 0, 0, 0, 0}}, // show nothing listed: none shown
        {0, "1,3-4", 1.0f, {0, 1, 0, 1, 1, 0}},
        {0, "4-3", 0.5f, {0, 0, 0, 0.5f, 0.5f, 0}}, // a reversed range is the same range
        {1, "1,3-4", 1.0f, {1, 0, 1, 0, 0, 1}},
        {1, "", 0.5f, {0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f}}, // hide nothing
        {2, "0-1,5", 0.0f, {1, 1, 0, 0, 0, 1}},
        {0, "2, 9-20", 1.0f, {0, 0, 1, 0, 0, 0}}, // blanks and ranges past the end
        {0, "x,2", 1.0f, {0, 0, 1, 0, 0, 0}},     // an unreadable block is skipped
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(wxString::Format("type %d list \"%s\"", c.type, c.list).ToStdString());
        mod.mCFilteringType.SetBodyFromData(static_cast<long long>(c.type));
        mod.mCFilteringString.SetBodyFromData(wxString(c.list));
        const std::vector<float> got = RunFilter(mod, 6, c.start);
        ASSERT_EQ(got.size(), c.expect.size());
        for (size_t i = 0; i < got.size(); ++i)
            EXPECT_FLOAT_EQ(got[i], c.expect[i]) << "particle " << i;
    }
}

TEST_F(ModifierFixture, FilteringByIDAndBeyondTheList) {
    ParticleFiltering_cls mod("Filter");
    mod.mCFilteringString.SetBodyFromData(wxString("100-101"));
    mod.mCIndexType.SetBodyFromData(1LL);
    const int64_t ids[4] = {103, 101, 100, 7};
    {
        SCOPED_TRACE("show by ID");
        const std::vector<float> got = RunFilter(mod, 4, 1.0f, -1, ids);
        EXPECT_EQ(got, (std::vector<float>{0, 1, 1, 0}));
    }
    {
        SCOPED_TRACE("hide by ID");
        mod.mCFilteringType.SetBodyFromData(1LL);
        const std::vector<float> got = RunFilter(mod, 4, 1.0f, -1, ids);
        EXPECT_EQ(got, (std::vector<float>{1, 0, 0, 1}));
    }
    {
        // Particles beyond the flags: shown-only hides them, hiding leaves them alone.
        SCOPED_TRACE("beyond the list");
        mod.mCIndexType.SetBodyFromData(0LL);
        mod.mCFilteringString.SetBodyFromData(wxString("0-10"));
        mod.mCFilteringType.SetBodyFromData(0LL);
        EXPECT_EQ(RunFilter(mod, 4, 1.0f, 2), (std::vector<float>{1, 1, 0, 0}));
        mod.mCFilteringType.SetBodyFromData(1LL);
        EXPECT_EQ(RunFilter(mod, 4, 1.0f, 2), (std::vector<float>{0, 0, 1, 1}));
    }
    {
        SCOPED_TRACE("switched off");
        mod.mValidity.SetBodyFromData(0LL);
        EXPECT_EQ(RunFilter(mod, 4, 1.0f), (std::vector<float>{1, 1, 1, 1}));
    }
}

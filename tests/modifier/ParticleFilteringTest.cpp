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

TEST_F(ModifierFixture, FilteringShowHideAndForceByIndexOrID) {
    ParticleFiltering_cls mod("Filter");
    const int64_t ids[4] = {103, 101, 100, 7};
    struct Case {
        int type;
        const char* list;
        float start;
        std::vector<float> expect; // one per particle
        bool bByID = false;
        long long count = -1; // particles with flags; -1: all
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
        {0, "100-101", 1.0f, {0, 1, 1, 0}, true},
        {1, "100-101", 1.0f, {1, 0, 0, 1}, true},
        // Particles beyond the flags: shown-only hides them, hiding leaves them alone.
        {0, "0-10", 1.0f, {1, 1, 0, 0}, false, 2},
        {1, "0-10", 1.0f, {0, 0, 1, 1}, false, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(wxString::Format("type %d list \"%s\" by ID %d", c.type, c.list, c.bByID).ToStdString());
        mod.mCFilteringType.SetBodyFromData(static_cast<long long>(c.type));
        mod.mCFilteringString.SetBodyFromData(wxString(c.list));
        mod.mCIndexType.SetBodyFromData(c.bByID ? 1LL : 0LL);
        const int n = static_cast<int>(c.expect.size());
        const std::vector<float> got = RunFilter(mod, n, c.start, c.count, c.bByID ? ids : nullptr);
        ASSERT_EQ(got.size(), c.expect.size());
        for (size_t i = 0; i < got.size(); ++i)
            EXPECT_FLOAT_EQ(got[i], c.expect[i]) << "particle " << i;
    }
    SCOPED_TRACE("switched off");
    mod.mValidity.SetBodyFromData(0LL);
    EXPECT_EQ(RunFilter(mod, 4, 1.0f), (std::vector<float>{1, 1, 1, 1}));
}

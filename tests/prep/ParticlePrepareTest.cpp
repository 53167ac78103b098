// Frame preparation of particles: matching by ID, the interpolation forms, the vanish rules, the
// fall-back to Step, the change stamp, the sort keys and the classification by expression.
#include "ConfItem_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleSnap_cls.h"
#include "TestSupport.h"
#include "ThreadInterpStep_cls.h"
#include "ThreadSetArrayZ_cls.h"
#include "ViewerClone_cls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace {

using Keys = std::map<wxString, wxString>;

struct SnapDesc {
    std::vector<int> ids; // empty: no ID column
    std::vector<float> xyz;
    std::vector<unsigned char> types;
    std::vector<float> sizes;
    double time = 0.0;
};

std::unique_ptr<ParticleSnap_cls> MakeSnap(const SnapDesc& desc) {
    auto pSnap = std::make_unique<ParticleSnap_cls>(nullptr, 0);
    const int n = static_cast<int>(desc.xyz.size() / 3);
    pSnap->mHasID = !desc.ids.empty();
    pSnap->mHasType = !desc.types.empty();
    pSnap->mHasSize = !desc.sizes.empty();
    pSnap->AllocateIfNot(n);
    std::copy(desc.xyz.begin(), desc.xyz.end(), pSnap->mXYZ.get());
    std::copy(desc.ids.begin(), desc.ids.end(), pSnap->mID.get());
    std::copy(desc.types.begin(), desc.types.end(), pSnap->mType.get());
    std::copy(desc.sizes.begin(), desc.sizes.end(), pSnap->mSize.get());
    pSnap->mTime = desc.time;
    return pSnap;
}

// Particles on the x axis at x = id * scale, one per ID.
SnapDesc Line(const std::vector<int>& ids, float scale, double time) {
    SnapDesc s;
    s.ids = ids;
    for (int id : ids) {
        s.xyz.insert(s.xyz.end(), {id * scale, 1.0f * id, 0.0f});
        s.types.push_back(0);
        s.sizes.push_back(2.0f);
    }
    s.time = time;
    return s;
}

ViewerClone_cls* MakeViewer(const Keys& keys) {
    auto* pViewer = new ViewerClone_cls;
    for (const auto& kv : keys)
        pViewer->mCConfList.Add(new ConfItemSTR_cls, kv.first, kv.second);
    return pViewer;
}

// Adds a clone of an attribute of the given class with text items; returns it (owned by the viewer).
AttributeClone_cls* AddClone(ViewerClone_cls* pViewer, const wxString& strClass, const Keys& keys) {
    auto* pClone = new AttributeClone_cls;
    pClone->mStrAttributeName = strClass;
    for (const auto& kv : keys)
        pClone->mCConfList.Add(new ConfItemSTR_cls, kv.first, kv.second);
    pViewer->AddAttribute(pClone);
    return pClone;
}

// Adds a group of two members with its values to the clone.
void AddGroup(AttributeClone_cls* pClone, const char* pName, const char* pA, const char* pB, double a,
              double b) {
    pClone->mVCParamGroup.emplace_back(pName, Names({pA, pB}));
    pClone->mVCParamGroup.back().SetInitValue(a, b);
}

Keys ByID(int interp, int vanish = 2, int extrapolate = 0) {
    return {{"InterpolateBy=", "1"},
            {"InterpType=", wxString::Format("%d", interp)},
            {"VanishSizeType=", wxString::Format("%d", vanish)},
            {"ExtrapolateType=", wxString::Format("%d", extrapolate)}};
}

// The frame between a and b at t; the viewer clone goes to the pass.
bool Prepare(ParticleForRender_cls& out, ParticleSnap_cls* a, ParticleSnap_cls* b, double t,
             ViewerClone_cls* pViewer, ParticleSnap_cls* s0 = nullptr, ParticleSnap_cls* s3 = nullptr,
             int step = 0, const PositionAndDirection_cls& cam = PositionAndDirection_cls(),
             bool bNext = false) {
    return out.PrepareData(a, b, s0, s3, step, 0, 0, t, pViewer, nullptr, 0.0, cam, bNext);
}

// Checks that every array of two frames is the same to the bit; returns the elements of size 0, or -1
// at the first difference.
int CountZeroSizesOfSameArrays(const ParticleForRender_cls& x, const ParticleForRender_cls& y) {
    EXPECT_EQ(x.mNumber, y.mNumber);
    int zero = 0;
    for (long long o = 0; o < std::min(x.mNumber, y.mNumber); ++o) {
        bool bSame = x.mType[o] == y.mType[o] && x.mSize[o] == y.mSize[o] && x.mColorS[o] == y.mColorS[o] &&
                     x.mColorT[o] == y.mColorT[o];
        for (int k = 0; k < 3; ++k)
            bSame = bSame && x.mXYZ[3 * o + k] == y.mXYZ[3 * o + k];
        if (!bSame) {
            ADD_FAILURE() << "output " << o << " differs";
            return -1;
        }
        zero += x.mSize[o] == 0.0f ? 1 : 0;
    }
    return zero;
}

void ExpectXYZ(const ParticleForRender_cls& out, int o, double x, double y, double z) {
    EXPECT_FLOAT_EQ(out.mXYZ[3 * o], static_cast<float>(x)) << "element " << o;
    EXPECT_FLOAT_EQ(out.mXYZ[3 * o + 1], static_cast<float>(y)) << "element " << o;
    EXPECT_FLOAT_EQ(out.mXYZ[3 * o + 2], static_cast<float>(z)) << "element " << o;
}

} // namespace

TEST(ParticlePrepare, TimeZeroByIDGivesAExactly) {
    // IDs 2 vanishes, 4 is new; positions differ between the snaps.
    auto a = MakeSnap(Line({1, 2, 3, 5}, 1.0f, 0.0));
    auto b = MakeSnap(Line({1, 3, 4, 5}, 3.0f, 1.0));
    for (int interp : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(interp);
        a->CheckAllocateNextIndex(false);
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), b.get(), 0.0, MakeViewer(ByID(interp, 2, 1))));
        ASSERT_EQ(out.mNumber, 4);
        EXPECT_TRUE(std::equal(a->mXYZ.get(), a->mXYZ.get() + 12, out.mXYZ.get()));
    }
    EXPECT_EQ(std::vector<int>(a->mNextIndex.get(), a->mNextIndex.get() + 4),
              (std::vector<int>{0, -1, 1, 3}));
    EXPECT_EQ(b->mPrevIndex[2], -1) << "new particle in B has no predecessor";
    EXPECT_EQ(b->mPrevIndex[3], 3);
}

TEST(ParticlePrepare, VanishRulesAtHalfTime) {
    auto s0 = MakeSnap(Line({1, 2, 3}, 0.5f, 0.0));
    auto a = MakeSnap(Line({1, 2, 3}, 1.0f, 1.0));
    auto b = MakeSnap(Line({1, 3}, 2.0f, 2.0));
    // The pair (s0, a) is searched first, as the frame before would have done.
    ParticleForRender_cls before;
    ASSERT_TRUE(Prepare(before, s0.get(), a.get(), 0.5, MakeViewer(ByID(1))));
    ASSERT_EQ(a->mPrevIndex[1], 1);
    struct Case {
        int vanish, extrapolate;
        float size, x;
    } cases[] = {
        {2, 0, 0.0f, 2.0f}, // Set to 0, stays
        {1, 0, 1.0f, 2.0f}, // Decrease size
        {0, 0, 2.0f, 2.0f}, // Constant size
        {2, 1, 0.0f, 2.5f}, // moves on: 2 + (2 - 1) * 0.5
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "vanish " << c.vanish << " extrapolate " << c.extrapolate);
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), b.get(), 0.5, MakeViewer(ByID(1, c.vanish, c.extrapolate)),
                            s0.get(), nullptr, 1));
        ASSERT_EQ(out.mNumber, 3);
        EXPECT_FLOAT_EQ(out.mSize[1], c.size);
        EXPECT_FLOAT_EQ(out.mXYZ[3], c.x);
        // The survivors interpolate: id 3 from 3 to 6.
        EXPECT_FLOAT_EQ(out.mXYZ[6], 4.5f);
        EXPECT_FLOAT_EQ(out.mSize[2], 2.0f);
    }
    SCOPED_TRACE("a type change counts as vanished");
    SnapDesc sa = Line({1, 2}, 1.0f, 0.0), sb = Line({1, 2}, 2.0f, 1.0);
    sb.types[1] = 3;
    auto ta = MakeSnap(sa);
    auto tb = MakeSnap(sb);
    ParticleForRender_cls out;
    ASSERT_TRUE(Prepare(out, ta.get(), tb.get(), 0.5, MakeViewer(ByID(1))));
    EXPECT_EQ(ta->mNextIndex[0], 0);
    EXPECT_EQ(ta->mNextIndex[1], -1);
    EXPECT_EQ(tb->mPrevIndex[1], -1);
    ExpectXYZ(out, 0, 1.5, 1.0, 0.0);
    ExpectXYZ(out, 1, 2.0, 2.0, 0.0);
    EXPECT_FLOAT_EQ(out.mSize[1], 0.0f);
}

TEST(ParticlePrepare, DifferentCountsByIndexFallToStep) {
    auto a = MakeSnap(Line({1, 2, 3}, 1.0f, 0.0));
    auto b3 = MakeSnap(Line({1, 2, 3}, 3.0f, 1.0));
    auto b4 = MakeSnap(Line({1, 2, 3, 4}, 3.0f, 1.0));
    for (int interp : {1, 2, 3, 4}) {
        SCOPED_TRACE(interp);
        const Keys keys = {{"InterpolateBy=", "0"}, {"InterpType=", wxString::Format("%d", interp)}};
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), b4.get(), 0.5, MakeViewer(keys)));
        for (int i = 0; i < 3; ++i)
            ExpectXYZ(out, i, i + 1.0, i + 1.0, 0.0);
        // Same count: it does interpolate.
        ASSERT_TRUE(Prepare(out, a.get(), b3.get(), 0.5, MakeViewer(keys)));
        EXPECT_GT(out.mXYZ[0], 1.0f);
    }
    // The same snaps by ID do match and interpolate.
    ParticleForRender_cls out;
    ASSERT_TRUE(Prepare(out, a.get(), b4.get(), 0.5, MakeViewer(ByID(1))));
    ExpectXYZ(out, 2, 6.0, 3.0, 0.0);
}

namespace {

// The widening search as a plain scan, one place at a time, from its description: the fast search must
// give the same index for any array, sorted or not, since unsorted input is not detected.
int PlainStage(const std::vector<int>& ids, int lo, int hi, int id, int look, bool& bInWindow) {
    bInWindow = true;
    for (int i = lo; i < hi;) {
        if (look > 0 && i + look < hi && ids[i + look] < id) {
            i += look + 1;
            continue;
        }
        if (ids[i] == id)
            return i;
        if (ids[i] > id) {
            bInWindow = i > lo || lo == 0;
            return -1;
        }
        ++i;
    }
    bInWindow = hi >= static_cast<int>(ids.size());
    return -1;
}

int PlainSearch(const std::vector<int>& ids, int hint, int id) {
    const int n = static_cast<int>(ids.size());
    if (n == 0)
        return -1;
    hint = std::clamp(hint, 0, n - 1);
    const int window[4] = {10, 100, 1000, 10000}, look[4] = {0, 10, 100, 1000};
    bool bInWindow = false;
    for (int s = 0; s < 4; ++s) {
        const int r = PlainStage(ids, std::max(0, hint - window[s]), std::min(n, hint + window[s] + 1), id,
                                 look[s], bInWindow);
        if (bInWindow)
            return r;
    }
    return PlainStage(ids, 0, n, id, 1000, bInWindow);
}

} // namespace

TEST(ParticlePrepare, SearchAgreesWithThePlainScanOnAnyArray) {
    std::mt19937 rng(3);
    for (int n : {1, 2, 3, 4, 5, 7, 11, 50, 1003, 4099, 30011}) {
        std::vector<int> sorted(n);
        int id = -n;
        for (int& v : sorted)
            v = (id += 1 + static_cast<int>(rng() % 3)); // ascending with gaps, negatives included
        std::vector<int> shuffled = sorted;
        std::shuffle(shuffled.begin() + n / 4, shuffled.begin() + n / 2, rng);
        std::vector<int> repeated = sorted;
        for (int k = 0; k + 1 < n; k += 5)
            repeated[k + 1] = repeated[k];
        std::vector<int> descending(sorted.rbegin(), sorted.rend());
        const std::pair<const char*, const std::vector<int>*> arrays[] = {{"sorted", &sorted},
                                                                          {"partly shuffled", &shuffled},
                                                                          {"repeated", &repeated},
                                                                          {"descending", &descending}};
        for (const auto& [name, pIDs] : arrays) {
            SCOPED_TRACE(testing::Message() << name << ", " << n << " IDs");
            const std::vector<int>& ids = *pIDs;
            std::vector<long long> idsLong(ids.begin(), ids.end());
            for (int k = 0; k < 3000; ++k) {
                const int hint = static_cast<int>(rng() % (n + 40)) - 20;
                // IDs of the array, and others between, below and above them.
                const int target =
                    k % 2 == 0 ? ids[rng() % n] : static_cast<int>(rng() % (4 * n + 20)) - 2 * n - 10;
                const int want = PlainSearch(ids, hint, target);
                ASSERT_EQ(ThreadInterpStep_cls::SearchIDFrom(ids.data(), n, hint, target), want)
                    << "hint " << hint << " id " << target;
                ASSERT_EQ(ThreadInterpStep_cls::SearchIDLongFrom(idsLong.data(), n, hint, target), want)
                    << "hint " << hint << " id " << target;
            }
        }
    }
    // The first window looks ten places either way and stops there.
    std::vector<int> even(1000);
    for (int i = 0; i < 1000; ++i)
        even[i] = 2 * i;
    EXPECT_EQ(ThreadInterpStep_cls::SearchIDNear10(even.data(), 1000, 100, 2 * 111), -1);
    EXPECT_EQ(ThreadInterpStep_cls::SearchIDNear10(even.data(), 1000, 100, 2 * 110), 110);
    EXPECT_EQ(ThreadInterpStep_cls::SearchIDFrom(even.data(), 0, 0, 0), -1);
    std::vector<long long> big = {1LL << 40, (1LL << 40) + 3, (1LL << 41)};
    EXPECT_EQ(ThreadInterpStep_cls::SearchIDLongFrom(big.data(), 3, 0, 1LL << 41), 2);
}

TEST(ParticlePrepare, CubicFormsAndMissingNeighbours) {
    double p0[3] = {0, 0, 0}, p1[3] = {1, 0, 0}, p2[3] = {2, 0, 0}, p3[3] = {3, 0, 0}, out[3];
    for (double t : {0.0, 0.25, 0.5, 1.0}) {
        SCOPED_TRACE(t);
        ThreadInterpStep_cls::ExecBezier(out, p0, p1, p2, p3, t);
        EXPECT_NEAR(out[0], 1.0 + t, 1e-12); // evenly spaced: straight and uniform
        ThreadInterpStep_cls::ExecBezier2(out, p0, p1, p2, p3, t);
        EXPECT_NEAR(out[0], 1.0 + t, 1e-12);
    }
    // A turn: both curves pass through their end points and leave the chord in between.
    double q0[3] = {0, 0, 0}, q1[3] = {1, 0, 0}, q2[3] = {1, 1, 0}, q3[3] = {0, 1, 0};
    ThreadInterpStep_cls::ExecBezier2(out, q0, q1, q2, q3, 0.0);
    EXPECT_DOUBLE_EQ(out[1], 0.0);
    ThreadInterpStep_cls::ExecBezier2(out, q0, q1, q2, q3, 1.0);
    EXPECT_DOUBLE_EQ(out[1], 1.0);
    ThreadInterpStep_cls::ExecBezier2(out, q0, q1, q2, q3, 0.5);
    EXPECT_GT(out[0], 1.0);
    ThreadInterpStep_cls::ExecBezier(out, q0, q1, q2, q3, 0.5);
    EXPECT_NEAR(out[0], 1.125, 1e-12);

    // Through the pass: without neighbour snaps, or when a partner is missing, cubic forms are linear.
    auto s0 = MakeSnap(Line({1, 2, 3}, 0.0f, 0.0));
    auto a = MakeSnap(Line({1, 2, 3}, 1.0f, 1.0));
    auto b = MakeSnap(Line({1, 2, 3}, 3.0f, 2.0));
    auto s3 = MakeSnap(Line({1, 3}, 9.0f, 3.0));
    for (int interp : {3, 4}) {
        SCOPED_TRACE(interp);
        ParticleForRender_cls out1;
        ASSERT_TRUE(Prepare(out1, a.get(), b.get(), 0.5, MakeViewer(ByID(interp)), nullptr, nullptr, 1));
        ExpectXYZ(out1, 0, 2.0, 1.0, 0.0);
        // s0 -> a first, then a -> b with both neighbours: id 2 has none after b.
        ParticleForRender_cls out0;
        ASSERT_TRUE(Prepare(out0, s0.get(), a.get(), 0.5, MakeViewer(ByID(1))));
        ParticleForRender_cls out2;
        ASSERT_TRUE(Prepare(out2, a.get(), b.get(), 0.5, MakeViewer(ByID(interp)), s0.get(), s3.get(), 1));
        ExpectXYZ(out2, 1, 4.0, 2.0, 0.0); // linear
        double e[3];
        double c0[3] = {0, 1, 0}, c1[3] = {1, 1, 0}, c2[3] = {3, 1, 0}, c3[3] = {9, 1, 0};
        if (interp == 3)
            ThreadInterpStep_cls::ExecBezier(e, c0, c1, c2, c3, 0.5);
        else
            ThreadInterpStep_cls::ExecBezier2(e, c0, c1, c2, c3, 0.5);
        ExpectXYZ(out2, 0, e[0], e[1], e[2]);
        EXPECT_NE(out2.mXYZ[0], 2.0f);
    }
}

TEST(ParticlePrepare, HermiteFollowsTheVelocitiesAndIsASmoothStepWithoutThem) {
    // Without velocity columns: the smooth step, and the size stays A's.
    auto a2 = MakeSnap(Line({1, 2}, 1.0f, 0.0));
    auto b2 = MakeSnap(Line({1, 2}, 3.0f, 2.0));
    ParticleForRender_cls plain;
    const double w = 3 * 0.25 * 0.25 - 2 * 0.25 * 0.25 * 0.25;
    ASSERT_TRUE(Prepare(plain, a2.get(), b2.get(), 0.25, MakeViewer(ByID(2))));
    ExpectXYZ(plain, 1, 2.0 + 4.0 * w, 2.0, 0.0);
    EXPECT_FLOAT_EQ(plain.mSize[1], 2.0f);

    SnapDesc sa = Line({1}, 0.0f, 0.0), sb = Line({1}, 0.0f, 2.0);
    sb.xyz = {4.0f, 0.0f, 0.0f};
    auto a = MakeSnap(sa);
    auto b = MakeSnap(sb);
    for (ParticleSnap_cls* p : {a.get(), b.get()}) {
        p->mHasVelocity = true;
        p->mVelocity.reset(new float[3]{2.0f, 0.0f, 0.0f});
    }
    // Constant velocity 2 over h = 2 from 0 to 4: the curve is the straight uniform motion.
    for (double t : {0.25, 0.5, 0.8}) {
        SCOPED_TRACE(t);
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), b.get(), t, MakeViewer(ByID(2))));
        EXPECT_NEAR(out.mXYZ[0], 4.0 * t, 1e-6);
    }
    // Zero velocity at both ends gives the smooth step instead.
    b->mVelocity[0] = a->mVelocity[0] = 0.0f;
    ParticleForRender_cls out;
    ASSERT_TRUE(Prepare(out, a.get(), b.get(), 0.25, MakeViewer(ByID(2))));
    EXPECT_NEAR(out.mXYZ[0], 4.0 * w, 1e-6);
}

// On the step itself (t = 0) the thinning takes its own road.
TEST(ParticlePrepare, DownsizeByIndexAndByIDOnTheStep) {
    auto a = MakeSnap(Line({10, 11, 12, 13, 15}, 1.0f, 0.0));
    auto b = MakeSnap(Line({10, 11, 12, 13, 15}, 1.0f, 1.0));
    for (int type : {0, 1}) {
        SCOPED_TRACE(type);
        auto* pViewer = MakeViewer(ByID(1));
        AddClone(pViewer, "ParticleDownsizing_cls",
                 {{"Downsize=", "2"}, {"DownsizeType=", type ? "1" : "0"}});
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), b.get(), 0.0, pViewer));
        // By index elements 0, 2, 4; by ID room for all, even IDs kept, the rest invisible.
        ASSERT_EQ(out.mNumber, type == 0 ? 3 : 5);
        EXPECT_FLOAT_EQ(out.mXYZ[0], 10.0f);
        EXPECT_FLOAT_EQ(out.mXYZ[3], 12.0f);
        if (type == 0) {
            EXPECT_FLOAT_EQ(out.mXYZ[6], 15.0f);
        } else {
            EXPECT_EQ(std::vector<float>(out.mSize.get() + 1, out.mSize.get() + 5),
                      (std::vector<float>{2.0f, 0.0f, 0.0f, 0.0f}));
        }
    }
}

TEST(ParticlePrepare, RepeatedFrameRunsNoPassAndNoSort) {
    auto a = MakeSnap(Line({1, 2, 3}, 1.0f, 0.0));
    auto b = MakeSnap(Line({1, 2, 3}, 2.0f, 1.0));
    auto keys = ByID(1);
    keys["SortType="] = "3";
    ParticleForRender_cls out;
    PositionAndDirection_cls cam;
    cam.mPos[2] = 10.0;
    double t = 0.5;
    // Each step changes one thing and says how the pass and the sort counters move.
    struct Step {
        const char* name;
        std::function<void()> change;
        int data, sort;
    };
    const Step steps[] = {
        {"first frame", [] {}, 1, 1},
        {"the same frame again", [] {}, 0, 0},
        {"camera moved: sort only", [&] { cam.mPos[0] = 1.0; }, 0, 1},
        {"another time", [&] { t = 0.75; }, 1, 1},
        {"a key changed", [&] { keys["VanishSizeType="] = "0"; }, 1, 1},
        {"another sort type without data change: sort", [&] { keys["SortType="] = "0"; }, 0, 1},
    };
    for (const Step& s : steps) {
        SCOPED_TRACE(s.name);
        const int data = out.mDataCounter, sort = out.mSortCounter;
        s.change();
        if (out.mXYZ)
            out.mXYZ[0] = -99.0f; // a pass overwrites this
        ASSERT_TRUE(Prepare(out, a.get(), b.get(), t, MakeViewer(keys), nullptr, nullptr, 0, cam));
        EXPECT_EQ(out.mDataCounter, data + s.data);
        EXPECT_EQ(out.mSortCounter, sort + s.sort);
        EXPECT_EQ(out.mXYZ[0] == -99.0f, s.data == 0);
    }
    SCOPED_TRACE("a counter changed: the item was edited");
    auto* pViewer = MakeViewer(keys);
    pViewer->GetPCItem("InterpType=")->SetBodyFromData(wxString("1"));
    const int data = out.mDataCounter;
    ASSERT_TRUE(Prepare(out, a.get(), b.get(), t, pViewer, nullptr, nullptr, 0, cam));
    EXPECT_EQ(out.mDataCounter, data + 1);
}

TEST(ParticlePrepare, SortKeysForEverySortType) {
    PositionAndDirection_cls cam; // at (1, 2, 3) looking along -z
    cam.mPos[0] = 1.0;
    cam.mPos[1] = 2.0;
    cam.mPos[2] = 3.0;
    const float p[3] = {4.0f, 6.0f, -9.0f}; // offset (3, 4, -12): depth 12, distance 13
    const float expect[8] = {0.0f, -12.0f, 12.0f, -13.0f, 13.0f, -5.0f, -12.0f, -13.0f};
    for (int s = 0; s < 8; ++s) {
        SCOPED_TRACE(s);
        EXPECT_FLOAT_EQ(ThreadSetArrayZ_cls::GetKey(s, p, 5, cam), expect[s]);
    }
    // Through the pass: distance sorts far first; 0 and 7 keep the data order.
    auto a = MakeSnap(Line({1, 5, 2, 4, 3}, 1.0f, 0.0));
    const std::pair<int, std::vector<int>> orders[] = {
        {0, {0, 1, 2, 3, 4}}, {3, {1, 3, 4, 2, 0}}, {4, {0, 2, 4, 3, 1}}, {7, {0, 1, 2, 3, 4}}};
    for (const auto& [s, expected] : orders) {
        SCOPED_TRACE(s);
        auto keys = ByID(0);
        keys["SortType="] = wxString::Format("%d", s);
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), a.get(), 0.0, MakeViewer(keys)));
        std::vector<int> order;
        for (int i = 0; i < 5; ++i)
            order.push_back(out.mOrder[i].mIndex);
        EXPECT_EQ(order, expected);
        if (s == 7) {
            EXPECT_NEAR(out.mOrder[1].mValue, -std::sqrt(50.0f), 1e-5);
        }
    }
}

TEST(ParticlePrepare, LargePassSortsInParallelAndMatchesAcrossWorkers) {
    const int n = 700000; // above the parallel-sort threshold, several workers
    SnapDesc sa, sb;
    sa.ids.resize(n);
    std::iota(sa.ids.begin(), sa.ids.end(), 0);
    sb.ids = sa.ids;
    sb.ids.erase(sb.ids.begin() + 1000); // one vanishes: every later partner sits one place earlier
    for (SnapDesc* p : {&sa, &sb})
        for (int id : p->ids)
            p->xyz.insert(p->xyz.end(), {static_cast<float>(id % 1000), static_cast<float>(id / 1000),
                                         p == &sb ? 2.0f : 0.0f});
    sb.time = 1.0;
    auto a = MakeSnap(sa);
    auto b = MakeSnap(sb);
    auto keys = ByID(1);
    keys["SortType="] = "3";
    ParticleForRender_cls out;
    ASSERT_TRUE(Prepare(out, a.get(), b.get(), 0.5, MakeViewer(keys)));
    ASSERT_EQ(out.mNumber, n);
    EXPECT_EQ(a->mNextIndex[1000], -1);
    EXPECT_EQ(a->mNextIndex[1001], 1000);
    EXPECT_FLOAT_EQ(out.mXYZ[3 * 1001 + 2], 1.0f);
    EXPECT_FLOAT_EQ(out.mXYZ[3 * 1000 + 2], 0.0f);
    std::vector<char> seen(n, 0);
    for (int k = 0; k < n; ++k) {
        if (k > 0) {
            ASSERT_LE(out.mOrder[k - 1].mValue, out.mOrder[k].mValue);
        }
        seen[out.mOrder[k].mIndex]++;
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), n);
}

TEST(ParticlePrepare, ClassificationByExpression) {
    auto a = MakeSnap(Line({1, 2, 3, 4}, 1.0f, 0.0));
    struct Case {
        const char* script;
        std::vector<int> types;
    } cases[] = {
        {"return id % 2", {1, 0, 1, 0}},
        {"return x * 2 + nt", {2, 4, 6, 8}},
        {"return (", {0, 0, 0, 0}},                   // does not compile
        {"error('no')", {0, 0, 0, 0}},                // the error text is no number
        {"while true do end return 1", {0, 0, 0, 0}}, // stopped by the work bound
    };
    auto keys = ByID(1);
    keys["ClassifyType="] = "1";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.script);
        keys["Classify="] = c.script;
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), a.get(), 0.0, MakeViewer(keys)));
        EXPECT_EQ(std::vector<int>(out.mType.get(), out.mType.get() + 4), c.types);
    }
    SCOPED_TRACE("nt is the frame's normalised time, not the factor between the steps");
    keys["Classify="] = "return nt * 2 + seq";
    ParticleForRender_cls out;
    ASSERT_TRUE(out.PrepareData(a.get(), a.get(), nullptr, nullptr, 4, 0, 0, 0.25, MakeViewer(keys), nullptr,
                                1.5, PositionAndDirection_cls(), false));
    EXPECT_EQ(out.mType[0], 7);
    // A later frame on the same step and factor (past the last step) is classified anew.
    ASSERT_TRUE(out.PrepareData(a.get(), a.get(), nullptr, nullptr, 4, 1, 0, 0.25, MakeViewer(keys), nullptr,
                                2.5, PositionAndDirection_cls(), false));
    EXPECT_EQ(out.mType[0], 9);
}

TEST(ParticlePrepare, CameraIsTakenIntoObjectSpace) {
    auto a = MakeSnap(Line({0, 1}, 1.0f, 0.0)); // particles at (0, 0, 0) and (1, 1, 0)
    auto* pViewer = MakeViewer({{"SortType=", "4"}});
    pViewer->mMatrix[12] = 10.0; // the object stands at x = 10
    PositionAndDirection_cls cam;
    cam.mPos[0] = 10.0;
    cam.mPos[2] = 5.0;
    ParticleForRender_cls out;
    ASSERT_TRUE(Prepare(out, a.get(), a.get(), 0.0, pViewer, nullptr, nullptr, 0, cam));
    EXPECT_NEAR(out.mLastCamera.mPos[0], 0.0, 1e-12);
    EXPECT_NEAR(out.mLastCamera.mPos[2], 5.0, 1e-12);
    // Distance inverse: the nearer particle first, keys measured from (0, 0, 5).
    EXPECT_EQ(out.mOrder[0].mIndex, 0);
    EXPECT_FLOAT_EQ(out.mOrder[0].mValue, 5.0f);
    EXPECT_FLOAT_EQ(out.mOrder[1].mValue, std::sqrt(27.0f));
}

TEST(ParticlePrepare, DownsizeAcrossWorkersKeepsEveryOutputInPlace) {
    // 30,003 elements (odd ranges): two workers on the path due now, one in the background; the outputs must
    // not depend on the split.
    const int n = 30003;
    std::vector<int> ids(n);
    for (int i = 0; i < n; ++i)
        ids[i] = 3 * i + 1; // ID % 2 alternates with i
    auto a = MakeSnap(Line(ids, 1.0f, 0.0));
    auto b = MakeSnap(Line(ids, 2.0f, 1.0));
    for (int type : {0, 1}) {
        for (bool bNext : {false, true}) {
            SCOPED_TRACE(testing::Message() << "type " << type << " background " << bNext);
            auto* pViewer = MakeViewer(ByID(1));
            AddClone(pViewer, "ParticleDownsizing_cls",
                     {{"Downsize=", "2"}, {"DownsizeType=", wxString::Format("%d", type)}});
            ParticleForRender_cls out;
            ASSERT_TRUE(Prepare(out, a.get(), b.get(), 0.5, pViewer, nullptr, nullptr, 0,
                                PositionAndDirection_cls(), bNext));
            ASSERT_EQ(out.mNumber, type == 0 ? (n + 1) / 2 : n);
            // Outputs are consecutive from each worker's start: by index the count kept before the
            // range, by ID the range's own start; by ID the rest of a range is invisible.
            const int threads = ThreadCommon_cls::GetThreadCount(n, bNext);
            int kept = 0;
            for (int w = 0; w < threads; ++w) {
                int ini = 0, fin = 0;
                ThreadCommon_cls::GetIniAndFin(ini, fin, w, threads, n);
                int o = type == 0 ? (ini + 1) / 2 : ini;
                for (int i = ini; i < fin; ++i) {
                    const long long key = type == 0 ? i : ids[i];
                    if (key % 2 != 0)
                        continue;
                    ASSERT_FLOAT_EQ(out.mXYZ[3 * o], 1.5f * ids[i]) << "element " << i << " output " << o;
                    ASSERT_GT(out.mSize[o], 0.0f);
                    ++o;
                    ++kept;
                }
                for (; type == 1 && o < fin; ++o)
                    ASSERT_EQ(out.mSize[o], 0.0f) << "output " << o;
            }
            EXPECT_EQ(kept, type == 0 ? (n + 1) / 2 : n / 2);
        }
    }
}

TEST(ParticlePrepare, ColourCoordinatesByDependAndBySortKey) {
    auto a = MakeSnap(Line({1, 2, 3}, 1.0f, 0.0)); // x = 1, 2, 3
    for (int depend : {6, 9}) {
        SCOPED_TRACE(depend == 6 ? "X depend" : "Sort index: minus the key over the range");
        auto* pViewer = MakeViewer({{"SortType=", "3"}});
        AddGroup(AddClone(pViewer, "ColorCurve_cls", {}), "Range", "min", "max", -4.0, 0.0);
        AddClone(pViewer, "MaterialParticle_cls",
                 {{"ColorCurveType=", "1"}, {"ColorCurveDepend=", wxString::Format("%d", depend)}});
        ParticleForRender_cls out;
        ASSERT_TRUE(Prepare(out, a.get(), a.get(), 0.0, pViewer)); // the camera at the origin
        for (int i = 0; i < 3; ++i) {
            if (depend == 6) {
                EXPECT_FLOAT_EQ(out.mColorS[i], (i + 1.0f + 4.0f) / 4.0f);
                EXPECT_FLOAT_EQ(out.mColorT[i], 0.5f / 3.0f);
            } else { // the key of "Distance" is minus the distance sqrt(2) (i + 1)
                EXPECT_NEAR(out.mColorS[i], (std::sqrt(2.0) * (i + 1) + 4.0) / 4.0, 1e-6) << "element " << i;
            }
        }
    }
}

namespace {

// Steps 0 to 3 of n IDs with random positions and sizes: every k-th ID (shifted by the step) is missing
// from a step, and some change their type, which counts as vanishing; the last ID is in every step.
std::vector<std::unique_ptr<ParticleSnap_cls>> RandomSteps(int n, int k, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> u(-50.0f, 50.0f);
    std::vector<std::unique_ptr<ParticleSnap_cls>> v;
    for (int step = 0; step < 4; ++step) {
        SnapDesc d;
        for (int id = 0; id < n; ++id) {
            if ((id + step) % k == 0 && id != n - 1)
                continue;
            d.ids.push_back(id);
            d.xyz.insert(d.xyz.end(), {u(rng), u(rng), u(rng)});
            d.types.push_back(static_cast<unsigned char>((id / 7 + (id % 97 == step ? 1 : 0)) % 6));
            d.sizes.push_back(0.25f + static_cast<float>(rng() % 50) / 7.0f);
        }
        d.time = step;
        v.push_back(MakeSnap(d));
    }
    return v;
}

// Prepares a frame twice, with the file's type and with an expression that returns it, and expects the
// same arrays to the bit; returns the count of vanished (size 0) outputs. The pass writes size and colour
// in the loop of the position when the file gives the type, in a loop of its own after the expression.
int ExpectSameArraysByExpression(ParticleForRender_cls (&out)[2], ParticleSnap_cls* a, ParticleSnap_cls* b,
                                 ParticleSnap_cls* s0, ParticleSnap_cls* s3, double t, Keys keys,
                                 const std::function<void(ViewerClone_cls*)>& addAttributes) {
    for (int classify : {0, 1}) {
        if (s0) { // the pair before first, so that the predecessors of A are known
            ParticleForRender_cls before;
            EXPECT_TRUE(Prepare(before, s0, a, 0.5, MakeViewer(ByID(1))));
        }
        keys["ClassifyType="] = wxString::Format("%d", classify);
        keys["Classify="] = "return type";
        auto* pViewer = MakeViewer(keys);
        addAttributes(pViewer);
        EXPECT_TRUE(Prepare(out[classify], a, b, t, pViewer, s0, s3, 1));
    }
    EXPECT_GT(out[0].mNumber, 0);
    const int vanished = CountZeroSizesOfSameArrays(out[0], out[1]);
    EXPECT_GE(vanished, 0);
    return vanished;
}

} // namespace

// Every form, vanish rule, material and downsize mode.
TEST(ParticlePrepare, ExpressionOfTheFileTypeGivesTheSameArrays) {
    const auto steps = RandomSteps(1000, 13, 9);
    ParticleSnap_cls *s0 = steps[0].get(), *a = steps[1].get(), *b = steps[2].get(), *s3 = steps[3].get();
    for (int by : {0, 1}) {
        for (int interp : {0, 1, 2, 3, 4}) {
            for (int vanish : {0, 1, 2}) {
                for (int extrapolate : {0, 1}) {
                    for (int downsizeType : {-1, 0, 1}) {
                        SCOPED_TRACE(testing::Message()
                                     << "by " << by << " interp " << interp << " vanish " << vanish
                                     << " extrapolate " << extrapolate << " downsize " << downsizeType);
                        auto keys = ByID(interp, vanish, extrapolate);
                        keys["InterpolateBy="] = wxString::Format("%d", by);
                        // Materials 0 to 3: sizes from the data or constant with their own factors, colour by
                        // index, size, ID and x; types 4 and 5 fall beyond them.
                        ParticleForRender_cls out[2];
                        const int vanished = ExpectSameArraysByExpression(
                            out, a, b, s0, s3, 0.375, keys, [&](ViewerClone_cls* pViewer) {
                                AddGroup(AddClone(pViewer, "ColorCurve_cls", {}), "Range", "min", "max", -2.0,
                                         40.0);
                                const int depend[4] = {0, 1, 2, 6};
                                for (int m = 0; m < 4; ++m)
                                    AddGroup(
                                        AddClone(pViewer, "MaterialParticle_cls",
                                                 {{"SizeType=", m == 2 ? "1" : "0"},
                                                  {"ColorCurveType=", m == 3 ? "0" : "1"},
                                                  {"ColorCurveDepend=", wxString::Format("%d", depend[m])}}),
                                        "SizeFactor", "point", "sphere", 1.5 + m, 2.0);
                                if (downsizeType >= 0)
                                    AddClone(pViewer, "ParticleDownsizing_cls",
                                             {{"Downsize=", "3"},
                                              {"DownsizeType=", wxString::Format("%d", downsizeType)}});
                            });
                        // The set-to-0 rule shows that the cases reach vanished particles at all.
                        if (by == 1 && vanish == 2 && interp != 0 && interp != 2) {
                            EXPECT_GT(vanished, 0);
                        }
                    }
                }
            }
        }
    }
}

// Without materials every row interpolates its size and takes no curve, which the pass writes by blocks with
// both position components pairs at once. Over several workers, blocks and vanished particles, the last
// particle of each snap included, that must give to the bit what the expression's in-place loop gives.
TEST(ParticlePrepare, PlainRowsByBlocksMatchTheInPlaceLoop) {
    const auto steps = RandomSteps(50001, 17, 21);
    ParticleSnap_cls *a = steps[1].get(), *b = steps[2].get();
    for (double t : {0.0, 0.3, 0.999}) {
        for (int vanish : {0, 1, 2}) {
            SCOPED_TRACE(testing::Message() << "t " << t << " vanish " << vanish);
            // With materials: sizes from the data with a factor of their own, no curve.
            ParticleForRender_cls out[2];
            ExpectSameArraysByExpression(out, a, b, nullptr, nullptr, t, ByID(1, vanish),
                                         [&](ViewerClone_cls* pViewer) {
                                             for (int m = 0; vanish == 1 && m < 4; ++m)
                                                 AddGroup(AddClone(pViewer, "MaterialParticle_cls", {}),
                                                          "SizeFactor", "point", "sphere", 1.5 + m, 2.0);
                                         });
            // A matched particle moves, and the last one reads its partner's last components.
            ASSERT_EQ(out[0].mNumber, a->mNumber.load());
            const long long last = out[0].mNumber - 1;
            const int nb = a->mNextIndex[last];
            ASSERT_EQ(nb, b->mNumber.load() - 1);
            EXPECT_EQ(out[0].mXYZ[3 * last + 2],
                      static_cast<float>(a->mXYZ[3 * last + 2] * (1.0 - t) + b->mXYZ[3 * nb + 2] * t));
        }
    }
}

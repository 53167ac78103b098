// Interpolation by ID over a sequence whose atom set changes between steps (atoms leave, new ones
// enter), prepared as the particle object does it: on a step itself with A on both sides, between
// steps with A and B. Every frame is compared with a calculation of its own here: match by ID, mix
// linearly, and apply the vanish rules to the atoms that B lacks. The snaps sit in a ring of three
// slots that are read again for later steps, so match tables of old pairs and old data are about.
#include "ConfItem_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleSnap_cls.h"
#include "ViewerClone_cls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace {

struct Step {
    std::vector<int> ids; // ascending
    std::vector<float> xyz;
    std::vector<float> sizes;
};

// Steps of up to 400 atoms from IDs 1..500: each step drops about a tenth of the atoms and takes in
// new ones, and the survivors move a little.
std::vector<Step> MakeSteps(int count, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> pos(0.0f, 10.0f), move(-0.3f, 0.3f), size(0.5f, 2.0f);
    std::map<int, std::array<float, 3>> live;
    for (int id = 1; id <= 400; ++id)
        live[id] = {pos(rng), pos(rng), pos(rng)};
    std::vector<Step> steps;
    for (int s = 0; s < count; ++s) {
        Step step;
        for (const auto& [id, p] : live) {
            step.ids.push_back(id);
            step.xyz.insert(step.xyz.end(), p.begin(), p.end());
            step.sizes.push_back(size(rng));
        }
        steps.push_back(step);
        std::map<int, std::array<float, 3>> next;
        for (const auto& [id, p] : live)
            if (rng() % 10 != 0)
                next[id] = {p[0] + move(rng), p[1] + move(rng), p[2] + move(rng)};
        for (int k = 0; k < 40; ++k) {
            const int id = 1 + static_cast<int>(rng() % 500);
            if (!next.count(id))
                next[id] = {pos(rng), pos(rng), pos(rng)};
        }
        live = std::move(next);
    }
    return steps;
}

// Puts a step into a slot as a read does: new arrays or the same ones, and a new generation.
void Load(ParticleSnap_cls& snap, const Step& step, double time) {
    const int n = static_cast<int>(step.ids.size());
    snap.mHasID = true;
    snap.mHasSize = true;
    snap.AllocateIfNot(n);
    for (int i = 0; i < n; ++i) {
        snap.mID[i] = step.ids[i];
        snap.mSize[i] = step.sizes[i];
        for (int k = 0; k < 3; ++k)
            snap.mXYZ[3 * i + k] = step.xyz[3 * i + k];
    }
    snap.mTime = time;
    snap.NewGeneration();
}

ViewerClone_cls* LinearByID(int vanish, int interp = 1) {
    auto* pViewer = new ViewerClone_cls;
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "InterpolateBy=", "1");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "InterpType=", wxString::Format("%d", interp));
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "VanishSizeType=", wxString::Format("%d", vanish));
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "ExtrapolateType=", "0");
    return pViewer;
}

// The frame between a and b at t by the rules of interpolation by ID, computed here on its own.
void ExpectFrame(const ParticleForRender_cls& out, const Step& a, const Step* b, double t, int vanish) {
    std::map<int, int> indexB;
    if (b)
        for (size_t j = 0; j < b->ids.size(); ++j)
            indexB[b->ids[j]] = static_cast<int>(j);
    ASSERT_EQ(out.mNumber, static_cast<long long>(a.ids.size()));
    int wrong = 0;
    for (size_t i = 0; i < a.ids.size(); ++i) {
        const auto it = b ? indexB.find(a.ids[i]) : indexB.end();
        double p[3], size;
        if (!b || t == 0.0) {
            for (int k = 0; k < 3; ++k)
                p[k] = a.xyz[3 * i + k];
            size = a.sizes[i];
            if (b && it == indexB.end())
                size = vanish == 2 ? 0.0 : a.sizes[i];
        } else if (it != indexB.end()) {
            const size_t j = static_cast<size_t>(it->second);
            for (int k = 0; k < 3; ++k)
                p[k] = a.xyz[3 * i + k] * (1.0 - t) + b->xyz[3 * j + k] * t;
            size = a.sizes[i] * (1.0 - t) + b->sizes[j] * t;
        } else {
            for (int k = 0; k < 3; ++k)
                p[k] = a.xyz[3 * i + k];
            size = vanish == 0 ? a.sizes[i] : vanish == 1 ? a.sizes[i] * (1.0 - t) : 0.0;
        }
        bool bOk = std::abs(out.mSize[i] - static_cast<float>(size)) <= 1e-6f;
        for (int k = 0; k < 3; ++k)
            bOk = bOk && std::abs(out.mXYZ[3 * i + k] - static_cast<float>(p[k])) <= 1e-5f;
        if (!bOk && ++wrong <= 3)
            ADD_FAILURE() << "atom " << a.ids[i] << " (element " << i << ") at (" << out.mXYZ[3 * i] << ", "
                          << out.mXYZ[3 * i + 1] << ", " << out.mXYZ[3 * i + 2] << ") size " << out.mSize[i]
                          << ", expected (" << p[0] << ", " << p[1] << ", " << p[2] << ") size " << size;
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace

TEST(ChangingIDSet, EveryStepAndFactorInBothOrdersMatchesByID) {
    const std::vector<Step> steps = MakeSteps(9, 7);
    const struct Order {
        const char* name;
        std::vector<double> factors;
    } orders[] = {{"t = 0 first", {0.0, 0.5, 1.0}}, {"t > 0 first", {0.5, 1.0, 0.0}}};
    for (const Order& order : orders) {
        for (int vanish : {1, 2}) {
            SCOPED_TRACE(testing::Message() << order.name << ", VanishSizeType " << vanish);
            // Three slots read again and again, and the two render sets of the object used in turn.
            std::unique_ptr<ParticleSnap_cls> slots[3];
            for (auto& p : slots)
                p = std::make_unique<ParticleSnap_cls>(nullptr, 0);
            ParticleForRender_cls sets[2];
            int frame = 0;
            auto slotOf = [&](int s) { return slots[s % 3].get(); };
            Load(*slotOf(0), steps[0], 0.0);
            for (int s = 0; s + 1 < static_cast<int>(steps.size()); ++s) {
                Load(*slotOf(s + 1), steps[s + 1], s + 1.0);
                ParticleSnap_cls* pA = slotOf(s);
                ParticleSnap_cls* pB = slotOf(s + 1);
                ParticleSnap_cls* p0 = s > 0 ? slotOf(s - 1) : nullptr;
                for (double t : order.factors) {
                    SCOPED_TRACE(testing::Message() << "step " << s << ", factor " << t);
                    ParticleForRender_cls& out = sets[frame++ % 2];
                    // On the step itself the object passes A on both sides.
                    ParticleSnap_cls* pSecond = t == 0.0 ? pA : pB;
                    ASSERT_TRUE(out.PrepareData(pA, pSecond, p0, nullptr, s, frame, 0, t, LinearByID(vanish),
                                                nullptr, s + t, PositionAndDirection_cls(), false));
                    ExpectFrame(out, steps[s], t == 0.0 ? nullptr : &steps[s + 1], t, vanish);
                }
            }
        }
    }
}

TEST(ChangingIDSet, PairTablesAreBuiltAgainForAnotherPartnerOrARead) {
    const std::vector<Step> steps = MakeSteps(3, 11);
    auto a = std::make_unique<ParticleSnap_cls>(nullptr, 0);
    auto b = std::make_unique<ParticleSnap_cls>(nullptr, 0);
    Load(*a, steps[0], 0.0);
    Load(*b, steps[1], 1.0);
    ParticleForRender_cls out;
    ASSERT_TRUE(out.PrepareData(a.get(), b.get(), nullptr, nullptr, 0, 0, 0, 0.5, LinearByID(2), nullptr, 0.5,
                                PositionAndDirection_cls(), false));
    ExpectFrame(out, steps[0], &steps[1], 0.5, 2);
    EXPECT_TRUE(a->mNextKey == a->GetMatchKey(b.get()));
    EXPECT_TRUE(b->mPrevKey == b->GetMatchKey(a.get()));

    // B's slot is read again with the step after it: the same pair of objects, other data.
    Load(*b, steps[2], 2.0);
    EXPECT_FALSE(a->mNextKey == a->GetMatchKey(b.get()));
    ASSERT_TRUE(out.PrepareData(a.get(), b.get(), nullptr, nullptr, 0, 0, 0, 0.25, LinearByID(2), nullptr,
                                0.25, PositionAndDirection_cls(), false));
    ExpectFrame(out, steps[0], &steps[2], 0.25, 2);

    // A frame on A alone keeps the tables of the pair.
    const ParticleSnap_cls::MatchKey_cls keyBefore = a->mNextKey;
    ASSERT_TRUE(out.PrepareData(a.get(), a.get(), nullptr, nullptr, 0, 0, 0, 0.0, LinearByID(2), nullptr, 0.0,
                                PositionAndDirection_cls(), false));
    ExpectFrame(out, steps[0], nullptr, 0.0, 2);
    EXPECT_TRUE(a->mNextKey == keyBefore);
}

namespace {

// Atoms in a box from -5 to 5 on each axis; each of the first six crosses one face between A and B,
// the seventh moves inside.
struct Crossing {
    int id;
    float a[3], b[3];
    float mid[3]; // where it stands at t = 0.25, wrapped into the box
};
const Crossing kCrossings[] = {
    {1, {4.8f, 0, 0}, {-4.6f, 0, 0}, {4.95f, 0, 0}},    // +x
    {2, {-4.9f, 1, 1}, {4.5f, 1, 1}, {4.95f, 1, 1}},    // -x, past the face by t = 0.25
    {3, {0, 4.9f, 0}, {0, -4.5f, 0}, {0, -4.95f, 0}},   // +y, past the face by t = 0.25
    {4, {2, -4.8f, 0}, {2, 4.6f, 0}, {2, -4.95f, 0}},   // -y
    {5, {0, 0, 4.6f}, {0, 0, -4.4f}, {0, 0, 4.85f}},    // +z
    {6, {0, 0, -4.99f}, {0, 0, 4.95f}, {0, 0, 4.995f}}, // -z, past the face by t = 0.25
    {7, {1, 1, 1}, {2, 1, 1}, {1.25f, 1, 1}},           // inside
};

std::unique_ptr<ParticleSnap_cls> CrossingSnap(bool bB) {
    auto pSnap = std::make_unique<ParticleSnap_cls>(nullptr, 0);
    pSnap->mHasID = true;
    const int n = static_cast<int>(std::size(kCrossings));
    pSnap->AllocateIfNot(n);
    for (int i = 0; i < n; ++i) {
        pSnap->mID[i] = kCrossings[i].id;
        for (int k = 0; k < 3; ++k)
            pSnap->mXYZ[3 * i + k] = bB ? kCrossings[i].b[k] : kCrossings[i].a[k];
    }
    pSnap->mTime = bB ? 1.0 : 0.0;
    pSnap->NewGeneration();
    return pSnap;
}

ViewerClone_cls* Periodic(int interp, int periodic) {
    ViewerClone_cls* pViewer = LinearByID(2, interp);
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "PeriodicBox=", wxString::Format("%d", periodic));
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "PeriodicBoxLow=", "-5 -5 -5");
    pViewer->mCConfList.Add(new ConfItemSTR_cls, "PeriodicBoxHigh=", "5, 5, 5");
    return pViewer;
}

} // namespace

TEST(PeriodicBox, AtomsCrossEachFaceTheShortWayAndAreDrawnInTheBox) {
    auto a = CrossingSnap(false);
    auto b = CrossingSnap(true);
    ParticleForRender_cls out;
    // Typed bounds, and the same bounds from A's header; Hermite without velocities moves as linear
    // would at the middle, so the two forms share t = 0.5 below.
    for (int periodic : {2, 1}) {
        SCOPED_TRACE(periodic == 2 ? "typed box" : "box of the header");
        if (periodic == 1) {
            a->mHasBox = true;
            for (int k = 0; k < 3; ++k) {
                a->mBoxLo[k] = -5.0;
                a->mBoxHi[k] = 5.0;
            }
        }
        ASSERT_TRUE(out.PrepareData(a.get(), b.get(), nullptr, nullptr, 0, 0, 0, 0.25, Periodic(1, periodic),
                                    nullptr, 0.25, PositionAndDirection_cls(), false));
        for (size_t i = 0; i < std::size(kCrossings); ++i)
            for (int k = 0; k < 3; ++k)
                EXPECT_NEAR(out.mXYZ[3 * i + k], kCrossings[i].mid[k], 1e-5) << "atom " << kCrossings[i].id;
        ASSERT_TRUE(out.PrepareData(a.get(), b.get(), nullptr, nullptr, 0, 0, 0, 0.5, Periodic(2, periodic),
                                    nullptr, 0.5, PositionAndDirection_cls(), false));
        for (size_t i = 0; i < std::size(kCrossings); ++i)
            for (int k = 0; k < 3; ++k) {
                EXPECT_GE(out.mXYZ[3 * i + k], -5.0f);
                EXPECT_LT(out.mXYZ[3 * i + k], 5.0f);
            }
        // Atom 1 halfway: 4.8 + 0.3 = 5.1, wrapped to -4.9.
        EXPECT_NEAR(out.mXYZ[0], -4.9f, 1e-5);
    }
    // Without the box the atoms fly across it, as the plain interpolation does.
    a->mHasBox = false;
    ASSERT_TRUE(out.PrepareData(a.get(), b.get(), nullptr, nullptr, 0, 0, 0, 0.25, Periodic(1, 0), nullptr,
                                0.25, PositionAndDirection_cls(), false));
    EXPECT_NEAR(out.mXYZ[0], 4.8f * 0.75f - 4.6f * 0.25f, 1e-5);
    // A box from a header that has none is no box either.
    ASSERT_TRUE(out.PrepareData(a.get(), b.get(), nullptr, nullptr, 0, 0, 0, 0.25, Periodic(1, 1), nullptr,
                                0.25, PositionAndDirection_cls(), false));
    EXPECT_NEAR(out.mXYZ[0], 4.8f * 0.75f - 4.6f * 0.25f, 1e-5);
}

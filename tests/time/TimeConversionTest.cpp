#include "Misc_cls.h"
#include "TimeFixture.h"

#include <cmath>

using TimeConversionTest = TimeFixture;

TEST(MiscTest, RoundModesAndNearlySame) {
    struct Case {
        double v;
        int mode;
        double expected;
    };
    const Case cases[] = {{2.5, 0, 3.0}, {2.4999, 0, 2.0}, {-2.5, 0, -2.0}, {-2.6, 0, -3.0},
                          {2.9, 1, 2.0}, {-2.1, 1, -3.0},  {2.1, 2, 3.0},   {-2.9, 2, -2.0},
                          {2.0, 2, 2.0}, {7.7, 3, 0.0},    {7.7, -1, 0.0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "v=" << c.v << " mode=" << c.mode);
        EXPECT_EQ(Misc_cls::Round(c.v, c.mode), c.expected);
    }
    EXPECT_TRUE(Misc_cls::IsNearlySame(1.0, 1.0, 1e-6));
    EXPECT_TRUE(Misc_cls::IsNearlySame(1.0 + 0.9e-6, 1.0, 1e-6));
    EXPECT_FALSE(Misc_cls::IsNearlySame(1.5, 1.0, 0.5)); // both bounds are strict
    EXPECT_FALSE(Misc_cls::IsNearlySame(0.5, 1.0, 0.5));
}

TEST_F(TimeConversionTest, NormalizedValueWithBlurTermAndZeroRange) {
    SetRange(100, 2, 1);
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedValue(3, 1, 0), 3.5 / 100.0);
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedValue(100, 0, 0), 1.0);
    // Blur step 2 of quality 4 over a shutter of 0.5: a quarter of a subframe later.
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedValue(3, 1, 2), ((2 * 0.5 / 4 + 1) / 2.0 + 3) / 100.0);
    GpCBlurCtrl->mCBlurLength.SetBodyFromData(wxString("1.5"));
    GpCBlurCtrl->mCBlurQuality.SetBodyFromData(3LL);
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedValue(0, 0, 1), (1 * 1.5 / 3) / 2.0 / 100.0);

    Set(mpTime->mCFrameMax, 0);
    EXPECT_EQ(mpTime->GetNormalizedValue(3, 1, 2), 0.0);
    EXPECT_EQ(mpTime->GetCurrentNT(false), 0.0);
    EXPECT_EQ(mpTime->GetNextNT(false), 0.0);
    EXPECT_EQ(mpTime->GetQuantized(0.5, 0), 0.0);
    int frame = -1, sub = -1;
    EXPECT_EQ(mpTime->GetFrameFromNT(0.5, frame, sub), 0.0);
    EXPECT_EQ(frame, 0);
    EXPECT_EQ(sub, 0);
}

TEST_F(TimeConversionTest, CurrentNTDropsTheBlurTermOnlyForTheComposite) {
    SetRange(100, 2, 1);
    SetPos(3, 1);
    GpCBlurCtrl->SetBlurStep(2);
    const double withBlur = ((2 * 0.5 / 4 + 1) / 2.0 + 3) / 100.0;
    const double plain = 3.5 / 100.0;
    EXPECT_DOUBLE_EQ(mpTime->GetCurrentNT(false), withBlur);
    EXPECT_DOUBLE_EQ(mpTime->GetCurrentNT(true), withBlur); // composite off
    Set(mpTime->mCInterpolateComposite, 1);
    EXPECT_DOUBLE_EQ(mpTime->GetCurrentNT(true), plain);
    EXPECT_DOUBLE_EQ(mpTime->GetCurrentNT(false), withBlur);
    EXPECT_EQ(mpTime->GetCurrentStep(), 7);
    EXPECT_EQ(mpTime->GetStep(10, 1), 21);
}

TEST_F(TimeConversionTest, NextNTWalksBlurStepsThenSubframes) {
    SetRange(100, 2, 1);
    SetPos(3, 1);
    EXPECT_DOUBLE_EQ(mpTime->GetNextNT(false), 4.0 / 100.0); // blur off: 3,1 + 1 = 4,0

    GpCBlurCtrl->mCUseMotionBlur.SetBodyFromDataBOOL(true);
    GpCBlurCtrl->SetBlurStep(1);
    EXPECT_DOUBLE_EQ(mpTime->GetNextNT(false), mpTime->GetNormalizedValue(3, 1, 2));
    GpCBlurCtrl->SetBlurStep(3); // the last step of quality 4: on to the next subframe
    EXPECT_DOUBLE_EQ(mpTime->GetNextNT(false), 4.0 / 100.0);

    GpCBlurCtrl->SetBlurStep(0);
    Set(mpTime->mCInterpolateComposite, 1);
    EXPECT_DOUBLE_EQ(mpTime->GetNextNT(true), 4.0 / 100.0);
    EXPECT_DOUBLE_EQ(mpTime->GetNextNT(false), mpTime->GetNormalizedValue(3, 1, 1));

    GpCBlurCtrl->mCUseMotionBlur.SetBodyFromDataBOOL(false);
    Set(mpTime->mCSubFrameStepping, 5); // 3,1 + 5 subframes of 2 = 6,0
    EXPECT_DOUBLE_EQ(mpTime->GetNextNT(false), 6.0 / 100.0);
    Set(mpTime->mCSubFrameMax, 3);
    Set(mpTime->mCSubFrameStepping, 1);
    EXPECT_DOUBLE_EQ(mpTime->GetNextNT(false), (3 + 2.0 / 3.0) / 100.0);
}

TEST_F(TimeConversionTest, StepCarriesIntoTheFrameBothWays) {
    SetRange(100, 2, 1);
    struct Case {
        int frame, sub, stepping, direction, expFrame, expSub;
    };
    const Case cases[] = {
        {3, 1, 1, 1, 4, 0},  // 3,1 + 1 step = 4,0
        {3, 0, 1, -1, 2, 1}, // 3,0 - 1 step = 2,1
        {3, 0, 1, 1, 3, 1},   {3, 1, 5, 1, 6, 0}, {3, 1, 5, -1, 1, 0},
        {0, 0, 1, -1, -1, 1}, {3, 1, 0, 1, 3, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.frame << "," << c.sub << " stepping " << c.stepping
                                        << " direction " << c.direction);
        SetPos(c.frame, c.sub);
        Set(mpTime->mCSubFrameStepping, c.stepping);
        int frame = 0, sub = 0;
        mpTime->GetNextTimeInfo(frame, sub, c.direction);
        EXPECT_EQ(frame, c.expFrame);
        EXPECT_EQ(sub, c.expSub);
    }
    // No subframes at all must not hang the carry.
    Set(mpTime->mCSubFrameMax, 0);
    Set(mpTime->mCSubFrameStepping, 1);
    SetPos(3, 0);
    int frame = 0, sub = 0;
    mpTime->GetNextTimeInfo(frame, sub, 1);
    EXPECT_EQ(frame, 3);
}

TEST_F(TimeConversionTest, FrameFromNTLandsOnWholeFramesDespiteRoundingNoise) {
    for (int frameMax : {100, 24, 7, 1000}) {
        for (int subMax : {1, 2, 3, 10}) {
            SetRange(frameMax, subMax, 1);
            for (int k = 0; k <= frameMax; ++k) {
                SCOPED_TRACE(testing::Message()
                             << "FrameMax " << frameMax << " SubFrameMax " << subMax << " k " << k);
                int frame = -1, sub = -1;
                // Exactly k / FrameMax, and the same value a little low as sums of steps give it.
                mpTime->GetFrameFromNT(static_cast<double>(k) / frameMax, frame, sub);
                EXPECT_EQ(frame, k);
                EXPECT_EQ(sub, 0);
                mpTime->GetFrameFromNT(static_cast<double>(k) / frameMax - 1e-12, frame, sub);
                EXPECT_EQ(frame, k);
                EXPECT_EQ(sub, 0);
                for (int s = 1; s < subMax && k < frameMax; ++s) {
                    double rem = mpTime->GetFrameFromNT(mpTime->GetNormalizedValue(k, s, 0), frame, sub);
                    EXPECT_EQ(frame, k);
                    EXPECT_EQ(sub, s);
                    EXPECT_NEAR(rem, static_cast<double>(s) / subMax, 1e-9);
                }
            }
        }
    }
    SetRange(10, 2, 1);
    double sum = 0.0;
    for (int i = 0; i < 7; ++i)
        sum += 0.1; // 0.7 - 1.1e-16
    int frame = -1, sub = -1;
    mpTime->GetFrameFromNT(sum, frame, sub);
    EXPECT_EQ(frame, 7);
    EXPECT_EQ(sub, 0);
    // A quarter frame rounds to the nearer subframe; the pointer form is the same call.
    EXPECT_NEAR(mpTime->GetFrameFromNT(0.325, &frame, &sub), 0.25, 1e-12);
    EXPECT_EQ(frame, 3);
    EXPECT_EQ(sub, 1);
    mpTime->GetFrameFromNT(0.32, frame, sub);
    EXPECT_EQ(frame, 3);
    EXPECT_EQ(sub, 0);
}

TEST_F(TimeConversionTest, QuantizedGoesThroughSinglePrecision) {
    SetRange(100, 2, 1);
    EXPECT_EQ(mpTime->GetQuantized(0.0349, 0), static_cast<double>(3.0f / 100));
    EXPECT_NE(mpTime->GetQuantized(0.0349, 0), 0.03); // the float step shows
    EXPECT_EQ(mpTime->GetQuantized(0.035, 0), static_cast<double>(4.0f / 100));
    EXPECT_EQ(mpTime->GetQuantized(0.0399, 1), static_cast<double>(3.0f / 100));
    EXPECT_EQ(mpTime->GetQuantized(0.0301, 2), static_cast<double>(4.0f / 100));
    EXPECT_EQ(mpTime->GetQuantized(0.0399, 9), 0.0);

    EXPECT_EQ(TimeCtrl_cls::GetQuantizedForColor(0.5004), 0.5);
    EXPECT_EQ(TimeCtrl_cls::GetQuantizedForColor(0.5004, 2), 513.0 / 1024.0);
    EXPECT_EQ(TimeCtrl_cls::GetQuantizedForColor(0.5009, 1), 0.5);
    EXPECT_EQ(TimeCtrl_cls::GetQuantizedForColor(1.0 / 3.0), 341.0 / 1024.0);
    EXPECT_EQ(TimeCtrl_cls::GetQuantizedForColor(0.7, 4), 0.0);
    EXPECT_EQ(TimeCtrl_cls::GetQuantizedForColor(-0.0006), -1.0 / 1024.0);

    EXPECT_DOUBLE_EQ(mpTime->GetDNT(), 0.005);
    EXPECT_DOUBLE_EQ(mpTime->GetDefaultResolution(), 0.0025);
}

TEST_F(TimeConversionTest, WorkAreaEndsAndCentre) {
    SetRange(100, 2, 1);
    SetWA(10, 1, 50, 1);
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedWAMin(), 10.5 / 100.0);
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedWAMax(), 50.5 / 100.0);
    SetWA(10, 1, 100, 1); // at FrameMax the subframe of the end does not count
    EXPECT_EQ(mpTime->GetNormalizedWAMax(), 1.0);

    // c = ((10 + 21) * 2 + 1 + 0) / 2 = 31 with truncation: frame 15, sub 1.
    SetWA(10, 1, 21, 0);
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedWARegion(), 15.5 / 100.0);
    SetWA(10, 0, 21, 1); // c = 63 / 2 = 31 again
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedWARegion(), 15.5 / 100.0);
    SetWA(10, 1, 100, 1); // c = (220 + 1 + 0) / 2 = 110: frame 55, sub 0
    EXPECT_DOUBLE_EQ(mpTime->GetNormalizedWARegion(), 55.0 / 100.0);

    // No subframes: diagnostics on standard output and a centre on whole frames.
    SetWA(10, 1, 21, 0);
    Set(mpTime->mCSubFrameMax, 0);
    testing::internal::CaptureStdout();
    double centre = mpTime->GetNormalizedWARegion();
    std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out, "WAmin == 10\nWAmax == 21\nsubFrameMax == 0\n");
    EXPECT_DOUBLE_EQ(centre, 16.0 / 100.0); // (31 + 1 + 0) / 2
    EXPECT_TRUE(std::isfinite(centre));
}

TEST_F(TimeConversionTest, CompositeAdjustmentAndOutputPercent) {
    SetRange(100, 2, 1);
    int frameA = 3, frameB = 4;
    double factor = 0.7;
    EXPECT_EQ(mpTime->GetImageCompositeNum(), 1);
    mpTime->AdjustFrameForComposer(&frameA, &frameB, &factor, 1, false);
    EXPECT_EQ(frameA, 3);
    EXPECT_EQ(factor, 0.7); // composite off: untouched

    Set(mpTime->mCInterpolateComposite, 1);
    EXPECT_EQ(mpTime->GetImageCompositeNum(), 2);
    mpTime->AdjustFrameForComposer(&frameA, &frameB, &factor, 0, false);
    EXPECT_EQ(frameA, 3);
    EXPECT_EQ(factor, 0.0);
    factor = 0.7;
    mpTime->AdjustFrameForComposer(&frameA, &frameB, &factor, 1, true);
    EXPECT_EQ(frameA, 3);
    EXPECT_EQ(factor, 0.0);
    mpTime->AdjustFrameForComposer(&frameA, &frameB, &factor, 1, false);
    EXPECT_EQ(frameA, 4);
    EXPECT_EQ(frameB, 4);

    SetWA(10, 1, 20, 1); // the subframes of the work area do not enter the percentage
    SetPos(15, 0);
    EXPECT_DOUBLE_EQ(mpTime->GetOutputPercent(), 50.0);
    SetPos(15, 1);
    EXPECT_DOUBLE_EQ(mpTime->GetOutputPercent(), 55.0);
    GpCBlurCtrl->SetBlurStep(2); // the current blur step counts: a quarter subframe more
    EXPECT_DOUBLE_EQ(mpTime->GetOutputPercent(), 56.25);
    SetWA(10, 0, 10, 0);
    EXPECT_EQ(mpTime->GetOutputPercent(), 0.0);
}

TEST_F(TimeConversionTest, DefaultKeyTable) {
    struct Row {
        int value, type;
        double ease;
    };
    const Row rows[] = {{0, 1, 1.0}, {1, 2, 1.0}, {2, 2, 0.0}, {3, 0, 1.0}, {4, -1, 1.0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        Set(mpTime->mCDefaultKey, row.value);
        int type = 99;
        double ease = 99.0;
        mpTime->GetDefaultKeyTypeAndEase(&type, &ease);
        EXPECT_EQ(type, row.type);
        EXPECT_EQ(ease, row.ease);
    }
    EXPECT_EQ(TimeCtrl_cls().GetDefaultKey(), 4); // automatic by default
}

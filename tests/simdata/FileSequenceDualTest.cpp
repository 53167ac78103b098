// The two-number file rule (time and slice) and its counts.
#include "FileSequenceDual_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

using FileSequenceDualTest = DataFileFixture_cls;

// The digits and offsets of the time field (1) and the slice field (2).
void ExpectFields(const FileSequenceDual_cls& seq, int digits1, int offset1, int digits2, int offset2) {
    EXPECT_EQ(std::make_tuple(seq.mDigits1, seq.mOffset1, seq.mDigits2, seq.mOffset2),
              std::make_tuple(digits1, offset1, digits2, offset2));
}

TEST_F(FileSequenceDualTest, TwoFieldsAreTimeThenSliceFromZero) {
    FileSequenceDual_cls seq;
    seq.SetDual(P("s%03d_z%03d.png"), 5, 9, 1, 1); // the offsets have no effect
    EXPECT_TRUE(seq.mFirstIsTime);
    ExpectFields(seq, 3, 0, 3, 0);
    EXPECT_EQ(seq.GetFormatDual(), P("s%03d_z%03d.png"));
    EXPECT_EQ(seq.mHead, P("s%"));
    EXPECT_EQ(seq.mTail, ".png");
    EXPECT_EQ(seq.GetModifiedStrDual(2, 7, 0, ""), P("s002_z007.png"));

    seq.SetDual(P("s%03d_z%03d.png"), 0, 0, 2, 3);
    EXPECT_EQ(seq.GetModifiedStrDual(1, 1, 0, ""), P("s002_z003.png"));
    EXPECT_EQ(seq.GetModifiedStrDual(4, 0, 0, "return index + 1"), P("s005_z000.png")); // maps time only
}

TEST_F(FileSequenceDualTest, CountsTimeStepsAtSliceZeroAndSlicesPerStep) {
    for (int z = 0; z < 5; ++z)
        Touch(wxString::Format("s000_z%03d.png", z));
    for (int z = 0; z < 2; ++z)
        Touch(wxString::Format("s001_z%03d.png", z));
    Touch("s002_z000.png");
    FileSequenceDual_cls seq;
    seq.SetDual(P("s%03d_z%03d.png"), 0, 0, 1, 1);
    seq.CalcMaxOffsetDual(false);
    EXPECT_EQ(seq.mMaxOffset, 3);
    seq.CalcMaxOffsetZ(0, false);
    EXPECT_EQ(seq.mMaxOffsetZ, 5);
    seq.CalcMaxOffsetZ(1, false);
    EXPECT_EQ(seq.mMaxOffsetZ, 2);
    seq.CalcMaxOffsetZ(2, false);
    EXPECT_EQ(seq.mMaxOffsetZ, 1);
    EXPECT_TRUE(seq.mValid);
}

TEST_F(FileSequenceDualTest, TrailingNumberIsTheSlice) {
    for (int z = 100; z < 105; ++z)
        Touch(wxString::Format("slice%04d.png", z));
    FileSequenceDual_cls seq;
    seq.SetDual(P("slice0100.png"), 0, 0, 1, 1);
    ExpectFields(seq, -1, -1, 4, 100);
    EXPECT_EQ(seq.GetFormatDual(), P("slice%04d.png"));
    EXPECT_EQ(seq.GetModifiedStrDual(0, 3, 0, ""), P("slice0103.png"));
    seq.CalcMaxOffsetDual(true);
    EXPECT_EQ(seq.mMaxOffset, 1); // one time step
    seq.CalcMaxOffsetZ(0, true);
    EXPECT_EQ(seq.mMaxOffsetZ, 5);

    // An explicit field with a trailing number: the field is time, the number the slice.
    seq.SetDual(P("t%03d_z0100.png"), 0, 0, 1, 1);
    ExpectFields(seq, 3, 0, 4, 100);
    EXPECT_EQ(seq.GetFormatDual(), P("t%03d_z%04d.png"));
    EXPECT_EQ(seq.mPath, P("t%03d_z0100.png")); // restored after the field was hidden
    EXPECT_EQ(seq.mHead, P("t"));
    EXPECT_EQ(seq.GetModifiedStrDual(1, 2, 0, ""), P("t001_z0102.png"));

    // The field in the directory, the number in the name.
    seq.SetDual(P("t%02d/img07.png"), 0, 0, 1, 1);
    EXPECT_EQ(seq.GetFormatDual(), P("t%02d/img%02d.png"));
    EXPECT_EQ(seq.GetModifiedStrDual(3, 1, 0, ""), P("t03/img08.png"));
}

TEST_F(FileSequenceDualTest, OneFieldOrNoneIsTheSlice) {
    FileSequenceDual_cls seq;
    seq.SetDual(P("slice%03d.png"), 0, 0, 1, 1);
    ExpectFields(seq, -1, 0, 3, 0);
    EXPECT_EQ(seq.mPath, P("slice%03d.png"));
    EXPECT_EQ(seq.GetModifiedStrDual(4, 2, 0, ""), P("slice002.png"));
    EXPECT_EQ(seq.GetModifiedStrDual(4, 2, 2, ""), P("sliceR002.png"));

    // Widths are searched narrowest first: the second field is found first and nothing follows it.
    seq.SetDual(P("t%05d_z%03d.png"), 0, 0, 1, 1);
    EXPECT_EQ(seq.mDigits1, -1);
    EXPECT_EQ(seq.mDigits2, 3);
    EXPECT_EQ(seq.GetModifiedStrDual(2, 3, 0, ""), P("t00002_z003.png")); // two "%": time, then slice
    Touch("t00000_z000.png");
    Touch("t00001_z000.png");
    seq.CalcMaxOffsetDual(false);
    EXPECT_EQ(seq.mMaxOffset, 1);

    seq.SetDual(P("volume.png"), 0, 0, 1, 1);
    EXPECT_EQ(seq.mDigits1, -1);
    EXPECT_EQ(seq.mDigits2, -1);
    EXPECT_EQ(seq.GetModifiedStrDual(3, 4, 0, ""), P("volume.png"));
    EXPECT_EQ(seq.GetModifiedStrDual(3, 4, 1, ""), P("volumeL.png"));
    seq.CalcMaxOffsetZ(0, true);
    EXPECT_EQ(seq.mMaxOffsetZ, 1);
    EXPECT_FALSE(seq.mValid); // a single file that is missing
}

TEST_F(FileSequenceDualTest, EmptyPathKeepsTheRule) {
    FileSequenceDual_cls seq;
    seq.SetDual(P("s%03d_z%03d.png"), 0, 0, 1, 1);
    seq.mValid = false;
    seq.SetDual("", 0, 0, 4, 5);
    EXPECT_EQ(seq.mStep1, 4);
    EXPECT_EQ(seq.mStep2, 5);
    EXPECT_FALSE(seq.mValid);
    EXPECT_EQ(seq.GetFormatDual(), P("s%03d_z%03d.png"));
}

TEST_F(FileSequenceDualTest, MissingFirstFileMessages) {
    std::vector<wxString> shown;
    FSBase_cls::SetMessageFunc([&](const wxString& text, const wxString&) { shown.push_back(text); });
    FileSequenceDual_cls seq;
    seq.SetDual(P("s%03d_z%03d.png"), 0, 0, 1, 1);
    seq.CalcMaxOffsetDual(true);
    EXPECT_EQ(seq.mMaxOffset, 0);
    EXPECT_FALSE(seq.mValid);
    seq.CalcMaxOffsetZ(4, true);
    EXPECT_EQ(seq.mMaxOffsetZ, 0);
    seq.CalcMaxOffsetZ(4, false);
    FSBase_cls::SetMessageFunc(nullptr);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0], "FileSequenceDual_cls::CalcMaxOffsetDual\n" + P("s000_z000.png"));
    EXPECT_EQ(shown[1], "FileSequenceDual_cls::CalcMaxOffsetZ\n" + P("s004_z000.png"));
}

} // namespace

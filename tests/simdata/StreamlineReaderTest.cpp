// Stream-line steps: the text layout (blocks of rows, blank rows between lines, comments), gzip,
// the reader thread of a sequence, and the refusal of ragged, cut and non-numeric files.
#include "SimDataTestSupport.h"
#include "StreamlineSequence_cls.h"
#include "StreamlineSnap_cls.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

wxString Data(const char* pName) {
    return wxString(ORV_TEST_DATA_DIR) + "/streamline/" + pName;
}

// Reads one file into a snap of seq now.
StreamlineSnap_cls* ReadNow(StreamlineSequence_cls& seq, const wxString& strPath) {
    seq.FileSequence_cls::Set(strPath, 0, 1);
    seq.CalcMaxOffset(false);
    StreamlineSnap_cls* p = seq.GenerateIfNot(0);
    p->SetStrFile(strPath);
    p->ReadData();
    return p;
}

} // namespace

class StreamlineReaderTest : public DataFileFixture_cls {
protected:
    StreamlineSequence_cls mSeq;
};

TEST_F(StreamlineReaderTest, LinesPointsAndValuesOfAStep) {
    for (const char* pName : {"lines_000.txt", "packed.txt.gz"}) {
        SCOPED_TRACE(pName);
        StreamlineSequence_cls seq;
        StreamlineSnap_cls* p = ReadNow(seq, Data(pName));
        ASSERT_FALSE(p->mbBad);
        ASSERT_EQ(p->GetLineCount(), 3) << "two blank rows end a line once; a comment row ends none";
        EXPECT_EQ(p->mOffsets, (std::vector<int>{0, 3, 7, 9}));
        ASSERT_TRUE(p->HasValue());
        EXPECT_EQ(p->mValue, (std::vector<float>{1, 2, 3, 5, 5, 5, 5, 0.5f, 0.5f}));
        EXPECT_FLOAT_EQ(p->mXYZ[3 * 6 + 2], 3.0f) << "the point after the comment row";
        EXPECT_FLOAT_EQ(p->mXYZ[3 * 7 + 0], -1.0f);
        EXPECT_GE(p->GetUsedMemoryByte(), static_cast<long long>(9 * 4 * sizeof(float)));
    }
}

TEST_F(StreamlineReaderTest, ThreeColumnsAndLayoutsOfRows) {
    struct Case {
        const char* pText;
        std::vector<int> offsets;
        bool bValue;
    };
    const Case cases[] = {
        {"", {}, false},
        {"# only a comment\n\n", {}, false},
        {"0 0 0\n1 1 1", {0, 2}, false},                       // no newline at the end
        {"0 0 0\r\n1 1 1\r\n\r\n2 2 2\r\n", {0, 2, 3}, false}, // carriage returns
        {"\n\n0 0 0 9\n\n\n1 1 1 8\n", {0, 1, 2}, true},
        {"0,0,0\n1,1,1\n", {0, 2}, false},        // commas between fields
        {"0 0 0 # seed\n1 1 1\n", {0, 2}, false}, // a comment after the numbers
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.pText);
        std::vector<int> offsets;
        std::vector<float> xyz, value;
        wxString strWhy;
        const std::string text(c.pText);
        ASSERT_TRUE(StreamlineSnap_cls::ParseText(text.c_str(), text.size(), offsets, xyz, value, strWhy))
            << strWhy;
        EXPECT_EQ(offsets, c.offsets);
        EXPECT_EQ(value.empty(), !c.bValue);
        EXPECT_EQ(xyz.size(), 3 * static_cast<size_t>(c.offsets.empty() ? 0 : c.offsets.back()));
    }
}

TEST_F(StreamlineReaderTest, BadFilesGiveNoLinesAndOneLogLine) {
    struct Case {
        const char* pName;
        const char* pWhy;
    };
    const Case cases[] = {
        {"ragged.txt", "row 5: 3 values where 4 were expected"},
        {"truncated.txt", "row 6: the file ends inside a row"},
        {"notnumber.txt", "row 2: a field that is not a number"},
        {"missing.txt", "cannot be read"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.pName);
        mLog.mVStrLines.clear();
        StreamlineSequence_cls seq;
        StreamlineSnap_cls* p = ReadNow(seq, Data(c.pName));
        EXPECT_TRUE(p->mbBad);
        EXPECT_EQ(p->GetLineCount(), 0);
        EXPECT_TRUE(p->mXYZ.empty());
        EXPECT_TRUE(p->mValue.empty());
        ASSERT_EQ(mLog.mVStrLines.size(), 1u);
        EXPECT_TRUE(mLog.mVStrLines[0].Contains(c.pWhy)) << mLog.mVStrLines[0];
        EXPECT_TRUE(mLog.mVStrLines[0].Contains(c.pName)) << mLog.mVStrLines[0];
    }
    // Random bytes and a row of six numbers are no stream-line file either.
    std::vector<int> offsets;
    std::vector<float> xyz, value;
    wxString strWhy;
    std::string noise;
    std::mt19937 rng(7);
    for (int i = 0; i < 4096; ++i)
        noise.push_back(static_cast<char>(rng() % 255 + 1));
    EXPECT_FALSE(StreamlineSnap_cls::ParseText(noise.c_str(), noise.size(), offsets, xyz, value, strWhy));
    const std::string six = "1 2 3 4 5 6\n";
    EXPECT_FALSE(StreamlineSnap_cls::ParseText(six.c_str(), six.size(), offsets, xyz, value, strWhy));
    EXPECT_TRUE(offsets.empty());
}

TEST_F(StreamlineReaderTest, ReaderThreadOfTheSequenceFillsTheNextSteps) {
    mServices.SetFrames(2, 0);
    mServices.SetPrefetch(2);
    mSeq.FileSequence_cls::Set(Data("lines_000.txt"), 0, 1);
    mSeq.CalcMaxOffset(true);
    mSeq.mIsSequence = true;
    ASSERT_EQ(mSeq.GetSnapCount(), 2);
    int reads = 0;
    while (mSeq.PrefetchData(nullptr)) {
        ++reads;
        for (int i = 0; i < 2; ++i)
            if (StreamlineSnap_cls* p = mSeq.GetPCSnap(i))
                p->WaitReadingThread(1);
    }
    EXPECT_EQ(reads, 2) << "one read per step, one at a time";
    EXPECT_EQ(mSeq.mReadingLock.load(), 0);
    ASSERT_NE(mSeq.GetPCSnap(1), nullptr);
    EXPECT_EQ(mSeq.GetPCSnap(0)->GetLineCount(), 3);
    EXPECT_EQ(mSeq.GetPCSnap(1)->GetLineCount(), 2);
    EXPECT_EQ(mSeq.GetPCSnap(1)->GetLinePointCount(0), 5);
    // A step read already is not read again.
    EXPECT_FALSE(mSeq.GetPCSnap(1)->ReadData());
}

// Volume steps: df3 headers and voxels, the extension rule, the sine pattern, bad headers, and an
// image stack whose slices change their size.
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "VolumeSequence_cls.h"
#include "VolumeSnap_cls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

std::string Df3(int x, int y, int z, size_t voxelBytes) {
    std::string s;
    for (int v : {x, y, z}) {
        s.push_back(static_cast<char>((v >> 8) & 0xff));
        s.push_back(static_cast<char>(v & 0xff));
    }
    for (size_t i = 0; i < voxelBytes; ++i)
        s.push_back(static_cast<char>((i * 7 + 3) % 251));
    return s;
}

unsigned char Pattern(int i, int w) {
    return static_cast<unsigned char>((std::sin(2.0 * (i * 3.14159 / w) + 1.570795) * 0.5 + 0.5) * 254.0);
}

class VolumeReaderTest : public DataFileFixture_cls {
protected:
    VolumeSequence_cls mSeq;
};

TEST_F(VolumeReaderTest, Df3RoundTrip) {
    const std::string bytes = Df3(3, 4, 300, 3 * 4 * 300);
    ASSERT_TRUE(WriteBytes(P("v.df3"), bytes));
    VolumeSnap_cls snap(&mSeq, 0);
    snap.SetStrFile(P("v.df3"));
    snap.ReadHeader(false);
    ASSERT_EQ(snap.mSizeX, 3);
    ASSERT_EQ(snap.mSizeY, 4);
    ASSERT_EQ(snap.mSizeZ, 300); // big-endian: 0x01 0x2C
    ASSERT_TRUE(snap.ReadData());
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(snap.mData.get()), 3600), bytes.substr(6));
    EXPECT_EQ(snap.GetUsedMemoryByte(), 3600);
    EXPECT_FALSE(snap.ReadData()) << "the same file is not read twice";
    double scale[3];
    snap.GetScaleCandid(scale);
    EXPECT_DOUBLE_EQ(scale[0], 0.01);
    EXPECT_DOUBLE_EQ(scale[2], 1.0);
}

TEST_F(VolumeReaderTest, OnlyDf3AndDF3AreDf3) {
    struct Case {
        const char* name;
        int expectedX;
    } cases[] = {{"a.df3", 2}, {"a.DF3", 2}, {"a.Df3", 64}, {"a.raw", 64}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(WriteBytes(P(c.name), Df3(2, 2, 2, 8)));
        VolumeSnap_cls snap(&mSeq, 0);
        snap.SetStrFile(P(c.name));
        snap.ReadHeader(false);
        EXPECT_EQ(snap.mSizeX, c.expectedX);
        EXPECT_EQ(snap.mSizeZ, c.expectedX);
    }
}

TEST_F(VolumeReaderTest, MissingFileAndNoneGiveTheSinePattern) {
    for (const char* name : {"missing.df3", "None"}) {
        SCOPED_TRACE(name);
        VolumeSnap_cls snap(&mSeq, 0);
        snap.SetStrFile(wxString(name) == "None" ? wxString("None") : P(name));
        snap.ReadHeader(false);
        ASSERT_EQ(snap.mSizeX, 64);
        ASSERT_EQ(snap.mSizeZ, 64);
        ASSERT_TRUE(snap.ReadData());
        for (int row : {0, 1, 64 * 64 - 1})
            for (int i : {0, 1, 17, 32, 63})
                ASSERT_EQ(snap.mData[static_cast<size_t>(row) * 64 + i], Pattern(i, 64)) << row << " " << i;
    }
    EXPECT_EQ(Pattern(0, 64), 253); // sin of 1.570795 falls just short of 1
    EXPECT_EQ(Pattern(32, 64), 0);
}

TEST_F(VolumeReaderTest, BadHeadersAreReadAsNoData) {
    struct Case {
        const char* name;
        std::string bytes;
        const char* logText;
    } cases[] = {
        {"sizes 0", Df3(0, 5, 5, 10), ""},
        {"sizes beyond any volume", Df3(32767, 32767, 32767, 100), "cannot be a volume"},
        {"negative size", Df3(-2, 4, 4, 100), "cannot be a volume"},
        {"truncated header", std::string("\x00\x02\x00", 3), "truncated"},
        {"empty file", std::string(), "truncated"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        ASSERT_TRUE(WriteBytes(P("bad.df3"), c.bytes));
        VolumeSnap_cls snap(&mSeq, 0);
        snap.SetStrFile(P("bad.df3"));
        snap.ReadHeader(false);
        EXPECT_EQ(static_cast<long long>(snap.mSizeX) * snap.mSizeY * snap.mSizeZ, 0);
        EXPECT_EQ(snap.GetUsedMemoryByte(), 0);
        if (c.logText[0]) {
            EXPECT_TRUE(log.Contains(c.logText));
        }
        snap.ReadData();
    }
}

TEST_F(VolumeReaderTest, ShortDf3IsReadAsFarAsItGoes) {
    const std::string bytes = Df3(4, 4, 4, 10);
    ASSERT_TRUE(WriteBytes(P("short.df3"), bytes));
    VolumeSnap_cls snap(&mSeq, 0);
    snap.SetStrFile(P("short.df3"));
    snap.ReadHeader(false);
    ASSERT_EQ(snap.GetUsedMemoryByte(), 64);
    ASSERT_TRUE(snap.ReadData());
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(snap.mData.get()), 10), bytes.substr(6));
    for (int i = 10; i < 64; ++i)
        ASSERT_EQ(snap.mData[i], 0) << i;
    EXPECT_TRUE(mLog.Contains("is short: 10 of 64 voxels read"));
}

TEST_F(VolumeReaderTest, ArraysAreKeptWhileTheSizeStays) {
    ASSERT_TRUE(WriteBytes(P("a.df3"), Df3(4, 4, 4, 64)));
    ASSERT_TRUE(WriteBytes(P("b.df3"), Df3(4, 4, 4, 64)));
    ASSERT_TRUE(WriteBytes(P("c.df3"), Df3(2, 4, 4, 32)));
    VolumeSnap_cls snap(&mSeq, 0);
    snap.SetStrFile(P("a.df3"));
    snap.ReadHeader(false);
    const unsigned char* pFirst = snap.mData.get();
    snap.SetStrFile(P("b.df3"));
    snap.ReadHeader(false);
    EXPECT_EQ(snap.mData.get(), pFirst);
    VolumeSnap_cls other(&mSeq, 1);
    other.SetStrFile(P("c.df3"));
    other.ReadHeader(false);
    EXPECT_FALSE(snap.IsSizeSame(&other));
    snap.SetStrFile(P("c.df3"));
    snap.ReadHeader(false);
    EXPECT_TRUE(snap.IsSizeSame(&other));
    EXPECT_EQ(snap.mAllocX, 2);
    ASSERT_TRUE(snap.ReadData());
    EXPECT_EQ(snap.mData[31], static_cast<unsigned char>((31 * 7 + 3) % 251));
}

TEST_F(VolumeReaderTest, PrefetchReadsOnAThreadOncePerSequence) {
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(WriteBytes(P(wxString::Format("s%03d.df3", i)), Df3(8, 8, 8 + i, 64 * (8 + i))));
    mSeq.FileSequence_cls::Set(P("s000.df3"), 0, 1);
    mSeq.CalcMaxOffset(true);
    mSeq.mIsSequence = true;
    ASSERT_EQ(mSeq.GetSnapCount(), 3);
    mServices.SetFrames(3, 1);
    mSeq.PushLock(); // a read of this sequence is running: nothing starts
    EXPECT_FALSE(mSeq.PrefetchData(nullptr, false));
    EXPECT_EQ(mSeq.GetPCSnap(1), nullptr);
    mSeq.PopLock();
    ASSERT_TRUE(mSeq.PrefetchData(nullptr, false));
    EXPECT_EQ(mSeq.GetPCSnap(2), nullptr) << "one read per call";
    VolumeSnap_cls* pSnap = mSeq.GetPCSnap(1);
    ASSERT_NE(pSnap, nullptr);
    pSnap->WaitReadingThread(1);
    FlushThreadLogs();
    EXPECT_EQ(pSnap->mSizeZ, 9);
    EXPECT_EQ(pSnap->mData[8 * 8 * 9 - 1], static_cast<unsigned char>(((8 * 8 * 9 - 1) * 7 + 3) % 251));
    EXPECT_TRUE(mLog.Contains("ReadLog :: " + P("s001.df3") + "::"));
    EXPECT_EQ(mSeq.mReadingLock.load(), 0);
    EXPECT_EQ(mSeq.GetTotalUsedMemoryMB(), 0);
}

TEST_F(VolumeReaderTest, ImageStackStopsAtASliceOfAnotherSize) {
    // Slices of 7 x 5, then one of 5 x 4, then 7 x 5 again.
    const wxString strData = wxString(ORV_TEST_DATA_DIR);
    const char* slices[] = {"/png/grey8_000.png", "/heightfield/grey8_000.png", "/png/grey8_002.png"};
    for (int z = 0; z < 3; ++z)
        ASSERT_TRUE(WriteBytes(P(wxString::Format("t000_z%03d.png", z)), ReadBytes(strData + slices[z])));
    mSeq.SetDual(P("t%03d_z%03d.png"), 0, 0, 1, 1);
    mSeq.CalcMaxOffsetDual();
    VolumeSnap_cls* pSnap = mSeq.GenerateIfNot(0);
    mSeq.PrepareSnap(pSnap, 0, true);
    ASSERT_TRUE(pSnap->PrefetchData(true));
    pSnap->WaitReadingThread(1);
    FlushThreadLogs();
    ASSERT_EQ(pSnap->mSizeZ, 3);
    EXPECT_NE(pSnap->mData[0], 0);
    EXPECT_EQ(pSnap->mData[35], 0) << "reading stopped at slice 1";
    EXPECT_EQ(pSnap->mData[70], 0);
    EXPECT_TRUE(mLog.Contains("Image stack reading stops at slice 1"));
}

} // namespace

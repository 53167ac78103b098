// Volume steps: df3 headers and voxels, the extension rule, the sine pattern, bad headers, and
// image stacks read slice by slice with rows flipped and only red kept.
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "VolumeSequence_cls.h"
#include "VolumeSnap_cls.h"

#include <gtest/gtest.h>
#include <png.h>

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

// Writes an RGBA picture of width x height whose pixel (x, y) has red = red(x, y).
bool WritePng(const wxString& path, int width, int height, const std::function<int(int, int)>& red) {
    std::vector<unsigned char> rgba(static_cast<size_t>(width) * height * 4);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            unsigned char* p = &rgba[(static_cast<size_t>(y) * width + x) * 4];
            p[0] = static_cast<unsigned char>(red(x, y));
            p[1] = 200; // green and blue must not count
            p[2] = 100;
            p[3] = static_cast<unsigned char>(x == 0 ? 0 : 255); // nor alpha
        }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGBA;
    return png_image_write_to_file(&image, path.fn_str(), 0, rgba.data(), 0, nullptr) != 0;
}

class VolumeReaderTest : public ::testing::Test {
protected:
    wxString P(const wxString& name) const { return mDir.Path(name); }
    ServicesScope_cls mServices;
    LogCapture_cls mLog;
    TempDir_cls mDir;
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

TEST_F(VolumeReaderTest, ImageStackKeepsRedAndFlipsRows) {
    const int w = 5, h = 3;
    auto red = [](int z) { return [z](int x, int y) { return 10 * y + x + 100 * z; }; };
    for (int z = 0; z < 2; ++z)
        ASSERT_TRUE(WritePng(P(wxString::Format("s000_z%03d.png", z)), w, h, red(z)));
    mSeq.SetDual(P("s%03d_z%03d.png"), 0, 0, 1, 1);
    mSeq.CalcMaxOffsetDual();
    ASSERT_EQ(mSeq.GetSnapCount(), 1);
    VolumeSnap_cls* pSnap = mSeq.GenerateIfNot(0);
    mSeq.PrepareSnap(pSnap, 0, true);
    pSnap->ReadHeader(true);
    ASSERT_EQ(pSnap->mSizeX, w);
    ASSERT_EQ(pSnap->mSizeY, h);
    ASSERT_EQ(pSnap->mSizeZ, 2);
    ASSERT_TRUE(pSnap->ReadData());
    for (int z = 0; z < 2; ++z)
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                // Voxel (x, h - 1 - y, z) holds the red of pixel (x, y).
                const size_t at = (static_cast<size_t>(z) * h + (h - 1 - y)) * w + x;
                ASSERT_EQ(pSnap->mData[at], red(z)(x, y)) << x << " " << y << " " << z;
            }
}

TEST_F(VolumeReaderTest, ImageStackStopsAtASliceOfAnotherSize) {
    ASSERT_TRUE(WritePng(P("t000_z000.png"), 4, 4, [](int, int) { return 7; }));
    ASSERT_TRUE(WritePng(P("t000_z001.png"), 3, 4, [](int, int) { return 8; }));
    ASSERT_TRUE(WritePng(P("t000_z002.png"), 4, 4, [](int, int) { return 9; }));
    ASSERT_TRUE(WriteBytes(P("t000_z003.png"), "not a picture"));
    mSeq.SetDual(P("t%03d_z%03d.png"), 0, 0, 1, 1);
    mSeq.CalcMaxOffsetDual();
    VolumeSnap_cls* pSnap = mSeq.GenerateIfNot(0);
    mSeq.PrepareSnap(pSnap, 0, true);
    ASSERT_TRUE(pSnap->PrefetchData(true));
    pSnap->WaitReadingThread(1);
    FlushThreadLogs();
    ASSERT_EQ(pSnap->mSizeZ, 4);
    EXPECT_EQ(pSnap->mData[0], 7);
    EXPECT_EQ(pSnap->mData[16], 0) << "reading stopped at slice 1";
    EXPECT_EQ(pSnap->mData[32], 0);
    EXPECT_TRUE(mLog.Contains("Image stack reading stops at slice 1"));
}

TEST_F(VolumeReaderTest, ImageStackWithoutReadableFirstSlice) {
    ASSERT_TRUE(WriteBytes(P("u000_z000.png"), std::string("\x89PNG\r\n\x1a\n garbage", 17)));
    mSeq.SetDual(P("u%03d_z%03d.png"), 0, 0, 1, 1);
    mSeq.CalcMaxOffsetDual();
    VolumeSnap_cls* pSnap = mSeq.GenerateIfNot(0);
    mSeq.PrepareSnap(pSnap, 0, true);
    pSnap->ReadHeader(true);
    EXPECT_TRUE(mLog.Contains("First slice of the image stack cannot be read"));
    EXPECT_EQ(pSnap->GetUsedMemoryByte(), 0);
    pSnap->ReadData();
}

} // namespace

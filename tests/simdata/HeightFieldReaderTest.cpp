// Height-field steps: 8- and 16-bit PNG pictures with the channel choice and rows flipped, the raw
// float grid (plain and gzip), a numbered sequence read on the reader thread, and the refusal of
// pictures of the wrong depth and of cut grids.
#include "HeightFieldSequence_cls.h"
#include "HeightFieldSnap_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "UseGZ_cls.h"

#include <gtest/gtest.h>

namespace {

wxString Data(const char* pName) {
    return wxString(ORV_TEST_DATA_DIR) + "/heightfield/" + pName;
}

// The grey value that the generator put at picture pixel (x, row from the top) of step s.
int Grey(int x, int row, int s) {
    return 10 + 40 * x + 3 * row + 5 * s;
}

HeightFieldSnap_cls* ReadNow(HeightFieldSequence_cls& seq, const wxString& strPath, int channel) {
    seq.FileSequence_cls::Set(strPath, 0, 1);
    seq.CalcMaxOffset(false);
    HeightFieldSnap_cls* p = seq.GenerateIfNot(0);
    seq.PrepareSnap(p, 0, channel);
    p->ReadData();
    return p;
}

} // namespace

using HeightFieldReaderTest = DataFileFixture_cls;

TEST_F(HeightFieldReaderTest, PicturesGiveHeightsByChannelWithTheTopRowFar) {
    struct Case {
        const char* pName;
        int channel;
        std::function<double(int, int)> expected; // of x and the row from the top
    };
    const Case cases[] = {
        {"grey8_000.png", 0, [](int x, int r) { return Grey(x, r, 0) / 255.0; }},
        {"grey8_000.png", 2, [](int x, int r) { return Grey(x, r, 0) / 255.0; }}, // grey answers every colour
        {"grey8_000.png", 3, [](int, int) { return 1.0; }},                       // no alpha: 1
        {"grey8_001.png", 0, [](int x, int r) { return Grey(x, r, 1) / 255.0; }},
        // 16 bits keep the low byte.
        {"grey16_000.png", 0, [](int x, int r) { return (Grey(x, r, 0) * 256 + 7) / 65535.0; }},
        {"rgba8.png", 0, [](int x, int r) { return Grey(x, r, 0) / 255.0; }},
        {"rgba8.png", 1, [](int x, int r) { return (255 - Grey(x, r, 0)) / 255.0; }},
        {"rgba8.png", 2, [](int, int) { return 100 / 255.0; }},
        {"rgba8.png", 3, [](int, int) { return 200 / 255.0; }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(wxString::Format("%s channel %d", c.pName, c.channel));
        HeightFieldSequence_cls seq;
        HeightFieldSnap_cls* p = ReadNow(seq, Data(c.pName), c.channel);
        ASSERT_FALSE(p->mbBad) << (mLog.mVStrLines.empty() ? wxString() : mLog.mVStrLines.back());
        ASSERT_EQ(p->mWidth, 5);
        ASSERT_EQ(p->mHeight, 4);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 5; ++x)
                EXPECT_NEAR(p->GetHeight(x, y), c.expected(x, 3 - y), 1e-6) << x << "," << y;
    }
}

TEST_F(HeightFieldReaderTest, RawGridPlainAndPacked) {
    // The same grid through gzip.
    unsigned char* pRaw = nullptr;
    long long size = 0;
    ASSERT_TRUE(UseGZ_cls::CopyToMemory(&pRaw, Data("grid_001.f32"), size));
    std::unique_ptr<unsigned char[]> pBytes(pRaw);
    const wxString strPacked = mDir.Path("grid.f32.gz");
    ASSERT_TRUE(UseGZ_cls::SaveMemoryToGZ(strPacked, reinterpret_cast<const char*>(pBytes.get()), size - 1));
    struct Case {
        wxString strPath;
        double step;
    };
    const Case cases[] = {{Data("grid_000.f32"), 0.0}, {Data("grid_001.f32"), 1.0}, {strPacked, 1.0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.strPath);
        HeightFieldSequence_cls seq;
        HeightFieldSnap_cls* p = ReadNow(seq, c.strPath, 0);
        ASSERT_FALSE(p->mbBad);
        ASSERT_EQ(p->mWidth, 3);
        ASSERT_EQ(p->mHeight, 2);
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < 3; ++x)
                EXPECT_FLOAT_EQ(p->GetHeight(x, y), static_cast<float>(x + 10 * y + 0.5 * c.step));
    }
}

TEST_F(HeightFieldReaderTest, WrongDepthCutAndForeignFilesGiveNothingAndOneLogLine) {
    std::string noise(300, '\0');
    std::mt19937 rng(11);
    for (char& ch : noise)
        ch = static_cast<char>(rng());
    ASSERT_TRUE(WriteBytes(mDir.Path("noise.png"), noise));
    std::string header = "HF32";
    header += std::string("\xff\xff\xff\x7f\x02\x00\x00\x00", 8);
    ASSERT_TRUE(WriteBytes(mDir.Path("huge.f32"), header));
    struct Case {
        wxString strPath;
        const char* pWhy;
    };
    const Case cases[] = {
        {Data("palette.png"), "heights need 8 or 16 bits"},
        {Data("bits1.png"), "a PNG of 1 bits per sample"},
        {Data("short.f32"), "the raw grid is short: 8 of 24 bytes"},
        {mDir.Path("huge.f32"), "cannot be a height field"},
        {mDir.Path("noise.png"), "neither a PNG nor a raw grid"},
        {mDir.Path("missing.png"), "cannot be read"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.strPath);
        mLog.mVStrLines.clear();
        HeightFieldSequence_cls seq;
        HeightFieldSnap_cls* p = ReadNow(seq, c.strPath, 0);
        EXPECT_TRUE(p->mbBad);
        EXPECT_EQ(p->mWidth, 0);
        EXPECT_TRUE(p->mHeights.empty());
        ASSERT_EQ(mLog.mVStrLines.size(), 1u);
        EXPECT_TRUE(mLog.mVStrLines[0].Contains(c.pWhy)) << mLog.mVStrLines[0];
    }
}

TEST_F(HeightFieldReaderTest, SequenceReadsAheadOnTheReaderThreadAndRereadsForAnotherChannel) {
    mServices.SetFrames(2, 0);
    mServices.SetPrefetch(2);
    HeightFieldSequence_cls seq;
    seq.FileSequence_cls::Set(Data("grey8_000.png"), 0, 1);
    seq.CalcMaxOffset(true);
    seq.mIsSequence = true;
    ASSERT_EQ(seq.GetSnapCount(), 2);
    int reads = 0;
    while (seq.PrefetchData(nullptr, 0)) {
        ++reads;
        for (int i = 0; i < 2; ++i)
            if (HeightFieldSnap_cls* p = seq.GetPCSnap(i))
                p->WaitReadingThread(1);
    }
    EXPECT_EQ(reads, 2);
    ASSERT_NE(seq.GetPCSnap(1), nullptr);
    EXPECT_NEAR(seq.GetPCSnap(1)->GetHeight(0, 3), Grey(0, 0, 1) / 255.0, 1e-6);
    EXPECT_EQ(seq.GetTotalUsedMemoryMB(), 0) << "two 5 x 4 grids are far below one MB";
    // Another channel reads the step again: alpha of a grey picture is 1 everywhere.
    EXPECT_TRUE(seq.PrefetchData(nullptr, 3));
    seq.GetPCSnap(0)->WaitReadingThread(1);
    EXPECT_FLOAT_EQ(seq.GetPCSnap(0)->GetHeight(2, 2), 1.0f);
}

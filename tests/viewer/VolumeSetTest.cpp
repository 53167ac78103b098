// The volume object's prepared sets: bytes mixed between two steps (equal sizes and resized),
// the spare set mixed on a worker while playing and taken when it fits, the reuse of a set for
// a mere redraw, and the data of bad files (a df3 shorter than its header, image stacks with a
// missing slice or slices of another size): a log line, no crash, the bytes the reader leaves.
#include "ViewerFixture.h"

#include "DataMemoryCtrl_cls.h"
#include "VolumeBox_cls.h"
#include "VolumeFoRender_cls.h"
#include "VolumeSnap_cls.h"

#include <png.h>

#include <functional>
#include <string>

namespace {

// A df3 header for n cubed voxels, then the given voxel bytes.
std::string Df3(int n, const std::string& voxels) {
    std::string s;
    for (int k = 0; k < 3; ++k) {
        s.push_back(static_cast<char>((n >> 8) & 0xff));
        s.push_back(static_cast<char>(n & 0xff));
    }
    return s + voxels;
}

bool WriteGrayPng(const wxString& path, int width, int height, unsigned char value) {
    std::vector<unsigned char> px(static_cast<size_t>(width) * height, value);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_GRAY;
    return png_image_write_to_file(&image, path.fn_str(), 0, px.data(), 0, nullptr) != 0;
}

} // namespace

class VolumeSetTest : public ViewerFixture {
protected:
    void SetUp() override {
        ViewerFixture::SetUp();
        GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(2LL);
        GpCTimeCtrl->mCSubFrameStepping.SetBodyFromData(1LL);
        SetFrames(4, 0);
        SetPrefetch(0);
        mpV = dynamic_cast<VolumeBox_cls*>(Obj(Ctrl()->AppendSceneObjCommand("VolumeBox", "")));
        ASSERT_NE(mpV, nullptr);
    }
    void TearDown() override {
        GpCTimeCtrl->mPlayDirection = 0;
        ViewerFixture::TearDown();
    }
    VolumeBox_cls* mpV = nullptr;
};

TEST_F(VolumeSetTest, BytesMixByTruncationAndResample) {
    struct Case {
        double f;
        unsigned char out; // of a = 10, b = 251
    };
    for (const Case& c : {Case{0.0, 10}, Case{0.25, 70}, Case{0.5, 130}, Case{1.0, 251}, Case{0.999, 250}}) {
        SCOPED_TRACE(c.f);
        const unsigned char a[3] = {10, 10, 10}, b[3] = {251, 251, 251};
        unsigned char out[3] = {};
        VolumeFoRender_cls::CopyDataFromSnap_EqualSize(out, a, b, c.f, 3);
        EXPECT_EQ(out[2], c.out);
    }
    // A 2-cube step mixed with a 4-cube one: each voxel meets the voxel of b under its centre.
    VolumeSequence_cls seq;
    VolumeSnap_cls small(&seq, 0), large(&seq, 1);
    ASSERT_TRUE(WriteBytes(mDir.Path("s.df3"), Df3(2, std::string(8, '\0'))));
    std::string voxels;
    for (int i = 0; i < 64; ++i)
        voxels.push_back(static_cast<char>(i * 2));
    ASSERT_TRUE(WriteBytes(mDir.Path("l.df3"), Df3(4, voxels)));
    for (auto* p : {&small, &large}) {
        p->SetStrFile(mDir.Path(p == &small ? "s.df3" : "l.df3"));
        p->ReadHeader(false);
        ASSERT_TRUE(p->ReadData());
    }
    VolumeFoRender_cls set;
    ASSERT_TRUE(set.PrepareData(&small, &large, 3, 1.0f, "k"));
    EXPECT_EQ(set.mWidth, 2);
    ASSERT_EQ(set.mData.size(), 8u);
    // The centre of voxel 1 of 2 stands at 0.75, in voxel 3 of 4; that of voxel 0 in voxel 1.
    EXPECT_EQ(set.mData[7], 2 * 63) << "(1, 1, 1) takes (3, 3, 3)";
    EXPECT_EQ(set.mData[0], 2 * 21) << "(0, 0, 0) takes (1, 1, 1)";
    EXPECT_TRUE(set.IsSameStep(3, 1.0f));
    EXPECT_FALSE(set.mbTextureUpToDate);
    EXPECT_FALSE(set.PrepareData(nullptr, &large, 0, 0.f, "k"));
}

TEST_F(VolumeSetTest, PlayingMixesTheNextFrameOnAWorkerAndSwaps) {
    LogCapture_cls log;
    for (int i = 0; i < 4; ++i)
        ASSERT_TRUE(
            WriteBytes(mDir.Path(wxString::Format("v%03d.df3", i)), Df3(4, std::string(64, char(20 * i)))));
    mpV->mCPath.PushCommandPair(mDir.Path("v000.df3"));
    ASSERT_EQ(mpV->CheckFileSequence(), 4);
    // Not playing: step 0 alone, nothing ahead; a redraw keeps the set.
    ASSERT_TRUE(mpV->PrepareDraw());
    EXPECT_EQ(mpV->mpCCurrent->mData[5], 0);
    const int counter = mpV->mpCCurrent->mDataCounter;
    ASSERT_TRUE(mpV->PrepareDraw());
    EXPECT_EQ(mpV->mpCCurrent->mDataCounter, counter) << "the same step and keys are not mixed again";
    EXPECT_FALSE(mpV->WaitPrepareNext());
    // Every step in memory, as the idle passes leave them before playing.
    SetPrefetch(4);
    double mb = 0.0;
    for (int pass = 0; pass < 4; ++pass) {
        DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb);
        for (int i = 0; i < 4; ++i)
            if (VolumeSnap_cls* p = mpV->mCSequence.GetPCSnap(i))
                p->WaitReadingThread(1);
    }
    // Playing: half a frame on is mixed in the background, and taken at the next draw.
    GpCTimeCtrl->mPlayDirection = 1;
    ASSERT_TRUE(mpV->PrepareDraw());
    ASSERT_TRUE(mpV->WaitPrepareNext());
    const VolumeFoRender_cls* pSpare = mpV->mpCNext.get();
    EXPECT_EQ(pSpare->mFactor, 0.5f);
    EXPECT_EQ(pSpare->mData[63], 10) << "half way from 0 to 20";
    GpCTimeCtrl->mCSubFrameCurrent.SetBodyFromData(1LL);
    log.mVStrLines.clear();
    ASSERT_TRUE(mpV->PrepareDraw());
    EXPECT_EQ(mpV->mpCCurrent.get(), pSpare);
    EXPECT_TRUE(log.Contains("Swap Render Snap"));
    ASSERT_TRUE(mpV->WaitPrepareNext());
    EXPECT_EQ(mpV->mpCNext->mFrame, 1);
    EXPECT_EQ(mpV->mpCNext->mData[0], 20) << "frame 1 whole";
    // Deleting the object while a worker may run waits for it.
    ASSERT_TRUE(mpV->PrepareDraw());
    Ctrl()->Clear();
    mpV = nullptr;
}

TEST_F(VolumeSetTest, BadFilesGiveALogLineAndTheBytesTheReaderLeaves) {
    struct Case {
        const char* name;
        std::function<wxString()> make; // writes the files, returns Path=
        bool bStack;
        const char* log;
        size_t size;       // voxels of the set
        size_t firstEmpty; // index of the first voxel that stays 0
    };
    auto df3Short = [this]() {
        EXPECT_TRUE(WriteBytes(mDir.Path("short.df3"), Df3(4, std::string(10, char(9)))));
        return mDir.Path("short.df3");
    };
    // Slices 0 and 1 of 4 by 4, then slice 2 missing: the stack ends at the gap and says so; or
    // slice 1 of another size: the read stops there.
    auto stackMissing = [this]() {
        EXPECT_TRUE(WriteGrayPng(mDir.Path("m000_z000.png"), 4, 4, 5));
        EXPECT_TRUE(WriteGrayPng(mDir.Path("m000_z001.png"), 4, 4, 6));
        EXPECT_TRUE(WriteGrayPng(mDir.Path("m000_z003.png"), 4, 4, 7));
        return mDir.Path("m%03d_z%03d.png");
    };
    auto stackSizes = [this]() {
        EXPECT_TRUE(WriteGrayPng(mDir.Path("d000_z000.png"), 4, 4, 5));
        EXPECT_TRUE(WriteGrayPng(mDir.Path("d000_z001.png"), 3, 4, 6));
        EXPECT_TRUE(WriteGrayPng(mDir.Path("d000_z002.png"), 4, 4, 7));
        return mDir.Path("d%03d_z%03d.png");
    };
    const Case cases[] = {
        {"df3 shorter than its header", df3Short, false, "is short: 10 of 64 voxels read", 64, 10},
        {"stack with a missing slice", stackMissing, true, "slice 2 is missing", 32, 32},
        {"stack with a slice of another size", stackSizes, true, "Image stack reading stops at slice 1", 48,
         16},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        mpV->mCZStack.PushCommandPair(c.bStack ? "1" : "0");
        mpV->mCPath.PushCommandPair(c.make());
        ASSERT_TRUE(mpV->PrepareDraw());
        wxLog::FlushActive();
        const VolumeFoRender_cls& set = *mpV->mpCCurrent;
        ASSERT_EQ(set.mData.size(), c.size);
        EXPECT_NE(set.mData[0], 0);
        for (size_t i = c.firstEmpty; i < c.size; ++i)
            ASSERT_EQ(set.mData[i], 0) << i;
        EXPECT_TRUE(log.Contains(c.log));
    }
}

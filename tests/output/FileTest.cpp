#include "BatchOptions_cls.h"
#include "FrameClaim_cls.h"
#include "ImageFile_cls.h"
#include "ImageOutput_cls.h"
#include "ReadPNG_cls.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {
// A picture whose samples all differ: channel c of pixel i is (i * 7 + c * 50) scaled to the type.
ImageFile_cls MakeImage(int width, int height, int channels, SampleType_enum type) {
    ImageFile_cls image;
    image.mWidth = width;
    image.mHeight = height;
    image.mChannels = channels;
    image.mType = type;
    const size_t n = static_cast<size_t>(width) * height * channels;
    for (size_t k = 0; k < n; ++k) {
        const size_t i = k / channels, c = k % channels;
        if (type == SampleType_enum::UInt8)
            image.mV8.push_back(static_cast<uint8_t>((i * 7 + c * 50) % 256));
        else
            image.mV16.push_back(static_cast<uint16_t>((i * 7919 + c * 12345) % 65536));
    }
    return image;
}
} // namespace

TEST(PNGTest, RoundTripOfEightAndSixteenBits) {
    TempDir_cls dir;
    struct Case_cls {
        SampleType_enum type;
        int channels;
        int level;
    };
    const Case_cls cases[] = {{SampleType_enum::UInt8, 3, 6},
                              {SampleType_enum::UInt8, 4, 0},
                              {SampleType_enum::UInt16, 3, 9},
                              {SampleType_enum::UInt16, 4, 1}};
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(testing::Message() << "bits " << (c.type == SampleType_enum::UInt8 ? 8 : 16)
                                        << ", channels " << c.channels << ", level " << c.level);
        const ImageFile_cls image = MakeImage(13, 5, c.channels, c.type);
        const std::string strPath = dir.Path("a.png").utf8_string();
        std::string strError;
        ASSERT_TRUE(image.Write(strPath, c.level, strError)) << strError;
        PNGImage_cls read;
        FILE* pFile = nullptr;
        ASSERT_TRUE(ReadPNG_cls::ReadPNG(pFile, dir.Path("a.png"), read));
        EXPECT_EQ(pFile, nullptr);
        EXPECT_EQ(wxSize(read.mWidth, read.mHeight), wxSize(13, 5));
        const bool b8 = c.type == SampleType_enum::UInt8;
        EXPECT_EQ(read.mBitDepth, b8 ? 8 : 16);
        EXPECT_EQ(read.mbAlpha, c.channels == 4);
        for (int i = 0; i < 13 * 5; ++i) {
            for (int k = 0; k < c.channels; ++k) {
                const size_t src = static_cast<size_t>(i) * c.channels + k, rgb = i * 3 + k;
                const int got = k == 3 ? (b8 ? read.mVAlpha8[i] : read.mVAlpha16[i])
                                       : (b8 ? read.mVRGB8[rgb] : read.mVRGB16[rgb]);
                ASSERT_EQ(got, b8 ? image.mV8[src] : image.mV16[src]) << "pixel " << i << " channel " << k;
            }
        }
    }
    // Level 0 stores, level 9 compresses: the same picture gives a smaller file.
    const ImageFile_cls flat = MakeImage(64, 64, 3, SampleType_enum::UInt8);
    std::string strError;
    ASSERT_TRUE(flat.Write(dir.Path("l0.png").utf8_string(), 0, strError));
    ASSERT_TRUE(flat.Write(dir.Path("l9.png").utf8_string(), 9, strError));
    EXPECT_LT(ReadBytes(dir.Path("l9.png")).size(), ReadBytes(dir.Path("l0.png")).size());
}

TEST(PNGTest, BadFilesAreRefusedWithAnEmptyImage) {
    TempDir_cls dir;
    const ImageFile_cls image = MakeImage(32, 32, 3, SampleType_enum::UInt8);
    std::string strError;
    ASSERT_TRUE(image.Write(dir.Path("whole.png").utf8_string(), 6, strError));
    const std::string whole = ReadBytes(dir.Path("whole.png"));
    struct Case_cls {
        const char* name;
        std::string bytes;
    };
    const Case_cls cases[] = {
        {"empty", ""},
        {"text", "not a png at all"},
        {"header only", whole.substr(0, 8)},
        {"cut short", whole.substr(0, whole.size() / 2)},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(WriteBytes(dir.Path("bad.png"), c.bytes));
        PNGImage_cls read;
        EXPECT_FALSE(ReadPNG_cls::ReadPNG(dir.Path("bad.png"), read));
        EXPECT_EQ(read.mWidth, 0);
        EXPECT_TRUE(read.mVRGB8.empty());
    }
    PNGImage_cls read;
    EXPECT_FALSE(ReadPNG_cls::ReadPNG(dir.Path("missing.png"), read));
    // A folder that cannot be written is an error with the reason, not a crash.
    EXPECT_FALSE(image.Write(dir.Path("no/such/folder/x.png").utf8_string(), 6, strError));
    EXPECT_NE(strError.find("cannot open"), std::string::npos) << strError;
}

TEST(PNGTest, FormatFollowsTheExtension) {
    struct Case_cls {
        const char* path;
        int pngBits;
        bool ok;
        SampleType_enum type;
    };
    const Case_cls cases[] = {
        {"a/b.png", 8, true, SampleType_enum::UInt8},
        {"a/b.PNG", 16, true, SampleType_enum::UInt16},
        {"b.png", 12, true, SampleType_enum::UInt8},
        {"b.exr", 8, ImageFile_cls::IsOpenEXRBuiltIn(), SampleType_enum::Float},
        {"a/b.JPG", 16, true, SampleType_enum::UInt8}, // the toolkit's formats are 8 bits whatever PNG takes
        {"b.tiff", 8, true, SampleType_enum::UInt8},
        {"b.gif", 8, false, SampleType_enum::UInt8},
        {"b.xyz", 8, false, SampleType_enum::UInt8},
        {"dir.png/b", 8, false, SampleType_enum::UInt8},
    };
    ImageFile_cls::RegisterImageHandlers();
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.path);
        SampleType_enum type = SampleType_enum::UInt8;
        EXPECT_EQ(ImageFile_cls::GetSampleTypeForPath(c.path, c.pngBits, type), c.ok);
        if (c.ok) {
            EXPECT_EQ(type, c.type);
        }
    }
}

TEST(ImageOutputTest, NamesOfTheFrames) {
    ImageOutput_cls output;
    struct Case_cls {
        const char* pattern;
        int step, eye;
        const char* expected;
        bool sequence;
    };
    const Case_cls cases[] = {
        {"out/frame%04d.png", 12, 0, "out/frame0012.png", true},
        {"out/frame%04d.png", 3, 1, "out/frameL0003.png", true},
        {"out/frame%04d.png", 3, 2, "out/frameR0003.png", true},
        {"preview.png", 7, 0, "preview.png", false}, // no number: every frame overwrites one file
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.pattern);
        output.mCFileFormat.SetBodyFromData(c.pattern);
        EXPECT_EQ(output.GetModifiedStr(c.step, c.eye), c.expected);
        EXPECT_EQ(output.IsSequence(), c.sequence);
    }
    output.mCFileFormat.SetBodyFromData("/out/shot.png");
    output.AppendDefaultSequenceTag();
    EXPECT_EQ(output.mCFileFormat.GetBodySTR(), "/out/shot%04d.png");
    EXPECT_EQ(output.GetModifiedStr(5, 0), "/out/shot0005.png");
    // A pattern that has its field keeps it.
    output.AppendDefaultSequenceTag();
    EXPECT_EQ(output.mCFileFormat.GetBodySTR(), "/out/shot%04d.png");
}

TEST(ImageOutputTest, CheckFileSequence) {
    TempDir_cls dir;
    ImageOutput_cls output;
    struct Case_cls {
        wxString pattern;
        bool ok;
    };
    const Case_cls cases[] = {
        {dir.Path("f%04d.png"), true},
        {dir.Path("missing/f%04d.png"), false},
        {"", false},
        {dir.mStrPath, false},
        {"relative.png", true},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.pattern.utf8_string());
        output.mCFileFormat.SetBodyFromData(c.pattern);
        EXPECT_EQ(output.CheckFileSequence(), c.ok);
    }
}

TEST(BatchOptionsTest, ParsesAndRefuses) {
    struct Case_cls {
        std::vector<const char*> args;
        bool ok;
        const char* error; // part of the message
    };
    const Case_cls cases[] = {
        {{"p.ovp"}, true, ""},
        {{"p.ovp", "--frames", "3-9:2", "--size", "320x200", "--shard", "1/4", "--quiet", "--skip-existing"},
         true,
         ""},
        {{}, false, "no project"},
        {{"p.ovp", "q.ovp"}, false, "more than one project"},
        {{"p.ovp", "--frames", "9-3"}, false, "--frames"},
        {{"p.ovp", "--frames", "1-3:0"}, false, "step"},
        {{"p.ovp", "--size", "320"}, false, "--size"},
        {{"p.ovp", "--size", "0x10"}, false, "--size"},
        {{"p.ovp", "--shard", "4/4"}, false, "--shard"},
        {{"p.ovp", "--png-level", "10"}, false, "--png-level"},
        {{"p.ovp", "--claim-timeout", "-1"}, false, "--claim-timeout"},
        {{"p.ovp", "--video", "a.avi"}, false, ".mp4"},
        {{"p.ovp", "--bogus", "1"}, false, "unknown option --bogus"},
        {{"p.ovp", "--out"}, false, "needs a value"},
    };
    for (const Case_cls& c : cases) {
        std::vector<const char*> argv = {"orvantis4-batch"};
        argv.insert(argv.end(), c.args.begin(), c.args.end());
        std::string strLine;
        for (const char* p : c.args)
            strLine += std::string(p) + " ";
        SCOPED_TRACE(strLine);
        BatchOptions_cls options;
        EXPECT_EQ(options.Parse(static_cast<int>(argv.size()), argv.data()), c.ok);
        EXPECT_NE(options.mStrError.find(c.error), std::string::npos) << options.mStrError;
    }
    BatchOptions_cls options;
    const char* argv[] = {"b",       "p.ovp",   "--frames", "3-9:2",       "--size",
                          "320x200", "--shard", "1/4",      "--png-level", "0"};
    ASSERT_TRUE(options.Parse(10, argv));
    EXPECT_EQ(options.mFrameFirst, 3);
    EXPECT_EQ(options.mFrameLast, 9);
    EXPECT_EQ(options.mFrameStep, 2);
    EXPECT_EQ(options.mWidth, 320);
    EXPECT_EQ(options.mHeight, 200);
    EXPECT_EQ(options.mShardIndex, 1);
    EXPECT_EQ(options.mShardCount, 4);
    EXPECT_EQ(options.mPNGLevel, 0);
}

TEST(BatchOptionsTest, PositionsFollowPlaybackAndShardsSplitThem) {
    using Positions = std::vector<std::pair<int, int>>;
    // Two subframes a frame, stepping one: (3,0) (3,1) (4,0) ... (5,0).
    EXPECT_EQ(BatchOptions_cls::GetPositions(3, 5, 1, 2, 1, 0, 1),
              (Positions{{3, 0}, {3, 1}, {4, 0}, {4, 1}, {5, 0}}));
    // Stepping two subframes visits whole frames only.
    EXPECT_EQ(BatchOptions_cls::GetPositions(0, 3, 1, 2, 2, 0, 1),
              (Positions{{0, 0}, {1, 0}, {2, 0}, {3, 0}}));
    // Every second position.
    EXPECT_EQ(BatchOptions_cls::GetPositions(0, 3, 2, 1, 1, 0, 1), (Positions{{0, 0}, {2, 0}}));
    // Four shards take every fourth, and together exactly the whole list.
    const Positions all = BatchOptions_cls::GetPositions(0, 20, 1, 2, 1, 0, 1);
    Positions joined;
    for (int shard = 0; shard < 4; ++shard) {
        const Positions mine = BatchOptions_cls::GetPositions(0, 20, 1, 2, 1, shard, 4);
        for (size_t k = 0; k < mine.size(); ++k)
            EXPECT_EQ(mine[k], all[shard + 4 * k]);
        joined.insert(joined.end(), mine.begin(), mine.end());
    }
    std::sort(joined.begin(), joined.end());
    EXPECT_EQ(joined, all);
    EXPECT_EQ(all.size(), 41u);
}

TEST(BatchOptionsTest, SlurmScriptRunsEachShardResuming) {
    BatchOptions_cls options;
    options.mSlurmTasks = 4;
    const std::string str =
        options.GetSlurmScript("/opt/o4/orvantis4-batch", {"/p/demo.ovp", "--out", "/o/it's%04d.png"});
    EXPECT_EQ(str.rfind("#!/bin/bash\n", 0), 0u);
    EXPECT_NE(str.find("#SBATCH --array=0-3\n"), std::string::npos);
    EXPECT_NE(str.find("exec '/opt/o4/orvantis4-batch' '/p/demo.ovp' '--out' '/o/it'\\''s%04d.png' --shard "
                       "\"${SLURM_ARRAY_TASK_ID}/4\" --skip-existing\n"),
              std::string::npos)
        << str;
}

TEST(FrameClaimTest, ClaimsAreExclusiveAndStaleOnesAreTakenOver) {
    TempDir_cls dir;
    const std::string strTarget = dir.Path("f0001.png").utf8_string();
    std::string strError;
    ASSERT_EQ(FrameClaim_cls::Claim(strTarget, 60, strError), FrameClaim_cls::CLAIMED);
    // Ours, and alive: held.
    EXPECT_EQ(FrameClaim_cls::Claim(strTarget, 60, strError), FrameClaim_cls::HELD_BY_OTHER);
    const std::string strClaim = ReadBytes(FrameClaim_cls::GetClaimPath(strTarget));
    EXPECT_EQ(strClaim.rfind(FrameClaim_cls::GetHostName() + " " + std::to_string(getpid()) + " ", 0), 0u)
        << strClaim;
    FrameClaim_cls::Release(strTarget);
    EXPECT_FALSE(wxFileExists(FrameClaim_cls::GetClaimPath(strTarget)));

    // A process of this host that is gone.
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    waitpid(child, nullptr, 0);
    const std::string strHost = FrameClaim_cls::GetHostName();
    const long long now = time(nullptr);
    struct Case_cls {
        std::string claim;
        double timeout;
        bool stale;
    };
    const Case_cls cases[] = {
        {strHost + " " + std::to_string(child) + " " + std::to_string(now), 1e9, true}, // gone here
        {strHost + " " + std::to_string(getpid()) + " 0", 1.0, false}, // alive here, however old
        {"otherhost 1 " + std::to_string(now - 100), 50.0, true},      // another host, too old
        {"otherhost 1 " + std::to_string(now - 10), 50.0, false},      // another host, recent
        {"garbage", 50.0, false},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.claim);
        EXPECT_EQ(FrameClaim_cls::IsStale(c.claim, strHost, now, c.timeout), c.stale);
        ASSERT_TRUE(WriteBytes(FrameClaim_cls::GetClaimPath(strTarget), c.claim + "\n"));
        EXPECT_EQ(FrameClaim_cls::Claim(strTarget, c.timeout, strError),
                  c.stale ? FrameClaim_cls::TAKEN_OVER : FrameClaim_cls::HELD_BY_OTHER);
        FrameClaim_cls::Release(strTarget);
    }
    EXPECT_EQ(FrameClaim_cls::Claim(dir.Path("no/folder/x.png").utf8_string(), 60, strError),
              FrameClaim_cls::FAILED);
    EXPECT_NE(strError.find("cannot create"), std::string::npos);
}

#include "BatchProcess.h"
#include "ImageFile_cls.h"
#include "ReadPNG_cls.h"
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <wx/dir.h>
#include <wx/image.h>

#include <chrono>
#include <fstream>
#include <map>
#include <thread>

namespace {
const std::string kDemo = std::string(ORV_SOURCE_DIR) + "/examples/demo.ovp";

// Every file of the folder (not the hidden ones) with its bytes.
std::map<std::string, std::string> Files(const wxString& strDir) {
    std::map<std::string, std::string> m;
    wxArrayString astr;
    wxDir::GetAllFiles(strDir, &astr, wxEmptyString, wxDIR_FILES);
    for (const wxString& str : astr)
        m[wxFileName(str).GetFullName().utf8_string()] = ReadBytes(str);
    return m;
}

int CountFiles(const wxString& strDir, const wxString& strSpec) {
    wxArrayString astr;
    wxDir::GetAllFiles(strDir, &astr, strSpec, wxDIR_FILES);
    return static_cast<int>(astr.size());
}

// A quiet run of the project into the folder.
std::vector<std::string> ProjectArgs(const std::string& strProject, const TempDir_cls& dir,
                                     const std::string& strFrames, const std::string& strSize,
                                     std::vector<std::string> vStrMore = {},
                                     const char* pName = "f%04d.png") {
    std::vector<std::string> v = {strProject, "--out",   dir.Path(pName).utf8_string(),
                                  "--frames", strFrames, "--size",
                                  strSize,    "--quiet"};
    v.insert(v.end(), vStrMore.begin(), vStrMore.end());
    return v;
}

std::vector<std::string> Args(const TempDir_cls& dir, const std::string& strFrames,
                              std::vector<std::string> vStrMore = {}) {
    return ProjectArgs(kDemo, dir, strFrames, "64x36", vStrMore);
}

// The project rendered in `count` shards, one after the other, into the folder.
::testing::AssertionResult RunInShards(const std::string& strProject, const TempDir_cls& dir,
                                       const std::string& strFrames, const std::string& strSize, int count,
                                       const char* pName = "f%04d.png") {
    for (int shard = 0; shard < count; ++shard) {
        std::string strLog;
        const std::string strShard = std::to_string(shard) + "/" + std::to_string(count);
        if (BatchProcess_cls::Run(
                ProjectArgs(strProject, dir, strFrames, strSize, {"--shard", strShard}, pName), strLog) != 0)
            return ::testing::AssertionFailure() << "shard " << strShard << ": " << strLog;
    }
    return ::testing::AssertionSuccess();
}

// Writes the project text into the folder and gives its path.
std::string WriteProject(const TempDir_cls& dir, const std::string& strName, const std::string& strText) {
    const std::string strPath = dir.Path(strName).utf8_string();
    std::ofstream out(strPath);
    out << strText;
    return strPath;
}

// Skips the test when this machine gives no GL context (the batch says so with exit code 2).
#define SKIP_WITHOUT_GL(code, log)                                                                           \
    if ((code) == 2 && (log).find("no GL context") != std::string::npos) {                                   \
        GTEST_SKIP() << log;                                                                                 \
    }
} // namespace

TEST(BatchTest, RendersTheDemoAndItsPixelsShowTheScene) {
    TempDir_cls dir;
    std::string strLog;
    const int code = BatchProcess_cls::Run(
        {kDemo, "--out", dir.Path("f%04d.png").utf8_string(), "--frames", "0-60:60", "--size", "64x36"},
        strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    // Every 60th half frame from 0 to 60: frames 0, 30 and 60. One progress line each, and the summary.
    EXPECT_EQ(BatchProcess_cls::CountLines(strLog, "orvantis4-batch: ["), 3) << strLog;
    EXPECT_NE(strLog.find("3 written, 0 skipped, 0 failed"), std::string::npos) << strLog;
    // Frame 60 is step 120 with two subframes a frame.
    PNGImage_cls a, b;
    ASSERT_TRUE(ReadPNG_cls::ReadPNG(dir.Path("f0000.png"), a));
    ASSERT_TRUE(ReadPNG_cls::ReadPNG(dir.Path("f0120.png"), b));
    ASSERT_EQ(a.mWidth, 64);
    ASSERT_EQ(a.mHeight, 36);
    auto px = [](const PNGImage_cls& image, int x, int y) {
        return &image.mVRGB8[(y * image.mWidth + x) * 3];
    };
    // The corner is the background "GLBG" (0.22, 0.22, 0.24).
    EXPECT_NEAR(px(b, 1, 1)[0], 56, 1);
    EXPECT_NEAR(px(b, 1, 1)[2], 61, 1);
    // The planet moves along x and takes its moon with it: near the right edge there is
    // background at frame 0 and the moon at frame 60.
    EXPECT_NEAR(px(a, 60, 14)[0], 56, 1);
    EXPECT_GT(std::abs(px(b, 60, 14)[0] - 56) + std::abs(px(b, 60, 14)[2] - 61), 30);
    EXPECT_NE(ReadBytes(dir.Path("f0000.png")), ReadBytes(dir.Path("f0120.png")));
    // No claim and no temporary file is left.
    EXPECT_EQ(CountFiles(dir.mStrPath, "*.claim"), 0);
    EXPECT_EQ(Files(dir.mStrPath).size(), 3u);
}

TEST(BatchTest, SameFramesTwiceAndInFourShardsGiveTheSameBytes) {
    TempDir_cls one, two, shards;
    std::string strLog;
    int code = BatchProcess_cls::Run(Args(one, "0-5"), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    ASSERT_EQ(BatchProcess_cls::Run(Args(two, "0-5"), strLog), 0) << strLog;
    const auto reference = Files(one.mStrPath);
    EXPECT_EQ(reference.size(), 11u); // (0,0) .. (5,0) in half frames
    EXPECT_EQ(Files(two.mStrPath), reference);
    // Four workers at once on one folder, each its shard.
    std::vector<pid_t> vPids;
    for (int shard = 0; shard < 4; ++shard)
        vPids.push_back(
            BatchProcess_cls::Start(Args(shards, "0-5", {"--shard", std::to_string(shard) + "/4"}),
                                    shards.Path(wxString::Format(".log%d", shard)).utf8_string()));
    for (pid_t pid : vPids)
        EXPECT_EQ(BatchProcess_cls::Wait(pid), 0);
    EXPECT_EQ(Files(shards.mStrPath), reference);
}

TEST(BatchTest, KilledRunResumesWithSkipExistingToTheSameBytes) {
    TempDir_cls reference, dir;
    std::string strLog;
    int code = BatchProcess_cls::Run(Args(reference, "0-12"), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    const auto vReference = Files(reference.mStrPath);
    ASSERT_EQ(vReference.size(), 25u);
    const pid_t pid =
        BatchProcess_cls::Start(Args(dir, "0-12", {"--png-level", "6"}), dir.Path(".log").utf8_string());
    // Kill it once some frames are written and before the end.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (CountFiles(dir.mStrPath, "f*.png") < 4 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    kill(pid, SIGKILL);
    EXPECT_EQ(BatchProcess_cls::Wait(pid), 128 + SIGKILL);
    const int written = CountFiles(dir.mStrPath, "f*.png");
    if (written >= 25) {
        GTEST_SKIP() << "the run finished before it could be killed";
    }
    const int claims = CountFiles(dir.mStrPath, "*.claim");
    // Whatever was renamed into place is whole and right.
    for (const auto& [name, bytes] : Files(dir.mStrPath)) {
        if (name.find(".claim") == std::string::npos) {
            EXPECT_EQ(bytes, vReference.at(name)) << name;
        }
    }
    code = BatchProcess_cls::Run(Args(dir, "0-12", {"--skip-existing"}), strLog);
    ASSERT_EQ(code, 0) << strLog;
    // The files that were there are skipped; only the rest is rendered, the frames in flight
    // (whose claims the dead process left) among them.
    EXPECT_NE(strLog.find(std::to_string(25 - written) + " written, " + std::to_string(written) + " skipped"),
              std::string::npos)
        << strLog << " (claims left: " << claims << ")";
    // Same names and bytes, and no claim left (a file renamed just before the kill kept its claim
    // until the resume found it stale).
    const auto vAfter = Files(dir.mStrPath);
    EXPECT_EQ(vAfter.size(), vReference.size());
    EXPECT_TRUE(vAfter == vReference) << "the resumed files differ from a full run";
}

TEST(BatchTest, ExitCodes) {
    TempDir_cls dir;
    // A file where a folder should be, and a folder where a frame's file should go.
    ASSERT_TRUE(WriteBytes(dir.Path("plainfile"), "x"));
    ASSERT_TRUE(wxFileName::Mkdir(dir.Path("f0002.png")));
    ASSERT_TRUE(WriteBytes(dir.Path("broken.ovp"), ""));
    struct Case_cls {
        const char* name;
        std::vector<std::string> args;
        std::vector<std::string> env;
        int code;
        std::string message;
    };
    const std::string strOut = dir.Path("f%04d.png").utf8_string();
    const Case_cls cases[] = {
        {"all written",
         {kDemo, "--out", dir.Path("ok%04d.png").utf8_string(), "--frames", "0-1", "--size", "8x8"},
         {},
         0,
         "3 written, 0 skipped, 0 failed"},
        {"one frame cannot be renamed into place",
         {kDemo, "--out", strOut, "--frames", "0-1", "--size", "8x8"},
         {},
         1,
         "failed: " + dir.Path("f0002.png").utf8_string()},
        {"bad argument", {kDemo, "--frames", "x"}, {}, 2, "--frames wants"},
        {"no project", {}, {}, 2, "no project given"},
        {"unreadable project", {dir.Path("missing.ovp").utf8_string()}, {}, 2, "cannot read the project"},
        {"missing folder",
         {kDemo, "--out", dir.Path("none/f%04d.png").utf8_string()},
         {},
         2,
         "does not exist"},
        {"file as folder",
         {kDemo, "--out", dir.Path("plainfile/f%04d.png").utf8_string()},
         {},
         2,
         "does not exist"},
        {"an 8-bit format of the toolkit's handlers, with no display",
         {kDemo, "--out", dir.Path("ok%04d.tif").utf8_string(), "--frames", "0-1", "--size", "8x8"},
         {"DISPLAY="},
         0,
         "3 written, 0 skipped, 0 failed"},
        {"unknown format",
         {kDemo, "--out", dir.Path("f%04d.xyz").utf8_string()},
         {},
         2,
         "no writer for f%04d.xyz (png"},
        {"no GL context", {kDemo, "--out", strOut}, {"LIBGL_DRIVERS_PATH=/nonexistent"}, 2, "no GL context"},
        // The array script of a farm: the command line minus its shard, each task its own shard, resuming.
        {"slurm script",
         {kDemo, "--out", strOut, "--shard", "1/2", "--skip-existing", "--slurm-script", "4"},
         {},
         0,
         "exec '" + std::string(ORV_BATCH_EXE) + "' '" + kDemo + "' '--out' '" + strOut +
             "' --shard \"${SLURM_ARRAY_TASK_ID}/4\" --skip-existing\n"},
    };
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.name);
        std::string strLog;
        const int code = BatchProcess_cls::Run(c.args, strLog, c.env);
        if (c.code != 2 && code == 2 && strLog.find("no GL context") != std::string::npos)
            continue; // a machine without GL: only the refusals can be checked
        EXPECT_EQ(code, c.code) << strLog;
        EXPECT_NE(strLog.find(c.message), std::string::npos) << strLog;
    }
    // The refused frame kept no claim; the others were written.
    EXPECT_EQ(CountFiles(dir.mStrPath, "*.claim"), 0);
    // Where GL drew (the PNG case wrote its files), the TIFF reads back at its size.
    if (wxFileExists(dir.Path("ok0001.png"))) {
        ImageFile_cls::RegisterImageHandlers();
        EXPECT_EQ(wxImage(dir.Path("ok0001.tif")).GetSize(), wxSize(8, 8));
    }
}

TEST(BatchTest, VideoNeedsFfmpeg) {
    TempDir_cls dir;
    std::string strLog;
    const bool bFfmpeg = system("command -v ffmpeg >/dev/null 2>&1") == 0;
    const int code =
        BatchProcess_cls::Run(Args(dir, "0-2", {"--video", dir.Path("a.mp4").utf8_string()}), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    if (!bFfmpeg) {
        EXPECT_EQ(code, 2);
        EXPECT_NE(strLog.find("--video needs ffmpeg, which is not installed"), std::string::npos) << strLog;
        return;
    }
    ASSERT_EQ(code, 0) << strLog;
    EXPECT_GT(ReadBytes(dir.Path("a.mp4")).size(), 100u);
}

TEST(BatchTest, GnuParallelOverFourShards) {
    if (system("command -v parallel >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "GNU parallel is not installed (Debian package parallel)";
    TempDir_cls one, shards;
    std::string strLog;
    int code = BatchProcess_cls::Run(Args(one, "0-5"), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    const std::string strCommand = "parallel --will-cite " + std::string(ORV_BATCH_EXE) + " " + kDemo +
                                   " --out '" + shards.Path("f%04d.png").utf8_string() +
                                   "' --frames 0-5 --size 64x36 --quiet --shard {}/4 ::: 0 1 2 3";
    ASSERT_EQ(system(strCommand.c_str()), 0) << strCommand;
    EXPECT_EQ(Files(shards.mStrPath), Files(one.mStrPath));
}

TEST(BatchTest, ParticleProjectInShardsMatchesOneRun) {
    // The LAMMPS example: its frames are prepared from dumps read by the object's reader, each
    // frame from scratch whatever frame the worker rendered before.
    const std::string strMelt = std::string(ORV_SOURCE_DIR) + "/examples/lammps/melt.ovp";
    TempDir_cls one, shards;
    std::string strLog;
    const int code =
        BatchProcess_cls::Run(ProjectArgs(strMelt, one, "0-4", "48x48", {}, "m%04d.png"), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    ASSERT_TRUE(RunInShards(strMelt, shards, "0-4", "48x48", 3, "m%04d.png"));
    const auto vOne = Files(one.mStrPath);
    EXPECT_EQ(vOne.size(), 9u);
    EXPECT_TRUE(Files(shards.mStrPath) == vOne);
}

TEST(BatchTest, EveryFilterShowsInTheFilesWhichStayIdenticalAcrossShards) {
    // The demo with the whole chain: all nine filters with their defaults, as a user adds them.
    TempDir_cls project, plain, one, shards;
    std::string strProject = ReadBytes(kDemo);
    ASSERT_FALSE(strProject.empty());
    for (const char* pClass : {"Exposure_cls", "Blur_cls", "Glare_cls", "RemoveAlpha_cls", "Overlay_cls",
                               "Legend_cls", "FocalBlur_cls", "SSAO_cls", "FilterDepth_cls"})
        strProject +=
            std::string("FilterCtrl::New::") + pClass + "::" + std::string(pClass).substr(0, 4) + "\n";
    const std::string strPath = WriteProject(project, "filtered.ovp", strProject);
    std::string strLog;
    int code = BatchProcess_cls::Run(Args(plain, "0-3"), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    ASSERT_EQ(BatchProcess_cls::Run(ProjectArgs(strPath, one, "0-3", "64x36"), strLog), 0) << strLog;
    const auto reference = Files(one.mStrPath);
    ASSERT_EQ(reference.size(), 7u); // half frames 0 to 3
    // The chain is in the files: every frame differs from the same frame without filters.
    const auto vPlain = Files(plain.mStrPath);
    ASSERT_EQ(vPlain.size(), reference.size());
    for (const auto& file : reference)
        EXPECT_NE(file.second, vPlain.at(file.first)) << file.first;
    ASSERT_TRUE(RunInShards(strPath, shards, "0-3", "64x36", 3));
    EXPECT_TRUE(Files(shards.mStrPath) == reference) << "shards with every filter differ from one run";
}

TEST(BatchTest, EquirectangularAnimationInShardsMatchesOneRun) {
    // The demo seen through its camera as a 360 degree image: the camera stands 1 above and 6
    // in front of the planet, which moves to x = 4 by frame 60.
    TempDir_cls project, one, shards;
    const std::string strPath = WriteProject(
        project, "360.ovp",
        ReadBytes(kDemo) + "SceneObjCtrl::Obj::Camera::Position::y::Key::0::SetValue::1\n"
                           "SceneObjCtrl::Obj::Camera::Position::z::Key::0::SetValue::6\n"
                           "ConfItemList::Begin::SceneObj::Camera::CameraProp\nCameraType=6\n"
                           "1stBufSizeIdx=0\nConfItemList::End\nConfItemList::Begin::View3D\n"
                           "Follow=1\nCamera=Camera\nDispGrid=0\nDispLightCam=0\nConfItemList::End\n");
    std::string strLog;
    const int code = BatchProcess_cls::Run(ProjectArgs(strPath, one, "0-60:60", "128x64"), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    const auto reference = Files(one.mStrPath);
    ASSERT_EQ(reference.size(), 3u);
    ASSERT_TRUE(RunInShards(strPath, shards, "0-60:60", "128x64", 3));
    EXPECT_TRUE(Files(shards.mStrPath) == reference) << "360 degree shards differ from one run";
    // Ahead is the middle of the image: the planet there at frame 0, 34 degrees to the right
    // (12 pixels of 128 for 360) at frame 60.
    PNGImage_cls a, b;
    ASSERT_TRUE(ReadPNG_cls::ReadPNG(one.Path("f0000.png"), a));
    ASSERT_TRUE(ReadPNG_cls::ReadPNG(one.Path("f0120.png"), b));
    ASSERT_EQ(a.mWidth, 128);
    auto red = [](const PNGImage_cls& image, int x, int y) {
        return image.mVRGB8[(y * image.mWidth + x) * 3];
    };
    const int row = 35; // 9.5 degrees below the horizon
    EXPECT_GT(red(a, 64, row), 90);
    EXPECT_NEAR(red(b, 64, row), 56, 1);
    EXPECT_GT(red(b, 76, row), 90);
    EXPECT_NEAR(red(a, 76, row), 56, 1);
    // Straight behind, at the left and right edges, there is nothing but the background.
    EXPECT_NEAR(red(a, 0, row), 56, 1);
    EXPECT_NEAR(red(a, 127, row), 56, 1);
}

TEST(BatchTest, LineByLineStereoInterleavesTheEyesRowByRowInTheFile) {
    // The demo's planet 6 in front of the camera, whose eyes stand 1 apart and look in parallel:
    // each eye sees it 12.9 pixels of 128 off the middle, the left eye to the right.
    TempDir_cls project, one;
    const std::string strPath = WriteProject(
        project, "stereo.ovp",
        ReadBytes(kDemo) + "SceneObjCtrl::Obj::Camera::Position::z::Key::0::SetValue::6\n"
                           "SceneObjCtrl::Obj::Moon::Position::y::Key::0::SetValue::50\n"
                           "SceneObjCtrl::Obj::Camera::Stereo::EyeSeparation::Distance::Key::0::"
                           "SetValue::1\n"
                           "SceneObjCtrl::Obj::Camera::Stereo::FocusDistance::Distance::Key::0::"
                           "SetValue::1000000\n"
                           "ConfItemList::Begin::SceneObj::Camera::Stereo\nStereoType=1\nEyeType=3\n"
                           "ConfItemList::End\nConfItemList::Begin::View3D\nFollow=1\nCamera=Camera\n"
                           "DispGrid=0\nDispLightCam=0\nConfItemList::End\n");
    std::string strLog;
    const int code = BatchProcess_cls::Run(ProjectArgs(strPath, one, "0-0", "128x128"), strLog);
    SKIP_WITHOUT_GL(code, strLog);
    ASSERT_EQ(code, 0) << strLog;
    PNGImage_cls image;
    ASSERT_TRUE(ReadPNG_cls::ReadPNG(one.Path("f0000.png"), image));
    ASSERT_EQ(image.mWidth, 128);
    auto isBackground = [&](int x, int y) { return std::abs(image.mVRGB8[(y * 128 + x) * 3] - 56) <= 1; };
    // Even rows (from the top) are the left eye's, odd rows the right eye's: right of the middle only
    // the left eye sees the planet (its moon is moved out of sight), left of it only the right eye.
    for (int y = 56; y < 72; ++y) {
        SCOPED_TRACE(y);
        EXPECT_EQ(isBackground(95, y), y % 2 == 1);
        EXPECT_EQ(isBackground(33, y), y % 2 == 0);
    }
}

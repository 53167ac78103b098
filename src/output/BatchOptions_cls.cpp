#include "BatchOptions_cls.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

const char* BatchOptions_cls::msStrUsage =
    "usage: orvantis4-batch PROJECT.ovp [--out PATTERN] [--frames A-B[:STEP]] [--size WxH] [--shard I/N]\n"
    "       [--skip-existing] [--slurm-script TASKS] [--quiet] [--claim-timeout S] [--png-level N]\n"
    "       [--video FILE.mp4]\n";

namespace {
bool ToInt(const std::string& str, int& value) {
    if (str.empty())
        return false;
    char* pEnd = nullptr;
    errno = 0;
    const long v = strtol(str.c_str(), &pEnd, 10);
    if (*pEnd != '\0' || errno != 0 || v < -1000000000L || v > 1000000000L)
        return false;
    value = static_cast<int>(v);
    return true;
}

// "A<sep>B" into two integers.
bool SplitPair(const std::string& str, char sep, int& a, int& b) {
    const size_t pos = str.find(sep);
    return pos != std::string::npos && ToInt(str.substr(0, pos), a) && ToInt(str.substr(pos + 1), b);
}
} // namespace

bool BatchOptions_cls::Parse(int argc, const char* const* argv) {
    auto fail = [this](const std::string& str) {
        mStrError = str;
        return false;
    };
    for (int i = 1; i < argc; ++i) {
        const std::string strArg = argv[i];
        const bool bHasValue = i + 1 < argc;
        auto value = [&]() { return std::string(argv[++i]); };
        if (strArg == "--skip-existing") {
            mbSkipExisting = true;
        } else if (strArg == "--quiet") {
            mbQuiet = true;
        } else if (strArg.rfind("--", 0) == 0 && !bHasValue) {
            return fail(strArg + " needs a value");
        } else if (strArg == "--out") {
            mStrOut = value();
            if (mStrOut.empty())
                return fail("--out needs a file pattern");
        } else if (strArg == "--frames") {
            std::string str = value();
            const size_t colon = str.find(':');
            if (colon != std::string::npos) {
                if (!ToInt(str.substr(colon + 1), mFrameStep) || mFrameStep < 1)
                    return fail("--frames: the step after ':' must be a whole number above 0");
                str = str.substr(0, colon);
            }
            if (!SplitPair(str, '-', mFrameFirst, mFrameLast) || mFrameFirst < 0 || mFrameLast < mFrameFirst)
                return fail("--frames wants A-B[:STEP] with 0 <= A <= B, not '" + str + "'");
            mbFrames = true;
        } else if (strArg == "--size") {
            if (!SplitPair(value(), 'x', mWidth, mHeight) || mWidth < 1 || mHeight < 1 || mWidth > 65536 ||
                mHeight > 65536)
                return fail("--size wants WxH with both between 1 and 65536");
        } else if (strArg == "--shard") {
            if (!SplitPair(value(), '/', mShardIndex, mShardCount) || mShardCount < 1 || mShardIndex < 0 ||
                mShardIndex >= mShardCount)
                return fail("--shard wants I/N with 0 <= I < N");
        } else if (strArg == "--slurm-script") {
            if (!ToInt(value(), mSlurmTasks) || mSlurmTasks < 1)
                return fail("--slurm-script wants the number of tasks, above 0");
        } else if (strArg == "--claim-timeout") {
            const std::string str = value();
            char* pEnd = nullptr;
            mClaimTimeout = strtod(str.c_str(), &pEnd);
            if (str.empty() || *pEnd != '\0' || !(mClaimTimeout > 0.0))
                return fail("--claim-timeout wants seconds above 0");
        } else if (strArg == "--png-level") {
            if (!ToInt(value(), mPNGLevel) || mPNGLevel < 0 || mPNGLevel > 9)
                return fail("--png-level wants 0 to 9");
        } else if (strArg == "--video") {
            mStrVideo = value();
            if (mStrVideo.size() < 5 || mStrVideo.substr(mStrVideo.size() - 4) != ".mp4")
                return fail("--video wants a file ending in .mp4");
        } else if (strArg.rfind("--", 0) == 0) {
            return fail("unknown option " + strArg);
        } else if (mStrProject.empty()) {
            mStrProject = strArg;
        } else {
            return fail("more than one project: " + mStrProject + " and " + strArg);
        }
    }
    if (mStrProject.empty())
        return fail("no project given");
    return true;
}

std::vector<std::pair<int, int>> BatchOptions_cls::GetPositions(int first, int last, int frameStep,
                                                                int subFrameMax, int stepping, int shardIndex,
                                                                int shardCount) {
    std::vector<std::pair<int, int>> vAll;
    if (subFrameMax < 1)
        subFrameMax = 1;
    if (stepping < 1)
        stepping = 1;
    int frame = first, sub = 0;
    while (frame < last || (frame == last && sub == 0)) {
        vAll.emplace_back(frame, sub);
        sub += stepping;
        frame += sub / subFrameMax;
        sub %= subFrameMax;
    }
    std::vector<std::pair<int, int>> vMine;
    for (size_t i = 0, n = 0; i < vAll.size(); i += static_cast<size_t>(frameStep), ++n) {
        if (static_cast<int>(n % static_cast<size_t>(shardCount)) == shardIndex)
            vMine.push_back(vAll[i]);
    }
    return vMine;
}

namespace {
// Single quotes for the shell.
std::string Quote(const std::string& str) {
    std::string out = "'";
    for (char c : str) {
        if (c == '\'')
            out += "'\\''";
        else
            out += c;
    }
    return out + "'";
}
} // namespace

std::string BatchOptions_cls::GetSlurmScript(const std::string& strExe,
                                             const std::vector<std::string>& vStrArgs) const {
    std::string str = "#!/bin/bash\n";
    str += "#SBATCH --job-name=orvantis4\n";
    str += "#SBATCH --array=0-" + std::to_string(mSlurmTasks - 1) + "\n";
    str += "#SBATCH --ntasks=1\n";
    str += "#SBATCH --output=orvantis4-%A_%a.log\n";
    str += "# Each task renders its shard; a task that is run again resumes what is already written.\n";
    str += "exec " + Quote(strExe);
    for (const std::string& strArg : vStrArgs)
        str += " " + Quote(strArg);
    str += " --shard \"${SLURM_ARRAY_TASK_ID}/" + std::to_string(mSlurmTasks) + "\" --skip-existing\n";
    return str;
}

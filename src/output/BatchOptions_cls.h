// The command line of the batch renderer, parsed and checked, and the list of playback
// positions (frame, subframe) that one worker renders. No GL, no files: any thread.
#pragma once

#include <string>
#include <vector>

class BatchOptions_cls {
public:
    // Parses argv[1..]; false with the message in mStrError for anything not understood.
    bool Parse(int argc, const char* const* argv);

    std::string mStrProject;
    std::string mStrOut;   // empty: the project's "FileFormat="
    bool mbFrames = false; // --frames given
    int mFrameFirst = 0;
    int mFrameLast = 0;
    int mFrameStep = 1;
    int mWidth = 0; // 0: the project's size
    int mHeight = 0;
    int mShardIndex = 0;
    int mShardCount = 1;
    bool mbSkipExisting = false;
    int mSlurmTasks = 0; // above 0: print a Slurm array script and stop
    bool mbQuiet = false;
    double mClaimTimeout = 3600.0; // seconds after which another host's claim is stale
    int mPNGLevel = -1;            // -1: the project's "PNGCompression="
    std::string mStrVideo;
    std::string mStrError;

    static const char* msStrUsage;

    // The playback positions that recording visits between (first, 0) and (last, 0), stepping
    // `stepping` subframes of subFrameMax, every frameStep-th taken; then this shard's share:
    // positions index, index + count, ... Each position is {frame, sub}.
    static std::vector<std::pair<int, int>> GetPositions(int first, int last, int frameStep, int subFrameMax,
                                                         int stepping, int shardIndex, int shardCount);
    // The script that runs this command line as a Slurm array of `tasks` shards, each resuming
    // what is already there. argv0 and the paths must be absolute.
    std::string GetSlurmScript(const std::string& strExe, const std::vector<std::string>& vStrArgs) const;
};

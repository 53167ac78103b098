// The core of the batch renderer: renders the positions of one shard of a loaded project through
// the same frame passes and record path as recording in the window, with a surfaceless GL
// context current. Every frame is prepared as if it were the first (no pose, sort or
// accumulation kept from an earlier frame; the passes' buffers are cleared by each frame and
// their uploads keyed by the data they hold), so each file is byte-identical whichever worker
// renders it and in whatever order. Claims let several workers share one folder.
// Main (GL) thread only.
#pragma once

#include "BatchOptions_cls.h"
#include "ImageIO_cls.h"

#include <cstdio>
#include <string>
#include <vector>

class View3D_cls;

class BatchRenderer_cls {
public:
    // The options are checked already; strOutAbsolute is --out made absolute (or empty).
    BatchRenderer_cls(const BatchOptions_cls& options, const std::string& strOutAbsolute);

    // Applies the first "View3D" settings block of the project text to the view.
    static void ApplyFirstViewBlock(const std::string& strProjectText, View3D_cls& view);

    // Renders; the project is loaded and the services exist. Returns the exit code: 0 all
    // written (or already there), 1 some failed (named on stderr), 2 the output folder or
    // format cannot be used.
    int Run(const std::string& strProjectText);

    // Drops what an earlier frame left: the accumulation buffers and the particle objects'
    // prepared sets with their last sort and camera.
    static void ForgetEarlierFrames();

    int mWritten = 0;
    int mSkipped = 0;
    std::vector<std::string> mVStrFailed;
    // The printf pattern of the written files and the first number, for the video.
    std::string mStrPattern;
    int mFirstNumber = 0;

private:
    struct Pending_cls {
        std::string mStrClaimTarget;
        int mFrame = 0;
        int mSub = 0;
        long long mRemaining = 0;
        double mStartMillis = 0.0;
        bool mbOk = true;
    };
    void Drain(const std::vector<ImageIO_cls::Result_cls>& vResults);
    void Report(Pending_cls& pending, const std::string& strPath, bool bOk);

    const BatchOptions_cls& mCOptions;
    std::string mStrOut;
    std::vector<Pending_cls> mVPending;
    int mTotal = 0;
    int mDone = 0;
};

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
#include <memory>
#include <string>
#include <utility>
#include <vector>

class View3D_cls;

class BatchRenderer_cls {
public:
    // The options are checked already; strOutAbsolute is --out made absolute (or empty).
    BatchRenderer_cls(const BatchOptions_cls& options, const std::string& strOutAbsolute);
    ~BatchRenderer_cls();

    // Applies the first "View3D" settings block of the project text to the view.
    static void ApplyFirstViewBlock(const std::string& strProjectText, View3D_cls& view);

    // Checks the output (folder, format, size) and works out this shard's frames; the project
    // is loaded and the services exist, no GL context is needed. 0, or the exit code 2 when the
    // output folder or format cannot be used (said on stderr).
    int Prepare(const std::string& strProjectText);
    // Sets the clock on the shard's first frame and starts reading that frame's data without
    // waiting, so that the files are read while the GL context and its programs are made.
    void StartReading();
    // Renders what Prepare planned, with a GL context current. Returns the exit code: 0 all
    // written (or already there), 1 some failed (named on stderr).
    int Run();

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
    // Set by Prepare.
    std::unique_ptr<View3D_cls> mpCView;
    std::vector<std::pair<int, int>> mVPositions;
    wxSize mSize;
    std::vector<Pending_cls> mVPending;
    int mTotal = 0;
    int mDone = 0;
};

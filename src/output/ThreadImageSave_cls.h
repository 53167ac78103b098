// The worker that finishes one saved picture: resizes the record buffer's pixels to the output
// size, flips the rows (GL counts them from the bottom), writes the file beside its target and
// renames it into place, so a reader never sees half a file. It owns its buffers. Touches no GL.
#pragma once

#include "ImageFile_cls.h"
#include "ReadBackTable_cls.h"

#include <atomic>
#include <memory>
#include <string>

class ThreadImageSave_cls {
public:
    virtual ~ThreadImageSave_cls() = default;

    // Source: the square record buffer's side; output: the file's size.
    void SetParameters(int sourceSide, int outputWidth, int outputHeight, const std::string& strPath,
                       bool bAlpha, int pngCompression);
    // The source samples, side * side * channels, rows bottom to top.
    ImageFile_cls mCSource;
    // Or, with a table, the buffers' raw RGBA half samples (one per eye), which the writer
    // converts into the sources (their channels and type are set) before anything else.
    std::shared_ptr<const ReadBackTable_cls> mpCTable;
    std::vector<uint16_t> mVRaw[2];
    // Set (release) when the work is done; mbOk tells how it went. Not owned: the ring's slot.
    std::atomic<bool>* mpbFinished = nullptr;
    std::atomic<bool>* mpbOk = nullptr;

    // The thread body.
    void Entry();

    // Written beside the target under a hidden name, then renamed onto it.
    static std::string GetTemporaryPath(const std::string& strPath);

    // The source of an eye: 0, or 1 for the second eye of a merged picture.
    virtual ImageFile_cls& GetSource(int /*eye*/) { return mCSource; }

protected:
    virtual void Resize(ImageFile_cls& out) const;
    // Two eyes are always merged, even at the buffer's size.
    virtual bool IsMerged() const { return false; }

    int mSourceSide = 0;
    int mOutputWidth = 0;
    int mOutputHeight = 0;
    bool mbAlpha = false;
    int mPNGCompression = 6;
    std::string mStrPath;
};

// Two eye buffers merged into one picture, even rows of the file from the first eye.
class ThreadImageSaveScanline_cls : public ThreadImageSave_cls {
public:
    // The second eye's samples, laid out as mCSource.
    ImageFile_cls mCSource1;
    ImageFile_cls& GetSource(int eye) override { return eye == 0 ? mCSource : mCSource1; }

protected:
    void Resize(ImageFile_cls& out) const override;
    bool IsMerged() const override { return true; }
};

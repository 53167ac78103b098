#include "ThreadImageSave_cls.h"

#include "ImageResample_cls.h"

#include <cstdio>
#include <unistd.h>

void ThreadImageSave_cls::SetParameters(int sourceSide, int outputWidth, int outputHeight,
                                        const std::string& strPath, bool bAlpha, int pngCompression) {
    mSourceSide = sourceSide;
    mOutputWidth = outputWidth;
    mOutputHeight = outputHeight;
    mStrPath = strPath;
    mbAlpha = bAlpha;
    mPNGCompression = pngCompression;
}

std::string ThreadImageSave_cls::GetTemporaryPath(const std::string& strPath) {
    const size_t slash = strPath.find_last_of('/');
    const std::string strDir = slash == std::string::npos ? std::string() : strPath.substr(0, slash + 1);
    const std::string strName = slash == std::string::npos ? strPath : strPath.substr(slash + 1);
    // The extension stays last: writers that look at it see the real one.
    return strDir + "." + std::to_string(getpid()) + ".part." + strName;
}

namespace {
template <class T>
void ResizeInto(const std::vector<T>& vSource, int side, int channels, int width, int height,
                std::vector<T>& vOut) {
    vOut.resize(static_cast<size_t>(width) * height * channels);
    ImageResample_cls::Resize(vSource.data(), side, channels, width, height, vOut.data());
}
template <class T>
void ResizeScanlineInto(const std::vector<T>& v0, const std::vector<T>& v1, int side, int channels, int width,
                        int height, std::vector<T>& vOut) {
    vOut.resize(static_cast<size_t>(width) * height * channels);
    ImageResample_cls::ResizeScanline(v0.data(), v1.data(), side, channels, width, height, vOut.data());
}
} // namespace

void ThreadImageSave_cls::Resize(ImageFile_cls& out) const {
    const ImageFile_cls& in = mCSource;
    if (in.mType == SampleType_enum::UInt8)
        ResizeInto(in.mV8, mSourceSide, in.mChannels, mOutputWidth, mOutputHeight, out.mV8);
    else if (in.mType == SampleType_enum::UInt16)
        ResizeInto(in.mV16, mSourceSide, in.mChannels, mOutputWidth, mOutputHeight, out.mV16);
    else
        ResizeInto(in.mVFloat, mSourceSide, in.mChannels, mOutputWidth, mOutputHeight, out.mVFloat);
}

void ThreadImageSaveScanline_cls::Resize(ImageFile_cls& out) const {
    const ImageFile_cls& a = mCSource;
    const ImageFile_cls& b = mCSource1;
    if (a.mType == SampleType_enum::UInt8)
        ResizeScanlineInto(a.mV8, b.mV8, mSourceSide, a.mChannels, mOutputWidth, mOutputHeight, out.mV8);
    else if (a.mType == SampleType_enum::UInt16)
        ResizeScanlineInto(a.mV16, b.mV16, mSourceSide, a.mChannels, mOutputWidth, mOutputHeight, out.mV16);
    else
        ResizeScanlineInto(a.mVFloat, b.mVFloat, mSourceSide, a.mChannels, mOutputWidth, mOutputHeight,
                           out.mVFloat);
}

void ThreadImageSave_cls::Entry() {
    for (int eye = 0; eye < 2 && mpCTable; ++eye) {
        if (mVRaw[eye].empty())
            continue;
        ImageFile_cls& source = GetSource(eye);
        mpCTable->Convert(mVRaw[eye].data(), mVRaw[eye].size() / 4, source);
        std::vector<uint16_t>().swap(mVRaw[eye]);
    }
    ImageFile_cls out;
    out.mWidth = mOutputWidth;
    out.mHeight = mOutputHeight;
    out.mChannels = mCSource.mChannels;
    out.mType = mCSource.mType;
    // Output and buffer of equal size skip the resampling.
    if (mOutputWidth == mSourceSide && mOutputHeight == mSourceSide && !IsMerged()) {
        out.mV8 = std::move(mCSource.mV8);
        out.mV16 = std::move(mCSource.mV16);
        out.mVFloat = std::move(mCSource.mVFloat);
    } else {
        Resize(out);
    }
    out.Mirror();
    const std::string strTemporary = GetTemporaryPath(mStrPath);
    std::string strError;
    bool bOk = out.Write(strTemporary, mPNGCompression, strError);
    if (bOk && rename(strTemporary.c_str(), mStrPath.c_str()) != 0) {
        strError = "cannot rename onto " + mStrPath;
        bOk = false;
    }
    if (!bOk) {
        unlink(strTemporary.c_str());
        fprintf(stderr, "image not saved: %s\n", strError.c_str());
    }
    mpbOk->store(bOk, std::memory_order_relaxed);
    mpbFinished->store(true, std::memory_order_release);
}

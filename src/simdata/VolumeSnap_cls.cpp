#include "VolumeSnap_cls.h"

#include "MyEndian.h"
#include "SliceImage_cls.h"
#include "ThreadDF3Read.h"
#include "ThreadImgSeqRead.h"
#include "VolumeSequence_cls.h"

#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <new>

VolumeSnap_cls::VolumeSnap_cls(VolumeSequence_cls* pSequence, int index)
    : DataSnap_cls(pSequence, 0, index) {}

VolumeSnap_cls::~VolumeSnap_cls() {
    Clear();
}

void VolumeSnap_cls::SetFileSequenceDual(const FileSequenceDual_cls* pRule, int indexT) {
    mFileSequenceDual = *pRule;
    mFileSequenceDual.mFuncProbeHook = nullptr;
    mZStackIndex = indexT;
}

void VolumeSnap_cls::ReadHeader(bool zStack) {
    if (mHeaderFile == mFile)
        return;
    mZStack = zStack;
    if (zStack) {
        ReadHeaderZStack();
    } else {
        const wxString strExt = wxFileName(mFile).GetExt();
        FILE* fp = nullptr;
        // Only these two spellings are df3; "x.Df3" is not.
        if (strExt == "df3" || strExt == "DF3")
            fp = fopen(mFile.fn_str(), "rb");
        if (fp) {
            int16_t sizes[3] = {0, 0, 0};
            const size_t got = fread(sizes, 2, 3, fp);
            fclose(fp);
            for (auto& s : sizes)
                MyEndian::SwapByte(&s, 2);
            mSizeX = sizes[0];
            mSizeY = sizes[1];
            mSizeZ = sizes[2];
            const long long voxels = static_cast<long long>(mSizeX) * mSizeY * mSizeZ;
            if (got != 3) {
                wxLogMessage("df3 header of %s is truncated: no data read", mFile);
                mSizeX = mSizeY = mSizeZ = 0;
            } else if (mSizeX < 0 || mSizeY < 0 || mSizeZ < 0 || voxels > msMaxVoxels) {
                // A file cut short is still read as far as it goes (the reader logs the short read);
                // only sizes no volume can have are refused before anything is allocated.
                wxLogMessage("df3 sizes %d %d %d of %s cannot be a volume: no data read", mSizeX, mSizeY,
                             mSizeZ, mFile);
                mSizeX = mSizeY = mSizeZ = 0;
            }
        } else {
            mSizeX = mSizeY = mSizeZ = 64;
        }
    }
    mHeaderFile = mFile;
    if (mSizeX != mAllocX || mSizeY != mAllocY || mSizeZ != mAllocZ) {
        WaitReadingThread(3);
        FreeArrays();
    }
    AllocateIfNot();
}

void VolumeSnap_cls::ReadHeaderZStack() {
    SlicePixels_cls slice;
    const wxString strFirst = mFileSequenceDual.GetModifiedStrDual(mZStackIndex, 0, 0, wxString());
    if (!SliceImage_cls::ReadSize(strFirst, slice)) {
        wxLogMessage("First slice of the image stack cannot be read: %s (%s)", strFirst, slice.mStrWhy);
        return;
    }
    const int width = slice.mWidth;
    const int height = slice.mHeight;
    mFileSequenceDual.CalcMaxOffsetZ(mZStackIndex, true);
    const int depth = std::max(mFileSequenceDual.mMaxOffsetZ, 0);
    // The count stops at the first gap; slices behind it would be dropped without a word.
    for (int z = depth + 1; z <= depth + 2; ++z) {
        const wxString strAfter = mFileSequenceDual.GetModifiedStrDual(mZStackIndex, z, 0, wxString());
        if (depth > 0 && wxFileName::FileExists(strAfter)) {
            wxLogMessage("Image stack %s: slice %d is missing; the stack ends before it and %s is not read",
                         strFirst, depth, strAfter);
            break;
        }
    }
    const long long voxels = static_cast<long long>(width) * height * depth;
    if (voxels > msMaxVoxels) {
        wxLogMessage("Image stack of %d x %d x %d is too large: no data read from %s", width, height, depth,
                     strFirst);
        mSizeX = mSizeY = mSizeZ = 0;
        return;
    }
    mSizeX = width;
    mSizeY = height;
    mSizeZ = depth;
}

void VolumeSnap_cls::FreeArrays() {
    mData.reset();
    mMask.reset();
    mIsAllocated = false;
    mAllocX = mAllocY = mAllocZ = 0;
}

void VolumeSnap_cls::AllocateIfNot() {
    if (mIsAllocated && mAllocX == mSizeX && mAllocY == mSizeY && mAllocZ == mSizeZ)
        return;
    WaitReadingThread(3);
    FreeArrays();
    const long long voxels =
        static_cast<long long>(std::max(mSizeX, 0)) * std::max(mSizeY, 0) * std::max(mSizeZ, 0);
    if (voxels > msMaxVoxels)
        return;
    mData.reset(new (std::nothrow) unsigned char[static_cast<size_t>(voxels)]());
    mMask.reset(new (std::nothrow) char[static_cast<size_t>(voxels)]());
    if (!mData || !mMask) {
        wxLogMessage("Volume of %lld voxels could not be allocated: %s", voxels, mFile);
        FreeArrays();
        return;
    }
    mAllocX = mSizeX;
    mAllocY = mSizeY;
    mAllocZ = mSizeZ;
    mIsAllocated = true;
}

void VolumeSnap_cls::Clear() {
    WaitReadingThread(3);
    FreeArrays();
    mReadStarted = false;
    mReadFinished.store(false, std::memory_order_release);
}

long long VolumeSnap_cls::GetUsedMemoryByte() const {
    if (!mIsAllocated)
        return 0;
    return static_cast<long long>(mSizeX) * mSizeY * mSizeZ;
}

void VolumeSnap_cls::DefaultData() {
    if (!mData)
        return;
    const int w = mAllocX;
    const size_t rows = static_cast<size_t>(mAllocY) * mAllocZ;
    for (size_t r = 0; r < rows; ++r) {
        unsigned char* row = mData.get() + r * w;
        // The constants are used as written.
        for (int i = 0; i < w; ++i)
            row[i] = static_cast<unsigned char>((std::sin(2.0 * (i * 3.14159 / w) + 1.570795) * 0.5 + 0.5) *
                                                254.0);
    }
}

int VolumeSnap_cls::PrepareRead() {
    // 0: nothing to do; 1: read now; 2: done here (default data).
    if (!mIsAllocated)
        return 0;
    WaitReadingThread(3);
    if (mReadStarted && mReadFinished.load(std::memory_order_acquire) && mReadFile == mFile)
        return 0;
    if (mFile == "None") {
        DefaultData();
        mReadFile = mFile;
        mReadStarted = true;
        ++mReadCount;
        mReadFinished.store(true, std::memory_order_release);
        return 2;
    }
    if (mFile.empty() || mIndex < 0)
        return 0;
    return 1;
}

// Marks a read as started and makes the reader of this snap's kind (an image stack or a df3 file).
std::shared_ptr<VolumeReadBase_cls> VolumeSnap_cls::StartRead() {
    mReadStarted = true;
    ++mReadCount;
    mReadFinished.store(false, std::memory_order_release);
    std::shared_ptr<VolumeReadBase_cls> pReader;
    if (mZStack)
        pReader = std::make_shared<ThreadImgSeqRead>();
    else
        pReader = std::make_shared<ThreadDF3Read>();
    pReader->SetParameters(&mReadFinished, this);
    mReadFile = mFile;
    return pReader;
}

bool VolumeSnap_cls::ReadData(bool) {
    const int step = PrepareRead();
    if (step != 1)
        return step == 2;
    StartRead()->DoRead();
    mReadFinished.store(true, std::memory_order_release);
    return true;
}

bool VolumeSnap_cls::PrefetchData(bool zStack) {
    ReadHeader(zStack);
    if (PrepareRead() != 1)
        return false;
    std::shared_ptr<VolumeReadBase_cls> pReader = StartRead();
    mSequence->PushLock();
    StartReadingThread([pReader]() { pReader->Entry(); });
    return true;
}

bool VolumeSnap_cls::IsSizeSame(const VolumeSnap_cls* pOther) const {
    return pOther && mSizeX == pOther->mSizeX && mSizeY == pOther->mSizeY && mSizeZ == pOther->mSizeZ;
}

void VolumeSnap_cls::GetScaleCandid(double* scale) const {
    const int longest = std::max({mSizeX, mSizeY, mSizeZ, 1});
    scale[0] = static_cast<double>(mSizeX) / longest;
    scale[1] = static_cast<double>(mSizeY) / longest;
    scale[2] = static_cast<double>(mSizeZ) / longest;
}

wxString VolumeSnap_cls::GetStrInfo() const {
    return wxString::Format("Volume %d: %s\nSize: %d x %d x %d  Memory: %lld bytes", mIndex, mReadFile,
                            mSizeX, mSizeY, mSizeZ, GetUsedMemoryByte());
}

// One time step of a volume: a cube of 8-bit voxels, X fastest, from a df3 file or from a stack
// of images (one per Z slice). The arrays are kept while the size stays, so stepping along a
// sequence of like-sized steps does not allocate.
#pragma once

#include "DataSnap_cls.h"
#include "FileSequenceDual_cls.h"

#include <wx/string.h>

#include <memory>

class VolumeReadBase_cls;
class VolumeSequence_cls;

class VolumeSnap_cls : public DataSnap_cls {
public:
    // No side of a volume may exceed this many voxels in total; a header that asks for more is
    // read as no data.
    static constexpr long long msMaxVoxels = 1LL << 30;

    VolumeSnap_cls(VolumeSequence_cls* pSequence, int index);
    ~VolumeSnap_cls() override;

    void SetStrFile(const wxString& strName) { mFile = strName; }
    // A private copy of the stack's name rule for time step indexT, for the reader thread.
    void SetFileSequenceDual(const FileSequenceDual_cls* pRule, int indexT);
    // Main thread. Sizes from the df3 header, from the first slice of a stack, or 64 cubed for
    // any other name; reallocates when they changed.
    void ReadHeader(bool zStack);
    void ReadHeaderZStack();
    void AllocateIfNot();
    // Main thread. The synchronous read; false when there was nothing to do.
    bool ReadData(bool bUnused = false);
    // ReadHeader, then the same read on a reader thread; true when a read started.
    bool PrefetchData(bool zStack);
    // The sine pattern of the name "None" and of a df3 file that does not open.
    void DefaultData();
    bool IsSizeSame(const VolumeSnap_cls* pOther) const;
    // Proposes a box scale from the sizes: each side over the longest, written to scale[0..2].
    void GetScaleCandid(double* scale) const;
    wxString GetStrInfo() const;
    // Waits for the reader and frees the arrays.
    void Clear();

    long long GetUsedMemoryByte() const override;
    wxString GetStrFile() const override { return mFile; }

    wxString mFile;
    wxString mHeaderFile;
    wxString mReadFile;
    bool mZStack = false;
    int mSizeX = 0;
    int mSizeY = 0;
    int mSizeZ = 0;
    int mAllocX = 0;
    int mAllocY = 0;
    int mAllocZ = 0;
    std::unique_ptr<unsigned char[]> mData; // voxels, X fastest, then Y, then Z
    std::unique_ptr<char[]> mMask;          // per voxel, for the volume modifiers
    bool mIsAllocated = false;
    FileSequenceDual_cls mFileSequenceDual;
    int mZStackIndex = 0;

private:
    // The read shared by ReadData and PrefetchData, up to the start of the reader.
    int PrepareRead();
    std::shared_ptr<VolumeReadBase_cls> StartRead();
    void FreeArrays();
};

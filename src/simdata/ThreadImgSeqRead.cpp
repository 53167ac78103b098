#include "ThreadImgSeqRead.h"

#include "SliceImage_cls.h"
#include "VolumeSnap_cls.h"

#include <wx/log.h>

#include <vector>

void ThreadImgSeqRead::SetParameters(std::atomic<bool>* pbFinished, VolumeSnap_cls* pSnap) {
    VolumeReadBase_cls::SetParameters(pbFinished, pSnap);
    mFileSequenceDual = pSnap->mFileSequenceDual;
    // The copy must call back into nothing that the main thread owns.
    mFileSequenceDual.mFuncProbeHook = nullptr;
    mIndexT = pSnap->mZStackIndex;
}

void ThreadImgSeqRead::ReadImgSeq() {
    if (!mData)
        return;
    // The header read on the main thread has already shown the open failure, if any: the
    // reader thread never asks for a dialog.
    mFileSequenceDual.CalcMaxOffsetZ(mIndexT, false);
    const int slices = mFileSequenceDual.mMaxOffsetZ;
    if (slices < 1)
        return;
    const size_t plane = static_cast<size_t>(mSizeX) * mSizeY;
    std::vector<unsigned char> red;
    for (int z = 0; z < slices && z < mSizeZ; ++z) {
        const wxString strName = mFileSequenceDual.GetModifiedStrDual(mIndexT, z, 0, wxString());
        int width = 0;
        int height = 0;
        if (!SliceImage_cls::LoadRed(strName, red, width, height) || width != mSizeX || height != mSizeY) {
            wxLogMessage("Image stack reading stops at slice %d: %s", z, strName);
            return;
        }
        unsigned char* pSlice = mData + plane * z;
        for (int y = 0; y < mSizeY; ++y) {
            const unsigned char* src = red.data() + static_cast<size_t>(y) * mSizeX;
            unsigned char* dst = pSlice + static_cast<size_t>(mSizeY - 1 - y) * mSizeX;
            for (int x = 0; x < mSizeX; ++x)
                dst[x] = src[x];
        }
    }
}

#include "ThreadImgSeqRead.h"

#include "SliceImage_cls.h"
#include "VolumeSnap_cls.h"

#include <wx/log.h>

#include <algorithm>

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
    SlicePixels_cls slice; // one buffer for the whole stack
    for (int z = 0; z < slices && z < mSizeZ; ++z) {
        const wxString strName = mFileSequenceDual.GetModifiedStrDual(mIndexT, z, 0, wxString());
        bool bOk = SliceImage_cls::Load(strName, slice);
        if (bOk && (slice.mWidth != mSizeX || slice.mHeight != mSizeY))
            bOk = slice.Fail(wxString::Format("%d x %d where the stack is %d x %d", slice.mWidth,
                                              slice.mHeight, mSizeX, mSizeY));
        if (!bOk) {
            wxLogMessage("Image stack reading stops at slice %d: %s (%s)", z, strName, slice.mStrWhy);
            return;
        }
        unsigned char* pSlice = mData + plane * z;
        for (int y = 0; y < mSizeY; ++y)
            std::copy_n(slice.Row(y), mSizeX, pSlice + static_cast<size_t>(mSizeY - 1 - y) * mSizeX);
    }
}

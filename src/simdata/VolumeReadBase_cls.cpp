#include "VolumeReadBase_cls.h"

#include "VolumeSequence_cls.h"
#include "VolumeSnap_cls.h"

#include <wx/log.h>

#include <chrono>

void VolumeReadBase_cls::SetParameters(std::atomic<bool>* pbFinished, VolumeSnap_cls* pSnap) {
    mpbFinished = pbFinished;
    mpSequence = static_cast<VolumeSequence_cls*>(pSnap->mSequence);
    mSizeX = pSnap->mSizeX;
    mSizeY = pSnap->mSizeY;
    mSizeZ = pSnap->mSizeZ;
    mData = pSnap->mData.get();
    mStrFile = wxString(pSnap->mFile.wc_str());
}

void VolumeReadBase_cls::Entry() {
    const auto start = std::chrono::steady_clock::now();
    DoRead();
    DataSequence_cls::FinishRead(start, mStrFile, mpbFinished, mpSequence);
}

#include "VolumeReadBase_cls.h"

#include "ReadEventSink_cls.h"
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
    const long elapsed = static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start)
            .count());
    VolumeSequence_cls* pSequence = mpSequence;
    const wxString strLog = wxString::Format("ReadLog :: %s::%ldms\n", mStrFile, elapsed);
    // From here on the snap may be freed by the main thread: only copies are used.
    mpbFinished->store(true, std::memory_order_release);
    if (pSequence)
        pSequence->PopLock();
    ReadEventSink_cls::Post();
    wxLogMessage("%s", strLog);
}

#include "DataSnap_cls.h"

#include "DataSequence_cls.h"

#include <wx/utils.h>

DataSnap_cls::DataSnap_cls(DataSequence_cls* pSequence, int kind, int index)
    : mSequence(pSequence), mKind(kind), mIndex(index) {}

DataSnap_cls::~DataSnap_cls() {
    WaitReadingThread(3);
}

void DataSnap_cls::WaitReadingThread(int ms) {
    if (mReadStarted) {
        while (!mReadFinished.load(std::memory_order_acquire))
            wxMilliSleep(ms);
    }
    // The thread still posts its event and its log line after the flag; those take no time and
    // touch nothing of the snap's data, but the thread must end before the snap does.
    if (mThread.joinable())
        mThread.join();
}

void DataSnap_cls::MarkDraw() {
    mDrawStamp = mSequence->mDrawCounter;
    mSequence->mDrawCounter++;
}

void DataSnap_cls::StartReadingThread(std::function<void()> work) {
    if (mThread.joinable())
        mThread.join();
    mThread = std::thread(std::move(work));
}

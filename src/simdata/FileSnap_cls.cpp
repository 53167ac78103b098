#include "FileSnap_cls.h"

#include "DataSequence_cls.h"

#include <chrono>

bool FileSnap_cls::BeginRead() {
    WaitReadingThread(3);
    if (mReadStarted && mReadFinished.load(std::memory_order_acquire) && mReadFile == mFile)
        return false;
    if (mFile.empty() || mFile == "None" || mIndex < 0)
        return false;
    mReadStarted = true;
    ++mReadCount;
    mReadFinished.store(false, std::memory_order_release);
    mReadFile = mFile;
    FreeArrays();
    return true;
}

bool FileSnap_cls::ReadData() {
    if (!BeginRead())
        return false;
    mbBad = !ReadFileInto(mReadFile);
    mReadFinished.store(true, std::memory_order_release);
    return true;
}

bool FileSnap_cls::PrefetchData() {
    if (!BeginRead())
        return false;
    mSequence->PushLock();
    // The thread gets its own copy of the name: the main thread may change mFile meanwhile.
    const wxString strFile(mReadFile.wc_str());
    StartReadingThread([this, strFile]() {
        const auto start = std::chrono::steady_clock::now();
        mbBad = !ReadFileInto(strFile);
        DataSequence_cls::FinishRead(start, strFile, &mReadFinished, mSequence);
    });
    return true;
}

void FileSnap_cls::Clear() {
    WaitReadingThread(3);
    FreeArrays();
    mReadStarted = false;
    mReadFinished.store(false, std::memory_order_release);
    mReadFile.clear();
}

#include "ParticleFileStream_cls.h"

#include "UseGZ_cls.h"

bool ParticleFileStream_cls::Open(const wxString& strPath, bool bWhole) {
    mpStream = nullptr;
    mSize = -1;
    mpData.reset();
    if (mFile.is_open())
        mFile.close();
    mFile.clear();
    // A deep copy: the stream may be handed to a reader thread.
    mStrPath = wxString(strPath.wc_str());
    if (strPath.empty())
        return false;
    if (bWhole || UseGZ_cls::IsGZPath(strPath)) {
        unsigned char* p = nullptr;
        long long size = 0;
        if (!UseGZ_cls::CopyToMemory(&p, strPath, size))
            return false;
        mpData.reset(p);
        mSize = size - 1;
        mpBuf = std::make_unique<MemoryStreamBuf_cls>(GetData(), static_cast<size_t>(mSize));
        mpMemStream = std::make_unique<std::istream>(mpBuf.get());
        mpStream = mpMemStream.get();
        return true;
    }
    mFile.open(static_cast<const char*>(strPath.fn_str()), std::ios::in | std::ios::binary);
    if (!mFile.is_open())
        return false;
    mFile.seekg(0, std::ios::end);
    std::streamoff end = mFile.tellg();
    mFile.seekg(0, std::ios::beg);
    if (end < 0 || !mFile)
        return false;
    mSize = static_cast<long long>(end);
    mpStream = &mFile;
    return true;
}

void ParticleFileStream_cls::Rewind() {
    if (!mpStream)
        return;
    mpStream->clear();
    mpStream->seekg(0, std::ios::beg);
}

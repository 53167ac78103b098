#include "ParticleFileStream_cls.h"

#include "UseGZ_cls.h"

#include <wx/filename.h>

bool ParticleFileStream_cls::Open(const wxString& strPath) {
    mpStream = nullptr;
    mSize = -1;
    if (strPath.empty())
        return false;
    if (wxFileName(strPath).GetExt() == "gz") {
        mData.clear();
        if (!UseGZ_cls::CopyToString(&mData, strPath))
            return false;
        mpBuf = std::make_unique<MemoryStreamBuf_cls>(mData.data(), mData.size());
        mpMemStream = std::make_unique<std::istream>(mpBuf.get());
        mpStream = mpMemStream.get();
        mSize = static_cast<long long>(mData.size());
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

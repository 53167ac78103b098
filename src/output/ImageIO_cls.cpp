#include "ImageIO_cls.h"

#include "FBO_cls.h"
#include "ThreadImageSave_cls.h"

#include <epoxy/gl.h>
#include <wx/filename.h>

#include <chrono>
#include <cstdio>

ImageIO_cls::ImageIO_cls() = default;

ImageIO_cls::~ImageIO_cls() {
    WaitAll();
}

void ImageIO_cls::Reclaim(Slot_cls& slot) {
    if (!slot.mbUsed)
        return;
    while (!slot.mbFinished.load(std::memory_order_acquire))
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    slot.mThread.join();
    mVResults.push_back({slot.mStrPath, slot.mbOk.load(std::memory_order_relaxed), slot.mTag});
    slot.mpCThread.reset();
    slot.mbUsed = false;
    slot.mbFinished.store(false, std::memory_order_relaxed);
}

std::vector<ImageIO_cls::Result_cls> ImageIO_cls::CollectFinished() {
    // Oldest first: the ring order from the next slot on.
    for (int i = 0; i < msSlotNum; ++i) {
        Slot_cls& slot = mSlots[(mNextSlot + i) % msSlotNum];
        if (slot.mbUsed && slot.mbFinished.load(std::memory_order_acquire))
            Reclaim(slot);
    }
    std::vector<Result_cls> v;
    v.swap(mVResults);
    return v;
}

std::vector<ImageIO_cls::Result_cls> ImageIO_cls::WaitAll() {
    for (int i = 0; i < msSlotNum; ++i)
        Reclaim(mSlots[(mNextSlot + i) % msSlotNum]);
    std::vector<Result_cls> v;
    v.swap(mVResults);
    return v;
}

int ImageIO_cls::GetBusyCount() const {
    int n = 0;
    for (const Slot_cls& slot : mSlots)
        n += slot.mbUsed ? 1 : 0;
    return n;
}

ImageIO_cls::Slot_cls* ImageIO_cls::TakeNextSlot() {
    Slot_cls& slot = mSlots[mNextSlot];
    Reclaim(slot);
    mNextSlot = (mNextSlot + 1) % msSlotNum;
    return &slot;
}

bool ImageIO_cls::ReadBack(FBO_cls* pFBO, bool bAlpha, const std::string& strPath,
                           ThreadImageSave_cls& thread, bool bSecondEye) {
    ImageFile_cls& source = thread.GetSource(bSecondEye ? 1 : 0);
    SampleType_enum type = SampleType_enum::UInt8;
    if (!ImageFile_cls::GetSampleTypeForPath(strPath, mPNGBitDepth, type)) {
        fprintf(stderr, "image not saved: no writer for the extension of %s\n", strPath.c_str());
        return false;
    }
    const int side = pFBO->GetWidth();
    source.mWidth = side;
    source.mHeight = side;
    source.mChannels = bAlpha ? 4 : 3;
    source.mType = type;
    pFBO->Bind();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    if (type != SampleType_enum::Float && pFBO->GetColorDepthBuilt() == 16 && side <= msRawSideMax &&
        GetTable()) {
        // A plain copy here; the writer converts it as the driver would have.
        std::vector<uint16_t>& vRaw = thread.mVRaw[bSecondEye ? 1 : 0];
        vRaw.resize(static_cast<size_t>(side) * side * 4);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_HALF_FLOAT, vRaw.data());
        glBindTexture(GL_TEXTURE_2D, 0);
        thread.mpCTable = mpCTable;
        return true;
    }
    const size_t count = static_cast<size_t>(side) * side * source.mChannels;
    const GLenum format = bAlpha ? GL_RGBA : GL_RGB;
    void* pData = nullptr;
    GLenum glType = GL_UNSIGNED_BYTE;
    // The driver converts the float buffer to the file's samples and clamps them (not floats).
    if (type == SampleType_enum::UInt8) {
        source.mV8.resize(count);
        pData = source.mV8.data();
    } else if (type == SampleType_enum::UInt16) {
        source.mV16.resize(count);
        pData = source.mV16.data();
        glType = GL_UNSIGNED_SHORT;
    } else {
        source.mVFloat.resize(count);
        pData = source.mVFloat.data();
        glType = GL_FLOAT;
    }
    if (!pData) {
        printf("*pBuffer == NULL\n");
        return false;
    }
    glGetTexImage(GL_TEXTURE_2D, 0, format, glType, pData);
    glBindTexture(GL_TEXTURE_2D, 0);
    return true;
}

const ReadBackTable_cls* ImageIO_cls::GetTable() {
    if (!mbTableAsked) {
        mbTableAsked = true;
        mpCTable = ReadBackTable_cls::MakeFromDriver();
    }
    return mpCTable.get();
}

void ImageIO_cls::Start(Slot_cls& slot, std::unique_ptr<ThreadImageSave_cls> pThread,
                        const std::string& strPath) {
    slot.mbUsed = true;
    slot.mbFinished.store(false, std::memory_order_relaxed);
    slot.mbOk.store(false, std::memory_order_relaxed);
    slot.mStrPath = strPath;
    slot.mTag = mTag;
    pThread->mpbFinished = &slot.mbFinished;
    pThread->mpbOk = &slot.mbOk;
    slot.mpCThread = std::move(pThread);
    ThreadImageSave_cls* p = slot.mpCThread.get();
    slot.mThread = std::thread([p] { p->Entry(); });
}

void ImageIO_cls::Save(FBO_cls* const* pFBOs, int count, wxSize size, const wxString& strPath, bool bAlpha) {
    const wxFileName fn(strPath);
    if (!fn.GetPath().empty() && !wxFileName::DirExists(fn.GetPath()))
        return;
    const std::string strFile = strPath.utf8_string();
    ++mSaveCount;
    Slot_cls* pSlot = TakeNextSlot();
    std::unique_ptr<ThreadImageSave_cls> pThread;
    if (count == 2)
        pThread = std::make_unique<ThreadImageSaveScanline_cls>();
    else
        pThread = std::make_unique<ThreadImageSave_cls>();
    pThread->SetParameters(pFBOs[0]->GetWidth(), size.x, size.y, strFile, bAlpha, mPNGCompression);
    for (int i = 0; i < count; ++i) {
        if (!ReadBack(pFBOs[i], bAlpha, strFile, *pThread, i == 1)) {
            mVResults.push_back({strFile, false, mTag});
            return;
        }
    }
    Start(*pSlot, std::move(pThread), strFile);
}

void ImageIO_cls::SaveImageFromFBO(FBO_cls* pFBO, wxSize size, const wxString& strPath, bool bAlpha) {
    Save(&pFBO, 1, size, strPath, bAlpha);
}

void ImageIO_cls::SaveImageFromFBOScanLine(FBO_cls** pFBOs, wxSize size, const wxString& strPath) {
    Save(pFBOs, 2, size, strPath, false);
}

void ImageIO_cls::PrepareViewportInfo() {
    glGetDoublev(GL_PROJECTION_MATRIX, mProjection);
}

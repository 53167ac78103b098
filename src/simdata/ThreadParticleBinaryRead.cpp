#include "ThreadParticleBinaryRead.h"

#include "ParticleFileStream_cls.h"
#include "ThreadReadBuffer_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace {

// The two chunk buffers of the record loop, kept from one read for the next. Fresh pages cost
// a fault each, and on a 20,000,000-particle file those faults took about a quarter of the read.
struct ChunkBuffers_cls {
    std::unique_ptr<char[]> mBuf[2];
    long long mBytes = 0; // of each buffer
};

// One pair is kept, and only while a buffer holds at most this much, so an idle program keeps
// little. Readers of several sequences may run at once: whoever takes the pair owns it.
constexpr long long kMaxKeptBufferBytes = 16LL << 20;

struct KeptBuffers_cls {
    std::atomic<ChunkBuffers_cls*> mpKept{nullptr};
    ~KeptBuffers_cls() { delete mpKept.exchange(nullptr); }
};
KeptBuffers_cls gKeptBuffers;

std::unique_ptr<ChunkBuffers_cls> TakeChunkBuffers(long long bytes) {
    std::unique_ptr<ChunkBuffers_cls> p(gKeptBuffers.mpKept.exchange(nullptr, std::memory_order_acquire));
    if (p && p->mBytes >= bytes)
        return p;
    p.reset(new (std::nothrow) ChunkBuffers_cls);
    if (!p)
        return nullptr;
    for (auto& buf : p->mBuf) {
        buf.reset(new (std::nothrow) char[static_cast<size_t>(bytes)]);
        if (!buf)
            return nullptr;
    }
    p->mBytes = bytes;
    return p;
}

void KeepChunkBuffers(std::unique_ptr<ChunkBuffers_cls> p) {
    if (!p || p->mBytes > kMaxKeptBufferBytes)
        return;
    ChunkBuffers_cls* pExpected = nullptr;
    if (gKeptBuffers.mpKept.compare_exchange_strong(pExpected, p.get(), std::memory_order_acq_rel))
        p.release();
}

} // namespace

void ThreadParticleBinaryRead::ReadBodyBinary() {
    ParticleFileStream_cls* pFile = OpenFile(false);
    if (!pFile)
        return;
    const long long headerBytes = mpFormat->GetHeaderByte();
    const long long recordBytes = mpFormat->GetBodyParticleByte();
    // A file already in memory (decompressed) is decoded where it stands, without the chunk copies,
    // chunk by chunk as the stream would give it: a velocity item makes the records of a chunk
    // overlap, so where each chunk starts matters.
    if (pFile->GetData() && mpFormat->GetArrayDirection() != 1 && recordBytes > 0 && mNumber > 0) {
        const std::vector<int> items = mpFormat->GetVFormatBody(1);
        const long long body = std::max(0LL, pFile->GetSize() - headerBytes);
        const char* first = pFile->GetData() + std::min(headerBytes, pFile->GetSize());
        SetProgressTotal(mNumber);
        for (int c = 0; c * static_cast<long long>(msChunkRecords) < mNumber; ++c) {
            const int records = std::min(msChunkRecords, mNumber - c * msChunkRecords);
            const long long start = c * static_cast<long long>(msChunkRecords) * recordBytes;
            const long long bytes = std::clamp(body - start, 0LL, records * recordBytes);
            DecodeRecords(first + std::min(start, body), bytes, c * msChunkRecords, records, items);
            if (!ReportProgress(records))
                break;
        }
        return;
    }
    std::istream& stream = pFile->GetStream();
    stream.seekg(headerBytes, std::ios::beg);
    ReadBodyStream(stream);
}

void ThreadParticleBinaryRead::ReadBodyStream(std::istream& stream) {
    if (mpFormat->GetArrayDirection() == 1) {
        ReadBodyStreamVertical(stream);
        return;
    }
    const std::vector<int> items = mpFormat->GetVFormatBody(1);
    const long long recordBytes = mpFormat->GetBodyParticleByte();
    if (recordBytes <= 0 || mNumber <= 0)
        return;
    const int chunkRecords = std::min(msChunkRecords, mNumber);
    const long long bufferBytes = chunkRecords * recordBytes;
    std::unique_ptr<ChunkBuffers_cls> pBuffers = TakeChunkBuffers(bufferBytes);
    if (!pBuffers) {
        wxLogMessage("Read buffer of %lld bytes could not be allocated: %s", bufferBytes, mStrFile);
        return;
    }
    std::unique_ptr<char[]>* buffers = pBuffers->mBuf;
    const int chunks = (mNumber + msChunkRecords - 1) / msChunkRecords;
    SetProgressTotal(mNumber);
    auto recordsOf = [&](int c) { return std::min(msChunkRecords, mNumber - c * msChunkRecords); };

    std::atomic<bool> bFinished{false};
    ThreadReadBuffer_cls helper;
    helper.SetParameters(&bFinished, &stream, buffers[0].get(), recordsOf(0) * recordBytes);
    helper.Run();
    helper.Wait();
    long long readBytes = helper.GetReadBytes();
    for (int c = 0; c < chunks; ++c) {
        const int cur = c & 1;
        bool bStarted = false;
        if (c + 1 < chunks) {
            helper.SetParameters(&bFinished, &stream, buffers[cur ^ 1].get(), recordsOf(c + 1) * recordBytes);
            helper.Run();
            bStarted = true;
        }
        DecodeRecords(buffers[cur].get(), readBytes, c * msChunkRecords, recordsOf(c), items);
        if (bStarted) {
            helper.Wait();
            readBytes = helper.GetReadBytes();
        }
        if (!ReportProgress(recordsOf(c)))
            break;
    }
    KeepChunkBuffers(std::move(pBuffers));
}

void ThreadParticleBinaryRead::DecodeRecords(const char* buf, long long bytes, int first, int count,
                                             const std::vector<int>& items) {
    // The record is walked with a cursor, item by item. "VXVYVZ(float)" has no decoding step:
    // the record size counts its 12 bytes but the cursor does not pass them, so the items behind
    // it take those bytes and velocity never reaches the snap. Kept as it is.
    struct Op {
        int item;
        long long offset; // of the item from the cursor position of its record
    };
    std::vector<Op> ops;
    long long advance = 0; // bytes the cursor moves per record
    for (int item : items) {
        if (item == PB_VXVYVZ)
            continue;
        ops.push_back({item, advance});
        advance += ParticleFormatTable_cls::GetBodyItemByteBinary(item);
    }
    if (advance <= 0)
        return;
    count = static_cast<int>(std::min<long long>(count, bytes / advance));
    // The same cursor walk, done item after item over blocks that stay in the cache: one tight
    // loop per item instead of a branch per item and record.
    constexpr int kBlock = 4096;
    for (int b = 0; b < count; b += kBlock) {
        const int end = std::min(count, b + kBlock);
        for (const Op& op : ops) {
            const char* src = buf + b * advance + op.offset;
            const size_t i0 = static_cast<size_t>(first) + b;
            const int n = end - b;
            switch (op.item) {
            case PB_XYZ:
                for (int r = 0; r < n; ++r)
                    std::memcpy(mXYZ + 3 * (i0 + r), src + r * advance, 12);
                break;
            case PB_TYPE:
                if (mType)
                    for (int r = 0; r < n; ++r) {
                        int v;
                        std::memcpy(&v, src + r * advance, 4);
                        mType[i0 + r] = static_cast<unsigned char>(v & 0xff);
                    }
                break;
            case PB_SIZE:
                if (mSize)
                    for (int r = 0; r < n; ++r)
                        std::memcpy(mSize + i0 + r, src + r * advance, 4);
                break;
            case PB_ID:
                if (mID)
                    for (int r = 0; r < n; ++r)
                        std::memcpy(mID + i0 + r, src + r * advance, 4);
                break;
            case PB_ID_LONG:
                if (mIDLong)
                    for (int r = 0; r < n; ++r)
                        std::memcpy(mIDLong + i0 + r, src + r * advance, 8);
                break;
            case PB_VALUE0:
            case PB_VALUE1:
            case PB_VALUE2:
                if (float* pv = mValue[op.item - PB_VALUE0])
                    for (int r = 0; r < n; ++r)
                        std::memcpy(pv + i0 + r, src + r * advance, 4);
                break;
            default: // the dummies are only skipped over
                break;
            }
        }
    }
}

void ThreadParticleBinaryRead::ReadBodyStreamVertical(std::istream& stream) {
    const size_t n = mNumber > 0 ? static_cast<size_t>(mNumber) : 0;
    if (n == 0)
        return;
    auto readInto = [&](void* p, size_t bytes) {
        if (p)
            stream.read(static_cast<char*>(p), static_cast<std::streamsize>(bytes));
        else
            stream.seekg(static_cast<std::streamoff>(bytes), std::ios::cur);
    };
    for (int item : mpFormat->GetVFormatBody(1)) {
        switch (item) {
        case PB_XYZ:
            readInto(mXYZ, n * 12);
            break;
        case PB_VXVYVZ:
            // No step and no bytes consumed, as in the record form.
            break;
        case PB_TYPE: {
            if (!mType) {
                stream.seekg(static_cast<std::streamoff>(n * 4), std::ios::cur);
                break;
            }
            // The ints pass through a small buffer that stays in the cache: a temporary array of
            // the whole column would cost a page fault per 1024 particles.
            constexpr size_t kTypeBlock = 65536;
            std::vector<int> tmp(std::min(n, kTypeBlock));
            for (size_t i0 = 0; i0 < n; i0 += kTypeBlock) {
                const size_t want = std::min(n - i0, kTypeBlock);
                stream.read(reinterpret_cast<char*>(tmp.data()), static_cast<std::streamsize>(want * 4));
                // Only what was read: on a short read the rest of the types stays zero.
                const size_t got = static_cast<size_t>(stream.gcount()) / 4;
                for (size_t i = 0; i < got; ++i)
                    mType[i0 + i] = static_cast<unsigned char>(tmp[i] & 0xff);
                if (got < want)
                    break;
            }
            break;
        }
        case PB_SIZE:
            readInto(mSize, n * 4);
            break;
        case PB_VALUE0:
        case PB_VALUE1:
        case PB_VALUE2:
            readInto(mValue[item - PB_VALUE0], n * 4);
            break;
        case PB_ID:
            readInto(mID, n * 4);
            break;
        case PB_ID_LONG:
            readInto(mIDLong, n * 8);
            break;
        case PB_DUMMY:
            stream.seekg(static_cast<std::streamoff>(n * 4), std::ios::cur);
            break;
        case PB_DUMMYX3:
            stream.seekg(static_cast<std::streamoff>(n * 12), std::ios::cur);
            break;
        case PB_DUMMYX10:
            stream.seekg(static_cast<std::streamoff>(n * 40), std::ios::cur);
            break;
        default:
            break;
        }
    }
}

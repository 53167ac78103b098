#include "DrawParticleLargeVBO_cls.h"

#include "ParticleForRender_cls.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace {

inline bool IsVisible(float alpha) {
    return !(alpha == 0.f); // NaN counts as visible
}

} // namespace

DrawParticleLargeVBO_cls::~DrawParticleLargeVBO_cls() {
    Join();
    JoinElement();
}

void DrawParticleLargeVBO_cls::Allocate(int batch, const ParticleDrawSetting_cls& setting, bool bSphere) {
    mpCSetting = &setting;
    mbSphere = bSphere;
    mBatch = std::max(1, batch);
    mNumInBatch = 0;
    mNumBatches = 0;
    mNumElement[0] = mNumElement[1] = 0;
    if (mBatch <= mHostCapacity)
        return;
    const size_t n = static_cast<size_t>(mBatch);
    // Room for the spheres' instances: position with size, S with T.
    mpPos.reset(new float[4 * n]);
    mpS.reset(new float[2 * n]);
    mpT.reset(new float[n]);
    mpAlpha.reset(new float[n]);
    mpSize.reset(new float[n]);
    mpBits.reset(new int[n]);
    mpTwist.reset(new float[n]);
    mHostCapacity = mBatch;
}

void DrawParticleLargeVBO_cls::ReleaseMemoryData() {
    Join();
    JoinElement();
    mpPos.reset();
    mpS.reset();
    mpT.reset();
    mpAlpha.reset();
    mpSize.reset();
    mpBits.reset();
    mpTwist.reset();
    mHostCapacity = 0;
    mCList.Clear();
}

void DrawParticleLargeVBO_cls::Join() {
    for (std::thread& t : mThread)
        if (t.joinable())
            t.join();
}

void DrawParticleLargeVBO_cls::JoinElement() {
    if (mElementThread.joinable())
        mElementThread.join();
}

template <class Job> void DrawParticleLargeVBO_cls::RunQuarters(Job job) {
    Join();
    for (int j = 0; j < 4; ++j)
        mThread[j] = std::thread(job, j);
}

void DrawParticleLargeVBO_cls::SetQuarters(const ParticleForRender_cls* pSet, long long first) {
    const long long n = std::min<long long>(mBatch, std::max<long long>(0, pSet->mNumber - first));
    const long long q = n / 4;
    for (int j = 0; j < 4; ++j)
        mFrom[j] = first + j * q;
    mFrom[4] = first + n;
}

void DrawParticleLargeVBO_cls::PrepareNextDataPos(const ParticleForRender_cls* pSet, long long first) {
    Join();
    SetQuarters(pSet, first);
    // One thread counts the quarters on four workers, then copies on four at the offsets the
    // counts give: the GL thread draws the batch before meanwhile.
    mThread[0] = std::thread([this, pSet]() {
        int count[4] = {};
        std::thread counters[4];
        for (int j = 0; j < 4; ++j) {
            counters[j] = std::thread([this, pSet, j, &count]() {
                const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
                const float* pAlpha = pSet->mAlpha.get();
                int c = 0;
                for (long long k = mFrom[j]; k < mFrom[j + 1]; ++k)
                    c += IsVisible(pAlpha[pOrder[k].mIndex]) ? 1 : 0;
                count[j] = c;
            });
        }
        for (std::thread& t : counters)
            t.join();
        int start = 0;
        for (int j = 0; j < 4; ++j) {
            mStart[j] = start;
            mbAllVisible[j] = count[j] == mFrom[j + 1] - mFrom[j];
            start += count[j];
        }
        for (int j = 1; j < 4; ++j)
            mOffset[j - 1] = mStart[j];
        mNumInBatch = start;
        std::thread copiers[4];
        for (int j = 0; j < 4; ++j) {
            copiers[j] = std::thread([this, pSet, j]() {
                const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
                const float* pAlpha = pSet->mAlpha.get();
                const float* pXYZ = pSet->mXYZ.get();
                const float* pSize = pSet->mSize.get();
                const size_t stride = mbSphere ? 4 : 3;
                float* pOut = mpPos.get() + stride * static_cast<size_t>(mStart[j]);
                for (long long k = mFrom[j]; k < mFrom[j + 1]; ++k) {
                    const size_t i = static_cast<size_t>(pOrder[k].mIndex);
                    if (!IsVisible(pAlpha[i]))
                        continue;
                    pOut[0] = pXYZ[3 * i];
                    pOut[1] = pXYZ[3 * i + 1];
                    pOut[2] = pXYZ[3 * i + 2];
                    if (mbSphere)
                        pOut[3] = pSize[i];
                    pOut += stride;
                }
            });
        }
        for (std::thread& t : copiers)
            t.join();
    });
}

void DrawParticleLargeVBO_cls::PrepareNextDataST(const ParticleForRender_cls* pSet, long long) {
    RunQuarters([this, pSet](int j) {
        const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
        const float* pAlpha = pSet->mAlpha.get();
        if (mbSphere) {
            // One vec2 per instance.
            float* pST = mpS.get() + 2 * static_cast<size_t>(mStart[j]);
            for (long long k = mFrom[j]; k < mFrom[j + 1]; ++k) {
                const size_t i = static_cast<size_t>(pOrder[k].mIndex);
                if (!IsVisible(pAlpha[i]))
                    continue;
                *pST++ = pSet->mColorS[i];
                *pST++ = pSet->mColorT[i];
            }
            return;
        }
        float* pS = mpS.get() + mStart[j];
        float* pT = mpT.get() + mStart[j];
        for (long long k = mFrom[j]; k < mFrom[j + 1]; ++k) {
            const size_t i = static_cast<size_t>(pOrder[k].mIndex);
            if (!IsVisible(pAlpha[i]))
                continue;
            *pS++ = pSet->mColorS[i];
            *pT++ = pSet->mColorT[i];
        }
    });
}

void DrawParticleLargeVBO_cls::PrepareNextDataAlpha(const ParticleForRender_cls* pSet, long long) {
    RunQuarters([this, pSet](int j) {
        const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
        const float* pAlpha = pSet->mAlpha.get();
        float* pOut = mpAlpha.get() + mStart[j];
        for (long long k = mFrom[j]; k < mFrom[j + 1]; ++k) {
            const float a = pAlpha[pOrder[k].mIndex];
            if (IsVisible(a))
                *pOut++ = a;
        }
    });
}

void DrawParticleLargeVBO_cls::PrepareNextDataOther(const ParticleForRender_cls* pSet, long long) {
    RunQuarters([this, pSet](int j) {
        const ParticleDrawSetting_cls& setting = *mpCSetting;
        const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
        const float* pAlpha = pSet->mAlpha.get();
        size_t o = static_cast<size_t>(mStart[j]);
        for (long long k = mFrom[j]; k < mFrom[j + 1]; ++k) {
            const int i = pOrder[k].mIndex;
            if (!IsVisible(pAlpha[i]))
                continue;
            mpSize[o] = pSet->mSize[i];
            mpBits[o] = setting.mBits[setting.GetMaterial(pSet->mType[i])];
            mpTwist[o] = static_cast<float>(i); // the element's number, as the normal drawing gives it
            ++o;
        }
    });
}

void DrawParticleLargeVBO_cls::PrepareNextDataElement(const ParticleForRender_cls* pSet, long long) {
    JoinElement();
    mElementThread = std::thread([this, pSet]() {
        const ParticleDrawSetting_cls& setting = *mpCSetting;
        const ArrayAndIndex_cls* pOrder = pSet->mOrder.get();
        const float* pAlpha = pSet->mAlpha.get();
        mCList.Clear();
        unsigned int local = 0;
        for (long long k = mFrom[0]; k < mFrom[4]; ++k) {
            const int i = pOrder[k].mIndex;
            if (!IsVisible(pAlpha[i]))
                continue;
            // Instances are drawn straight from the arrays: a run of spheres must be consecutive.
            mCList.Add(setting, local++, pSet->mType[i], pAlpha[i], mbSphere);
        }
    });
}

void DrawParticleLargeVBO_cls::SetNextVBOPos() {
    Upload(mBuffer[BUF_POS], mCapacity[BUF_POS], GL_ARRAY_BUFFER, mpPos.get(),
           static_cast<size_t>(mNumInBatch) * (mbSphere ? 4 : 3) * sizeof(float));
}

void DrawParticleLargeVBO_cls::SetNextVBOST() {
    const size_t bytes = static_cast<size_t>(mNumInBatch) * sizeof(float);
    if (mbSphere) {
        Upload(mBuffer[BUF_S], mCapacity[BUF_S], GL_ARRAY_BUFFER, mpS.get(), 2 * bytes);
        return;
    }
    Upload(mBuffer[BUF_S], mCapacity[BUF_S], GL_ARRAY_BUFFER, mpS.get(), bytes);
    Upload(mBuffer[BUF_T], mCapacity[BUF_T], GL_ARRAY_BUFFER, mpT.get(), bytes);
}

void DrawParticleLargeVBO_cls::SetNextVBOAlpha() {
    Upload(mBuffer[BUF_ALPHA], mCapacity[BUF_ALPHA], GL_ARRAY_BUFFER, mpAlpha.get(),
           static_cast<size_t>(mNumInBatch) * sizeof(float));
}

void DrawParticleLargeVBO_cls::SetNextVBOOther() {
    const size_t bytes = static_cast<size_t>(mNumInBatch) * sizeof(float);
    Upload(mBuffer[BUF_BITS], mCapacity[BUF_BITS], GL_ARRAY_BUFFER, mpBits.get(), bytes);
    // The spheres' sizes went up with their positions.
    if (mbSphere)
        return;
    Upload(mBuffer[BUF_SIZE], mCapacity[BUF_SIZE], GL_ARRAY_BUFFER, mpSize.get(), bytes);
    mbTwist = mpCSetting && mpCSetting->mbTwist;
    if (mbTwist)
        Upload(mBuffer[BUF_TWIST], mCapacity[BUF_TWIST], GL_ARRAY_BUFFER, mpTwist.get(), bytes);
}

void DrawParticleLargeVBO_cls::SetNextVBOElement() {
    ++mNumBatches;
    if (mNumInBatch == 0)
        mCList.Clear();
    SetElementLists(mCList, !mbSphere);
    if (!mbSphere)
        return;
    // A run of instances starts at the instance of its first entry.
    for (int list = 0; list < 2; ++list)
        for (ParticleRun_cls& run : mVRun[list])
            run.mFirst = static_cast<int>(mCList.mVElement[list][static_cast<size_t>(run.mFirst)]);
}

void DrawParticleLargeVBO_cls::GetSphereSource(SphereAttribute_cls* pAttribute, int* pListBase) const {
    pAttribute[SPHERE_POS_SIZE] = {mBuffer[BUF_POS].Get(), 4 * sizeof(float), 0};
    pAttribute[SPHERE_ST] = {mBuffer[BUF_S].Get(), 2 * sizeof(float), 0};
    pAttribute[SPHERE_ALPHA] = {mBuffer[BUF_ALPHA].Get(), sizeof(float), 0};
    pAttribute[SPHERE_BITS] = {mBuffer[BUF_BITS].Get(), sizeof(int), 0};
    pListBase[0] = pListBase[1] = 0;
}

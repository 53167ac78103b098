#include "HeightFieldForRender_cls.h"

#include "DataSerial_cls.h"

#include "HeightFieldSnap_cls.h"

#include <cmath>

void HeightFieldForRender_cls::Clear() {
    mWidth = mHeight = 0;
    mXYZ.clear();
    mNormal.clear();
    mHeightValue.clear();
    mIndex.clear();
}

bool HeightFieldForRender_cls::PrepareData(const HeightFieldSnap_cls* pA, const HeightFieldSnap_cls* pB,
                                           double t, int step, const HeightFieldSetting_cls& s) {
    Clear();
    mLastStep = step;
    mLastInterp = static_cast<float>(t);
    ++mDataCounter;
    mSerial = DataSerial_cls::Next();
    if (!pA || pA->mWidth < 1 || pA->mHeight < 1 || pA->mHeights.empty())
        return false;
    const int w = pA->mWidth;
    const int h = pA->mHeight;
    const bool bBlend =
        s.mInterpType == 1 && pB && pB != pA && t > 0.0 && pA->IsSizeSame(pB) && !pB->mHeights.empty();
    mWidth = w;
    mHeight = h;
    const size_t n = static_cast<size_t>(w) * h;
    mXYZ.resize(n * 3);
    mNormal.resize(n * 3);
    mHeightValue.resize(n);
    const double dx = w > 1 ? s.mSizeX / (w - 1) : 0.0;
    const double dy = h > 1 ? s.mSizeY / (h - 1) : 0.0;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const size_t i = static_cast<size_t>(y) * w + x;
            double z = pA->mHeights[i];
            if (bBlend)
                z = z * (1.0 - t) + pB->mHeights[i] * t;
            mXYZ[3 * i] = static_cast<float>(w > 1 ? x * dx - 0.5 * s.mSizeX : 0.0);
            mXYZ[3 * i + 1] = static_cast<float>(h > 1 ? y * dy - 0.5 * s.mSizeY : 0.0);
            mXYZ[3 * i + 2] = static_cast<float>(z * s.mHeightScale);
            mHeightValue[i] = static_cast<float>(z);
        }
    auto zAt = [&](int x, int y) {
        return static_cast<double>(mXYZ[3 * (static_cast<size_t>(y) * w + x) + 2]);
    };
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int x0 = x > 0 ? x - 1 : x, x1 = x + 1 < w ? x + 1 : x;
            const int y0 = y > 0 ? y - 1 : y, y1 = y + 1 < h ? y + 1 : y;
            const double gx = x1 > x0 ? (zAt(x1, y) - zAt(x0, y)) / ((x1 - x0) * dx) : 0.0;
            const double gy = y1 > y0 ? (zAt(x, y1) - zAt(x, y0)) / ((y1 - y0) * dy) : 0.0;
            const double len = std::sqrt(gx * gx + gy * gy + 1.0);
            const size_t i = static_cast<size_t>(y) * w + x;
            mNormal[3 * i] = static_cast<float>(-gx / len);
            mNormal[3 * i + 1] = static_cast<float>(-gy / len);
            mNormal[3 * i + 2] = static_cast<float>(1.0 / len);
        }
    if (w > 1 && h > 1) {
        mIndex.reserve(static_cast<size_t>(w - 1) * (h - 1) * 6);
        for (int y = 0; y + 1 < h; ++y)
            for (int x = 0; x + 1 < w; ++x) {
                const unsigned a = static_cast<unsigned>(y * w + x), b = a + 1, c = a + w, d = c + 1;
                mIndex.insert(mIndex.end(), {a, b, d, a, d, c});
            }
    }
    return true;
}

#include "MarchingCubes_cls.h"

#include "MarchingCubesTable_cls.h"
#include "ThreadInstance_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <cmath>

namespace {

class ThreadMarchingCubes_cls : public ThreadInstance_cls {
public:
    const unsigned char* mpData = nullptr; // not owned: the snap's voxels
    int mSizeX = 0, mSizeY = 0, mSizeZ = 0;
    float mIso = 0.0f;
    MarchingCubes_cls::Result_cls* mpOut = nullptr; // not owned: this worker's own list

protected:
    void Work() override {
        MarchingCubes_cls::RunSlab(mpData, mSizeX, mSizeY, mSizeZ, mIso, mIni, mFin, *mpOut);
    }
};

// The gradient of the voxels at a grid point.
inline void Gradient(const unsigned char* d, int sx, int sy, int sz, int x, int y, int z, float g[3]) {
    const size_t sxy = static_cast<size_t>(sx) * sy;
    const size_t i = static_cast<size_t>(z) * sxy + static_cast<size_t>(y) * sx + x;
    auto diff = [&](int c, int n, size_t stride) {
        if (n < 2)
            return 0.0f;
        if (c == 0)
            return static_cast<float>(d[i + stride]) - d[i];
        if (c == n - 1)
            return static_cast<float>(d[i]) - d[i - stride];
        return 0.5f * (static_cast<float>(d[i + stride]) - d[i - stride]);
    };
    g[0] = diff(x, sx, 1);
    g[1] = diff(y, sy, static_cast<size_t>(sx));
    g[2] = diff(z, sz, sxy);
}

} // namespace

void MarchingCubes_cls::RunSlab(const unsigned char* pData, int sx, int sy, int sz, float iso, int z0, int z1,
                                Result_cls& out) {
    const MarchingCubesTable_cls& table = MarchingCubesTable_cls::Get();
    const size_t sxy = static_cast<size_t>(sx) * sy;
    // Offsets of the eight corners from corner 0 of a cell.
    size_t cornerOff[8];
    for (int c = 0; c < 8; ++c)
        cornerOff[c] = (c & 1) + ((c >> 1) & 1) * static_cast<size_t>(sx) + ((c >> 2) & 1) * sxy;
    // For whole voxel values, below the iso value means below its ceiling; the test of a cell then
    // needs no float, and the four corners at x + 1 are the next cell's corners at x.
    const int threshold = static_cast<int>(std::ceil(iso));
    float v[8];
    float pos[12][3];
    float nrm[12][3];
    for (int z = z0; z < z1; ++z)
        for (int y = 0; y + 1 < sy; ++y) {
            const unsigned char* pRow = pData + static_cast<size_t>(z) * sxy + static_cast<size_t>(y) * sx;
            const unsigned char* r0 = pRow;            // corners 0, 1
            const unsigned char* r2 = pRow + sx;       // corners 2, 3
            const unsigned char* r4 = pRow + sxy;      // corners 4, 5
            const unsigned char* r6 = pRow + sxy + sx; // corners 6, 7
            auto side = [&](int i) {
                return (r0[i] < threshold) | (r2[i] < threshold) << 2 | (r4[i] < threshold) << 4 |
                       (r6[i] < threshold) << 6;
            };
            int left = side(0);
            for (int x = 0; x + 1 < sx; ++x) {
                const int right = side(x + 1);
                const int cs = left | right << 1;
                left = right;
                const uint16_t mask = table.mEdgeMask[cs];
                if (!mask)
                    continue;
                const unsigned char* p = pRow + x;
                for (int c = 0; c < 8; ++c)
                    v[c] = p[cornerOff[c]];
                float g[8][3];
                bool bGrad[8] = {false};
                for (int e = 0; e < 12; ++e) {
                    if (!(mask >> e & 1))
                        continue;
                    const int a = MarchingCubesTable_cls::msEdgeCorner[e][0];
                    const int b = MarchingCubesTable_cls::msEdgeCorner[e][1];
                    const float t = (iso - v[a]) / (v[b] - v[a]);
                    const int ca[3] = {x + (a & 1), y + ((a >> 1) & 1), z + ((a >> 2) & 1)};
                    const int cb[3] = {x + (b & 1), y + ((b >> 1) & 1), z + ((b >> 2) & 1)};
                    for (int k : {a, b})
                        if (!bGrad[k]) {
                            Gradient(pData, sx, sy, sz, x + (k & 1), y + ((k >> 1) & 1), z + ((k >> 2) & 1),
                                     g[k]);
                            bGrad[k] = true;
                        }
                    float n2 = 0.0f;
                    for (int i = 0; i < 3; ++i) {
                        pos[e][i] = ca[i] + t * (cb[i] - ca[i]);
                        nrm[e][i] = -(g[a][i] + t * (g[b][i] - g[a][i]));
                        n2 += nrm[e][i] * nrm[e][i];
                    }
                    const float inv = n2 > 0.0f ? 1.0f / std::sqrt(n2) : 0.0f;
                    for (float& c : nrm[e])
                        c *= inv;
                }
                const int8_t* tri = table.mTriangle[cs].data();
                for (int k = 0; tri[k] >= 0; ++k) {
                    out.mXYZ.insert(out.mXYZ.end(), pos[tri[k]], pos[tri[k]] + 3);
                    out.mNormal.insert(out.mNormal.end(), nrm[tri[k]], nrm[tri[k]] + 3);
                }
            }
        }
}

long long MarchingCubes_cls::Run(const unsigned char* pData, int sx, int sy, int sz, float iso,
                                 Result_cls& out, int threadCount, bool background) {
    out.Clear();
    if (!pData || sx < 2 || sy < 2 || sz < 2)
        return 0;
    const int layers = sz - 1;
    const long long cells = static_cast<long long>(sx - 1) * (sy - 1) * layers;
    int n = threadCount > 0
                ? threadCount
                : GetThreadCount(static_cast<int>(std::min<long long>(cells, 2000000000LL)), background);
    n = std::max(1, std::min(n, layers));
    if (n == 1) {
        RunSlab(pData, sx, sy, sz, iso, 0, layers, out);
    } else {
        std::vector<Result_cls> parts(static_cast<size_t>(n));
        std::atomic<bool>* list = new std::atomic<bool>[n];
        for (int i = 0; i < n; ++i)
            list[i].store(false, std::memory_order_relaxed);
        for (int i = 0; i < n; ++i) {
            int ini = 0, fin = 0;
            GetIniAndFin(ini, fin, i, n, layers);
            auto* pWorker = new ThreadMarchingCubes_cls;
            pWorker->mpData = pData;
            pWorker->mSizeX = sx;
            pWorker->mSizeY = sy;
            pWorker->mSizeZ = sz;
            pWorker->mIso = iso;
            pWorker->mpOut = &parts[static_cast<size_t>(i)];
            StartWorker(pWorker, &list[i], ini, fin);
        }
        WaitThreadsAndDeleteFlag(list, n, 1);
        size_t total = 0;
        for (const Result_cls& r : parts)
            total += r.mXYZ.size();
        out.mXYZ.reserve(total);
        out.mNormal.reserve(total);
        for (const Result_cls& r : parts) {
            out.mXYZ.insert(out.mXYZ.end(), r.mXYZ.begin(), r.mXYZ.end());
            out.mNormal.insert(out.mNormal.end(), r.mNormal.begin(), r.mNormal.end());
        }
    }
    if (out.mXYZ.empty()) {
        // Only an empty result pays for the range: the common case needs no extra pass.
        const size_t count = static_cast<size_t>(sx) * sy * sz;
        const auto mm = std::minmax_element(pData, pData + count);
        if (iso < *mm.first || iso > *mm.second)
            wxLogMessage("Iso value %g lies outside the data range %d .. %d: no surface", iso, *mm.first,
                         *mm.second);
    }
    return out.GetTriangleCount();
}

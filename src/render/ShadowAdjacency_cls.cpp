#include "ShadowAdjacency_cls.h"

#include <array>
#include <cmath>
#include <map>
#include <unordered_map>
#include <utility>

std::vector<uint32_t> ShadowAdjacency_cls::GetVAdjacency(const float* pPos, int stride, int vertexCount) {
    return GetVAdjacencyIndexed(pPos, stride, nullptr, vertexCount);
}

std::vector<uint32_t> ShadowAdjacency_cls::GetVAdjacencyIndexed(const float* pPos, int stride,
                                                                const uint32_t* pIndex, int cornerCount) {
    const int triangles = cornerCount / 3;
    std::vector<uint32_t> vOut;
    if (!pPos || stride < 3 || triangles <= 0)
        return vOut;
    // Each position is one point: its first vertex stands for all vertices there. Points closer
    // than the grid of 1e-5 are one, so that a seam closed by sin(2 pi) is closed here too.
    std::map<std::array<long, 3>, uint32_t> mapPoint;
    std::vector<uint32_t> vPoint(static_cast<size_t>(triangles) * 3);
    for (size_t i = 0; i < vPoint.size(); ++i) {
        const uint32_t vertex = pIndex ? pIndex[i] : static_cast<uint32_t>(i);
        const float* p = pPos + static_cast<size_t>(vertex) * static_cast<size_t>(stride);
        const std::array<long, 3> grid = {std::lround(p[0] * 1e5), std::lround(p[1] * 1e5),
                                          std::lround(p[2] * 1e5)};
        vPoint[i] = mapPoint.emplace(grid, vertex).first->second;
    }
    // A triangle with two corners on one point (a pole of a sphere) has no area and no edges.
    auto degenerate = [&](int t) {
        const uint32_t* c = &vPoint[static_cast<size_t>(t) * 3];
        return c[0] == c[1] || c[1] == c[2] || c[2] == c[0];
    };
    // Directed edge (from, to) -> the corner opposite it in its triangle. A neighbour runs the
    // shared edge the other way.
    auto key = [](uint32_t a, uint32_t b) { return (static_cast<uint64_t>(a) << 32) | b; };
    std::unordered_map<uint64_t, uint32_t> mapEdge;
    mapEdge.reserve(vPoint.size());
    for (int t = 0; t < triangles; ++t) {
        if (degenerate(t))
            continue;
        const uint32_t* c = &vPoint[static_cast<size_t>(t) * 3];
        for (int e = 0; e < 3; ++e)
            mapEdge.emplace(key(c[e], c[(e + 1) % 3]), c[(e + 2) % 3]);
    }
    vOut.reserve(static_cast<size_t>(triangles) * 6);
    for (int t = 0; t < triangles; ++t) {
        if (degenerate(t))
            continue;
        const uint32_t* c = &vPoint[static_cast<size_t>(t) * 3];
        for (int e = 0; e < 3; ++e) {
            const uint32_t a = c[e], b = c[(e + 1) % 3];
            auto it = mapEdge.find(key(b, a));
            vOut.push_back(a);
            vOut.push_back(it != mapEdge.end() ? it->second : a);
        }
    }
    return vOut;
}

int ShadowAdjacency_cls::CountOpenEdges(const std::vector<uint32_t>& vAdjacency) {
    int open = 0;
    for (size_t i = 0; i + 1 < vAdjacency.size(); i += 2)
        if (vAdjacency[i + 1] == vAdjacency[i])
            ++open;
    return open;
}

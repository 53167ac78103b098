#include "MarchingCubesTable_cls.h"

#include <cstdlib>
#include <vector>

// Edges along x, then y, then z.
const int MarchingCubesTable_cls::msEdgeCorner[12][2] = {{0, 1}, {2, 3}, {4, 5}, {6, 7}, {0, 2}, {1, 3},
                                                         {4, 6}, {5, 7}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

namespace {

struct Vec {
    double x, y, z;
};
Vec Corner(int c) {
    return {static_cast<double>(c & 1), static_cast<double>((c >> 1) & 1), static_cast<double>((c >> 2) & 1)};
}
Vec Sub(Vec a, Vec b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vec Cross(Vec a, Vec b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double Dot(Vec a, Vec b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Vec EdgeMid(int e) {
    const Vec a = Corner(MarchingCubesTable_cls::msEdgeCorner[e][0]);
    const Vec b = Corner(MarchingCubesTable_cls::msEdgeCorner[e][1]);
    return {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
}
int EdgeOf(int a, int b) {
    for (int e = 0; e < 12; ++e) {
        const int* c = MarchingCubesTable_cls::msEdgeCorner[e];
        if ((c[0] == a && c[1] == b) || (c[0] == b && c[1] == a))
            return e;
    }
    std::abort();
}

// The six faces, each as its four corners in a cycle that turns counter-clockwise seen from
// outside the cube.
std::vector<std::array<int, 4>> OutwardFaces() {
    std::vector<std::array<int, 4>> faces;
    for (int axis = 0; axis < 3; ++axis)
        for (int side = 0; side < 2; ++side) {
            const int u = (axis + 1) % 3;
            const int v = (axis + 2) % 3;
            auto corner = [&](int a, int b) { return side << axis | a << u | b << v; };
            std::array<int, 4> f = {corner(0, 0), corner(1, 0), corner(1, 1), corner(0, 1)};
            const Vec n = Cross(Sub(Corner(f[1]), Corner(f[0])), Sub(Corner(f[2]), Corner(f[1])));
            Vec out = {0, 0, 0};
            (axis == 0 ? out.x : axis == 1 ? out.y : out.z) = side ? 1.0 : -1.0;
            if (Dot(n, out) < 0)
                std::swap(f[1], f[3]);
            faces.push_back(f);
        }
    return faces;
}

} // namespace

MarchingCubesTable_cls::MarchingCubesTable_cls() {
    const std::vector<std::array<int, 4>> faces = OutwardFaces();
    std::vector<int> vTri;
    for (int cs = 0; cs < 256; ++cs) {
        auto below = [cs](int c) { return (cs >> c & 1) != 0; };
        uint16_t mask = 0;
        for (int e = 0; e < 12; ++e)
            if (below(msEdgeCorner[e][0]) != below(msEdgeCorner[e][1]))
                mask |= static_cast<uint16_t>(1u << e);
        mEdgeMask[cs] = mask;

        // On each face every run of corners below the value (in the face's cycle) gives one join,
        // from the edge where the cycle enters the run to the edge where it leaves it. The next
        // join of a loop starts where this one ends: each crossed edge is entered on one face and
        // left on the other.
        int next[12];
        for (int& n : next)
            n = -1;
        for (const auto& f : faces)
            for (int i = 0; i < 4; ++i) {
                const int prev = f[(i + 3) % 4];
                if (!below(f[i]) || below(prev))
                    continue; // not the first corner of a run
                int last = i;
                while (below(f[(last + 1) % 4]))
                    last = (last + 1) % 4;
                const int eIn = EdgeOf(prev, f[i]);
                const int eOut = EdgeOf(f[last], f[(last + 1) % 4]);
                next[eIn] = eOut;
            }
        vTri.clear();
        bool used[12] = {false};
        for (int start = 0; start < 12; ++start) {
            if (next[start] < 0 || used[start])
                continue;
            std::vector<int> loop;
            for (int e = start; !used[e]; e = next[e]) {
                used[e] = true;
                loop.push_back(e);
            }
            for (size_t k = 1; k + 1 < loop.size(); ++k) {
                vTri.push_back(loop[0]);
                vTri.push_back(loop[k]);
                vTri.push_back(loop[k + 1]);
            }
        }
        if (vTri.size() + 1 > static_cast<size_t>(msMaxEntries))
            std::abort(); // cannot happen with this join rule: at most 5 triangles
        for (int k = 0; k < msMaxEntries; ++k)
            mTriangle[cs][k] = k < static_cast<int>(vTri.size()) ? static_cast<int8_t>(vTri[k]) : -1;
    }

    // The joins turn the same way everywhere; which way is fixed here by the case of corner 0
    // alone below the value: its triangle must face corner 0.
    const int8_t* t = mTriangle[1].data();
    const Vec n = Cross(Sub(EdgeMid(t[1]), EdgeMid(t[0])), Sub(EdgeMid(t[2]), EdgeMid(t[0])));
    if (Dot(n, Sub(Corner(0), EdgeMid(t[0]))) < 0)
        for (auto& row : mTriangle)
            for (int k = 0; k + 2 < msMaxEntries && row[k] >= 0; k += 3)
                std::swap(row[k + 1], row[k + 2]);
}

const MarchingCubesTable_cls& MarchingCubesTable_cls::Get() {
    static const MarchingCubesTable_cls sTable;
    return sTable;
}

// The two tables of marching cubes, one entry per case (the 8 bits of a cell, bit c set when
// corner c lies below the iso value): the edges the surface crosses, and the triangles as
// triples of edges, ended by -1.
//
// The tables are built once from the cube itself rather than typed in: on every face the
// crossed edges are joined in pairs, the joins are chained into closed loops, and each loop is
// cut into a fan. A face with two diagonal corners below the value keeps those corners apart;
// both cells that share the face see the same corners and so make the same join, which keeps
// the surface closed. Every triangle turns counter-clockwise seen from the side of the lower
// values.
//
// Corner c sits at (c & 1, (c >> 1) & 1, (c >> 2) & 1). Edge e joins the corners msEdgeCorner[e].
#pragma once

#include <array>
#include <cstdint>

class MarchingCubesTable_cls {
public:
    static constexpr int msMaxEntries = 16; // 5 triangles and the end mark

    // The tables, built on the first call. Any thread.
    static const MarchingCubesTable_cls& Get();

    std::array<uint16_t, 256> mEdgeMask;                         // bit e: edge e is crossed
    std::array<std::array<int8_t, msMaxEntries>, 256> mTriangle; // edge triples, -1 ends
    static const int msEdgeCorner[12][2];

private:
    MarchingCubesTable_cls();
};

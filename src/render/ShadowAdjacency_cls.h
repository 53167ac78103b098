// The triangles of a mesh with their neighbours, as GL_TRIANGLES_ADJACENCY takes them: for each
// triangle a, b, c the six indices a, n(ab), b, n(bc), c, n(ca), where n(xy) is the far corner of
// the triangle across the edge. The shadow-volume programs find the silhouette from them. Corners
// are the same point when their positions agree to 1e-5, whatever their normals; triangles
// without area are left out; an edge with no
// neighbour (the rim of an open mesh) repeats its first corner, which the programs read as
// "always a silhouette". An edge that more than two triangles share takes the first other one.
// Any thread: plain arrays, no GL.
#pragma once

#include <cstdint>
#include <vector>

class ShadowAdjacency_cls {
public:
    // pPos: vertexCount positions, each three floats at the start of a record of stride floats,
    // three vertices per triangle in order. Indices point at the first vertex of each position.
    static std::vector<uint32_t> GetVAdjacency(const float* pPos, int stride, int vertexCount);
    // The same over indexed triangles: cornerCount indices into the positions, three per triangle.
    static std::vector<uint32_t> GetVAdjacencyIndexed(const float* pPos, int stride, const uint32_t* pIndex,
                                                      int cornerCount);
    // The number of edges that found no neighbour (for tests and the log): those indices whose
    // neighbour repeats the edge's corner.
    static int CountOpenEdges(const std::vector<uint32_t>& vAdjacency);
};

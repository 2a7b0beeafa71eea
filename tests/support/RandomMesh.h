#pragma once

#include <importing/geometry/Geometry.h>

#include <cstdint>

namespace Support
{

/// What a random mesh may hold.
struct RandomMeshOptions
{
    std::uint32_t maxVertices = 24;
    std::uint32_t maxFaces = 40;
    bool specialFloats = true;    ///< some meshes hold -0, NaN, infinities, denormals and the largest floats
    bool trailingIndices = true;  ///< index counts that are no multiple of 3
    bool badIndices = true;       ///< some meshes hold an index behind the last vertex
    bool otherPolySizes = true;   ///< some meshes have poly size 4
};

/// A mesh that depends on nothing but its arguments: doubled and nearly equal vertices, degenerate triangles, 0 to 4 UV
/// sets and weights a vertex, joints, a point cache of 0 to 3 frames and a rest, any mix of valid and invalid hashes;
/// now and then no vertices at all.
Importing::Geometry RandomMesh(std::uint32_t seed, const RandomMeshOptions& options = {});

/// A vertex with a position on a coarse grid, a normal, and whatever else a vertex can hold.
Importing::Vertex RandomVertex(std::uint32_t seed);

/// Any matrix: rotation, shear, mirroring and translation; now and then rows of zeros, a projection, or the identity.
D3DXMATRIX RandomMatrix(std::uint32_t seed);

}  // namespace Support

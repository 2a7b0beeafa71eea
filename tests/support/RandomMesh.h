#pragma once

#include <importing/geometry/Geometry.h>

#include <cstdint>

namespace Support
{

/// Special features that a random mesh may have.
struct RandomMeshOptions
{
    std::uint32_t maxVertices = 24;
    std::uint32_t maxFaces = 40;
    bool specialFloats = true;    ///< some meshes contain -0, NaN, infinities, denormals and the largest floats
    bool trailingIndices = true;  ///< index counts that are not multiples of 3
    bool badIndices = true;       ///< some meshes contain an index after the last vertex
    bool otherPolySizes = true;   ///< some meshes have poly size 4
};

/// Returns a mesh that depends only on the arguments: duplicate and nearly equal vertices, degenerate triangles, 0 to 4
/// UV sets and weights for each vertex, joints, a point cache of 0 to 3 frames and an incomplete one, any mix of valid
/// and invalid hashes. Some meshes have no vertices.
Importing::Geometry RandomMesh(std::uint32_t seed, const RandomMeshOptions& options = {});

/// Returns a vertex with a position on a coarse grid, a normal, UV sets and weights.
Importing::Vertex RandomVertex(std::uint32_t seed);

/// Returns any kind of matrix: rotation, shear, mirroring and translation; sometimes rows of zeros, a projection, or
/// the identity.
D3DXMATRIX RandomMatrix(std::uint32_t seed);

}  // namespace Support

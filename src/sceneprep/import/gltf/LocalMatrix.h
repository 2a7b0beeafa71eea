#pragma once

#include <importing/math/D3DXMath.h>
#include <sceneprep/import/gltf/Field.h>

#include <array>

namespace Sceneprep::GltfImport
{

/// Translation, rotation (a quaternion x, y, z, w) and scale.
struct Placement
{
    std::array<double, 3> translation = {0, 0, 0};
    std::array<double, 4> rotation = {0, 0, 0, 1};
    std::array<double, 3> scale = {1, 1, 1};
};

/// Returns the matrix for row vectors: scale, then rotation, then translation. Computed in double precision; the
/// quaternion is not normalised.
D3DXMATRIX MatrixOf(const Placement& placement);

/// Returns the local matrix of a node: its matrix, or that of its translation, rotation and scale.
D3DXMATRIX LocalMatrix(const Field& node);

/// Returns translation, rotation and scale of a node; a matrix is decomposed.
Placement PlacementOf(const Field& node);

}  // namespace Sceneprep::GltfImport

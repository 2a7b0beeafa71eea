#pragma once

#include <assimp/material.h>
#include <importing/math/D3DXMath.h>

#include <optional>

namespace Sceneprep
{

/// Returns the texture transform of a layer; none if the file has none or it is the identity.
std::optional<aiUVTransform> FindTextureTransform(const aiMaterial& source, aiTextureType type, unsigned layer);

/// Computes the map matrix of a layer that comes from glTF: row vectors, v pointing up. Other formats are not
/// supported, because Assimp's importers do not agree on what their transforms mean.
D3DXMATRIX GltfTextureMatrix(const aiUVTransform& transform);

}  // namespace Sceneprep

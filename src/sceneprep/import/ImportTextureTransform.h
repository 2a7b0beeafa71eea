#pragma once

#include <assimp/material.h>
#include <importing/math/D3DXMath.h>

#include <optional>

namespace Sceneprep
{

/// @return how a layer's texture coordinates are carried; none where the file does not say or says: not at all.
std::optional<aiUVTransform> FindTextureTransform(const aiMaterial& source, aiTextureType type, unsigned layer);

/// Of glTF alone: the transforms of other formats have no form that all readers agree on.
/// @param transform  of a layer that comes from glTF
/// @return the matrix of the layer: row vectors, v counted upwards.
D3DXMATRIX GltfTextureMatrix(const aiUVTransform& transform);

}  // namespace Sceneprep

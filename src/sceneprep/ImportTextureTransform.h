#pragma once

#include <assimp/material.h>
#include <assimp/scene.h>
#include <importing/math/D3DXMath.h>

#include <optional>

namespace Sceneprep
{

/// @return whether the model library read the scene from glTF 2.0, whose texture transforms it hands on in a form that
///         can be undone. Those of other formats have no form that all readers agree on.
bool IsFromGltf(const aiScene& source);

/// @return how a layer's texture coordinates are carried; none where the file does not say or says: not at all.
std::optional<aiUVTransform> FindTextureTransform(const aiMaterial& source, aiTextureType type, unsigned layer);

/// @param transform  of a layer that comes from glTF
/// @return the matrix of the layer: row vectors, v counted upwards.
D3DXMATRIX GltfTextureMatrix(const aiUVTransform& transform);

}  // namespace Sceneprep

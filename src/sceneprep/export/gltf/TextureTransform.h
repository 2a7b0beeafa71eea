#pragma once

#include <importing/math/D3DXMath.h>
#include <sceneprep/model/Json.h>

namespace Sceneprep::Gltf
{

/// Returns the value of KHR_texture_transform that transforms texture coordinates as the matrix of a texture layer
/// does, with v counted downwards in the file; null for the identity, and for a matrix that is not finite.
Json TextureTransform(const D3DXMATRIX& matrix);

}  // namespace Sceneprep::Gltf

#pragma once

#include <importing/math/D3DXMath.h>
#include <sceneprep/export/gltf/TinyGltf.h>

namespace Sceneprep::Gltf
{

/// @return the value of KHR_texture_transform that moves texture coordinates as the matrix of a layer does, v counted
///         downwards in the file; null for the identity, and for a matrix that is not finite.
tinygltf::Value TextureTransform(const D3DXMATRIX& matrix);

}  // namespace Sceneprep::Gltf

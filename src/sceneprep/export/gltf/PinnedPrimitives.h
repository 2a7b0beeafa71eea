#pragma once

#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/export/gltf/MeshArrays.h>
#include <sceneprep/model/Carried.h>

namespace Sceneprep::Gltf
{

/// Writes a primitive of the input unchanged: its mode, indices, attributes and morph targets.
MeshArrays WritePinned(const CarriedPrimitive& primitive, Buffers& buffers, Document& document);

}  // namespace Sceneprep::Gltf

#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>
#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/export/gltf/MeshArrays.h>

namespace Sceneprep::Gltf
{

/// Writes the texture coordinate sets of a mesh and the attributes that travel in further sets, as the layout says.
///
/// The format counts v downwards, the scene upwards. Colours are written as normalised bytes or shorts where these hold
/// them exactly, otherwise as floats. Custom attributes are
/// written as the integers that they were in the input where these hold them exactly. Tangents get unit length.
/// Vertices that have fewer sets than others have (0, 0) in the missing ones.
void WriteAttributes(Importing::Geometry& geometry, const Pipeline::VertexLayout& layout, Buffers& buffers,
                     Document& document, MeshArrays& arrays, MendedValues& mended);

}  // namespace Sceneprep::Gltf

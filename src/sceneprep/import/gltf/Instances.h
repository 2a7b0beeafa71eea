#pragma once

#include <importing/math/D3DXMath.h>
#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/Field.h>

#include <cstddef>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The instances of a node.
struct Instances
{
    std::vector<D3DXMATRIX> local;         ///< their matrices relative to the node
    std::size_t attributesWithoutUse = 0;  ///< number of further attributes, which are dropped
};

/// Reads EXT_mesh_gpu_instancing of a node.
/// @param extension  the extension's object
/// @throws FormatError if the attributes have different lengths or wrong types.
Instances ReadInstances(const Field& extension, Accessors& accessors);

}  // namespace Sceneprep::GltfImport

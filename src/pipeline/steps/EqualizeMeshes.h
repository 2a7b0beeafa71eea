#pragma once

#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/PrepareOptions.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Pipeline
{

/// The changes that EqualizeMeshes() made.
struct Equalized
{
    std::size_t flatNormals = 0;      ///< meshes that got flat normals
    std::size_t droppedTangents = 0;  ///< meshes that lost their tangents
};

/// Gives the vertices of meshes that are going to be merged the same attributes.
///
/// If some of these meshes have normals, the others get flat normals. If one of them has attributes, all get the same
/// layout: missing texture coordinates and custom attributes are 0, missing colours are white. Tangents are dropped
/// unless all of the meshes have them.
/// @param surfaces  the surfaces of one node after flattening
Equalized EqualizeMeshes(const WorkScene& scene, const std::vector<std::int32_t>& surfaces,
                         const PrepareOptions& options);

}  // namespace Pipeline

#pragma once

#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/PrepareOptions.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Pipeline
{

/// What EqualizeMeshes() did.
struct Equalized
{
    std::size_t flatNormals = 0;      ///< meshes that got flat normals
    std::size_t droppedTangents = 0;  ///< meshes that lost their tangents
};

/// Prepares meshes for being appended to one another, so that their vertices have the same attributes.
///
/// Of meshes that are going to be merged, those without normals get flat ones if others have normals. Their layouts
/// become equal if one of them has attributes: missing texture coordinates and custom attributes are 0, missing colours
/// are white. Tangents are dropped unless all of the meshes have them.
/// @param surfaces  those that end in one node
Equalized EqualizeMeshes(const WorkScene& scene, const std::vector<std::int32_t>& surfaces,
                         const PrepareOptions& options);

}  // namespace Pipeline

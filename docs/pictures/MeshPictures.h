#pragma once

#include <pictures/Image.h>

namespace Pictures
{

/// Joining equal vertices: Geometry::Optimize().
Image DrawWeld();
/// Smooth normals and hard edges: Geometry::ComputeNormals().
Image DrawComputeNormals();
/// Normals that follow the winding: Geometry::UnifyNormals().
Image DrawUnifyNormals();
/// Windings that follow the normals: Geometry::FixFaceCulling().
Image DrawFixFaceCulling();

}  // namespace Pictures

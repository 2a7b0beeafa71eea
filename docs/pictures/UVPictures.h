#pragma once

#include <importing/geometry/Geometry.h>
#include <pictures/Image.h>

namespace Pictures
{

/// One of the mappings of Geometry.
using GenerateUVs = int (Importing::Geometry::*)(int set, bool worldUnits);

/// Three bodies under a chequered texture: mapped over the box on the left, in world units on the right.
Image DrawMapping(GenerateUVs mapping);

/// Three bodies under a chequered texture, seen from the side on the left and from above on the right: for the
/// mapping that world units make no difference to.
Image DrawMappingFromAbove(GenerateUVs mapping);

}  // namespace Pictures

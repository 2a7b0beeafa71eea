#pragma once

#include <importing/records/Surface.h>
#include <sceneprep/model/Json.h>

namespace Sceneprep::GltfImport
{

/// Moves the values that sceneprep writes for a surface from the extras of an object to the surface: "collisionOffset",
/// an integer, and "surfaceName". Extras that become empty are removed; other extras and values of other types stay.
/// @param object  a primitive, or a node for files of older versions
void TakeSurfaceValues(Json& object, Importing::Surface& surface);

/// Returns whether TakeSurfaceValues() would change a surface.
bool HasSurfaceValues(const Json& object);

}  // namespace Sceneprep::GltfImport

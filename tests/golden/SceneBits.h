#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>

namespace Golden
{

/// Returns everything that a scene contains as text, one line for each field or vertex, with floats as hexadecimal
/// bits; then the world matrices of the nodes and the bounds. Content hashes are not included, because the digest
/// depends on the platform.
std::string SceneBits(Importing::SceneContainer& scene);

}  // namespace Golden

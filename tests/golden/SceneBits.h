#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>

namespace Golden
{

/// Everything that a scene holds, a line a field or vertex, floats as their bits in hexadecimal; then the world
/// matrices of the hierarchy's nodes and the bounds. Content hashes are left out: their digests are the platform's.
std::string SceneBits(Importing::SceneContainer& scene);

}  // namespace Golden

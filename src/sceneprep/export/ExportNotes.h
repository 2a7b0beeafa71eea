#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/assimp/Formats.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// @return what of the scene a file of this format will not hold, in words; empty when that is nothing.
std::vector<std::string> NotesOnExport(Importing::SceneContainer& scene, const WriteFormat& format);

}  // namespace Sceneprep

#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/run/Notes.h>

namespace Sceneprep
{

/// Returns a loss for each kind of content of the scene that files of this format do not hold.
Notes NotesOnExport(Importing::SceneContainer& scene, const WriteFormat& format);

}  // namespace Sceneprep

#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/model/Textures.h>

#include <filesystem>

namespace Sceneprep
{

/// A scene as it came from a file.
struct LoadedModel
{
    Importing::SceneContainer& scene;
    Textures& textures;
    std::filesystem::path file;
};

/// Appends one model to another by SceneContainer::AppendSC(), its textures included.
///
/// References to pictures that lie in the files become numbers, those of the other file counted on from those of the
/// first. Pictures of one name lose it, and so do those that have the name of a texture file. Texture files that the
/// other names relative to its own folder are named relative to the first one's folder.
///
/// Both texture libraries are rewritten on the way. The spare node that the appending leaves is not removed.
void AppendModel(const LoadedModel& first, const LoadedModel& other);

}  // namespace Sceneprep

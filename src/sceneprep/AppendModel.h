#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/Textures.h>

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
/// Pictures that lie in the other file are counted on from those of the first. Texture files that the other names
/// relative to its own folder are named relative to the first one's folder.
///
/// The other model's texture library is rewritten on the way. The spare node that the appending leaves is not removed.
void AppendModel(const LoadedModel& first, const LoadedModel& other);

}  // namespace Sceneprep

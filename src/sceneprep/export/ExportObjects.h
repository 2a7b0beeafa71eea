#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>

#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Converts a camera for Assimp. Fields of view are converted to radians.
/// @param nodeName  the name of the camera's node, by which Assimp finds it
std::unique_ptr<aiCamera> ConvertCamera(Importing::Camera& camera, const std::string& nodeName);

/// Makes a light for a file, likewise.
std::unique_ptr<aiLight> ConvertLight(Importing::Light& light, const std::string& nodeName);

/// Converts the animation of a node for Assimp: one key of each channel for each key, in ticks of kTicksPerSecond.
std::unique_ptr<aiNodeAnim> ConvertAnimation(std::vector<Importing::Key>& keys, const std::string& nodeName);

}  // namespace Sceneprep

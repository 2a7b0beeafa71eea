#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>

#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Makes a camera for a file; nodeName is the name of the node that it stands at.
std::unique_ptr<aiCamera> ConvertCamera(Importing::Camera& camera, const std::string& nodeName);

/// Makes a light for a file, likewise.
std::unique_ptr<aiLight> ConvertLight(Importing::Light& light, const std::string& nodeName);

/// Makes the movement of a node for a file, in ticks of kTicksPerSecond.
std::unique_ptr<aiNodeAnim> ConvertAnimation(std::vector<Importing::Key>& keys, const std::string& nodeName);

}  // namespace Sceneprep

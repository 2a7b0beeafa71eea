#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>

#include <map>
#include <string>

namespace Sceneprep
{

/// From a node's name to its index in the node library; of several nodes with one name the first.
using NodeNames = std::map<std::string, int>;

/// Brings the cameras into the scene; the node of a camera's name lists it, or else the root. Fields of view in
/// degrees; the vertical one follows from the aspect, and is the horizontal one where the file has none.
void ImportCameras(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene);

/// Brings the lights into the scene, likewise. Cone angles are kept for spot lights alone.
void ImportLights(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene);

}  // namespace Sceneprep

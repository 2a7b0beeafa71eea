#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>

#include <map>
#include <string>
#include <vector>

namespace Sceneprep
{

/// From a node's name to its index in the node library; of several nodes with one name the first.
using NodeNames = std::map<std::string, int>;

/// Brings the cameras into the scene; the node of a camera's name lists it, or else the root. Fields of view in
/// degrees; one follows from the other by the aspect, and is the same where the file has none. Orthographic cameras
/// have none: they are left out.
///
/// @return what is left out, one line each.
std::vector<std::string> ImportCameras(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene);

/// Brings the lights into the scene, likewise. Cone angles are kept for spot lights alone.
void ImportLights(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene);

}  // namespace Sceneprep

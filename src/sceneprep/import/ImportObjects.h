#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/run/Notes.h>

#include <map>
#include <string>

namespace Sceneprep
{

/// Maps the name of a node to its index in the node library; the first one if several nodes have the name.
using NodeNames = std::map<std::string, int>;

/// Adds the cameras to the scene. A camera is referenced by the node with its name or, without such a node, by the
/// root. Fields of view are in degrees; the vertical one is computed from the horizontal one and the aspect ratio, and
/// equals it if the file has no aspect ratio. Orthographic cameras have no field of view: they are dropped, and
/// returned as a loss.
Notes ImportCameras(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene);

/// Adds the lights to the scene. A light is referenced by the node with its name or, without such a node, by the root.
/// Cone angles are kept for spot lights only.
void ImportLights(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene);

}  // namespace Sceneprep

#pragma once

#include <pipeline/steps/StepSequence.h>

#include <vector>

namespace Pipeline
{

/// Drops branches of the hierarchy that say nothing but what joints say: they hold joints of some mesh, and neither
/// surfaces, cameras and lights nor animated nodes that are no joints.
Changes LeaveSkeletonsToJoints(Importing::SceneContainer& scene);

/// Takes skinned surfaces out of the scene's nodes, since neither the carrying of a mesh by a matrix nor the merging of
/// meshes knows of joints.
/// @param kept  [nodes] those whose surfaces stay
/// @return nodes that list the surfaces and stand where they stood in the frame of the root, not yet in the scene.
std::vector<Importing::Node> TakeSkinnedSurfaces(Importing::SceneContainer& scene, const std::vector<bool>& kept);

/// Hangs nodes below the root.
void HangBelowRoot(Importing::SceneContainer& scene, std::vector<Importing::Node> nodes);

}  // namespace Pipeline

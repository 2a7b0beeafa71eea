#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Collapses the hierarchy into its root: surfaces, cameras and lights move to the root, with the matrices between
/// baked in, and surfaces of the same material are merged. The scene's surfaces must not share meshes.
///
/// Animated nodes stay, with everything below them, unless options.ignoreAnimation is set; kept nodes stay in any case.
/// They become children of the root, or of a node below the root that has the world transform of their former parent.
/// Skinned and pinned meshes stay on such a node, too, since a matrix that is baked into a skinned mesh would tear it
/// from its joints. The root itself stays, with its animation.
///
/// Normals and tangents are baked by the inverse transpose and the matrix itself, and so stay right under non-uniform
/// scale. Meshes that are going to be merged get the same attributes first, see EqualizeMeshes().
///
/// Faces keep the side from which they are seen: where the matrix mirrors, the winding of the mesh is flipped. Nodes
/// that cannot be reached from the root are dropped. Without a root nothing happens.
Changes FlattenScene(const WorkScene& scene, const PrepareOptions& options = {},
                     const PartListener& listener = IgnorePart);

}  // namespace Pipeline

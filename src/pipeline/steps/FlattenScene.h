#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Collapses the hierarchy into its root: moves surfaces, cameras and lights to the root, bakes the matrices between,
/// and merges surfaces of the same material. Surfaces must not share meshes.
///
/// Animated nodes stay, with everything below them, unless options.ignoreAnimation is set; kept nodes stay in any case.
/// They become children of the root, or of a node below the root that has the world transform of their former parent.
/// Skinned and pinned meshes stay on such a node, too, because baking a matrix into a skinned mesh would move it away
/// from its joints. The root itself stays, with its animation.
///
/// Normals are baked by the inverse transpose, tangents by the matrix itself, so both are right under non-uniform
/// scale. Meshes that are going to be merged get the same attributes first, see EqualizeMeshes().
///
/// Front faces stay front faces: if the baked matrix mirrors, the winding of the mesh is flipped. Nodes that are not
/// reachable from the root are dropped. A scene without a root is not changed.
Changes FlattenScene(const WorkScene& scene, const PrepareOptions& options = {},
                     const PartListener& listener = IgnorePart);

}  // namespace Pipeline

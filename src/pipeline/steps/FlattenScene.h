#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Collapses the hierarchy into its root, and into the animated and kept nodes below it: moves surfaces, cameras and
/// lights to the nearest of these nodes above them, bakes the matrices between, and merges surfaces of the same
/// material. Surfaces must not share meshes.
///
/// Animated nodes stay, unless options.ignoreAnimation is set; kept nodes stay in any case; the root stays, with its
/// animation. Frozen nodes stay with their surfaces, which are not merged. With options.cellSize, only surfaces of one
/// cell are merged. A node that stays becomes a child of the nearest other one above it, or of a node that has the
/// transform of its former parent. Skinned and pinned meshes stay on such a node, too, because baking a matrix into a
/// skinned mesh would move it away from its joints.
///
/// Normals are baked by the inverse transpose, tangents by the matrix itself, so both are right under non-uniform
/// scale. Meshes that are going to be merged get the same attributes first, see EqualizeMeshes().
///
/// Front faces stay front faces: if the baked matrix mirrors, the winding of the mesh is flipped. Nodes that are not
/// reachable from the root are dropped. A scene without a root is not changed.
///
/// Takes linear time in nodes, objects and vertices, apart from sorting, and uses no recursion.
Changes FlattenScene(const WorkScene& scene, const PrepareOptions& options = {},
                     const PartListener& listener = IgnorePart);

}  // namespace Pipeline

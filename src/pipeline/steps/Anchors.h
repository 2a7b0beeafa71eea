#pragma once

#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/WorkScene.h>

#include <cstddef>
#include <vector>

namespace Pipeline
{

/// Which nodes of a hierarchy stay when it is flattened, and into which of them every other node collapses.
///
/// A node that stays is an anchor: the root, animated nodes, kept and frozen nodes. A node that collapses moves rigidly
/// with the nearest anchor above it.
struct Anchors
{
    std::vector<int> of;                 ///< [nodes] the anchor; the node itself if it stays; -1 if it is not reached
    std::vector<D3DXMATRIX> transforms;  ///< [nodes] in the frame of the anchor; identity for anchors
    std::vector<int> order;              ///< the anchors that are not frozen, parents before children

    bool Stays(int node) const { return of[static_cast<std::size_t>(node)] == node; }
};

/// Finds the anchors. Animated nodes are not anchors with `ignoreAnimation`. Takes linear time, without recursion.
Anchors FindAnchors(const WorkScene& scene, const NodeWalk& walk, bool ignoreAnimation);

}  // namespace Pipeline

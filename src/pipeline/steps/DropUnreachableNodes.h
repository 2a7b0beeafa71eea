#pragma once

#include <pipeline/scene/WorkScene.h>

namespace Pipeline
{

/// Removes the nodes that cannot be reached from the root: what flattening leaves of chains, and the spare node that
/// appending leaves. The order of the other nodes stays; the entries of the supplement follow them. Time is linear in
/// the number of nodes.
void DropUnreachableNodes(const WorkScene& scene);

}  // namespace Pipeline

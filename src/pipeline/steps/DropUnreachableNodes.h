#pragma once

#include <importing/plugin/SceneContainer.h>

namespace Pipeline
{

/// Removes the nodes that cannot be reached from the root: what flattening leaves of chains, and the spare node that
/// appending leaves. The order of the other nodes stays. Time is linear in the number of nodes.
void DropUnreachableNodes(Importing::SceneContainer& scene);

}  // namespace Pipeline

#include <pipeline/steps/Anchors.h>

#include <importing/base/CheckedAccess.h>

namespace Pipeline
{

using Importing::At;

Anchors FindAnchors(const WorkScene& scene, const NodeWalk& walk, bool ignoreAnimation)
{
    std::vector<Importing::Node>& nodes = scene.container.NodeLibrary;
    Anchors anchors;
    anchors.of.assign(nodes.size(), -1);
    anchors.transforms.resize(nodes.size());
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        const int parent = walk.parent[position];
        const bool isAnimated = nodes[position].GetAnimationID() != -1 && !ignoreAnimation;
        if (parent < 0 || isAnimated || IsKept(scene.supplement, position))
        {
            anchors.of[position] = node;
            D3DXMatrixIdentity(&anchors.transforms[position]);
            if (!IsFrozen(scene.supplement, position))
                anchors.order.push_back(node);
            continue;
        }
        anchors.of[position] = At(anchors.of, parent);
        anchors.transforms[position] =
            Product(nodes[position].GetLocalTransform().GetMatrix(), At(anchors.transforms, parent));
    }
    return anchors;
}

}  // namespace Pipeline

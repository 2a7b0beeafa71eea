#include <pipeline/steps/FreezeNodes.h>

#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/MatchesGlob.h>

#include <cstddef>

namespace Pipeline
{

std::vector<std::string> FreezeNodes(const WorkScene& scene, const std::vector<std::string>& patterns)
{
    if (patterns.empty())
        return {};
    std::vector<bool>& frozen = scene.supplement.frozenNodes;
    frozen.resize(scene.container.NodeLibrary.size(), false);
    std::vector<bool> isUsed(patterns.size(), false);
    const NodeWalk walk = WalkFromRoot(scene.container);
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        const std::string name = scene.container.NodeLibrary[position].GetName();
        const int parent = walk.parent[position];
        frozen[position] = frozen[position] || (parent >= 0 && frozen[static_cast<std::size_t>(parent)]);
        for (std::size_t i = 0; i < patterns.size(); ++i)
        {
            if (!MatchesGlob(name, patterns[i]))
                continue;
            isUsed[i] = true;
            frozen[position] = true;
        }
    }
    std::vector<std::string> unused;
    for (std::size_t i = 0; i < patterns.size(); ++i)
    {
        if (!isUsed[i])
            unused.push_back(patterns[i]);
    }
    return unused;
}

}  // namespace Pipeline

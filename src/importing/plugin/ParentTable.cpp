// Child lists are the only record of the hierarchy, so a parent has to be searched for. One pass over all child lists
// finds the parents of all nodes at once; the first list that contains a node wins, as in the literal search. Cost:
// linear in nodes and entries, where a search for each node would be quadratic.

#include <importing/plugin/ParentTable.h>

#include <importing/base/CheckedAccess.h>
#include <importing/plugin/HierarchyCheck.h>

namespace Importing
{

std::vector<std::int32_t> ParentTable(const std::vector<Node>& nodes)
{
    std::vector<std::int32_t> parents(nodes.size(), -1);
    for (std::size_t i = 0; i < nodes.size(); ++i)
    {
        for (const std::int32_t child : nodes[i].ChildList)
        {
            if (!IsValidIndex(child, nodes.size()))
                continue;
            std::int32_t& parent = parents[static_cast<std::size_t>(child)];
            if (parent == -1)
                parent = static_cast<std::int32_t>(i);
        }
    }
    return parents;
}

std::vector<std::int32_t> PathToRoot(const std::vector<std::int32_t>& parents, std::int32_t index)
{
    std::vector<std::int32_t> path;
    std::int32_t node = index;
    do
    {
        // A path with more entries than nodes contains a node twice.
        if (!parents.empty() && path.size() == parents.size())
            ThrowCycle();
        path.push_back(node);
        node = At(parents, node);
    } while (node != -1);
    return path;
}

}  // namespace Importing

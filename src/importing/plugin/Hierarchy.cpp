// Child lists are the only record of the hierarchy, so parents have to be searched for. A plain container makes one
// table of all parents for a world matrix. A derived container gets a call for every ancestor, and each call scans all
// lists.

#include <importing/base/CheckedAccess.h>
#include <importing/base/ForReading.h>
#include <importing/math/Products.h>
#include <importing/plugin/ParentTable.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>

#include <algorithm>

namespace Importing
{
namespace
{

D3DXMATRIX LocalMatrix(const SceneContainer& scene, int node)
{
    return ForReading(At(scene.NodeLibrary, node)).GetLocalTransform().GetMatrix();
}

/// Returns the world matrix of a node of a plain container: one table of all parents, one walk up and one down. The
/// literal form recurses and scans all child lists once for every ancestor.
D3DXMATRIX WorldMatrix(const SceneContainer& scene, int index)
{
    std::vector<std::int32_t> path = PathToRoot(ParentTable(scene.NodeLibrary), index);
    D3DXMATRIX world = LocalMatrix(scene, path.back());
    path.pop_back();
    for (; !path.empty(); path.pop_back())
        world = Product(LocalMatrix(scene, path.back()), world);
    return world;
}

}  // namespace

int SceneContainer::FindNodeByName(const std::string& name) const
{
    const auto node = std::find_if(NodeLibrary.begin(), NodeLibrary.end(),
                                   [&name](const Node& candidate) { return ForReading(candidate).GetName() == name; });
    return node == NodeLibrary.end() ? -1 : static_cast<int>(node - NodeLibrary.begin());
}

int SceneContainer::FindParentNode(int index) const
{
    const auto parent = std::find_if(NodeLibrary.begin(), NodeLibrary.end(), [index](const Node& candidate) {
        return std::find(candidate.ChildList.begin(), candidate.ChildList.end(), index) != candidate.ChildList.end();
    });
    return parent == NodeLibrary.end() ? -1 : static_cast<int>(parent - NodeLibrary.begin());
}

D3DXMATRIX SceneContainer::CalculateGlobalTM(int index)
{
    CheckIndex(index, NodeLibrary.size());
    if (IsPlain(*this))
        return WorldMatrix(*this, index);

    const int parent = FindParentNode(index);
    if (parent == -1)
        return LocalMatrix(*this, index);
    const D3DXMATRIX parentWorld = CalculateGlobalTM(parent);
    return Product(LocalMatrix(*this, index), parentWorld);
}

}  // namespace Importing

#include <sceneprep/Hierarchy.h>

#include <importing/base/CheckedAccess.h>

namespace Sceneprep
{

NodeWalk WalkFromRoot(Importing::SceneContainer& scene)
{
    const std::size_t count = scene.NodeLibrary.size();
    NodeWalk walk;
    walk.parent.assign(count, -1);
    if (!Importing::IsValidIndex(scene.GetRootNodeIndex(), count))
        return walk;

    struct Pending
    {
        int node;
        int parent;
    };
    std::vector<Pending> pending = {{scene.GetRootNodeIndex(), -1}};
    std::vector<bool> visited(count, false);
    while (!pending.empty())
    {
        const auto [node, parent] = pending.back();
        pending.pop_back();
        const auto position = static_cast<std::size_t>(node);
        if (visited[position])
            continue;
        visited[position] = true;
        walk.parent[position] = parent;
        walk.order.push_back(node);

        const std::vector<std::int32_t>& children = scene.NodeLibrary[position].ChildList;
        Importing::CheckIndices(children, count);
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({*child, node});
    }
    return walk;
}

std::vector<D3DXMATRIX> MatricesInRootFrame(Importing::SceneContainer& scene, const NodeWalk& walk)
{
    D3DXMATRIX identity;
    D3DXMatrixIdentity(&identity);
    std::vector<D3DXMATRIX> matrices(scene.NodeLibrary.size(), identity);
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        const int parent = walk.parent[position];
        if (parent >= 0)
            matrices[position] = Product(scene.NodeLibrary[position].GetLocalTransform().GetMatrix(),
                                         matrices[static_cast<std::size_t>(parent)]);
    }
    return matrices;
}

bool IsMirroring(const D3DXMATRIX& m)
{
    const double determinant =
        static_cast<double>(m._11) * (static_cast<double>(m._22) * m._33 - static_cast<double>(m._23) * m._32) -
        static_cast<double>(m._12) * (static_cast<double>(m._21) * m._33 - static_cast<double>(m._23) * m._31) +
        static_cast<double>(m._13) * (static_cast<double>(m._21) * m._32 - static_cast<double>(m._22) * m._31);
    return determinant < 0;
}

D3DXMATRIX Product(const D3DXMATRIX& first, const D3DXMATRIX& second)
{
    D3DXMATRIX product;
    D3DXMatrixMultiply(&product, &first, &second);
    return product;
}

}  // namespace Sceneprep

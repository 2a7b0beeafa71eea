// To compute a matrix, the walk goes up to the first ancestor whose matrix is known and then down again, and caches
// every matrix on the way. So each node is computed once, in the order of multiplication of the literal recursion,
// without recursion. Computing all matrices in advance would do needless work and throw for cycles that nothing refers
// to.

#include <importing/processing/WorldMatrices.h>

#include <importing/base/CheckedAccess.h>
#include <importing/math/Products.h>
#include <importing/plugin/HierarchyCheck.h>
#include <importing/plugin/ParentTable.h>
#include <importing/plugin/PlainContainer.h>

#include <cstddef>

namespace Importing
{

WorldMatrices::WorldMatrices(SceneContainer& scene)
    : scene_(scene), isPlain_(IsPlain(scene)), states_(scene.NodeLibrary.size(), State::Unknown),
      matrices_(scene.NodeLibrary.size())
{
    if (isPlain_)
        parents_ = ParentTable(scene.NodeLibrary);
}

const D3DXMATRIX& WorldMatrices::Of(int index)
{
    if (At(states_, index) != State::Known)
    {
        if (isPlain_)
            Compose(index);
        else
            Remember(index, scene_.CalculateGlobalTM(index));
    }
    return matrices_[static_cast<std::size_t>(index)];
}

/// Computes the matrix of a node and of its ancestors where they are not known.
void WorldMatrices::Compose(std::int32_t index)
{
    path_.clear();
    std::int32_t node = index;
    while (node != -1 && At(states_, node) != State::Known)
    {
        State& state = At(states_, node);
        if (state == State::Wanted)
            ThrowCycle();
        state = State::Wanted;
        path_.push_back(node);
        node = At(parents_, node);
    }
    for (; !path_.empty(); path_.pop_back())
    {
        const std::int32_t current = path_.back();
        D3DXMATRIX world = At(scene_.NodeLibrary, current).GetLocalTransform().GetMatrix();
        if (node != -1)
            world = Product(world, At(matrices_, node));
        Remember(current, world);
        node = current;
    }
}

void WorldMatrices::Remember(std::int32_t index, const D3DXMATRIX& matrix)
{
    At(matrices_, index) = matrix;
    At(states_, index) = State::Known;
}

}  // namespace Importing

#include <support/SpreadBoxes.h>

#include <support/BenchScenes.h>

#include <cstddef>

using Importing::Box;
using Importing::SceneContainer;

namespace
{

constexpr std::int64_t kClusterSize = 10;

/// A place of a cubic grid that has room for all of them.
D3DXVECTOR3 GridPlace(std::int64_t index, std::int64_t count)
{
    std::int64_t edge = 1;
    while (edge * edge * edge < count)
        ++edge;
    const std::int64_t x = index % edge;
    const std::int64_t y = index / edge % edge;
    const std::int64_t z = index / edge / edge;
    constexpr float kStep = 2.0F;
    return D3DXVECTOR3(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)) * kStep;
}

/// Neighbours in the world are none in the scene: the stride, a prime, leads to every place once.
D3DXVECTOR3 Place(Spread spread, std::int64_t number, std::int64_t count)
{
    constexpr std::int64_t kStride = 48271;
    const std::int64_t index = number * kStride % count;
    if (spread == Spread::Sparse)
        return GridPlace(index, count);
    const float shift = 0.05F * static_cast<float>(index % kClusterSize);
    return GridPlace(index / kClusterSize, (count + kClusterSize - 1) / kClusterSize) +
           D3DXVECTOR3(shift, shift, shift);
}

}  // namespace

std::vector<Box> SpreadBoxes(Spread spread, std::int64_t count)
{
    std::vector<Box> boxes;
    for (std::int64_t i = 0; i < count; ++i)
    {
        const D3DXVECTOR3 low = Place(spread, i, count);
        boxes.push_back({low, low + D3DXVECTOR3(1, 1, 1)});
    }
    return boxes;
}

void FillSpreadScene(SceneContainer& scene, Spread spread, std::int64_t count)
{
    FillScene(scene, Shape::Flat, count);
    const std::vector<Box> boxes = SpreadBoxes(spread, count);
    for (std::size_t i = 0; i < boxes.size(); ++i)
    {
        D3DXMATRIX place;
        D3DXMatrixTranslation(&place, boxes[i].min.x, boxes[i].min.y, boxes[i].min.z);
        scene.NodeLibrary[i + 1].SetLocalTransform(Importing::Transform(place));
    }
}

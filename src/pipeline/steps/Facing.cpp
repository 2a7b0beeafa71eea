#include <pipeline/steps/Facing.h>

#include <importing/base/CheckedAccess.h>

namespace Pipeline
{

using Importing::At;
using Importing::Geometry;
using Importing::SceneContainer;

std::vector<bool> FindMirroredNodes(SceneContainer& scene, const NodeWalk& walk)
{
    const std::vector<D3DXMATRIX> matrices = WorldMatricesOf(scene, walk);
    std::vector<bool> mirrored(scene.NodeLibrary.size(), false);
    for (const int node : walk.order)
        mirrored[static_cast<std::size_t>(node)] = IsMirroring(At(matrices, node));
    return mirrored;
}

void FlipFacesOfNodes(SceneContainer& scene, const NodeWalk& walk, const std::vector<bool>& marked)
{
    for (const int node : walk.order)
    {
        if (!marked[static_cast<std::size_t>(node)])
            continue;
        for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
        {
            const int geometry = At(scene.SurfaceLibrary, surface).GetGeometryID();
            if (geometry >= 0)
                At(scene.GeometryLibrary, geometry).FlipFaces();
        }
    }
}

WindingRecord::WindingRecord(const SceneContainer& scene)
{
    witnesses_.reserve(scene.GeometryLibrary.size());
    for (const Geometry& geometry : scene.GeometryLibrary)
    {
        Witness& witness = witnesses_.emplace_back();
        const std::vector<std::uint32_t>& indices = geometry.IndexArray;
        for (std::size_t i = 0; i + 2 < indices.size() && !witness.found; i += 3)
        {
            if (indices[i + 1] != indices[i + 2])
                witness = {i + 1, indices[i + 1], true};
        }
    }
}

bool WindingRecord::IsFlipped(const SceneContainer& scene, int geometry) const
{
    const Witness& witness = At(witnesses_, geometry);
    return witness.found && At(At(scene.GeometryLibrary, geometry).IndexArray, witness.secondCorner) != witness.second;
}

std::size_t WindingRecord::CountFlipped(const SceneContainer& scene) const
{
    std::size_t flipped = 0;
    for (std::size_t geometry = 0; geometry < witnesses_.size(); ++geometry)
        flipped += IsFlipped(scene, static_cast<int>(geometry)) ? 1 : 0;
    return flipped;
}

}  // namespace Pipeline

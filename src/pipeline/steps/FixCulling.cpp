#include <pipeline/steps/FixCulling.h>

#include <pipeline/steps/ForEachMesh.h>
#include <pipeline/steps/MissingNormals.h>

#include <cstdint>
#include <vector>

namespace Pipeline
{

namespace
{

std::size_t CountFlippedTriangles(const std::vector<std::uint32_t>& before, const std::vector<std::uint32_t>& after)
{
    std::size_t flipped = 0;
    for (std::size_t i = 0; i + 2 < before.size(); i += 3)
        flipped += before[i + 1] != after[i + 1] || before[i + 2] != after[i + 2] ? 1 : 0;
    return flipped;
}

}  // namespace

Changes FixCulling(const WorkScene& scene, const PrepareOptions& options, const PartListener& listener)
{
    Changes changes;
    ComputeMissingNormals(scene, options, changes);
    std::size_t flipped = 0;
    ForEachMesh(scene, listener, [&flipped](std::size_t, Importing::Geometry& geometry) {
        const std::vector<std::uint32_t> before = geometry.IndexArray;
        geometry.FixFaceCulling(false);
        flipped += CountFlippedTriangles(before, geometry.IndexArray);
    });
    changes.push_back({"triangles flipped", flipped});
    return changes;
}

}  // namespace Pipeline

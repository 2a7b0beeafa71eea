// Triangles are added to the current part in order until one does not fit: one pass, with a table from the vertices of
// the mesh to those of the part. Clustering triangles would give fewer duplicated vertices, but it would change their
// order.

#include <sceneprep/export/CutMesh.h>

#include <importing/base/CheckedAccess.h>

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

namespace
{

using Importing::Geometry;

/// The part to which triangles are added.
class Part
{
public:
    explicit Part(Geometry& mesh) : mesh_(mesh) {}

    bool HasRoomFor(const std::array<std::uint32_t, 3>& triangle, std::size_t largest) const
    {
        std::size_t vertices = part_.VertexArray.size();
        for (const std::uint32_t corner : triangle)
            vertices += indexOf_.contains(corner) ? 0 : 1;
        return vertices <= largest && part_.IndexArray.size() / 3 < largest;
    }

    void Add(const std::array<std::uint32_t, 3>& triangle)
    {
        for (const std::uint32_t corner : triangle)
        {
            const auto [index, isNew] = indexOf_.emplace(corner, static_cast<std::uint32_t>(indexOf_.size()));
            if (isNew)
                part_.VertexArray.push_back(Importing::At(mesh_.VertexArray, corner));
            part_.IndexArray.push_back(index->second);
        }
    }

    /// Returns the part and starts an empty one.
    Geometry Take()
    {
        indexOf_.clear();
        part_.SetName(mesh_.GetName());
        part_.SetPolySize(3);
        return std::exchange(part_, Geometry());
    }

    bool IsEmpty() const { return part_.IndexArray.empty(); }

private:
    Geometry& mesh_;
    Geometry part_;
    std::unordered_map<std::uint32_t, std::uint32_t> indexOf_;  // by vertex of the mesh
};

}  // namespace

std::vector<Geometry> CutMesh(Geometry& mesh, std::size_t largest)
{
    std::vector<Geometry> parts;
    Part part(mesh);
    for (std::size_t i = 0; i + 2 < mesh.IndexArray.size(); i += 3)
    {
        const std::array<std::uint32_t, 3> triangle = {mesh.IndexArray[i], mesh.IndexArray[i + 1],
                                                       mesh.IndexArray[i + 2]};
        if (!part.HasRoomFor(triangle, largest))
            parts.push_back(part.Take());
        part.Add(triangle);
    }
    if (!part.IsEmpty())
        parts.push_back(part.Take());
    return parts;
}

bool IsLargerThan(std::size_t largest, const Geometry& mesh)
{
    return mesh.VertexArray.size() > largest || mesh.IndexArray.size() / 3 > largest;
}

}  // namespace Sceneprep

#include <importing/geometry/Geometry.h>
#include <importing/geometry/Triangles.h>
#include <importing/math/Products.h>

#include <utility>

namespace Importing
{
namespace
{

/// Cosine of the sharpest bend, about 36.87 degrees, over which faces are still blended (0x3F4CCCCD).
constexpr float kSmoothingThreshold = 0.8F;

/// Gives corners their normals, face by face. Vertices are asked by qualified calls, which take their place in the loop
/// in line: an element of the array is a Vertex and nothing derived from it.
class NormalSmoother
{
public:
    NormalSmoother(std::vector<Vertex>& vertices, std::vector<std::uint32_t>& indices)
        : vertices_(vertices), indices_(indices), visited_(vertices.size())
    {}

    void AddFace(std::size_t firstCorner)
    {
        const D3DXVECTOR3 normal = FaceNormal(firstCorner);
        for (std::size_t corner = firstCorner; corner < firstCorner + kTriangle; ++corner)
            AddCorner(corner, normal);
    }

private:
    D3DXVECTOR3 FaceNormal(std::size_t firstCorner)
    {
        const auto position = [this](std::size_t corner) { return vertices_[indices_[corner]].Vertex::GetPosition(); };
        return TriangleNormal(position(firstCorner), position(firstCorner + 1), position(firstCorner + 2));
    }

    void AddCorner(std::size_t corner, const D3DXVECTOR3& faceNormal)
    {
        const std::uint32_t index = indices_[corner];
        Vertex& vertex = vertices_[index];
        if (!visited_[index])
        {
            vertex.Vertex::SetNormal(faceNormal);
            visited_[index] = true;
            return;
        }

        const D3DXVECTOR3 running = vertex.Vertex::GetNormal();
        if (Dot(faceNormal, running) > kSmoothingThreshold)
        {
            vertex.Vertex::SetNormal(faceNormal + running);
            vertex.Vertex::NormalizeNormal();
        }
        else
        {
            Split(corner, faceNormal);
        }
    }

    /// The copy never counts as visited: no other corner leads to it.
    void Split(std::size_t corner, const D3DXVECTOR3& faceNormal)
    {
        Vertex copy = vertices_[indices_[corner]];
        copy.SetNormal(faceNormal);
        vertices_.push_back(std::move(copy));
        indices_[corner] = static_cast<std::uint32_t>(vertices_.size() - 1);
    }

    std::vector<Vertex>& vertices_;
    std::vector<std::uint32_t>& indices_;
    std::vector<bool> visited_;
};

}  // namespace

int Geometry::ComputeNormals()
{
    if (GetPolySize() != kTriangle)
        return -1;
    CheckTriangles(IndexArray, VertexArray.size());

    NormalSmoother smoother(VertexArray, IndexArray);
    for (std::size_t face = 0; face < TriangleCount(IndexArray); ++face)
        smoother.AddFace(kTriangle * face);
    return 0;
}

}  // namespace Importing

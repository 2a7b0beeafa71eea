// One pass over the faces. One bit per vertex records whether a face has set its normal. Later faces are blended into
// that normal or split the vertex, corner by corner. The order of the faces and of the split vertices is part of the
// result, so the pass is sequential. Cost: linear in the indices, plus one copy for each split vertex.

#include <importing/geometry/Geometry.h>
#include <importing/geometry/Triangles.h>
#include <importing/math/Products.h>

#include <utility>

namespace Importing
{
namespace
{

/// The cosine of the largest angle, about 36.87 degrees, at which faces are blended (0x3F4CCCCD).
constexpr float kSmoothingThreshold = 0.8F;

/// Sets the normals of corners, face by face. Calls to vertices are qualified so that they can be inlined: elements of
/// the array are never of a class derived from Vertex.
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

    /// Gives the corner a copy of its vertex. The copy needs no visited bit, because no other corner refers to it.
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

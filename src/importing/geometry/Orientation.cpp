// Each operation is one pass in place over the vertices or the faces. UnifyNormals processes faces in order and reads
// normals that earlier faces may have flipped, because at a shared vertex the last face decides. Calls to vertices are
// qualified so that they can be inlined. Cost: linear in the mesh, without an allocation.

#include <importing/base/CheckedAccess.h>
#include <importing/geometry/Geometry.h>
#include <importing/geometry/Triangles.h>
#include <importing/math/Products.h>

#include <utility>

namespace Importing
{
namespace
{

/// Returns a vector along the geometric normal of a face.
D3DXVECTOR3 FaceCross(std::vector<Vertex>& vertices, const std::uint32_t* corners)
{
    return TriangleCross(vertices[corners[0]].Vertex::GetPosition(), vertices[corners[1]].Vertex::GetPosition(),
                         vertices[corners[2]].Vertex::GetPosition());
}

/// Returns whether a corner normal points against the geometric normal of its face: never for a perpendicular normal, a
/// degenerate face or NaN.
bool PointsAgainst(const D3DXVECTOR3& cornerNormal, const D3DXVECTOR3& faceNormal)
{
    return Dot(faceNormal, cornerNormal) < 0.0F;
}

}  // namespace

int Geometry::FlipNormals()
{
    for (Vertex& vertex : VertexArray)
        vertex.InverseNormal();
    return 0;
}

int Geometry::FlipFaces()
{
    if (GetPolySize() != kTriangle)
        return -1;
    // A second corner without a third has nothing to be swapped with.
    if (IndexArray.size() % kTriangle == 2)
        ThrowBadSubscript();

    for (std::size_t face = 0; face < TriangleCount(IndexArray); ++face)
        std::swap(IndexArray[kTriangle * face + 1], IndexArray[kTriangle * face + 2]);
    return 0;
}

int Geometry::UnifyNormals(bool suppress)
{
    if (GetPolySize() != kTriangle)
        return -1;
    CheckTriangles(IndexArray, VertexArray.size());
    if (suppress)
        return 0;

    for (std::size_t face = 0; face < TriangleCount(IndexArray); ++face)
    {
        const std::uint32_t* corners = IndexArray.data() + kTriangle * face;
        const D3DXVECTOR3 faceNormal = FaceCross(VertexArray, corners);
        for (std::size_t c = 0; c < kTriangle; ++c)
        {
            Vertex& vertex = VertexArray[corners[c]];
            const D3DXVECTOR3 normal = vertex.Vertex::GetNormal();
            if (PointsAgainst(normal, faceNormal))
                vertex.Vertex::SetNormal(-normal);
        }
    }
    return 0;
}

int Geometry::FixFaceCulling(bool suppress)
{
    if (GetPolySize() != kTriangle)
        return -1;
    CheckTriangles(IndexArray, VertexArray.size());
    if (suppress)
        return 0;

    for (std::size_t face = 0; face < TriangleCount(IndexArray); ++face)
    {
        std::uint32_t* corners = IndexArray.data() + kTriangle * face;
        const D3DXVECTOR3 faceNormal = FaceCross(VertexArray, corners);
        const auto isAgainst = [&](std::uint32_t index) {
            return PointsAgainst(VertexArray[index].Vertex::GetNormal(), faceNormal);
        };
        if (isAgainst(corners[0]) && isAgainst(corners[1]) && isAgainst(corners[2]))
            std::swap(corners[1], corners[2]);
    }
    return 0;
}

}  // namespace Importing

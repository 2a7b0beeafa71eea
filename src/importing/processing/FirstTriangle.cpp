#include <importing/processing/FirstTriangle.h>

#include <importing/base/CheckedAccess.h>
#include <importing/geometry/Triangles.h>
#include <importing/math/Products.h>

#include <cstddef>

namespace Importing
{
namespace
{

constexpr float kMinimumDot = 0.05F;

D3DXVECTOR3 Position(Geometry& mesh, std::size_t corner, const D3DXMATRIX& world)
{
    D3DXVECTOR3 position = At(mesh.VertexArray, At(mesh.IndexArray, corner)).GetPosition();
    D3DXVec3TransformCoord(&position, &position, &world);
    return position;
}

}  // namespace

void CheckFirstTriangle(const Geometry& mesh)
{
    if (mesh.GetPolySize() != kTriangle)
        return;
    for (std::size_t corner = 0; corner < kTriangle; ++corner)
        CheckIndex(At(mesh.IndexArray, corner), mesh.VertexArray.size());
}

void FlipIfFirstTriangleFacesAway(Geometry& mesh, const D3DXMATRIX& world)
{
    if (mesh.GetPolySize() != kTriangle)
        return;
    const D3DXVECTOR3 p0 = Position(mesh, 0, world);
    const D3DXVECTOR3 p1 = Position(mesh, 1, world);
    const D3DXVECTOR3 p2 = Position(mesh, 2, world);
    D3DXVECTOR3 faceNormal = Cross(p0 - p1, p0 - p2);
    D3DXVec3Normalize(&faceNormal, &faceNormal);

    D3DXVECTOR3 vertexNormal = At(mesh.VertexArray, At(mesh.IndexArray, 0)).GetNormal();
    D3DXVec3TransformNormal(&vertexNormal, &vertexNormal, &world);
    D3DXVec3Normalize(&vertexNormal, &vertexNormal);

    if (Dot(vertexNormal, faceNormal) < kMinimumDot)
        mesh.FlipFaces();
}

}  // namespace Importing

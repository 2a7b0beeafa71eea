#include <models/SceneModels.h>

#include <importing/math/DecomposeMatrix.h>
#include <importing/math/Products.h>

namespace Models
{
namespace
{

using namespace Importing;

struct Parts
{
    explicit Parts(const D3DXMATRIX& matrix) { DecomposeMatrix(scale, rotation, translation, matrix); }

    D3DXVECTOR3 scale{1, 1, 1};
    D3DXQUATERNION rotation{0, 0, 0, 1};
    D3DXVECTOR3 translation{0, 0, 0};
};

D3DXMATRIX Times(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    D3DXMATRIX product;
    return *D3DXMatrixMultiply(&product, &a, &b);
}

D3DXMATRIX LocalMatrix(SceneContainer& scene, int node)
{
    return At(scene.NodeLibrary, node).GetLocalTransform().GetMatrix();
}

Geometry& MeshOf(SceneContainer& scene, int surface)
{
    return At(scene.GeometryLibrary, At(scene.SurfaceLibrary, surface).GetGeometryID());
}

D3DXVECTOR3 CornerPosition(Geometry& mesh, int corner, const D3DXMATRIX& world)
{
    D3DXVECTOR3 position = At(mesh.VertexArray, At(mesh.IndexArray, corner)).GetPosition();
    return *D3DXVec3TransformCoord(&position, &position, &world);
}

void TestFirstTriangle(Geometry& mesh, const D3DXMATRIX& world)
{
    if (mesh.GetPolySize() != 3)
        return;
    const D3DXVECTOR3 p0 = CornerPosition(mesh, 0, world);
    const D3DXVECTOR3 p1 = CornerPosition(mesh, 1, world);
    const D3DXVECTOR3 p2 = CornerPosition(mesh, 2, world);
    D3DXVECTOR3 face = Cross(p0 - p1, p0 - p2);
    D3DXVec3Normalize(&face, &face);
    D3DXVECTOR3 normal = At(mesh.VertexArray, At(mesh.IndexArray, 0)).GetNormal();
    D3DXVec3TransformNormal(&normal, &normal, &world);
    D3DXVec3Normalize(&normal, &normal);
    if (Dot(normal, face) < 0.05F)
        mesh.FlipFaces();
}

void TestFaces(SceneContainer& scene, int node, const D3DXMATRIX& world)
{
    for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
        TestFirstTriangle(MeshOf(scene, surface), world);
}

D3DXMATRIX AnimatedLocalMatrix(SceneContainer& scene, int node)
{
    const D3DXMATRIX local = LocalMatrix(scene, node);
    const int animation = At(scene.NodeLibrary, node).GetAnimationID();
    if (animation < 0)
        return local;
    return Times(At(At(scene.AnimationLibrary, animation), 0).GetMatrix(), local);
}

}  // namespace

void CheckFacesOrientation(SceneContainer& scene, int node, const D3DXMATRIX& worldMatrix)
{
    for (const std::int32_t child : At(scene.NodeLibrary, node).ChildList)
        CheckFacesOrientation(scene, child, Times(LocalMatrix(scene, child), worldMatrix));
    const D3DXVECTOR3 scale = Parts(worldMatrix).scale;
    if (scale.x * scale.y * scale.z * D3DXMatrixDeterminant(&worldMatrix) < 0)
        for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
            MeshOf(scene, surface).FlipNormals();
    TestFaces(scene, node, worldMatrix);
}

void RemoveNegativeScaleMatricies(SceneContainer& scene, int node, const D3DXMATRIX& pendingScale,
                                  const D3DXMATRIX& parentWorld)
{
    D3DXMATRIX handedOn;
    D3DXMatrixScaling(&handedOn, 1, 1, 1);
    const Parts still(Times(LocalMatrix(scene, node), pendingScale));
    D3DXMATRIX global = Times(AnimatedLocalMatrix(scene, node), pendingScale);
    const Parts moved(global);
    if (moved.scale.x < 0 || moved.scale.y < 0 || moved.scale.z < 0)
    {
        D3DXMatrixScaling(&handedOn, moved.scale.x, moved.scale.y, moved.scale.z);
        const D3DXVECTOR3 one(1, 1, 1);
        D3DXMatrixTransformation(&global, nullptr, nullptr, &one, nullptr, &still.rotation, &still.translation);
        At(scene.NodeLibrary, node).SetLocalTransform(Transform(global));
        for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
            MeshOf(scene, surface).Transform(handedOn);
    }
    const D3DXMATRIX world = Times(global, parentWorld);
    TestFaces(scene, node, world);
    for (const std::int32_t child : At(scene.NodeLibrary, node).ChildList)
        RemoveNegativeScaleMatricies(scene, child, handedOn, world);
}

}  // namespace Models

// Both operations are a walk that calls one step per node: children before parents to test faces, parents before
// children to remove negative scale. A derived container gets each level as a call through the virtual table. A plain
// container uses an explicit stack, so that deep hierarchies do not overflow, after one check of everything that will
// be looked up.
// Cost: linear in the visits; a node that several paths lead to is visited once for each path, as by the recursion.

#include <importing/base/CheckedAccess.h>
#include <importing/math/DecomposeMatrix.h>
#include <importing/math/Products.h>
#include <importing/plugin/HierarchyCheck.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/processing/FirstTriangle.h>

#include <cstddef>
#include <vector>

namespace Importing
{
namespace
{

/// A decomposed matrix.
struct Parts
{
    D3DXVECTOR3 scale{1, 1, 1};
    D3DXQUATERNION rotation{0, 0, 0, 1};
    D3DXVECTOR3 translation{0, 0, 0};
};

/// Decomposes a matrix. Where that fails, rotation and translation keep their start values and are still used.
Parts Decompose(const D3DXMATRIX& matrix)
{
    Parts parts;
    DecomposeMatrix(parts.scale, parts.rotation, parts.translation, matrix);
    return parts;
}

D3DXMATRIX LocalMatrix(SceneContainer& scene, int node)
{
    return At(scene.NodeLibrary, node).GetLocalTransform().GetMatrix();
}

/// Calls visit(mesh) for the mesh of every surface of a node, in order.
template <typename Visit>
void ForEachMesh(SceneContainer& scene, int node, Visit visit)
{
    for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
        visit(At(scene.GeometryLibrary, At(scene.SurfaceLibrary, surface).GetGeometryID()));
}

/// Flips the meshes of a node whose first triangle faces away from its normal.
void TestFirstTriangles(SceneContainer& scene, int node, const D3DXMATRIX& world)
{
    ForEachMesh(scene, node, [&world](Geometry& mesh) { FlipIfFirstTriangleFacesAway(mesh, world); });
}

void CheckMeshes(SceneContainer& scene, int node)
{
    ForEachMesh(scene, node, [](const Geometry& mesh) { CheckFirstTriangle(mesh); });
}

bool Always(const Node& /*node*/) { return true; }

/// Does what CheckFacesOrientation does to one node, without its children.
void OrientFaces(SceneContainer& scene, int node, const D3DXMATRIX& world)
{
    CheckMeshes(scene, node);
    const D3DXVECTOR3 scale = Decompose(world).scale;
    const float determinant = D3DXMatrixDeterminant(&world);
    // The scale has the sign of the 3x3 determinant, so this happens only if the fourth column is not (0, 0, 0, 1).
    if (scale.x * scale.y * scale.z * determinant < 0.0F)
        ForEachMesh(scene, node, [](Geometry& mesh) { mesh.FlipNormals(); });
    TestFirstTriangles(scene, node, world);
}

/// Calls OrientFaces for a node and all nodes below it, children first, with a stack instead of recursion.
void OrientFacesBelow(SceneContainer& scene, int start, const D3DXMATRIX& startWorld)
{
    struct Level
    {
        D3DXMATRIX world;
        int node;
        std::uint32_t nextChild;
    };

    std::vector<Level> path{{startWorld, start, 0}};
    while (!path.empty())
    {
        Level& level = path.back();
        const std::vector<std::int32_t>& children = At(scene.NodeLibrary, level.node).ChildList;
        if (level.nextChild < children.size())
        {
            const int child = children[level.nextChild++];
            path.push_back({Product(LocalMatrix(scene, child), level.world), child, 0});
        }
        else
        {
            OrientFaces(scene, level.node, level.world);
            path.pop_back();
        }
    }
}

/// The values that a node passes on to its children.
struct Inheritance
{
    D3DXMATRIX pendingScale;
    D3DXMATRIX world;
};

/// Returns the local matrix of a node, multiplied from the left by the first key of its animation if it has one.
D3DXMATRIX AnimatedLocalMatrix(SceneContainer& scene, int node)
{
    const D3DXMATRIX local = LocalMatrix(scene, node);
    const int animation = At(scene.NodeLibrary, node).GetAnimationID();
    if (animation < 0)
        return local;
    return Product(At(At(scene.AnimationLibrary, animation), 0).GetMatrix(), local);
}

bool HasNegative(const D3DXVECTOR3& scale) { return scale.x < 0.0F || scale.y < 0.0F || scale.z < 0.0F; }

/// Does what RemoveNegativeScaleMatricies does to one node, without its children.
Inheritance RemoveNegativeScale(SceneContainer& scene, int node, const D3DXMATRIX& pendingScale,
                                const D3DXMATRIX& parentWorld)
{
    CheckMeshes(scene, node);

    // (1) Decompose the static matrix for the node's new transform, and the animated one to find out if it is mirrored.
    D3DXMATRIX scaling;
    D3DXMatrixScaling(&scaling, 1, 1, 1);
    const Parts atRest = Decompose(Product(LocalMatrix(scene, node), pendingScale));
    D3DXMATRIX local = Product(AnimatedLocalMatrix(scene, node), pendingScale);
    const Parts animated = Decompose(local);

    // (2) Bake the scale of a mirrored node into its meshes.
    if (HasNegative(animated.scale))
    {
        const D3DXVECTOR3 unitScale(1, 1, 1);
        D3DXMatrixScaling(&scaling, animated.scale.x, animated.scale.y, animated.scale.z);
        D3DXMatrixTransformation(&local, nullptr, nullptr, &unitScale, nullptr, &atRest.rotation, &atRest.translation);
        At(scene.NodeLibrary, node).SetLocalTransform(Transform(local));
        ForEachMesh(scene, node, [&scaling](Geometry& mesh) { mesh.Transform(scaling); });
    }

    // (3) Test the faces with the new matrix.
    const D3DXMATRIX world = Product(local, parentWorld);
    TestFirstTriangles(scene, node, world);
    return {scaling, world};
}

/// Calls RemoveNegativeScale for a node and all nodes below it, parents first, with a stack instead of recursion.
void RemoveNegativeScaleBelow(SceneContainer& scene, int start, const D3DXMATRIX& pendingScale,
                              const D3DXMATRIX& parentWorld)
{
    struct Level
    {
        Inheritance inheritance;
        int node;
        std::uint32_t nextChild;
    };

    std::vector<Level> path{{RemoveNegativeScale(scene, start, pendingScale, parentWorld), start, 0}};
    while (!path.empty())
    {
        Level& level = path.back();
        const std::vector<std::int32_t>& children = At(scene.NodeLibrary, level.node).ChildList;
        if (level.nextChild == children.size())
        {
            path.pop_back();
            continue;
        }
        const int child = children[level.nextChild++];
        path.push_back(
            {RemoveNegativeScale(scene, child, level.inheritance.pendingScale, level.inheritance.world), child, 0});
    }
}

}  // namespace

int SceneContainer::CheckFacesOrientation(int node, const D3DXMATRIX& worldMatrix)
{
    if (IsPlain(*this))
    {
        CheckHierarchy(NodeLibrary, node, Always, [this](std::int32_t index) { CheckMeshes(*this, index); });
        OrientFacesBelow(*this, node, worldMatrix);
        return 0;
    }

    for (std::size_t i = 0; i < At(NodeLibrary, node).ChildList.size(); ++i)
    {
        const int child = At(NodeLibrary, node).ChildList[i];
        CheckFacesOrientation(child, Product(LocalMatrix(*this, child), worldMatrix));
    }
    OrientFaces(*this, node, worldMatrix);
    return 0;
}

int SceneContainer::RemoveNegativeScaleMatricies(int node, const D3DXMATRIX& pendingScale,
                                                 const D3DXMATRIX& parentWorld)
{
    if (IsPlain(*this))
    {
        CheckHierarchy(NodeLibrary, node, Always, [this](std::int32_t index) {
            AnimatedLocalMatrix(*this, index);
            CheckMeshes(*this, index);
        });
        RemoveNegativeScaleBelow(*this, node, pendingScale, parentWorld);
        return 0;
    }

    const Inheritance inheritance = RemoveNegativeScale(*this, node, pendingScale, parentWorld);
    for (std::size_t i = 0; i < At(NodeLibrary, node).ChildList.size(); ++i)
        RemoveNegativeScaleMatricies(At(NodeLibrary, node).ChildList[i], inheritance.pendingScale, inheritance.world);
    return 0;
}

}  // namespace Importing

// The container's operation handles one mirrored node correctly, but loses the transforms of mirrored nodes below it.
// So it is called for one node at a time, the deepest first, after a trial on a small copy of the branch (ProbeScene)
// has shown that nothing moves. Trials cost the size of the branch, so a chain of n nested mirrored nodes costs n
// squared. Normals, cameras, lights and windings are corrected once at the end, from the world matrices before and
// after.

#include <pipeline/steps/RepairMirrors.h>

#include <importing/base/CheckedAccess.h>
#include <importing/math/SameBits.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/steps/AttributeBaking.h>
#include <pipeline/steps/Facing.h>
#include <pipeline/steps/ProbeScene.h>

#include <algorithm>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Node;
using Importing::SceneContainer;

/// Returns whether the container must not bake a matrix into a mesh of the node: the mesh is skinned or pinned, or it
/// has no triangle, which the container needs.
bool HasFixedMesh(const WorkScene& work, const Node& node)
{
    return std::any_of(node.SurfaceList.begin(), node.SurfaceList.end(), [&work](std::int32_t surface) {
        return !IsBakeable(work, surface) ||
               !HasTriangles(
                   At(work.container.GeometryLibrary, At(work.container.SurfaceLibrary, surface).GetGeometryID()));
    });
}

/// Returns for each node [nodes] whether its matrix must stay: it, or a node below it, is animated or kept, is a joint,
/// or references a skinned or pinned mesh.
std::vector<bool> FindFixedBranches(const WorkScene& work, const NodeWalk& walk)
{
    SceneContainer& scene = work.container;
    std::vector<bool> fixed = FindJointNodes(scene, walk);
    for (auto node = walk.order.rbegin(); node != walk.order.rend(); ++node)  // children first
    {
        const auto position = static_cast<std::size_t>(*node);
        const Node& record = scene.NodeLibrary[position];
        if (record.GetAnimationID() != -1 || IsKept(work.supplement, position) || HasFixedMesh(work, record))
            fixed[position] = true;
        if (fixed[position] && walk.parent[position] >= 0)
            fixed[static_cast<std::size_t>(walk.parent[position])] = true;
    }
    return fixed;
}

void RemoveMirrors(SceneContainer& scene, int node)
{
    scene.RemoveNegativeScaleMatricies(node, Importing::Transform::Indentity, Importing::Transform::Indentity);
}

bool KeepsPositions(SceneContainer& scene, const NodeWalk& walk, std::size_t start)
{
    ProbeScene probe(scene, walk, start);
    RemoveMirrors(probe.Scene(), 0);
    return probe.HasInitialPositions();
}

bool IsMirrored(SceneContainer& scene, int node)
{
    return IsMirroring(At(scene.NodeLibrary, node).GetLocalTransform().GetMatrix());
}

template <typename Object>
void BakeOffset(Object& object, const D3DXMATRIX& matrix)
{
    object.SetOffsetMatrix(Importing::Transform(Product(object.GetOffsetMatrix().GetMatrix(), matrix)));
}

/// Bakes the change of a node's world matrix into the offsets of its cameras and lights, so that they do not move.
void KeepObjectTransforms(SceneContainer& scene, const NodeWalk& walk, const std::vector<D3DXMATRIX>& before)
{
    const std::vector<D3DXMATRIX> now = WorldMatricesOf(scene, walk);
    for (const int index : walk.order)
    {
        const Node& node = At(scene.NodeLibrary, index);
        if (Importing::SameBits(At(before, index), At(now, index)))
            continue;
        const std::optional<D3DXMATRIX> back = InverseOf(At(now, index));
        if (!back)
            continue;
        const D3DXMATRIX difference = Product(At(before, index), *back);
        for (const std::int32_t camera : node.CameraList)
            BakeOffset(At(scene.CameraLibrary, camera), difference);
        for (const std::int32_t light : node.LightList)
            BakeOffset(At(scene.LightLibrary, light), difference);
    }
}

/// The normals of a mesh that a node references.
struct KnownNormals
{
    int node;
    std::size_t mesh;
    std::vector<D3DXVECTOR3> normals;
};

/// Returns the normals of the meshes into which scale may be baked: those at and below mirrored nodes.
std::vector<KnownNormals> NormalsBelowMirrors(const WorkScene& work, const NodeWalk& walk)
{
    SceneContainer& scene = work.container;
    std::vector<bool> isBelow(scene.NodeLibrary.size(), false);
    std::vector<KnownNormals> known;
    for (const int node : walk.order)
    {
        const int parent = At(walk.parent, node);
        if (!IsMirrored(scene, node) && (parent < 0 || !isBelow[static_cast<std::size_t>(parent)]))
            continue;
        isBelow[static_cast<std::size_t>(node)] = true;
        for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
        {
            if (!IsBakeable(work, surface))
                continue;
            const auto mesh = static_cast<std::size_t>(At(scene.SurfaceLibrary, surface).GetGeometryID());
            KnownNormals& entry = known.emplace_back(KnownNormals{node, mesh, {}});
            entry.normals.reserve(scene.GeometryLibrary[mesh].VertexArray.size());
            for (Importing::Vertex& vertex : scene.GeometryLibrary[mesh].VertexArray)
                entry.normals.push_back(vertex.Vertex::GetNormal());
        }
    }
    return known;
}

/// Bakes into normals and tangents the matrix that was baked into the positions: the change of the world matrix.
void BakeAttributes(const WorkScene& work, const NodeWalk& walk, const std::vector<D3DXMATRIX>& before,
                    const std::vector<KnownNormals>& known)
{
    const std::vector<D3DXMATRIX> now = WorldMatricesOf(work.container, walk);
    for (const KnownNormals& entry : known)
    {
        const std::optional<D3DXMATRIX> back = InverseOf(At(now, entry.node));
        if (Importing::SameBits(At(before, entry.node), At(now, entry.node)) || !back)
            continue;
        const AttributeBaking baking(Product(At(before, entry.node), *back));
        Importing::Geometry& mesh = work.container.GeometryLibrary[entry.mesh];
        if (baking.CorrectsNormals())
        {
            for (std::size_t v = 0; v < entry.normals.size(); ++v)
                mesh.VertexArray[v].SetNormal(baking.Bake(entry.normals[v]));
        }
        baking.BakeTangents(mesh, EntryOr(work.supplement.layouts, entry.mesh, VertexLayout()));
    }
}

/// Flips meshes until exactly those are flipped whose world matrix mirrored before and no longer does, or the reverse:
/// then the appearance of faces has not changed.
void KeepFrontFaces(SceneContainer& scene, const NodeWalk& walk, const std::vector<bool>& mirroredBefore,
                    const WindingRecord& winding)
{
    const std::vector<bool> mirrored = FindMirroredNodes(scene, walk);
    for (const int index : walk.order)
    {
        const auto position = static_cast<std::size_t>(index);
        const bool wanted = mirrored[position] != mirroredBefore[position];
        for (const std::int32_t surface : scene.NodeLibrary[position].SurfaceList)
        {
            const int geometry = At(scene.SurfaceLibrary, surface).GetGeometryID();
            if (geometry >= 0 && winding.IsFlipped(scene, geometry) != wanted)
                At(scene.GeometryLibrary, geometry).FlipFaces();
        }
    }
}

}  // namespace

Changes RepairMirrors(const WorkScene& work, const PrepareOptions& /*options*/, const PartListener& listener)
{
    SceneContainer& scene = work.container;
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<bool> fixed = FindFixedBranches(work, walk);
    const std::vector<bool> mirroredBefore = FindMirroredNodes(scene, walk);
    const std::vector<D3DXMATRIX> worldBefore = WorldMatricesOf(scene, walk);
    const std::vector<KnownNormals> normalsBefore = NormalsBelowMirrors(work, walk);
    const WindingRecord winding(scene);

    PartCounter counter(listener, walk.order.size());
    std::size_t repaired = 0;
    std::size_t left = 0;
    for (std::size_t i = walk.order.size(); i-- > 0;)  // children first
    {
        const int node = walk.order[i];
        counter.Add(1);
        if (!IsMirrored(scene, node))
            continue;
        const bool possible = !fixed[static_cast<std::size_t>(node)] && KeepsPositions(scene, walk, i);
        ++(possible ? repaired : left);
        if (possible)
            RemoveMirrors(scene, node);
    }

    KeepObjectTransforms(scene, walk, worldBefore);
    BakeAttributes(work, walk, worldBefore, normalsBefore);
    KeepFrontFaces(scene, walk, mirroredBefore, winding);
    return {{"mirrored nodes repaired", repaired}, {"mirrored nodes left as they are", left}};
}

}  // namespace Pipeline

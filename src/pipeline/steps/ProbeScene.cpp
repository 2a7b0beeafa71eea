// Four points determine an affine matrix, so every node of the copy gets a mesh of four vertices: wherever the
// operation puts a transform, into matrices or meshes, the world positions of these points show whether it is still the
// same. Comparing the whole scene instead would cost all of its vertices for every trial.

#include <pipeline/steps/ProbeScene.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Node;
using Importing::SceneContainer;

constexpr float kTolerance = 1e-4F;

/// Returns a mesh with the origin and a point on each axis: four points determine an affine matrix.
Geometry ProbeMesh()
{
    Geometry mesh;
    for (const D3DXVECTOR3& corner :
         {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 0, 0), D3DXVECTOR3(0, 1, 0), D3DXVECTOR3(0, 0, 1)})
        mesh.VertexArray.emplace_back(corner).SetNormal(D3DXVECTOR3(0, 0, 1));
    mesh.IndexArray = {0, 1, 2};
    return mesh;
}

float LengthOf(const D3DXVECTOR3& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

/// Returns false for NaN.
bool Agree(const D3DXVECTOR3& a, const D3DXVECTOR3& b, float size)
{
    return LengthOf(a - b) <= kTolerance * std::max(size, LengthOf(b));
}

}  // namespace

ProbeScene::ProbeScene(SceneContainer& scene, const NodeWalk& walk, std::size_t start)
{
    std::unordered_map<int, int> probeOf;  // by node of the scene
    for (std::size_t i = start; i < walk.order.size(); ++i)
    {
        const int source = walk.order[i];
        const auto parent = probeOf.find(At(walk.parent, source));
        if (i > start && parent == probeOf.end())
            break;  // the nodes of a branch are consecutive in the order
        const int index = static_cast<int>(probe_.NodeLibrary.size());
        if (i > start)
            At(probe_.NodeLibrary, parent->second).ChildList.push_back(index);
        AddNode(At(scene.NodeLibrary, source).GetLocalTransform());
        probeOf.emplace(source, index);
    }
    probe_.SetRootNodeIndex(0);
    before_ = WorldCorners();
}

void ProbeScene::AddNode(const Importing::Transform& transform)
{
    const int index = static_cast<int>(probe_.NodeLibrary.size());
    Node& node = probe_.NodeLibrary.emplace_back();
    node.SetLocalTransform(transform);
    node.SurfaceList.push_back(index);
    probe_.GeometryLibrary.push_back(ProbeMesh());
    probe_.SurfaceLibrary.emplace_back().SetGeometryID(index);
}

bool ProbeScene::HasInitialPositions()
{
    const std::vector<D3DXVECTOR3> now = WorldCorners();
    constexpr std::size_t kCorners = 4;
    for (std::size_t mesh = 0; mesh < now.size(); mesh += kCorners)
    {
        float size = 0;
        for (std::size_t corner = 1; corner < kCorners; ++corner)
            size = std::max(size, LengthOf(before_[mesh + corner] - before_[mesh]));
        for (std::size_t corner = 0; corner < kCorners; ++corner)
        {
            // Offsets from the first corner are compared as well, so that the size of a small mesh far away matters.
            const D3DXVECTOR3 offset = now[mesh + corner] - now[mesh];
            const D3DXVECTOR3 offsetBefore = before_[mesh + corner] - before_[mesh];
            if (!Agree(now[mesh], before_[mesh], size) || !Agree(offset, offsetBefore, size))
                return false;
        }
    }
    return true;
}

std::vector<D3DXVECTOR3> ProbeScene::WorldCorners()
{
    const NodeWalk walk = WalkFromRoot(probe_);
    const std::vector<D3DXMATRIX> matrices = WorldMatricesOf(probe_, walk);
    std::vector<D3DXVECTOR3> corners;
    for (std::size_t node = 0; node < matrices.size(); ++node)
    {
        for (Importing::Vertex& vertex : probe_.GeometryLibrary[node].VertexArray)
        {
            D3DXVECTOR3 corner = vertex.GetPosition();
            corners.push_back(*D3DXVec3TransformCoord(&corner, &corner, &matrices[node]));
        }
    }
    return corners;
}

}  // namespace Pipeline

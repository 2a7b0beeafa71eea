#pragma once

#include <gtest/gtest.h>
#include <importing/base/CheckedAccess.h>
#include <importing/math/D3DXMath.h>
#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/Skeletons.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace SceneprepTests
{

/// The pose without animation: nodes and joints have their own transforms.
inline constexpr int kRest = -1;

/// Returns the local matrix of a node or joint in a pose: that of a key, counted from 0, or its own.
inline D3DXMATRIX PlaceAt(Importing::SceneContainer& scene, const D3DXMATRIX& rest, int animation, int pose)
{
    if (pose == kRest || !Importing::IsValidIndex(animation, scene.AnimationLibrary.size()))
        return rest;
    std::vector<Importing::Key>& keys = Importing::At(scene.AnimationLibrary, animation);
    return keys.empty() ? rest : keys[std::min(static_cast<std::size_t>(pose), keys.size() - 1)].GetMatrix();
}

/// Returns the world matrices [nodes].
inline std::vector<D3DXMATRIX> WorldsAt(Importing::SceneContainer& scene, const Pipeline::NodeWalk& walk, int pose)
{
    std::vector<D3DXMATRIX> worlds(scene.NodeLibrary.size());
    for (const int index : walk.order)
    {
        Importing::Node& node = Importing::At(scene.NodeLibrary, index);
        D3DXMATRIX& world = Importing::At(worlds, index);
        world = PlaceAt(scene, node.GetLocalTransform().GetMatrix(), node.GetAnimationID(), pose);
        const int parent = Importing::At(walk.parent, index);
        if (parent >= 0)
            world = Pipeline::Product(world, Importing::At(worlds, parent));
    }
    return worlds;
}

/// Returns the transforms [joints] relative to the node of the mesh.
inline std::vector<D3DXMATRIX> JointsAt(Importing::SceneContainer& scene, Importing::Geometry& geometry, int pose)
{
    const std::vector<int> parents = Pipeline::JointParents(geometry);
    std::vector<D3DXMATRIX> placed;
    for (std::size_t j = 0; j < parents.size(); ++j)
    {
        D3DXMATRIX matrix;
        D3DXMatrixIdentity(&matrix);
        for (int up = static_cast<int>(j); up >= 0; up = Importing::At(parents, up))
        {
            Importing::Joint& joint = Importing::At(geometry.JointArray, up);
            matrix = Pipeline::Product(matrix, PlaceAt(scene, joint.GetLocalTM(), joint.GetAnimationID(), pose));
        }
        placed.push_back(matrix);
    }
    return placed;
}

/// Returns the position of a vertex by its joints, each given as its inverse bind pose times its transform.
inline D3DXVECTOR3 Carried(Importing::Vertex& vertex, const std::vector<D3DXMATRIX>& joints)
{
    D3DXVECTOR3 sum(0, 0, 0);
    for (std::uint64_t w = 0; w < vertex.GetWeightsCount(); ++w)
    {
        const Importing::Vertex::Weight weight = vertex.GetWeight(w);
        const D3DXVECTOR3 position = vertex.GetPosition();
        D3DXVECTOR3 moved;
        D3DXVec3TransformCoord(&moved, &position, &joints.at(weight.first));
        sum = sum + moved * weight.second;
    }
    return sum;
}

/// World positions of vertices, by the name of their mesh.
using Shapes = std::map<std::string, std::vector<D3DXVECTOR3>>;

/// Returns the skinned meshes of a scene in a pose.
inline Shapes SkinnedShapes(Importing::SceneContainer& scene, int pose)
{
    const Pipeline::NodeWalk walk = Pipeline::WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> worlds = WorldsAt(scene, walk, pose);
    Shapes shapes;
    for (const Pipeline::SkinnedMesh& mesh : Pipeline::ListSkinnedMeshes(scene, walk))
    {
        Importing::Geometry& geometry = Importing::At(scene.GeometryLibrary, mesh.geometry);
        std::vector<D3DXMATRIX> joints = JointsAt(scene, geometry, pose);
        for (std::size_t j = 0; j < joints.size(); ++j)
        {
            const D3DXMATRIX bind =
                Pipeline::Product(geometry.GetBindShapeTransform(), geometry.JointArray[j].GetBindPoseInverse());
            joints[j] = Pipeline::Product(Pipeline::Product(bind, joints[j]), Importing::At(worlds, mesh.node));
        }
        for (Importing::Vertex& vertex : geometry.VertexArray)
            shapes[geometry.GetName()].push_back(Carried(vertex, joints));
    }
    return shapes;
}

/// Expects the same meshes with vertices at the same positions, to a ten-thousandth of the extent.
inline void ExpectSameShapes(const Shapes& actual, const Shapes& expected)
{
    float extent = 0;
    for (const auto& [name, vertices] : expected)
        for (const D3DXVECTOR3& v : vertices)
            extent = std::max({extent, std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)});
    ASSERT_EQ(actual.size(), expected.size());
    for (const auto& [name, vertices] : expected)
    {
        SCOPED_TRACE(name);
        ASSERT_EQ(actual.count(name), 1U);
        const std::vector<D3DXVECTOR3>& others = actual.at(name);
        ASSERT_EQ(others.size(), vertices.size());
        for (std::size_t v = 0; v < vertices.size(); ++v)
        {
            EXPECT_NEAR(others[v].x, vertices[v].x, 1e-4F * extent) << "vertex " << v;
            EXPECT_NEAR(others[v].y, vertices[v].y, 1e-4F * extent) << "vertex " << v;
            EXPECT_NEAR(others[v].z, vertices[v].z, 1e-4F * extent) << "vertex " << v;
        }
    }
}

}  // namespace SceneprepTests

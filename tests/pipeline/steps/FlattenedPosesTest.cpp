#include <pipeline/steps/FlattenScene.h>

#include <gtest/gtest.h>
#include <importing/base/CheckedAccess.h>
#include <importing/math/Products.h>
#include <pipeline/SkinnedShape.h>
#include <pipeline/TestScene.h>
#include <support/Random.h>

#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string>

namespace
{

using namespace Pipeline;
using Importing::At;
using PipelineTests::TestScene;
using SceneprepTests::kRest;

/// A triangle in the world.
struct WorldTriangle
{
    int material = -1;
    std::array<D3DXVECTOR3, 3> corners = {};
    D3DXVECTOR3 side = {};  ///< points to the side from which a viewer sees the triangle; as long as twice the area
};

/// By the number of the triangle, which its texture coordinates hold.
using World = std::map<int, WorldTriangle>;

/// A random tree: nodes that are animated or kept, transforms that scale, shear and mirror, meshes of a few triangles,
/// of which some are pinned.
class RandomTree
{
public:
    explicit RandomTree(std::uint32_t seed) : random_(seed)
    {
        const std::uint32_t nodes = 1 + random_.Below(40);
        for (std::uint32_t node = 0; node < nodes; ++node)
            AddNode(node);
        scene_.container.SetRootNodeIndex(0);
    }

    TestScene& Scene() { return scene_; }

private:
    D3DXVECTOR3 Vector(float min, float max)
    {
        const float x = random_.Between(min, max);
        const float y = random_.Between(min, max);
        return {x, y, random_.Between(min, max)};
    }

    Importing::Key Placement()
    {
        const D3DXVECTOR3 turn = Vector(-1, 1);
        const float length = std::sqrt(1 + turn.x * turn.x + turn.y * turn.y + turn.z * turn.z);
        Importing::Key key;
        key.SetRotation({turn.x / length, turn.y / length, turn.z / length, 1 / length});
        key.SetPosition(Vector(-3, 3));
        D3DXVECTOR3 scale = random_.OneIn(2) ? Vector(0.5F, 2) : D3DXVECTOR3(1, 1, 1);
        scale.x = random_.OneIn(4) ? -scale.x : scale.x;
        key.SetScale(scale);
        return key;
    }

    void AddNode(std::uint32_t index)
    {
        std::vector<Importing::Node>& nodes = scene_.container.NodeLibrary;
        Importing::Node node;
        node.SetName("N" + std::to_string(index));
        if (!random_.OneIn(3))
            node.SetLocalTransform(Importing::Transform(Placement().GetMatrix()));
        if (random_.OneIn(4))
            node.SetAnimationID(AddAnimation());
        for (std::uint32_t surface = random_.Below(4); surface > 0; --surface)
            node.SurfaceList.push_back(AddSurface());
        scene_.supplement.keptNodes.push_back(random_.OneIn(8));
        nodes.push_back(node);
        if (index > 0)
            nodes[random_.OneIn(2) ? index - 1 : random_.Below(index)].ChildList.push_back(
                static_cast<std::int32_t>(index));
    }

    int AddAnimation()
    {
        std::vector<Importing::Key> keys = {Placement(), Placement()};
        keys[1].SetTime(4800);
        scene_.container.AnimationLibrary.push_back(keys);
        return static_cast<int>(scene_.container.AnimationLibrary.size() - 1);
    }

    std::int32_t AddSurface()
    {
        Importing::Geometry mesh;
        for (std::uint32_t triangle = 1 + random_.Below(3); triangle > 0; --triangle)
        {
            for (int corner = 0; corner < 3; ++corner)
            {
                mesh.IndexArray.push_back(static_cast<std::uint32_t>(mesh.VertexArray.size()));
                Importing::Vertex& vertex = mesh.VertexArray.emplace_back(Vector(-2, 2));
                vertex.SetNormal(D3DXVECTOR3(0, 0, 1));
                vertex.SetTexCoord({static_cast<float>(triangles_), static_cast<float>(corner)}, 0);
            }
            ++triangles_;
        }
        Importing::SceneContainer& scene = scene_.container;
        Importing::Surface surface;
        surface.SetGeometryID(static_cast<int>(scene.GeometryLibrary.size()));
        surface.SetMaterialID(static_cast<int>(random_.Below(4)) - 1);
        scene.GeometryLibrary.push_back(mesh);
        scene.MaterialLibrary.resize(3);
        scene.SurfaceLibrary.push_back(surface);
        scene_.supplement.pinnedMeshes.push_back(random_.OneIn(6));
        return static_cast<std::int32_t>(scene.SurfaceLibrary.size() - 1);
    }

    Support::Random random_;
    TestScene scene_{Importing::SceneContainer{}};
    int triangles_ = 0;
};

D3DXVECTOR3 CornerAt(Importing::Vertex& vertex, const D3DXMATRIX& world)
{
    const D3DXVECTOR3 position = vertex.GetPosition();
    D3DXVECTOR3 moved;
    D3DXVec3TransformCoord(&moved, &position, &world);
    return moved;
}

void AddTriangles(const Importing::Surface& surface, Importing::Geometry& mesh, const D3DXMATRIX& matrix, World& world)
{
    for (std::size_t first = 0; first < mesh.IndexArray.size(); first += 3)
    {
        WorldTriangle triangle{surface.GetMaterialID(), {}, {}};
        std::array<D3DXVECTOR3, 3> wound = {};
        D3DXVECTOR2 mark = {};
        for (std::size_t i = 0; i < 3; ++i)
        {
            Importing::Vertex& vertex = mesh.VertexArray.at(mesh.IndexArray[first + i]);
            mark = vertex.GetTexCoord(0);
            wound[i] = CornerAt(vertex, matrix);
            triangle.corners.at(static_cast<std::size_t>(mark.y)) = wound[i];
        }
        const D3DXVECTOR3 cross = Importing::Cross(wound[1] - wound[0], wound[2] - wound[0]);
        triangle.side = IsMirroring(matrix) ? -cross : cross;
        EXPECT_TRUE(world.emplace(static_cast<int>(mark.x), triangle).second) << "a triangle is doubled";
    }
}

/// Returns what the scene shows in a pose: each triangle under the product of the matrices above it.
World WorldIn(Importing::SceneContainer& scene, int pose)
{
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> matrices = SceneprepTests::WorldsAt(scene, walk, pose);
    World world;
    for (const int node : walk.order)
    {
        for (const std::int32_t index : At(scene.NodeLibrary, node).SurfaceList)
        {
            const Importing::Surface& surface = At(scene.SurfaceLibrary, index);
            AddTriangles(surface, At(scene.GeometryLibrary, surface.GetGeometryID()), At(matrices, node), world);
        }
    }
    return world;
}

float LengthOf(const D3DXVECTOR3& v) { return std::sqrt(Importing::Dot(v, v)); }

void ExpectSame(const World& actual, const World& expected)
{
    float extent = 1;
    for (const auto& [number, triangle] : expected)
        for (const D3DXVECTOR3& corner : triangle.corners)
            extent = std::max(extent, LengthOf(corner));
    ASSERT_EQ(actual.size(), expected.size());
    for (const auto& [number, triangle] : expected)
    {
        SCOPED_TRACE("triangle " + std::to_string(number));
        ASSERT_EQ(actual.count(number), 1U);
        const WorldTriangle& other = actual.at(number);
        EXPECT_EQ(other.material, triangle.material);
        for (std::size_t corner = 0; corner < 3; ++corner)
            EXPECT_LT(LengthOf(other.corners[corner] - triangle.corners[corner]), 1e-5F * extent);
        EXPECT_LT(LengthOf(other.side - triangle.side), 1e-4F * (LengthOf(triangle.side) + extent * extent));
        if (LengthOf(triangle.side) > 0.1F)
        {
            EXPECT_GT(Importing::Dot(other.side, triangle.side), 0) << "the face is seen from the other side";
        }
    }
}

/// Expects that no node has two surfaces that could have been merged, and that no node is left over.
void ExpectCollapsed(TestScene& scene, bool ignoreAnimation)
{
    const NodeWalk walk = WalkFromRoot(scene.container);
    EXPECT_EQ(walk.order.size(), scene.container.NodeLibrary.size());
    for (const int index : walk.order)
    {
        const Importing::Node& node = At(scene.container.NodeLibrary, index);
        const auto position = static_cast<std::size_t>(index);
        const bool stays = walk.parent[position] < 0 || IsKept(scene.supplement, position) ||
                           (node.GetAnimationID() >= 0 && !ignoreAnimation);
        std::set<int> materials;
        for (const std::int32_t surface : node.SurfaceList)
        {
            const Importing::Surface& record = At(scene.container.SurfaceLibrary, surface);
            if (IsPinned(scene.supplement, static_cast<std::size_t>(record.GetGeometryID())))
                continue;
            EXPECT_TRUE(stays) << "a rigid surface is left on another node";
            EXPECT_TRUE(materials.insert(record.GetMaterialID()).second) << "surfaces are left unmerged";
        }
        EXPECT_TRUE(stays || !node.SurfaceList.empty() || !node.ChildList.empty()) << "an empty node is left";
    }
}

class FlattenedPosesTest : public testing::TestWithParam<std::uint32_t>
{};

TEST_P(FlattenedPosesTest, EveryPoseShowsTheSameTriangles)
{
    for (std::uint32_t seed = GetParam() * 50; seed < GetParam() * 50 + 50; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTree tree(seed);
        std::map<int, World> before;
        for (const int pose : {kRest, 0, 1})
            before[pose] = WorldIn(tree.Scene().container, pose);
        FlattenScene(tree.Scene());
        for (const int pose : {kRest, 0, 1})
        {
            SCOPED_TRACE("pose " + std::to_string(pose));
            ExpectSame(WorldIn(tree.Scene().container, pose), before[pose]);
        }
        ExpectCollapsed(tree.Scene(), false);
    }
}

TEST_P(FlattenedPosesTest, IgnoredAnimationKeepsThePoseAtRest)
{
    for (std::uint32_t seed = GetParam() * 50; seed < GetParam() * 50 + 50; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTree tree(seed);
        const World before = WorldIn(tree.Scene().container, kRest);
        FlattenScene(tree.Scene(), {.ignoreAnimation = true});
        ExpectSame(WorldIn(tree.Scene().container, kRest), before);
        ExpectCollapsed(tree.Scene(), true);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, FlattenedPosesTest, testing::Range(0U, 10U));

}  // namespace

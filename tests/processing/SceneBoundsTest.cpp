#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using namespace Importing;
using Support::MeshOf;
using Support::Scene;

constexpr float kLargest = std::numeric_limits<float>::max();

struct Bounds
{
    explicit Bounds(const SceneContainer& scene) { EXPECT_EQ(scene.GetBoundingBox(min, max), 0); }

    D3DXVECTOR3 min{7, 7, 7};
    D3DXVECTOR3 max{7, 7, 7};
};

TEST(SceneBounds, ASceneWithoutSurfacesHasInvertedBounds)
{
    for (const char* text : {"", "Root{eye}<sun>"})
    {
        const Bounds bounds(Scene(text));
        EXPECT_EQ(bounds.min, D3DXVECTOR3(kLargest, kLargest, kLargest));
        EXPECT_EQ(bounds.max, D3DXVECTOR3(-kLargest, -kLargest, -kLargest));
    }
}

TEST(SceneBounds, ContainAllReferencedSurfacesInWorldSpace)
{
    const Bounds bounds(Scene("Root@0,0,5[a]( A@10,0,0( B@0,20,0[b] ) )"));
    EXPECT_EQ(bounds.min, D3DXVECTOR3(1, 1, 6));
    EXPECT_EQ(bounds.max, D3DXVECTOR3(12, 22, 7));
}

TEST(SceneBounds, ContainOrphansAndEveryReferenceToASurface)
{
    const Bounds bounds(Scene("Root[a] | Orphan@-5,0,0[a]"));
    EXPECT_EQ(bounds.min, D3DXVECTOR3(-4, 1, 1));
    EXPECT_EQ(bounds.max, D3DXVECTOR3(2, 2, 2));
}

TEST(SceneBounds, ASurfaceThatNoNodeReferencesIsIgnored)
{
    SceneContainer scene = Scene("Root[a far]");
    MeshOf(scene, "far") = Support::BoxMesh({90, 90, 90}, {91, 91, 91});
    scene.NodeLibrary[0].SurfaceList = {0};
    EXPECT_EQ(Bounds(scene).max, D3DXVECTOR3(2, 2, 2));
}

TEST(SceneBounds, EncloseTheRotatedBoxAndNotTheMesh)
{
    constexpr float kHalf = 0.70710677F;
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a").VertexArray = {Vertex(1, 1, 1), Vertex(2, 2, 2)};  // After the rotation both are at x = 0.
    const D3DXMATRIX turn(kHalf, kHalf, 0, 0, -kHalf, kHalf, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    scene.NodeLibrary[0].SetLocalTransform(Transform(turn));
    const Bounds bounds(scene);
    EXPECT_FLOAT_EQ(bounds.min.x, -kHalf);
    EXPECT_FLOAT_EQ(bounds.max.x, kHalf);
    EXPECT_FLOAT_EQ(bounds.min.y, 2 * kHalf);
    EXPECT_FLOAT_EQ(bounds.max.y, 4 * kHalf);
}

TEST(SceneBounds, AMeshBelowZeroReachesUpToTheSmallestPositiveFloat)
{
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a") = Support::BoxMesh({-3, -3, -3}, {-2, -2, -2});
    EXPECT_EQ(Bounds(scene).max.x, std::numeric_limits<float>::min());
}

TEST(SceneBounds, ANegativeMeshIndexIsAnError)
{
    SceneContainer scene = Scene("Root[a b]");
    scene.SurfaceLibrary[1].SetGeometryID(-1);
    Support::ExpectBadIndex(scene, [&] {
        D3DXVECTOR3 min;
        D3DXVECTOR3 max;
        scene.GetBoundingBox(min, max);
    });
}

TEST(SceneBounds, ACycleAboveASurfaceThrows)
{
    SceneContainer scene = Scene("A( B( C[a] ) )");
    scene.NodeLibrary[1].ChildList.push_back(0);
    Support::ExpectCycle(scene, [&] {
        D3DXVECTOR3 min;
        D3DXVECTOR3 max;
        scene.GetBoundingBox(min, max);
    });
    Support::ExpectCycle(scene, [&] { scene.CalculateGlobalTM(2); });
}

TEST(SceneBounds, ACycleWithoutSurfacesIsNotAnError)
{
    const Bounds bounds(Scene("Root[a] | A( B( &A ) )"));
    EXPECT_EQ(bounds.max, D3DXVECTOR3(2, 2, 2));
}

TEST(SceneBounds, ACycleThatIsNotAboveASurfaceIsNotAnError)
{
    // Root and B both reference A. The first node that references a node is its parent.
    SceneContainer scene = Scene("Root@1,0,0( A@1,0,0( B@1,0,0[a]( &A ) ) )");
    EXPECT_EQ(Bounds(scene).max, D3DXVECTOR3(5, 2, 2));
    EXPECT_EQ(scene.CalculateGlobalTM(2)._41, 3);
}

TEST(SceneBounds, AMillionLevelsAreWalkedOnceAndDoNotOverflowTheStack)
{
    SceneContainer scene = Support::Chain(Support::kDeep);
    scene.GeometryLibrary.push_back(Support::UnitBox());
    scene.SurfaceLibrary.resize(1);
    scene.SurfaceLibrary[0].SetGeometryID(0);
    for (std::size_t i = 99; i < Support::kDeep; i += 100)
        scene.NodeLibrary[i].SurfaceList.push_back(0);
    const Bounds bounds(scene);
    EXPECT_EQ(bounds.min.x, 100);
    EXPECT_EQ(bounds.max.x, static_cast<float>(Support::kDeep) + 1);
    EXPECT_EQ(scene.CalculateGlobalTM(static_cast<int>(Support::kDeep) - 1)._41,
              static_cast<float>(Support::kDeep) - 1);
}

TEST(SceneBoundsOverrides, TheWorldMatrixIsReadOncePerReference)
{
    const Support::RecordingContainer scene(Scene("Root[a b]( A[c] B )"));
    const Bounds bounds(scene);
    EXPECT_EQ(scene.Calls({"CalculateGlobalTM", "FindParentNode"}),
              "CalculateGlobalTM(0) FindParentNode(0) CalculateGlobalTM(0) FindParentNode(0) "
              "CalculateGlobalTM(1) FindParentNode(1) CalculateGlobalTM(0) FindParentNode(0)");
}

TEST(SceneBoundsOverrides, AListThatAnOverrideShortensIsReadToItsNewEnd)
{
    class Shortening : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        D3DXMATRIX CalculateGlobalTM(int node) override
        {
            NodeLibrary[0].SurfaceList.resize(1);
            return SceneContainer::CalculateGlobalTM(node);
        }
    };
    const Shortening scene(Scene("Root[a b c]"));
    const Bounds bounds(scene);
    EXPECT_EQ(bounds.max, D3DXVECTOR3(2, 2, 2));
    EXPECT_EQ(scene.NodeLibrary[0].SurfaceList.size(), 1U);
}

}  // namespace

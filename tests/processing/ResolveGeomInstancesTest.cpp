#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::Scene;

std::vector<int> MeshesOf(SceneContainer& scene)
{
    EXPECT_EQ(scene.ResolveGeomInstances(), 0);
    std::vector<int> meshes;
    for (const Surface& surface : scene.SurfaceLibrary)
        meshes.push_back(surface.GetGeometryID());
    return meshes;
}

TEST(ResolveGeomInstances, SurfacesWithMeshesOfTheirOwnKeepThem)
{
    SceneContainer scene = Scene("Root[a b]( A[c] )");
    const SceneContainer before(scene);
    EXPECT_EQ(scene.ResolveGeomInstances(), 0);
    EXPECT_TRUE(Support::SameScene(scene, before));
}

TEST(ResolveGeomInstances, FirstSurfaceKeepsTheMeshAndTheSecondGetsACopy)
{
    SceneContainer scene = Scene("Root( A[x] B[a=mesh] C[b=mesh] )");
    scene.GeometryLibrary[1].GetHash();
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{0, 1, 2}));
    ASSERT_EQ(scene.GeometryLibrary.size(), 3U);
    EXPECT_EQ(scene.GeometryLibrary[2].GetName(), "mesh");
    EXPECT_TRUE(scene.GeometryLibrary[2].GetIsHashCodeValid());
    EXPECT_EQ(scene.GeometryLibrary[2].VertexArray.size(), 8U);
}

TEST(ResolveGeomInstances, NodesAreVisitedByIndexRegardlessOfTheHierarchy)
{
    SceneContainer scene = Scene("Leaf[a=mesh] | Root( &Leaf )");
    scene.NodeLibrary[1].SurfaceList = {0};
    scene.SurfaceLibrary.push_back(scene.SurfaceLibrary[0]);
    scene.NodeLibrary[0].SurfaceList = {1};
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{1, 0}));
}

TEST(ResolveGeomInstances, SurfacesOfANodeAreVisitedInListOrder)
{
    SceneContainer scene = Scene("Root[a=mesh b=mesh c=mesh]");
    scene.NodeLibrary[0].SurfaceList = {2, 0, 1};
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{1, 2, 0}));
}

TEST(ResolveGeomInstances, ASurfaceReferencedTwiceGetsACopyAtItsSecondReference)
{
    SceneContainer scene = Scene("Root[a]( A[a] )");
    EXPECT_EQ(MeshesOf(scene), std::vector<int>{1});
    EXPECT_EQ(scene.GeometryLibrary.size(), 2U);
}

TEST(ResolveGeomInstances, ASurfaceThatNoNodeReferencesKeepsItsMesh)
{
    SceneContainer scene = Scene("Root[a=mesh b=mesh]");
    scene.NodeLibrary[0].SurfaceList = {1};
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{0, 0}));
}

TEST(ResolveGeomInstances, ANegativeMeshIndexIsSkipped)
{
    SceneContainer scene = Scene("Root[a b c]");
    scene.SurfaceLibrary[0].SetGeometryID(-1);
    scene.SurfaceLibrary[1].SetGeometryID(-1);
    scene.SurfaceLibrary[2].SetGeometryID(-5);
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{-1, -1, -5}));
}

TEST(ResolveGeomInstances, OnlyASurfaceThatGetsACopyLosesItsHash)
{
    SceneContainer scene = Scene("Root[a=mesh b=mesh]");
    scene.SurfaceLibrary[0].GetHash();
    scene.SurfaceLibrary[1].GetHash();
    scene.ResolveGeomInstances();
    EXPECT_TRUE(scene.SurfaceLibrary[0].GetIsHashCodeValid());
    EXPECT_FALSE(scene.SurfaceLibrary[1].GetIsHashCodeValid());
}

TEST(ResolveGeomInstances, AllowsFlatteningToTransformSharedMeshesIndependently)
{
    SceneContainer scene = Scene("Root( A@10,0,0[a=mesh] B@20,0,0[b=mesh] )");
    scene.ResolveGeomInstances();
    scene.FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, 100, -1, true);
    EXPECT_EQ(Support::Low(Support::MeshOf(scene, "a")).x, 11);
    EXPECT_EQ(Support::Low(Support::MeshOf(scene, "b")).x, 21);
}

TEST(ResolveGeomInstances, ABadMeshIndexThatIsUsedOnceIsNotAnError)
{
    SceneContainer scene = Scene("Root[a=m b=m c d]");
    scene.SurfaceLibrary[2].SetGeometryID(99);
    scene.SurfaceLibrary[3].SetGeometryID(std::numeric_limits<int>::max());
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{0, 3, 99, std::numeric_limits<int>::max()}));
}

TEST(ResolveGeomInstances, ABadMeshIndexThatIsUsedTwiceIsRefusedBeforeAnythingChanges)
{
    for (const int mesh : {6, 99, std::numeric_limits<int>::max()})
    {
        SceneContainer scene = Scene("Root[a=m b=m c d]( A[e] )");
        scene.SurfaceLibrary[2].SetGeometryID(mesh);
        scene.SurfaceLibrary[3].SetGeometryID(mesh);
        Support::ExpectBadIndex(scene, [&] { scene.ResolveGeomInstances(); });
    }
    SceneContainer scene = Scene("Root[a=m b=m c]( A[c] )");
    scene.SurfaceLibrary[2].SetGeometryID(99);
    Support::ExpectBadIndex(scene, [&] { scene.ResolveGeomInstances(); });
}

TEST(ResolveGeomInstances, AMeshIndexThatACopyMakesValidIsCopiedAtItsSecondUse)
{
    SceneContainer scene = Scene("Root[a b=m c=m d=m]");
    scene.SurfaceLibrary[0].SetGeometryID(2);
    scene.SurfaceLibrary[3].SetGeometryID(2);
    ASSERT_EQ(scene.GeometryLibrary.size(), 2U);
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{2, 1, 2, 3}));
    EXPECT_EQ(scene.GeometryLibrary[3].GetName(), "m");
}

TEST(ResolveGeomInstances, ABadSurfaceIndexChangesNothing)
{
    SceneContainer scene = Scene("Root[a=mesh b=mesh]");
    scene.NodeLibrary[0].SurfaceList.push_back(2);
    Support::ExpectBadIndex(scene, [&] { scene.ResolveGeomInstances(); });
    scene.NodeLibrary[0].SurfaceList.back() = -1;
    Support::ExpectBadIndex(scene, [&] { scene.ResolveGeomInstances(); });
}

TEST(ResolveGeomInstancesOverrides, EveryCopyIsAnAddition)
{
    Support::RecordingContainer scene(Scene("Root[a=m b=m c=n]( A[d=n e=m] )"));
    scene.ResolveGeomInstances();
    EXPECT_EQ(scene.Calls({"AddGeometryToLibrary"}),
              R"(AddGeometryToLibrary("m",true) AddGeometryToLibrary("n",true) AddGeometryToLibrary("m",true))");
}

TEST(ResolveGeomInstancesOverrides, ABadMeshIndexIsRefusedAtItsSecondUse)
{
    Support::RecordingContainer scene(Scene("Root[a=m b=m c d]"));
    scene.SurfaceLibrary[2].SetGeometryID(99);
    scene.SurfaceLibrary[3].SetGeometryID(99);
    EXPECT_THROW(scene.ResolveGeomInstances(), std::out_of_range);
    EXPECT_EQ(scene.Calls({"AddGeometryToLibrary"}), R"(AddGeometryToLibrary("m",true))");
}

TEST(ResolveGeomInstancesOverrides, TheIndexThatAnOverrideReturnsIsUsed)
{
    class Elsewhere : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        int AddGeometryToLibrary(Geometry&, bool) override { return 42; }
    };
    Elsewhere scene(Scene("Root[a=m b=m]"));
    EXPECT_EQ(MeshesOf(scene), (std::vector<int>{0, 42}));
}

TEST(ResolveGeomInstancesOverrides, ANodeThatAnOverrideRemovesIsNotLookedUp)
{
    class Emptying : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        int AddGeometryToLibrary(Geometry&, bool) override
        {
            NodeLibrary.clear();
            return 0;
        }
    };
    Emptying scene(Scene("Root[a=m b=m c=m]"));
    EXPECT_THROW(scene.ResolveGeomInstances(), std::out_of_range);
}

}  // namespace

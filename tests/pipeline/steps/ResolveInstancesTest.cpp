#include <pipeline/steps/ResolveInstances.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;

TEST(ResolveInstances, SharedMeshesAreCopied)
{
    TestScene scene("Root( A[a=m] B[b=m] C[c=n] )");
    EXPECT_EQ(ResolveInstances(scene), (Changes{{"meshes copied", 1}}));
    EXPECT_EQ(scene.container.GetGeometryInstanceCount(0), 1);
    EXPECT_EQ(ResolveInstances(scene), (Changes{{"meshes copied", 0}}));
}

TEST(ResolveInstances, CopiesHaveTheEntriesOfTheirOriginals)
{
    TestScene scene("Root( A[a=m] B[b=n] C[c=n] )");
    scene.supplement.meshKeys = {7, 8};
    scene.supplement.pinnedMeshes = {false, true};
    scene.supplement.layouts = {{}, {.texCoordSets = 1}};
    ResolveInstances(scene);
    EXPECT_EQ(scene.container.GeometryLibrary.size(), 3U);
    EXPECT_EQ(scene.supplement.meshKeys, (std::vector<int>{7, 8, 8}));
    EXPECT_EQ(scene.supplement.pinnedMeshes, (std::vector<bool>{false, true, true}));
    EXPECT_EQ(scene.supplement.layouts.at(2).texCoordSets, 1);
}

TEST(ResolveInstances, MeshesWithEnoughUsesStayShared)
{
    TestScene scene("Root( A[a=m] B[b=m] C[c=m] D[d=n] E[e=n] F[f=o] )");
    EXPECT_EQ(ResolveInstances(scene, {.keepInstances = 3}),
              (Changes{{"meshes copied", 1}, {"meshes kept shared", 1}}));
    EXPECT_EQ(scene.supplement.sharedMeshes, (std::vector<bool>{true, false, false}));
    EXPECT_EQ(scene.container.GetGeometryInstanceCount(0), 3);
    EXPECT_EQ(scene.container.GetGeometryInstanceCount(1), 1);
    EXPECT_EQ(scene.container.GetGeometryInstanceCount(3), 1);
}

TEST(ResolveInstances, AMeshWithOneUseIsNotShared)
{
    TestScene scene("Root( A[a=m] B[b=n] C[c=n] )");
    ResolveInstances(scene, {.keepInstances = 1});
    EXPECT_EQ(scene.supplement.sharedMeshes, (std::vector<bool>{false, true}));
}

TEST(ResolveInstances, ASurfaceOfSeveralNodesBecomesSeveral)
{
    TestScene scene("Root( A[a] B C )");
    for (const char* node : {"B", "C"})
        Support::NodeNamed(scene.container, node).SurfaceList = {0};
    EXPECT_EQ(ResolveInstances(scene), (Changes{{"meshes copied", 2}}));
    for (int mesh = 0; mesh < 3; ++mesh)
        EXPECT_EQ(scene.container.GetGeometryInstanceCount(mesh), 1);
    EXPECT_EQ(scene.container.SurfaceLibrary.size(), 3U);
}

}  // namespace

#include <pipeline/steps/MakeNamesUnique.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;
using Support::ToText;

TEST(MakeNamesUnique, NamesOfNodesMeshesAndMaterialsBecomeDistinct)
{
    TestScene scene("Root( A[s=m:c] A[t=n:d] A )");
    scene.container.GeometryLibrary[1].SetName("m");
    scene.container.MaterialLibrary[1].SetName("c");
    EXPECT_EQ(MakeNamesUnique(scene), (Changes{{"nodes renamed", 2}, {"meshes renamed", 1}, {"materials renamed", 1}}));
    EXPECT_EQ(ToText(scene.container), "Root( A(2)[s] A(1)[t] A )");
    EXPECT_EQ(scene.container.GeometryLibrary[0].GetName(), "m(1)");
    EXPECT_EQ(scene.container.MaterialLibrary[1].GetName(), "c");
}

TEST(MakeNamesUnique, JointsAreRenamedWithTheirNodes)
{
    TestScene scene("Root( Ann( Hip@1,0,0 A[a] ) Bob@5,0,0( Hip@1,0,0 B[b] ) )");
    for (Importing::Geometry& geometry : scene.container.GeometryLibrary)
        geometry.JointArray.emplace_back(std::string("Hip")).SetLocalTM(Support::Translation(1, 0, 0));
    scene.container.GeometryLibrary[1].JointArray.emplace_back(std::string("Missing"));
    MakeNamesUnique(scene);
    EXPECT_EQ(ToText(scene.container), "Root( Ann( Hip(1) A[a] ) Bob( Hip B[b] ) )");
    EXPECT_EQ(scene.container.GeometryLibrary[0].JointArray[0].GetName(), "Hip(1)");
    EXPECT_EQ(scene.container.GeometryLibrary[1].JointArray[0].GetName(), "Hip");
    EXPECT_EQ(scene.container.GeometryLibrary[1].JointArray[1].GetName(), "Missing");
}

TEST(MakeNamesUnique, NamesOfSurfacesBecomeDistinct)
{
    TestScene scene("Root[a b c]");
    scene.container.SurfaceLibrary[2].SetName("a");
    EXPECT_EQ(MakeSurfaceNamesUnique(scene), (Changes{{"surfaces renamed", 1}}));
    EXPECT_EQ(scene.container.SurfaceLibrary[0].GetName(), "a(1)");
}

TEST(MakeNamesUnique, EmptiedSurfacesAreNotCounted)
{
    TestScene scene("Root[a=m:c b=n:c d=o:c]");
    scene.container.MergeSurfaces(0, 2, -1);
    EXPECT_EQ(MakeSurfaceNamesUnique(scene), (Changes{{"surfaces renamed", 0}}));
}

}  // namespace

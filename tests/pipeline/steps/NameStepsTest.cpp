#include <pipeline/steps/NameSteps.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;
using Support::ToText;

TEST(NameSteps, NamesOfNodesMeshesAndMaterialsBecomeDistinct)
{
    SceneContainer scene = Scene("Root( A[s=m:c] A[t=n:d] A )");
    scene.GeometryLibrary[1].SetName("m");
    scene.MaterialLibrary[1].SetName("c");
    EXPECT_EQ(MakeNamesUnique(scene), (Changes{{"nodes renamed", 2}, {"meshes renamed", 1}, {"materials renamed", 1}}));
    EXPECT_EQ(ToText(scene), "Root( A(2)[s] A(1)[t] A )");
    EXPECT_EQ(scene.GeometryLibrary[0].GetName(), "m(1)");
    EXPECT_EQ(scene.MaterialLibrary[1].GetName(), "c");
}

TEST(NameSteps, JointsTakeTheNamesOfTheirNodesAlong)
{
    SceneContainer scene = Scene("Root( Ann( Hip@1,0,0 A[a] ) Bob@5,0,0( Hip@1,0,0 B[b] ) )");
    for (Importing::Geometry& geometry : scene.GeometryLibrary)
        geometry.JointArray.emplace_back(std::string("Hip")).SetLocalTM(Support::Translation(1, 0, 0));
    scene.GeometryLibrary[1].JointArray.emplace_back(std::string("Nowhere"));
    MakeNamesUnique(scene);
    EXPECT_EQ(ToText(scene), "Root( Ann( Hip(1) A[a] ) Bob( Hip B[b] ) )");
    EXPECT_EQ(scene.GeometryLibrary[0].JointArray[0].GetName(), "Hip(1)");
    EXPECT_EQ(scene.GeometryLibrary[1].JointArray[0].GetName(), "Hip");
    EXPECT_EQ(scene.GeometryLibrary[1].JointArray[1].GetName(), "Nowhere");
}

TEST(NameSteps, SurfacesAreNamedAfterMeshAndMaterial)
{
    SceneContainer scene = Scene("Root[a=m:c b=n]");
    EXPECT_EQ(NameSurfaces(scene), (Changes{{"surfaces renamed", 2}}));
    EXPECT_EQ(scene.SurfaceLibrary[0].GetName(), "m\r\nc");
    EXPECT_EQ(scene.SurfaceLibrary[1].GetName(), "n\r\n");
    EXPECT_EQ(NameSurfaces(scene), (Changes{{"surfaces renamed", 0}}));
}

TEST(NameSteps, NamesOfSurfacesBecomeDistinct)
{
    SceneContainer scene = Scene("Root[a b c]");
    scene.SurfaceLibrary[2].SetName("a");
    EXPECT_EQ(MakeSurfaceNamesUnique(scene), (Changes{{"surfaces renamed", 1}}));
    EXPECT_EQ(scene.SurfaceLibrary[0].GetName(), "a(1)");
}

TEST(NameSteps, EmptiedSurfacesAreNotCounted)
{
    SceneContainer scene = Scene("Root[a=m:c b=n:c d=o:c]");
    scene.MergeSurfaces(0, 2, -1);
    EXPECT_EQ(MakeSurfaceNamesUnique(scene), (Changes{{"surfaces renamed", 0}}));
}

}  // namespace

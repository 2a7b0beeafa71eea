#include <pipeline/scene/SceneStats.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;

TEST(SceneStats, AnEmptySceneHasOnlyZeros)
{
    SceneContainer scene;
    EXPECT_EQ(CountScene(scene), SceneStats{});
}

TEST(SceneStats, CountsEveryKindOfRecord)
{
    SceneContainer scene = Scene("Root( A*[a=m:c b=m:d]{eye} B[e=n:c]<sun moon> )");
    scene.TextureLibrary.emplace_back("wood.png");
    scene.GeometryLibrary[1].JointArray.resize(3);
    const SceneStats stats = CountScene(scene);
    EXPECT_EQ(stats, (SceneStats{.nodes = 3,
                                 .surfaces = 3,
                                 .geometries = 2,
                                 .vertices = 16,
                                 .triangles = 24,
                                 .materials = 2,
                                 .textures = 1,
                                 .cameras = 1,
                                 .lights = 2,
                                 .joints = 3,
                                 .animations = 1}));
}

TEST(SceneStats, EmptiedSurfacesAndMeshesDoNotCount)
{
    SceneContainer scene = Scene("Root[a=m:c b=n:c]");
    scene.MergeSurfaces(0, 2, -1);
    const SceneStats stats = CountScene(scene);
    EXPECT_EQ(scene.SurfaceLibrary.size(), 2U);
    EXPECT_EQ(stats.surfaces, 1U);
    EXPECT_EQ(stats.geometries, 1U);
    EXPECT_EQ(stats.triangles, 24U);
}

TEST(SceneStats, UnusedAnimationsDoNotCount)
{
    SceneContainer scene = Scene("Root( A* B* )");
    Support::NodeNamed(scene, "A").SetAnimationID(-1);
    EXPECT_EQ(CountScene(scene).animations, 1U);
    scene.GeometryLibrary.emplace_back().JointArray.emplace_back().SetAnimationID(0);
    EXPECT_EQ(CountScene(scene).animations, 2U);
}

TEST(SceneStats, OnlyTrianglesCountAsTriangles)
{
    SceneContainer scene = Scene("Root[a]");
    scene.GeometryLibrary[0].SetPolySize(4);
    EXPECT_EQ(CountScene(scene).triangles, 0U);
}

TEST(SceneStats, RowsHaveNames)
{
    const auto rows = SceneStats{.nodes = 7, .animations = 9}.Rows();
    EXPECT_STREQ(rows.front().first, "nodes");
    EXPECT_EQ(rows.front().second, 7U);
    EXPECT_STREQ(rows.back().first, "animations");
    EXPECT_EQ(rows.back().second, 9U);
}

}  // namespace

#include <pipeline/scene/WorldMeasure.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;
using Corner = std::array<double, 3>;

TEST(WorldMeasure, ABoxHasItsBoundsAreaAndVolume)
{
    SceneContainer scene = Scene("Root[a]");
    const WorldMeasure world = Measure(scene);
    EXPECT_EQ(world.triangles, 12U);
    EXPECT_EQ(world.min, (Corner{1, 1, 1}));
    EXPECT_EQ(world.max, (Corner{2, 2, 2}));
    EXPECT_DOUBLE_EQ(world.area, 6);
    EXPECT_NEAR(world.volume, 1, 1e-12);
    EXPECT_DOUBLE_EQ(world.Diagonal(), std::sqrt(3.0));
    EXPECT_DOUBLE_EQ(world.Extent(), 2);
}

TEST(WorldMeasure, TransformsOfNodesAndRootCount)
{
    SceneContainer scene = Scene("Root@10,0,0( P@0,5,0( A[a] B@0,0,7[a] ) )");
    const WorldMeasure world = Measure(scene);
    EXPECT_EQ(world.triangles, 24U);
    EXPECT_EQ(world.min, (Corner{11, 6, 1}));
    EXPECT_EQ(world.max, (Corner{12, 7, 9}));
}

TEST(WorldMeasure, UnreachableNodesDoNotCount)
{
    SceneContainer scene = Scene("Root[a] | Lost[b]");
    EXPECT_EQ(Measure(scene).triangles, 12U);
}

TEST(WorldMeasure, MirroringKeepsTheVolumeAndFlippingNegatesIt)
{
    SceneContainer scene = Scene("Root( A[a] )");
    Support::NodeNamed(scene, "A").SetLocalTransform(Support::Scaling(-1, 1, 1));
    EXPECT_NEAR(Measure(scene).volume, 1, 1e-12);
    scene.GeometryLibrary[0].FlipFaces();
    EXPECT_NEAR(Measure(scene).volume, -1, 1e-12);
}

TEST(WorldMeasure, TrianglesWithoutAreaAndBrokenOnesAreCounted)
{
    SceneContainer scene = Scene("Root[a]");
    Importing::Geometry& mesh = scene.GeometryLibrary[0];
    mesh.IndexArray.insert(mesh.IndexArray.end(), {0, 0, 1});
    mesh.VertexArray.emplace_back(D3DXVECTOR3(std::numeric_limits<float>::quiet_NaN(), 0, 0));
    mesh.VertexArray.emplace_back(D3DXVECTOR3(std::numeric_limits<float>::infinity(), 0, 0));
    mesh.IndexArray.insert(mesh.IndexArray.end(), {0, 1, 8, 0, 1, 9});
    const WorldMeasure world = Measure(scene);
    EXPECT_EQ(world.triangles, 15U);
    EXPECT_EQ(world.degenerate, 1U);
    EXPECT_EQ(world.broken, 2U);
    EXPECT_EQ(world.max, (Corner{2, 2, 2}));
    EXPECT_DOUBLE_EQ(world.area, 6);
}

TEST(WorldMeasure, AnEmptySceneIsAllZero)
{
    SceneContainer scene;
    const WorldMeasure world = Measure(scene);
    EXPECT_EQ(world.triangles, 0U);
    EXPECT_EQ(world.min, Corner{});
    EXPECT_EQ(world.max, Corner{});
    EXPECT_EQ(world.Extent(), 0);
}

TEST(WorldMeasure, AnIndexWithoutVertexIsRefused)
{
    SceneContainer scene = Scene("Root[a]");
    scene.GeometryLibrary[0].IndexArray[4] = 8;
    EXPECT_THROW(Measure(scene), std::out_of_range);
}

TEST(WorldMeasure, ReportsProgressBySurfaces)
{
    SceneContainer scene = Scene("Root( A[a] B[a] )");
    std::vector<double> parts;
    Measure(scene, [&parts](double part) { parts.push_back(part); });
    EXPECT_EQ(parts, (std::vector<double>{0.5, 1}));
}

TEST(WorldMeasure, UnusedVerticesDoNotCount)
{
    SceneContainer scene = Scene("Root[a]");
    scene.GeometryLibrary[0].VertexArray.emplace_back(D3DXVECTOR3(9, 9, 9));
    EXPECT_EQ(Measure(scene).max, (Corner{2, 2, 2}));
}

TEST(NotesOnTriangles, CountBrokenAndDegenerateTriangles)
{
    EXPECT_TRUE(NotesOnTriangles({.triangles = 5}).empty());
    EXPECT_EQ(NotesOnTriangles({.triangles = 5, .degenerate = 2, .broken = 1}),
              (std::vector<std::string>{"triangles have infinite or NaN positions (1)", "triangles have no area (2)"}));
}

}  // namespace

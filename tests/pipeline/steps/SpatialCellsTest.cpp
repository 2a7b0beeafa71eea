#include <pipeline/steps/SpatialCells.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>

#include <limits>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;

std::vector<int> CellsIn(TestScene& scene, double size)
{
    return FindCells(scene.container, WalkFromRoot(scene.container), size);
}

TEST(SpatialCells, AreThoseOfTheCentresInTheWorld)
{
    // The centre of each mesh is at 1.5 of its node.
    TestScene scene("Root@10,0,0( A[a] B@-1,0,0( C@0.75,0,0[b] ) D@0.5,0,0[c] E@0,-2,0[d] )");
    EXPECT_EQ(CellsIn(scene, 1), (std::vector<int>{0, 0, 1, 2}));
    EXPECT_EQ(CellsIn(scene, 100), (std::vector<int>{0, 0, 0, 1})) << "0 is the border of two cells";
    EXPECT_EQ(CellsIn(scene, 0.5), (std::vector<int>{0, 1, 2, 3}));
}

TEST(SpatialCells, SurfacesWithoutANodeHaveNone)
{
    TestScene scene("Root[a] | Orphan[b]");
    EXPECT_EQ(CellsIn(scene, 1), (std::vector<int>{0, -1}));
}

TEST(SpatialCells, PositionsThatAreNotFiniteShareACell)
{
    TestScene scene("Root[a b c]");
    for (const char* name : {"a", "c"})
        Support::MeshOf(scene.container, name)
            .VertexArray[0]
            .SetPosition(D3DXVECTOR3(0, std::numeric_limits<float>::infinity(), 0));
    EXPECT_EQ(CellsIn(scene, 1), (std::vector<int>{0, 1, 0}));
}

TEST(SpatialCells, SplitListsInTheOrderOfTheCells)
{
    EXPECT_EQ(SplitByCell({3, 0, 1, 2}, {7, 5, 7, 5}), (std::vector<std::vector<std::int32_t>>{{3, 1}, {0, 2}}));
    EXPECT_EQ(SplitByCell({3, 0}, {}), (std::vector<std::vector<std::int32_t>>{{3, 0}}));
}

}  // namespace

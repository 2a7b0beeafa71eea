#include <sceneprep/export/CutMesh.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <stdexcept>

namespace
{

using namespace Sceneprep;
using Importing::Geometry;
using Support::UnitBox;

std::vector<D3DXVECTOR3> Corners(Geometry& mesh)
{
    std::vector<D3DXVECTOR3> corners;
    for (const std::uint32_t index : mesh.IndexArray)
        corners.push_back(mesh.VertexArray.at(index).GetPosition());
    return corners;
}

TEST(CutMesh, PartsHaveTheTrianglesOfTheMesh)
{
    Geometry box = UnitBox();
    for (const std::size_t largest : {3U, 4U, 5U, 7U, 8U})
    {
        std::vector<D3DXVECTOR3> corners;
        for (Geometry& part : CutMesh(box, largest))
        {
            EXPECT_FALSE(IsLargerThan(largest, part)) << largest;
            const std::vector<D3DXVECTOR3> more = Corners(part);
            corners.insert(corners.end(), more.begin(), more.end());
        }
        EXPECT_EQ(corners, Corners(box)) << largest;
    }
}

TEST(CutMesh, PartsAreAsLargeAsTheLimitAllows)
{
    Geometry box = UnitBox();
    EXPECT_EQ(CutMesh(box, 12).size(), 1U);
    const std::vector<Geometry> parts = CutMesh(box, 8);  // room for all vertices, but not for all triangles
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].IndexArray.size(), 24U);
    EXPECT_EQ(parts[1].IndexArray.size(), 12U);
}

TEST(CutMesh, PartsKeepTheName)
{
    Geometry box = UnitBox();
    box.SetName("box");
    for (Geometry& part : CutMesh(box, 3))
        EXPECT_EQ(part.GetName(), "box");
}

TEST(CutMesh, AnEmptyMeshHasNoParts)
{
    Geometry empty;
    EXPECT_TRUE(CutMesh(empty, 3).empty());
}

TEST(CutMesh, AnInvalidIndexIsRefused)
{
    Geometry box = UnitBox();
    box.IndexArray[4] = 8;
    EXPECT_THROW(CutMesh(box, 100), std::out_of_range);
}

TEST(CutMesh, TheLimitIsForVerticesAndTriangles)
{
    Geometry box = UnitBox();
    EXPECT_TRUE(IsLargerThan(11, box));
    EXPECT_FALSE(IsLargerThan(12, box));
    box.IndexArray.resize(3);
    EXPECT_TRUE(IsLargerThan(7, box));
    EXPECT_FALSE(IsLargerThan(8, box));
}

}  // namespace

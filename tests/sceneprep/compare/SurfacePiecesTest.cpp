#include <gtest/gtest.h>
#include <sceneprep/compare/SurfacePieces.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

using namespace Sceneprep;
using Importing::Geometry;

/// A triangle with normals and one UV set.
Geometry Triangle()
{
    Geometry geometry;
    geometry.VertexArray = {{0, 0, 0}, {3, 0, 0}, {0, 3, 0}};
    for (std::size_t v = 0; v < 3; ++v)
    {
        geometry.VertexArray[v].SetNormal(D3DXVECTOR3(0, 0, 1));
        geometry.VertexArray[v].SetTexCoord({static_cast<float>(v), 0.5F}, 0);
    }
    geometry.IndexArray = {0, 1, 2};
    return geometry;
}

D3DXMATRIX Scaling(float x, float y, float z)
{
    D3DXMATRIX matrix;
    return *D3DXMatrixScaling(&matrix, x, y, z);
}

Piece PieceOf(Geometry geometry, const D3DXMATRIX& world = Scaling(1, 1, 1), const Pipeline::VertexLayout& layout = {},
              const IgnoredAttributes& ignored = {})
{
    std::vector<Piece> pieces;
    SurfacePieces(ignored).Add(geometry, layout, world, 7, pieces);
    EXPECT_EQ(pieces.size(), 1U);
    return pieces.empty() ? Piece() : pieces.front();
}

TEST(SurfacePiecesTest, ATriangleHasCentreAreaAndLook)
{
    const Piece piece = PieceOf(Triangle());
    EXPECT_EQ(piece.center, (std::array<float, 3>{1, 1, 0}));
    EXPECT_EQ(piece.across, (std::array<float, 3>{0, 0, 9}));
    EXPECT_NEAR(piece.size, std::sqrt(12.0), 1e-6);
    EXPECT_EQ(LookOf(piece), 7U);
    EXPECT_FALSE(IsFlat(piece));
}

TEST(SurfacePiecesTest, TheOrderOfTheCornersDoesNotMatter)
{
    Geometry turned = Triangle();
    turned.IndexArray = {1, 2, 0};
    const Piece piece = PieceOf(Triangle());
    const Piece same = PieceOf(turned);
    EXPECT_NEAR(same.normals, piece.normals, 1e-6);
    EXPECT_NEAR(same.texCoords, piece.texCoords, 1e-6);
    EXPECT_EQ(same.across, piece.across);
}

TEST(SurfacePiecesTest, ValuesThatChangePlacesDoMatter)
{
    Geometry swapped = Triangle();
    std::swap(swapped.VertexArray[0], swapped.VertexArray[1]);
    swapped.VertexArray[0].SetPosition(D3DXVECTOR3(0, 0, 0));
    swapped.VertexArray[1].SetPosition(D3DXVECTOR3(3, 0, 0));
    EXPECT_GT(std::fabs(PieceOf(swapped).texCoords - PieceOf(Triangle()).texCoords), 0.1);
}

TEST(SurfacePiecesTest, MirroringFlipsTheWindingAsViewersDo)
{
    const Piece mirrored = PieceOf(Triangle(), Scaling(-1, 1, 1));
    EXPECT_EQ(mirrored.across, (std::array<float, 3>{0, 0, 9}));
    EXPECT_EQ(mirrored.center, (std::array<float, 3>{-1, 1, 0}));
}

TEST(SurfacePiecesTest, NormalsFollowTheInverseTranspose)
{
    Geometry sloped = Triangle();
    for (Importing::Vertex& vertex : sloped.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(1, 0, 1));
    Geometry expected = Triangle();
    for (Importing::Vertex& vertex : expected.VertexArray)
    {
        vertex.SetNormal(D3DXVECTOR3(1, 0, 2));
        const D3DXVECTOR3 position = vertex.GetPosition();
        vertex.SetPosition(D3DXVECTOR3(2 * position.x, position.y, position.z));
    }
    EXPECT_NEAR(PieceOf(sloped, Scaling(2, 1, 1)).normals, PieceOf(expected).normals, 1e-6);
}

TEST(SurfacePiecesTest, MeshesWithoutNormalsAreFlat)
{
    Geometry bare = Triangle();
    for (Importing::Vertex& vertex : bare.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    EXPECT_TRUE(IsFlat(PieceOf(bare)));
    EXPECT_NEAR(PieceOf(bare).normals, PieceOf(Triangle()).normals, 1e-6);
}

TEST(SurfacePiecesTest, WhiteAndZeroAreWhatMeshesWithoutColoursHave)
{
    Geometry painted = Triangle();
    for (Importing::Vertex& vertex : painted.VertexArray)
    {
        vertex.SetTexCoord({1, 1}, 1);
        vertex.SetTexCoord({1, 1}, 2);
        vertex.SetTexCoord({0, 0}, 3);
    }
    Pipeline::VertexLayout layout{.texCoordSets = 1, .attributes = {{"COLOR_0", 1, 4}, {"_HEAT", 3, 1}}};
    EXPECT_EQ(PieceOf(painted, Scaling(1, 1, 1), layout).others, PieceOf(Triangle()).others);
    painted.VertexArray[2].SetTexCoord({1, 254.0F / 255}, 1);
    EXPECT_GT(std::fabs(PieceOf(painted, Scaling(1, 1, 1), layout).others), 4e-4);
}

TEST(SurfacePiecesTest, IgnoredAttributesAreNotTaken)
{
    const Piece piece = PieceOf(Triangle(), Scaling(1, 1, 1), {}, {.normals = true, .texCoordSets = {0}});
    EXPECT_TRUE(std::isnan(piece.normals));
    EXPECT_TRUE(std::isnan(piece.tangents));
    EXPECT_EQ(piece.texCoords, 0);
}

TEST(SurfacePiecesTest, BrokenAndEmptyTrianglesAreNotTaken)
{
    Geometry geometry = Triangle();
    geometry.VertexArray.push_back(Importing::Vertex(std::numeric_limits<float>::quiet_NaN(), 0, 0));
    geometry.IndexArray = {0, 1, 3, 0, 1, 1};
    std::vector<Piece> pieces;
    EXPECT_EQ(SurfacePieces().Add(geometry, {}, Scaling(1, 1, 1), 0, pieces).broken, 1U);
    EXPECT_TRUE(pieces.empty());
}

TEST(SurfacePiecesTest, LinesAndPointsArePieces)
{
    Geometry lines = Triangle();
    lines.SetPolySize(2);
    lines.IndexArray = {0, 1};
    EXPECT_EQ(PieceOf(lines).center, (std::array<float, 3>{1.5F, 0, 0}));
    lines.SetPolySize(1);
    lines.IndexArray = {2};
    EXPECT_EQ(PieceOf(lines).center, (std::array<float, 3>{0, 3, 0}));
}

TEST(SurfacePiecesTest, ReportsNoiseWhereLargeNumbersCancelOut)
{
    Geometry far = Triangle();
    for (Importing::Vertex& vertex : far.VertexArray)
        vertex.SetPosition(vertex.GetPosition() + D3DXVECTOR3(1e6F, 0, 0));
    D3DXMATRIX back;
    D3DXMatrixTranslation(&back, -1e6F, 0, 0);
    std::vector<Piece> pieces;
    EXPECT_GT(SurfacePieces().Add(far, {}, back, 0, pieces).noise, 0.5);
    EXPECT_EQ(SurfacePieces().Add(far, {}, Scaling(1, 1, 1), 0, pieces).noise, 0);
}

}  // namespace

#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

#include <limits>

namespace
{

using namespace Importing;
using namespace Support;

using Indices = std::vector<std::uint32_t>;

constexpr D3DXVECTOR3 kUp(0, 0, 1);
constexpr D3DXVECTOR3 kDown(0, 0, -1);

int UnifyNormals(Geometry& mesh) { return mesh.UnifyNormals(false); }
int UnifyNormalsSuppressed(Geometry& mesh) { return mesh.UnifyNormals(true); }
int FixFaceCulling(Geometry& mesh) { return mesh.FixFaceCulling(false); }
int FixFaceCullingSuppressed(Geometry& mesh) { return mesh.FixFaceCulling(true); }

/// Returns the triangle of Triangle(), which faces +z, with a normal for each corner.
Geometry TriangleOf(const D3DXVECTOR3& n0, const D3DXVECTOR3& n1, const D3DXVECTOR3& n2)
{
    Geometry mesh = Triangle();
    mesh.VertexArray[0].SetNormal(n0);
    mesh.VertexArray[1].SetNormal(n1);
    mesh.VertexArray[2].SetNormal(n2);
    return mesh;
}

Geometry WithPolySizeFour(Geometry mesh)
{
    mesh.SetPolySize(4);
    return mesh;
}

// ---- FlipNormals

TEST(FlipNormals, NegatesEveryComponentExactly)
{
    Geometry mesh = TriangleOf(D3DXVECTOR3(1, -2, 3), D3DXVECTOR3(0, -0.0F, 0.5F), kUp);
    EXPECT_EQ(mesh.FlipNormals(), 0);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(-1, 2, -3)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[1].GetNormal(), D3DXVECTOR3(-0.0F, 0, -0.5F)));
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2}));
}

TEST(FlipNormals, KeepsTheHashOfTheMeshAndInvalidatesThoseOfItsVertices)
{
    Geometry mesh = Quad();
    const std::uint32_t hash = mesh.GetHash();
    mesh.FlipNormals();
    EXPECT_TRUE(mesh.GetIsHashCodeValid());
    EXPECT_EQ(mesh.GetHash(), hash);
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_FALSE(vertex.GetIsHashCodeValid());
}

TEST(FlipNormals, PolySizeDoesNotMatter)
{
    Geometry mesh = WithPolySizeFour(Quad());
    EXPECT_EQ(mesh.FlipNormals(), 0);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(-0.0F, -0.0F, -1)));
}

TEST(FlipNormals, MatchesTheModel) { ExpectLikeModel(&Geometry::FlipNormals, &Models::FlipNormals); }

// ---- FlipFaces

TEST(FlipFaces, SwapsTheSecondAndThirdIndexOfEveryTriangle)
{
    Geometry mesh = MeshOf({}, {0, 1, 2, 3, 4, 5});
    EXPECT_EQ(mesh.FlipFaces(), 0);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 2, 1, 3, 5, 4}));
}

TEST(FlipFaces, BadIndicesAreSwappedToo)
{
    Geometry mesh = MeshOf({}, {0xFFFFFFFFU, 7, 0x80000000U});
    EXPECT_EQ(mesh.FlipFaces(), 0);
    EXPECT_EQ(mesh.IndexArray, (Indices{0xFFFFFFFFU, 0x80000000U, 7}));
}

TEST(FlipFaces, PolySizeFourIsRefused)
{
    ExpectUntouched(WithPolySizeFour(Quad()), -1, &Geometry::FlipFaces);
    ExpectUntouched(WithPolySizeFour(MeshOf({}, {0, 1, 2, 3, 4})), -1, &Geometry::FlipFaces);
}

TEST(FlipFaces, KeepsAllHashes)
{
    Geometry mesh = Hashed(Quad());
    Geometry expected = mesh;
    expected.IndexArray = {0, 2, 1, 0, 3, 2};
    mesh.FlipFaces();
    EXPECT_TRUE(SameGeometry(mesh, expected));
    EXPECT_TRUE(mesh.GetIsHashCodeValid());
}

TEST(FlipFaces, OneTrailingIndexIsKept)
{
    Geometry mesh = MeshOf({}, {0, 1, 2, 3});
    EXPECT_EQ(mesh.FlipFaces(), 0);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 2, 1, 3}));
}

TEST(FlipFaces, SecondCornerWithoutAThirdIsRefused)
{
    ExpectBadSubscript(Hashed(MeshOf({}, {0, 1, 2, 3, 4})), &Geometry::FlipFaces);
    ExpectBadSubscript(Hashed(MeshOf({}, {0, 1})), &Geometry::FlipFaces);
}

TEST(FlipFaces, SecondCallRestoresTheMesh)
{
    Geometry mesh = Cube8();
    mesh.FlipFaces();
    mesh.FlipFaces();
    EXPECT_TRUE(SameGeometry(mesh, Cube8()));
}

TEST(FlipFaces, PolySizeIsReadThroughTheVirtualTable)
{
    MeshOfPolySize returnsFour(Triangle(), 4);
    EXPECT_EQ(returnsFour.FlipFaces(), -1);
    EXPECT_EQ(returnsFour.IndexArray, (Indices{0, 1, 2}));
    MeshOfPolySize returnsThree(WithPolySizeFour(Triangle()), 3);
    EXPECT_EQ(returnsThree.FlipFaces(), 0);
    EXPECT_EQ(returnsThree.IndexArray, (Indices{0, 2, 1}));
}

TEST(FlipFaces, MatchesTheModel) { ExpectLikeModel(&Geometry::FlipFaces, &Models::FlipFaces); }

// ---- UnifyNormals

TEST(UnifyNormals, FlipsNormalsThatPointAgainstTheirTriangle)
{
    Geometry mesh = Triangle(kDown);
    EXPECT_EQ(mesh.UnifyNormals(false), 0);
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_TRUE(SameFloats(vertex.GetNormal(), D3DXVECTOR3(-0.0F, -0.0F, 1)));
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2}));
}

TEST(UnifyNormals, FlipsOnlyTheNormalThatDisagrees)
{
    Geometry mesh = Hashed(TriangleOf(kDown, kUp, kUp));
    Geometry expected = mesh;
    expected.VertexArray[0].SetNormal(D3DXVECTOR3(-0.0F, -0.0F, 1));
    mesh.UnifyNormals(false);
    EXPECT_TRUE(SameGeometry(mesh, expected));
}

TEST(UnifyNormals, PerpendicularNormalsDoNotChange)
{
    ExpectUntouched(Triangle(D3DXVECTOR3(1, 0, 0)), 0, UnifyNormals);
    ExpectUntouched(Triangle(D3DXVECTOR3(0, -1, -0.0F)), 0, UnifyNormals);
}

TEST(UnifyNormals, NormalsOfADegenerateTriangleDoNotChange)
{
    Geometry mesh = Triangle(kDown);
    mesh.VertexArray[2].SetPosition(D3DXVECTOR3(2, 0, 0));
    ExpectUntouched(mesh, 0, UnifyNormals);
}

TEST(UnifyNormals, NaNNormalsDoNotChange)
{
    ExpectUntouched(Triangle(D3DXVECTOR3(0, 0, std::numeric_limits<float>::quiet_NaN())), 0, UnifyNormals);
}

TEST(UnifyNormals, InfiniteNormalIsFlippedLikeAnyOther)
{
    const float infinity = std::numeric_limits<float>::infinity();
    Geometry mesh = TriangleOf(D3DXVECTOR3(0, 0, -infinity), kUp, kUp);
    mesh.UnifyNormals(false);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(-0.0F, -0.0F, infinity)));
}

TEST(UnifyNormals, LastTriangleThatDisagreesDecidesForASharedVertex)
{
    Geometry mesh = Triangle(kUp);
    mesh.IndexArray = {0, 1, 2, 0, 2, 1};
    mesh.UnifyNormals(false);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(-0.0F, -0.0F, -1)));
    mesh.IndexArray = {0, 2, 1, 0, 1, 2};
    mesh.UnifyNormals(false);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1)));
}

TEST(UnifyNormals, FlippedNormalIsTestedAgainAtEveryCorner)
{
    Geometry mesh = Triangle(kDown);
    mesh.IndexArray = {0, 1, 2, 0, 1, 2, 0, 2, 1};
    mesh.UnifyNormals(false);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[1].GetNormal(), kDown));
}

TEST(UnifyNormals, NormalsNeedNotHaveUnitLength)
{
    Geometry mesh = Triangle(D3DXVECTOR3(5, 5, -0.001F));
    mesh.UnifyNormals(false);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(-5, -5, 0.001F)));
}

TEST(UnifyNormals, ProductsAreSummedInTheOrderYXZ)
{
    // The triangle's normal is (1, 1, 1): (-1e8 + 1e8) - 1 is below 0. The 1 is lost if it is added to a large term.
    Geometry mesh = MeshOf({{0, 0, 0}, {1, -1, 0}, {0, 1, -1}}, {0, 1, 2});
    for (Vertex& vertex : mesh.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(1e8F, -1e8F, -1));
    mesh.UnifyNormals(false);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(-1e8F, 1e8F, 1)));
}

TEST(UnifyNormals, TrailingIndicesAreIgnored)
{
    Geometry mesh = MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 2, 99, 99});
    ExpectUntouched(mesh, 0, UnifyNormals);
    ExpectUntouched(MeshOf({}, {99, 99}), 0, UnifyNormals);
}

TEST(UnifyNormals, SuppressedChangesNothingAndKeepsAllHashes)
{
    ExpectUntouched(Triangle(kDown), 0, UnifyNormalsSuppressed);
}

TEST(UnifyNormals, PolySizeFourIsRefused)
{
    ExpectUntouched(WithPolySizeFour(Triangle(kDown)), -1, UnifyNormals);
    ExpectUntouched(WithPolySizeFour(Triangle(kDown)), -1, UnifyNormalsSuppressed);
}

TEST(UnifyNormals, PolySizeIsReadThroughTheVirtualTable)
{
    MeshOfPolySize returnsFour(Triangle(kDown), 4);
    EXPECT_EQ(returnsFour.UnifyNormals(false), -1);
    EXPECT_EQ(returnsFour.VertexArray[0].GetNormal(), kDown);
    MeshOfPolySize returnsThree(WithPolySizeFour(Triangle(kDown)), 3);
    EXPECT_EQ(returnsThree.UnifyNormals(false), 0);
    EXPECT_EQ(returnsThree.VertexArray[0].GetNormal(), kUp);
}

TEST(UnifyNormals, KeepsTheHashOfTheMeshAndInvalidatesThoseOfFlippedVertices)
{
    Geometry mesh = Hashed(TriangleOf(kDown, kUp, kUp));
    mesh.UnifyNormals(false);
    EXPECT_TRUE(mesh.GetIsHashCodeValid());
    EXPECT_FALSE(mesh.VertexArray[0].GetIsHashCodeValid());
    EXPECT_TRUE(mesh.VertexArray[1].GetIsHashCodeValid());
}

TEST(UnifyNormals, EveryBadIndexIsRefusedBeforeAnythingChanges)
{
    Geometry mesh = Quad();
    mesh.FlipNormals();
    ExpectEveryBadIndexRefused(Hashed(mesh), 6, UnifyNormals);
    ExpectEveryBadIndexRefused(Hashed(mesh), 6, UnifyNormalsSuppressed);
}

TEST(UnifyNormals, MatchesTheModel)
{
    ExpectLikeModel(UnifyNormals, [](Geometry& mesh) { return Models::UnifyNormals(mesh, false); });
    ExpectLikeModel(UnifyNormalsSuppressed, [](Geometry& mesh) { return Models::UnifyNormals(mesh, true); });
}

// ---- FixFaceCulling

TEST(FixFaceCulling, FlipsATriangleThatAllItsNormalsPointAgainst)
{
    Geometry mesh = Hashed(Triangle(kDown));
    Geometry expected = mesh;
    expected.IndexArray = {0, 2, 1};
    EXPECT_EQ(mesh.FixFaceCulling(false), 0);
    EXPECT_TRUE(SameGeometry(mesh, expected));
}

TEST(FixFaceCulling, OneOrTwoDisagreeingCornersDoNotFlipTheTriangle)
{
    ExpectUntouched(TriangleOf(kDown, kUp, kUp), 0, FixFaceCulling);
    ExpectUntouched(TriangleOf(kDown, kDown, kUp), 0, FixFaceCulling);
    ExpectUntouched(TriangleOf(kUp, kDown, kDown), 0, FixFaceCulling);
    ExpectUntouched(TriangleOf(kUp, kUp, kUp), 0, FixFaceCulling);
}

TEST(FixFaceCulling, PerpendicularNormalIsNotAgainst)
{
    ExpectUntouched(TriangleOf(kDown, kDown, D3DXVECTOR3(1, 0, 0)), 0, FixFaceCulling);
    ExpectUntouched(Triangle(D3DXVECTOR3(0, 1, 0)), 0, FixFaceCulling);
}

TEST(FixFaceCulling, DegenerateTriangleDoesNotChange)
{
    Geometry mesh = Triangle(kDown);
    mesh.VertexArray[1].SetPosition(D3DXVECTOR3(0, 0, 0));
    ExpectUntouched(mesh, 0, FixFaceCulling);
}

TEST(FixFaceCulling, NaNNormalIsNotAgainst)
{
    const D3DXVECTOR3 nan(std::numeric_limits<float>::quiet_NaN(), 0, -1);
    ExpectUntouched(TriangleOf(kDown, nan, kDown), 0, FixFaceCulling);
}

TEST(FixFaceCulling, InfiniteNormalIsTestedLikeAnyOther)
{
    const float infinity = std::numeric_limits<float>::infinity();
    Geometry mesh = TriangleOf(kDown, D3DXVECTOR3(0, 0, -infinity), kDown);
    mesh.FixFaceCulling(false);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 2, 1}));
}

TEST(FixFaceCulling, MeshWithoutFacesDoesNotChange)
{
    ExpectUntouched(Geometry(), 0, FixFaceCulling);
    ExpectUntouched(MeshOf({}, {99, 99}), 0, FixFaceCulling);
}

TEST(FixFaceCulling, EveryTriangleIsTestedIndependently)
{
    Geometry mesh = Triangle(kDown);
    mesh.IndexArray = {0, 1, 2, 0, 2, 1, 1, 2, 0};
    mesh.FixFaceCulling(false);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 2, 1, 0, 2, 1, 1, 0, 2}));
}

TEST(FixFaceCulling, TrailingIndicesAreIgnored)
{
    Geometry mesh = Triangle(kDown);
    mesh.IndexArray = {0, 1, 2, 99, 98};
    EXPECT_EQ(mesh.FixFaceCulling(false), 0);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 2, 1, 99, 98}));
}

TEST(FixFaceCulling, SuppressedChangesNothingAndKeepsAllHashes)
{
    ExpectUntouched(Triangle(kDown), 0, FixFaceCullingSuppressed);
}

TEST(FixFaceCulling, PolySizeFourIsRefused)
{
    ExpectUntouched(WithPolySizeFour(Triangle(kDown)), -1, FixFaceCulling);
    ExpectUntouched(WithPolySizeFour(Triangle(kDown)), -1, FixFaceCullingSuppressed);
}

TEST(FixFaceCulling, PolySizeIsReadThroughTheVirtualTable)
{
    MeshOfPolySize returnsFour(Triangle(kDown), 4);
    EXPECT_EQ(returnsFour.FixFaceCulling(false), -1);
    EXPECT_EQ(returnsFour.IndexArray, (Indices{0, 1, 2}));
    MeshOfPolySize returnsThree(WithPolySizeFour(Triangle(kDown)), 3);
    EXPECT_EQ(returnsThree.FixFaceCulling(false), 0);
    EXPECT_EQ(returnsThree.IndexArray, (Indices{0, 2, 1}));
}

TEST(FixFaceCulling, EveryBadIndexIsRefusedBeforeAnythingChanges)
{
    Geometry mesh = Quad();
    mesh.FlipNormals();
    ExpectEveryBadIndexRefused(Hashed(mesh), 6, FixFaceCulling);
    ExpectEveryBadIndexRefused(Hashed(mesh), 6, FixFaceCullingSuppressed);
}

TEST(FixFaceCulling, MatchesTheModel)
{
    ExpectLikeModel(FixFaceCulling, [](Geometry& mesh) { return Models::FixFaceCulling(mesh, false); });
    ExpectLikeModel(FixFaceCullingSuppressed, [](Geometry& mesh) { return Models::FixFaceCulling(mesh, true); });
}

}  // namespace

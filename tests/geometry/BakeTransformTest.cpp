#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

namespace
{

using namespace Importing;
using namespace Support;

constexpr D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
constexpr D3DXMATRIX kDoubled(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1);
constexpr D3DXMATRIX kMoved(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1);

/// Returns the identity with one entry -0, which still compares equal to 0.
D3DXMATRIX IdentityWithNegativeZero()
{
    D3DXMATRIX matrix = kIdentity;
    matrix(3, 0) = -0.0F;
    return matrix;
}

D3DXVECTOR3 TransformedNormal(const D3DXVECTOR3& normal, const D3DXMATRIX& matrix)
{
    Geometry mesh = Triangle(normal);
    EXPECT_EQ(mesh.Transform(matrix), 0);
    return mesh.VertexArray[2].GetNormal();
}

TEST(BakeTransform, IdentityChangesNothingAndKeepsTheHash)
{
    ExpectUntouched(Quad(), 0, [](Geometry& mesh) { return mesh.Transform(kIdentity); });
}

TEST(BakeTransform, IdentityKeepsNegativeZeros)
{
    const Geometry mesh = MeshOf({{-0.0F, -0.0F, -0.0F}}, {});
    ExpectUntouched(mesh, 0, [](Geometry& m) { return m.Transform(kIdentity); });
}

TEST(BakeTransform, MatrixWithANegativeZeroIsNotTheIdentity)
{
    Geometry mesh = Hashed(MeshOf({{-0.0F, 1, 2}}, {}));
    mesh.VertexArray[0].SetNormal(D3DXVECTOR3(0, 0, 1));
    EXPECT_EQ(mesh.Transform(IdentityWithNegativeZero()), 0);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetPosition(), D3DXVECTOR3(0, 1, 2)));
}

TEST(BakeTransform, AnyOtherMatrixInvalidatesTheHashOfAMeshWithoutVertices)
{
    Geometry mesh = Hashed(Geometry());
    EXPECT_EQ(mesh.Transform(kMoved), 0);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
}

TEST(BakeTransform, UniformScaleDoublesPositionsAndKeepsNormals)
{
    Geometry mesh = Quad();
    EXPECT_EQ(mesh.Transform(kDoubled), 0);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetPosition(), D3DXVECTOR3(2, 4, 0)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetNormal(), D3DXVECTOR3(0, 0, 1)));
}

TEST(BakeTransform, TranslationMovesOnlyPositions)
{
    Geometry mesh = Quad();
    mesh.Transform(kMoved);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetPosition(), D3DXVECTOR3(4, 6, 7)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1)));
}

TEST(BakeTransform, MirroringMirrorsNormals)
{
    const D3DXMATRIX mirror(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -3, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameFloats(TransformedNormal(D3DXVECTOR3(0, 0, 1), mirror), D3DXVECTOR3(0, 0, -1)));
}

TEST(BakeTransform, NormalsLoseTheScaleOfEachRowAndAreNotRenormalised)
{
    const D3DXMATRIX stretched(4, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameFloats(TransformedNormal(D3DXVECTOR3(3, 4, 0), stretched), D3DXVECTOR3(3, 4, 0)));
}

TEST(BakeTransform, NormalsAreSheared)
{
    const D3DXMATRIX sheared(1, 0, 0, 0, 3, 4, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameFloats(TransformedNormal(D3DXVECTOR3(0, 1, 0), sheared), D3DXVECTOR3(3.0F / 5, 4.0F / 5, 0)));
}

TEST(BakeTransform, RowOfZerosFlattensNormalsToo)
{
    const D3DXMATRIX flattened(1, 0, 0, 0, 0, 1, 0, 0, 0, -0.0F, 0, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameFloats(TransformedNormal(D3DXVECTOR3(0, 0, 1), flattened), D3DXVECTOR3(0, 0, 0)));
}

TEST(BakeTransform, PositionsAreDividedByW)
{
    D3DXMATRIX half = kIdentity;
    half(3, 3) = 2;
    Geometry mesh = Quad();
    mesh.Transform(half);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetPosition(), D3DXVECTOR3(0.5F, 1, 0)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetNormal(), D3DXVECTOR3(0, 0, 1)));
}

TEST(BakeTransform, InvalidatesTheHashesOfMeshAndVertices)
{
    Geometry mesh = Hashed(Quad());
    mesh.Transform(kMoved);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_FALSE(vertex.GetIsHashCodeValid());
}

TEST(BakeTransform, KeepsThePointCacheJointsAndBindShape)
{
    Geometry mesh = Quad();
    mesh.PointCachePositions.assign(4, D3DXVECTOR3(1, 2, 3));
    mesh.PointCacheNormals.assign(4, D3DXVECTOR3(0, 1, 0));
    mesh.JointArray.emplace_back("hip");
    mesh.Transform(kMoved);
    EXPECT_EQ(mesh.PointCachePositions, std::vector<D3DXVECTOR3>(4, D3DXVECTOR3(1, 2, 3)));
    EXPECT_EQ(mesh.PointCacheNormals, std::vector<D3DXVECTOR3>(4, D3DXVECTOR3(0, 1, 0)));
    EXPECT_TRUE(mesh.JointArray.front() == Joint("hip"));
    EXPECT_TRUE(SameFloats(mesh.GetBindShapeTransform(), kIdentity));
}

TEST(BakeTransform, PolySizeDoesNotMatter)
{
    Geometry mesh = Quad();
    mesh.SetPolySize(4);
    EXPECT_EQ(mesh.Transform(kDoubled), 0);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetPosition(), D3DXVECTOR3(2, 4, 0)));
}

TEST(BakeTransform, InvalidatesThroughTheVirtualTableOnce)
{
    MeshOfCountedHash mesh(Quad());
    mesh.Transform(kIdentity);
    mesh.TransformUVs(kIdentity, 0);
    EXPECT_EQ(mesh.GetInvalidations(), 0);
    mesh.Transform(kMoved);
    EXPECT_EQ(mesh.GetInvalidations(), 1);
    mesh.TransformUVs(kMoved, 0);
    EXPECT_EQ(mesh.GetInvalidations(), 2);
}

TEST(BakeTransform, MatchesTheModel)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const D3DXMATRIX matrix = RandomMatrix(seed);
        ASSERT_TRUE(SameOutcome(
            RandomMesh(seed), [&](Geometry& mesh) { return mesh.Transform(matrix); },
            [&](Geometry& mesh) { return Models::Transform(mesh, matrix); }))
            << "seed " << seed;
    }
}

TEST(TransformUVs, IdentityChangesNothingAndKeepsTheHash)
{
    ExpectUntouched(Quad(), 0, [](Geometry& mesh) { return mesh.TransformUVs(kIdentity, 0); });
}

TEST(TransformUVs, IdentityIgnoresANegativeSet)
{
    ExpectUntouched(Box24(), 0, [](Geometry& mesh) { return mesh.TransformUVs(kIdentity, -1); });
}

TEST(TransformUVs, TransformsTheSetAsPointsAndKeepsTheOthers)
{
    Geometry mesh = Hashed(Box24());
    mesh.VertexArray[2].SetTexCoord(D3DXVECTOR2(3, 4), 1);
    EXPECT_EQ(mesh.TransformUVs(kMoved, 1), 0);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetTexCoord(1), D3DXVECTOR2(8, 10)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetTexCoord(0), D3DXVECTOR2(1, 1)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[2].GetPosition(), Box24().VertexArray[2].GetPosition()));
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    EXPECT_FALSE(mesh.VertexArray[5].GetIsHashCodeValid());
}

TEST(TransformUVs, AddsMissingSetsAsZero)
{
    Geometry mesh = Quad();
    EXPECT_EQ(mesh.TransformUVs(kMoved, 1), 0);
    EXPECT_EQ(mesh.VertexArray[0].GetTexCoordCount(), 2U);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetTexCoord(0), D3DXVECTOR2(0, 0)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetTexCoord(1), D3DXVECTOR2(5, 6)));
}

TEST(TransformUVs, InvalidatesTheHashOfAMeshWithoutVertices)
{
    Geometry mesh = Hashed(Geometry());
    EXPECT_EQ(mesh.TransformUVs(kMoved, -1), 0);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
}

TEST(TransformUVs, NegativeSetIsRefused)
{
    ExpectTooLong(Hashed(Box24()), [](Geometry& mesh) { mesh.TransformUVs(kMoved, -1); });
    ExpectTooLong(Hashed(Quad()), [](Geometry& mesh) { mesh.TransformUVs(kMoved, -2147483647 - 1); });
}

TEST(TransformUVs, MatchesTheModel)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const D3DXMATRIX matrix = RandomMatrix(seed);
        const int set = static_cast<int>(seed % 5);
        ASSERT_TRUE(SameOutcome(
            RandomMesh(seed), [&](Geometry& mesh) { return mesh.TransformUVs(matrix, set); },
            [&](Geometry& mesh) { return Models::TransformUVs(mesh, matrix, set); }))
            << "seed " << seed;
    }
}

}  // namespace

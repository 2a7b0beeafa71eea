#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

#include <string>

namespace
{

using namespace Importing;
using namespace Support;

constexpr D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
constexpr D3DXMATRIX kMoved(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1);

using Indices = std::vector<std::uint32_t>;

/// Tests of both forms of Append.
enum class Form
{
    Plain,
    WithMatrix
};

class AppendBothForms : public testing::TestWithParam<Form>
{
protected:
    static int Append(Geometry& mesh, const Geometry& other)
    {
        return GetParam() == Form::Plain ? mesh.Append(other) : mesh.Append(other, kIdentity);
    }
};

INSTANTIATE_TEST_SUITE_P(Append, AppendBothForms, testing::Values(Form::Plain, Form::WithMatrix), [](const auto& form) {
    return std::string(form.param == Form::Plain ? "Plain" : "WithMatrix");
});

TEST_P(AppendBothForms, ShiftsIndicesToTheAppendedVertices)
{
    Geometry mesh = Quad();
    EXPECT_EQ(Append(mesh, Triangle()), 0);
    EXPECT_EQ(mesh.VertexArray.size(), 7U);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 0, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(SameVertex(mesh.VertexArray[3], Quad().VertexArray[3]));
    EXPECT_TRUE(SameVertex(mesh.VertexArray[5], Triangle().VertexArray[1]));
}

TEST_P(AppendBothForms, ToAnEmptyMeshCopiesVerticesAndIndices)
{
    Geometry mesh;
    EXPECT_EQ(Append(mesh, Quad()), 0);
    EXPECT_TRUE(SameGeometry(mesh, Quad()));
}

TEST_P(AppendBothForms, OfAnEmptyMeshReturnsZeroAndInvalidatesTheHash)
{
    Geometry mesh = Hashed(Quad());
    EXPECT_EQ(Append(mesh, Geometry()), 0);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
    EXPECT_TRUE(mesh.VertexArray[0].GetIsHashCodeValid());
}

TEST_P(AppendBothForms, OfVerticesWithoutIndicesInvalidatesTheHash)
{
    Geometry mesh = Hashed(Quad());
    EXPECT_EQ(Append(mesh, MeshOf({{1, 2, 3}}, {})), 0);
    EXPECT_EQ(mesh.VertexArray.size(), 5U);
    EXPECT_EQ(mesh.IndexArray, Quad().IndexArray);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
}

TEST_P(AppendBothForms, OfAnotherPolySizeReturnsMinusOneAndChangesNothing)
{
    Geometry quads = Quad();
    quads.SetPolySize(4);
    ExpectUntouched(Triangle(), -1, [&](Geometry& mesh) { return Append(mesh, quads); });
    ExpectUntouched(quads, -1, [&](Geometry& mesh) { return Append(mesh, Triangle()); });
}

TEST_P(AppendBothForms, OfTheSamePolySizeOtherThanThreeWorks)
{
    Geometry mesh = Quad();
    mesh.SetPolySize(4);
    const Geometry other = mesh;
    EXPECT_EQ(Append(mesh, other), 0);
    EXPECT_EQ(mesh.VertexArray.size(), 8U);
}

TEST_P(AppendBothForms, DoesNotChangeTheOtherMesh)
{
    Geometry mesh = Quad();
    const Geometry other = Hashed(Box24());
    Append(mesh, other);
    EXPECT_TRUE(SameGeometry(other, Hashed(Box24())));
}

TEST_P(AppendBothForms, KeepsNameBindShapeJointsAndPointCacheOfBothMeshes)
{
    Geometry mesh = Quad();
    mesh.SetName("mesh");
    mesh.JointArray.emplace_back("hip");
    mesh.PointCachePositions.assign(4, D3DXVECTOR3(1, 2, 3));
    mesh.PointCacheNormals.assign(4, D3DXVECTOR3(0, 1, 0));
    Geometry other = Triangle();
    other.SetName("other");
    other.SetBindShapeTransform(kMoved);
    other.JointArray.assign(2, Joint("knee"));
    other.PointCachePositions.assign(3, D3DXVECTOR3(4, 5, 6));
    other.PointCacheNormals.assign(3, D3DXVECTOR3(1, 0, 0));

    Geometry expected = mesh;
    expected.VertexArray.insert(expected.VertexArray.end(), other.VertexArray.begin(), other.VertexArray.end());
    expected.IndexArray.insert(expected.IndexArray.end(), {4, 5, 6});
    const Geometry otherBefore = other;

    EXPECT_EQ(Append(mesh, other), 0);
    EXPECT_TRUE(SameGeometry(mesh, expected));
    EXPECT_TRUE(SameGeometry(other, otherBefore));
}

TEST_P(AppendBothForms, ShiftsBadIndicesWithoutChecksAndWrapping)
{
    Geometry mesh = Quad();
    EXPECT_EQ(Append(mesh, MeshOf({{0, 0, 0}}, {7, 0xFFFFFFFFU, 0xFFFFFFFCU})), 0);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 0, 2, 3, 11, 3, 0}));
}

TEST_P(AppendBothForms, ToItselfDoublesTheMesh)
{
    Geometry mesh = Hashed(Quad());
    EXPECT_EQ(Append(mesh, mesh), 0);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7}));
    ASSERT_EQ(mesh.VertexArray.size(), 8U);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(SameFloats(mesh.VertexArray[i + 4].GetPosition(), mesh.VertexArray[i].GetPosition()));
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
}

TEST_P(AppendBothForms, ReadsThePolySizeOfTheOtherMeshThroughTheVirtualTable)
{
    Geometry mesh = Quad();
    const MeshOfPolySize returnsFour(Triangle(), 4);
    EXPECT_EQ(Append(mesh, returnsFour), -1);
    EXPECT_TRUE(SameGeometry(mesh, Quad()));
    EXPECT_EQ(returnsFour.GetCalls(), 1);

    Geometry storesFour = Triangle();
    storesFour.SetPolySize(4);
    EXPECT_EQ(Append(mesh, MeshOfPolySize(storesFour, 3)), 0);
}

TEST_P(AppendBothForms, ReadsItsOwnPolySizeAsStored)
{
    MeshOfPolySize mesh(Quad(), 4);
    EXPECT_EQ(Append(mesh, Triangle()), 0);
    EXPECT_EQ(mesh.GetCalls(), 0);
}

TEST_P(AppendBothForms, InvalidatesThroughTheVirtualTable)
{
    MeshOfCountedHash mesh(Quad());
    Append(mesh, Triangle());
    EXPECT_EQ(mesh.GetInvalidations(), 1);
    Append(mesh, Geometry());
    EXPECT_EQ(mesh.GetInvalidations(), 2);
}

TEST_P(AppendBothForms, RepeatedCallsKeepGrowing)
{
    Geometry mesh;
    for (std::uint32_t i = 0; i < 100; ++i)
        ASSERT_EQ(Append(mesh, Triangle()), 0);
    ASSERT_EQ(mesh.VertexArray.size(), 300U);
    EXPECT_EQ(mesh.IndexArray.back(), 299U);
}

TEST(Append, CopiesTheHashStateOfVertices)
{
    Geometry mesh = Quad();
    mesh.Append(Hashed(Triangle()));
    EXPECT_FALSE(mesh.VertexArray[0].GetIsHashCodeValid());
    EXPECT_TRUE(mesh.VertexArray[4].GetIsHashCodeValid());
}

TEST(Append, KeepsNegativeZeros)
{
    Geometry mesh;
    mesh.Append(MeshOf({{-0.0F, 1, 2}}, {}));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetPosition(), D3DXVECTOR3(-0.0F, 1, 2)));
}

TEST(AppendWithMatrix, TransformsOnlyAppendedVertices)
{
    Geometry mesh = Hashed(Quad());
    EXPECT_EQ(mesh.Append(Triangle(), kMoved), 0);
    EXPECT_TRUE(SameVertex(mesh.VertexArray[0], Hashed(Quad()).VertexArray[0]));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[5].GetPosition(), D3DXVECTOR3(6, 6, 7)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[5].GetNormal(), D3DXVECTOR3(0, 0, 1)));
}

TEST(AppendWithMatrix, IdentityKeepsPositionsAndNormals)
{
    Geometry mesh;
    mesh.Append(Box24(), kIdentity);
    for (std::size_t i = 0; i < 24; ++i)
    {
        EXPECT_EQ(mesh.VertexArray[i].GetPosition(), Box24().VertexArray[i].GetPosition());
        EXPECT_EQ(mesh.VertexArray[i].GetNormal(), Box24().VertexArray[i].GetNormal());
    }
}

TEST(AppendWithMatrix, HasNoShortcutForTheIdentity)
{
    Geometry other = MeshOf({{-0.0F, 1, 2}}, {});
    other.VertexArray[0].SetNormal(D3DXVECTOR3(-0.0F, -0.0F, 1));
    Geometry mesh;
    mesh.Append(Hashed(other), kIdentity);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetPosition(), D3DXVECTOR3(0, 1, 2)));
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1)));
    EXPECT_FALSE(mesh.VertexArray[0].GetIsHashCodeValid());
}

TEST(AppendWithMatrix, TransformsNormalsByTheNormalMatrix)
{
    const D3DXMATRIX stretched(4, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 9, 9, 9, 1);
    Geometry mesh;
    mesh.Append(Triangle(D3DXVECTOR3(3, 0, 4)), stretched);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(3, 0, -4)));
}

TEST(Append, MatchesTheModel)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const Geometry other = RandomMesh(seed + 1000);
        ASSERT_TRUE(SameOutcome(
            RandomMesh(seed), [&](Geometry& mesh) { return mesh.Append(other); },
            [&](Geometry& mesh) { return Models::Append(mesh, other); }))
            << "seed " << seed;
    }
}

TEST(AppendWithMatrix, MatchesTheModel)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const Geometry other = RandomMesh(seed + 2000);
        const D3DXMATRIX matrix = RandomMatrix(seed);
        ASSERT_TRUE(SameOutcome(
            RandomMesh(seed), [&](Geometry& mesh) { return mesh.Append(other, matrix); },
            [&](Geometry& mesh) { return Models::Append(mesh, other, matrix); }))
            << "seed " << seed;
    }
}

}  // namespace

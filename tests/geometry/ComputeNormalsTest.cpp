#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

#include <bit>
#include <cmath>
#include <limits>

namespace
{

using namespace Importing;
using namespace Support;

using Indices = std::vector<std::uint32_t>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

Geometry WithNormals(Geometry mesh)
{
    EXPECT_EQ(mesh.ComputeNormals(), 0);
    return mesh;
}

D3DXVECTOR3 NormalOf(const Geometry& mesh, std::size_t vertex)
{
    return Vertex(mesh.VertexArray.at(vertex)).GetNormal();
}

D3DXVECTOR3 NormalOfFace(const Geometry& mesh, std::size_t face)
{
    const auto position = [&](std::size_t corner) {
        return Vertex(mesh.VertexArray.at(mesh.IndexArray.at(3 * face + corner))).GetPosition();
    };
    const D3DXVECTOR3 a = position(1) - position(0);
    const D3DXVECTOR3 b = position(2) - position(0);
    D3DXVECTOR3 normal(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    return *D3DXVec3Normalize(&normal, &normal);
}

/// Returns the angle in degrees by which a normal of a fan or a wedge is rotated about its edge.
float AngleOf(const D3DXVECTOR3& normal)
{
    EXPECT_NEAR(normal.y, 0, 1e-6);
    return std::atan2(normal.x, normal.z) * 180 / 3.14159265F;
}

TEST(ComputeNormals, TrianglesOfOnePlaneShareTheFaceNormal)
{
    Geometry mesh = Quad();
    for (Vertex& vertex : mesh.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(1, 2, 3));
    mesh = WithNormals(mesh);
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
    EXPECT_EQ(mesh.IndexArray, Quad().IndexArray);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(SameFloats(NormalOf(mesh, i), D3DXVECTOR3(0, 0, 1)));
}

TEST(ComputeNormals, CornersOfACubeAreSplit)
{
    const Geometry mesh = WithNormals(Cube8());
    EXPECT_GT(mesh.VertexArray.size(), 8U);
    ASSERT_EQ(mesh.IndexArray.size(), 36U);
    for (std::size_t corner = 0; corner < 36; ++corner)
    {
        const std::uint32_t vertex = mesh.IndexArray[corner];
        EXPECT_TRUE(SameFloats(NormalOf(mesh, vertex), NormalOfFace(mesh, corner / 3))) << "corner " << corner;
        const std::uint32_t original = Cube8().IndexArray[corner];
        EXPECT_EQ(Vertex(mesh.VertexArray[vertex]).GetPosition(), Cube8().VertexArray[original].GetPosition());
    }
}

TEST(ComputeNormals, SplitVerticesAreAppendedInTheOrderOfCreation)
{
    const Geometry mesh = WithNormals(Cube8());
    std::uint32_t next = 8;
    for (std::size_t corner = 0; corner < mesh.IndexArray.size(); ++corner)
    {
        if (mesh.IndexArray[corner] == Cube8().IndexArray[corner])
            continue;
        EXPECT_EQ(mesh.IndexArray[corner], next) << "corner " << corner;
        ++next;
    }
    EXPECT_EQ(mesh.VertexArray.size(), next);
}

TEST(ComputeNormals, FacesAtThirtyDegreesAreBlended)
{
    const Geometry mesh = WithNormals(Wedge(30));
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
    EXPECT_EQ(mesh.IndexArray, Wedge(30).IndexArray);
    EXPECT_NEAR(AngleOf(NormalOf(mesh, 0)), 15, 1e-4);
    EXPECT_NEAR(AngleOf(NormalOf(mesh, 1)), 15, 1e-4);
    EXPECT_NEAR(AngleOf(NormalOf(mesh, 2)), 0, 1e-4);
    EXPECT_NEAR(AngleOf(NormalOf(mesh, 3)), 30, 1e-4);
}

TEST(ComputeNormals, FacesAtFortyDegreesAreSplit)
{
    const Geometry mesh = WithNormals(Wedge(40));
    EXPECT_EQ(mesh.VertexArray.size(), 6U);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 4, 5, 3}));
    EXPECT_EQ(NormalOf(mesh, 0), D3DXVECTOR3(0, 0, 1));
    EXPECT_EQ(NormalOf(mesh, 1), D3DXVECTOR3(0, 0, 1));
    for (const std::size_t split : {3U, 4U, 5U})
        EXPECT_NEAR(AngleOf(NormalOf(mesh, split)), 40, 1e-4);
}

TEST(ComputeNormals, DotProductEqualToTheThresholdSplits)
{
    // The second face's normal is (0.6, 0, 0.8), so that the dot product with (0, 0, 1) is the threshold, bit for bit.
    Geometry atThreshold = Wedge(0);
    atThreshold.VertexArray[3].SetPosition(D3DXVECTOR3(4, 0, -3));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(NormalOfFace(atThreshold, 1).z), 0x3F4CCCCDU);
    EXPECT_EQ(WithNormals(atThreshold).VertexArray.size(), 6U);

    Geometry justAbove = Wedge(0);
    justAbove.VertexArray[3].SetPosition(D3DXVECTOR3(4.00001F, 0, -3));
    EXPECT_EQ(WithNormals(justAbove).VertexArray.size(), 4U);
}

TEST(ComputeNormals, FacesThatFoldBackAreSplit)
{
    EXPECT_EQ(WithNormals(Wedge(180)).VertexArray.size(), 6U);
    EXPECT_EQ(WithNormals(Wedge(90)).VertexArray.size(), 6U);
}

TEST(ComputeNormals, SplitCopiesKeepEverythingButTheNormal)
{
    Geometry mesh = Wedge(40);
    mesh.VertexArray[1].SetTexCoord(D3DXVECTOR2(0.25F, 0.75F), 2);
    mesh.VertexArray[1].AddWeight(3, 0.5F);
    mesh = WithNormals(mesh);
    Vertex expected = mesh.VertexArray[1];
    expected.SetNormal(NormalOf(mesh, 4));
    EXPECT_TRUE(SameVertex(mesh.VertexArray[4], expected));
}

TEST(ComputeNormals, FacesAreComparedWithTheRunningNormal)
{
    // 45 degrees is within the threshold of 15, the blend of 0 and 30, but not of the first face.
    const Geometry blended = WithNormals(Fan({0, 30, 45}));
    EXPECT_EQ(blended.VertexArray.size(), 5U);
    // -20 degrees is within the threshold of the first face, but not of 17.5, the blend of 0 and 35.
    const Geometry split = WithNormals(Fan({0, 35, -20}));
    EXPECT_EQ(split.VertexArray.size(), 7U);
    EXPECT_NEAR(AngleOf(NormalOf(split, 0)), 17.5, 1e-4);
}

TEST(ComputeNormals, EachFaceHasAsMuchWeightAsAllFacesBeforeIt)
{
    const Geometry mesh = WithNormals(Fan({0, 30, 45}));
    EXPECT_NEAR(AngleOf(NormalOf(mesh, 0)), 30, 1e-4);
    EXPECT_NEAR(AngleOf(NormalOf(mesh, 1)), 30, 1e-4);
}

TEST(ComputeNormals, ResultDependsOnTheOrderOfTheFaces)
{
    const Geometry mesh = WithNormals(Fan({45, 30, 5}));
    EXPECT_EQ(mesh.VertexArray.size(), 5U);
    EXPECT_NEAR(AngleOf(NormalOf(mesh, 0)), 21.25, 1e-4);
    EXPECT_NEAR(AngleOf(NormalOf(WithNormals(Fan({5, 30, 45})), 0)), 31.25, 1e-4);
}

TEST(ComputeNormals, SplitCopyIsNotUsedByLaterFaces)
{
    // The third face is in the plane of the second. It does not use the copies of the second but gets its own.
    const Geometry mesh = WithNormals(Fan({0, 60, 60}));
    EXPECT_EQ(mesh.VertexArray.size(), 9U);
    EXPECT_EQ(mesh.IndexArray, (Indices{1, 0, 2, 5, 6, 3, 7, 8, 4}));
}

TEST(ComputeNormals, UnusedVertexKeepsItsNormal)
{
    Geometry mesh = Quad();
    mesh.VertexArray.push_back(VertexOf(D3DXVECTOR3(9, 9, 9), D3DXVECTOR3(4, 5, 6), D3DXVECTOR2(0, 0)));
    mesh.VertexArray[4].GetHash();
    const Vertex before = mesh.VertexArray[4];
    EXPECT_TRUE(SameVertex(WithNormals(mesh).VertexArray[4], before));
}

TEST(ComputeNormals, SeventhIndexIsIgnored)
{
    Geometry mesh = Wedge(0);
    mesh.VertexArray.push_back(VertexOf(D3DXVECTOR3(9, 9, 9), D3DXVECTOR3(4, 5, 6), D3DXVECTOR2(0, 0)));
    mesh.IndexArray.push_back(4);
    mesh = WithNormals(mesh);
    EXPECT_TRUE(SameFloats(NormalOf(mesh, 4), D3DXVECTOR3(4, 5, 6)));
    EXPECT_EQ(mesh.IndexArray.size(), 7U);
    EXPECT_EQ(mesh.IndexArray.back(), 4U);
}

TEST(ComputeNormals, TrailingIndicesMayBeBad)
{
    Geometry mesh = Quad();
    mesh.IndexArray.insert(mesh.IndexArray.end(), {99, 0xFFFFFFFFU});
    EXPECT_EQ(mesh.ComputeNormals(), 0);
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
}

TEST(ComputeNormals, MeshWithoutFacesDoesNotChange)
{
    ExpectUntouched(Geometry(), 0, &Geometry::ComputeNormals);
    ExpectUntouched(MeshOf({{1, 2, 3}, {4, 5, 6}}, {0, 1}), 0, &Geometry::ComputeNormals);
}

TEST(ComputeNormals, PolySizeFourIsRefused)
{
    Geometry mesh = Quad();
    mesh.SetPolySize(4);
    ExpectUntouched(mesh, -1, &Geometry::ComputeNormals);
}

TEST(ComputeNormals, PolySizeFourIsRefusedBeforeIndicesAreChecked)
{
    Geometry mesh = MeshOf({}, {7, 8, 9});
    mesh.SetPolySize(4);
    ExpectUntouched(mesh, -1, &Geometry::ComputeNormals);
}

TEST(ComputeNormals, PolySizeIsReadThroughTheVirtualTable)
{
    MeshOfPolySize returnsFour(Wedge(40), 4);
    EXPECT_EQ(returnsFour.ComputeNormals(), -1);
    EXPECT_EQ(returnsFour.VertexArray.size(), 4U);
    EXPECT_EQ(returnsFour.GetCalls(), 1);

    Geometry storesFour = Wedge(40);
    storesFour.SetPolySize(4);
    MeshOfPolySize returnsThree(storesFour, 3);
    EXPECT_EQ(returnsThree.ComputeNormals(), 0);
    EXPECT_EQ(returnsThree.VertexArray.size(), 6U);
}

TEST(ComputeNormals, DegenerateFaceGivesZeroNormalsAndSplitsLaterCorners)
{
    const Geometry mesh = WithNormals(MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 1, 0, 1, 2}));
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 3, 4, 5, 2}));
    for (const std::size_t degenerate : {0U, 1U, 3U})
        EXPECT_TRUE(SameFloats(NormalOf(mesh, degenerate), D3DXVECTOR3(0, 0, 0)));
    for (const std::size_t good : {2U, 4U, 5U})
        EXPECT_TRUE(SameFloats(NormalOf(mesh, good), D3DXVECTOR3(0, 0, 1)));
}

TEST(ComputeNormals, NaNFaceSplitsLaterCorners)
{
    const Geometry mesh =
        WithNormals(MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {kNaN, 0, 0}}, {0, 1, 2, 0, 1, 3, 0, 1, 2}));
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 4, 5, 3, 0, 1, 2}));
    EXPECT_TRUE(std::isnan(NormalOf(mesh, 4).x));
    EXPECT_TRUE(SameFloats(NormalOf(mesh, 0), D3DXVECTOR3(0, 0, 1)));
}

TEST(ComputeNormals, FaceWithAnInfiniteCornerSplitsLaterCorners)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const Geometry mesh = WithNormals(MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {infinity, 0, 0}}, {0, 1, 2, 0, 1, 3}));
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 4, 5, 3}));
    EXPECT_TRUE(std::isnan(NormalOf(mesh, 3).z));
    EXPECT_TRUE(SameFloats(NormalOf(mesh, 1), D3DXVECTOR3(0, 0, 1)));
}

TEST(ComputeNormals, GrowingWhileSplittingKeepsAllocationsOfVertices)
{
    Geometry mesh = Cube8();
    for (Vertex& vertex : mesh.VertexArray)
        vertex.AddWeight(3, 0.5F);
    mesh.VertexArray.shrink_to_fit();
    mesh = WithNormals(mesh);
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_EQ(vertex.GetWeight(0), Vertex::Weight(3, 0.5F));
}

TEST(ComputeNormals, KeepsTheHashOfTheMeshAndInvalidatesThoseOfItsVertices)
{
    Geometry mesh = Wedge(40);
    const std::uint32_t hash = mesh.GetHash();
    mesh = WithNormals(mesh);
    EXPECT_TRUE(mesh.GetIsHashCodeValid());
    EXPECT_EQ(mesh.GetHash(), hash);
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_FALSE(vertex.GetIsHashCodeValid());
}

TEST(ComputeNormals, KeepsThePointCacheAndJoints)
{
    Geometry mesh = Wedge(40);
    mesh.PointCachePositions.assign(4, D3DXVECTOR3(1, 2, 3));
    mesh.PointCacheNormals.assign(4, D3DXVECTOR3(3, 2, 1));
    mesh.JointArray.emplace_back("hip");
    mesh = WithNormals(mesh);
    EXPECT_EQ(mesh.PointCachePositions, std::vector<D3DXVECTOR3>(4, D3DXVECTOR3(1, 2, 3)));
    EXPECT_EQ(mesh.PointCacheNormals, std::vector<D3DXVECTOR3>(4, D3DXVECTOR3(3, 2, 1)));
    EXPECT_EQ(mesh.JointArray.size(), 1U);
}

TEST(ComputeNormals, EveryBadIndexIsRefusedBeforeAnythingChanges)
{
    ExpectEveryBadIndexRefused(Hashed(Cube8()), 36, &Geometry::ComputeNormals);
}

TEST(ComputeNormals, GridOfOnePlaneIsNotSplit)
{
    const Geometry grid = Grid(20, 10);
    const Geometry mesh = WithNormals(grid);
    EXPECT_EQ(mesh.VertexArray.size(), 21U * 11U);
    EXPECT_EQ(mesh.IndexArray, grid.IndexArray);
}

TEST(ComputeNormals, MatchesTheModel) { ExpectLikeModel(&Geometry::ComputeNormals, &Models::ComputeNormals); }

TEST(ComputeNormals, MatchesTheModelOnLargerMeshes)
{
    RandomMeshOptions options;
    options.maxVertices = 200;
    options.maxFaces = 1000;
    ExpectLikeModel(&Geometry::ComputeNormals, &Models::ComputeNormals, options);
}

}  // namespace

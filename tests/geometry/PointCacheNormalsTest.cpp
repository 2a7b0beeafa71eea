#include <importing/geometry/Geometry.h>
#include <importing/geometry/Triangles.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

using namespace Importing;
using namespace Support;

constexpr D3DXVECTOR3 kUnwritten(7, 8, 9);

/// Appends the positions of a mesh to the point cache of another.
void AddFrame(Geometry& mesh, Geometry frame)
{
    for (Vertex& vertex : frame.VertexArray)
        mesh.PointCachePositions.push_back(vertex.GetPosition());
    mesh.PointCacheNormals.resize(mesh.PointCachePositions.size(), kUnwritten);
}

/// Returns a wedge with these frames. The positions of its vertices differ from those of the frames.
Geometry WedgeWithFrames(const std::vector<float>& angles)
{
    Geometry mesh = MeshOf({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, Wedge(0).IndexArray);
    for (const float angle : angles)
        AddFrame(mesh, Wedge(angle));
    return mesh;
}

void ExpectNear(const D3DXVECTOR3& actual, const D3DXVECTOR3& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-6);
    EXPECT_NEAR(actual.y, expected.y, 1e-6);
    EXPECT_NEAR(actual.z, expected.z, 1e-6);
}

TEST(PointCacheNormals, TwoFramesOfFourVerticesAreWrittenIndependently)
{
    Geometry mesh = WedgeWithFrames({0, 90});
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    ASSERT_EQ(mesh.PointCacheNormals.size(), 8U);
    for (std::size_t i = 0; i < 4; ++i)
        ExpectNear(mesh.PointCacheNormals[i], D3DXVECTOR3(0, 0, 1));
    const float diagonal = 0.70710678F;
    ExpectNear(mesh.PointCacheNormals[4], D3DXVECTOR3(diagonal, 0, diagonal));
    ExpectNear(mesh.PointCacheNormals[5], D3DXVECTOR3(diagonal, 0, diagonal));
    ExpectNear(mesh.PointCacheNormals[6], D3DXVECTOR3(0, 0, 1));
    ExpectNear(mesh.PointCacheNormals[7], D3DXVECTOR3(1, 0, 0));
}

TEST(PointCacheNormals, VerticesAreNotSplitAtSharpBends)
{
    Geometry mesh = WedgeWithFrames({120});
    const std::vector<std::uint32_t> indices = mesh.IndexArray;
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
    EXPECT_EQ(mesh.IndexArray, indices);
    ExpectNear(mesh.PointCacheNormals[0], D3DXVECTOR3(0.8660254F, 0, 0.5F));
}

TEST(PointCacheNormals, EachFaceHasAsMuchWeightAsAllFacesBeforeIt)
{
    Geometry mesh = MeshOf(std::vector<D3DXVECTOR3>(5, {0, 0, 0}), Fan({0, 30, 45}).IndexArray);
    AddFrame(mesh, Fan({0, 30, 45}));
    mesh.ComputePointCacheNormals();
    ExpectNear(mesh.PointCacheNormals[0], D3DXVECTOR3(0.5F, 0, 0.8660254F));
}

TEST(PointCacheNormals, FewerPositionsThanVerticesMakeNoFrame)
{
    Geometry mesh = Wedge(0);
    mesh.PointCachePositions.assign(3, D3DXVECTOR3(0, 0, 0));
    mesh.PointCacheNormals.assign(3, kUnwritten);
    ExpectUntouched(mesh, 0, &Geometry::ComputePointCacheNormals);
    ExpectUntouched(Wedge(0), 0, &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, NoFrameMeansThatNothingIsChecked)
{
    ExpectUntouched(MeshOf({{0, 0, 0}}, {7, 8, 9}), 0, &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, IncompleteLastFrameIsIgnored)
{
    Geometry mesh = WedgeWithFrames({0});
    mesh.PointCachePositions.resize(7, D3DXVECTOR3(1, 2, 3));
    mesh.PointCacheNormals.resize(7, kUnwritten);
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[3], D3DXVECTOR3(0, 0, 1)));
    for (std::size_t i = 4; i < 7; ++i)
        EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[i], kUnwritten));
}

TEST(PointCacheNormals, MeshWithoutVerticesHasNoFrames)
{
    Geometry mesh;
    mesh.PointCachePositions.assign(3, D3DXVECTOR3(0, 0, 0));
    ExpectUntouched(mesh, 0, &Geometry::ComputePointCacheNormals);
    mesh.IndexArray = {0, 1, 2};
    ExpectUntouched(mesh, 0, &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, PolySizeIsTestedBeforeTheMissingVertices)
{
    Geometry mesh;
    mesh.SetPolySize(4);
    ExpectUntouched(mesh, -1, &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, UnusedVertexKeepsItsEntryInEveryFrame)
{
    Geometry mesh = WedgeWithFrames({0, 30});
    mesh.IndexArray.resize(3);
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[3], kUnwritten));
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[7], kUnwritten));
    EXPECT_EQ(mesh.PointCacheNormals[4], D3DXVECTOR3(0, 0, 1));
}

TEST(PointCacheNormals, TrailingIndicesAreIgnored)
{
    Geometry mesh = WedgeWithFrames({0});
    mesh.IndexArray.insert(mesh.IndexArray.end(), {99, 99});
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[3], D3DXVECTOR3(0, 0, 1)));
}

TEST(PointCacheNormals, PolySizeFourIsRefused)
{
    Geometry mesh = WedgeWithFrames({0, 30});
    mesh.SetPolySize(4);
    ExpectUntouched(mesh, -1, &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, PolySizeIsReadThroughTheVirtualTable)
{
    MeshOfPolySize returnsFour(WedgeWithFrames({0}), 4);
    EXPECT_EQ(returnsFour.ComputePointCacheNormals(), -1);
    EXPECT_TRUE(SameFloats(returnsFour.PointCacheNormals[0], kUnwritten));

    Geometry storesFour = WedgeWithFrames({0});
    storesFour.SetPolySize(4);
    MeshOfPolySize returnsThree(storesFour, 3);
    EXPECT_EQ(returnsThree.ComputePointCacheNormals(), 0);
    EXPECT_TRUE(SameFloats(returnsThree.PointCacheNormals[0], D3DXVECTOR3(0, 0, 1)));
}

TEST(PointCacheNormals, DegenerateFaceGivesZeroUntilAnotherFaceIsBlendedIn)
{
    Geometry mesh = MeshOf(std::vector<D3DXVECTOR3>(3, {0, 0, 0}), {0, 1, 1, 0, 1, 2});
    AddFrame(mesh, Triangle());
    mesh.IndexArray.resize(3);
    mesh.ComputePointCacheNormals();
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[0], D3DXVECTOR3(0, 0, 0)));
    mesh.IndexArray = {0, 1, 1, 0, 1, 2};
    mesh.ComputePointCacheNormals();
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[0], D3DXVECTOR3(0, 0, 1)));
}

TEST(PointCacheNormals, NaNNormalIsKept)
{
    Geometry mesh = MeshOf(std::vector<D3DXVECTOR3>(4, {0, 0, 0}), {0, 1, 3, 0, 1, 2});
    AddFrame(mesh, MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {std::numeric_limits<float>::quiet_NaN(), 0, 0}}, {}));
    mesh.ComputePointCacheNormals();
    EXPECT_TRUE(std::isnan(mesh.PointCacheNormals[0].z));
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[2], D3DXVECTOR3(0, 0, 1)));
}

TEST(PointCacheNormals, KeepsAllHashesAndVertices)
{
    Geometry mesh = Hashed(WedgeWithFrames({0, 30}));
    Geometry expected = mesh;
    mesh.ComputePointCacheNormals();
    EXPECT_FALSE(mesh.PointCacheNormals == expected.PointCacheNormals);
    expected.PointCacheNormals = mesh.PointCacheNormals;
    EXPECT_TRUE(SameGeometry(mesh, expected));
}

TEST(PointCacheNormals, NormalsShorterThanTheFramesAreRefused)
{
    for (const std::size_t length : {0U, 1U, 4U, 7U})
    {
        Geometry mesh = WedgeWithFrames({0, 30});
        mesh.PointCacheNormals.resize(length);
        ExpectBadSubscript(Hashed(mesh), &Geometry::ComputePointCacheNormals);
    }
}

TEST(PointCacheNormals, WithoutTrianglesNoNormalsAreNeeded)
{
    Geometry mesh = WedgeWithFrames({0, 30});
    mesh.IndexArray.clear();
    mesh.PointCacheNormals.clear();
    ExpectUntouched(mesh, 0, &Geometry::ComputePointCacheNormals);
    mesh.IndexArray = {98, 99};
    ExpectUntouched(mesh, 0, &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, NormalsOfTheLastFrameMayEndBeforeAnUnusedVertex)
{
    Geometry mesh = WedgeWithFrames({0, 30});
    mesh.IndexArray.resize(3);
    mesh.PointCacheNormals.resize(7);
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    ASSERT_EQ(mesh.PointCacheNormals.size(), 7U);
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[3], kUnwritten));
    for (const std::size_t i : {0U, 1U, 2U, 4U, 5U, 6U})
        EXPECT_EQ(mesh.PointCacheNormals[i], D3DXVECTOR3(0, 0, 1));
    mesh.PointCacheNormals.resize(6);
    ExpectBadSubscript(Hashed(mesh), &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, AnIndexBeyondTheVerticesReachesTheEntriesAfterTheFrame)
{
    Geometry mesh = WedgeWithFrames({0});
    mesh.PointCachePositions.emplace_back(2, 3, 5);
    mesh.PointCacheNormals.push_back(kUnwritten);
    mesh.IndexArray = {0, 1, 4};
    ASSERT_EQ(mesh.VertexArray.size(), 4U);
    const D3DXVECTOR3 corners[3] = {mesh.PointCachePositions[0], mesh.PointCachePositions[1],
                                    mesh.PointCachePositions[4]};
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[4], TriangleNormal(corners[0], corners[1], corners[2])));
    EXPECT_TRUE(SameFloats(mesh.PointCacheNormals[2], kUnwritten));
    mesh.IndexArray = {0, 1, 5};
    ExpectBadSubscript(Hashed(mesh), &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, AnIndexBeyondTheVerticesIsRefusedWhereOnlyTheLastFrameLacksItsEntry)
{
    Geometry mesh = WedgeWithFrames({0, 30});
    mesh.IndexArray[5] = 4;
    ExpectBadSubscript(Hashed(mesh), &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, NormalsNeedNotCoverAnIncompleteFrame)
{
    Geometry mesh = WedgeWithFrames({0});
    mesh.PointCachePositions.resize(7, D3DXVECTOR3(1, 2, 3));
    EXPECT_EQ(mesh.PointCacheNormals.size(), 4U);
    EXPECT_EQ(mesh.ComputePointCacheNormals(), 0);
    EXPECT_EQ(mesh.PointCacheNormals.size(), 4U);
}

TEST(PointCacheNormals, EveryBadIndexIsRefusedBeforeAnythingChanges)
{
    ExpectEveryBadIndexRefused(Hashed(WedgeWithFrames({0, 30})), 6, &Geometry::ComputePointCacheNormals);
}

TEST(PointCacheNormals, MatchesTheModel)
{
    ExpectLikeModel(&Geometry::ComputePointCacheNormals, &Models::ComputePointCacheNormals);
}

TEST(PointCacheNormals, MatchesTheModelOnLargerMeshes)
{
    RandomMeshOptions options;
    options.maxVertices = 200;
    options.maxFaces = 600;
    ExpectLikeModel(&Geometry::ComputePointCacheNormals, &Models::ComputePointCacheNormals, options);
}

}  // namespace

#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <importing/records/ContentHash.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

#include <utility>

namespace
{

using namespace Importing;
using namespace Support;

constexpr D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
constexpr D3DXMATRIX kMoved(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1);

/// Returns a mesh with a value in every field.
Geometry FullMesh()
{
    Geometry mesh = Quad();
    mesh.SetName("quad");
    mesh.SetBindShapeTransform(kMoved);
    mesh.JointArray.emplace_back("hip");
    mesh.PointCachePositions.assign(8, D3DXVECTOR3(1, 2, 3));
    mesh.PointCacheNormals.assign(8, D3DXVECTOR3(0, 1, 0));
    return mesh;
}

TEST(Geometry, DefaultIsAnEmptyTriangleMesh)
{
    Geometry mesh;
    EXPECT_EQ(mesh.GetName(), "");
    EXPECT_EQ(mesh.GetPolySize(), 3U);
    EXPECT_TRUE(SameFloats(mesh.GetBindShapeTransform(), kIdentity));
    EXPECT_TRUE(mesh.VertexArray.empty());
    EXPECT_TRUE(mesh.IndexArray.empty());
    EXPECT_TRUE(mesh.JointArray.empty());
    EXPECT_TRUE(mesh.PointCachePositions.empty());
    EXPECT_TRUE(mesh.PointCacheNormals.empty());
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
}

TEST(Geometry, CopyHasEveryFieldAndTheStateOfTheHashes)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const Geometry mesh = RandomMesh(seed);
        Geometry copy(mesh);
        ASSERT_TRUE(SameGeometry(copy, mesh)) << "seed " << seed;
        copy.SetName("a name of its own");
        Geometry assigned = FullMesh();
        assigned = mesh;
        ASSERT_TRUE(SameGeometry(assigned, mesh)) << "seed " << seed;
    }
}

TEST(Geometry, MoveHasEveryFieldAndTheStateOfTheHashes)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const Geometry mesh = RandomMesh(seed);
        Geometry source = mesh;
        Geometry moved(std::move(source));
        ASSERT_TRUE(SameGeometry(moved, mesh)) << "seed " << seed;
        Geometry assigned = FullMesh();
        assigned = std::move(moved);
        ASSERT_TRUE(SameGeometry(assigned, mesh)) << "seed " << seed;
    }
}

TEST(Geometry, CopyIsIndependent)
{
    const Geometry mesh = FullMesh();
    Geometry copy = mesh;
    copy.VertexArray[0].SetPosition(D3DXVECTOR3(9, 9, 9));
    copy.IndexArray[0] = 3;
    EXPECT_TRUE(SameGeometry(mesh, FullMesh()));
}

TEST(Geometry, AssignmentToItselfChangesNothing)
{
    Geometry mesh = Hashed(FullMesh());
    const Geometry& same = mesh;
    mesh = same;
    EXPECT_TRUE(SameGeometry(mesh, Hashed(FullMesh())));
}

TEST(Geometry, NameIsNotContent)
{
    Geometry mesh = Quad();
    const std::uint32_t hash = mesh.GetHash();
    mesh.SetName("another");
    EXPECT_EQ(mesh.GetName(), "another");
    EXPECT_TRUE(mesh.GetIsHashCodeValid());
    EXPECT_EQ(mesh.GetHash(), hash);
}

TEST(Geometry, SettingTheSamePolySizeStillInvalidatesTheHash)
{
    Geometry mesh = Hashed(Quad());
    mesh.SetPolySize(3);
    EXPECT_EQ(mesh.GetPolySize(), 3U);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    EXPECT_TRUE(mesh.VertexArray[0].GetIsHashCodeValid());
}

TEST(Geometry, SettingTheBindShapeTransformInvalidatesTheHashAlthoughItIsNotContent)
{
    Geometry mesh = Quad();
    const std::uint32_t hash = mesh.GetHash();
    mesh.SetBindShapeTransform(kMoved);
    EXPECT_TRUE(SameFloats(mesh.GetBindShapeTransform(), kMoved));
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    EXPECT_EQ(mesh.GetHash(), hash);
}

TEST(Geometry, EqualContentUnderDifferentNamesAndBindShapesIsEqual)
{
    Geometry a = Quad();
    Geometry b = FullMesh();
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
    EXPECT_TRUE(a.GetIsHashCodeValid());
    EXPECT_TRUE(b.GetIsHashCodeValid());
}

TEST(Geometry, VerticesIndicesAndPolySizeAreContent)
{
    Geometry quad = Quad();
    Geometry moved = Quad();
    moved.VertexArray[3].SetPosition(D3DXVECTOR3(-1, 2, 1));
    Geometry turned = Quad();
    std::swap(turned.IndexArray[1], turned.IndexArray[2]);
    Geometry quads = Quad();
    quads.SetPolySize(4);
    EXPECT_TRUE(quad != moved);
    EXPECT_TRUE(quad != turned);
    EXPECT_TRUE(quad != quads);
}

TEST(Geometry, HashCombinesPolySizeThenVerticesThenIndices)
{
    Geometry mesh = Triangle();
    const std::uint64_t polySize = 3;
    std::uint32_t hash = Digest(&polySize, sizeof(polySize));
    for (Vertex& vertex : mesh.VertexArray)
    {
        const std::uint32_t content = vertex.GetHash();
        hash = hash * 31U ^ Digest(&content, sizeof(content));
    }
    for (const std::uint32_t index : mesh.IndexArray)
        hash = hash * 31U ^ Digest(&index, sizeof(index));
    EXPECT_EQ(mesh.GetHash(), hash);
}

TEST(Geometry, ComputingTheHashComputesThoseOfTheVertices)
{
    Geometry mesh = Quad();
    EXPECT_FALSE(mesh.VertexArray[0].GetIsHashCodeValid());
    mesh.GetHash();
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_TRUE(vertex.GetIsHashCodeValid());
}

TEST(Geometry, EditingTheArraysKeepsTheCachedHash)
{
    Geometry mesh = Quad();
    const std::uint32_t hash = mesh.GetHash();
    mesh.VertexArray[0].SetPosition(D3DXVECTOR3(9, 9, 9));
    EXPECT_EQ(mesh.GetHash(), hash);
    mesh.SetPolySize(3);
    EXPECT_NE(mesh.GetHash(), hash);
}

TEST(Geometry, ValuesThatDifferInTheLowestBitsHashAlike)
{
    Geometry a = Triangle();
    Geometry b = Triangle();
    b.VertexArray[1].SetPosition(D3DXVECTOR3(std::bit_cast<float>(0x3F8000FFU), 0, 0));
    EXPECT_TRUE(a == b);
}

TEST(Geometry, ReleaseEmptiesNameVerticesIndicesAndJoints)
{
    Geometry mesh = Hashed(FullMesh());
    EXPECT_EQ(mesh.Release(), 0);
    EXPECT_EQ(mesh.GetName(), "");
    EXPECT_TRUE(mesh.VertexArray.empty());
    EXPECT_TRUE(mesh.IndexArray.empty());
    EXPECT_TRUE(mesh.JointArray.empty());
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
}

TEST(Geometry, ReleaseKeepsPolySizeBindShapeTransformAndPointCache)
{
    Geometry mesh = FullMesh();
    mesh.SetPolySize(4);
    mesh.Release();
    EXPECT_EQ(mesh.GetPolySize(), 4U);
    EXPECT_TRUE(SameFloats(mesh.GetBindShapeTransform(), kMoved));
    EXPECT_EQ(mesh.PointCachePositions, FullMesh().PointCachePositions);
    EXPECT_EQ(mesh.PointCacheNormals, FullMesh().PointCacheNormals);
}

TEST(Geometry, ReleaseFreesMemory)
{
    Geometry mesh = FullMesh();
    mesh.Release();
    EXPECT_EQ(mesh.VertexArray.capacity(), 0U);
    EXPECT_EQ(mesh.IndexArray.capacity(), 0U);
}

TEST(Geometry, ReleaseMatchesTheModel) { ExpectLikeModel(&Geometry::Release, &Models::Release); }

TEST(Geometry, HashIsInvalidatedAndComputedThroughTheVirtualTable)
{
    MeshOfCountedHash mesh(FullMesh());
    mesh.SetName("kept");
    EXPECT_EQ(mesh.GetInvalidations(), 0);
    mesh.SetPolySize(3);
    EXPECT_EQ(mesh.GetInvalidations(), 1);
    mesh.SetBindShapeTransform(kIdentity);
    EXPECT_EQ(mesh.GetInvalidations(), 2);
    mesh.Release();
    EXPECT_EQ(mesh.GetInvalidations(), 3);
    mesh.GetHash();
    mesh.GetHash();
    EXPECT_EQ(mesh.GetComputations(), 1);
}

}  // namespace

#include <importing/math/SameBits.h>
#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::MeshOf;
using Support::NodeNamed;
using Support::Scaling;
using Support::Scene;
using Support::Translation;

const D3DXMATRIX kIdentity = Translation(0, 0, 0);
const D3DXMATRIX kMirror = Scaling(-1, 1, 1);

void Place(SceneContainer& scene, const std::string& node, const D3DXMATRIX& matrix)
{
    NodeNamed(scene, node).SetLocalTransform(Transform(matrix));
}

D3DXMATRIX PlaceOf(SceneContainer& scene, const std::string& node)
{
    return NodeNamed(scene, node).GetLocalTransform().GetMatrix();
}

/// Returns a triangle in the plane z = 0 that faces +z and whose first vertex has this normal.
Geometry Triangle(const D3DXVECTOR3& firstNormal)
{
    Geometry mesh;
    mesh.VertexArray = {Vertex(0, 0, 0), Vertex(1, 0, 0), Vertex(0, 1, 0)};
    mesh.VertexArray[0].SetNormal(firstNormal);
    mesh.IndexArray = {0, 1, 2};
    return mesh;
}

const std::vector<std::uint32_t> kKept = {0, 1, 2};
const std::vector<std::uint32_t> kFlipped = {0, 2, 1};

/// Returns whether a triangle with this normal of its first vertex is flipped.
std::vector<std::uint32_t> CheckedTriangle(const D3DXVECTOR3& firstNormal, const D3DXMATRIX& world)
{
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a") = Triangle(firstNormal);
    EXPECT_EQ(scene.CheckFacesOrientation(0, world), 0);
    return MeshOf(scene, "a").IndexArray;
}

TEST(CheckFacesOrientation, AMeshWhoseFirstTriangleAgreesWithItsNormalDoesNotChange)
{
    EXPECT_EQ(CheckedTriangle({0, 0, 1}, kIdentity), kKept);
    EXPECT_EQ(CheckedTriangle({0, 0, 7}, kIdentity), kKept);
    EXPECT_EQ(CheckedTriangle({1, 0, 0.0501F}, kIdentity), kKept);
}

TEST(CheckFacesOrientation, AMeshWhoseFirstTriangleFacesAwayIsFlipped)
{
    EXPECT_EQ(CheckedTriangle({0, 0, -1}, kIdentity), kFlipped);
}

TEST(CheckFacesOrientation, AMeshWithAPerpendicularNormalIsFlipped)
{
    EXPECT_EQ(CheckedTriangle({1, 0, 0}, kIdentity), kFlipped);
}

TEST(CheckFacesOrientation, AMeshWithADotProductBelowTheThresholdIsFlipped)
{
    EXPECT_EQ(CheckedTriangle({1, 0, 0.0499F}, kIdentity), kFlipped);
}

TEST(CheckFacesOrientation, AMeshWithAZeroNormalIsFlipped)
{
    EXPECT_EQ(CheckedTriangle({0, 0, 0}, kIdentity), kFlipped);
}

TEST(CheckFacesOrientation, TheTestIsInWorldSpace)
{
    EXPECT_EQ(CheckedTriangle({0, 0, 1}, kMirror), kFlipped);
    EXPECT_EQ(CheckedTriangle({0, 0, -1}, kMirror), kKept);
    EXPECT_EQ(CheckedTriangle({0, 0, 1}, Translation(5, 6, 7)), kKept);
}

TEST(CheckFacesOrientation, OnlyTheFirstTriangleDecides)
{
    SceneContainer scene = Scene("Root[a]");
    Geometry& mesh = MeshOf(scene, "a");
    mesh = Triangle({0, 0, 1});
    mesh.IndexArray = {0, 1, 2, 0, 2, 1};
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_EQ(mesh.IndexArray, (std::vector<std::uint32_t>{0, 1, 2, 0, 2, 1}));
    mesh.IndexArray = {0, 2, 1, 0, 1, 2};
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_EQ(mesh.IndexArray, (std::vector<std::uint32_t>{0, 1, 2, 0, 2, 1}));
}

TEST(CheckFacesOrientation, MeshesThatAreNotTrianglesAreNotTested)
{
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a") = Triangle({0, 0, -1});
    MeshOf(scene, "a").SetPolySize(4);
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_EQ(MeshOf(scene, "a").IndexArray, kKept);
}

TEST(CheckFacesOrientation, AMeshOfTwoSurfacesIsTestedTwice)
{
    // Perpendicular: both tests flip the mesh, so it ends as it was.
    SceneContainer scene = Scene("Root[a=mesh b=mesh]");
    MeshOf(scene, "a") = Triangle({1, 0, 0});
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_EQ(MeshOf(scene, "a").IndexArray, kKept);
}

TEST(CheckFacesOrientation, NormalsOfAMirroredNodeAreNotFlipped)
{
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a") = Triangle({0, 0, 1});
    scene.CheckFacesOrientation(0, Scaling(-1, 1, 1));
    EXPECT_EQ(MeshOf(scene, "a").VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1));
}

TEST(CheckFacesOrientation, NormalsAreFlippedIfTheTwoDeterminantsDifferInSign)
{
    D3DXMATRIX matrix = kIdentity;
    matrix._44 = -1;
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a") = Triangle({0, 0, 1});
    scene.CheckFacesOrientation(0, matrix);
    EXPECT_EQ(MeshOf(scene, "a").VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, -1));
}

TEST(CheckFacesOrientation, NormalsOfLargerPolygonsAreFlippedToo)
{
    D3DXMATRIX matrix = kIdentity;
    matrix._44 = -1;
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a") = Triangle({0, 0, 1});
    MeshOf(scene, "a").SetPolySize(4);
    scene.CheckFacesOrientation(0, matrix);
    EXPECT_EQ(MeshOf(scene, "a").VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, -1));
    EXPECT_EQ(MeshOf(scene, "a").IndexArray, kKept);
}

TEST(CheckFacesOrientation, TheCachedHashOfAMeshIsKept)
{
    SceneContainer scene = Scene("Root[a]");
    MeshOf(scene, "a") = Triangle({0, 0, -1});
    const std::uint32_t hash = MeshOf(scene, "a").GetHash();
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_TRUE(MeshOf(scene, "a").GetIsHashCodeValid());
    EXPECT_EQ(MeshOf(scene, "a").GetHash(), hash);
}

TEST(CheckFacesOrientation, ChildrenAreTestedWithTheirOwnWorldMatrix)
{
    SceneContainer scene = Scene("Root[a]( P( Q[b] ) )");
    Place(scene, "Root", kMirror);  // Not used, because the caller passes the world matrix.
    Place(scene, "P", kMirror);
    for (const char* surface : {"a", "b"})
        MeshOf(scene, surface) = Triangle({0, 0, 1});
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_EQ(MeshOf(scene, "a").IndexArray, kKept);
    EXPECT_EQ(MeshOf(scene, "b").IndexArray, kFlipped);
}

TEST(CheckFacesOrientation, ABadIndexChangesNothing)
{
    SceneContainer good = Scene("Root[a]( P[b] )");
    for (Geometry& mesh : good.GeometryLibrary)
        mesh = Triangle({0, 0, -1});
    Support::ExpectBadIndex(good, [&] { good.CheckFacesOrientation(2, kIdentity); });
    Support::ExpectBadIndex(good, [&] { good.CheckFacesOrientation(-1, kIdentity); });
    for (std::vector<std::int32_t> Node::*list : {&Node::SurfaceList, &Node::ChildList})
    {
        SceneContainer scene(good);
        (scene.NodeLibrary[0].*list).push_back(-1);
        Support::ExpectBadIndex(scene, [&] { scene.CheckFacesOrientation(0, kIdentity); });
        Support::ExpectBadIndex(scene, [&] { scene.RemoveNegativeScaleMatricies(0, kMirror, kIdentity); });
    }
    SceneContainer scene(good);
    scene.SurfaceLibrary[1].SetGeometryID(-1);
    Support::ExpectBadIndex(scene, [&] { scene.CheckFacesOrientation(0, kIdentity); });
    Support::ExpectBadIndex(scene, [&] { scene.RemoveNegativeScaleMatricies(0, kMirror, kIdentity); });
}

TEST(CheckFacesOrientation, AMeshWithoutAFirstTriangleIsRefused)
{
    for (const std::vector<std::uint32_t>& indices :
         {std::vector<std::uint32_t>{}, std::vector<std::uint32_t>{0, 1}, std::vector<std::uint32_t>{0, 1, 3}})
    {
        SceneContainer scene = Scene("Root[a]");
        MeshOf(scene, "a") = Triangle({0, 0, -1});
        MeshOf(scene, "a").IndexArray = indices;
        Support::ExpectThrow<std::out_of_range>([&] { scene.CheckFacesOrientation(0, kIdentity); },
                                                "invalid vector<T> subscript");
    }
}

TEST(CheckFacesOrientation, ACycleChangesNothing)
{
    SceneContainer scene = Scene("Root[a]( P[b]( Q[c]( &P ) ) )");
    for (Geometry& mesh : scene.GeometryLibrary)
        mesh = Triangle({0, 0, -1});
    Support::ExpectCycle(scene, [&] { scene.CheckFacesOrientation(0, kIdentity); });
    Support::ExpectCycle(scene, [&] { scene.RemoveNegativeScaleMatricies(0, kMirror, kIdentity); });
}

TEST(CheckFacesOrientation, AMillionLevelsDoNotOverflowTheStack)
{
    SceneContainer scene = Support::Chain(Support::kDeep);
    scene.NodeLibrary[1].SetLocalTransform(Transform(kMirror));
    scene.GeometryLibrary.push_back(Triangle({0, 0, 1}));
    scene.SurfaceLibrary.resize(1);
    scene.SurfaceLibrary[0].SetGeometryID(0);
    scene.NodeLibrary.back().SurfaceList.push_back(0);
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_EQ(scene.GeometryLibrary[0].IndexArray, kFlipped);
}

TEST(CheckFacesOrientationOverrides, EveryNodeIsACall)
{
    Support::RecordingContainer scene(Scene("Root( A( B ) C )"));
    scene.CheckFacesOrientation(0, kIdentity);
    EXPECT_EQ(scene.Calls({"CheckFacesOrientation"}),
              "CheckFacesOrientation(0) CheckFacesOrientation(1) CheckFacesOrientation(2) CheckFacesOrientation(3)");
}

TEST(RemoveNegativeScaleMatricies, AMirroredNodeGetsUnitScaleAndAMirroredMesh)
{
    SceneContainer scene = Scene("Root( A[a] )");
    Place(scene, "A", Support::Product(Scaling(-2, 3, 1), Translation(7, 8, 9)));
    EXPECT_EQ(scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity), 0);
    EXPECT_TRUE(SameBits(PlaceOf(scene, "A"), Translation(7, 8, 9)));
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")), D3DXVECTOR3(-4, 3, 1));
    EXPECT_EQ(Support::High(MeshOf(scene, "a")).y, 6);
}

TEST(RemoveNegativeScaleMatricies, TheFacesOfAMirroredMeshAreFlipped)
{
    SceneContainer scene = Scene("Root( A[a] )");
    Place(scene, "A", kMirror);
    MeshOf(scene, "a") = Triangle({0, 0, 1});
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_EQ(MeshOf(scene, "a").IndexArray, kFlipped);
}

TEST(RemoveNegativeScaleMatricies, TheNegativeSignIsInXRegardlessOfTheMirroredAxis)
{
    SceneContainer scene = Scene("Root( A[a] )");
    Place(scene, "A", Scaling(1, -1, 1));
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    // The mesh is mirrored in x, and the node rotated by 180 degrees about z. Together this mirrors y.
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")), D3DXVECTOR3(-2, 1, 1));
    EXPECT_TRUE(SameBits(PlaceOf(scene, "A"), Scaling(-1, -1, 1)));
}

TEST(RemoveNegativeScaleMatricies, ANodeWithoutNegativeScaleKeepsItsMatrixAndItsMesh)
{
    SceneContainer scene = Scene("Root( A[a] )");
    Place(scene, "A", Scaling(2, 2, 2));
    const SceneContainer before(scene);
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_TRUE(Support::SameScene(scene, before));
}

TEST(RemoveNegativeScaleMatricies, FacesOfANodeWithoutNegativeScaleAreTestedToo)
{
    SceneContainer scene = Scene("Root( A[a] )");
    Place(scene, "A", Scaling(2, 2, 2));
    MeshOf(scene, "a") = Triangle({0, 0, -1});
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_EQ(MeshOf(scene, "a").IndexArray, kFlipped);
    EXPECT_EQ(MeshOf(scene, "a").VertexArray[1].GetPosition(), D3DXVECTOR3(1, 0, 0));
}

TEST(RemoveNegativeScaleMatricies, ANodeKeepsItsMatrixEvenIfAPositiveScaleIsPending)
{
    SceneContainer scene = Scene("Root[a]");
    const SceneContainer before(scene);
    scene.RemoveNegativeScaleMatricies(0, Scaling(3, 3, 3), kIdentity);
    EXPECT_TRUE(Support::SameScene(scene, before));
}

TEST(RemoveNegativeScaleMatricies, TheScaleOfTheParentIsMultipliedIntoTheMatrixOfAChild)
{
    SceneContainer scene = Scene("Root( A( B@5,0,0[b] ) )");
    Place(scene, "A", Scaling(-2, 1, 1));
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_TRUE(SameBits(PlaceOf(scene, "A"), kIdentity));
    EXPECT_TRUE(SameBits(PlaceOf(scene, "B"), Translation(-10, 0, 0)));
    EXPECT_EQ(Support::Low(MeshOf(scene, "b")), D3DXVECTOR3(-4, 1, 1));
}

TEST(RemoveNegativeScaleMatricies, OfTwoNestedMirroredNodesTheSecondDoesNotChange)
{
    SceneContainer scene = Scene("Root( A[a]( B[b]( C[c] ) ) )");
    Place(scene, "A", kMirror);
    Place(scene, "B", kMirror);
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_TRUE(SameBits(PlaceOf(scene, "A"), kIdentity));
    EXPECT_TRUE(SameBits(PlaceOf(scene, "B"), kMirror));
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")).x, -2);
    EXPECT_EQ(Support::Low(MeshOf(scene, "b")).x, 1);
    EXPECT_EQ(Support::Low(MeshOf(scene, "c")).x, 1);  // A node that keeps its matrix passes on the identity.
}

TEST(RemoveNegativeScaleMatricies, AnAnimatedNodeIsJudgedByItsFirstKey)
{
    SceneContainer scene = Scene("Root( A@5,0,0*[a] )");
    scene.AnimationLibrary[0].resize(2);
    scene.AnimationLibrary[0][0].SetScale(D3DXVECTOR3(-1, 1, 1));
    scene.AnimationLibrary[0][0].SetPosition(D3DXVECTOR3(100, 0, 0));
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    // Rotation and translation are those of the static matrix.
    EXPECT_TRUE(SameBits(PlaceOf(scene, "A"), Translation(5, 0, 0)));
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")).x, -2);
}

TEST(RemoveNegativeScaleMatricies, ASharedMeshIsMirroredOnceForEachSurface)
{
    SceneContainer scene = Scene("Root( A[a=mesh b=mesh] )");
    Place(scene, "A", Scaling(-2, 1, 1));
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")), D3DXVECTOR3(4, 1, 1));
}

TEST(RemoveNegativeScaleMatricies, AMatrixThatCannotBeDecomposedDoesNotChange)
{
    SceneContainer scene = Scene("Root( A[a] )");
    Place(scene, "A", Scaling(0, -1, 1));
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_TRUE(SameBits(PlaceOf(scene, "A"), Scaling(0, -1, 1)));
    EXPECT_EQ(Support::Low(MeshOf(scene, "a")), D3DXVECTOR3(1, 1, 1));
}

TEST(RemoveNegativeScaleMatricies, AnAnimationWithoutKeysIsRefused)
{
    SceneContainer scene = Scene("Root( M[b]( A*[a] ) )");
    Place(scene, "M", kMirror);
    scene.AnimationLibrary[0].clear();
    Support::ExpectBadIndex(scene, [&] { scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity); });
    NodeNamed(scene, "A").SetAnimationID(1);
    Support::ExpectBadIndex(scene, [&] { scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity); });
}

TEST(RemoveNegativeScaleMatricies, AMillionLevelsDoNotOverflowTheStack)
{
    SceneContainer scene = Support::Chain(Support::kDeep);
    scene.NodeLibrary[1].SetLocalTransform(Transform(kMirror));
    scene.GeometryLibrary.push_back(Support::UnitBox());
    scene.SurfaceLibrary.resize(1);
    scene.SurfaceLibrary[0].SetGeometryID(0);
    scene.NodeLibrary.back().SurfaceList.push_back(0);
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_EQ(Support::Low(scene.GeometryLibrary[0]).x, -2);
    EXPECT_EQ(scene.NodeLibrary.back().GetLocalTransform().GetMatrix()._11, 1);
    EXPECT_EQ(scene.NodeLibrary.back().GetLocalTransform().GetMatrix()._41, -1);
}

TEST(RemoveNegativeScaleMatriciesOverrides, EveryNodeIsACall)
{
    Support::RecordingContainer scene(Scene("Root( A( B ) C )"));
    scene.RemoveNegativeScaleMatricies(0, kIdentity, kIdentity);
    EXPECT_EQ(scene.Calls({"RemoveNegativeScaleMatricies"}),
              "RemoveNegativeScaleMatricies(0) RemoveNegativeScaleMatricies(1) RemoveNegativeScaleMatricies(2) "
              "RemoveNegativeScaleMatricies(3)");
}

}  // namespace

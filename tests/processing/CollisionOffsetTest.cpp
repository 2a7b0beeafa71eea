#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace Importing;
using Support::MeshOf;
using Support::Scene;
using Support::SurfaceNamed;

std::vector<int> OffsetsOf(SceneContainer& scene)
{
    EXPECT_EQ(scene.CalculateSurfaceCollisionOffset(), 0);
    std::vector<int> offsets;
    for (const Surface& surface : scene.SurfaceLibrary)
        offsets.push_back(surface.GetCollisionOffset());
    return offsets;
}

/// Returns the offsets of the surfaces, in the order of the library.
std::vector<int> OffsetsOf(const std::string& text)
{
    SceneContainer scene = Scene(text);
    return OffsetsOf(scene);
}

using Offsets = std::vector<int>;

TEST(CollisionOffset, ASceneWithFewerThanTwoSurfacesHasOffsetZero)
{
    EXPECT_EQ(OffsetsOf(""), Offsets{});
    EXPECT_EQ(OffsetsOf("Root"), Offsets{});
    EXPECT_EQ(OffsetsOf("Root[a]"), Offsets{0});
}

TEST(CollisionOffset, DisjointBoxesHaveOffsetZero)
{
    EXPECT_EQ(OffsetsOf("Root[a]( A@2,0,0[b] B@0,2,0[c] C@0,0,2[d] )"), (Offsets{0, 0, 0, 0}));
}

TEST(CollisionOffset, BoxesThatOnlyTouchOverlap)
{
    EXPECT_EQ(OffsetsOf("Root[a]( A@1,0,0[b] )"), (Offsets{0, 1}));
    EXPECT_EQ(OffsetsOf("Root[a]( A@0,-1,0[b] )"), (Offsets{0, 1}));
    EXPECT_EQ(OffsetsOf("Root[a]( A@1,1,-1[b] )"), (Offsets{0, 1}));
    EXPECT_EQ(OffsetsOf("Root[a]( A@1.0000005,0,0[b] )"), (Offsets{0, 0}));
}

TEST(CollisionOffset, TwoSurfacesOfOneMeshDifferOnlyIfTheirWorldBoxesOverlap)
{
    EXPECT_EQ(OffsetsOf("Root( A@0,0,0[a=mesh] B@5,0,0[b=mesh] )"), (Offsets{0, 0}));
    EXPECT_EQ(OffsetsOf("Root( A@5,0,0[a=mesh] B@5,0,0[b=mesh] )"), (Offsets{0, 1}));
}

TEST(CollisionOffset, ThreeOverlappingSurfacesGetThreeOffsets)
{
    EXPECT_EQ(OffsetsOf("Root[a b c]"), (Offsets{0, 1, 2}));
}

TEST(CollisionOffset, OnlyTheOtherSurfaceIsRaisedNeverTheCurrentOne)
{
    // b is referenced first, so it is the current surface first and raises a.
    SceneContainer scene = Scene("Root[a b]");
    scene.NodeLibrary[0].SurfaceList = {1, 0};
    EXPECT_EQ(OffsetsOf(scene), (Offsets{1, 0}));
}

TEST(CollisionOffset, SurfacesInARowAlternate)
{
    EXPECT_EQ(OffsetsOf("Root( A[a] B@1,0,0[b] C@2,0,0[c] D@3,0,0[d] )"), (Offsets{0, 1, 0, 1}));
}

/// Returns a scene with one surface for each interval along x, all referenced by one node in this order.
SceneContainer Row(const std::vector<std::pair<float, float>>& ends)
{
    SceneContainer scene;
    scene.NodeLibrary.resize(1);
    for (const auto& [low, high] : ends)
    {
        Geometry mesh = Support::BoxMesh({low, 1, 1}, {high, 2, 2});
        Surface surface;
        surface.SetGeometryID(scene.AddGeometryToLibrary(mesh, false));
        scene.NodeLibrary[0].SurfaceList.push_back(scene.AddSurfaceToLibrary(surface, false));
    }
    return scene;
}

TEST(CollisionOffset, OneGreedyPassCanLeaveAnOverlappingPairEqual)
{
    // The fourth and the fifth overlap and have 2 and 1 when they are the current surface. The last one, which is
    // raised to 1 late, then raises the fifth to 2.
    SceneContainer scene = Row({{0, 1}, {0.5F, 1.5F}, {15, 16}, {0, 10}, {9, 20}, {29, 31}, {19, 30}});
    EXPECT_EQ(OffsetsOf(scene), (Offsets{0, 1, 0, 2, 2, 0, 1}));
}

TEST(CollisionOffset, CallingItAgainGivesTheSameResult)
{
    SceneContainer scene = Scene("Root[a b c]( A@1,0,0[d] )");
    const Offsets first = OffsetsOf(scene);
    EXPECT_EQ(OffsetsOf(scene), first);
}

TEST(CollisionOffset, ASurfaceThatNoNodeReferencesIsSetToZeroAndNotCompared)
{
    SceneContainer scene = Scene("Root[a b]");
    scene.NodeLibrary[0].SurfaceList = {0};
    scene.SurfaceLibrary[1].SetCollisionOffset(7);
    EXPECT_EQ(OffsetsOf(scene), (Offsets{0, 0}));
}

TEST(CollisionOffset, ASurfaceIsNeverComparedWithItself) { EXPECT_EQ(OffsetsOf("Root[a a]( A[a] )"), Offsets{0}); }

TEST(CollisionOffset, EachReferenceToASurfaceHasABox)
{
    EXPECT_EQ(OffsetsOf("Root[a]( A@50,0,0[a] B@50,0,0[b] C@80,0,0[c] )"), (Offsets{0, 1, 0}));
}

TEST(CollisionOffset, BoxesAreInWorldSpace)
{
    EXPECT_EQ(OffsetsOf("Root( A@9,0,0( B@1,0,0[a] ) C@10,0,0[b] )"), (Offsets{0, 1}));
}

TEST(CollisionOffset, AMeshBelowZeroReachesUpToZero)
{
    SceneContainer scene = Scene("Root[a b]");
    MeshOf(scene, "a") = Support::BoxMesh({-3, 0, 0}, {-2, 1, 1});
    MeshOf(scene, "b") = Support::BoxMesh({0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(OffsetsOf(scene), (Offsets{0, 1}));
}

TEST(CollisionOffset, AMeshWithoutVerticesOverlapsEverythingAboveZero)
{
    SceneContainer scene = Scene("Root[a b]");
    MeshOf(scene, "a").Release();
    EXPECT_EQ(OffsetsOf(scene), (Offsets{0, 1}));
}

TEST(CollisionOffset, ComputesNoHashes)
{
    SceneContainer scene = Scene("Root[a b]");
    const std::uint32_t hash = SurfaceNamed(scene, "b").GetHash();
    scene.CalculateSurfaceCollisionOffset();
    EXPECT_TRUE(SurfaceNamed(scene, "b").GetIsHashCodeValid());
    EXPECT_EQ(SurfaceNamed(scene, "b").GetHash(), hash);
}

TEST(CollisionOffset, ABadIndexChangesNothing)
{
    SceneContainer good = Scene("Root[a b]( A[c] )");
    good.SurfaceLibrary[0].SetCollisionOffset(7);
    SceneContainer missing(good);
    missing.SurfaceLibrary[2].SetGeometryID(-1);
    Support::ExpectBadIndex(missing, [&] { missing.CalculateSurfaceCollisionOffset(); });
    for (const int surface : {-1, 3})
    {
        SceneContainer scene(good);
        scene.NodeLibrary[1].SurfaceList.push_back(surface);
        Support::ExpectBadIndex(scene, [&] { scene.CalculateSurfaceCollisionOffset(); });
        Support::DerivedContainer derived(scene);
        Support::ExpectBadIndex(derived, [&] { derived.CalculateSurfaceCollisionOffset(); });
    }
}

TEST(CollisionOffset, ACycleChangesNothing)
{
    SceneContainer scene = Scene("Root[a]( P[b] )");
    scene.NodeLibrary[1].ChildList.push_back(0);
    scene.SurfaceLibrary[0].SetCollisionOffset(7);
    Support::ExpectCycle(scene, [&] { scene.CalculateSurfaceCollisionOffset(); });
}

TEST(CollisionOffset, ManySparseSurfacesAndAMillionLevelsAreNotQuadratic)
{
    SceneContainer scene = Support::Chain(Support::kDeep);
    scene.GeometryLibrary.push_back(Support::UnitBox());
    scene.SurfaceLibrary.resize(100000);
    for (int i = 0; i < 100000; ++i)
    {
        scene.SurfaceLibrary[static_cast<std::size_t>(i)].SetGeometryID(0);
        scene.NodeLibrary[static_cast<std::size_t>(i) * 10].SurfaceList.push_back(i);
    }
    scene.NodeLibrary.back().SurfaceList = {99999, 99998};
    scene.CalculateSurfaceCollisionOffset();
    EXPECT_EQ(scene.SurfaceLibrary[0].GetCollisionOffset(), 0);
    EXPECT_EQ(scene.SurfaceLibrary[99998].GetCollisionOffset(), 1);
    EXPECT_EQ(scene.SurfaceLibrary[99999].GetCollisionOffset(), 0);
}

TEST(CollisionOffsetOverrides, TheWorldMatrixOfANodeIsReadOnce)
{
    Support::RecordingContainer scene(Scene("Root( A[a b] B[c] C )"));
    scene.CalculateSurfaceCollisionOffset();
    EXPECT_EQ(scene.Calls({"CalculateGlobalTM", "FindParentNode"}),
              "CalculateGlobalTM(1) FindParentNode(1) CalculateGlobalTM(0) FindParentNode(0) "
              "CalculateGlobalTM(2) FindParentNode(2) CalculateGlobalTM(0) FindParentNode(0)");
}

TEST(CollisionOffsetOverrides, MatricesAreReadForTheFirstSurfaceAndThenForThoseItIsComparedWith)
{
    // A node that references only the first surface is not needed for comparisons with the first surface.
    Support::RecordingContainer scene(Scene("A[a] | B[a] | C[b] | D[a] | E[a c] | F"));
    scene.CalculateSurfaceCollisionOffset();
    EXPECT_EQ(scene.Calls({"CalculateGlobalTM"}),
              "CalculateGlobalTM(0) CalculateGlobalTM(2) CalculateGlobalTM(4) "
              "CalculateGlobalTM(1) CalculateGlobalTM(3)");
}

TEST(CollisionOffsetOverrides, AllOffsetsAreResetBeforeAWorldMatrixIsRead)
{
    class Watcher : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        D3DXMATRIX CalculateGlobalTM(int index) override
        {
            for (const Surface& surface : SurfaceLibrary)
                EXPECT_EQ(surface.GetCollisionOffset(), 0);
            return DerivedContainer::CalculateGlobalTM(index);
        }
    };
    Watcher scene(Scene("Root[a]( A@50,0,0[b] )"));
    for (Surface& surface : scene.SurfaceLibrary)
        surface.SetCollisionOffset(7);
    EXPECT_EQ(OffsetsOf(scene), (Offsets{0, 0}));
}

TEST(CollisionOffsetOverrides, AnOverriddenWorldMatrixIsUsed)
{
    class Apart : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        D3DXMATRIX CalculateGlobalTM(int index) override
        {
            return Support::Translation(10.0F * static_cast<float>(index), 0, 0);
        }
    };
    Apart scene(Scene("Root[a]( A[b] )"));
    EXPECT_EQ(OffsetsOf(scene), (Offsets{0, 0}));
}

}  // namespace

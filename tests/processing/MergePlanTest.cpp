#include <importing/processing/MergePlan.h>

#include <support/Expectations.h>

#include <gtest/gtest.h>

namespace
{

using namespace Importing;

using Positions = std::vector<std::size_t>;

/// Returns meshes with these numbers of vertices and twice as many indices.
std::vector<Geometry> Meshes(const std::vector<std::size_t>& sizes)
{
    std::vector<Geometry> meshes(sizes.size());
    for (std::size_t i = 0; i < sizes.size(); ++i)
    {
        meshes[i].VertexArray.resize(sizes[i]);
        meshes[i].IndexArray.resize(2 * sizes[i]);
    }
    return meshes;
}

Map MapOf(float amount)
{
    Map map;
    map.SetAmount(amount);
    return map;
}

/// Returns surface i, which uses mesh i.
Surface SurfaceOf(int mesh, int material, const std::vector<float>& mapAmounts = {})
{
    Surface surface;
    surface.SetGeometryID(mesh);
    surface.SetMaterialID(material);
    for (const float amount : mapAmounts)
        surface.MapList.push_back(MapOf(amount));
    return surface;
}

TEST(MergePlan, OfNoSurfacesIsEmpty)
{
    const MergePlan plan = PlanMerges({}, {}, {}, 2, -1);
    EXPECT_TRUE(plan.merges.empty());
    EXPECT_TRUE(plan.comparedMaps.empty());
}

TEST(MergePlan, ContainsTheMeshAndSizeOfEachMerge)
{
    const std::vector<Surface> surfaces = {SurfaceOf(0, 7), SurfaceOf(1, 8), SurfaceOf(2, 7), SurfaceOf(3, 7)};
    const MergePlan plan = PlanMerges({0, 1, 2, 3}, surfaces, Meshes({3, 5, 4, 6}), 2, -1);
    ASSERT_EQ(plan.merges.size(), 1U);
    EXPECT_EQ(plan.merges[0].geometry, 0);
    EXPECT_EQ(plan.merges[0].joining, (Positions{2, 3}));
    EXPECT_EQ(plan.merges[0].joiningGeometries, (std::vector<int>{2, 3}));
    EXPECT_EQ(plan.merges[0].vertexCount, 13U);
    EXPECT_EQ(plan.merges[0].indexCount, 26U);
}

TEST(MergePlan, ContainsABaseWhoseFirstCandidateDidNotFit)
{
    const std::vector<Surface> surfaces = {SurfaceOf(0, 7), SurfaceOf(1, 7), SurfaceOf(2, 7)};
    const MergePlan plan = PlanMerges({0, 1, 2}, surfaces, Meshes({3, 8, 1}), 2, 10);
    ASSERT_EQ(plan.merges.size(), 2U);
    EXPECT_TRUE(plan.merges[0].joining.empty());
    EXPECT_EQ(plan.merges[1].geometry, 1);
    EXPECT_EQ(plan.merges[1].joining, Positions{2});
}

TEST(MergePlan, TreatsAMeshThatWasEmptiedByAnEarlierMergeAsEmpty)
{
    // Surfaces 1 and 2 share a mesh. It is appended with the first and empty at the second.
    const std::vector<Surface> surfaces = {SurfaceOf(0, 7), SurfaceOf(1, 7), SurfaceOf(1, 7)};
    const MergePlan plan = PlanMerges({0, 1, 2}, surfaces, Meshes({3, 4}), 2, 7);
    ASSERT_EQ(plan.merges.size(), 1U);
    EXPECT_EQ(plan.merges[0].joining, (Positions{1, 2}));
    EXPECT_EQ(plan.merges[0].vertexCount, 7U);
}

TEST(MergePlan, CountsMapsAsComparedUpToTheFirstDifference)
{
    const std::vector<Surface> surfaces = {SurfaceOf(0, 7, {1, 2, 3}), SurfaceOf(1, 7, {1, 5, 3}),
                                           SurfaceOf(2, 7, {4, 2, 3}), SurfaceOf(3, 7, {1, 2, 3}),
                                           SurfaceOf(4, 7, {1, 2}),    SurfaceOf(5, 8, {1, 2, 3})};
    const MergePlan plan = PlanMerges({0, 1, 2, 3, 4, 5}, surfaces, Meshes({1, 1, 1, 1, 1, 1}), 2, -1);
    EXPECT_EQ(plan.comparedMaps, (Positions{0, 2, 1, 3, 0, 0}));
}

TEST(MergePlan, CountsNoMapsAfterTheCandidateThatEndedASearch)
{
    const std::vector<Surface> surfaces = {SurfaceOf(0, 7, {1}), SurfaceOf(1, 7, {1}), SurfaceOf(2, 7, {2})};
    const MergePlan plan = PlanMerges({0, 1, 2}, surfaces, Meshes({5, 6, 1}), 2, 10);
    // Surface 0 stops at surface 1. Surface 1 continues with surface 2.
    EXPECT_EQ(plan.comparedMaps, (Positions{0, 1, 1}));

    const MergePlan shorter = PlanMerges({0, 1, 2}, surfaces, Meshes({5, 6, 1}), 4, 10);
    EXPECT_EQ(shorter.comparedMaps, (Positions{0, 0, 0}));
}

TEST(MergePlan, DoesNotChangeTheSurfaces)
{
    std::vector<Surface> surfaces = {SurfaceOf(0, 7, {1}), SurfaceOf(1, 7, {1})};
    PlanMerges({0, 1}, surfaces, Meshes({1, 1}), 2, -1);
    for (Surface& surface : surfaces)
        EXPECT_FALSE(surface.MapList[0].GetIsHashCodeValid());
}

TEST(MergePlan, RefusesABadMeshOnlyIfItIsLookedUp)
{
    const std::vector<Surface> alone = {SurfaceOf(-1, 7), SurfaceOf(0, 8), SurfaceOf(1, 8)};
    EXPECT_EQ(PlanMerges({0, 1, 2}, alone, Meshes({1, 1}), 2, -1).merges.size(), 1U);

    const std::vector<Surface> joining = {SurfaceOf(0, 7), SurfaceOf(9, 7)};
    Support::ExpectThrow<std::out_of_range>(
        [&] {
            PlanMerges({0, 1}, joining, Meshes({1}), 2, -1);
        },
        "invalid vector<T> subscript");
    Support::ExpectThrow<std::out_of_range>(
        [&] {
            PlanMerges({0, 2}, joining, Meshes({1}), 2, -1);
        },
        "invalid vector<T> subscript");
}

}  // namespace

#include <importing/records/Surface.h>

#include <records/HashModel.h>
#include <records/Watched.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Importing::Map;
using Importing::Surface;
using Support::HashModel;

Map MapOfType(const std::string& type)
{
    Map map;
    map.SetType(type);
    return map;
}

Surface WithMaps(const std::vector<std::string>& types)
{
    Surface surface;
    for (const std::string& type : types)
        surface.MapList.push_back(MapOfType(type));
    return surface;
}

Surface Filled()
{
    Surface surface = WithMaps({"diffuse", "bump"});
    surface.SetGeometryID(3);
    surface.SetMaterialID(4);
    surface.SetName("wall, a name longer than fifteen characters");
    surface.SetCollisionOffset(5);
    return surface;
}

void ExpectFilled(Surface& surface)
{
    EXPECT_EQ(surface.GetGeometryID(), 3);
    EXPECT_EQ(surface.GetMaterialID(), 4);
    EXPECT_EQ(surface.GetName(), "wall, a name longer than fifteen characters");
    EXPECT_EQ(surface.GetCollisionOffset(), 5);
    ASSERT_EQ(surface.MapList.size(), 2U);
    EXPECT_EQ(surface.MapList[0].GetType(), "diffuse");
    EXPECT_EQ(surface.MapList[1].GetType(), "bump");
}

TEST(Surface, Defaults)
{
    Surface surface;
    EXPECT_EQ(surface.GetGeometryID(), -1);
    EXPECT_EQ(surface.GetMaterialID(), -1);
    EXPECT_EQ(surface.GetName(), "");
    EXPECT_EQ(surface.GetCollisionOffset(), 0);
    EXPECT_TRUE(surface.MapList.empty());
    EXPECT_FALSE(surface.GetIsHashCodeValid());
}

TEST(Surface, SettersStore)
{
    Surface surface = Filled();
    ExpectFilled(surface);
}

TEST(Surface, CopiesAndMovesHaveEveryField)
{
    Surface original = Filled();
    Support::ExpectCopiesCarryTheHash(original);
    Surface copy(original);
    ExpectFilled(copy);
    copy.MapList[0].SetType("changed");
    ExpectFilled(original);
    Surface moved(Surface{original});
    ExpectFilled(moved);
    EXPECT_TRUE(moved.GetIsHashCodeValid());
    Surface assigned;
    assigned = std::move(moved);
    ExpectFilled(assigned);
    EXPECT_TRUE(assigned.GetIsHashCodeValid());
}

TEST(Surface, IndicesAreHashed)
{
    Support::ExpectHashed<Surface>(Filled(), {{"geometry", [](Surface& s) { s.SetGeometryID(9); }},
                                              {"material", [](Surface& s) { s.SetMaterialID(9); }}});
}

TEST(Surface, NameAndCollisionOffsetKeepTheHash)
{
    Surface surface = Filled();
    const std::uint32_t hash = surface.GetHash();
    surface.SetName("renamed");
    EXPECT_TRUE(surface.GetIsHashCodeValid());
    surface.SetCollisionOffset(77);
    EXPECT_TRUE(surface.GetIsHashCodeValid());
    EXPECT_EQ(surface.GetHash(), hash);

    Surface other = Filled();
    other.SetName("another");
    other.SetCollisionOffset(0);
    EXPECT_EQ(other.GetHash(), hash);
}

TEST(Surface, ChangingAMapsAmountChangesTheHash)
{
    Surface surface = Filled();
    const std::uint32_t hash = surface.GetHash();
    surface.MapList[1].SetAmount(0.5F);
    EXPECT_FALSE(surface.GetIsHashCodeValid());
    EXPECT_NE(surface.GetHash(), hash);
    EXPECT_TRUE(surface.GetIsHashCodeValid());
}

TEST(Surface, AddedMapWithoutAValidHashInvalidatesTheSurface)
{
    Surface surface = Filled();
    surface.GetHash();
    surface.MapList.push_back(MapOfType("new"));
    EXPECT_FALSE(surface.GetIsHashCodeValid());
}

TEST(Surface, ValidMapsDoNotMakeTheSurfacesHashValid)
{
    Surface surface = Filled();
    for (Map& map : surface.MapList)
        map.GetHash();
    EXPECT_FALSE(surface.GetIsHashCodeValid());
}

TEST(Surface, ComputingTheHashComputesThoseOfTheMaps)
{
    Surface surface = Filled();
    surface.GetHash();
    EXPECT_TRUE(surface.MapList[0].GetIsHashCodeValid());
    EXPECT_TRUE(surface.MapList[1].GetIsHashCodeValid());
}

TEST(Surface, OrderOfMapsIsHashed)
{
    Surface a = WithMaps({"x", "y"});
    Surface b = WithMaps({"y", "x"});
    EXPECT_TRUE(a != b);
}

TEST(Surface, HashFoldsTheFieldsInTheirOrder)
{
    Surface surface = Filled();
    const HashModel model = HashModel()
                                .Raw(std::int32_t{3})
                                .Raw(std::int32_t{4})
                                .Raw(surface.MapList[0].GetHash())
                                .Raw(surface.MapList[1].GetHash());
    EXPECT_EQ(surface.GetHash(), model.Fold());
}

TEST(Surface, GetMapCountsTheMapsOfOneType)
{
    const Surface surface = WithMaps({"x", "y", "x"});
    EXPECT_EQ(surface.GetMap("x", 0), 0);
    EXPECT_EQ(surface.GetMap("x", 1), 2);
    EXPECT_EQ(surface.GetMap("y", 0), 1);
}

TEST(Surface, GetMapFindsNothingBeyondTheMatches)
{
    const Surface surface = WithMaps({"x", "y", "x"});
    EXPECT_EQ(surface.GetMap("x", 2), -1);
    EXPECT_EQ(surface.GetMap("z", 0), -1);
    EXPECT_EQ(surface.GetMap("x", -1), -1);
    EXPECT_EQ(surface.GetMap("x", std::numeric_limits<int>::max()), -1);
    EXPECT_EQ(Surface().GetMap("x", 0), -1);
}

TEST(Surface, GetMapComparesTypesExactly)
{
    const Surface surface = WithMaps({"x", "xx", ""});
    EXPECT_EQ(surface.GetMap("X", 0), -1);
    EXPECT_EQ(surface.GetMap("xx", 0), 1);
    EXPECT_EQ(surface.GetMap("", 0), 2);
}

TEST(Surface, SameMaterialAndMapsIgnoresMeshNameAndOffset)
{
    Surface a = Filled();
    Surface b = Filled();
    b.SetGeometryID(99);
    b.SetName("another");
    b.SetCollisionOffset(99);
    EXPECT_TRUE(a.IsSameMaterialAndMaps(b));
}

TEST(Surface, SameMaterialWithoutMapsIsTheSame)
{
    Surface a;
    Surface b;
    EXPECT_TRUE(a.IsSameMaterialAndMaps(b));
    a.SetMaterialID(2);
    EXPECT_FALSE(a.IsSameMaterialAndMaps(b));
    b.SetMaterialID(2);
    EXPECT_TRUE(a.IsSameMaterialAndMaps(b));
}

TEST(Surface, DifferentMapsAreNotTheSame)
{
    Surface surface = WithMaps({"x", "y"});
    for (const auto& types : std::vector<std::vector<std::string>>{{}, {"x"}, {"y", "x"}, {"x", "z"}, {"x", "y", "y"}})
    {
        Surface other = WithMaps(types);
        EXPECT_FALSE(surface.IsSameMaterialAndMaps(other)) << types.size();
        EXPECT_FALSE(other.IsSameMaterialAndMaps(surface)) << types.size();
    }
}

TEST(Surface, SameMapsComputesHashesUpToTheFirstPairThatDiffers)
{
    Surface a = WithMaps({"x", "y", "z"});
    Surface b = WithMaps({"x", "different", "z"});
    EXPECT_FALSE(a.IsSameMaterialAndMaps(b));
    for (Surface* surface : {&a, &b})
    {
        EXPECT_TRUE(surface->MapList[0].GetIsHashCodeValid());
        EXPECT_TRUE(surface->MapList[1].GetIsHashCodeValid());
        EXPECT_FALSE(surface->MapList[2].GetIsHashCodeValid());
    }
}

TEST(Surface, DifferentMaterialsComputeNoHashes)
{
    Surface a = WithMaps({"x"});
    Surface b = WithMaps({"x"});
    b.SetMaterialID(1);
    EXPECT_FALSE(a.IsSameMaterialAndMaps(b));
    EXPECT_FALSE(a.MapList[0].GetIsHashCodeValid());
    EXPECT_FALSE(b.MapList[0].GetIsHashCodeValid());
}

TEST(Surface, ReleaseEmptiesAllButTheName)
{
    Surface surface = Filled();
    surface.Release();
    EXPECT_EQ(surface.GetGeometryID(), -1);
    EXPECT_EQ(surface.GetMaterialID(), -1);
    EXPECT_EQ(surface.GetCollisionOffset(), 0);
    EXPECT_TRUE(surface.MapList.empty());
    EXPECT_EQ(surface.GetName(), "wall, a name longer than fifteen characters");
}

TEST(Surface, ReleaseKeepsTheCachedHash)
{
    Surface surface = Filled();
    const std::uint32_t hash = surface.GetHash();
    surface.Release();
    EXPECT_TRUE(surface.GetIsHashCodeValid());
    EXPECT_EQ(surface.GetHash(), hash);

    Surface invalid = Filled();
    invalid.Release();
    EXPECT_FALSE(invalid.GetIsHashCodeValid());
}

TEST(Surface, SettersOfHashedFieldsInvalidateTheHashThroughTheVirtualTable)
{
    Support::Watched<Surface> surface;
    surface.SetGeometryID(1);
    surface.SetMaterialID(1);
    EXPECT_EQ(surface.changes, 2);
    surface.SetName("a");
    surface.SetCollisionOffset(1);
    surface.Release();
    EXPECT_EQ(surface.changes, 2);
}

}  // namespace

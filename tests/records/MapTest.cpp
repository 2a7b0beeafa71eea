#include <importing/records/Map.h>

#include <math/FloatBits.h>
#include <records/HashModel.h>
#include <records/Watched.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <utility>

namespace
{

using Importing::Map;
using Support::HashModel;
using Support::SameBitsOrNaN;

constexpr D3DXMATRIX kCounted(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);

Map Filled()
{
    Map map;
    map.SetTextureID(7);
    map.SetType("diffuse");
    map.SetUVSetIndex(2);
    map.SetMatrix(kCounted);
    map.SetAmount(0.5F);
    return map;
}

void ExpectFilled(Map& map)
{
    EXPECT_EQ(map.GetTextureID(), 7);
    EXPECT_EQ(map.GetType(), "diffuse");
    EXPECT_EQ(map.GetUVSetIndex(), 2U);
    EXPECT_TRUE(SameBitsOrNaN(map.GetMatrix(), kCounted));
    EXPECT_EQ(map.GetAmount(), 0.5F);
}

TEST(Map, Defaults)
{
    Map map;
    EXPECT_EQ(map.GetTextureID(), -1);
    EXPECT_EQ(map.GetType(), "");
    EXPECT_EQ(map.GetUVSetIndex(), 0U);
    EXPECT_TRUE(SameBitsOrNaN(map.GetMatrix(), D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)));
    EXPECT_EQ(map.GetAmount(), 1.0F);
    EXPECT_FALSE(map.GetIsHashCodeValid());
}

TEST(Map, SettersStore)
{
    Map map = Filled();
    ExpectFilled(map);
}

TEST(Map, CopiesAndMovesHaveEveryField)
{
    Map original = Filled();
    Support::ExpectCopiesCarryTheHash(original);
    Map copy(original);
    ExpectFilled(copy);
    Map moved(std::move(copy));
    ExpectFilled(moved);
    Map assigned;
    assigned = std::move(moved);
    ExpectFilled(assigned);
    EXPECT_TRUE(assigned.GetIsHashCodeValid());
}

TEST(Map, EverySetterChangesTheHash)
{
    D3DXMATRIX other = kCounted;
    other._44 = 17;
    Support::ExpectHashed<Map>(Filled(), {{"texture", [](Map& m) { m.SetTextureID(8); }},
                                          {"type", [](Map& m) { m.SetType("Diffuse"); }},
                                          {"UV set", [](Map& m) { m.SetUVSetIndex(3); }},
                                          {"matrix", [other](Map& m) { m.SetMatrix(other); }},
                                          {"amount", [](Map& m) { m.SetAmount(0.75F); }}});
}

TEST(Map, NearlyEqualNumbersHashAlike)
{
    D3DXMATRIX nearly = kCounted;
    for (auto& row : nearly.m)
        for (float& value : row)
            value = std::nextafter(value, 99.0F);
    Support::ExpectSameHash<Map>(Filled(), {{"matrix", [nearly](Map& m) { m.SetMatrix(nearly); }},
                                            {"amount", [](Map& m) { m.SetAmount(std::nextafter(0.5F, 9.0F)); }}});
}

TEST(Map, HashFoldsTheFieldsInTheirOrder)
{
    Map map = Filled();
    const HashModel model = HashModel()
                                .Floats({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16})
                                .Raw(std::uint32_t{2})
                                .Text("diffuse")
                                .Float(0.5F)
                                .Raw(std::int32_t{7});
    EXPECT_EQ(map.GetHash(), model.Fold());
}

TEST(Map, SettersInvalidateTheHashThroughTheVirtualTable)
{
    Support::Watched<Map> map;
    map.SetTextureID(1);
    map.SetType("normal");
    map.SetUVSetIndex(1);
    map.SetMatrix(map.GetMatrix());
    map.SetAmount(0.5F);
    EXPECT_EQ(map.changes, 5);
}

}  // namespace

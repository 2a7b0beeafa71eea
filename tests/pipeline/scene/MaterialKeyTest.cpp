#include <pipeline/scene/MaterialKey.h>

#include <gtest/gtest.h>

namespace
{

using Importing::Map;
using Importing::Surface;
using Pipeline::MaterialKey;

Surface SurfaceWith(const Map& map)
{
    Surface surface;
    surface.SetMaterialID(3);
    surface.MapList.push_back(map);
    return surface;
}

TEST(MaterialKey, EqualMaterialsAndLayersHaveEqualKeys)
{
    Map map;
    map.SetTextureID(1);
    map.SetType("diffuse");
    Surface first = SurfaceWith(map);
    Surface second = SurfaceWith(map);
    second.SetName("other");
    second.SetGeometryID(5);
    EXPECT_EQ(MaterialKey(first), MaterialKey(second));
}

TEST(MaterialKey, EveryFieldOfALayerCounts)
{
    Map plain;
    Surface surface = SurfaceWith(plain);
    const auto differs = [&surface](auto change) {
        Map map;
        change(map);
        Surface other = SurfaceWith(map);
        return MaterialKey(other) != MaterialKey(surface);
    };
    EXPECT_TRUE(differs([](Map& map) { map.SetTextureID(1); }));
    EXPECT_TRUE(differs([](Map& map) { map.SetType("normal"); }));
    EXPECT_TRUE(differs([](Map& map) { map.SetUVSetIndex(1); }));
    EXPECT_TRUE(differs([](Map& map) { map.SetAmount(0.5F); }));
    EXPECT_TRUE(differs([](Map& map) {
        D3DXMATRIX matrix = map.GetMatrix();
        matrix._41 = 0.5F;
        map.SetMatrix(matrix);
    }));
}

TEST(MaterialKey, TheMaterialAndTheNumberOfLayersCount)
{
    Surface bare;
    Surface other;
    other.SetMaterialID(0);
    Surface mapped;
    mapped.MapList.emplace_back();
    EXPECT_NE(MaterialKey(bare), MaterialKey(other));
    EXPECT_NE(MaterialKey(bare), MaterialKey(mapped));
}

}  // namespace

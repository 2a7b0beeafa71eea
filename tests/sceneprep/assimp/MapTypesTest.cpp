#include <sceneprep/assimp/MapTypes.h>

#include <gtest/gtest.h>

#include <set>

namespace
{

using namespace Sceneprep;

TEST(MapTypes, EveryMapTypeHasItsTextureType)
{
    std::set<aiTextureType> textures;
    for (const MapType& type : kMapTypes)
    {
        EXPECT_EQ(FindTextureType(type.name), type.texture) << type.name;
        EXPECT_TRUE(textures.insert(type.texture).second) << type.name;
    }
}

TEST(MapTypes, NamesAreComparedExactly)
{
    EXPECT_EQ(FindTextureType("normal"), aiTextureType_NORMALS);
    EXPECT_EQ(FindTextureType("Normal"), std::nullopt);
    EXPECT_EQ(FindTextureType(""), std::nullopt);
}

}  // namespace

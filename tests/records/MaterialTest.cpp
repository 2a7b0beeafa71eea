#include <importing/records/Material.h>

#include <math/FloatBits.h>
#include <records/HashModel.h>
#include <records/Watched.h>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace
{

using Importing::Material;
using Support::HashModel;
using Support::SameBitsOrNaN;

Material Filled()
{
    Material material;
    material.SetName("brick, a name longer than fifteen characters");
    material.SetDiffuse(D3DXCOLOR(0.1F, 0.2F, 0.3F, 0.4F));
    material.SetEmissive(D3DXCOLOR(0.5F, 0.6F, 0.7F, 0.8F));
    material.SetSpecular(D3DXCOLOR(0.9F, 1.1F, 1.2F, 1.3F));
    material.SetSpecularPower(32);
    material.SetOpacity(0.5F);
    return material;
}

void ExpectFilled(Material& material)
{
    EXPECT_EQ(material.GetName(), "brick, a name longer than fifteen characters");
    EXPECT_EQ(material.GetDiffuse(), D3DXCOLOR(0.1F, 0.2F, 0.3F, 0.4F));
    EXPECT_EQ(material.GetEmissive(), D3DXCOLOR(0.5F, 0.6F, 0.7F, 0.8F));
    EXPECT_EQ(material.GetSpecular(), D3DXCOLOR(0.9F, 1.1F, 1.2F, 1.3F));
    EXPECT_EQ(material.GetSpecularPower(), 32.0F);
    EXPECT_EQ(material.GetOpacity(), 0.5F);
}

TEST(Material, Defaults)
{
    Material material;
    EXPECT_EQ(material.GetName(), "Default material");
    const float grey = Support::FromBits(0x3F2AAAABU);
    EXPECT_TRUE(SameBitsOrNaN(material.GetDiffuse(), D3DXCOLOR(grey, grey, grey, 1)));
    EXPECT_TRUE(SameBitsOrNaN(material.GetEmissive(), D3DXCOLOR(0, 0, 0, 1)));
    EXPECT_TRUE(SameBitsOrNaN(material.GetSpecular(), D3DXCOLOR(0, 0, 0, 1)));
    EXPECT_EQ(material.GetSpecularPower(), 16.0F);
    EXPECT_EQ(material.GetOpacity(), 1.0F);
    EXPECT_FALSE(material.GetIsHashCodeValid());
}

TEST(Material, SettersStore)
{
    Material material = Filled();
    ExpectFilled(material);
}

TEST(Material, CopiesAndMovesHaveEveryField)
{
    Material original = Filled();
    Support::ExpectCopiesCarryTheHash(original);
    Material copy(original);
    ExpectFilled(copy);
    Material moved(std::move(copy));
    ExpectFilled(moved);
    EXPECT_TRUE(moved.GetIsHashCodeValid());
    Material assigned;
    assigned = std::move(moved);
    ExpectFilled(assigned);
    EXPECT_TRUE(assigned.GetIsHashCodeValid());
}

TEST(Material, EverySetterChangesTheHash)
{
    Support::ExpectHashed<Material>(Filled(),
                                    {{"name", [](Material& m) { m.SetName("stone"); }},
                                     {"diffuse", [](Material& m) { m.SetDiffuse(D3DXCOLOR(0.1F, 0.2F, 0.3F, 9)); }},
                                     {"emissive", [](Material& m) { m.SetEmissive(D3DXCOLOR(0.5F, 0.6F, 9, 0.8F)); }},
                                     {"specular", [](Material& m) { m.SetSpecular(D3DXCOLOR(0.9F, 9, 1.2F, 1.3F)); }},
                                     {"specular power", [](Material& m) { m.SetSpecularPower(33); }},
                                     {"opacity", [](Material& m) { m.SetOpacity(0.75F); }}});
}

TEST(Material, NearlyEqualNumbersHashAlikeAndCompareEqual)
{
    const auto up = [](float value) { return std::nextafter(value, 1e9F); };
    Support::ExpectSameHash<Material>(
        Filled(), {{"diffuse", [up](Material& m) { m.SetDiffuse(D3DXCOLOR(up(0.1F), up(0.2F), up(0.3F), up(0.4F))); }},
                   {"specular power", [up](Material& m) { m.SetSpecularPower(up(32)); }},
                   {"opacity", [up](Material& m) { m.SetOpacity(up(0.5F)); }}});

    Material a = Filled();
    Material b = Filled();
    b.SetOpacity(Support::FromBits(Support::Bits(0.5F) | 0xFFU));
    EXPECT_TRUE(a == b);
    b.SetOpacity(Support::FromBits(Support::Bits(0.5F) + 0x100U));
    EXPECT_TRUE(a != b);
}

TEST(Material, HashFoldsTheFieldsInTheirOrder)
{
    Material material = Filled();
    const HashModel model = HashModel()
                                .Text(material.GetName())
                                .Floats({0.5F, 32})
                                .Floats({1.3F, 0.9F, 1.1F, 1.2F})
                                .Floats({0.8F, 0.5F, 0.6F, 0.7F})
                                .Floats({0.4F, 0.1F, 0.2F, 0.3F});
    EXPECT_EQ(material.GetHash(), model.Fold());
}

TEST(Material, SettersInvalidateTheHashThroughTheVirtualTable)
{
    Support::Watched<Material> material;
    material.SetName("a");
    material.SetDiffuse(D3DXCOLOR(1, 1, 1, 1));
    material.SetEmissive(D3DXCOLOR(1, 1, 1, 1));
    material.SetSpecular(D3DXCOLOR(1, 1, 1, 1));
    material.SetSpecularPower(2);
    material.SetOpacity(0.5F);
    EXPECT_EQ(material.changes, 6);
}

}  // namespace

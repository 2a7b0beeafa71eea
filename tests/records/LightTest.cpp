#include <importing/records/Light.h>

#include <math/FloatBits.h>
#include <records/HashModel.h>
#include <records/Watched.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

namespace
{

using Importing::Light;
using Importing::Transform;
using Support::HashModel;
using Support::SameBitsOrNaN;

Transform Moved(float x) { return Transform(D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 0, 0, 1)); }

Light Filled()
{
    Light light;
    light.SetName("sun");
    light.SetOffsetMatrix(Moved(5));
    light.SetType(Light::LightType::Spot);
    light.SetDiffuse(D3DXCOLOR(0.1F, 0.2F, 0.3F, 0.4F));
    light.SetAmbient(D3DXCOLOR(0.5F, 0.6F, 0.7F, 0.8F));
    light.SetSpecular(D3DXCOLOR(0.9F, 1.1F, 1.2F, 1.3F));
    light.SetAttenuation(D3DXVECTOR3(2, 3, 4));
    light.SetRange(50);
    light.SetTheta(0.25F);
    light.SetPhi(0.75F);
    light.SetShadowCast(true);
    light.SetShadowDensity(0.125F);
    return light;
}

void ExpectFilled(Light& light)
{
    EXPECT_EQ(light.GetName(), "sun");
    EXPECT_TRUE(SameBitsOrNaN(light.GetOffsetMatrix().GetMatrix(), Moved(5).GetMatrix()));
    EXPECT_EQ(light.GetType(), Light::LightType::Spot);
    EXPECT_EQ(light.GetDiffuse(), D3DXCOLOR(0.1F, 0.2F, 0.3F, 0.4F));
    EXPECT_EQ(light.GetAmbient(), D3DXCOLOR(0.5F, 0.6F, 0.7F, 0.8F));
    EXPECT_EQ(light.GetSpecular(), D3DXCOLOR(0.9F, 1.1F, 1.2F, 1.3F));
    EXPECT_EQ(light.GetAttenuation(), D3DXVECTOR3(2, 3, 4));
    EXPECT_EQ(light.GetRange(), 50.0F);
    EXPECT_EQ(light.GetTheta(), 0.25F);
    EXPECT_EQ(light.GetPhi(), 0.75F);
    EXPECT_TRUE(light.GetShadowCast());
    EXPECT_EQ(light.GetShadowDensity(), 0.125F);
}

TEST(Light, Defaults)
{
    Light light;
    EXPECT_EQ(light.GetName(), "");
    EXPECT_TRUE(SameBitsOrNaN(light.GetOffsetMatrix().GetMatrix(), Transform::Indentity));
    EXPECT_EQ(light.GetType(), Light::LightType::Unspecified);
    EXPECT_EQ(light.GetDiffuse(), D3DXCOLOR(1, 1, 1, 1));
    EXPECT_EQ(light.GetAmbient(), D3DXCOLOR(0, 0, 0, 1));
    EXPECT_EQ(light.GetSpecular(), D3DXCOLOR(0, 0, 0, 1));
    EXPECT_EQ(light.GetAttenuation(), D3DXVECTOR3(1, 0, 0));
    EXPECT_EQ(light.GetRange(), 10000.0F);
    EXPECT_FALSE(light.GetShadowCast());
    EXPECT_EQ(light.GetShadowDensity(), 1.0F);
    EXPECT_FALSE(light.GetIsHashCodeValid());
}

TEST(Light, DefaultConeAnglesExceedAFullTurn)
{
    const Light light;
    EXPECT_EQ(Support::Bits(light.GetTheta()), 0x40F01CACU);
    EXPECT_EQ(Support::Bits(light.GetPhi()), 0x40FB47AEU);
}

TEST(Light, TypesHaveFixedNumbers)
{
    EXPECT_EQ(static_cast<int>(Light::LightType::Unspecified), 0);
    EXPECT_EQ(static_cast<int>(Light::LightType::Point), 1);
    EXPECT_EQ(static_cast<int>(Light::LightType::Spot), 2);
    EXPECT_EQ(static_cast<int>(Light::LightType::Directional), 3);
    EXPECT_EQ(sizeof(Light::LightType), 4U);
}

TEST(Light, TypeOutsideTheEnumerationIsStored)
{
    Light light;
    light.SetType(static_cast<Light::LightType>(-9));
    EXPECT_EQ(static_cast<int>(light.GetType()), -9);
}

TEST(Light, SettersStore)
{
    Light light = Filled();
    ExpectFilled(light);
}

TEST(Light, CopiesHaveEveryField)
{
    Light original = Filled();
    Support::ExpectCopiesCarryTheHash(original);
    Light copy(original);
    ExpectFilled(copy);
    Light assigned;
    assigned = original;
    ExpectFilled(assigned);
}

TEST(Light, EverySetterChangesTheHash)
{
    Support::ExpectHashed<Light>(Filled(),
                                 {{"name", [](Light& l) { l.SetName("moon"); }},
                                  {"offset", [](Light& l) { l.SetOffsetMatrix(Moved(6)); }},
                                  {"type", [](Light& l) { l.SetType(Light::LightType::Point); }},
                                  {"diffuse", [](Light& l) { l.SetDiffuse(D3DXCOLOR(0.1F, 0.2F, 0.3F, 9)); }},
                                  {"ambient", [](Light& l) { l.SetAmbient(D3DXCOLOR(0.5F, 0.6F, 9, 0.8F)); }},
                                  {"specular", [](Light& l) { l.SetSpecular(D3DXCOLOR(0.9F, 9, 1.2F, 1.3F)); }},
                                  {"attenuation", [](Light& l) { l.SetAttenuation(D3DXVECTOR3(2, 3, 9)); }},
                                  {"range", [](Light& l) { l.SetRange(51); }},
                                  {"theta", [](Light& l) { l.SetTheta(0.5F); }},
                                  {"phi", [](Light& l) { l.SetPhi(0.5F); }},
                                  {"shadow cast", [](Light& l) { l.SetShadowCast(false); }},
                                  {"shadow density", [](Light& l) { l.SetShadowDensity(0.5F); }}});
}

TEST(Light, NearlyEqualNumbersHashAlike)
{
    const auto up = [](float value) { return std::nextafter(value, 1e9F); };
    Support::ExpectSameHash<Light>(
        Filled(), {{"attenuation", [up](Light& l) { l.SetAttenuation(D3DXVECTOR3(up(2), up(3), up(4))); }},
                   {"range", [up](Light& l) { l.SetRange(up(50)); }},
                   {"theta", [up](Light& l) { l.SetTheta(up(0.25F)); }},
                   {"phi", [up](Light& l) { l.SetPhi(up(0.75F)); }},
                   {"shadow density", [up](Light& l) { l.SetShadowDensity(up(0.125F)); }},
                   {"diffuse", [up](Light& l) { l.SetDiffuse(D3DXCOLOR(up(0.1F), up(0.2F), up(0.3F), up(0.4F))); }}});
}

TEST(Light, HashFoldsTheFieldsInTheirOrder)
{
    Light light = Filled();
    const HashModel model = HashModel()
                                .Text("sun")
                                .Placement(Moved(5))
                                .Raw(std::int32_t{2})
                                .Floats({0.4F, 0.1F, 0.2F, 0.3F})
                                .Floats({0.8F, 0.5F, 0.6F, 0.7F})
                                .Floats({1.3F, 0.9F, 1.1F, 1.2F})
                                .Floats({2, 3, 4, 50, 0.25F, 0.75F})
                                .Raw(std::uint8_t{1})
                                .Float(0.125F);
    EXPECT_EQ(light.GetHash(), model.Fold());
}

TEST(Light, SettersInvalidateTheHashThroughTheVirtualTable)
{
    Support::Watched<Light> light;
    light.SetName("a");
    light.SetOffsetMatrix(Importing::Transform());
    light.SetType(Light::LightType::Spot);
    light.SetDiffuse(D3DXCOLOR(1, 1, 1, 1));
    light.SetAmbient(D3DXCOLOR(1, 1, 1, 1));
    light.SetSpecular(D3DXCOLOR(1, 1, 1, 1));
    light.SetAttenuation(D3DXVECTOR3(1, 1, 1));
    light.SetRange(1);
    light.SetTheta(1);
    light.SetPhi(1);
    light.SetShadowCast(true);
    light.SetShadowDensity(1);
    EXPECT_EQ(light.changes, 12);
}

}  // namespace

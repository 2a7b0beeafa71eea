#include <sceneprep/export/gltf/TextureTransform.h>

#include <gtest/gtest.h>
#include <support/Random.h>

#include <cmath>
#include <limits>

namespace
{

using Sceneprep::Gltf::TextureTransform;

D3DXMATRIX Identity()
{
    D3DXMATRIX matrix;
    return *D3DXMatrixIdentity(&matrix);
}

double PartOf(const tinygltf::Value& value, const char* key, int index, double otherwise)
{
    return value.IsObject() && value.Has(key) ? value.Get(key).Get(index).GetNumberAsDouble() : otherwise;
}

/// What a reader does: scale, turn, move; with v downwards on both sides.
D3DXVECTOR2 AsRead(const tinygltf::Value& value, const D3DXVECTOR2& uv)
{
    const double r = value.IsObject() && value.Has("rotation") ? value.Get("rotation").GetNumberAsDouble() : 0;
    const double u = uv.x * PartOf(value, "scale", 0, 1);
    const double v = (1 - uv.y) * PartOf(value, "scale", 1, 1);
    const double x = std::cos(r) * u + std::sin(r) * v + PartOf(value, "offset", 0, 0);
    const double y = -std::sin(r) * u + std::cos(r) * v + PartOf(value, "offset", 1, 0);
    return {static_cast<float>(x), static_cast<float>(1 - y)};
}

TEST(GltfTextureTransform, TheIdentityNeedsNoExtension) { EXPECT_FALSE(TextureTransform(Identity()).IsObject()); }

TEST(GltfTextureTransform, AMatrixThatIsNotFiniteIsLeftOut)
{
    D3DXMATRIX matrix = Identity();
    matrix._41 = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(TextureTransform(matrix).IsObject());
}

TEST(GltfTextureTransform, MovesScalesAndTurnsAsTheMatrixDoes)
{
    Support::Random random(3);
    for (int run = 0; run < 1000; ++run)
    {
        const float angle = random.Between(-3, 3);
        const float width = random.Between(0.1F, 4);
        const float height = random.Between(-4, 4);
        D3DXMATRIX matrix = Identity();
        matrix._11 = width * std::cos(angle);
        matrix._12 = width * std::sin(angle);
        matrix._21 = -height * std::sin(angle);
        matrix._22 = height * std::cos(angle);
        matrix._41 = random.Between(-2, 2);
        matrix._42 = random.Between(-2, 2);

        const D3DXVECTOR2 uv(random.Between(-1, 2), random.Between(-1, 2));
        D3DXVECTOR2 expected;
        D3DXVec2TransformCoord(&expected, &uv, &matrix);
        const D3DXVECTOR2 actual = AsRead(TextureTransform(matrix), uv);
        EXPECT_NEAR(actual.x, expected.x, 1e-5F);
        EXPECT_NEAR(actual.y, expected.y, 1e-5F);
    }
}

}  // namespace

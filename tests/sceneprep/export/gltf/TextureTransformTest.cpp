#include <sceneprep/export/gltf/TextureTransform.h>

#include <gtest/gtest.h>
#include <support/Random.h>

#include <cmath>
#include <limits>

namespace
{

using Sceneprep::Json;
using Sceneprep::Gltf::TextureTransform;

D3DXMATRIX Identity()
{
    D3DXMATRIX matrix;
    return *D3DXMatrixIdentity(&matrix);
}

double PartOf(const Json& value, const char* key, std::size_t index, double otherwise)
{
    return value.contains(key) ? value[key][index].get<double>() : otherwise;
}

/// Applies a transform as readers do: scale, rotation, translation, with v pointing down before and after.
D3DXVECTOR2 AsRead(const Json& value, const D3DXVECTOR2& uv)
{
    const double r = value.contains("rotation") ? value["rotation"].get<double>() : 0;
    const double u = uv.x * PartOf(value, "scale", 0, 1);
    const double v = (1 - uv.y) * PartOf(value, "scale", 1, 1);
    const double x = std::cos(r) * u + std::sin(r) * v + PartOf(value, "offset", 0, 0);
    const double y = -std::sin(r) * u + std::cos(r) * v + PartOf(value, "offset", 1, 0);
    return {static_cast<float>(x), static_cast<float>(1 - y)};
}

TEST(GltfTextureTransform, TheIdentityNeedsNoExtension) { EXPECT_TRUE(TextureTransform(Identity()).is_null()); }

TEST(GltfTextureTransform, AMatrixThatIsNotFiniteIsIgnored)
{
    D3DXMATRIX matrix = Identity();
    matrix._41 = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(TextureTransform(matrix).is_null());
}

TEST(GltfTextureTransform, TranslatesScalesAndRotatesAsTheMatrixDoes)
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

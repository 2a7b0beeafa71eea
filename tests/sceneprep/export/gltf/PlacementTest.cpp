#include <sceneprep/export/gltf/Placement.h>

#include <gtest/gtest.h>
#include <pipeline/scene/Hierarchy.h>
#include <support/Random.h>

#include <cmath>
#include <limits>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using Pipeline::Product;

D3DXMATRIX MatrixOf(const Parts& parts)
{
    D3DXMATRIX matrix;
    D3DXMatrixTransformation(&matrix, nullptr, nullptr, &parts.scale, nullptr, &parts.rotation, &parts.translation);
    return matrix;
}

D3DXMATRIX MatrixOf(const D3DXQUATERNION& rotation) { return MatrixOf({{1, 1, 1}, rotation, {0, 0, 0}}); }

void ExpectNear(const D3DXMATRIX& actual, const D3DXMATRIX& expected, float tolerance)
{
    for (std::size_t r = 0; r < 4; ++r)
        for (std::size_t c = 0; c < 4; ++c)
            EXPECT_NEAR(actual.m[r][c], expected.m[r][c], tolerance) << r << ' ' << c;
}

D3DXMATRIX Identity()
{
    D3DXMATRIX matrix;
    return *D3DXMatrixIdentity(&matrix);
}

D3DXMATRIX Sheared()
{
    D3DXMATRIX matrix = Identity();
    matrix._21 = 0.5F;
    matrix._42 = 3;
    return matrix;
}

TEST(GltfPlacement, TheIdentitySetsNothing)
{
    Json node = Json::object();
    EXPECT_FALSE(Place(Identity(), node));
    EXPECT_FALSE(node.contains("matrix"));
    EXPECT_FALSE(node.contains("scale"));
}

TEST(GltfPlacement, AMatrixWithoutShearIsKeptBitForBit)
{
    D3DXMATRIX matrix = MatrixOf({{-2, 3, 0.1F}, {0.6F, 0, 0, 0.8F}, {1, 2, 3}});
    Json node = Json::object();
    EXPECT_FALSE(Place(matrix, node));
    ASSERT_EQ(node["matrix"].size(), 16U);
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(node["matrix"][i].get<float>(), (&matrix.m[0][0])[i]) << i;
}

TEST(GltfPlacement, MirroringIsNotShear)
{
    D3DXMATRIX mirror;
    D3DXMatrixScaling(&mirror, -1, 1, 1);
    EXPECT_TRUE(Pipeline::IsShearFree(mirror));
    EXPECT_EQ(SplitShearFree(mirror).scale.x, -1);
}

TEST(GltfPlacement, ASingularMatrixKeepsTranslationAndRotation)
{
    const D3DXMATRIX matrix = MatrixOf({{2, 0, 3}, {0.6F, 0, 0, 0.8F}, {1, 2, 3}});
    const D3DXMATRIX back = MatrixOf(SplitShearFree(matrix));
    for (unsigned i = 0; i < 16; ++i)
        EXPECT_NEAR((&back.m[0][0])[i], (&matrix.m[0][0])[i], 1e-6F) << i;
}

TEST(GltfPlacement, AShearedMatrixNeedsTwoNodes)
{
    Json node = Json::object();
    const std::optional<D3DXQUATERNION> inner = Place(Sheared(), node);
    ASSERT_TRUE(inner);
    ASSERT_EQ(node["scale"].size(), 3U);
    EXPECT_FALSE(node.contains("matrix"));
    EXPECT_EQ(node["translation"], Json::array({0, 3, 0}));
    const ShearedParts parts = SplitSheared(Sheared());
    ExpectNear(Product(MatrixOf(parts.inner), MatrixOf(parts.outer)), Sheared(), 1e-6F);
}

TEST(GltfPlacement, AnyMatrixIsTheProductOfItsTwoTransforms)
{
    Support::Random random(7);
    for (int run = 0; run < 1000; ++run)
    {
        D3DXMATRIX matrix = Identity();
        for (std::size_t r = 0; r < 4; ++r)
            for (std::size_t c = 0; c < 3; ++c)
                matrix.m[r][c] = random.Between(-3, 3);
        const ShearedParts parts = SplitSheared(matrix);
        ExpectNear(Product(MatrixOf(parts.inner), MatrixOf(parts.outer)), matrix, 2e-5F);
    }
}

TEST(GltfPlacement, ASingularMatrixIsTheProductOfItsTwoTransforms)
{
    D3DXMATRIX flat = Identity();
    flat._22 = 0;
    const ShearedParts parts = SplitSheared(flat);
    ExpectNear(Product(MatrixOf(parts.inner), MatrixOf(parts.outer)), flat, 1e-6F);
    D3DXMATRIX line = flat;
    line._33 = 0;
    const ShearedParts thin = SplitSheared(line);
    ExpectNear(Product(MatrixOf(thin.inner), MatrixOf(thin.outer)), line, 1e-6F);
}

TEST(GltfPlacement, AMatrixThatIsNotFiniteSetsNothing)
{
    D3DXMATRIX matrix = Identity();
    matrix._11 = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(IsFinite(matrix));
    Json node = Json::object();
    EXPECT_FALSE(Place(matrix, node));
    EXPECT_FALSE(node.contains("matrix"));
}

TEST(GltfPlacement, PartsHaveAUnitRotation)
{
    Json node = Json::object();
    SetParts({{1, 2, 3}, {0, 0, 3, 4}, {5, 6, 7}}, node);
    EXPECT_EQ(node["rotation"], Json::array({0.0, 0.0, 0.6, 0.8}));
    SetParts({{1, 2, 3}, {0, 0, 0, 0}, {5, 6, 7}}, node);
    EXPECT_EQ(node["rotation"], Json::array({0, 0, 0, 1}));
}

}  // namespace

#include <pipeline/steps/AttributeBaking.h>

#include <gtest/gtest.h>
#include <support/Meshes.h>
#include <support/Random.h>
#include <support/SameBits.h>
#include <support/SceneText.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Pipeline::AttributeBaking;
using Pipeline::VertexLayout;
using Support::Product;
using Support::Random;
using Support::Scaling;

/// About z, then about x.
D3DXMATRIX Rotation(float angle)
{
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    return Product(D3DXMATRIX(c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1),
                   D3DXMATRIX(1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1));
}

D3DXMATRIX Sheared()
{
    D3DXMATRIX matrix = Scaling(1, 2, 3);
    matrix._21 = 1.5F;
    return matrix;
}

double AngleBetween(const D3DXVECTOR3& a, const std::array<double, 3>& b)
{
    const std::array<double, 3> c = {a.y * b[2] - a.z * b[1], a.z * b[0] - a.x * b[2], a.x * b[1] - a.y * b[0]};
    const double dot = a.x * b[0] + a.y * b[1] + a.z * b[2];
    return std::atan2(std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]), dot);
}

/// The normal of a plane after two directions in it have been multiplied by the matrix.
std::array<double, 3> NormalAfter(const D3DXVECTOR3& u, const D3DXVECTOR3& v, const D3DXMATRIX& m, double sign)
{
    const auto times = [&m](const D3DXVECTOR3& d) {
        std::array<double, 3> r{};
        for (unsigned c = 0; c < 3; ++c)
            r[c] = double{d.x} * m(0, c) + double{d.y} * m(1, c) + double{d.z} * m(2, c);
        return r;
    };
    const std::array<double, 3> a = times(u);
    const std::array<double, 3> b = times(v);
    return {sign * (a[1] * b[2] - a[2] * b[1]), sign * (a[2] * b[0] - a[0] * b[2]), sign * (a[0] * b[1] - a[1] * b[0])};
}

TEST(AttributeBaking, BakedNormalsArePerpendicularToTheirBakedFaces)
{
    Random random(3);
    const D3DXMATRIX matrices[] = {Scaling(1, 4, 0.5F), Product(Scaling(-3, 1, 1), Rotation(1)), Sheared(),
                                   Product(Product(Rotation(0.3F), Scaling(1, 10, 1)), Rotation(2))};
    for (const D3DXMATRIX& matrix : matrices)
    {
        const double sign = D3DXMatrixDeterminant(&matrix) < 0 ? -1 : 1;
        for (int i = 0; i < 100; ++i)
        {
            const auto any = [&random] {
                const float x = random.Between(-1, 1);
                const float y = random.Between(-1, 1);
                return D3DXVECTOR3(x, y, random.Between(-1, 1));
            };
            const D3DXVECTOR3 u = any();
            const D3DXVECTOR3 v = any();
            D3DXVECTOR3 normal(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x);
            D3DXVec3Normalize(&normal, &normal);
            Geometry mesh = Support::MeshOf({{0, 0, 0}}, {});
            mesh.VertexArray[0].SetNormal(normal);

            const AttributeBaking baking(matrix);
            EXPECT_TRUE(baking.CorrectsNormals());
            const std::array<double, 3> expected = NormalAfter(u, v, matrix, sign);
            EXPECT_LT(AngleBetween(baking.Bake(normal), expected), 1e-3);
            baking.PrepareNormals(mesh);
            mesh.Transform(matrix);
            const D3DXVECTOR3 baked = mesh.VertexArray[0].GetNormal();
            EXPECT_LT(AngleBetween(baked, expected), 1e-3);
            EXPECT_NEAR(std::sqrt(baked.x * baked.x + baked.y * baked.y + baked.z * baked.z), 1, 1e-4);
        }
    }
}

TEST(AttributeBaking, RotationsAndUniformScaleChangeNoBit)
{
    for (const D3DXMATRIX& matrix : {Rotation(1), Product(Rotation(2), Scaling(3, 3, 3)), Scaling(-1, 1, 1),
                                     Product(Scaling(0.1F, -0.1F, 0.1F), Support::Translation(100, 0, 0))})
    {
        Geometry mesh = Support::Box24();
        const Geometry before = mesh;
        const AttributeBaking baking(matrix);
        EXPECT_FALSE(baking.CorrectsNormals());
        baking.PrepareNormals(mesh);
        EXPECT_TRUE(Support::SameGeometry(mesh, before));
    }
}

TEST(AttributeBaking, SingularMatricesAndMissingNormalsChangeNothing)
{
    EXPECT_FALSE(AttributeBaking(Scaling(1, 0, 1)).CorrectsNormals());
    Geometry mesh = Support::MeshOf({{1, 2, 3}}, {});
    AttributeBaking(Scaling(1, 2, 3)).PrepareNormals(mesh);
    EXPECT_EQ(mesh.VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 0));
}

TEST(AttributeBaking, TangentsFollowTheMatrixAndTheSignTheMirroring)
{
    const VertexLayout layout{.texCoordSets = 1, .attributes = {{"TANGENT", 1, 4}}};
    Geometry mesh = Support::MeshOf({{0, 0, 0}}, {});
    Vertex& vertex = mesh.VertexArray[0];
    vertex.SetTexCoord({0.6F, 0.8F}, 1);
    vertex.SetTexCoord({0, 1}, 2);
    AttributeBaking(Scaling(-2, 1, 1)).BakeTangents(mesh, layout);
    const float length = std::sqrt(1.44F + 0.64F);
    EXPECT_NEAR(vertex.GetTexCoord(1).x, -1.2F / length, 1e-6);
    EXPECT_NEAR(vertex.GetTexCoord(1).y, 0.8F / length, 1e-6);
    EXPECT_EQ(vertex.GetTexCoord(2).x, 0);
    EXPECT_EQ(vertex.GetTexCoord(2).y, -1);
    EXPECT_EQ(vertex.GetTexCoord(0), D3DXVECTOR2(0, 0));
    AttributeBaking(Scaling(2, 2, 2)).BakeTangents(mesh, {.texCoordSets = 3});
    EXPECT_EQ(vertex.GetTexCoord(2).y, -1);
}

}  // namespace

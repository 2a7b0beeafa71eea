#include <pipeline/scene/HasNormals.h>

#include <gtest/gtest.h>
#include <support/Meshes.h>

namespace
{

using Importing::Geometry;
using Pipeline::HasNormals;

TEST(HasNormals, OneNormalIsEnough)
{
    Geometry mesh = Support::MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 2});
    EXPECT_FALSE(HasNormals(mesh));
    mesh.VertexArray[2].SetNormal(D3DXVECTOR3(0, 0, -1));
    EXPECT_TRUE(HasNormals(mesh));
}

TEST(HasNormals, NegativeZeroIsZero)
{
    Geometry mesh = Support::MeshOf({{0, 0, 0}}, {});
    mesh.VertexArray[0].SetNormal(D3DXVECTOR3(-0.0F, 0, -0.0F));
    EXPECT_FALSE(HasNormals(mesh));
    Geometry empty;
    EXPECT_FALSE(HasNormals(empty));
}

}  // namespace

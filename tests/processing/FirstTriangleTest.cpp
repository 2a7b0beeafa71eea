#include <importing/processing/FirstTriangle.h>

#include <importing/records/Transform.h>
#include <support/Expectations.h>

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using namespace Importing;

using Indices = std::vector<std::uint32_t>;

const Indices kKept = {0, 1, 2};
const Indices kFlipped = {0, 2, 1};

/// Returns a triangle that faces +z. Its first vertex has the given normal, and the others have the opposite one.
Geometry TriangleWithNormal(const D3DXVECTOR3& normal)
{
    Geometry mesh;
    for (const D3DXVECTOR3& position : {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 0, 0), D3DXVECTOR3(0, 1, 0)})
    {
        mesh.VertexArray.emplace_back(position);
        mesh.VertexArray.back().SetNormal(D3DXVECTOR3(0, 0, -1));
    }
    mesh.VertexArray[0].SetNormal(normal);
    mesh.IndexArray = kKept;
    return mesh;
}

Indices AfterTest(Geometry mesh, const D3DXMATRIX& world = Transform::Indentity)
{
    FlipIfFirstTriangleFacesAway(mesh, world);
    return mesh.IndexArray;
}

TEST(FirstTriangle, IsKeptIfItFacesAlongTheNormalOfItsFirstVertex)
{
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(0, 0, 1))), kKept);
}

TEST(FirstTriangle, IsFlippedIfItFacesAgainstTheNormalOfItsFirstVertex)
{
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(0, 0, -1))), kFlipped);
}

TEST(FirstTriangle, IsFlippedIfTheDotProductIsBelowTheThreshold)
{
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(1, 0, 0))), kFlipped);
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(1, 0, 0.04F))), kFlipped);
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(1, 0, 0.06F))), kKept);
}

TEST(FirstTriangle, IsTestedAfterTheTransform)
{
    const D3DXMATRIX mirroring(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1);
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(0, 0, 1)), mirroring), kFlipped);
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(0, 0, -1)), mirroring), kKept);
}

TEST(FirstTriangle, IsKeptIfTheDotProductIsNaN)
{
    EXPECT_EQ(AfterTest(TriangleWithNormal(D3DXVECTOR3(NAN, 0, 1))), kKept);
}

TEST(FirstTriangle, IsNotTestedInAMeshOfOtherPolygons)
{
    Geometry mesh = TriangleWithNormal(D3DXVECTOR3(0, 0, -1));
    mesh.SetPolySize(4);
    mesh.IndexArray = {99};
    EXPECT_NO_THROW(CheckFirstTriangle(mesh));
    EXPECT_EQ(AfterTest(mesh), Indices{99});
}

TEST(FirstTriangle, IsRefusedIfItDoesNotExist)
{
    Geometry mesh = TriangleWithNormal(D3DXVECTOR3(0, 0, 1));
    EXPECT_NO_THROW(CheckFirstTriangle(mesh));
    for (const Indices& bad : {Indices{}, Indices{0, 1}, Indices{0, 1, 3}, Indices{7, 1, 2}})
    {
        mesh.IndexArray = bad;
        Support::ExpectThrow<std::out_of_range>([&] { CheckFirstTriangle(mesh); }, "invalid vector<T> subscript");
    }
}

}  // namespace

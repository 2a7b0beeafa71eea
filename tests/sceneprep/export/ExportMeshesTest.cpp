#include <pipeline/scene/ShownSurfaces.h>
#include <sceneprep/export/ExportMeshes.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <cmath>
#include <stdexcept>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Importing::Geometry;

/// The unit right triangle in the plane z = 0, normals along z, two UV sets at the first vertex only.
Geometry MakeTriangle()
{
    Geometry geometry;
    geometry.SetName("Tri");
    for (const D3DXVECTOR3& position : {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 0, 0), D3DXVECTOR3(0, 1, 0)})
    {
        geometry.VertexArray.emplace_back(position);
        geometry.VertexArray.back().SetNormal(D3DXVECTOR3(0, 0, 1));
    }
    geometry.VertexArray[0].SetTexCoord({0.25F, 0.5F}, 1);
    geometry.IndexArray = {0, 1, 2};
    return geometry;
}

TEST(ExportMeshes, BonesHaveWeightsAndBindPoses)
{
    Geometry geometry = MakeTriangle();
    geometry.JointArray.resize(2);
    geometry.JointArray[1].SetBindPoseInverse(Support::Translation(1, 2, 3));
    geometry.SetBindShapeTransform(Support::Scaling(2, 2, 2));
    geometry.VertexArray[2].AddWeight(1, 0.25F);
    geometry.VertexArray[2].AddWeight(7, 1);  // not a valid joint
    const std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
    AddBones(geometry, {"A", "B"}, *mesh);
    ASSERT_EQ(mesh->mNumBones, 2U);
    EXPECT_STREQ(mesh->mBones[1]->mName.C_Str(), "B");
    EXPECT_EQ(mesh->mBones[1]->mOffsetMatrix.a1, 2);
    EXPECT_EQ(mesh->mBones[1]->mOffsetMatrix.b4, 2);
    ASSERT_EQ(mesh->mBones[1]->mNumWeights, 1U);
    EXPECT_EQ(mesh->mBones[1]->mWeights[0].mVertexId, 2U);
    ASSERT_EQ(mesh->mBones[0]->mNumWeights, 1U) << "one that says nothing";
    EXPECT_EQ(mesh->mBones[0]->mWeights[0].mWeight, 0);
}

TEST(ExportMeshes, HaveVerticesAndTriangles)
{
    Geometry geometry = MakeTriangle();
    const std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
    EXPECT_STREQ(mesh->mName.C_Str(), "Tri");
    EXPECT_EQ(mesh->mNumVertices, 3U);
    EXPECT_EQ(mesh->mVertices[1], aiVector3D(1, 0, 0));
    EXPECT_EQ(mesh->mNormals[2], aiVector3D(0, 0, 1));
    ASSERT_EQ(mesh->mNumFaces, 1U);
    EXPECT_EQ(mesh->mFaces[0].mIndices[2], 2U);
}

TEST(ExportMeshes, MeshesWithoutNormalsStayWithout)
{
    Geometry geometry = MakeTriangle();
    for (Importing::Vertex& vertex : geometry.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    const std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
    EXPECT_FALSE(mesh->HasNormals());
    BakeMatrix(Support::Scaling(2, 1, 1), *mesh);
    EXPECT_FALSE(mesh->HasNormals());
    EXPECT_EQ(mesh->mVertices[1], aiVector3D(2, 0, 0));
}

TEST(ExportMeshes, VerticesWithFewerUVSetsThanOthersGetZeros)
{
    Geometry geometry = MakeTriangle();
    const std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
    EXPECT_EQ(mesh->GetNumUVChannels(), 2U);
    EXPECT_EQ(mesh->mTextureCoords[1][0], aiVector3D(0.25F, 0.5F, 0));
    EXPECT_EQ(mesh->mTextureCoords[1][1], aiVector3D(0, 0, 0));
}

TEST(ExportMeshes, SharingIsACornerOfMoreThanOneTriangle)
{
    Geometry geometry = MakeTriangle();
    EXPECT_FALSE(SharesVertices(*ConvertMesh(geometry)));
    geometry.IndexArray = {0, 1, 2, 2, 1, 0};
    EXPECT_TRUE(SharesVertices(*ConvertMesh(geometry)));
}

TEST(ExportMeshes, ABadIndexThrows)
{
    Geometry geometry = MakeTriangle();
    geometry.IndexArray[2] = 3;
    EXPECT_THROW(ConvertMesh(geometry), std::out_of_range);
}

TEST(ExportMeshes, OnlyTrianglesCanBeWritten)
{
    Geometry geometry = MakeTriangle();
    EXPECT_TRUE(HasTriangles(geometry));
    geometry.SetPolySize(4);
    EXPECT_FALSE(HasTriangles(geometry));
    EXPECT_FALSE(HasTriangles(Geometry()));
}

TEST(ExportMeshes, AMatrixIsBakedIntoPositionsAndItsInverseTransposeIntoNormals)
{
    Geometry geometry = MakeTriangle();
    for (Importing::Vertex& vertex : geometry.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(1, 1, 0));
    const std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
    D3DXMATRIX matrix = Support::Scaling(2, 1, 1);
    matrix._41 = 5;
    BakeMatrix(matrix, *mesh);
    EXPECT_EQ(mesh->mVertices[1], aiVector3D(7, 0, 0));
    // The normal (1, 1) becomes (1/2, 1) under a scale of 2 along x, and is normalised.
    EXPECT_NEAR(mesh->mNormals[0].x, 0.5F / std::sqrt(1.25F), 1e-6F);
    EXPECT_NEAR(mesh->mNormals[0].y, 1.0F / std::sqrt(1.25F), 1e-6F);
    EXPECT_EQ(mesh->mFaces[0].mIndices[1], 1U);
}

TEST(ExportMeshes, AMirroringMatrixFlipsTheWindingAndNotTheNormal)
{
    Geometry geometry = MakeTriangle();
    const std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
    BakeMatrix(Support::Scaling(-1, 1, 1), *mesh);
    EXPECT_EQ(mesh->mVertices[1], aiVector3D(-1, 0, 0));
    EXPECT_EQ(mesh->mNormals[0], aiVector3D(0, 0, 1));
    EXPECT_EQ(mesh->mFaces[0].mIndices[1], 2U);
    EXPECT_EQ(mesh->mFaces[0].mIndices[2], 1U);
}

}  // namespace

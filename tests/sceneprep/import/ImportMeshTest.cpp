#include <sceneprep/import/ImportMesh.h>

#include <gtest/gtest.h>

namespace
{

using Importing::Geometry;
using Sceneprep::ImportMesh;

/// A mesh of three vertices with one face of as many corners as given.
void Fill(aiMesh& mesh, unsigned corners)
{
    mesh.mName = "Mesh";
    mesh.mPrimitiveTypes = corners == 3   ? aiPrimitiveType_TRIANGLE
                           : corners == 2 ? aiPrimitiveType_LINE
                                          : aiPrimitiveType_POINT;
    mesh.mNumVertices = 3;
    mesh.mVertices = new aiVector3D[3]{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh.mNumFaces = 1;
    mesh.mFaces = new aiFace[1];
    mesh.mFaces[0].mNumIndices = corners;
    mesh.mFaces[0].mIndices = new unsigned[3]{2, 1, 0};
}

TEST(ImportMesh, ReadsNameVerticesAndTriangles)
{
    aiMesh mesh;
    Fill(mesh, 3);
    Geometry geometry;
    ImportMesh(mesh, geometry);
    EXPECT_EQ(geometry.GetName(), "Mesh");
    EXPECT_EQ(geometry.VertexArray.size(), 3U);
    EXPECT_EQ(geometry.VertexArray[1].GetPosition(), D3DXVECTOR3(1, 0, 0));
    EXPECT_EQ(geometry.IndexArray, (std::vector<std::uint32_t>{2, 1, 0}));
}

TEST(ImportMesh, ColoursUseTheSetsAfterTheTextureCoordinates)
{
    aiMesh mesh;
    Fill(mesh, 3);
    mesh.mTextureCoords[0] = new aiVector3D[3]{{0.5F, 0.25F, 0}, {}, {}};
    mesh.mColors[0] = new aiColor4D[3]{{1, 0.5F, 0.25F, 0.125F}, {}, {}};
    Geometry geometry;
    const Sceneprep::ImportedMesh imported = ImportMesh(mesh, geometry);
    EXPECT_EQ(imported.layout, (Pipeline::VertexLayout{1, {{"COLOR_0", 1, 4}}}));
    Importing::Vertex& vertex = geometry.VertexArray.front();
    EXPECT_EQ(vertex.GetTexCoord(0), D3DXVECTOR2(0.5F, 0.25F));
    EXPECT_EQ(vertex.GetTexCoord(1), D3DXVECTOR2(1, 0.5F));
    EXPECT_EQ(vertex.GetTexCoord(2), D3DXVECTOR2(0.25F, 0.125F));
    EXPECT_EQ(vertex.GetTexCoordCount(), 3U);
}

TEST(ImportMesh, LinesAndPointsKeepTheirNumberOfCorners)
{
    for (const unsigned corners : {1U, 2U})
    {
        aiMesh mesh;
        Fill(mesh, corners);
        Geometry geometry;
        ImportMesh(mesh, geometry);
        EXPECT_EQ(geometry.GetPolySize(), corners);
        EXPECT_EQ(geometry.IndexArray.size(), corners);
    }
}

}  // namespace

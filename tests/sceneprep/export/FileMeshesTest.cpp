#include <sceneprep/export/FileMeshes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/Meshes.h>

#include <memory>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;

class FileMeshesTest : public testing::Test
{
protected:
    FileMeshesTest()
    {
        scene_.GeometryLibrary.push_back(Support::Triangle());
        scene_.MaterialLibrary.resize(1);
        scene_.SurfaceLibrary.resize(3);
        for (Importing::Surface& surface : scene_.SurfaceLibrary)
            surface.SetGeometryID(0);
        scene_.SurfaceLibrary[0].SetName("Wall");
        scene_.SurfaceLibrary[2].SetMaterialID(0);
    }

    Importing::SceneContainer scene_;
    WriteFormat format_ = *FindWriteFormat("a.dae");
    Textures textures_;
    MaterialExporter materials_{scene_, textures_, format_};
    FileMeshes meshes_{scene_, format_, materials_};
    aiScene target_;
};

TEST_F(FileMeshesTest, AreSharedByGeometryMaterialAndSkeleton)
{
    EXPECT_EQ(meshes_.FindShared({0, 0, -1}, {}), 0U);
    EXPECT_EQ(meshes_.FindShared({1, 0, -1}, {}), 0U);
    EXPECT_EQ(meshes_.FindShared({2, 0, -1}, {}), 1U);
    EXPECT_EQ(meshes_.FindShared({0, 0, 0}, {}), 2U);
    meshes_.MoveTo(target_);
    ASSERT_EQ(target_.mNumMeshes, 3U);
    EXPECT_STREQ(target_.mMeshes[0]->mName.C_Str(), "Wall") << "the geometry has no name";
}

TEST_F(FileMeshesTest, MatricesAreBakedIntoMeshesThatAreNotShared)
{
    D3DXMATRIX matrix;
    D3DXMatrixTranslation(&matrix, 5, 0, 0);
    EXPECT_THAT(meshes_.AddBaked({0, 0, -1}, matrix), ElementsAre(0U));
    EXPECT_THAT(meshes_.AddBaked({0, 0, -1}, matrix), ElementsAre(1U));
    const float before = scene_.GeometryLibrary[0].VertexArray[0].GetPosition().x;
    meshes_.MoveTo(target_);
    EXPECT_EQ(target_.mMeshes[0]->mVertices[0].x, before + 5);
}

TEST_F(FileMeshesTest, ASceneWithoutMeshesIsMarkedAsIncomplete)
{
    meshes_.MoveTo(target_);
    EXPECT_EQ(target_.mFlags, static_cast<unsigned>(AI_SCENE_FLAGS_INCOMPLETE));
}

}  // namespace

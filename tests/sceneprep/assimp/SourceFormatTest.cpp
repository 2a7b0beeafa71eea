#include <sceneprep/assimp/SourceFormat.h>

#include <assimp/commonMetaData.h>
#include <gtest/gtest.h>

namespace
{

using Sceneprep::IsFromGltf;

TEST(SourceFormat, IsTheNameOfTheImporter)
{
    aiScene scene;
    scene.mMetaData = aiMetadata::Alloc(1);
    scene.mMetaData->Set(0, AI_METADATA_SOURCE_FORMAT, aiString("glTF2 Importer"));
    EXPECT_TRUE(IsFromGltf(scene));
    scene.mMetaData->Set(0, AI_METADATA_SOURCE_FORMAT, aiString("Collada Importer"));
    EXPECT_FALSE(IsFromGltf(scene));
}

TEST(SourceFormat, ASceneOfUnknownOriginIsNotFromGltf) { EXPECT_FALSE(IsFromGltf(aiScene())); }

}  // namespace

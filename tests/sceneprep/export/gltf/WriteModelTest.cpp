#include <sceneprep/export/gltf/WriteModel.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/export/gltf/TinyGltf.h>
#include <sceneprep/run/Error.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Sceneprep::Gltf::WriteModel;
using SceneprepTests::ReadText;
using SceneprepTests::TemporaryFolder;

bool IgnorePicture(tinygltf::Image*, const int, std::string*, std::string*, int, int, const unsigned char*, int, void*)
{
    return true;
}

class GltfWriteModel : public testing::Test
{
protected:
    GltfWriteModel()
    {
        scene_.NodeLibrary.resize(1);
        scene_.NodeLibrary[0].SetName("M\xFChle");
        scene_.NodeLibrary[0].SurfaceList = {0};
        scene_.SetRootNodeIndex(0);
        scene_.GeometryLibrary.push_back(Support::Triangle());
        scene_.GeometryLibrary[0].VertexArray[0].SetTexCoord({0, 0}, 0);
        scene_.SurfaceLibrary.resize(1);
        scene_.SurfaceLibrary[0].SetGeometryID(0);
        Importing::Map map;
        map.SetTextureID(0);
        map.SetType("diffuse");
        scene_.SurfaceLibrary[0].MapList.push_back(map);
        scene_.TextureLibrary.emplace_back("*0");
        textures_.embedded.push_back({.content = {0x89, 'P', 'N', 'G', 1}});
    }

    /// What the glTF library reads.
    tinygltf::Model Read(const std::filesystem::path& file, bool isBinary)
    {
        tinygltf::TinyGLTF reader;
        reader.SetImageLoader(IgnorePicture, nullptr);
        tinygltf::Model model;
        std::string error;
        std::string warning;
        EXPECT_TRUE(isBinary ? reader.LoadBinaryFromFile(&model, &error, &warning, file.string())
                             : reader.LoadASCIIFromFile(&model, &error, &warning, file.string()))
            << error;
        EXPECT_EQ(error, "");
        return model;
    }

    TemporaryFolder folder_;
    Importing::SceneContainer scene_;
    Textures textures_;
};

TEST_F(GltfWriteModel, ABinaryModelIsOneFile)
{
    EXPECT_TRUE(WriteModel(scene_, textures_, folder_ / "a.glb", true).empty());
    EXPECT_EQ(folder_.CountEntries(), 1U);
    const tinygltf::Model model = Read(folder_ / "a.glb", true);
    EXPECT_EQ(model.nodes.at(0).name, "M\xEF\xBF\xBDhle");
    EXPECT_EQ(model.meshes.size(), 1U);
    EXPECT_EQ(model.images.at(0).mimeType, "image/png");
}

TEST_F(GltfWriteModel, ATextModelHasItsBufferAndPicturesBesideIt)
{
    WriteModel(scene_, textures_, folder_ / "my house.gltf", false);
    EXPECT_EQ(folder_.CountEntries(), 3U);
    EXPECT_EQ(ReadText(folder_ / "my_house-picture0.png"), "\x89PNG\x01");
    const tinygltf::Model model = Read(folder_ / "my house.gltf", false);
    EXPECT_EQ(model.buffers.at(0).uri, "my_house.bin");
    EXPECT_EQ(model.images.at(0).uri, "my_house-picture0.png");
}

TEST_F(GltfWriteModel, AnEmptySceneIsAFileToo)
{
    Importing::SceneContainer empty;
    WriteModel(empty, {}, folder_ / "empty.gltf", false);
    EXPECT_EQ(folder_.CountEntries(), 1U);
    EXPECT_TRUE(Read(folder_ / "empty.gltf", false).nodes.empty());
}

TEST_F(GltfWriteModel, AFullDiskIsAnError)
{
    if (!std::filesystem::exists("/dev/full"))
        return;
    std::filesystem::create_symlink("/dev/full", folder_ / "a.glb");
    EXPECT_THROW(WriteModel(scene_, textures_, folder_ / "a.glb", true), ToolError);
    std::filesystem::create_symlink("/dev/full", folder_ / "b.bin");
    EXPECT_THROW(WriteModel(scene_, textures_, folder_ / "b.gltf", false), ToolError);
    std::filesystem::create_symlink("/dev/full", folder_ / "c-picture0.png");
    EXPECT_THROW(WriteModel(scene_, textures_, folder_ / "c.gltf", false), ToolError);
}

TEST_F(GltfWriteModel, AFolderThatIsNotThereIsAnError)
{
    EXPECT_THROW(WriteModel(scene_, textures_, folder_ / "none" / "a.glb", true), ToolError);
    EXPECT_THROW(WriteModel(scene_, textures_, folder_ / "none" / "a.gltf", false), ToolError);
}

}  // namespace

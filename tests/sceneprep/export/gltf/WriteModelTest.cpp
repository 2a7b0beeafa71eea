#include <sceneprep/export/gltf/WriteModel.h>

#include <gtest/gtest.h>
#include <sceneprep/Models.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>
#include <support/Meshes.h>

#include <cstdint>
#include <cstring>
#include <fstream>

namespace
{

using namespace Sceneprep;
using SceneprepTests::ReadText;
using SceneprepTests::TemporaryFolder;

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
        model_.textures.embedded.push_back({.content = {0x89, 'P', 'N', 'G', 1}});
    }

    Notes Write(const Model& model, const std::string& name)
    {
        return Gltf::WriteModel(model, folder_ / name, {.folder = folder_.Path()});
    }

    static std::uint32_t WordAt(const std::string& bytes, std::size_t place)
    {
        std::uint32_t word = 0;
        std::memcpy(&word, bytes.data() + place, sizeof(word));
        return word;
    }

    TemporaryFolder folder_;
    Model model_;
    Importing::SceneContainer& scene_ = *model_.scene;
};

TEST_F(GltfWriteModel, ABinaryModelIsOneFileOfTwoChunks)
{
    EXPECT_TRUE(Write(model_, "a.glb").Empty());
    EXPECT_EQ(folder_.CountEntries(), 1U);
    const std::string bytes = ReadText(folder_ / "a.glb");
    ASSERT_GT(bytes.size(), 20U);
    EXPECT_EQ(bytes.substr(0, 4), "glTF");
    EXPECT_EQ(WordAt(bytes, 4), 2U);
    EXPECT_EQ(WordAt(bytes, 8), bytes.size());
    const std::size_t length = WordAt(bytes, 12);
    EXPECT_EQ(length % 4, 0U);
    const Json document = Json::parse(bytes.substr(20, length));
    EXPECT_EQ(document["nodes"][0]["name"], "M\xEF\xBF\xBDhle");
    EXPECT_EQ(document["images"][0]["mimeType"], "image/png");
    const std::size_t binary = 20 + length;
    EXPECT_EQ(bytes.substr(binary + 4, 4), std::string("BIN\0", 4));
    EXPECT_EQ(binary + 8 + WordAt(bytes, binary), bytes.size());
    EXPECT_LE(document["buffers"][0]["byteLength"], WordAt(bytes, binary));
}

TEST_F(GltfWriteModel, ATextModelHasItsBufferAndImagesNextToIt)
{
    Write(model_, "my house.gltf");
    EXPECT_EQ(folder_.CountEntries(), 3U);
    EXPECT_EQ(ReadText(folder_ / "my_house-image0.png"), "\x89PNG\x01");
    const Json document = Json::parse(ReadText(folder_ / "my house.gltf"));
    EXPECT_EQ(document["buffers"][0]["uri"], "my_house.bin");
    EXPECT_EQ(document["buffers"][0]["byteLength"], ReadText(folder_ / "my_house.bin").size());
    EXPECT_EQ(document["images"][0]["uri"], "my_house-image0.png");
}

TEST_F(GltfWriteModel, ImageFilesFromElsewhereAreCopied)
{
    std::filesystem::create_directories(folder_ / "in");
    std::filesystem::create_directories(folder_ / "out");
    std::ofstream(folder_ / "in/wood.png", std::ios::binary) << "\x89PNG\x02";
    scene_.TextureLibrary[0] = "../in/wood.png";
    Gltf::WriteModel(model_, folder_ / "out/a.gltf", {.folder = folder_ / "out"});
    EXPECT_EQ(ReadText(folder_ / "out/wood.png"), "\x89PNG\x02");
}

TEST_F(GltfWriteModel, AnEmptySceneIsOneFile)
{
    Write(Model(), "empty.gltf");
    EXPECT_EQ(folder_.CountEntries(), 1U);
    EXPECT_FALSE(Json::parse(ReadText(folder_ / "empty.gltf")).contains("nodes"));
    Write(Model(), "empty.glb");
    EXPECT_EQ(WordAt(ReadText(folder_ / "empty.glb"), 8), ReadText(folder_ / "empty.glb").size());
}

TEST_F(GltfWriteModel, AFullDiskIsAnError)
{
    if (!std::filesystem::exists("/dev/full"))
        return;
    std::filesystem::create_symlink("/dev/full", folder_ / "a.glb");
    EXPECT_THROW(Write(model_, "a.glb"), ToolError);
    std::filesystem::create_symlink("/dev/full", folder_ / "b.bin");
    EXPECT_THROW(Write(model_, "b.gltf"), ToolError);
    std::filesystem::create_symlink("/dev/full", folder_ / "c-image0.png");
    EXPECT_THROW(Write(model_, "c.gltf"), ToolError);
}

TEST_F(GltfWriteModel, AMissingFolderIsAnError)
{
    EXPECT_THROW(Write(model_, "none/a.glb"), ToolError);
    EXPECT_THROW(Write(model_, "none/a.gltf"), ToolError);
}

}  // namespace

#include <sceneprep/export/gltf/Images.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;

std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

class GltfImages : public testing::Test
{
protected:
    GltfImages()
    {
        scene_.TextureLibrary = {"wood.png", "*0", "*1", "*2"};
        textures_.spelling["wood.png"] = "my textures\\Wood.PNG";
        textures_.embedded.push_back({.fileName = "leaf", .content = Bytes("\x89PNG and more")});
        textures_.embedded.push_back({.content = Bytes("\xFF\xD8\xFF and more")});
        textures_.embedded.push_back({.content = Bytes("DDS and more")});
    }

    ImageWriter Writer(bool isBinary) { return {scene_, textures_, "house", isBinary, buffers_, model_}; }

    Importing::SceneContainer scene_;
    Textures textures_;
    tinygltf::Model model_;
    Buffers buffers_{model_};
};

TEST_F(GltfImages, AFileIsReferredToAsTheInputSpellsIt)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.Find(0), 0);
    EXPECT_EQ(model_.images[0].uri, "my%20textures/Wood.PNG");
    EXPECT_EQ(model_.textures[0].source, 0);
}

TEST_F(GltfImages, ATextureIsWrittenOnce)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.Find(0), writer.Find(0));
    EXPECT_EQ(model_.textures.size(), 1U);
}

TEST_F(GltfImages, PicturesGoIntoTheBufferOfABinaryFile)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.Find(1), 0);
    EXPECT_EQ(writer.Find(2), 1);
    EXPECT_EQ(model_.images[0].mimeType, "image/png");
    EXPECT_EQ(model_.images[0].name, "leaf");
    EXPECT_EQ(model_.images[1].mimeType, "image/jpeg");
    EXPECT_EQ(model_.bufferViews[static_cast<std::size_t>(model_.images[1].bufferView)].byteLength, 12U);
    EXPECT_TRUE(writer.Companions().empty());
}

TEST_F(GltfImages, PicturesStandBesideATextFile)
{
    ImageWriter writer = Writer(false);
    writer.Find(1);
    writer.Find(2);
    ASSERT_EQ(writer.Companions().size(), 2U);
    EXPECT_EQ(writer.Companions()[0].name, "house-picture0.png");
    EXPECT_EQ(writer.Companions()[1].name, "house-picture1.jpg");
    EXPECT_EQ(*writer.Companions()[0].content, textures_.embedded[0].content);
    EXPECT_EQ(model_.images[0].uri, "house-picture0.png");
    EXPECT_TRUE(model_.buffers.empty());
}

TEST_F(GltfImages, OtherKindsOfPicturesAreLeftOutAndTold)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.Find(3), -1);
    textures_.embedded[0].content = {'B', 'M', 1, 2, 3, 4};
    EXPECT_EQ(writer.Find(1), -1);
    EXPECT_EQ(writer.LeftOut(), (std::set<std::string>{"*0", "*2"}));
    EXPECT_TRUE(model_.images.empty());
}

TEST_F(GltfImages, ATextureThatIsNotThereThrows)
{
    ImageWriter writer = Writer(true);
    EXPECT_THROW(writer.Find(4), std::out_of_range);
}

}  // namespace

#include <sceneprep/export/gltf/Textures.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;

std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

class GltfTextures : public testing::Test
{
protected:
    GltfTextures()
    {
        model_.textures.embedded.push_back({.content = Bytes("\x89PNG and more")});
        model_.textures.embedded.push_back({.content = Bytes("RIFFsizeWEBP and more")});
        model_.textures.embedded.push_back({.content = Bytes("BM and more")});
        for (int image = 0; image < 3; ++image)
            model_.carried.images.push_back({.object = Json::object(), .embedded = image, .file = {}});
        model_.scene->TextureLibrary = {"*0", "*1", "*2", "a.png"};
    }

    Json Reindexed(const std::string& object)
    {
        Json json = Json::parse(object);
        writer_.Reindex(json);
        return json;
    }

    Model model_;
    WriteOptions options_;
    Document document_;
    Buffers buffers_{document_};
    ImageWriter images_{options_, buffers_, document_};
    TextureWriter writer_{model_, images_, document_};
};

TEST_F(GltfTextures, ATextureOfTheContainerIsWrittenOnce)
{
    EXPECT_EQ(writer_.FindOfLibrary(3), 0);
    EXPECT_EQ(writer_.FindOfLibrary(3), 0);
    EXPECT_EQ(document_.textures.size(), 1U);
    EXPECT_EQ(document_.textures[0], Json::parse(R"({"source": 0})"));
    EXPECT_THROW(writer_.FindOfLibrary(4), std::out_of_range);
}

TEST_F(GltfTextures, ImagesOfKindsThatNeedAnExtensionRequireIt)
{
    writer_.FindOfLibrary(1);
    EXPECT_EQ(document_.textures[0], Json::parse(R"({"extensions": {"EXT_texture_webp": {"source": 0}}})"));
    EXPECT_TRUE(document_.requiredExtensions.contains("EXT_texture_webp"));
}

TEST_F(GltfTextures, ATextureWhoseImageCannotBeWrittenIsDropped)
{
    EXPECT_EQ(writer_.FindOfLibrary(2), -1);
    EXPECT_TRUE(document_.textures.empty());
}

TEST_F(GltfTextures, ReferencesOfCarriedObjectsAreReindexed)
{
    model_.carried.samplers = {Json::object(), Json::parse(R"({"wrapS": 33071})")};
    model_.carried.textures = {Json::parse(R"({"source": 1})"), Json::parse(R"({"source": 0, "sampler": 1})")};
    const Json object = Reindexed(R"({"normalTexture": {"index": 1, "scale": 2},
        "extensions": {"X": {"list": [{"texture": {"index": 1}}], "index": 1}}, "extras": {"aTexture": {"index": 9}}})");
    EXPECT_EQ(object, Json::parse(R"({"normalTexture": {"index": 0, "scale": 2},
        "extensions": {"X": {"list": [{"texture": {"index": 0}}], "index": 1}}, "extras": {"aTexture": {"index": 9}}})"));
    EXPECT_EQ(document_.textures[0], Json::parse(R"({"source": 0, "sampler": 0})"));
    EXPECT_EQ(document_.samplers[0]["wrapS"], 33071);
}

TEST_F(GltfTextures, EqualTexturesAreWrittenOnce)
{
    model_.carried.textures = {Json::parse(R"({"source": 0})"), Json::parse(R"({"source": 0})")};
    const Json object = Reindexed(R"({"aTexture": {"index": 1}, "bTexture": {"index": 0}})");
    EXPECT_EQ(object, Json::parse(R"({"aTexture": {"index": 0}, "bTexture": {"index": 0}})"));
    EXPECT_EQ(document_.textures.size(), 1U);
}

TEST_F(GltfTextures, SourcesOfExtensionsAreKept)
{
    model_.carried.textures = {Json::parse(R"({"source": 0, "extensions": {"EXT_texture_webp": {"source": 1}}})")};
    Reindexed(R"({"aTexture": {"index": 0}})");
    EXPECT_EQ(document_.textures[0],
              Json::parse(R"({"source": 0, "extensions": {"EXT_texture_webp": {"source": 1}}})"));
    EXPECT_EQ(document_.images[1]["mimeType"], "image/webp");
}

TEST_F(GltfTextures, AReferenceWhoseImageCannotBeWrittenIsRemoved)
{
    model_.carried.textures = {Json::parse(R"({"source": 2})")};
    EXPECT_EQ(Reindexed(R"({"aTexture": {"index": 0}, "b": 1})"), Json::parse(R"({"b": 1})"));
}

TEST_F(GltfTextures, ImageFilesAreRelativeToTheFileOfTheModel)
{
    model_.file = "/models/in/house.gltf";
    options_.folder = "/models/out";
    options_.images = ImageUse::External;
    model_.carried.images = {{.object = Json::object(), .file = "wood.png"}};
    model_.carried.textures = {Json::parse(R"({"source": 0})")};
    Reindexed(R"({"aTexture": {"index": 0}})");
    EXPECT_EQ(document_.images[0]["uri"], "../in/wood.png");
}

TEST_F(GltfTextures, ReferencesToMissingFilesStayUnlessTheyLeadOutOfTheFolder)
{
    model_.file = "/models/in/house.gltf";
    options_.folder = "/models/out";
    model_.carried.images = {{.object = Json::object(), .file = "images/wood.png"},
                             {.object = Json::object(), .file = "../out/oak.png"}};
    model_.carried.textures = {Json::parse(R"({"source": 0})"), Json::parse(R"({"source": 1})")};
    Reindexed(R"({"aTexture": {"index": 0}, "bTexture": {"index": 1}})");
    EXPECT_EQ(document_.images.at(0)["uri"], "images/wood.png");
    EXPECT_EQ(document_.images.at(1)["uri"], "oak.png");
}

}  // namespace

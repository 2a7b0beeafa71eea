#include <sceneprep/import/gltf/Images.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

TEST(Images, KeepBytesAndReferences)
{
    GltfDocument document = GltfDocument::Parse(R"({"images":[
        {"uri":"my%20wood.png","name":"Wood"},{"uri":"data:image/jpeg;base64,YWJj"},{"mimeType":"image/ktx2"},
        {"extras":7}]})");
    document.json["images"][2]["bufferView"] = document.View("KTX");
    const Model model = document.Read();
    const std::vector<CarriedImage>& images = model.carried.images;
    ASSERT_EQ(images.size(), 4U);
    EXPECT_EQ(images[0].file, "my wood.png");
    EXPECT_EQ(images[0].object.dump(), R"({"name":"Wood"})");
    EXPECT_EQ(images[1].embedded, 0);
    EXPECT_EQ(images[1].object.dump(), R"({"mimeType":"image/jpeg"})");
    EXPECT_EQ(images[2].embedded, 1);
    EXPECT_EQ(images[3].object.dump(), R"({"extras":7})");
    ASSERT_EQ(model.textures.embedded.size(), 2U);
    EXPECT_EQ(model.textures.embedded[0].formatHint, "jpg");
    EXPECT_EQ(model.textures.embedded[0].content.size(), 3U);
    EXPECT_EQ(model.textures.embedded[1].formatHint, "ktx2");
    EXPECT_EQ(model.textures.embedded[1].content, (std::vector<unsigned char>{'K', 'T', 'X'}));
}

TEST(Images, InvalidReferencesAreRefused)
{
    EXPECT_EQ(GltfDocument::Parse(R"({"images":[{"bufferView":3,"mimeType":"image/png"}]})").Problem(),
              "images[0].bufferView: 3 is not below 0");
    EXPECT_EQ(GltfDocument::Parse(R"({"images":[{"uri":"data:image/png,abc"}]})").Problem(),
              "images[0].uri: is not a data URI in base64");
}

}  // namespace

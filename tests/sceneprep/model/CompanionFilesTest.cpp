#include <sceneprep/model/CompanionFiles.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

namespace
{

using namespace Sceneprep;
using SceneprepTests::ReadText;
using testing::ElementsAre;
using testing::Pair;

const std::vector<unsigned char> kPng = {0x89, 'P', 'N', 'G', 1, 2};

TEST(CompanionFiles, AreNamedByTheirContent)
{
    EXPECT_EQ(CompanionName("house", 3, {.fileName = "wood.jpg", .formatHint = "jpg", .content = kPng}),
              "house-image3.png");
    EXPECT_EQ(CompanionName("house", 0, {.fileName = "wood.jpg", .formatHint = "dds", .content = {1}}),
              "house-image0.dds");
    EXPECT_EQ(CompanionName("house", 0, {.fileName = "a/wood.tga", .content = {1}}), "house-image0.tga");
    EXPECT_EQ(CompanionName("house", 0, {.fileName = "wood", .formatHint = "/", .content = {1}}), "house-image0.bin");
}

TEST(CompanionFiles, EachReferencedImageBecomesOneFile)
{
    Importing::SceneContainer scene;
    scene.TextureLibrary = {"wood.png", "*1", "stone.png", "*0"};
    Textures textures;
    textures.spelling = {{"wood.png", "Wood.PNG"}};
    textures.embedded = {{.fileName = "Stone.png", .content = {1}}, {.content = kPng}};
    textures.spelling["stone.png"] = "Stone.png";

    const CompanionTextures separated = MakeCompanions(scene, textures, "house");
    EXPECT_TRUE(separated.textures.embedded.empty());
    EXPECT_THAT(separated.textures.spelling,
                ElementsAre(Pair("*0", "house-image1.png"), Pair("*1", "house-image0.png"),
                            Pair("stone.png", "house-image1.png"), Pair("wood.png", "Wood.PNG")));
    ASSERT_EQ(separated.companions.size(), 2U);
    EXPECT_EQ(separated.companions[0].content, &textures.embedded[1].content);
    EXPECT_EQ(separated.companions[1].name, "house-image1.png");
}

TEST(CompanionFiles, UnreferencedImagesAreNotWritten)
{
    Textures textures;
    textures.embedded = {{.content = kPng}};
    EXPECT_TRUE(MakeCompanions(Importing::SceneContainer(), textures, "house").companions.empty());
}

TEST(CompanionFiles, AreWrittenByteForByte)
{
    const SceneprepTests::TemporaryFolder folder;
    WriteCompanions({{"a.png", &kPng}}, folder.Path());
    EXPECT_EQ(ReadText(folder / "a.png"), std::string(kPng.begin(), kPng.end()));
    EXPECT_THROW(WriteCompanions({{"a.png", &kPng}}, folder / "missing"), ToolError);
}

}  // namespace

#include <sceneprep/export/gltf/Images.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/Models.h>
#include <sceneprep/TestFiles.h>

#include <fstream>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using SceneprepTests::TemporaryFolder;
using SceneprepTests::TextsOf;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

const std::string kPng = "\x89PNG and more";

class GltfImages : public testing::Test
{
protected:
    void WriteFile(const std::string& name, const std::string& content)
    {
        std::filesystem::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }

    ImageWriter Writer(bool isBinary, ImageUse images = ImageUse::Stored)
    {
        options_ = {.isBinary = isBinary, .images = images, .stem = "house", .folder = folder_ / "out"};
        return {options_, buffers_, document_};
    }

    std::vector<std::string> NotesOf(const ImageWriter& writer)
    {
        Notes notes;
        writer.AddNotes(notes);
        return TextsOf(notes);
    }

    TemporaryFolder folder_;
    EmbeddedTexture png_ = {.fileName = "leaf", .content = Bytes(kPng)};
    EmbeddedTexture jpeg_ = {.content = Bytes("\xFF\xD8\xFF and more")};
    EmbeddedTexture bitmap_ = {.fileName = "sky", .content = Bytes("BM and more")};
    WriteOptions options_;
    Document document_;
    Buffers buffers_{document_};
};

TEST_F(GltfImages, ABinaryFileHoldsItsImages)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.AddEmbedded(png_, {{"name", "leaf"}}).index, 0);
    EXPECT_EQ(writer.AddEmbedded(jpeg_, Json::object()).index, 1);
    EXPECT_EQ(document_.images[0]["mimeType"], "image/png");
    EXPECT_EQ(document_.images[0]["name"], "leaf");
    EXPECT_EQ(document_.images[1]["mimeType"], "image/jpeg");
    EXPECT_EQ(document_.bufferViews[document_.images[1]["bufferView"].get<std::size_t>()]["byteLength"], 12);
    EXPECT_THAT(writer.Companions(), IsEmpty());
}

TEST_F(GltfImages, EmbeddedImagesAreFilesNextToATextFile)
{
    ImageWriter writer = Writer(false);
    writer.AddEmbedded(png_, Json::object());
    writer.AddEmbedded(jpeg_, Json::object());
    ASSERT_EQ(writer.Companions().size(), 2U);
    EXPECT_EQ(writer.Companions()[0].name, "house-image0.png");
    EXPECT_EQ(writer.Companions()[1].name, "house-image1.jpg");
    EXPECT_EQ(*writer.Companions()[0].content, png_.content);
    EXPECT_EQ(document_.images[0]["uri"], "house-image0.png");
    EXPECT_EQ(buffers_.Size(), 0U);
}

TEST_F(GltfImages, AnImageIsWrittenOnce)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.AddEmbedded(png_, Json::object()).index, writer.AddEmbedded(png_, Json::object()).index);
    EXPECT_EQ(document_.images.size(), 1U);
    EXPECT_EQ(writer.AddEmbedded(png_, {{"name", "other"}}).index, 1) << "an image of another name is another image";
}

TEST_F(GltfImages, ABinaryFileHoldsImageFiles)
{
    WriteFile("textures/wood.png", kPng);
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.AddFile("../textures/wood.png", Json::object()).index, 0);
    EXPECT_EQ(document_.images[0]["mimeType"], "image/png");
    EXPECT_EQ(buffers_.Size(), kPng.size());
}

TEST_F(GltfImages, ImageFilesAreCopiedNextToATextFileUnderUniqueNames)
{
    WriteFile("a/my wood.png", kPng);
    WriteFile("b/MY wood.png", kPng);
    ImageWriter writer = Writer(false);
    writer.AddFile("../a/my wood.png", Json::object());
    writer.AddFile("..\\b\\MY wood.png", Json::object());
    ASSERT_EQ(writer.Copies().size(), 2U);
    EXPECT_EQ(document_.images[0]["uri"], "my_wood.png");
    EXPECT_EQ(document_.images[1]["uri"], "MY_wood_2.png");
    EXPECT_EQ(writer.Copies()[1].name, "MY_wood_2.png");
}

TEST_F(GltfImages, AnImageFileBelowTheFolderOfTheOutputIsReferenced)
{
    WriteFile("out/textures/wood oak.png", kPng);
    ImageWriter writer = Writer(false);
    writer.AddFile("textures/wood oak.png", Json::object());
    EXPECT_EQ(document_.images[0]["uri"], "textures/wood%20oak.png");
    EXPECT_THAT(writer.Copies(), IsEmpty());
}

TEST_F(GltfImages, OmittedImagesAreNeitherStoredNorReferencedNorReported)
{
    WriteFile("out/wood.png", kPng);
    ImageWriter writer = Writer(true, ImageUse::Omitted);
    EXPECT_EQ(writer.AddEmbedded(png_, Json::object()).index, -1);
    EXPECT_EQ(writer.AddFile("wood.png", Json::object()).index, -1);
    EXPECT_EQ(writer.AddFile("missing.png", Json::object()).index, -1);
    EXPECT_THAT(document_.images, IsEmpty());
    EXPECT_EQ(buffers_.Size(), 0U);
    EXPECT_THAT(NotesOf(writer), IsEmpty());
}

TEST_F(GltfImages, ExternalTexturesStayReferences)
{
    WriteFile("wood.png", kPng);
    ImageWriter writer = Writer(true, ImageUse::External);
    writer.AddFile("../wood.png", Json::object());
    EXPECT_EQ(document_.images[0]["uri"], "../wood.png");
    EXPECT_EQ(buffers_.Size(), 0U);
    EXPECT_THAT(NotesOf(writer), IsEmpty());
}

TEST_F(GltfImages, AMissingFileStaysAReferenceAndIsReported)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.AddFile("my textures\\Wood.PNG", Json::object()).index, 0);
    writer.AddFile("https://example.org/a.png", Json::object());
    EXPECT_EQ(document_.images[0]["uri"], "my%20textures/Wood.PNG");
    const std::string path = (options_.folder / "my textures\\Wood.PNG").string();
    EXPECT_THAT(NotesOf(writer), ElementsAre("the image file '" + path + "' is missing; the reference to it is kept"));
}

TEST_F(GltfImages, TheReferenceToAMissingFileStaysAsItWasUnlessTexturesAreExternal)
{
    Writer(true).AddFile("../in/wood.png", Json::object(), "wood.png");
    Writer(true, ImageUse::External).AddFile("../in/wood.png", Json::object(), "wood.png");
    EXPECT_EQ(document_.images.at(0)["uri"], "wood.png");
    EXPECT_EQ(document_.images.at(1)["uri"], "../in/wood.png");
}

TEST_F(GltfImages, AFileThatIsNotAnImageIsNotCopied)
{
    WriteFile("secret.txt", "a text that is no image");
    ImageWriter writer = Writer(true);
    writer.AddFile("../secret.txt", Json::object());
    EXPECT_EQ(document_.images[0]["uri"], "../secret.txt");
    EXPECT_THAT(NotesOf(writer),
                ElementsAre("the file '../secret.txt' has an unknown image type; the reference to it is kept"));
}

TEST_F(GltfImages, EmbeddedImagesOfOtherKindsAreDroppedAndReported)
{
    ImageWriter writer = Writer(true);
    EXPECT_EQ(writer.AddEmbedded(bitmap_, Json::object()).index, -1);
    EXPECT_TRUE(document_.images.empty());
    EXPECT_THAT(NotesOf(writer), ElementsAre("dropped images that are not PNG, JPEG, WebP, AVIF, KTX2 or DDS: sky"));
}

}  // namespace

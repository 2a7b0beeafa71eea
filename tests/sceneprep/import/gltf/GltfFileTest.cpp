#include <sceneprep/import/gltf/GltfFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::EndsWith;
using testing::HasSubstr;
using testing::ThrowsMessage;

std::string Word(std::uint32_t word) { return {reinterpret_cast<const char*>(&word), sizeof(word)}; }

std::string Glb(const std::string& json, const std::string& binary, std::uint32_t version = 2)
{
    std::string chunks = Word(static_cast<std::uint32_t>(json.size())) + "JSON" + json;
    if (!binary.empty())
        chunks += Word(static_cast<std::uint32_t>(binary.size())) + std::string("BIN\0", 4) + binary;
    return "glTF" + Word(version) + Word(static_cast<std::uint32_t>(12 + chunks.size())) + chunks;
}

const char* const kEmpty = R"({"asset":{"version":"2.0"}}  )";

TEST(GltfFile, HasChunksInTheBinaryForm)
{
    const TemporaryFolder folder;
    const std::optional<GltfFile> file = OpenGltf(folder.Write("a.glb", Glb(kEmpty, "abcd")));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->document.size(), 1U);
    EXPECT_EQ(file->binary, (std::vector<std::uint8_t>{'a', 'b', 'c', 'd'}));
    EXPECT_FALSE(OpenGltf(folder.Write("b.glb", Glb(kEmpty, "")))->binary);
    EXPECT_FALSE(OpenGltf(folder.Write("c.glb", kEmpty))->binary);
    EXPECT_TRUE(OpenGltf(folder.Write("d.glb", Glb(kEmpty + std::string(3, '\0'), "abcd")))->binary);
}

TEST(GltfFile, VersionOneIsAnotherFormat)
{
    const TemporaryFolder folder;
    EXPECT_FALSE(OpenGltf(folder.Write("a.gltf", R"({"asset":{"version":"1.0"}})")));
    EXPECT_FALSE(OpenGltf(folder.Write("a.glb", Glb(kEmpty, "", 1))));
}

TEST(GltfFile, RefusesWhatIsNotGltf)
{
    const TemporaryFolder folder;
    const auto expectProblem = [&](const std::string& content, const std::string& problem) {
        const auto file = folder.Write("a.glb", content);
        EXPECT_THAT([&] { OpenGltf(file); }, ThrowsMessage<ToolError>(EndsWith("a.glb: " + problem)));
    };
    expectProblem(R"({"asset":{"version":"3.0"}})", "asset.version: '3.0' is not supported, only 2.0");
    expectProblem("{}", "asset: is missing");
    expectProblem(R"({"asset":{}})", "asset.version: is missing");
    expectProblem(Glb(kEmpty, "", 3), "version 3 of the binary form is not supported, only 2");
    expectProblem("", "the file is empty");
    expectProblem("gl", "the file is truncated (12 bytes expected, 2 found)");
    expectProblem("glTF1234", "the file is truncated (12 bytes expected, 8 found)");
    const std::string whole = Glb(kEmpty, "abcd");
    expectProblem(whole.substr(0, whole.size() - 1), "the file is truncated (61 bytes expected, 60 found)");
    std::string mislabelled = whole;
    mislabelled[16] = 'X';
    expectProblem(mislabelled, "the first chunk of the file is not JSON");
}

TEST(GltfFile, RefusesEveryTruncationOfABinaryFile)
{
    const TemporaryFolder folder;
    const std::string whole = Glb(kEmpty, "abcd");
    for (std::size_t size = 1; size < whole.size(); ++size)
    {
        const auto file = folder.Write("a.glb", whole.substr(0, size));
        EXPECT_THAT([&] { OpenGltf(file); }, ThrowsMessage<ToolError>(HasSubstr("the file is truncated ("))) << size;
    }
}

TEST(GltfFile, IsKnownByItsExtensionInAnyCase)
{
    EXPECT_TRUE(HasGltfExtension("a.GLTF"));
    EXPECT_TRUE(HasGltfExtension("folder/a.b.Glb"));
    EXPECT_FALSE(HasGltfExtension("a.gltf.obj"));
}

}  // namespace

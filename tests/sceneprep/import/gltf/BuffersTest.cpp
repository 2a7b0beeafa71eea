#include <sceneprep/import/gltf/Buffers.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

class BuffersTest : public testing::Test
{
protected:
    std::vector<std::uint8_t> Bytes(const std::string& buffers, std::size_t index,
                                    std::optional<std::vector<std::uint8_t>> binary = {})
    {
        const Json json = {{"buffers", Json::parse(buffers)}};
        Buffers read(Field(json, {}), folder_ / "scene.gltf", std::move(binary));
        const std::span<const std::uint8_t> bytes = read.Get(index);
        return {bytes.begin(), bytes.end()};
    }

    TemporaryFolder folder_;
};

TEST_F(BuffersTest, AreFilesDataUrisOrTheBinaryChunk)
{
    folder_.Write("a b.bin", "xyz");
    const std::string buffers =
        R"([{"byteLength":1},{"byteLength":2,"uri":"a%20b.bin"},{"byteLength":3,"uri":"data:;base64,YWJj"}])";
    EXPECT_THAT(Bytes(buffers, 0, std::vector<std::uint8_t>{7, 0, 0, 0}), ElementsAre(7));
    EXPECT_THAT(Bytes(buffers, 1), ElementsAre('x', 'y'));
    EXPECT_THAT(Bytes(buffers, 2), ElementsAre('a', 'b', 'c'));
}

TEST_F(BuffersTest, AreLoadedOnlyWhenTheyAreUsed)
{
    EXPECT_THAT(Bytes(R"([{"byteLength":9,"uri":"missing.bin"},{"byteLength":1,"uri":"data:;base64,YQ=="}])", 1),
                ElementsAre('a'));
}

TEST_F(BuffersTest, WithoutBytesAreRefused)
{
    const auto expectProblem = [&](const std::string& buffers, const auto& problem) {
        EXPECT_THAT([&] { Bytes(buffers, 0); }, ThrowsMessage<FormatError>(problem)) << buffers;
    };
    expectProblem(R"([{"byteLength":4}])", "buffers[0]: has neither a uri nor a binary chunk");
    expectProblem(R"([{"byteLength":4,"uri":"data:;base64,YQ=="}])", "buffers[0]: has 1 bytes, 4 expected");
    expectProblem(R"([{"byteLength":4,"uri":"data:,a"}])", "buffers[0].uri: is not a data URI in base64");
    expectProblem(R"([{"byteLength":4,"uri":"https://example.org/a.bin"}])",
                  "buffers[0].uri: 'https://example.org/a.bin' is not a local file");
    expectProblem(R"([{"byteLength":4,"uri":"missing.bin"}])", HasSubstr("missing.bin': there is no such file"));
    expectProblem(R"([{"byteLength":-4,"uri":"a"}])", "buffers[0].byteLength: -4 is not a whole number of at least 0");
}

}  // namespace

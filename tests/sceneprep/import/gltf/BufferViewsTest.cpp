#include <sceneprep/import/gltf/BufferViews.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

#include <meshoptimizer.h>
#include <cstring>
#include <optional>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::ThrowsMessage;

class BufferViewsTest : public testing::Test
{
protected:
    /// Reads the view; the only buffer has the bytes 0 to 9.
    BufferView View(const std::string& view)
    {
        json_ = {{"buffers", {{{"byteLength", 10}}}}, {"bufferViews", {Json::parse(view)}}};
        buffers_.emplace(Field(json_, {}), "", std::vector<std::uint8_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
        views_.emplace(Field(json_, {}), *buffers_);
        return views_->Get(0);
    }

    Json json_;
    std::optional<Buffers> buffers_;
    std::optional<BufferViews> views_;
};

TEST_F(BufferViewsTest, ArePartsOfABuffer)
{
    const BufferView view = View(R"({"buffer":0,"byteOffset":3,"byteLength":2,"byteStride":16})");
    EXPECT_THAT(view.bytes, ElementsAre(3, 4));
    EXPECT_EQ(view.stride, 16U);
    EXPECT_EQ(View(R"({"buffer":0,"byteOffset":10,"byteLength":0})").bytes.size(), 0U);
}

TEST_F(BufferViewsTest, OutsideOfTheirBufferAreRefused)
{
    EXPECT_THAT([&] { View(R"({"buffer":0,"byteOffset":9,"byteLength":2})"); },
                ThrowsMessage<FormatError>("bufferViews[0]: byteOffset 9 and byteLength 2 lead outside buffer 0, which "
                                           "has 10 bytes"));
    EXPECT_THAT([&] { View(R"({"buffer":0,"byteOffset":18446744073709551615,"byteLength":2})"); },
                ThrowsMessage<FormatError>(testing::HasSubstr("lead outside buffer 0")));
    EXPECT_THAT([&] { View(R"({"buffer":1,"byteLength":2})"); },
                ThrowsMessage<FormatError>("bufferViews[0].buffer: 1 is not below 1"));
    EXPECT_THAT([&] { View(R"({"buffer":0})"); }, ThrowsMessage<FormatError>("bufferViews[0].byteLength: is missing"));
}

TEST_F(BufferViewsTest, OfFallbackBuffersAreReadFromTheCompressedBytes)
{
    const std::vector<std::uint32_t> indices = {0, 1, 2, 2, 1, 3};
    std::vector<unsigned char> encoded(meshopt_encodeIndexBufferBound(indices.size(), 4));
    encoded.resize(meshopt_encodeIndexBuffer(encoded.data(), encoded.size(), indices.data(), indices.size()));
    for (const char* name : {"EXT_meshopt_compression", "KHR_meshopt_compression"})
    {
        json_ = Json::parse(R"({"buffers":[{"byteLength":0},{"byteLength":24}],
            "bufferViews":[{"buffer":1,"byteLength":24}]})");
        json_["buffers"][0]["byteLength"] = encoded.size();
        json_["bufferViews"][0]["extensions"][name] = {{"buffer", 0},
                                                       {"byteLength", encoded.size()},
                                                       {"byteStride", 4},
                                                       {"mode", "TRIANGLES"},
                                                       {"count", indices.size()}};
        Buffers buffers(Field(json_, {}), "", encoded);
        BufferViews views(Field(json_, {}), buffers);
        ASSERT_EQ(views.Get(0).bytes.size(), 24U) << name;
        std::vector<std::uint32_t> decoded(6);
        std::memcpy(decoded.data(), views.Get(0).bytes.data(), 24);
        // The codec may rotate triangles.
        EXPECT_THAT(decoded, testing::UnorderedElementsAreArray(indices)) << name;
    }
}

TEST_F(BufferViewsTest, FallBackToTheirOwnBytesIfTheCompressedOnesCannotBeDecoded)
{
    json_ = Json::parse(R"({"buffers":[{"byteLength":4},{"byteLength":4,"uri":"data:;base64,AQIDBA=="}],
        "bufferViews":[{"buffer":1,"byteLength":4,"extensions":{"EXT_meshopt_compression":{"buffer":0,"byteLength":4,
        "byteStride":4,"mode":"ATTRIBUTES","count":1}}}]})");
    buffers_.emplace(Field(json_, {}), "", std::vector<std::uint8_t>{7, 7, 7, 7});
    views_.emplace(Field(json_, {}), *buffers_);
    EXPECT_THAT(views_->Get(0).bytes, ElementsAre(1, 2, 3, 4));

    json_["buffers"][1].erase("uri");
    EXPECT_THAT(
        [&] { views_->Get(0); },
        ThrowsMessage<FormatError>("bufferViews[0].extensions.EXT_meshopt_compression: the bytes cannot be decoded"));
}

}  // namespace

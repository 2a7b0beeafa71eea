#include <sceneprep/export/gltf/Buffers.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <vector>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;

std::string BytesOf(const Buffers& buffers)
{
    std::ostringstream stream;
    buffers.WriteTo(stream);
    return stream.str();
}

TEST(GltfBuffers, EveryArrayStartsAtAMultipleOfFourBytes)
{
    Document document;
    Buffers buffers(document);
    const std::vector<std::uint16_t> three = {1, 2, 3};
    const std::vector<float> one = {1.5F};
    EXPECT_EQ(buffers.Add(three, {"SCALAR", kUnsignedShort}, Usage::Indices), 0);
    EXPECT_EQ(buffers.Add(one, {}, Usage::Vertices), 1);

    EXPECT_EQ(buffers.Size(), 12U);
    EXPECT_EQ(document.bufferViews[0]["byteLength"], 6);
    EXPECT_EQ(document.bufferViews[1]["byteOffset"], 8);
    EXPECT_EQ(document.bufferViews[1]["byteLength"], 4);
    const std::string bytes = BytesOf(buffers);
    ASSERT_EQ(bytes.size(), 12U);
    EXPECT_EQ(bytes[4], 3);
    EXPECT_EQ(bytes[11], 0x3F);
}

TEST(GltfBuffers, AccessorsHaveCountAndLayout)
{
    Document document;
    Buffers buffers(document);
    const std::vector<float> four(4);
    buffers.Add(four, {}, Usage::Vertices);
    buffers.Add(four, {"SCALAR", kUnsignedByte, true}, Usage::Other);
    EXPECT_EQ(document.accessors[0]["count"], 4);
    EXPECT_EQ(document.accessors[0]["componentType"], 5126);
    EXPECT_EQ(document.accessors[0]["type"], "SCALAR");
    EXPECT_EQ(document.accessors[0]["bufferView"], 0);
    EXPECT_FALSE(document.accessors[0].contains("normalized"));
    EXPECT_EQ(document.bufferViews[0]["target"], 34962);
    EXPECT_EQ(document.accessors[1]["normalized"], true);
}

TEST(GltfBuffers, AStreamGetsTheSameBytesAtOnce)
{
    Document document;
    std::ostringstream stream;
    Buffers streamed(document, &stream);
    Buffers kept(document);
    for (Buffers* buffers : {&streamed, &kept})
    {
        buffers->AddView("abc", 3, Usage::Other);
        buffers->AddView("defg", 4, Usage::Other);
    }
    EXPECT_EQ(stream.str(), std::string("abc\0defg", 8));
    EXPECT_EQ(BytesOf(kept), stream.str());
    EXPECT_EQ(BytesOf(streamed), "") << "nothing is kept";
    EXPECT_EQ(streamed.Size(), 8U);
}

TEST(GltfBuffers, AnImageHasAViewAndNoAccessor)
{
    Document document;
    Buffers buffers(document);
    EXPECT_EQ(buffers.AddView("abc", 3, Usage::Other), 0);
    EXPECT_TRUE(document.accessors.empty());
    EXPECT_FALSE(document.bufferViews[0].contains("target"));
    EXPECT_EQ(document.bufferViews[0]["byteLength"], 3);
}

}  // namespace

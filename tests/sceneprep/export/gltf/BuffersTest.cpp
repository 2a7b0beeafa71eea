#include <sceneprep/export/gltf/Buffers.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace
{

using namespace Sceneprep::Gltf;

TEST(GltfBuffers, EveryArrayStartsAtAMultipleOfFourBytes)
{
    tinygltf::Model model;
    Buffers buffers(model);
    const std::vector<std::uint16_t> three = {1, 2, 3};
    const std::vector<float> one = {1.5F};
    const Layout shorts = {TINYGLTF_TYPE_SCALAR, TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT};
    EXPECT_EQ(buffers.Add(three, shorts, Usage::Indices), 0);
    EXPECT_EQ(buffers.Add(one, {}, Usage::Vertices), 1);

    ASSERT_EQ(model.buffers.size(), 1U);
    EXPECT_EQ(model.buffers[0].data.size(), 12U);
    EXPECT_EQ(model.bufferViews[0].byteLength, 6U);
    EXPECT_EQ(model.bufferViews[1].byteOffset, 8U);
    EXPECT_EQ(model.bufferViews[1].byteLength, 4U);
    EXPECT_EQ(model.buffers[0].data[4], 3);
    EXPECT_EQ(model.buffers[0].data[11], 0x3F);
}

TEST(GltfBuffers, AccessorsSayHowManyElementsOfWhichKind)
{
    tinygltf::Model model;
    Buffers buffers(model);
    const std::vector<float> four(4);
    buffers.Add(four, {}, Usage::Vertices);
    EXPECT_EQ(model.accessors[0].count, 4U);
    EXPECT_EQ(model.accessors[0].componentType, TINYGLTF_COMPONENT_TYPE_FLOAT);
    EXPECT_EQ(model.accessors[0].type, TINYGLTF_TYPE_SCALAR);
    EXPECT_EQ(model.accessors[0].bufferView, 0);
    EXPECT_EQ(model.bufferViews[0].target, TINYGLTF_TARGET_ARRAY_BUFFER);
}

TEST(GltfBuffers, WhatIsExpectedMakesRoomAndNoBuffer)
{
    tinygltf::Model model;
    Buffers buffers(model);
    buffers.Expect(1000);
    EXPECT_TRUE(model.buffers.empty());
    buffers.AddView("abc", 3, Usage::Other);
    EXPECT_EQ(model.buffers[0].data.size(), 3U);
    EXPECT_GE(model.buffers[0].data.capacity(), 1000U);
}

TEST(GltfBuffers, APictureHasAViewAndNoAccessor)
{
    tinygltf::Model model;
    Buffers buffers(model);
    EXPECT_EQ(buffers.AddView("abc", 3, Usage::Other), 0);
    EXPECT_TRUE(model.accessors.empty());
    EXPECT_EQ(model.bufferViews[0].target, 0);
    EXPECT_EQ(model.bufferViews[0].byteLength, 3U);
}

}  // namespace

#pragma once

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/TinyGltf.h>

#include <cstring>
#include <vector>

namespace SceneprepTests
{

/// @return the elements that an accessor of a model leads to.
template <typename T>
std::vector<T> ReadArray(const tinygltf::Model& model, int accessor)
{
    const tinygltf::Accessor& array = model.accessors.at(static_cast<std::size_t>(accessor));
    const tinygltf::BufferView& view = model.bufferViews.at(static_cast<std::size_t>(array.bufferView));
    EXPECT_EQ(view.byteLength, array.count * sizeof(T));
    std::vector<T> elements(array.count);
    std::memcpy(elements.data(), model.buffers.at(0).data.data() + view.byteOffset, view.byteLength);
    return elements;
}

}  // namespace SceneprepTests

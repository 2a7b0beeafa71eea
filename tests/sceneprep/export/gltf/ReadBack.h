#pragma once

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/Buffers.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace SceneprepTests
{

/// A document with its buffer, for tests that read back what was written.
struct WrittenDocument
{
    Sceneprep::Gltf::Document document;
    Sceneprep::Gltf::Buffers buffers{document};

    const Sceneprep::Json& Accessor(const Sceneprep::Json& index) const
    {
        return document.accessors.at(index.get<std::size_t>());
    }

    std::string Bytes() const
    {
        std::ostringstream stream;
        buffers.WriteTo(stream);
        return stream.str();
    }

    /// Returns the elements of an accessor.
    template <typename T>
    std::vector<T> Read(const Sceneprep::Json& index) const
    {
        const Sceneprep::Json& accessor = Accessor(index);
        const Sceneprep::Json& view = document.bufferViews.at(accessor["bufferView"].get<std::size_t>());
        std::vector<T> elements(accessor["count"].get<std::size_t>());
        EXPECT_EQ(view["byteLength"].get<std::size_t>(), elements.size() * sizeof(T));
        std::memcpy(elements.data(), Bytes().data() + view["byteOffset"].get<std::size_t>(),
                    elements.size() * sizeof(T));
        return elements;
    }
};

}  // namespace SceneprepTests

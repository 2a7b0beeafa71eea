#pragma once

#include <sceneprep/export/gltf/TinyGltf.h>

#include <cstddef>
#include <vector>

namespace Sceneprep::Gltf
{

/// What an array is read as, which drawing libraries like to know beforehand.
enum class Usage
{
    Vertices = TINYGLTF_TARGET_ARRAY_BUFFER,
    Indices = TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER,
    Other = 0
};

/// The layout of an array's elements, in the constants of the glTF library.
struct Layout
{
    int type = TINYGLTF_TYPE_SCALAR;
    int componentType = TINYGLTF_COMPONENT_TYPE_FLOAT;
};

/// Lays arrays into the one binary buffer of a model. Each gets a view and an accessor of its own and starts at a
/// multiple of 4 bytes.
class Buffers
{
public:
    explicit Buffers(tinygltf::Model& model) : model_(model) {}

    /// Says roughly how many bytes will come, so that they need not move as they grow. Call it before the first comes.
    void Expect(std::size_t size) { expected_ = size; }

    /// Copies an array whose elements lie close together in the given layout.
    /// @return the index of its accessor.
    template <typename T>
    int Add(const std::vector<T>& elements, const Layout& layout, Usage usage)
    {
        return AddBytes(elements.data(), elements.size(), sizeof(T), layout, usage);
    }

    /// Copies bytes that are no array of numbers, a picture for one.
    /// @return the index of their view.
    int AddView(const void* data, std::size_t size, Usage usage);

private:
    int AddBytes(const void* data, std::size_t count, std::size_t elementSize, const Layout& layout, Usage usage);

    tinygltf::Model& model_;
    std::size_t expected_ = 0;
};

}  // namespace Sceneprep::Gltf

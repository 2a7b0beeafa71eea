#pragma once

#include <sceneprep/export/gltf/Document.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

namespace Sceneprep::Gltf
{

/// The type of the components of an array, as the format numbers it.
using ComponentType = int;
inline constexpr ComponentType kByte = 5120;
inline constexpr ComponentType kUnsignedByte = 5121;
inline constexpr ComponentType kShort = 5122;
inline constexpr ComponentType kUnsignedShort = 5123;
inline constexpr ComponentType kUnsignedInt = 5125;
inline constexpr ComponentType kFloat = 5126;

/// The use of an array, which becomes bufferView.target.
enum class Usage
{
    Vertices = 34962,
    Indices = 34963,
    Other = 0
};

/// The layout of an array's elements.
struct Layout
{
    const char* type = "SCALAR";
    int componentType = kFloat;
    bool isNormalized = false;
};

/// Writes arrays to the binary buffer of a document. Each has its own view and accessor and starts at a multiple of 4
/// bytes.
class Buffers
{
public:
    /// @param stream  gets the bytes at once, and records failures; without a stream they are kept until WriteTo()
    explicit Buffers(Document& document, std::ostream* stream = nullptr) : document_(document), stream_(stream) {}

    /// Adds an array whose elements are tightly packed in the given layout, and returns the index of its accessor.
    template <typename T>
    int Add(const std::vector<T>& elements, const Layout& layout, Usage usage)
    {
        const int view = AddView(elements.data(), elements.size() * sizeof(T), usage);
        return AddAccessor(view, elements.size(), layout);
    }

    /// Adds bytes that are not an array of numbers, such as an image, and returns the index of their view.
    int AddView(const void* data, std::size_t size, Usage usage);

    /// Adds an accessor for a view.
    int AddAccessor(int view, std::size_t count, const Layout& layout);

    /// Returns the length of the buffer in bytes.
    std::size_t Size() const { return size_; }

    /// Writes all bytes that have been kept.
    void WriteTo(std::ostream& stream) const;

private:
    void Put(const void* data, std::size_t size);

    Document& document_;
    std::ostream* stream_;
    std::size_t size_ = 0;
    std::vector<std::vector<char>> kept_;  // one for each view, so that no bytes are copied when the buffer grows
};

}  // namespace Sceneprep::Gltf

#pragma once

#include <sceneprep/import/gltf/Buffers.h>
#include <sceneprep/import/gltf/Field.h>

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The bytes that a buffer view shows.
struct BufferView
{
    std::span<const std::uint8_t> bytes;
    std::size_t stride = 0;  ///< 0 where the elements are tightly packed
};

/// The buffer views of a document. Compressed ones are decoded when they are asked for first, and kept.
class BufferViews
{
public:
    /// Both have to outlive the object.
    BufferViews(const Field& document, Buffers& buffers);

    std::size_t Count() const { return count_; }

    /// @throws FormatError when the view leads outside its buffer, or cannot be decoded.
    BufferView Get(std::size_t index);

private:
    std::span<const std::uint8_t> BytesOf(const Field& view);

    std::optional<Field> list_;  ///< none in documents without buffer views
    Buffers& buffers_;
    std::size_t count_;
    std::unordered_map<std::size_t, std::vector<std::uint8_t>> decoded_;
};

}  // namespace Sceneprep::GltfImport

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

/// The bytes of a buffer view.
struct BufferView
{
    std::span<const std::uint8_t> bytes;
    std::size_t stride = 0;  ///< 0 if the elements are tightly packed
};

/// The buffer views of a document. Compressed ones are decoded at their first use, and cached.
class BufferViews
{
public:
    /// Both have to outlive the object.
    BufferViews(const Field& document, Buffers& buffers);

    std::size_t Count() const { return count_; }

    /// @throws FormatError if the view exceeds its buffer or cannot be decoded.
    BufferView Get(std::size_t index);

private:
    std::span<const std::uint8_t> BytesOf(const Field& view);

    std::optional<Field> list_;  ///< empty in documents without buffer views
    Buffers& buffers_;
    std::size_t count_;
    std::unordered_map<std::size_t, std::vector<std::uint8_t>> decoded_;
};

}  // namespace Sceneprep::GltfImport

#pragma once

#include <sceneprep/import/gltf/Field.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The buffers of a document. Each is loaded at its first use, so unused buffers need not exist, such as the fallbacks
/// of compressed buffers, which have no bytes.
class Buffers
{
public:
    /// @param document  has to outlive the object
    /// @param file      references to other files are relative to its folder
    /// @param binary    the binary chunk, which is the first buffer if that has no URI
    Buffers(const Field& document, std::filesystem::path file, std::optional<std::vector<std::uint8_t>> binary);

    std::size_t Count() const { return buffers_.size(); }

    /// Returns whether a buffer has bytes. Fallbacks of compressed buffers need none.
    bool HasBytes(std::size_t index) const;

    /// Returns the bytes of a buffer, as many as its byteLength.
    /// @throws FormatError if the buffer has fewer bytes.
    std::span<const std::uint8_t> Get(std::size_t index);

private:
    std::vector<std::uint8_t> Load(std::size_t index, const Field& buffer);

    struct Buffer
    {
        bool isLoaded = false;
        std::vector<std::uint8_t> bytes = {};
        std::size_t length = 0;
    };

    Field document_;
    std::filesystem::path file_;
    std::optional<std::vector<std::uint8_t>> binary_;
    std::vector<Buffer> buffers_;
};

}  // namespace Sceneprep::GltfImport

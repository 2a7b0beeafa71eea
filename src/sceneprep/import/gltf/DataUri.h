#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The content of a "data:" URI.
struct DataUri
{
    std::string mediaType;  ///< as "image/png"; empty if the URI has none
    std::vector<std::uint8_t> bytes;
};

/// Returns whether the reference is a "data:" URI, valid or not.
bool IsDataUri(std::string_view uri);

/// Decodes a "data:" URI in base64, with or without padding.
/// Returns nothing if it is not in base64 or contains other characters.
std::optional<DataUri> DecodeDataUri(std::string_view uri);

}  // namespace Sceneprep::GltfImport

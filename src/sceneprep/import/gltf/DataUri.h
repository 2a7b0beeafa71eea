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
    std::string mediaType;  ///< as "image/png"; empty where the URI names none
    std::vector<std::uint8_t> bytes;
};

/// @return whether the reference is a "data:" URI, right or wrong.
bool IsDataUri(std::string_view uri);

/// Decodes a "data:" URI in base64, with or without padding.
/// @return none when it is not in base64 or holds other characters.
std::optional<DataUri> DecodeDataUri(std::string_view uri);

}  // namespace Sceneprep::GltfImport

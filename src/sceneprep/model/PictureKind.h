#pragma once

#include <string_view>
#include <vector>

namespace Sceneprep
{

/// A kind of picture files.
struct PictureKind
{
    const char* mimeType;
    const char* extension;
    std::string_view start;  ///< the file's first bytes
};

/// @return the kind, by the file's first bytes: PNG or JPEG; null when it is neither.
const PictureKind* KindOf(const std::vector<unsigned char>& file);

}  // namespace Sceneprep

#pragma once

#include <string_view>
#include <vector>

namespace Sceneprep
{

/// A kind of image files.
struct ImageKind
{
    const char* mimeType;
    const char* extension;   ///< of file names
    std::string_view start;  ///< the first bytes of the file
    std::string_view mark;   ///< the bytes at markAt; empty where the first bytes are enough
    std::size_t markAt;
    const char* textureExtension;  ///< the glTF extension for textures of this kind; null for kinds of the core format
};

/// Returns the kind by the first bytes of a file: PNG, JPEG, WebP, AVIF, KTX2 or DDS; null for any other file.
const ImageKind* ImageKindOf(const std::vector<unsigned char>& file);

}  // namespace Sceneprep

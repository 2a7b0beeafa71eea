#pragma once

#include <map>
#include <string>
#include <vector>

namespace Sceneprep
{

/// An image that is embedded in the model file.
struct EmbeddedTexture
{
    std::string fileName = {};
    std::string formatHint = {};              ///< such as "png"; empty if the model file has none
    std::vector<unsigned char> content = {};  ///< of the image file
};

/// The textures of a model file, in addition to the scene's texture library.
struct Textures
{
    /// The reference as the file spells it, by the entry of the texture library, which is in lower case.
    std::map<std::string, std::string> spelling;
    /// In the order of the file; the reference "*0" refers to the first one.
    std::vector<EmbeddedTexture> embedded;
};

}  // namespace Sceneprep

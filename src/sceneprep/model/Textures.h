#pragma once

#include <map>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A picture that lies in the model file itself.
struct EmbeddedTexture
{
    std::string fileName = {};
    std::string formatHint = {};              ///< as "png"; empty where the model file did not say
    std::vector<unsigned char> content = {};  ///< of the picture file
};

/// What a model file says about its textures beyond the scene's texture library.
struct Textures
{
    /// By entry of the texture library, which is in lower case: the reference as the file spells it.
    std::map<std::string, std::string> spelling;
    /// In the order of the file; the reference "*0" means the first one.
    std::vector<EmbeddedTexture> embedded;
};

}  // namespace Sceneprep

#pragma once

#include <filesystem>
#include <string>

namespace Sceneprep::Gltf
{

/// How a model is written as glTF.
struct WriteOptions
{
    bool isBinary = true;           ///< one .glb file, which holds its images
    bool externalTextures = false;  ///< refer to the original image files instead of copies or embedded images
    std::string stem = "model";     ///< names of files next to a .gltf file begin with it; nothing that a URI encodes
    std::filesystem::path folder = {};  ///< where the file is going to be; references to images are relative to it
};

}  // namespace Sceneprep::Gltf

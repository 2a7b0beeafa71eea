#pragma once

#include <filesystem>
#include <string>

namespace Sceneprep::Gltf
{

/// What becomes of the images of a model.
enum class ImageUse
{
    Stored,    ///< in the file, or in files next to a .gltf file
    External,  ///< references to the original image files; images that the input held are stored
    Omitted    ///< textures are omitted with their images
};

/// How a model is written as glTF.
struct WriteOptions
{
    bool isBinary = true;  ///< one .glb file, which holds its images
    ImageUse images = ImageUse::Stored;
    bool gpuInstancing = false;  ///< write siblings that share a mesh as instances of one node
    std::string stem = "model";  ///< names of files next to a .gltf file begin with it; nothing that a URI encodes
    std::filesystem::path folder = {};  ///< where the file is going to be; references to images are relative to it
};

}  // namespace Sceneprep::Gltf

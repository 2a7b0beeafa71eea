#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/model/Textures.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// An image that has to be next to the model file.
struct CompanionFile
{
    std::string name;
    const std::vector<unsigned char>* content;
};

/// Returns a name for an image next to the model file.
/// @param stem    name of the model file without its extension
/// @param number  distinguishes the images of one file
std::string CompanionName(const std::string& stem, std::size_t number, const EmbeddedTexture& picture);

/// The textures of a scene if every image of the input is in a file of its own.
struct PlacedTextures
{
    Textures textures;  ///< without embedded images
    std::vector<CompanionFile> companions;
};

/// @param textures  owns the images and has to outlive the companions
PlacedTextures PlaceBeside(const Importing::SceneContainer& scene, const Textures& textures, const std::string& stem);

/// @throws ToolError if one cannot be written.
void WriteCompanions(const std::vector<CompanionFile>& companions, const std::filesystem::path& folder);

}  // namespace Sceneprep

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
std::string CompanionName(const std::string& stem, std::size_t number, const EmbeddedTexture& image);

/// The textures of a scene whose embedded images become files next to the model file.
struct CompanionTextures
{
    Textures textures;  ///< without embedded images
    std::vector<CompanionFile> companions;
};

/// Assigns a file name to every embedded image that the texture library refers to.
/// @param textures  owns the images and has to outlive the companions
/// @param stem      name of the model file without its extension
CompanionTextures MakeCompanions(const Importing::SceneContainer& scene, const Textures& textures,
                                 const std::string& stem);

/// Writes the images into a folder. Files written before an exception stay there.
/// @throws ToolError if an image cannot be written.
void WriteCompanions(const std::vector<CompanionFile>& companions, const std::filesystem::path& folder);

}  // namespace Sceneprep

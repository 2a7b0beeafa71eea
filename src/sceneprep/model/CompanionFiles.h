#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/model/Textures.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A picture that has to lie beside the model file.
struct CompanionFile
{
    std::string name;
    const std::vector<unsigned char>* content;
};

/// @return a name for a picture beside the model file.
/// @param stem    name of the model file without its ending
/// @param number  tells the pictures of one file apart
std::string CompanionName(const std::string& stem, std::size_t number, const EmbeddedTexture& picture);

/// The textures of a scene when every picture of the input lies in a file of its own.
struct PlacedTextures
{
    Textures textures;  ///< nothing is embedded any more
    std::vector<CompanionFile> companions;
};

/// @param textures  keeps the pictures; it has to outlive the companions
PlacedTextures PlaceBeside(const Importing::SceneContainer& scene, const Textures& textures, const std::string& stem);

/// @throws ToolError when one cannot be written.
void WriteCompanions(const std::vector<CompanionFile>& companions, const std::filesystem::path& folder);

}  // namespace Sceneprep

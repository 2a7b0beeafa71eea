#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/model/Textures.h>

#include <filesystem>
#include <string>

namespace Sceneprep
{

/// Returns the last part of a path with slashes or backslashes.
std::string FileNameOf(const std::string& path);

/// Returns an entry of the texture library as the model file spelled it; unchanged if the file did not name it.
std::string SpellingOf(const Textures& textures, const std::string& entry);

/// Returns the embedded image that a reference such as "*2", the third one, refers to; null if it refers to a file.
const EmbeddedTexture* FindEmbedded(const Textures& textures, const std::string& reference);

/// Converts a reference to a texture file in the model file `from` to one in the model file `to`. Absolute paths and
/// URLs stay unchanged, as do all references if both files are in one folder.
std::string RebasedReference(const std::string& reference, const std::filesystem::path& from,
                             const std::filesystem::path& to);

/// Converts the references to texture files in the model file `from` to references in the model file `to`. References
/// to embedded images stay unchanged.
void RebaseReferences(const Importing::SceneContainer& scene, const std::filesystem::path& from,
                      const std::filesystem::path& to, Textures& textures);

}  // namespace Sceneprep

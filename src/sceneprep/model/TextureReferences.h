#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/model/Textures.h>

#include <filesystem>
#include <string>

namespace Sceneprep
{

/// @return the last part of a path, whichever way its slashes lean.
std::string FileNameOf(const std::string& path);

/// @return an entry of the texture library as the model file spelled it; unchanged where the file did not name it.
std::string SpellingOf(const Textures& textures, const std::string& entry);

/// @return the picture in the model file that a reference means, "*2" being the third; null when it means a file of
///         its own.
const EmbeddedTexture* FindEmbedded(const Textures& textures, const std::string& reference);

/// @return a reference to a texture file that stands in the model file `from`, as it has to stand in `to`, to mean the
///         same file. Absolute ones, and those into the net, stay; so do all where the two lie in one folder.
std::string RebasedReference(const std::string& reference, const std::filesystem::path& from,
                             const std::filesystem::path& to);

/// Spells the references to texture files, which stand in the model file `from`, as they have to stand in `to`.
/// Pictures in the model file are none of those.
void RebaseReferences(const Importing::SceneContainer& scene, const std::filesystem::path& from,
                      const std::filesystem::path& to, Textures& textures);

}  // namespace Sceneprep

#pragma once

#include <sceneprep/Textures.h>

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

}  // namespace Sceneprep

#pragma once

#include <sceneprep/import/gltf/Field.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Sceneprep::GltfImport
{

/// Returns the JSON pointer that a channel of an animation changes; null for channels of nodes.
const std::string* PointerOf(const Field& channelTarget);

/// Returns all pointers of KHR_animation_pointer in a document.
std::vector<std::string> AnimationPointers(const Field& document);

/// @param list  as "/materials/"
/// Returns the 3 of "/materials/3/..."; nothing for pointers to other lists.
std::optional<std::size_t> IndexInPointer(std::string_view pointer, std::string_view list);

}  // namespace Sceneprep::GltfImport

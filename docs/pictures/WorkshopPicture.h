#pragma once

#include <pictures/Image.h>

#include <filesystem>
#include <ostream>

namespace Pictures
{

/// The bundled scene before and after flattening, a color for every draw call. Prints the counts of both.
/// @throws Sceneprep::ToolError when the scene cannot be read.
Image DrawWorkshop(const std::filesystem::path& sceneFile, std::ostream& counts);

}  // namespace Pictures

#pragma once

#include <importing/records/Surface.h>

#include <string>

namespace Pipeline
{

/// What makes two surfaces' materials the same in a file: material and texture layers, bit by bit where numbers are
/// concerned. File formats keep texture layers with the material, so a scene's material may become several.
std::string MaterialKey(Importing::Surface& surface);

}  // namespace Pipeline

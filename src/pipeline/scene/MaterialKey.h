#pragma once

#include <importing/records/Surface.h>

#include <string>

namespace Pipeline
{

/// Returns a text that is equal for two surfaces exactly if they have the same material and texture layers; numbers are
/// compared bit by bit. In files, texture layers belong to the material, so one material of a scene may become several.
std::string MaterialKey(Importing::Surface& surface);

}  // namespace Pipeline

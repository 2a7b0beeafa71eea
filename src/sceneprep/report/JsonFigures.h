#pragma once

#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <nlohmann/json.hpp>

#include <string>

namespace Sceneprep
{

using Json = nlohmann::ordered_json;

/// @return the counts by name, in the order in which tables show them.
Json CountsAsJson(const Pipeline::SceneStats& stats);

Json WorldAsJson(const Pipeline::WorldMeasure& world);

/// @return the document with a line break at its end. What is no UTF-8, as names from files may be, is replaced.
std::string JsonText(const Json& document);

}  // namespace Sceneprep

#pragma once

#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <sceneprep/model/Json.h>

#include <string>

namespace Sceneprep
{

/// Returns the counts by name, in the order of the tables.
Json CountsAsJson(const Pipeline::SceneStats& stats);

Json WorldAsJson(const Pipeline::WorldMeasure& world);

/// Returns the document with a line break at its end. Invalid UTF-8, which names from files may have, is replaced.
std::string JsonText(const Json& document);

}  // namespace Sceneprep

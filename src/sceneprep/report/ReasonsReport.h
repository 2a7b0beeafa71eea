#pragma once

#include <pipeline/steps/MergeReasons.h>
#include <sceneprep/model/Json.h>

#include <string>

namespace Sceneprep
{

/// Returns one line: "46 draw calls; 33 more than materials need: 30 below animated node 'rotor', 3 vertex limit".
/// Groups of different materials are added up; after the five largest, the rest is one number.
std::string ReasonsText(const Pipeline::MergeReasons& reasons);

/// Returns an object with the keys "drawCalls", "neededByMaterials", "groups" and "groupCount". Of the groups, the
/// largest 1,000 are listed.
Json ReasonsAsJson(const Pipeline::MergeReasons& reasons);

}  // namespace Sceneprep

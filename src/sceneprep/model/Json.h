#pragma once

#include <nlohmann/json.hpp>

namespace Sceneprep
{

/// Objects keep the order of their keys.
using Json = nlohmann::ordered_json;

}  // namespace Sceneprep

#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/SceneSupplement.h>

namespace Pipeline
{

/// The scene that a step works on: the container and its supplement. Neither is owned.
struct WorkScene
{
    Importing::SceneContainer& container;
    SceneSupplement& supplement;
};

}  // namespace Pipeline

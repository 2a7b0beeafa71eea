#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/SceneSupplement.h>
#include <sceneprep/model/Carried.h>
#include <sceneprep/model/Textures.h>
#include <sceneprep/run/Notes.h>

#include <filesystem>
#include <memory>

namespace Sceneprep
{

/// A model on its way through the program: imported, appended to, prepared, exported.
struct Model
{
    std::unique_ptr<Importing::SceneContainer> scene;
    Textures textures;
    Pipeline::SceneSupplement supplement;  ///< its keys lead into `carried`
    Carried carried;
    std::filesystem::path file;  ///< where it came from; references to other files are relative to its folder
    Notes notes;
};

}  // namespace Sceneprep

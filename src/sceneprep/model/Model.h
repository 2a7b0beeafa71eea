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

/// A model on its way through the program: imported, appended to, prepared, exported. Empty at first.
struct Model
{
    std::unique_ptr<Importing::SceneContainer> scene = std::make_unique<Importing::SceneContainer>();
    Textures textures = {};
    Pipeline::SceneSupplement supplement = {};  ///< its keys are indices into lists of `carried`
    Carried carried = {};
    std::filesystem::path file =
        {};            ///< the file it was read from; references to other files are relative to its folder
    Notes notes = {};  ///< about reading the file
};

}  // namespace Sceneprep

#pragma once

#include <sceneprep/model/Model.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace SceneprepTests
{

/// Returns a model that holds the scene and nothing else.
inline Sceneprep::Model ModelOf(Importing::SceneContainer scene)
{
    Sceneprep::Model model;
    *model.scene = std::move(scene);
    return model;
}

inline std::vector<std::string> TextsOf(const Sceneprep::Notes& notes)
{
    std::vector<std::string> texts;
    for (const Sceneprep::Note& note : notes.All())
        texts.push_back(note.text);
    return texts;
}

}  // namespace SceneprepTests

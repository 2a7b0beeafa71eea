#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

#include <span>
#include <string>
#include <vector>

namespace Pipeline
{

/// One step of PrepareScene(): the option that selects it, and the function that it runs. A new step needs a row in the
/// table of Steps.cpp and a member of PrepareOptions.
struct Step
{
    const char* option = "";     ///< on a command line, as "--weld"; empty for a step that another one's option implies
    const char* value = "";      ///< placeholder of the option's value; empty for a flag
    const char* title = "";      ///< as reports show it, as "Weld"
    const char* help = "";       ///< one sentence without its full stop
    bool isRecommended = false;  ///< one of RecommendedSteps()
    bool needsOwnMeshes = false;  ///< surfaces must not share meshes: the step changes meshes one surface at a time
    bool PrepareOptions::*flag = nullptr;  ///< what the option sets; null for an option with a value
    /// Sets the members of an option with a value. Returns an error text if the value is not valid, else an empty text.
    std::string (*setValue)(PrepareOptions& options, const std::string& value) = nullptr;
    bool (*isChosen)(const PrepareOptions& options) = nullptr;
    Changes (*run)(const WorkScene& scene, const PrepareOptions& options, const PartListener& listener) = nullptr;
};

/// An option that adjusts a step. One of the pointers to members is set.
struct StepSetting
{
    const char* option = "";
    const char* value = "";  ///< placeholder of the value; empty for a flag
    const char* help = "";   ///< one sentence without its full stop
    const char* step = "";   ///< the option of the step that it adjusts
    bool PrepareOptions::*flag = nullptr;
    int PrepareOptions::*number = nullptr;
    double PrepareOptions::*size = nullptr;                     ///< above 0
    std::vector<std::string> PrepareOptions::*names = nullptr;  ///< the option may be given several times
};

/// Returns all steps in the order in which PrepareScene() runs them. Option names are unique.
std::span<const Step> Steps();

/// Returns all settings, those of one step next to each other.
std::span<const StepSetting> StepSettings();

}  // namespace Pipeline

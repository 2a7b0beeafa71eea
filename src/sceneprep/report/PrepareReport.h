#pragma once

#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <pipeline/steps/RunStep.h>
#include <sceneprep/run/Notes.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A scene as numbers.
struct SceneFigures
{
    Pipeline::SceneStats counts;
    Pipeline::WorldMeasure world;
};

SceneFigures FiguresOf(Importing::SceneContainer& scene, const Pipeline::PartListener& listener = Pipeline::IgnorePart);

/// All that there is to say about one run of `prepare`.
struct PrepareReport
{
    std::vector<std::filesystem::path> inputs;
    std::vector<std::filesystem::path> leftOut;
    std::filesystem::path output;
    SceneFigures before;
    SceneFigures after;
    std::vector<Pipeline::StepResult> steps;
    Notes notes;
    std::vector<std::string> differences;  ///< between the worlds before and after; empty: they are the same
};

/// @return the report for people.
std::string ReportText(const PrepareReport& report);

/// @return the report as data: an object with the keys "schema", "inputs", "leftOut", "output", "before", "after",
///         "steps", "notes" and "differences".
std::string ReportJson(const PrepareReport& report);

}  // namespace Sceneprep

#pragma once

#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <pipeline/steps/MergeReasons.h>
#include <pipeline/steps/RunStep.h>
#include <sceneprep/report/Findings.h>
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

/// The report of one run of `prepare`.
struct PrepareReport
{
    std::vector<std::filesystem::path> inputs;
    std::vector<std::filesystem::path> skipped;
    std::filesystem::path output;
    SceneFigures before;
    SceneFigures after;
    std::vector<Pipeline::StepResult> steps;
    Notes notes;
    std::vector<Finding> findings;         ///< about the inputs
    Pipeline::MergeReasons reasons;        ///< why the result has more draw calls than materials
    std::vector<std::string> differences;  ///< between the scene before and after; empty if the result matches
    std::string refusal = {};              ///< why the output was not written; empty if it was
};

/// Returns the report as text. Losses are listed by name.
std::string ReportText(const PrepareReport& report);

/// Returns the report as JSON: an object with the keys "schema", "inputs", "leftOut", "output", "before", "after",
/// "steps", "notes", "losses", "reasons", "findings", "differences" and "refusal".
std::string ReportJson(const PrepareReport& report);

}  // namespace Sceneprep

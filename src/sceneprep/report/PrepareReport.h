#pragma once

#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <pipeline/steps/MergeReasons.h>
#include <pipeline/steps/RunStep.h>
#include <sceneprep/compare/Verdict.h>
#include <sceneprep/compare/ViewerCounts.h>
#include <sceneprep/model/Json.h>
#include <sceneprep/report/Budget.h>
#include <sceneprep/report/Findings.h>
#include <sceneprep/run/Notes.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A scene as numbers.
struct SceneFigures
{
    Pipeline::SceneStats counts = {};
    Pipeline::WorldMeasure world = {};
    ViewerCounts viewer = {};

    /// Sets what a viewer counts in the file, also where `counts` has the same figure of the container.
    void SetViewer(const ViewerCounts& file);
};

/// Returns the numbers that a budget limits: those of the file, as far as `viewer` has them.
ModelSize SizeOf(const SceneFigures& figures);

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
    std::vector<Finding> findings;   ///< about the inputs
    Pipeline::MergeReasons reasons;  ///< why the result has more draw calls than materials
    std::vector<BudgetResult> budget;
    Verdict verdict;
    std::string refusal = {};  ///< why the output was not written; empty if it was
};

/// Returns figures as JSON: an object with the keys "counts", "world", "fileBytes", "gpuBytes", "drawCalls" and
/// "viewerMaterials".
Json FiguresAsJson(const SceneFigures& figures);

/// Returns a verdict as JSON: an object with the keys "verified", "reason", "compared" and "differences".
Json VerdictAsJson(const Verdict& verdict);

/// Returns a verdict as text: whether the result matches the input, the differences, and what was compared.
/// @param subject  "The result" of "The result matches the input."
/// @param object   "the input"
std::string VerdictText(const Verdict& verdict, const std::string& subject = "The result",
                        const std::string& object = "the input");

/// Returns the texts of the differences.
std::vector<std::string> TextsOf(const std::vector<Difference>& differences);

/// Returns the report as text. Losses are listed by name.
std::string ReportText(const PrepareReport& report);

/// Returns the report as JSON: an object with the keys "schema", "inputs", "leftOut", "output", "before", "after",
/// "steps", "notes", "losses", "reasons", "findings", "verdict", "differences", which has the texts of the verdict's
/// differences, and "refusal"; with limits also "budget".
std::string ReportJson(const PrepareReport& report);

}  // namespace Sceneprep

#pragma once

#include <sceneprep/run/RunContext.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep::Batch
{

/// The arguments of `batch`.
struct BatchCommand
{
    std::filesystem::path folder = {};        ///< where the models are
    std::filesystem::path output = {};        ///< the folder of the outputs
    std::string format = "glb";               ///< extension of the outputs
    int jobs = 0;                             ///< how many models are prepared at a time; 0: as Ninja chooses
    bool print = false;                       ///< print the Ninja file, and do nothing else
    bool collect = false;                     ///< only report on the last run
    bool quiet = false;                       ///< suppress the progress of Ninja
    std::filesystem::path program = {};       ///< sceneprep
    std::filesystem::path plugin = {};        ///< the plug-in that it loads
    std::vector<std::string> arguments = {};  ///< options of `prepare` for every model
};

/// Prepares every model below a folder by Ninja, which skips models that have not changed since the last run. Writes
/// build.ninja and index.json to the folder of the outputs, and a JSON report for each model to its subfolder
/// "reports". Prints a table.
///
/// @return kDone, or kUnusable if a model could not be prepared.
/// @throws ToolError if there are no models, a file cannot be written or Ninja is not installed.
int RunBatch(const BatchCommand& command, const RunContext& context);

}  // namespace Sceneprep::Batch

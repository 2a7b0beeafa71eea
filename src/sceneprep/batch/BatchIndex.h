#pragma once

#include <sceneprep/batch/ModelList.h>
#include <sceneprep/batch/NinjaFile.h>
#include <sceneprep/model/Json.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Sceneprep::Batch
{

/// What the files of a run say about one model.
struct ModelResult
{
    std::string model;   ///< relative to the folder of the models
    std::string output;  ///< relative to the folder of the outputs
    int exitStatus = kNotRun;
    std::string problem = {};      ///< the last error line of the run; empty without one
    Json report = Json::object();  ///< the JSON report; an object without keys if there is none
    std::uint64_t bytes = 0;       ///< of the output; 0 if there is none

    static constexpr int kNotRun = -1;
};

/// Reads what the last run of an edge has left.
ModelResult ReadResult(const Edge& edge, const ModelFile& file);

/// Returns a table with one row for each model: status, draw calls before and after, bytes of the output, seconds.
/// Below it are the problems, one line each, and the numbers of models.
std::string ResultTable(const std::vector<ModelResult>& results);

/// Returns an object with the keys "schema", "models" (an array) and "failed" (how many of them).
Json IndexAsJson(const std::vector<ModelResult>& results);

/// Returns whether every model was prepared.
bool AreAllDone(const std::vector<ModelResult>& results);

}  // namespace Sceneprep::Batch

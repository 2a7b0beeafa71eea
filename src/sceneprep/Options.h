#pragma once

#include <pipeline/steps/PrepareOptions.h>
#include <sceneprep/batch/RunBatch.h>
#include <sceneprep/report/Budget.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// The arguments of `prepare`.
struct PrepareCommand
{
    std::vector<std::filesystem::path> inputs = {};  ///< the others are appended to the first
    std::optional<std::string> scene = {};           ///< name or index of the scene to read from glTF files
    std::filesystem::path output = {};
    bool inPlace = false;                ///< allow the output to be an input, which it replaces
    bool dryRun = false;                 ///< do everything but write the output
    std::filesystem::path depfile = {};  ///< lists the files that the inputs refer to; empty: none
    bool externalTextures = false;
    bool gpuInstancing = false;
    Pipeline::PrepareOptions steps = {};
    bool strict = false;                          ///< fail if the result differs from the input or something is lost
    std::vector<std::string> allowedLosses = {};  ///< losses that `strict` accepts
    bool verify = true;                           ///< compare the written file with the input
    double maxGrowth = 0;                         ///< how many times as large the output may be; 0: no limit
    std::vector<BudgetLimit> budget = {};         ///< limits for the result
    std::filesystem::path jsonFile = {};          ///< empty: none; "-": stdout, instead of the text
    std::filesystem::path reportFile = {};        ///< the HTML report; empty: none
    bool keepGoing = false;                       ///< skip inputs that cannot be read
};

/// The arguments of `inspect`.
struct InspectOptions
{
    std::filesystem::path input = {};
    std::optional<std::string> scene = {};
    bool json = false;
    bool tree = false;
    std::vector<BudgetLimit> budget = {};
};

/// The arguments of `compare`.
struct CompareCommand
{
    std::vector<std::filesystem::path> files = {};  ///< the one that is expected, and the one that is checked
    std::filesystem::path jsonFile = {};            ///< empty: none; "-": stdout instead of the text
};

enum class Command
{
    Prepare,
    Inspect,
    Compare,
    Batch,
    Formats,
    PrintDocs
};

/// A valid command line. Only the member of the chosen command is filled.
struct Options
{
    Command command = Command::Formats;
    std::filesystem::path plugin;  ///< empty: look for it in the usual places
    bool quiet = false;
    bool isIsolated = true;  ///< whether the work runs in a process of its own
    double memoryLimit = 0;  ///< in GiB; 0: three quarters of the machine's memory
    PrepareCommand prepare;
    InspectOptions inspect;
    CompareCommand compare;
    Batch::BatchCommand batch;
    std::string docs;  ///< the text that `print-docs` prints
};

}  // namespace Sceneprep

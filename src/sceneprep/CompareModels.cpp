#include <sceneprep/CompareModels.h>

#include <sceneprep/Verification.h>
#include <sceneprep/export/ExportModel.h>
#include <sceneprep/import/InputFiles.h>
#include <sceneprep/import/LoadInputs.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/report/JsonFigures.h>
#include <sceneprep/report/PrepareReport.h>
#include <sceneprep/report/Report.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/PlaceFiles.h>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

constexpr const char* kStdout = "-";

Appearance Load(const fs::path& file, const PluginLibrary& plugin, const RunContext& context, Progress& progress)
{
    const Inputs inputs = LoadInputs({file}, {}, plugin, progress, context.state);
    Appearance appearance = TakeAppearance(inputs.model);
    appearance.counts.fileBytes = BytesOf(inputs.files);
    return appearance;
}

Json CountsJson(const ViewerCounts& counts)
{
    return {{"nodes", counts.nodes},
            {"drawCalls", counts.drawCalls},
            {"viewerMaterials", counts.materials},
            {"fileBytes", counts.fileBytes},
            {"gpuBytes", counts.gpuBytes}};
}

std::string ResultJson(const CompareCommand& options, const Appearance& before, const Appearance& after,
                       const Verdict& verdict)
{
    return JsonText({{"files", {options.files[0].string(), options.files[1].string()}},
                     {"before", CountsJson(before.counts)},
                     {"after", CountsJson(after.counts)},
                     {"verdict", VerdictAsJson(verdict)}});
}

}  // namespace

int CompareModels(const CompareCommand& options, const PluginLibrary& plugin, const RunContext& context,
                  Progress& progress)
{
    for (const fs::path& file : options.files)
        CheckReadable(file);
    const bool isJsonOnly = options.jsonFile == kStdout;
    if (!options.jsonFile.empty() && !isJsonOnly)
        CheckFolderOf(options.jsonFile);

    const Appearance before = Load(options.files[0], plugin, context, progress);
    const Appearance after = Load(options.files[1], plugin, context, progress);
    const Verdict verdict = CompareFiles(before, after);
    progress.Clear();

    if (!options.jsonFile.empty() && !isJsonOnly)
        WriteWhole(options.jsonFile, context.state,
                   [&](std::ostream& file) { file << ResultJson(options, before, after, verdict); });
    if (isJsonOnly)
        context.out << ResultJson(options, before, after, verdict);
    else
        context.out << CostTable(before.counts, after.counts)
                    << VerdictText(verdict, options.files[1].filename().string(), options.files[0].filename().string());
    return verdict.differences.empty() ? kDone : kUnusable;
}

}  // namespace Sceneprep

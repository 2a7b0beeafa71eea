#include <sceneprep/ParseCommandLine.h>

#include <fmt/format.h>
#include <pipeline/steps/PrepareScene.h>
#include <pipeline/steps/Steps.h>
#include <sceneprep/CommandLine.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/PlaceFiles.h>

#include <algorithm>
#include <string_view>

namespace Sceneprep
{

namespace
{

std::string HelpCommand(const CLI::App& app)
{
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    return chosen.empty() ? "sceneprep --help" : fmt::format("sceneprep {} --help", chosen.front()->get_name());
}

ParsedCommandLine UsageError(const CLI::App& app, const std::string& problem)
{
    return {.options = {},
            .exitStatus = kUsageError,
            .output = {},
            .error = fmt::format("sceneprep: {}; see '{}'", OneLine(problem), HelpCommand(app))};
}

/// Returns what is wrong with the name of a report, which must not replace another file of the run; empty if nothing.
std::string CheckReportName(const char* option, const std::filesystem::path& file, const PrepareCommand& prepare)
{
    if (file.empty())
        return {};
    if (NameOneFile(file, prepare.output))
        return fmt::format("{} and --output name the same file; use different names", option);
    for (const std::filesystem::path& input : prepare.inputs)
    {
        if (NameOneFile(file, input))
            return fmt::format("{} names the input '{}'; use another name", option, input.string());
    }
    return {};
}

/// Returns what is wrong with the choice of a scene; empty if nothing.
std::string CheckScene(const std::optional<std::string>& scene, const std::vector<std::filesystem::path>& inputs)
{
    const auto other =
        std::find_if_not(inputs.begin(), inputs.end(), [](const auto& input) { return IsGltfFile(input); });
    if (!scene || other == inputs.end())
        return {};
    return fmt::format("--scene requires glTF files, and '{}' is none", other->string());
}

/// Returns what is wrong with options of steps that were not chosen; empty if nothing.
std::string CheckSettings(const CLI::App& command, const Pipeline::PrepareOptions& options)
{
    for (const Pipeline::StepSetting& setting : Pipeline::StepSettings())
    {
        for (const Pipeline::Step& step : Pipeline::Steps())
        {
            if (std::string_view(setting.step) == step.option && command.count(setting.option) > 0 &&
                !step.isChosen(options))
                return fmt::format("{} requires {}{}", setting.option, step.option,
                                   step.isChosen(Pipeline::RecommendedSteps()) ? " or --all" : "");
        }
    }
    return {};
}

/// Returns what is wrong with options that omit steps; empty if nothing.
std::string CheckOmissions(const CLI::App& command)
{
    for (const Pipeline::Step& step : Pipeline::Steps())
    {
        if (!step.isRecommended || command.count(OmissionOf(step)) == 0)
            continue;
        if (command.count("--all") == 0)
            return OmissionOf(step) + " requires --all";
        if (command.count(step.option) > 0)
            return fmt::format("{} and {} contradict each other; use one of them", step.option, OmissionOf(step));
    }
    return {};
}

/// Checks the options of `prepare` against each other. Returns what is wrong; empty if nothing.
std::string CheckPrepare(const CLI::App& command, const PrepareCommand& prepare)
{
    for (const std::string& problem :
         {CheckScene(prepare.scene, prepare.inputs), CheckOmissions(command), CheckSettings(command, prepare.steps),
          CheckReportName("--json", prepare.jsonFile, prepare),
          CheckReportName("--report", prepare.reportFile, prepare)})
    {
        if (!problem.empty())
            return problem;
    }
    if (prepare.gpuInstancing && !IsGltfFile(prepare.output))
        return "--gpu-instancing requires the output to be a .gltf or .glb file";
    if (!prepare.allowedLosses.empty() && !prepare.strict)
        return "--allow-loss requires --strict";
    if (!prepare.jsonFile.empty() && !prepare.reportFile.empty() && NameOneFile(prepare.jsonFile, prepare.reportFile))
        return "--json and --report name the same file; use different names";
    return {};
}

std::string CheckOptions(const CLI::App& app, const Options& options)
{
    if (options.command == Command::Prepare)
        return CheckPrepare(*app.get_subcommand("prepare"), options.prepare);
    if (options.command == Command::Inspect)
        return CheckScene(options.inspect.scene, {options.inspect.input});
    return {};
}

}  // namespace

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments)
{
    Options options;
    const std::unique_ptr<CLI::App> app = DescribeCommandLine(options);
    try
    {
        app->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    }
    catch (const CLI::CallForHelp&)
    {
        return {.options = {}, .exitStatus = kDone, .output = app->help(), .error = {}};
    }
    catch (const CLI::CallForVersion& version)
    {
        return {.options = {}, .exitStatus = kDone, .output = std::string(version.what()) + '\n', .error = {}};
    }
    catch (const CLI::ParseError& error)
    {
        return UsageError(*app, error.what());
    }
    if (const std::string problem = CheckOptions(*app, options); !problem.empty())
        return UsageError(*app, problem);
    return {.options = options, .exitStatus = kDone, .output = {}, .error = {}};
}

}  // namespace Sceneprep

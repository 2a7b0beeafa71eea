#include <sceneprep/ParseCommandLine.h>

#include <fmt/format.h>
#include <pipeline/steps/PrepareScene.h>
#include <pipeline/steps/Steps.h>
#include <sceneprep/CommandLine.h>
#include <sceneprep/NearestName.h>
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
            .error = fmt::format("sceneprep: {} '{}'", OneLine(problem) + (problem.ends_with('?') ? " See" : "; see"),
                                 HelpCommand(app))};
}

std::vector<std::string> OptionNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
    {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    return names;
}

std::vector<std::string> CommandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command :
         app.get_subcommands([](const CLI::App* candidate) { return !candidate->get_group().empty(); }))
        names.push_back(command->get_name());
    return names;
}

std::string UnknownName(const char* kind, const std::string& given, const std::vector<std::string>& names)
{
    const std::string nearest = NearestName(given, names);
    return fmt::format("unknown {} '{}'{}", kind, given,
                       nearest.empty() ? "" : fmt::format("; did you mean '{}'?", nearest));
}

/// Returns what is wrong with the first argument that the program does not know; empty if it knows all of them.
std::string CheckUnknown(const CLI::App& app)
{
    const std::vector<std::string> unknown = app.remaining(true);
    if (unknown.empty())
        return {};
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    const bool isBeforeCommand = chosen.empty() || app.remaining_size() > 0;
    const std::string given = unknown.front().substr(0, unknown.front().find('='));
    if (given.starts_with('-'))
        return UnknownName("option", given, OptionNames(isBeforeCommand ? app : *chosen.front()));
    if (isBeforeCommand)
        return UnknownName("command", given, CommandNames(app));
    return fmt::format("unexpected argument '{}'", unknown.front());
}

/// Returns what is wrong with the name of a report, which must not replace another file of the run; empty if nothing.
std::string CheckReportName(const char* option, const std::filesystem::path& file, const PrepareCommand& prepare)
{
    if (file.empty() || file == "-")
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

/// Returns what is wrong with an output that would replace an input; empty if nothing.
std::string CheckReplacement(const PrepareCommand& prepare)
{
    for (const std::filesystem::path& input : prepare.inputs)
    {
        if (!prepare.inPlace && !prepare.dryRun && NameOneFile(prepare.output, input))
            return fmt::format("--output names the input '{}'; use another name, or --in-place to replace the input",
                               input.string());
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
    if (prepare.output.empty())
        return "--output is required";
    for (const std::string& problem :
         {CheckScene(prepare.scene, prepare.inputs), CheckOmissions(command), CheckSettings(command, prepare.steps),
          CheckReplacement(prepare), CheckReportName("--json", prepare.jsonFile, prepare),
          CheckReportName("--report", prepare.reportFile, prepare),
          CheckReportName("--depfile", prepare.depfile, prepare)})
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

/// Checks the options of `batch` against each other. Returns what is wrong; empty if nothing.
std::string CheckBatch(const CLI::App& command, const Options& options)
{
    for (const std::string& problem : {CheckOmissions(command), CheckSettings(command, options.prepare.steps)})
    {
        if (!problem.empty())
            return problem;
    }
    if (!options.prepare.allowedLosses.empty() && !options.prepare.strict)
        return "--allow-loss requires --strict";
    if (NameOneFile(options.batch.folder, options.batch.output))
        return "--output names the folder of the models; use another folder";
    return {};
}

/// Returns the options of `prepare` that were given to `batch`, as arguments.
std::vector<std::string> ForwardedArguments(const CLI::App& command)
{
    const std::vector<std::string> own = {"help", "output", "format", "jobs", "print", "collect", "quiet", "plugin"};
    std::vector<std::string> arguments;
    for (const CLI::Option* option :
         command.get_options([](const CLI::Option* candidate) { return candidate->nonpositional(); }))
    {
        const std::string& name = option->get_lnames().front();
        if (option->count() == 0 || std::find(own.begin(), own.end(), name) != own.end())
            continue;
        if (option->get_items_expected_max() == 0)
            arguments.push_back("--" + name);
        else
            for (const std::string& value : option->results())
                arguments.push_back(fmt::format("--{}={}", name, value));
    }
    return arguments;
}

/// Fills in what follows from other options.
void Complete(const CLI::App& app, Options& options)
{
    PrepareCommand& prepare = options.prepare;
    if (options.command == Command::Prepare && prepare.dryRun && prepare.output.empty())
        prepare.output = std::filesystem::temp_directory_path() / (prepare.inputs.front().stem().string() + ".glb");
    if (options.command != Command::Batch)
        return;
    options.isIsolated = false;  // each model is
    options.batch.quiet = options.quiet;
    options.batch.arguments = ForwardedArguments(*app.get_subcommand("batch"));
}

std::string CheckOptions(const CLI::App& app, const Options& options)
{
    if (options.command == Command::Batch)
        return CheckBatch(*app.get_subcommand("batch"), options);
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
        const std::string unknown = CheckUnknown(*app);
        return UsageError(*app, unknown.empty() ? error.what() : unknown);
    }
    Complete(*app, options);
    if (const std::string problem = CheckOptions(*app, options); !problem.empty())
        return UsageError(*app, problem);
    return {.options = options, .exitStatus = kDone, .output = {}, .error = {}};
}

}  // namespace Sceneprep

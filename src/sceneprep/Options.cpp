#include <sceneprep/Options.h>

#include <fmt/format.h>
#include <pipeline/steps/Steps.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/PlaceFiles.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>

namespace Sceneprep
{

using Pipeline::ParseUVMapping;
using Pipeline::UVMapping;
using Pipeline::UVProjectionNames;

namespace
{

std::string CheckOutput(const std::string& output)
{
    if (FindWriteFormat(output))
        return {};
    return fmt::format("cannot tell a format to write from the name {}; 'sceneprep formats' lists the endings", output);
}

std::string CheckMemory(const std::string& text)
{
    double gigabytes = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, gigabytes);
    if (error == std::errc() && read == end && gigabytes > 0 && gigabytes < 1e6)
        return {};
    return fmt::format("'{}' is not a positive number of GiB", text);
}

std::string CheckUVs(const std::string& text)
{
    if (ParseUVMapping(text))
        return {};
    return fmt::format("{} is no mapping; write {}, then if you like :SET from 0 to 7, then if you like :world", text,
                       UVProjectionNames());
}

constexpr const char* kStepGroup = "Steps";
constexpr const char* kCareGroup = "Care and report";

void AddCommonOptions(CLI::App& command, Options& options)
{
    command.add_flag("--quiet", options.quiet, "Tell neither progress nor notes");
    command
        .add_option("--memory-limit", options.memoryLimit,
                    "Memory that the work may take, in GiB (default: three quarters of the machine's)")
        ->type_name("GIB")
        ->check(CLI::Validator(CheckMemory, ""));
    command.add_flag_callback(
        "--no-isolation", [&options] { options.isIsolated = false; },
        "Do all work in one process, without a memory limit, for a debugger");
    command.add_option("--plugin", options.plugin, "The plug-in to load (default: the one that came with sceneprep)")
        ->type_name("PATH");
}

/// What a command line holds beside the options, before it is known to make sense.
struct PrepareWords
{
    std::vector<std::string> uvs;
    bool all = false;
};

void AddMeshSteps(CLI::App& command, Pipeline::PrepareOptions& steps, PrepareWords& words)
{
    const auto flag = [&command](const char* name, bool& target, const char* help) {
        command.add_flag(name, target, help)->group(kStepGroup);
    };
    command
        .add_flag("--all", words.all,
                  "The recommended road: --repair-mirrors --weld --unique-names --flatten --surface-names "
                  "--collision-offsets")
        ->group(kStepGroup);
    flag("--resolve-instances", steps.resolveInstances, "Give every surface a mesh of its own");
    flag("--repair-mirrors", steps.repairMirrors, "Take mirroring out of nodes and into their meshes");
    flag("--check-orientation", steps.checkOrientation, "Turn meshes whose first triangle faces away from its normal");
    flag("--fix-culling", steps.fixCulling, "Turn triangles that all their normals point against");
    flag("--weld", steps.weld, "Weld equal vertices, drop unused ones");
    flag("--normals", steps.normals, "Compute smooth normals with hard edges");
    flag("--unify-normals", steps.unifyNormals, "Turn normals that point against their triangle");
    command
        .add_option("--uvs", words.uvs,
                    "Generate UV set SET, 0 to 7 (default: 0); MAPPING is " + UVProjectionNames() +
                        "; :world keeps the mesh's units")
        ->type_name("MAPPING[:SET[:world]]")
        ->allow_extra_args(false)
        ->check(CLI::Validator(CheckUVs, ""))
        ->group(kStepGroup);
}

void AddSceneSteps(CLI::App& command, Pipeline::PrepareOptions& steps)
{
    const auto flag = [&command](const char* name, bool& target, const char* help) {
        return command.add_flag(name, target, help)->group(kStepGroup);
    };
    const auto number = [&command](const char* name, int& target, const char* help) {
        command.add_option(name, target, help)->type_name("N")->capture_default_str()->group(kStepGroup);
    };
    flag("--unique-names", steps.uniqueNames, "Make names of nodes, meshes, materials and surfaces distinct");
    flag("--flatten", steps.flatten, "Collapse the hierarchy into its root and merge surfaces of one material");
    number("--min-surfaces", steps.minSurfaces,
           "Flattening merges where a material has at least N surfaces; 0 merges whatever the material");
    number("--max-vertices", steps.maxVertices, "The largest mesh that merging may make; -1 sets no limit");
    flag("--ignore-animation", steps.ignoreAnimation, "Flattening collapses animated nodes too");
    flag("--surface-names", steps.surfaceNames, "Name surfaces after their mesh and material");
    flag("--collision-offsets", steps.collisionOffsets, "Tell surfaces with overlapping boxes apart by a number");
}

CLI::App* AddPrepare(CLI::App& app, Options& options, PrepareWords& words)
{
    PrepareCommand& prepare = options.prepare;
    CLI::App* command =
        app.add_subcommand("prepare", "Import models, run the chosen steps over them, export the result");
    command->add_option("INPUT", prepare.inputs, "The model to read; further ones are appended to it")
        ->required()
        ->type_name("");
    command->add_option("-o,--output", prepare.output, "The model to write; its ending says the format")
        ->required()
        ->type_name("OUTPUT")
        ->check(CLI::Validator(CheckOutput, ""));
    command->add_flag("--keep-going", prepare.keepGoing, "Leave out inputs that cannot be read; the status is then 1");
    AddCommonOptions(*command, options);
    AddMeshSteps(*command, prepare.steps, words);
    AddSceneSteps(*command, prepare.steps);
    command->add_flag("--strict", prepare.strict, "Write nothing when the result does not show the same world")
        ->group(kCareGroup);
    command->add_option("--json", prepare.jsonFile, "Write what was done, with before and after, to FILE")
        ->type_name("FILE")
        ->group(kCareGroup);
    command
        ->add_option("--report", prepare.reportFile,
                     "Write a page for browsers to FILE: what was done, before and after as numbers and pictures")
        ->type_name("FILE")
        ->group(kCareGroup);
    return command;
}

CLI::App* AddInspect(CLI::App& app, Options& options)
{
    InspectOptions& inspect = options.inspect;
    CLI::App* command = app.add_subcommand("inspect", "Print what a model holds");
    command->add_option("INPUT", inspect.input, "The model to read")->required()->type_name("");
    command->add_flag("--json", inspect.json, "Print JSON instead of a table");
    command->add_flag("--tree", inspect.tree, "Print the node hierarchy too");
    AddCommonOptions(*command, options);
    return command;
}

/// The command whose help is the one to look into.
std::string HelpFor(const CLI::App& app)
{
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    return chosen.empty() ? "sceneprep --help" : fmt::format("sceneprep {} --help", chosen.front()->get_name());
}

ParsedCommandLine BadUsage(const CLI::App& app, const std::string& problem)
{
    return {.options = {},
            .exitStatus = kBadUsage,
            .output = {},
            .error = fmt::format("sceneprep: {}; see '{}'", OneLine(problem), HelpFor(app))};
}

/// @return what is wrong with the name of a report, which must overwrite nothing else; empty when nothing is.
std::string CheckReportName(const char* option, const std::filesystem::path& file, const PrepareCommand& prepare)
{
    if (file.empty())
        return {};
    if (NameOneFile(file, prepare.output))
        return fmt::format("{} and --output name the same file; give each a name of its own", option);
    for (const std::filesystem::path& input : prepare.inputs)
    {
        if (NameOneFile(file, input))
            return fmt::format("{} names the input {}; give the report a name of its own", option, input.string());
    }
    return {};
}

/// Takes over what needs more than one option to be understood.
/// @return what makes no sense; empty when all does.
std::string Complete(const CLI::App& command, const PrepareWords& words, PrepareCommand& prepare)
{
    for (const std::string& text : words.uvs)
    {
        const UVMapping mapping = *ParseUVMapping(text);
        for (const UVMapping& other : prepare.steps.uvs)
        {
            if (other.set == mapping.set)
                return fmt::format("--uvs fills set {} twice; give each mapping a set of its own", mapping.set);
        }
        prepare.steps.uvs.push_back(mapping);
    }
    if (words.all)
    {
        for (const Pipeline::Step& step : Pipeline::Steps())
        {
            if (step.isRecommended)
                prepare.steps.*step.flag = true;
        }
    }
    for (const char* detail : {"--min-surfaces", "--max-vertices", "--ignore-animation"})
    {
        if (command.count(detail) > 0 && !prepare.steps.flatten)
            return fmt::format("{} requires --flatten or --all", detail);
    }
    if (std::string problem = CheckReportName("--json", prepare.jsonFile, prepare); !problem.empty())
        return problem;
    if (std::string problem = CheckReportName("--report", prepare.reportFile, prepare); !problem.empty())
        return problem;
    if (!prepare.jsonFile.empty() && !prepare.reportFile.empty() && NameOneFile(prepare.jsonFile, prepare.reportFile))
        return "--json and --report name the same file; give each a name of its own";
    return {};
}

}  // namespace

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments)
{
    Options options;
    CLI::App app("Makes 3D scenes fit for real time.", "sceneprep");
    app.set_version_flag("--version", "sceneprep " SCENEPREP_VERSION);
    app.require_subcommand(1);
    PrepareWords words;
    const CLI::App* prepare = AddPrepare(app, options, words);
    const CLI::App* inspect = AddInspect(app, options);
    app.add_subcommand("formats", "List the formats that can be read and written");

    try
    {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    }
    catch (const CLI::CallForHelp&)
    {
        return {.options = {}, .exitStatus = kDone, .output = app.help(), .error = {}};
    }
    catch (const CLI::CallForVersion& version)
    {
        return {.options = {}, .exitStatus = kDone, .output = std::string(version.what()) + '\n', .error = {}};
    }
    catch (const CLI::ParseError& error)
    {
        return BadUsage(app, error.what());
    }

    if (prepare->parsed())
    {
        options.command = Command::Prepare;
        if (const std::string problem = Complete(*prepare, words, options.prepare); !problem.empty())
            return BadUsage(app, problem);
    }
    else if (inspect->parsed())
        options.command = Command::Inspect;
    return {.options = options, .exitStatus = kDone, .output = {}, .error = {}};
}

}  // namespace Sceneprep

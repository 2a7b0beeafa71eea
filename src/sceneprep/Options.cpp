#include <sceneprep/Options.h>

#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <sceneprep/Formats.h>
#include <CLI/CLI.hpp>

#include <algorithm>

namespace Sceneprep
{

namespace
{

void AddPluginOption(CLI::App& command, Options& options)
{
    command.add_option("--plugin", options.plugin, "The plug-in to load (default: the one that came with sceneprep)")
        ->type_name("PATH");
}

std::string CheckOutput(const std::string& output)
{
    if (FindWriteFormat(output))
        return {};
    return fmt::format("cannot tell a format to write from the name {}; 'sceneprep formats' lists the endings", output);
}

CLI::App* AddPrepare(CLI::App& app, Options& options)
{
    PrepareOptions& prepare = options.prepare;
    CLI::App* command =
        app.add_subcommand("prepare", "Import a model, run the chosen steps over it, export the result");
    command->add_option("INPUT", prepare.input, "The model to read")->required()->type_name("");
    command->add_option("-o,--output", prepare.output, "The model to write; its ending says the format")
        ->required()
        ->type_name("OUTPUT")
        ->check(CLI::Validator(CheckOutput, ""));
    CLI::Option* flatten = command->add_flag("--flatten", prepare.flatten,
                                             "Collapse the hierarchy into its root and merge surfaces of one material");
    command
        ->add_option("--min-surfaces", prepare.minSurfaces,
                     "Merge where a material has at least N surfaces; 0 merges whatever the material")
        ->type_name("N")
        ->capture_default_str()
        ->needs(flatten);
    command
        ->add_option("--max-vertices", prepare.maxVertices, "The largest mesh that merging may make; -1 sets no limit")
        ->type_name("N")
        ->capture_default_str()
        ->needs(flatten);
    command->add_flag("--ignore-animation", prepare.ignoreAnimation, "Collapse animated nodes too")->needs(flatten);
    AddPluginOption(*command, options);
    return command;
}

CLI::App* AddInspect(CLI::App& app, Options& options)
{
    InspectOptions& inspect = options.inspect;
    CLI::App* command = app.add_subcommand("inspect", "Print what a model holds");
    command->add_option("INPUT", inspect.input, "The model to read")->required()->type_name("");
    command->add_flag("--json", inspect.json, "Print JSON instead of a table");
    command->add_flag("--tree", inspect.tree, "Print the node hierarchy too");
    AddPluginOption(*command, options);
    return command;
}

/// The command whose help is the one to look into.
std::string HelpFor(const CLI::App& app)
{
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    return chosen.empty() ? "sceneprep --help" : fmt::format("sceneprep {} --help", chosen.front()->get_name());
}

ParsedCommandLine BadUsage(const CLI::App& app, const CLI::ParseError& error)
{
    return {.options = {},
            .exitStatus = kBadUsage,
            .output = {},
            .error = fmt::format("sceneprep: {}; see '{}'", OneLine(error.what()), HelpFor(app))};
}

}  // namespace

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& words)
{
    Options options;
    CLI::App app("Makes 3D scenes fit for real time.", "sceneprep");
    app.set_version_flag("--version", "sceneprep " SCENEPREP_VERSION);
    app.require_subcommand(1);
    const CLI::App* prepare = AddPrepare(app, options);
    const CLI::App* inspect = AddInspect(app, options);
    app.add_subcommand("formats", "List the formats that can be read and written");

    try
    {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
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
        return BadUsage(app, error);
    }

    if (prepare->parsed())
        options.command = Command::Prepare;
    else if (inspect->parsed())
        options.command = Command::Inspect;
    return {.options = options, .exitStatus = kDone, .output = {}, .error = {}};
}

}  // namespace Sceneprep

#include <sceneprep/Manual.h>

#include <fmt/format.h>
#include <pipeline/steps/Steps.h>
#include <pipeline/steps/UVMapping.h>
#include <sceneprep/CommandLine.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/run/Error.h>

#include <map>
#include <string_view>

namespace Sceneprep
{

namespace
{

using OptionList = std::vector<const CLI::Option*>;

/// A command of the program as the texts show it.
struct CommandDescription
{
    std::string name;
    std::string help;
    OptionList options;  ///< without positional arguments
};

/// Calls make(commands), the first of which is the program itself, under an empty name.
std::string WithCommands(std::string (*make)(const std::vector<CommandDescription>& commands))
{
    Options options;
    const std::unique_ptr<CLI::App> app = DescribeCommandLine(options);
    std::vector<const CLI::App*> apps = {app.get()};
    for (const CLI::App* command :
         app->get_subcommands([](const CLI::App* candidate) { return !candidate->get_group().empty(); }))
        apps.push_back(command);
    std::vector<CommandDescription> commands;
    for (const CLI::App* command : apps)
    {
        const OptionList named =
            command->get_options([](const CLI::Option* option) { return option->nonpositional(); });
        commands.push_back({command == app.get() ? "" : command->get_name(), command->get_description(), named});
    }
    return make(commands);
}

bool IsFlag(const CLI::Option& option) { return option.get_items_expected_max() == 0; }

bool TakesFile(const CLI::Option& option)
{
    const std::string type = option.get_type_name();
    return type == "FILE" || type == "PATH" || type == "OUTPUT" || type == "OUT";
}

/// Returns the values that completions offer, with spaces between; empty if there are none.
std::string ValuesOf(const CLI::Option& option)
{
    if (option.get_type_name() == "FORMAT")
        return "glb gltf";
    if (!option.get_type_name().starts_with("MAPPING"))
        return {};
    std::string names = Pipeline::UVProjectionNames();
    for (const std::string_view separator : {",", " or"})
    {
        for (std::size_t at = names.find(separator); at != std::string::npos; at = names.find(separator))
            names.erase(at, separator.size());
    }
    return names;
}

std::string Replaced(std::string text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

// The manual page.

std::string Roff(const std::string& text) { return Replaced(Replaced(text, "\\", "\\\\"), "-", "\\-"); }

std::string ManOption(const CLI::Option& option)
{
    std::string names;
    for (const std::string& name : option.get_snames())
        names += "\\-" + Roff(name) + ", ";
    for (const std::string& name : option.get_lnames())
        names += "\\-\\-" + Roff(name);
    const std::string value = IsFlag(option) ? "" : " \\fI" + Roff(option.get_type_name()) + "\\fR";
    return fmt::format(".TP\n\\fB{}\\fR{}\n{}.\n", names, value, Roff(option.get_description()));
}

/// Returns the options of a command, those of each group under a title of their own.
std::string ManCommand(const CommandDescription& command)
{
    std::string text = command.name.empty() ? "" : fmt::format(".SS {}\n{}.\n", command.name, Roff(command.help));
    std::string group = "Options";
    for (const CLI::Option* option : command.options)
    {
        if (option->get_group().empty())  // not in the help
            continue;
        if (option->get_group() != group)
        {
            group = option->get_group();
            text += fmt::format(".P\n{}:\n", group == kStepGroup ? "Steps, which run in this order" : group);
        }
        text += ManOption(*option);
    }
    return text;
}

constexpr const char* kManBegin = R"(.SH NAME
sceneprep \- prepare 3D scenes for real time
.SH SYNOPSIS
.B sceneprep prepare
.RI [ OPTIONS ] " INPUT" ...
.B \-o
.I OUTPUT
.br
.B sceneprep inspect
.RI [ OPTIONS ] " INPUT"
.br
.B sceneprep compare
.RI [ OPTIONS ] " FILE FILE"
.br
.B sceneprep batch
.RI [ OPTIONS ] " DIR"
.B \-o
.I OUT
.br
.B sceneprep formats
.SH DESCRIPTION
.B prepare
reads model files, runs the chosen steps on them and writes the result.
.B inspect
prints the contents of a model.
.B compare
prints whether two models show the same.
.B batch
prepares all models of a folder with
.BR ninja (1).
.B formats
lists the formats that can be read and written.
Results are written to standard output; progress, notes and errors to standard error.
.SH OPTIONS
)";

constexpr const char* kManEnd = R"(.SH EXIT STATUS
.TP
.B 0
success
.TP
.B 1
an input could not be read, the output could not be written, or
.B \-\-strict
found a difference or a loss,
.B \-\-max\-growth
was exceeded, or
.B compare
found a difference
.TP
.B 2
usage error
.TP
.B 3
the model exceeds a limit of
.BR \-\-budget ;
the output is still written
.TP
.BR 129 ", " 130 ", " 143
stopped by SIGHUP, SIGINT or SIGTERM
.SH EXAMPLES
.nf
sceneprep prepare house.gltf \-\-all \-o house\-ready.glb
sceneprep prepare house.gltf trees.fbx \-\-weld \-\-normals \-\-uvs cubic:1 \-o garden.glb
sceneprep inspect house\-ready.glb \-\-tree
sceneprep batch models \-o prepared \-\-all
.fi
)";

std::string ManPage(const std::vector<CommandDescription>& commands)
{
    std::string text = ".TH SCENEPREP 1 \"\" \"SceneContainer " SCENEPREP_VERSION "\" \"User Commands\"\n";
    text += kManBegin;
    for (const CommandDescription& command : commands)
        text += ManCommand(command);
    return text + kManEnd;
}

// Completions.

std::string LongNames(const CommandDescription& command)
{
    std::string names;
    for (const CLI::Option* option : command.options)
    {
        for (const std::string& name : option->get_lnames())
            names += fmt::format("{}--{}", names.empty() ? "" : " ", name);
    }
    return names;
}

constexpr const char* kBashFunction = R"(# Completion of sceneprep's commands, options and files for bash.

_sceneprep()
{{
    local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} words=
    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "{commands}" -- "$word")
        return
    fi
    case $before in
{values}    esac
    if [[ $word != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames
        return
    fi
    case ${{COMP_WORDS[1]}} in
{options}    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}}

complete -F _sceneprep sceneprep
)";

/// Returns the options of all commands, each name once.
std::map<std::string, const CLI::Option*> AllOptions(const std::vector<CommandDescription>& commands)
{
    std::map<std::string, const CLI::Option*> options;
    for (const CommandDescription& command : commands)
    {
        for (const CLI::Option* option : command.options)
            options.emplace("--" + option->get_lnames().front(), option);
    }
    return options;
}

std::string BashCompletion(const std::vector<CommandDescription>& commands)
{
    std::string names = LongNames(commands.front());
    std::string options;
    for (const CommandDescription& command : commands)
    {
        if (command.name.empty())
            continue;
        names += ' ' + command.name;
        options += fmt::format("        {}) words=\"{}\" ;;\n", command.name, LongNames(command));
    }
    std::string values;
    std::string plain;
    for (const auto& [name, option] : AllOptions(commands))
    {
        if (const std::string choices = ValuesOf(*option); !choices.empty())
            values += fmt::format(
                "        {})\n            mapfile -t COMPREPLY < <(compgen -W \"{}\" -- \"$word\")\n"
                "            return\n            ;;\n",
                name, choices);
        else if (!IsFlag(*option) && !TakesFile(*option))
            plain += fmt::format("{}{}", plain.empty() ? "" : " | ", name);
    }
    values += fmt::format("        {}) return ;;\n", plain);
    return fmt::format(fmt::runtime(kBashFunction), fmt::arg("commands", names), fmt::arg("values", values),
                       fmt::arg("options", options));
}

std::string ZshOption(const CLI::Option& option)
{
    std::string help = Replaced(option.get_description(), "'", "'\\''");
    help = Replaced(Replaced(help, "[", "\\["), "]", "\\]");
    const std::string choices = ValuesOf(option);
    std::string value;
    if (TakesFile(option))
        value = ":file:_files";
    else if (!choices.empty())
        value = ":value:(" + choices + ")";
    else if (!IsFlag(option))
        value = ":value:";
    const std::string name = option.get_lnames().front();
    const bool isRepeatable = option.get_expected_max() > 1;
    if (option.get_snames().empty())
        return fmt::format("    '{}--{}[{}]{}'\n", isRepeatable ? "*" : "", name, help, value);
    const std::string shortName = option.get_snames().front();
    return fmt::format("    '(-{0} --{1})'{{-{0},--{1}}}'[{2}]{3}'\n", shortName, name, help, value);
}

std::string ZshCompletion(const std::vector<CommandDescription>& commands)
{
    std::string text = "#compdef sceneprep\n# Completion of sceneprep's commands, options and files for zsh.\n\n";
    std::string values;
    std::string cases;
    for (const CommandDescription& command : commands)
    {
        if (command.name.empty())
            continue;
        text += fmt::format("local -a {}=(\n", command.name);
        for (const CLI::Option* option : command.options)
            text += ZshOption(*option);
        text += "    '*:input:_files'\n)\n";
        values += fmt::format(" '{}[{}]'", command.name, command.help);
        cases += fmt::format("    {0}) shift words; (( CURRENT-- )); _arguments ${0} ;;\n", command.name);
    }
    for (const CLI::Option* option : commands.front().options)
        values += fmt::format(" '--{}[{}]'", option->get_lnames().front(), option->get_description());
    return text + fmt::format(
                      "\nif (( CURRENT == 2 )); then\n    _values 'command'{}\n    return\nfi\ncase $words[2] "
                      "in\n{}esac\n",
                      values, cases);
}

std::string FishOption(const CLI::Option& option, const std::string& condition)
{
    std::string text = fmt::format("complete -c sceneprep -n \"{}\"", condition);
    for (const std::string& name : option.get_snames())
        text += " -s " + name;
    text += " -l " + option.get_lnames().front();
    if (TakesFile(option))
        text += " -r";
    else if (!IsFlag(option))
        text += " -x";
    if (const std::string choices = ValuesOf(option); !choices.empty())
        text += fmt::format(" -a \"{}\"", choices);
    return text + fmt::format(" -d \"{}\"\n", Replaced(option.get_description(), "\"", "\\\""));
}

std::string FishCompletion(const std::vector<CommandDescription>& commands)
{
    std::string names;
    for (const CommandDescription& command : commands)
        names += command.name.empty() ? "" : (names.empty() ? "" : " ") + command.name;
    const std::string atStart = fmt::format("not __fish_seen_subcommand_from {}", names);
    std::string text = "# Completion of sceneprep's commands, options and files for fish.\n\n";
    for (const CommandDescription& command : commands)
    {
        if (!command.name.empty())
            text += fmt::format("complete -c sceneprep -n \"{}\" -f -a {} -d \"{}\"\n", atStart, command.name,
                                command.help);
        const std::string condition = command.name.empty() ? atStart : "__fish_seen_subcommand_from " + command.name;
        for (const CLI::Option* option : command.options)
            text += FishOption(*option, condition);
    }
    return text;
}

// Tables of the documentation.

std::string StepsTable()
{
    std::string table = "| Step | Option | What it does |\n|---|---|---|\n";
    for (const Pipeline::Step& step : Pipeline::Steps())
    {
        const bool hasOption = *step.option != '\0';
        table += fmt::format("| *{}* | {} | {} |\n", step.title, hasOption ? fmt::format("`{}`", step.option) : "",
                             hasOption ? step.help : "implied");
    }
    return table;
}

struct Text
{
    const char* name;
    std::string (*make)();
};

constexpr Text kTexts[] = {
    {"man", [] { return WithCommands(ManPage); }},
    {"bash", [] { return WithCommands(BashCompletion); }},
    {"zsh", [] { return WithCommands(ZshCompletion); }},
    {"fish", [] { return WithCommands(FishCompletion); }},
    {"steps", StepsTable},
    {"formats", FormatsTable},
};

}  // namespace

std::string ManualText(const std::string& name)
{
    std::string names;
    for (const Text& text : kTexts)
    {
        if (text.name == name)
            return text.make();
        names += (names.empty() ? "" : ", ") + std::string(text.name);
    }
    throw ToolError(fmt::format("there is no text '{}'; there are {}", name, names));
}

}  // namespace Sceneprep

#include <sceneprep/batch/NinjaFile.h>

#include <fmt/format.h>
#include <sceneprep/run/Error.h>

namespace Sceneprep::Batch
{

namespace
{

namespace fs = std::filesystem;

void CheckLineBreaks(std::string_view text)
{
    if (text.find_first_of("\r\n") != std::string_view::npos)
        throw ToolError(fmt::format("cannot write '{}' into a Ninja file: it has a line break; use another name",
                                    OneLine(std::string(text))));
}

/// Returns the path as Ninja reads it in a list of paths. Ninja has no escape for "|", so a variable contains it.
std::string NinjaPath(const fs::path& path)
{
    CheckLineBreaks(path.string());
    std::string escaped;
    for (const char c : path.string())
    {
        if (c == '|')
            escaped += "${pipe}";
        else if (c == '$' || c == ' ' || c == ':')
            (escaped += '$') += c;
        else
            escaped += c;
    }
    return escaped;
}

/// Returns the text as Ninja reads it as the value of a variable.
std::string NinjaValue(std::string_view text)
{
    CheckLineBreaks(text);
    std::string escaped;
    for (const char c : text)
        escaped += c == '$' ? "$$" : std::string(1, c);
    return escaped;
}

std::string EdgeText(const Edge& edge, const NinjaSettings& settings)
{
    std::string text = fmt::format("\nbuild {} | {}: prepare {} | {}", NinjaPath(edge.output), NinjaPath(edge.report),
                                   NinjaPath(edge.input), NinjaPath(settings.program));
    for (const fs::path& dependency : settings.dependencies)
        text += ' ' + NinjaPath(dependency);
    text += fmt::format("\n  run = {}\n", NinjaValue(CommandOf(edge, settings)));
    text += fmt::format("  dependencies = {}\n", NinjaValue(edge.depfile.string()));
    return text + fmt::format("  name = {}\n", NinjaValue(edge.name));
}

}  // namespace

std::string ShellWord(std::string_view text)
{
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789%+,-./:=@_";
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string_view::npos)
        return std::string(text);
    std::string word = "'";
    for (const char c : text)
    {
        if (c == '\'')
            word += "'\\''";
        else
            word += c;
    }
    return word + '\'';
}

std::string CommandOf(const Edge& edge, const NinjaSettings& settings)
{
    const auto word = [](const fs::path& path) { return ShellWord(path.string()); };
    std::string options;
    for (const std::string& argument : settings.arguments)
        options += ' ' + ShellWord(argument);
    // The status of an interrupted run must not be that of an earlier one.
    return fmt::format(
        "rm -f {0}; {1} prepare {2} -o {3} --quiet --json {4} --depfile {5}{6} >/dev/null 2>{7}; s=$?; echo $s >{0}; "
        "exit $s",
        word(edge.status), word(settings.program), word(edge.input), word(edge.output), word(edge.report),
        word(edge.depfile), options, word(edge.log));
}

std::string NinjaText(const std::vector<Edge>& edges, const NinjaSettings& settings)
{
    std::string text = fmt::format(
        "# Written by sceneprep batch: one edge for each model.\n"
        "ninja_required_version = 1.5\n"
        "builddir = {}\n"
        "pipe = |\n"
        "\n"
        "rule prepare\n"
        "  command = $run\n"
        "  depfile = $dependencies\n"
        "  deps = gcc\n"
        "  description = $name\n",
        NinjaValue(settings.folder.string()));
    for (const Edge& edge : edges)
        text += EdgeText(edge, settings);
    return text;
}

}  // namespace Sceneprep::Batch

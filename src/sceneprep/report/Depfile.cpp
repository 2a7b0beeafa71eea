#include <sceneprep/report/Depfile.h>

namespace Sceneprep
{

namespace
{

std::string EscapedForMake(const std::filesystem::path& path)
{
    std::string escaped;
    for (const char c : path.string())
    {
        if (c == '$')
            escaped += '$';
        else if (c == ' ' || c == '#' || c == ':')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

}  // namespace

std::string DepfileText(const std::filesystem::path& output, const std::vector<std::filesystem::path>& files)
{
    std::string text = EscapedForMake(output) + ':';
    for (const std::filesystem::path& file : files)
        text += " \\\n  " + EscapedForMake(file);
    return text + '\n';
}

}  // namespace Sceneprep

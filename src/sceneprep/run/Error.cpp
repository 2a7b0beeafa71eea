#include <sceneprep/run/Error.h>

#include <algorithm>
#include <sstream>

namespace Sceneprep
{

std::string OneLine(const std::string& text)
{
    std::istringstream words(text);
    std::string line;
    for (std::string word; words >> word;)
        line += line.empty() ? word : ' ' + word;
    return line;
}

std::string ErrorLine(const std::string& problem)
{
    std::string line = "sceneprep: " + problem;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return line + '\n';
}

}  // namespace Sceneprep

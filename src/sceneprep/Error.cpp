#include <sceneprep/Error.h>

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

}  // namespace Sceneprep

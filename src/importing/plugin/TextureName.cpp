#include <importing/plugin/TextureName.h>

#include <algorithm>
#include <cctype>

namespace Importing
{
namespace
{

/// Bytes above 127 stay, whatever the locale: names are the same everywhere.
char LowerCase(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte > 127 ? c : static_cast<char>(std::tolower(byte));
}

}  // namespace

std::string NormalizeTextureName(const std::string& text)
{
    constexpr const char* kWhiteSpace = " \t\v\r\n";
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::string::npos)
        return {};
    std::string name = text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
    std::transform(name.begin(), name.end(), name.begin(), LowerCase);
    return name;
}

}  // namespace Importing

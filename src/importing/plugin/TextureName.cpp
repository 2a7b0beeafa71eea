#include <importing/plugin/TextureName.h>

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace Importing
{
namespace
{

/// Returns what tolower makes of a byte that is widened as a signed char. Of the negative values that this gives,
/// tolower is defined for EOF alone, which stays; for the others the byte's own value stands in, as C libraries that
/// accept negative values do.
char LowerCase(char c)
{
    if (static_cast<signed char>(c) == EOF)
        return c;
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
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

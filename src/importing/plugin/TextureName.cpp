#include <importing/plugin/TextureName.h>

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace Importing
{
namespace
{

/// Returns tolower of a byte that is widened as a signed char. Of negative values the C standard defines tolower only
/// for EOF, which it returns unchanged. The others are passed as an unsigned char, which gives the result of C
/// libraries that accept negative values.
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

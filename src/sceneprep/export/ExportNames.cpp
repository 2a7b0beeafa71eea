#include <sceneprep/export/ExportNames.h>

#include <sceneprep/run/Error.h>

#include <algorithm>

namespace Sceneprep
{

namespace
{

bool IsControl(char character)
{
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

bool ContinuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }  // in UTF-8

std::string Cut(const std::string& name)
{
    if (name.size() <= kLongestName)
        return name;
    std::size_t size = kLongestName;
    while (size > 0 && ContinuesCharacter(name[size]))
        --size;
    return name.substr(0, size);
}

}  // namespace

std::string ExportName(const std::string& name, const WriteFormat& format)
{
    std::string text = Cut(name);
    const bool isOneLine = std::none_of(text.begin(), text.end(), IsControl);
    const std::string unwritable = format.UnwritableCharacters();
    std::replace_if(text.begin(), text.end(), IsControl, ' ');
    std::replace_if(
        text.begin(), text.end(), [&](char character) { return unwritable.find(character) != std::string::npos; }, '_');
    // Readers of OBJ drop blanks at both ends of a name.
    return isOneLine && !format.IsObj() ? text : OneLine(text);
}

}  // namespace Sceneprep

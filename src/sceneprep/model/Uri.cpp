#include <sceneprep/model/Uri.h>

#include <fmt/format.h>

#include <cctype>
#include <charconv>
#include <string_view>

namespace Sceneprep
{

namespace
{

bool LeadsIntoTheNet(const std::string& reference) { return reference.find("://") != std::string::npos; }

/// May stand in a reference as it is: RFC 3986, section 3.3.
bool IsPlain(unsigned char byte)
{
    constexpr std::string_view kAllowed = "-._~/!$&'()*+,;=@";
    return byte < 0x80 && (std::isalnum(byte) != 0 || kAllowed.find(static_cast<char>(byte)) != std::string_view::npos);
}

/// @return the byte that "%20" or its like at this place stands for; 0, which no path holds, where there is none.
char EncodedByte(const std::string& uri, std::size_t place)
{
    if (uri[place] != '%' || place + 2 >= uri.size())
        return 0;
    unsigned char byte = 0;
    const char* end = uri.data() + place + 3;
    const auto [read, error] = std::from_chars(end - 2, end, byte, 16);
    return error == std::errc() && read == end ? static_cast<char>(byte) : '\0';
}

}  // namespace

std::string EncodeUri(const std::string& path)
{
    if (LeadsIntoTheNet(path))
        return path;  // encoded already
    std::string uri;
    for (const char letter : path)
    {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '\\')
            uri += '/';
        else if (IsPlain(byte))
            uri += letter;
        else
            uri += fmt::format("%{:02X}", byte);
    }
    return uri;
}

std::string DecodeUri(const std::string& uri)
{
    if (LeadsIntoTheNet(uri))
        return uri;
    std::string path;
    for (std::size_t i = 0; i < uri.size(); ++i)
    {
        const char byte = EncodedByte(uri, i);
        path += byte == 0 ? uri[i] : byte;
        i += byte == 0 ? 0 : 2;
    }
    return path;
}

}  // namespace Sceneprep

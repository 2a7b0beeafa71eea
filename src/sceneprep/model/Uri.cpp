#include <sceneprep/model/Uri.h>

#include <fmt/format.h>

#include <cctype>
#include <charconv>
#include <string_view>

namespace Sceneprep
{

namespace
{

bool IsUrl(const std::string& reference) { return reference.find("://") != std::string::npos; }

/// Returns whether a URI path may contain the byte unencoded: RFC 3986, section 3.3.
bool IsPlain(unsigned char byte)
{
    constexpr std::string_view kAllowed = "-._~/!$&'()*+,;=@";
    return byte < 0x80 && (std::isalnum(byte) != 0 || kAllowed.find(static_cast<char>(byte)) != std::string_view::npos);
}

/// Returns the byte that a percent-encoded triplet such as "%20" at this position means; 0 if there is none. No path
/// contains a 0.
char EncodedByte(const std::string& uri, std::size_t position)
{
    if (uri[position] != '%' || position + 2 >= uri.size())
        return 0;
    unsigned char byte = 0;
    const char* end = uri.data() + position + 3;
    const auto [read, error] = std::from_chars(end - 2, end, byte, 16);
    return error == std::errc() && read == end ? static_cast<char>(byte) : '\0';
}

}  // namespace

std::string EncodeUri(const std::string& path)
{
    if (IsUrl(path))
        return path;  // encoded already
    std::string uri;
    for (const char character : path)
    {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\\')
            uri += '/';
        else if (IsPlain(byte))
            uri += character;
        else
            uri += fmt::format("%{:02X}", byte);
    }
    return uri;
}

std::string DecodeUri(const std::string& uri)
{
    if (IsUrl(uri))
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

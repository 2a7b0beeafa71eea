#include <sceneprep/report/Base64.h>

#include <algorithm>
#include <cstdint>
#include <string>

namespace Sceneprep::Report
{

namespace
{

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Appends four digits for one to three bytes.
void AppendGroup(std::string& text, const unsigned char* bytes, std::size_t count)
{
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
        bits = bits << 8 | (i < count ? bytes[i] : 0U);
    for (std::size_t i = 0; i < 4; ++i)
        text += i <= count ? kDigits[bits >> (18 - 6 * i) & 63] : '=';
}

}  // namespace

void WriteBase64(std::ostream& out, const void* data, std::size_t size)
{
    constexpr std::size_t kPiece = 12288;  // whole groups of three
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::string text;
    for (std::size_t start = 0; start < size; start += kPiece)
    {
        text.clear();
        const std::size_t end = std::min(size, start + kPiece);
        for (std::size_t i = start; i < end; i += 3)
            AppendGroup(text, bytes + i, std::min<std::size_t>(3, end - i));
        out << text;
    }
}

}  // namespace Sceneprep::Report

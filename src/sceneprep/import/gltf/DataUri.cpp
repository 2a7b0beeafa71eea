#include <sceneprep/import/gltf/DataUri.h>

#include <array>

namespace Sceneprep::GltfImport
{

namespace
{

constexpr std::string_view kScheme = "data:";
constexpr std::string_view kBase64 = ";base64";
constexpr std::uint8_t kNone = 255;

constexpr std::array<std::uint8_t, 256> MakeValues()
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 256> values{};
    values.fill(kNone);
    for (std::size_t i = 0; i < kDigits.size(); ++i)
        values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::uint8_t>(i);
    values['-'] = 62;  // the alphabet for URLs
    values['_'] = 63;
    return values;
}

constexpr std::array<std::uint8_t, 256> kValues = MakeValues();

std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text)
{
    while (text.ends_with('='))
        text.remove_suffix(1);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char digit : text)
    {
        const std::uint8_t value = kValues[static_cast<unsigned char>(digit)];
        if (value == kNone)
            return std::nullopt;
        bits = bits << 6U | value;
        count += 6;
        if (count < 8)
            continue;
        count -= 8;
        bytes.push_back(static_cast<std::uint8_t>(bits >> count & 255U));
    }
    if (count == 6)
        return std::nullopt;  // a single digit is left over
    return bytes;
}

}  // namespace

bool IsDataUri(std::string_view uri) { return uri.starts_with(kScheme); }

std::optional<DataUri> DecodeDataUri(std::string_view uri)
{
    const std::size_t comma = uri.find(',');
    if (!IsDataUri(uri) || comma == std::string_view::npos)
        return std::nullopt;
    const std::string_view header = uri.substr(kScheme.size(), comma - kScheme.size());
    if (!header.ends_with(kBase64))
        return std::nullopt;
    std::optional<std::vector<std::uint8_t>> bytes = DecodeBase64(uri.substr(comma + 1));
    if (!bytes)
        return std::nullopt;
    return DataUri{std::string(header.substr(0, header.find(';'))), std::move(*bytes)};
}

}  // namespace Sceneprep::GltfImport

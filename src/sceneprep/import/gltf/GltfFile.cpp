#include <sceneprep/import/gltf/GltfFile.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/ParseJson.h>
#include <sceneprep/import/gltf/ReadFile.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>
#include <string_view>

namespace Sceneprep
{

namespace
{

using GltfImport::Field;
using GltfImport::FormatError;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kJsonChunk = 0x4E4F534A;    // "JSON"
constexpr std::uint32_t kBinaryChunk = 0x004E4942;  // "BIN"
constexpr std::size_t kHeader = 12;
constexpr std::size_t kChunkHeader = 8;

std::uint32_t WordAt(const Bytes& bytes, std::size_t position)
{
    std::uint32_t word = 0;
    for (std::size_t i = 4; i > 0; --i)
        word = word << 8U | bytes[position + i - 1];
    return word;
}

void CheckLength(std::size_t expected, std::size_t found)
{
    if (found < expected)
        throw FormatError(fmt::format("the file is truncated ({} bytes expected, {} found)", expected, found));
}

/// A chunk of the binary form.
struct Chunk
{
    std::uint32_t type;
    std::size_t begin;
    std::size_t end;
};

Chunk ChunkAt(const Bytes& bytes, std::size_t position, std::size_t fileEnd)
{
    CheckLength(position + kChunkHeader, fileEnd);
    const std::size_t begin = position + kChunkHeader;
    const Chunk chunk = {WordAt(bytes, position + 4), begin, begin + WordAt(bytes, position)};
    CheckLength(chunk.end, fileEnd);
    return chunk;
}

std::string_view TextOf(const Bytes& bytes, std::size_t begin, std::size_t end)
{
    return {reinterpret_cast<const char*>(bytes.data()) + begin, end - begin};
}

/// @return false for version 1.
bool ReadBinaryForm(Bytes bytes, GltfFile& file)
{
    CheckLength(kHeader, bytes.size());
    const std::uint32_t version = WordAt(bytes, 4);
    if (version == 1)
        return false;
    if (version != 2)
        throw FormatError(fmt::format("version {} of the binary form is not supported, only 2", version));
    const std::size_t end = WordAt(bytes, 8);
    CheckLength(end, bytes.size());
    const Chunk json = ChunkAt(bytes, kHeader, end);
    if (json.type != kJsonChunk)
        throw FormatError("the first chunk of the file is not JSON");
    std::string_view text = TextOf(bytes, json.begin, json.end);
    while (text.ends_with('\0'))  // some writers do not pad with blanks
        text.remove_suffix(1);
    file.document = GltfImport::ParseJson(text);
    if (json.end + kChunkHeader > end)
        return true;
    const Chunk binary = ChunkAt(bytes, json.end, end);
    if (binary.type != kBinaryChunk)
        return true;  // of an extension
    std::memmove(bytes.data(), bytes.data() + binary.begin, binary.end - binary.begin);
    bytes.resize(binary.end - binary.begin);
    file.binary = std::move(bytes);
    return true;
}

/// @return false for version 1.
bool CheckVersion(const Json& document)
{
    const std::string version = Field(document, {}).Member("asset").Member("version").Text();
    if (version.starts_with("1.") || version == "1")
        return false;
    if (!version.starts_with("2.") && version != "2")
        throw FormatError(fmt::format("asset.version: '{}' is not supported, only 2.0", version));
    return true;
}

/// Returns whether the file begins as the binary form does. A file that ends before that can be decided is binary.
bool BeginsBinaryForm(const Bytes& bytes)
{
    constexpr std::string_view kMagic = "glTF";
    return kMagic.starts_with(TextOf(bytes, 0, std::min(bytes.size(), kMagic.size())));
}

std::optional<GltfFile> Open(const std::filesystem::path& path)
{
    GltfFile file{.path = path, .document = {}};
    Bytes bytes = GltfImport::ReadFile(path);
    if (bytes.empty())
        throw FormatError("the file is empty");
    if (BeginsBinaryForm(bytes))
    {
        if (!ReadBinaryForm(std::move(bytes), file))
            return std::nullopt;
    }
    else
        file.document = GltfImport::ParseJson(TextOf(bytes, 0, bytes.size()));
    if (!CheckVersion(file.document))
        return std::nullopt;
    return file;
}

}  // namespace

bool HasGltfExtension(const std::filesystem::path& file)
{
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension == ".gltf" || extension == ".glb";
}

std::optional<GltfFile> OpenGltf(const std::filesystem::path& file)
{
    try
    {
        return Open(file);
    }
    catch (const FormatError& error)
    {
        throw ToolError(fmt::format("cannot read {}: {}", file.string(), OneLine(error.what())));
    }
}

}  // namespace Sceneprep

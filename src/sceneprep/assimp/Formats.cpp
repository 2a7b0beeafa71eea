#include <sceneprep/assimp/Formats.h>

#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <string_view>

namespace Sceneprep
{

namespace
{

/// Selects one of several formats that share a file extension.
constexpr std::array<std::string_view, 5> kPreferredIds = {"fbxa", "gltf2", "glb2", "plyb", "stlb"};

constexpr std::string_view kUnusableExtension = "pbrt";

using enum Content;

/// Content that is missing from files written by Assimp, by file extension.
const std::map<std::string_view, std::vector<Content>> kLacks = {
    {"3ds", {Cameras, Lights, Movements, Skins, TexturePlacements, FurtherUVs}},
    {"3mf", {Cameras, Lights, Movements, Skins, Textures, UVs}},
    {"assbin", {TexturePlacements}},
    {"assxml", {TexturePlacements}},
    {"dae", {TexturePlacements}},
    {"fbx", {Cameras, Skins, TexturePlacements}},  // skins lose their bind poses
    {"json", {TexturePlacements}},
    {"obj", {Cameras, Lights, Movements, Skins, TexturePlacements, FurtherUVs}},
    {"ply", {Cameras, Lights, Movements, Skins, Materials, TexturePlacements, FurtherUVs}},
    {"stl", {Cameras, Lights, Movements, Skins, Materials, Textures, UVs}},
    {"stp", {Cameras, Lights, Movements, Skins, Textures, UVs}},
    {"x", {Cameras, Lights, Movements, Skins, TexturePlacements, FurtherUVs}},
    {"x3d", {Cameras, Lights, Movements, Skins, TexturePlacements, FurtherUVs}},
};

/// Characters that end a name too early (in OBJ: that continue the line), by file extension.
const std::map<std::string_view, const char*> kUnwritableCharacters = {
    {"3mf", "\""}, {"fbx", "\""}, {"json", "'"}, {"obj", "\\"}, {"x3d", "'"},
};

bool IsPreferred(std::string_view id)
{
    return std::find(kPreferredIds.begin(), kPreferredIds.end(), id) != kPreferredIds.end();
}

bool IsOneOf(const std::string& text, std::initializer_list<std::string_view> choices)
{
    return std::find(choices.begin(), choices.end(), text) != choices.end();
}

std::map<std::string, WriteFormat> FormatsByExtension()
{
    const Assimp::Exporter exporter;
    std::map<std::string, WriteFormat> formats;
    for (std::size_t i = 0; i < exporter.GetExportFormatCount(); ++i)
    {
        const aiExportFormatDesc& found = *exporter.GetExportFormatDescription(i);
        const WriteFormat format = {found.id, found.fileExtension, found.description};
        if (format.extension == kUnusableExtension)
            continue;
        if (IsPreferred(format.id))
            formats.insert_or_assign(format.extension, format);
        else
            formats.emplace(format.extension, format);
    }
    return formats;
}

}  // namespace

bool WriteFormat::IsFlat() const { return IsOneOf(extension, {"3ds", "3mf", "obj", "ply", "stl", "stp", "x3d"}); }

bool WriteFormat::Holds(Content content) const
{
    const auto lacks = kLacks.find(extension);
    return lacks == kLacks.end() ||
           std::find(lacks->second.begin(), lacks->second.end(), content) == lacks->second.end();
}

bool WriteFormat::LosesRoot() const { return extension == "fbx"; }

bool WriteFormat::HoldsShear() const { return extension != "fbx"; }

bool WriteFormat::IsZUp() const { return extension == "3ds"; }

std::size_t WriteFormat::LargestMesh() const
{
    return extension == "3ds" ? std::numeric_limits<std::uint16_t>::max() : std::numeric_limits<std::size_t>::max();
}

bool WriteFormat::IsGltf() const { return IsOneOf(extension, {"gltf", "glb"}); }

std::string WriteFormat::UnwritableLetters() const
{
    const auto found = kUnwritableCharacters.find(extension);
    return found == kUnwritableCharacters.end() ? "" : found->second;
}

bool WriteFormat::HoldsPictures() const { return IsOneOf(extension, {"assbin", "assxml", "fbx", "glb", "json"}); }

bool WriteFormat::IsObj() const { return extension == "obj"; }

bool WriteFormat::Is3mf() const { return extension == "3mf"; }

std::optional<WriteFormat> FindWriteFormat(const std::filesystem::path& file)
{
    std::string extension = file.extension().string();
    if (extension.empty())
        return std::nullopt;
    extension.erase(0, 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });

    const std::map<std::string, WriteFormat> formats = FormatsByExtension();
    const auto found = formats.find(extension);
    return found == formats.end() ? std::nullopt : std::optional(found->second);
}

std::vector<WriteFormat> ListWriteFormats()
{
    std::vector<WriteFormat> list;
    for (const auto& [extension, format] : FormatsByExtension())
        list.push_back(format);
    return list;
}

std::vector<std::string> ListReadExtensions()
{
    const Assimp::Importer importer;
    aiString patterns;
    importer.GetExtensionList(patterns);

    std::set<std::string> extensions;
    std::istringstream stream(patterns.C_Str());
    for (std::string pattern; std::getline(stream, pattern, ';');)
        extensions.insert(pattern.substr(pattern.find('.') + 1));  // "*.obj"
    return {extensions.begin(), extensions.end()};
}

}  // namespace Sceneprep

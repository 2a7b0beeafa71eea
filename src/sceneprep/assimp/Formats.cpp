#include <sceneprep/assimp/Formats.h>

#include <fmt/format.h>
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <set>
#include <sstream>
#include <utility>

namespace Sceneprep
{

namespace
{

using enum Content;

/// Returns the table of the formats, sorted by extension. Of formats that share an extension it has one.
const std::vector<WriteFormat>& AllFormats()
{
    static const std::vector<WriteFormat> formats = {
        {"3ds",
         "3ds",
         "3D Studio",
         {.lacks = {Cameras, Lights, Animations, Skins, TextureTransforms, FurtherUVs},
          .isFlat = true,
          .isZUp = true,
          .largestMesh = std::numeric_limits<std::uint16_t>::max()}},
        {"3mf",
         "3mf",
         "3D Manufacturing Format",
         {.lacks = {Cameras, Lights, Animations, Skins, Textures, UVs}, .isFlat = true, .unwritableCharacters = "\""}},
        {"assbin", "assbin", "Assimp, binary", {.lacks = {TextureTransforms}, .embedsImages = true}},
        {"assxml", "assxml", "Assimp, XML", {.lacks = {TextureTransforms}, .embedsImages = true}},
        {"dae", "collada", "COLLADA", {.lacks = {TextureTransforms}}},
        {"fbx",
         "fbxa",
         "FBX, text",
         {.lacks = {Cameras, Skins, TextureTransforms},  // skins lose their bind poses
          .losesRoot = true,
          .holdsShear = false,
          .embedsImages = true,
          .unwritableCharacters = "\""}},
        {"glb", "glb2", "glTF 2.0, binary", {.embedsImages = true}},
        {"gltf", "gltf2", "glTF 2.0", {}},
        {"json",
         "assjson",
         "Assimp, JSON",
         {.lacks = {TextureTransforms}, .embedsImages = true, .unwritableCharacters = "'"}},
        {"obj",
         "obj",
         "Wavefront OBJ",
         {.lacks = {Cameras, Lights, Animations, Skins, TextureTransforms, FurtherUVs},
          .isFlat = true,
          .unwritableCharacters = "\\"}},  // continues the line
        {"ply",
         "plyb",
         "PLY, binary",
         {.lacks = {Cameras, Lights, Animations, Skins, Materials, TextureTransforms, FurtherUVs}, .isFlat = true}},
        {"stl",
         "stlb",
         "STL, binary",
         {.lacks = {Cameras, Lights, Animations, Skins, Materials, Textures, UVs}, .isFlat = true}},
        {"stp", "stp", "STEP", {.lacks = {Cameras, Lights, Animations, Skins, Textures, UVs}, .isFlat = true}},
        {"x", "x", "DirectX X", {.lacks = {Cameras, Lights, Animations, Skins, TextureTransforms, FurtherUVs}}},
        {"x3d",
         "x3d",
         "Extensible 3D",
         {.lacks = {Cameras, Lights, Animations, Skins, TextureTransforms, FurtherUVs},
          .isFlat = true,
          .unwritableCharacters = "'"}},
    };
    return formats;
}

std::set<std::string> ExporterIds()
{
    const Assimp::Exporter exporter;
    std::set<std::string> ids;
    for (std::size_t i = 0; i < exporter.GetExportFormatCount(); ++i)
        ids.emplace(exporter.GetExportFormatDescription(i)->id);
    return ids;
}

/// Returns the extension in lower case and without the dot.
std::string ExtensionOf(const std::filesystem::path& file)
{
    std::string extension = file.extension().string();
    if (!extension.empty())
        extension.erase(0, 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

}  // namespace

bool WriteFormat::Holds(Content content) const
{
    return std::find(traits.lacks.begin(), traits.lacks.end(), content) == traits.lacks.end();
}

std::optional<WriteFormat> FindWriteFormat(const std::filesystem::path& file)
{
    const std::string extension = ExtensionOf(file);
    const std::vector<WriteFormat> formats = ListWriteFormats();
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [&](const WriteFormat& format) { return format.extension == extension; });
    return found == formats.end() ? std::nullopt : std::optional(*found);
}

std::vector<WriteFormat> ListWriteFormats()
{
    const std::set<std::string> ids = ExporterIds();
    std::vector<WriteFormat> list;
    for (const WriteFormat& format : AllFormats())
    {
        if (format.IsGltf() || ids.count(format.id) > 0)
            list.push_back(format);
    }
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

bool IsGltfFile(const std::filesystem::path& file)
{
    const std::string extension = ExtensionOf(file);
    return extension == "gltf" || extension == "glb";
}

std::string FormatsText()
{
    std::string text = "Written, by the extension of the output:\n";
    for (const WriteFormat& format : ListWriteFormats())
        text += fmt::format("  .{:<10}{}\n", format.extension, format.description);

    text += "Read:\n ";
    std::size_t column = 1;
    for (const std::string& extension : ListReadExtensions())
    {
        if (column + extension.size() + 2 > 80)
        {
            text += "\n ";
            column = 1;
        }
        text += " ." + extension;
        column += extension.size() + 2;
    }
    return text + '\n';
}

std::string FormatsTable()
{
    constexpr std::array<std::pair<Content, const char*>, 9> kColumns = {{{Cameras, "Cameras"},
                                                                          {Lights, "Lights"},
                                                                          {Animations, "Animations"},
                                                                          {Skins, "Skins"},
                                                                          {Materials, "Materials"},
                                                                          {Textures, "Textures"},
                                                                          {TextureTransforms, "Texture transforms"},
                                                                          {UVs, "UVs"},
                                                                          {FurtherUVs, "Further UV sets"}}};
    std::string header = "| Extension | Format | Hierarchy |";
    std::string rule = "|---|---|:-:|";
    for (const auto& [content, title] : kColumns)
    {
        header += fmt::format(" {} |", title);
        rule += ":-:|";
    }
    std::string table = header + '\n' + rule + '\n';
    for (const WriteFormat& format : AllFormats())
    {
        table += fmt::format("| `.{}` | {} | {} |", format.extension, format.description, format.IsFlat() ? "" : "yes");
        for (const auto& [content, title] : kColumns)
        {
            const bool isImplied = (content == TextureTransforms && !format.Holds(Textures)) ||
                                   (content == FurtherUVs && !format.Holds(UVs)) ||
                                   (content == Textures && !format.Holds(Materials)) ||
                                   (content == TextureTransforms && !format.Holds(Materials));
            table += format.Holds(content) && !isImplied ? " yes |" : "  |";
        }
        table += '\n';
    }
    return table;
}

}  // namespace Sceneprep

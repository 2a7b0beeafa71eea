#include <sceneprep/export/gltf/WriteModel.h>

#include <fmt/format.h>
#include <sceneprep/export/gltf/BuildModel.h>
#include <sceneprep/model/Uri.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>

namespace Sceneprep::Gltf
{

using Pipeline::PartListener;

namespace
{

namespace fs = std::filesystem;

/// The part of building in the whole work, roughly: the library does not tell how far its writing has come.
constexpr double kBuilding = 0.5;

/// For names of files that the model refers to: nothing that a reference would have to encode.
std::string PlainName(std::string stem)
{
    std::replace_if(
        stem.begin(), stem.end(), [](char letter) { return EncodeUri({letter}) != std::string{letter}; }, '_');
    return stem;
}

std::uintmax_t SizeOf(const fs::path& file)
{
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    return error ? 0 : size;
}

/// The library does not tell when the disk is full. A binary file says in its third word how long it is.
bool IsWholeBinary(const fs::path& file)
{
    std::array<std::uint32_t, 3> header = {};
    std::ifstream in(file, std::ios::binary);
    in.read(reinterpret_cast<char*>(header.data()), sizeof(header));
    constexpr std::uint32_t kMagic = 0x46546C67;  // "glTF"
    return in && header[0] == kMagic && SizeOf(file) == header[2];
}

/// Only the last brace of a text stands at the start of its line, and the buffer is as long as it should be.
bool IsWholeText(const fs::path& file, const tinygltf::Model& model)
{
    for (const tinygltf::Buffer& buffer : model.buffers)
    {
        if (SizeOf(file.parent_path() / buffer.uri) != buffer.data.size())
            return false;
    }
    std::array<char, 3> end = {};
    std::ifstream in(file, std::ios::binary);
    in.seekg(-static_cast<std::streamoff>(end.size()), std::ios::end);
    in.read(end.data(), end.size());
    return in && std::string_view(end.data(), end.size()) == "\n}\n";
}

}  // namespace

std::vector<std::string> WriteModel(Importing::SceneContainer& scene, const Textures& textures, const fs::path& file,
                                    bool isBinary, const PartListener& listener)
{
    const std::string stem = PlainName(file.stem().string());
    BuiltModel built =
        BuildModel(scene, textures, stem, isBinary, [&listener](double part) { listener(part * kBuilding); });
    if (!isBinary && !built.model.buffers.empty())
        built.model.buffers.front().uri = stem + ".bin";

    tinygltf::TinyGLTF writer;
    writer.SetImageWriter(nullptr, nullptr);  // pictures are written here, as they came
    const bool isWritten = writer.WriteGltfSceneToFile(&built.model, file.string(), false, false, true, isBinary);
    if (!isWritten || !(isBinary ? IsWholeBinary(file) : IsWholeText(file, built.model)))
        throw ToolError(fmt::format("cannot write {}: is the disk full? Make room or choose another folder",
                                    file.filename().string()));
    WriteCompanions(built.companions, file.parent_path());
    return built.notes;
}

}  // namespace Sceneprep::Gltf

#include <sceneprep/gltf/WriteModel.h>

#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <sceneprep/gltf/BuildModel.h>

#include <algorithm>
#include <fstream>

namespace Sceneprep::Gltf
{

namespace
{

namespace fs = std::filesystem;

/// For names of files that the model refers to: nothing that a reference would have to encode.
std::string PlainName(std::string stem)
{
    std::replace_if(
        stem.begin(), stem.end(), [](char letter) { return EncodeUri({letter}) != std::string{letter}; }, '_');
    return stem;
}

void WriteCompanion(const CompanionFile& companion, const fs::path& folder)
{
    const std::vector<unsigned char>& bytes = *companion.content;
    std::ofstream out(folder / companion.name, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out)
        throw ToolError(
            fmt::format("cannot write {}: is the disk full? Make room or choose another folder", companion.name));
}

}  // namespace

std::vector<std::string> WriteModel(Importing::SceneContainer& scene, const Textures& textures, const fs::path& file,
                                    bool isBinary)
{
    const std::string stem = PlainName(file.stem().string());
    BuiltModel built = BuildModel(scene, textures, stem, isBinary);
    if (!isBinary && !built.model.buffers.empty())
        built.model.buffers.front().uri = stem + ".bin";

    tinygltf::TinyGLTF writer;
    writer.SetImageWriter(nullptr, nullptr);  // pictures are written here, as they came
    if (!writer.WriteGltfSceneToFile(&built.model, file.string(), false, false, true, isBinary))
        throw ToolError(fmt::format("cannot write {}: is the disk full? Make room or choose another folder",
                                    file.filename().string()));
    for (const CompanionFile& companion : built.companions)
        WriteCompanion(companion, file.parent_path());
    return built.notes;
}

}  // namespace Sceneprep::Gltf

#include <sceneprep/import/ModelSource.h>

#include <assimp/DefaultIOSystem.h>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <fmt/format.h>
#include <sceneprep/assimp/ModelProgress.h>
#include <sceneprep/import/DeclaredSize.h>
#include <sceneprep/run/Error.h>
#include <assimp/Importer.hpp>

#include <optional>
#include <string>

namespace Sceneprep
{

namespace
{

/// Returns why a file cannot be read, and what to try.
/// @param assimpReason  what Assimp says
std::string ReasonFor(const std::filesystem::path& file, const std::string& assimpReason)
{
    std::error_code error;
    const std::uintmax_t found = std::filesystem::file_size(file, error);
    if (!error && found == 0)
        return "the file is empty; export it again";
    const std::optional<std::uint64_t> expected = DeclaredSize(file);
    if (!error && expected && found < *expected)
        return fmt::format("the file is truncated ({} bytes expected, {} found); copy or export it again", *expected,
                           found);
    if (assimpReason.starts_with("No suitable reader found"))
        return fmt::format(
            "its contents are not those of a '{}' file; it is damaged or truncated, or has the wrong "
            "extension",
            file.extension().string());
    return assimpReason + "; repair the file or convert it to another format";
}

/// The files that Assimp reads; records their names.
class RecordedFiles : public Assimp::DefaultIOSystem
{
public:
    explicit RecordedFiles(std::vector<std::filesystem::path>& opened) : opened_(opened) {}

    Assimp::IOStream* Open(const char* file, const char* mode) override
    {
        Assimp::IOStream* stream = DefaultIOSystem::Open(file, mode);
        if (stream != nullptr)
            opened_.emplace_back(file);
        return stream;
    }

private:
    std::vector<std::filesystem::path>& opened_;
};

std::unique_ptr<aiScene> ReadScene(const std::filesystem::path& file, Progress& progress,
                                   std::vector<std::filesystem::path>& openedFiles)
{
    CheckReadable(file);
    Assimp::Importer importer;
    importer.SetIOHandler(new RecordedFiles(openedFiles));  // the importer owns it
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);  // a file without meshes stays one
    importer.SetProgressHandler(new ModelProgress(progress));             // the importer owns it
    // Sorting splits meshes that mix triangles with points and lines.
    const aiScene* scene = importer.ReadFile(file.string(), aiProcess_Triangulate | aiProcess_SortByPType);
    if (scene == nullptr || scene->mRootNode == nullptr)
        throw ToolError(
            fmt::format("cannot read {}: {}", file.string(), ReasonFor(file, OneLine(importer.GetErrorString()))));
    return std::unique_ptr<aiScene>(importer.GetOrphanedScene());
}

template <typename T>
void Free(T*& array)
{
    delete[] array;
    array = nullptr;
}

}  // namespace

ModelSource::ModelSource(const std::filesystem::path& file, Progress& progress)
    : file_(file), scene_(ReadScene(file, progress, openedFiles_))
{}

void ModelSource::Release(unsigned index)
{
    aiMesh& mesh = *scene_->mMeshes[index];
    Free(mesh.mVertices);
    Free(mesh.mNormals);
    Free(mesh.mTangents);
    Free(mesh.mBitangents);
    for (aiVector3D*& texCoords : mesh.mTextureCoords)
        Free(texCoords);
    for (aiColor4D*& colors : mesh.mColors)
        Free(colors);
    Free(mesh.mFaces);
}

void CheckReadable(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::status(file, error).type();
    if (type == std::filesystem::file_type::none)
        throw ToolError(fmt::format("cannot read {}: {}; check the path", file.string(), error.message()));
    if (type == std::filesystem::file_type::not_found)
        throw ToolError(fmt::format("cannot read {}: there is no such file; check the path", file.string()));
    if (type != std::filesystem::file_type::regular)
        throw ToolError(fmt::format("cannot read {}: it is not a file; name a model file", file.string()));
    if (!Assimp::Importer().IsExtensionSupported(file.extension().string()))
        throw ToolError(
            fmt::format("cannot read {}: unsupported file extension '{}'; 'sceneprep formats' lists the supported ones",
                        file.string(), file.extension().string()));
}

}  // namespace Sceneprep

#include <sceneprep/import/ModelSource.h>

#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <fmt/format.h>
#include <sceneprep/assimp/ModelProgress.h>
#include <sceneprep/run/Error.h>
#include <assimp/Importer.hpp>

namespace Sceneprep
{

namespace
{

std::unique_ptr<aiScene> Read(const std::filesystem::path& file, Progress& progress)
{
    CheckReadable(file);
    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);  // a file without meshes stays one
    importer.SetProgressHandler(new ModelProgress(progress));             // the importer owns it
    // Sorting splits meshes that mix triangles with points and lines.
    const aiScene* scene = importer.ReadFile(file.string(), aiProcess_Triangulate | aiProcess_SortByPType);
    if (scene == nullptr || scene->mRootNode == nullptr)
        throw ToolError(fmt::format("cannot read {}: {}; repair the file or convert it to another format",
                                    file.string(), OneLine(importer.GetErrorString())));
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
    : file_(file), scene_(Read(file, progress))
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

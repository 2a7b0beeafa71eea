#include <sceneprep/import/InputFiles.h>

#include <assimp/material.h>
#include <sceneprep/import/gltf/DataUri.h>
#include <sceneprep/model/Uri.h>

#include <algorithm>
#include <set>
#include <string>
#include <system_error>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

/// Collects files in order, each once.
class FileCollector
{
public:
    explicit FileCollector(const fs::path& model) : folder_(model.parent_path()) { Add(model); }

    void Add(const fs::path& file)
    {
        std::error_code ignored;
        const fs::path path = file.lexically_normal();
        if (fs::is_regular_file(path, ignored) && known_.insert(path).second)
            files_.push_back(path);
    }
    /// Adds a file that the model refers to. Programs on Windows write backslashes.
    void AddReference(std::string reference)
    {
        std::replace(reference.begin(), reference.end(), '\\', '/');
        Add(folder_ / reference);
    }

    std::vector<fs::path> Take() { return std::move(files_); }

private:
    fs::path folder_;
    std::set<fs::path> known_;
    std::vector<fs::path> files_;
};

/// Adds the files that objects of a list refer to by "uri". What is not valid is reported when it is read.
void AddUris(const Json& document, const char* list, FileCollector& files)
{
    const auto objects = document.find(list);
    if (objects == document.end() || !objects->is_array())
        return;
    for (const Json& object : *objects)
    {
        const auto uri = object.is_object() ? object.find("uri") : object.end();
        if (uri != object.end() && uri->is_string() && !GltfImport::IsDataUri(uri->get_ref<const std::string&>()))
            files.AddReference(DecodeUri(uri->get<std::string>()));
    }
}

void AddTextures(const aiMaterial& material, FileCollector& files)
{
    for (unsigned i = 0; i < material.mNumProperties; ++i)
    {
        const aiMaterialProperty& property = *material.mProperties[i];
        if (std::string_view(property.mKey.C_Str()) != _AI_MATKEY_TEXTURE_BASE)
            continue;
        aiString reference;
        if (material.Get(_AI_MATKEY_TEXTURE_BASE, property.mSemantic, property.mIndex, reference) == aiReturn_SUCCESS &&
            *reference.C_Str() != '*')
            files.AddReference(reference.C_Str());
    }
}

}  // namespace

std::vector<fs::path> FilesOf(const OpenedModel& opened)
{
    if (const auto* gltf = std::get_if<GltfFile>(&opened))
    {
        FileCollector files(gltf->path);
        if (gltf->document.is_object())
        {
            AddUris(gltf->document, "buffers", files);
            AddUris(gltf->document, "images", files);
        }
        return files.Take();
    }
    const auto& source = std::get<ModelSource>(opened);
    FileCollector files(source.File());
    for (const fs::path& file : source.OpenedFiles())
        files.Add(file);
    const aiScene& scene = source.Scene();
    for (unsigned i = 0; i < scene.mNumMaterials; ++i)
        AddTextures(*scene.mMaterials[i], files);
    return files.Take();
}

std::uint64_t BytesOf(const std::vector<fs::path>& files)
{
    std::uint64_t bytes = 0;
    for (const fs::path& file : files)
    {
        std::error_code error;
        const std::uintmax_t size = fs::file_size(file, error);
        bytes += error ? 0 : size;
    }
    return bytes;
}

}  // namespace Sceneprep

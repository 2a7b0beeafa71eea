#include <sceneprep/import/OpenModel.h>

#include <sceneprep/import/ImportModel.h>

#include <optional>
#include <utility>

namespace Sceneprep
{

OpenedModel OpenModel(const std::filesystem::path& file, Progress& progress)
{
    CheckReadable(file);
    if (HasGltfExtension(file))
    {
        if (std::optional<GltfFile> gltf = OpenGltf(file))
            return std::move(*gltf);
    }
    return ModelSource(file, progress);
}

void ConvertModel(OpenedModel opened, Model& model, const GltfReadOptions& options,
                  const Pipeline::PartListener& listener)
{
    if (auto* gltf = std::get_if<GltfFile>(&opened))
        ReadGltf(std::move(*gltf), model, options, listener);
    else
        ImportModel(std::move(std::get<ModelSource>(opened)), model, listener);
}

}  // namespace Sceneprep

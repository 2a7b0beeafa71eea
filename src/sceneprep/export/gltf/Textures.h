#pragma once

#include <sceneprep/export/gltf/Images.h>
#include <sceneprep/model/Model.h>

#include <string>
#include <unordered_map>

namespace Sceneprep::Gltf
{

/// Writes textures: those that the input held as glTF, and those of the container's texture library. Equal textures,
/// samplers and images are written once.
class TextureWriter
{
public:
    /// The model has to outlive the writer.
    TextureWriter(const Model& model, ImageWriter& images, Document& document)
        : model_(model), images_(images), document_(document)
    {}

    /// Writes a texture of the container and returns its index; -1 if its image cannot be written.
    int FindOfLibrary(int texture);

    /// Makes the texture references of a carried object, as RenumberTextures() finds them, refer to textures of the
    /// document. A reference whose image cannot be written is removed.
    void Reindex(Json& object);

private:
    int FindCarried(int texture);
    int Write(Json texture);
    WrittenImage WriteImage(int image);
    int WriteSampler(int sampler);
    bool ReindexSources(Json& texture);
    int AppendOnce(std::vector<Json>& list, Json object, std::unordered_map<std::string, int>& known);

    const Model& model_;
    ImageWriter& images_;
    Document& document_;
    std::unordered_map<int, int> ofLibrary_, carried_;
    std::unordered_map<std::string, int> knownTextures_, knownSamplers_;
};

}  // namespace Sceneprep::Gltf

#pragma once

#include <sceneprep/export/gltf/Meshes.h>
#include <sceneprep/export/gltf/Textures.h>

#include <set>
#include <string>
#include <unordered_map>

namespace Sceneprep::Gltf
{

/// Converts materials of the container to the metallic-roughness model.
///
/// - The diffuse colour is the base colour, the opacity its alpha; below 1 the material blends.
/// - Nothing is metallic. The roughness comes from the specular power, see Roughness.h.
/// - A specular colour that is neither black nor white becomes KHR_materials_specular.
/// - Emission above 1 becomes KHR_materials_emissive_strength.
/// - The matrix of a texture layer becomes KHR_texture_transform, as far as it scales, rotates and translates.
class MaterialConverter
{
public:
    /// The model has to outlive the converter.
    MaterialConverter(const Model& model, TextureWriter& textures) : model_(model), textures_(textures) {}

    /// @param texCoordSets  the number of texture coordinate sets of the mesh; a layer needs the set that it names
    Json Convert(Importing::Surface& surface, std::size_t texCoordSets);

    /// The types of dropped layers: those that the format does not support, or whose texture coordinates are missing.
    const std::set<std::string>& DroppedLayers() const { return droppedLayers_; }

private:
    void AddLayer(Importing::Map& map, std::size_t texCoordSets, Json& target);
    bool SetLayer(Importing::Map& map, const std::string& type, Json& target);
    bool SetTexture(Importing::Map& map, const char* key, Json& target);

    const Model& model_;
    TextureWriter& textures_;
    std::set<std::string> droppedLayers_;
};

}  // namespace Sceneprep::Gltf

#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/export/gltf/Images.h>
#include <sceneprep/export/gltf/Meshes.h>

#include <map>
#include <set>
#include <string>
#include <tuple>

namespace Sceneprep::Gltf
{

/// Writes materials in the metallic and roughness model, one for each combination of a material and texture layers
/// that surfaces use.
///
/// - The diffuse colour is the base colour, the opacity its alpha; below 1 the material blends.
/// - Nothing is metal. The roughness comes from the specular power, see Roughness.h.
/// - A specular colour that is neither black nor white becomes KHR_materials_specular.
/// - Emission above 1 becomes KHR_materials_emissive_strength.
/// - A layer's matrix becomes KHR_texture_transform, as far as it scales, turns and moves.
class MaterialWriter
{
public:
    MaterialWriter(Importing::SceneContainer& scene, ImageWriter& images, tinygltf::Model& model);

    /// @param arrays  the mesh that the surface shows; a layer needs the UV set that it names
    /// @return the index of the surface's material in the file.
    int Find(Importing::Surface& surface, const MeshArrays& arrays);

    /// Kinds of layers that the format has no place for, or the mesh no UV set.
    const std::set<std::string>& LayersLeftOut() const { return layersLeftOut_; }

private:
    tinygltf::Material Convert(Importing::Surface& surface, const MeshArrays& arrays);
    void AddLayer(Importing::Map& map, const MeshArrays& arrays, tinygltf::Material& target);
    bool SetLayer(Importing::Map& map, const std::string& type, tinygltf::Material& target);
    template <typename TextureInfo>
    bool SetTexture(Importing::Map& map, TextureInfo& target);

    Importing::SceneContainer& scene_;
    ImageWriter& images_;
    tinygltf::Model& model_;
    std::map<std::string, int> indexByKey_;
    std::set<std::string> layersLeftOut_;
};

}  // namespace Sceneprep::Gltf

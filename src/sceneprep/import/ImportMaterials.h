#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/model/Model.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Adds materials and texture layers to a scene when a mesh uses them; unused materials are skipped.
///
/// Materials with equal content become one, as do textures. The transparency of a material is in its opacity; the alpha
/// of its diffuse colour is 1.
class MaterialImporter
{
public:
    MaterialImporter(const aiScene& source, Model& model);

    /// Sets material and maps of the surface to those of a material of the file. Does nothing if the index is invalid.
    void Apply(unsigned sourceMaterial, Importing::Surface& surface);

    /// Adds a loss for each kind of content that was dropped from the materials so far.
    void AddNotes(Notes& notes) const;

private:
    struct Imported
    {
        int material = -1;
        std::vector<Importing::Map> maps;
    };

    Imported Import(const aiMaterial& material);
    int AddMaterial(const aiMaterial& material);
    std::vector<Importing::Map> ImportMaps(const aiMaterial& material);

    const aiScene& source_;
    Importing::SceneContainer& scene_;
    Textures& textures_;
    std::vector<CarriedMaterial>& carried_;
    std::map<std::pair<int, std::string>, int> indexByPatch_;  // by a material of equal content, and the patch
    std::map<unsigned, Imported> imported_;
    std::size_t droppedTransforms_ = 0;
    std::size_t notRepeated_ = 0;
};

/// Returns the images that are embedded in the file. Raw pixels are encoded as PNG.
std::vector<EmbeddedTexture> ImportEmbeddedTextures(const aiScene& source);

}  // namespace Sceneprep

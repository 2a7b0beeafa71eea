#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/import/MaterialLosses.h>
#include <sceneprep/model/Textures.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Brings materials and texture layers into a scene as meshes ask for them; what no mesh uses stays out.
///
/// Materials and textures of equal content are joined. A material's opacity carries its whole transparency; the alpha
/// of its diffuse colour is 1.
class MaterialImporter
{
public:
    MaterialImporter(const aiScene& source, Importing::SceneContainer& scene, Textures& textures);

    /// Gives the surface the material and the layers of a material of the file.
    void Apply(unsigned sourceMaterial, Importing::Surface& surface);

    /// @return what the scene cannot hold of the materials so far, one line each.
    std::vector<std::string> Notes() const;

private:
    struct Imported
    {
        int material = -1;
        std::vector<Importing::Map> maps;
    };

    Imported Import(const aiMaterial& material);
    std::vector<Importing::Map> ImportMaps(const aiMaterial& material);
    /// Carries the layer's coordinates as the file does, or counts that this is left out.
    void ApplyTransform(const aiMaterial& material, aiTextureType type, unsigned layer, Importing::Map& map);

    const aiScene& source_;
    Importing::SceneContainer& scene_;
    Textures& textures_;
    std::map<unsigned, Imported> imported_;
    std::size_t transformsLeftOut_ = 0;
    std::size_t notRepeated_ = 0;
    MaterialLosses losses_;
};

/// Keeps the pictures that lie in the file.
std::vector<EmbeddedTexture> ImportEmbeddedTextures(const aiScene& source);

}  // namespace Sceneprep

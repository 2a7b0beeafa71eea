#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/export/plan/UniqueNames.h>
#include <sceneprep/model/Textures.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Makes materials for a file, one for each combination of a material and texture layers that surfaces use.
class MaterialExporter
{
public:
    MaterialExporter(Importing::SceneContainer& scene, const Textures& textures, const WriteFormat& format);

    /// Returns the index of the surface's material in the file. Adds the material if it is new.
    unsigned Find(Importing::Surface& surface);

    /// Moves the materials to the scene of the file. A scene without materials gets a default one.
    void MoveTo(aiScene& target);

private:
    std::unique_ptr<aiMaterial> Convert(Importing::Surface& surface);
    std::string NameFor(const std::string& wanted);
    void AddMaps(Importing::Surface& surface, aiMaterial& target) const;

    Importing::SceneContainer& scene_;
    const Textures& textures_;
    const WriteFormat& format_;
    std::vector<std::unique_ptr<aiMaterial>> materials_;
    std::map<std::string, unsigned> indexByContent_;
    UniqueNames names_;
};

/// Copies the images that the imported file embedded into the scene that is written.
void ExportEmbeddedTextures(const Textures& textures, aiScene& target);

}  // namespace Sceneprep

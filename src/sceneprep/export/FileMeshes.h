#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/export/ExportMaterials.h>
#include <sceneprep/export/plan/ExportPlan.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace Sceneprep
{

/// The meshes of Assimp's scene while it is built.
class FileMeshes
{
public:
    FileMeshes(Importing::SceneContainer& scene, const WriteFormat& format, MaterialExporter& materials)
        : scene_(scene), format_(format), materials_(materials)
    {}

    /// Adds a mesh for a surface and returns its index. Surfaces of one geometry, one material and one skeleton share a
    /// mesh.
    /// @param bones  the names of the nodes of its joints; empty for a mesh without bones
    unsigned FindShared(const PlannedSurface& surface, const std::vector<std::string>& bones);

    /// Adds the meshes for a surface, with a matrix baked into them, and returns their indices. A geometry that is too
    /// large for the format is split into several meshes.
    std::vector<unsigned> AddBaked(const PlannedSurface& surface, const D3DXMATRIX& matrix);

    /// Moves the meshes into a scene, and sets the flags that Assimp's exporters need.
    void MoveTo(aiScene& target);

private:
    unsigned Add(Importing::Geometry& geometry, Importing::Surface& surface);

    Importing::SceneContainer& scene_;
    const WriteFormat& format_;
    MaterialExporter& materials_;
    std::vector<std::unique_ptr<aiMesh>> meshes_;
    std::map<std::tuple<int, unsigned, int>, unsigned> known_;  // by geometry, material of the file and skeleton
};

}  // namespace Sceneprep

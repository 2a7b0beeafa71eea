#include <sceneprep/export/FileMeshes.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/export/CutMesh.h>
#include <sceneprep/export/ExportMeshes.h>
#include <sceneprep/export/ExportNames.h>
#include <sceneprep/export/MoveInto.h>

#include <algorithm>
#include <utility>

namespace Sceneprep
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Surface;

/// Some exporters refuse a scene that is marked as sharing vertices and does not, others need the mark where it does.
unsigned FlagsOf(const std::vector<std::unique_ptr<aiMesh>>& meshes)
{
    if (meshes.empty())
        return AI_SCENE_FLAGS_INCOMPLETE;
    const bool sharesVertices =
        std::any_of(meshes.begin(), meshes.end(), [](const auto& mesh) { return SharesVertices(*mesh); });
    return sharesVertices ? AI_SCENE_FLAGS_NON_VERBOSE_FORMAT : 0U;
}

}  // namespace

unsigned FileMeshes::FindShared(const PlannedSurface& planned, const std::vector<std::string>& bones)
{
    Surface& surface = At(scene_.SurfaceLibrary, planned.surface);
    Geometry& geometry = At(scene_.GeometryLibrary, planned.geometry);
    const auto [known, isNew] =
        known_.emplace(std::tuple(planned.geometry, materials_.Find(surface), planned.skeleton), 0U);
    if (!isNew)
        return known->second;
    known->second = Add(geometry, surface);
    if (!bones.empty())
        AddBones(geometry, bones, *meshes_.back());
    return known->second;
}

std::vector<unsigned> FileMeshes::AddBaked(const PlannedSurface& planned, const D3DXMATRIX& matrix)
{
    Surface& surface = At(scene_.SurfaceLibrary, planned.surface);
    Geometry& geometry = At(scene_.GeometryLibrary, planned.geometry);
    std::vector<unsigned> added;
    if (!IsLargerThan(format_.LargestMesh(), geometry))
        added.push_back(Add(geometry, surface));
    else
    {
        for (Geometry& part : CutMesh(geometry, format_.LargestMesh()))
            added.push_back(Add(part, surface));
    }
    for (const unsigned mesh : added)
        BakeMatrix(matrix, *meshes_[mesh]);
    return added;
}

unsigned FileMeshes::Add(Geometry& geometry, Surface& surface)
{
    std::unique_ptr<aiMesh> mesh = ConvertMesh(geometry);
    const std::string name = geometry.GetName();
    mesh->mName = ExportName(name.empty() ? surface.GetName() : name, format_);
    mesh->mMaterialIndex = materials_.Find(surface);
    meshes_.push_back(std::move(mesh));
    return static_cast<unsigned>(meshes_.size() - 1);
}

void FileMeshes::MoveTo(aiScene& target)
{
    target.mFlags = FlagsOf(meshes_);
    MoveInto(meshes_, target.mMeshes, target.mNumMeshes);
}

}  // namespace Sceneprep

#include <pipeline/steps/NameSteps.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/Skeletons.h>

namespace Pipeline
{

namespace
{

using Importing::SceneContainer;

template <typename Record>
std::vector<std::string> NamesOf(std::vector<Record>& library)
{
    std::vector<std::string> names;
    names.reserve(library.size());
    for (Record& record : library)
        names.push_back(record.GetName());
    return names;
}

/// Records that merging emptied are renamed with the others, but nobody sees them.
template <typename Record>
bool IsSeen(const Record& record)
{
    if constexpr (requires { IsEmptied(record); })
        return !IsEmptied(record);
    else
        return true;
}

/// @return how many records of the library have another name after the renaming.
template <typename Record, typename Rename>
std::size_t CountRenamed(std::vector<Record>& library, Rename rename)
{
    const std::vector<std::string> before = NamesOf(library);
    rename();
    std::size_t renamed = 0;
    for (std::size_t i = 0; i < library.size(); ++i)
        renamed += IsSeen(library[i]) && library[i].GetName() != before[i] ? 1 : 0;
    return renamed;
}

/// Joints know their nodes by name, so they take new names along.
void RenameNodes(SceneContainer& scene)
{
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<SkinnedMesh> meshes = ListSkinnedMeshes(scene, walk);
    if (meshes.empty())
    {
        scene.MakeNodeNamesUnambiguous();
        return;
    }
    Skeletons skeletons(scene, walk);
    std::vector<std::vector<int>> nodesOf;
    nodesOf.reserve(meshes.size());
    for (const SkinnedMesh& mesh : meshes)
        nodesOf.push_back(skeletons.Find(Importing::At(scene.GeometryLibrary, mesh.geometry), mesh.node));

    scene.MakeNodeNamesUnambiguous();
    for (std::size_t m = 0; m < meshes.size(); ++m)
    {
        std::vector<Importing::Joint>& joints = Importing::At(scene.GeometryLibrary, meshes[m].geometry).JointArray;
        for (std::size_t j = 0; j < joints.size(); ++j)
        {
            if (Importing::IsValidIndex(nodesOf[m][j], scene.NodeLibrary.size()))
                joints[j].SetName(Importing::At(scene.NodeLibrary, nodesOf[m][j]).GetName());
        }
    }
}

}  // namespace

Changes MakeNamesUnique(SceneContainer& scene)
{
    return {
        {"nodes renamed", CountRenamed(scene.NodeLibrary, [&scene] { RenameNodes(scene); })},
        {"meshes renamed", CountRenamed(scene.GeometryLibrary, [&scene] { scene.MakeGeometryNamesUnambiguous(); })},
        {"materials renamed", CountRenamed(scene.MaterialLibrary, [&scene] { scene.MakeMaterialNamesUnambiguous(); })}};
}

Changes NameSurfaces(SceneContainer& scene)
{
    return {{"surfaces renamed", CountRenamed(scene.SurfaceLibrary, [&scene] { scene.CreateSurfaceNames(); })}};
}

Changes MakeSurfaceNamesUnique(SceneContainer& scene)
{
    return {
        {"surfaces renamed", CountRenamed(scene.SurfaceLibrary, [&scene] { scene.MakeSurfaceNamesUnambiguous(); })}};
}

}  // namespace Pipeline

#include <pipeline/steps/MakeNamesUnique.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/steps/CountRenamed.h>

namespace Pipeline
{

namespace
{

using Importing::SceneContainer;

/// Joints refer to their nodes by name, so they are renamed with them.
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

Changes MakeNamesUnique(const WorkScene& work, const PrepareOptions& /*options*/, const PartListener& /*listener*/)
{
    SceneContainer& scene = work.container;
    return {
        {"nodes renamed", CountRenamed(scene.NodeLibrary, [&scene] { RenameNodes(scene); })},
        {"meshes renamed", CountRenamed(scene.GeometryLibrary, [&scene] { scene.MakeGeometryNamesUnambiguous(); })},
        {"materials renamed", CountRenamed(scene.MaterialLibrary, [&scene] { scene.MakeMaterialNamesUnambiguous(); })}};
}

Changes MakeSurfaceNamesUnique(const WorkScene& work, const PrepareOptions& /*options*/,
                               const PartListener& /*listener*/)
{
    SceneContainer& scene = work.container;
    return {
        {"surfaces renamed", CountRenamed(scene.SurfaceLibrary, [&scene] { scene.MakeSurfaceNamesUnambiguous(); })}};
}

}  // namespace Pipeline

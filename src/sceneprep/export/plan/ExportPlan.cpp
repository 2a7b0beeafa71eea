#include <sceneprep/export/plan/ExportPlan.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Skeletons.h>

#include <map>
#include <optional>
#include <utility>

namespace Sceneprep
{

namespace
{

using Importing::At;
using Importing::SceneContainer;
using Pipeline::JointNode;
using Pipeline::Skeletons;
using Pipeline::SkinnedMesh;

/// The skeletons of a scene while it is planned. Nodes are numbered as Skeletons numbers them: those of the scene, then
/// the joint nodes.
struct Bones
{
    std::optional<Skeletons> finder;
    std::map<std::pair<int, int>, int> skeletonOf;  // by geometry and node that references it
    std::map<std::vector<int>, int> known;          // skeletons by their joints
    std::vector<bool> isJoint;                      // [nodes of the scene]
};

std::string FileText(const PlanRequest& request, const std::string& name)
{
    return request.fileText ? request.fileText(name) : name;
}

void CountNodeNames(SceneContainer& scene, const PlanRequest& request, ExportPlan& plan)
{
    for (Importing::Node& node : scene.NodeLibrary)
        plan.names.Count(FileText(request, node.GetName()));
}

void AddSkeleton(SceneContainer& scene, const SkinnedMesh& mesh, ExportPlan& plan, Bones& bones)
{
    const auto [entry, isNew] = bones.skeletonOf.emplace(std::pair(mesh.geometry, mesh.node), -1);
    if (!isNew)
        return;
    const std::vector<int> joints = bones.finder->Find(At(scene.GeometryLibrary, mesh.geometry), mesh.node);
    for (const int joint : joints)
    {
        if (Importing::IsValidIndex(joint, bones.isJoint.size()))
            bones.isJoint[static_cast<std::size_t>(joint)] = true;
    }
    const auto [known, isFirst] = bones.known.emplace(joints, static_cast<int>(plan.skeletons.size()));
    if (isFirst)
        plan.skeletons.push_back(joints);
    entry->second = known->second;
}

Bones FindBones(SceneContainer& scene, const PlanRequest& request, ExportPlan& plan)
{
    Bones bones;
    bones.isJoint.assign(scene.NodeLibrary.size(), false);
    if (!request.hasBones)
        return bones;
    for (const SkinnedMesh& mesh : ListSkinnedMeshes(scene, plan.walk))
    {
        if (!request.hasBones(mesh.geometry, mesh.node))
            continue;
        if (!bones.finder)
            bones.finder.emplace(scene, plan.walk);
        AddSkeleton(scene, mesh, plan, bones);
    }
    if (bones.finder && request.countOtherNames)
        request.countOtherNames(plan.names);
    return bones;
}

/// Returns the animation if it has keys, otherwise -1.
int UsableAnimation(const SceneContainer& scene, int animation)
{
    const bool isUsable = Importing::IsValidIndex(animation, scene.AnimationLibrary.size()) &&
                          !scene.AnimationLibrary[static_cast<std::size_t>(animation)].empty();
    return isUsable ? animation : -1;
}

std::vector<PlannedSurface> PlanSurfaces(SceneContainer& scene, const PlanRequest& request, const Bones& bones,
                                         int node)
{
    std::vector<PlannedSurface> surfaces;
    for (const std::int32_t index : At(scene.NodeLibrary, node).SurfaceList)
    {
        const int geometry = At(scene.SurfaceLibrary, index).GetGeometryID();
        if (geometry < 0 || !request.isShown(geometry))
            continue;
        const auto skeleton = bones.skeletonOf.find({geometry, node});
        surfaces.push_back({index, geometry, skeleton == bones.skeletonOf.end() ? -1 : skeleton->second});
    }
    return surfaces;
}

std::string NameOf(SceneContainer& scene, const PlanRequest& request, const Bones& bones, int index, UniqueNames& names)
{
    Importing::Node& node = At(scene.NodeLibrary, index);
    const std::string name = FileText(request, node.GetName());
    const bool isFoundByName = bones.isJoint[static_cast<std::size_t>(index)] ||
                               (request.animatedNodesNeedNames && node.GetAnimationID() >= 0);
    const bool isClear = !name.empty() && names.Uses(name) == 1;
    return isFoundByName && !isClear ? names.Make(name, "animated") : name;
}

void PlanSceneNodes(SceneContainer& scene, const PlanRequest& request, const Bones& bones, ExportPlan& plan)
{
    plan.nodeOf.assign(scene.NodeLibrary.size(), -1);
    plan.nodes.reserve(plan.walk.order.size());
    for (const int index : plan.walk.order)
    {
        Importing::Node& node = At(scene.NodeLibrary, index);
        const int parent = At(plan.walk.parent, index);
        At(plan.nodeOf, index) = static_cast<int>(plan.nodes.size());
        plan.nodes.push_back({.source = index,
                              .parent = parent < 0 ? -1 : At(plan.nodeOf, parent),
                              .name = NameOf(scene, request, bones, index, plan.names),
                              .local = node.GetLocalTransform().GetMatrix(),
                              .animation = UsableAnimation(scene, node.GetAnimationID()),
                              .surfaces = PlanSurfaces(scene, request, bones, index)});
    }
}

/// Plans the joints that are no nodes of the scene, and makes the skeletons refer to planned nodes.
void PlanJoints(SceneContainer& scene, const PlanRequest& request, const Bones& bones, ExportPlan& plan)
{
    if (!bones.finder)
        return;
    std::vector<int> plannedOf = plan.nodeOf;  // by the numbers of Skeletons
    for (const JointNode& joint : bones.finder->JointNodes())
    {
        plannedOf.push_back(static_cast<int>(plan.nodes.size()));
        plan.nodes.push_back({.parent = At(plannedOf, joint.parent),
                              .name = plan.names.Make(FileText(request, joint.name), "joint"),
                              .local = joint.local,
                              .animation = UsableAnimation(scene, joint.animation)});
    }
    for (std::vector<int>& skeleton : plan.skeletons)
    {
        for (int& joint : skeleton)
            joint = At(plannedOf, joint);
    }
}

}  // namespace

ExportPlan MakeExportPlan(SceneContainer& scene, const PlanRequest& request)
{
    ExportPlan plan;
    plan.walk = Pipeline::WalkFromRoot(scene);
    CountNodeNames(scene, request, plan);
    const Bones bones = FindBones(scene, request, plan);
    PlanSceneNodes(scene, request, bones, plan);
    PlanJoints(scene, request, bones, plan);
    return plan;
}

}  // namespace Sceneprep

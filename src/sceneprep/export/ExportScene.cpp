#include <sceneprep/export/ExportScene.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/export/ExportMaterials.h>
#include <sceneprep/export/ExportNames.h>
#include <sceneprep/export/ExportObjects.h>
#include <sceneprep/export/FileMeshes.h>
#include <sceneprep/export/FileNodes.h>
#include <sceneprep/export/MoveInto.h>
#include <sceneprep/export/plan/ExportPlan.h>
#include <sceneprep/model/AnimationTime.h>

#include <algorithm>
#include <utility>

namespace Sceneprep
{

namespace
{

using Importing::At;
using Importing::SceneContainer;

/// Rotates a frame in which y points up into one in which z points up.
const D3DXMATRIX kRotationToZUp = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1};

/// Assimp's scene under construction, and the parts from which it is built.
struct Building
{
    Building(SceneContainer& source, const Textures& textures, const WriteFormat& target)
        : scene(source), format(target), materials(source, textures, target), nodes(target),
          meshes(source, target, materials)
    {}

    SceneContainer& scene;
    const WriteFormat& format;
    MaterialExporter materials;
    FileNodes nodes;
    FileMeshes meshes;
    std::vector<std::unique_ptr<aiCamera>> cameras = {};
    std::vector<std::unique_ptr<aiLight>> lights = {};
    std::vector<std::unique_ptr<aiNodeAnim>> channels = {};
};

ExportPlan PlanFor(SceneContainer& scene, const WriteFormat& format)
{
    PlanRequest request;
    request.isShown = [&](int geometry) { return Pipeline::HasTriangles(At(scene.GeometryLibrary, geometry)); };
    request.fileText = [&](const std::string& name) { return ExportName(name, format); };
    request.animatedNodesNeedNames = true;
    if (format.Holds(Content::Skins))
        request.hasBones = [](int, int) { return true; };
    // Children for surfaces must not be taken for bones.
    request.countOtherNames = [&](UniqueNames& names) {
        for (Importing::Surface& surface : scene.SurfaceLibrary)
            names.Count(ExportName(surface.GetName(), format));
    };
    return MakeExportPlan(scene, request);
}

void BuildFlat(const ExportPlan& plan, Building& building)
{
    SceneContainer& scene = building.scene;
    const std::vector<D3DXMATRIX> matrices = WorldMatricesOf(scene, plan.walk);
    const int root = building.nodes.Add(-1, At(scene.NodeLibrary, plan.walk.order.front()).GetName());
    for (const PlannedNode& node : plan.nodes)
    {
        if (node.source < 0)
            continue;
        const D3DXMATRIX& world = At(matrices, node.source);
        const D3DXMATRIX matrix = building.format.IsZUp() ? Pipeline::Product(world, kRotationToZUp) : world;
        for (const PlannedSurface& surface : node.surfaces)
        {
            const std::string name = At(scene.SurfaceLibrary, surface.surface).GetName();
            for (const unsigned mesh : building.meshes.AddBaked(surface, matrix))
                building.nodes.SetMesh(building.nodes.Add(root, name), mesh);
        }
    }
}

/// Adds the planned nodes and their animations.
/// Adds the planned nodes, and returns [planned nodes] their indices in the file.
std::vector<int> AddNodes(const ExportPlan& plan, Building& building)
{
    const int top = building.format.LosesRoot() ? building.nodes.Add(-1, "") : -1;
    std::vector<int> added;
    added.reserve(plan.nodes.size());
    for (const PlannedNode& node : plan.nodes)
    {
        const int parent = node.parent < 0 ? top : At(added, node.parent);
        added.push_back(building.nodes.Add(parent, node.name, FromMatrix(node.local)));
        if (node.animation >= 0)
            building.channels.push_back(ConvertAnimation(At(building.scene.AnimationLibrary, node.animation),
                                                         building.nodes.NameOf(added.back())));
    }
    return added;
}

std::vector<std::string> BoneNames(const ExportPlan& plan, int skeleton, const std::vector<int>& added,
                                   const Building& building)
{
    std::vector<std::string> names;
    if (skeleton < 0)
        return names;
    for (const int joint : At(plan.skeletons, skeleton))
        names.push_back(building.nodes.NameOf(At(added, joint)));
    return names;
}

void AddSurfaces(const ExportPlan& plan, const PlannedNode& node, int target, const std::vector<int>& added,
                 Building& building)
{
    for (const PlannedSurface& surface : node.surfaces)
    {
        const std::string name = At(building.scene.SurfaceLibrary, surface.surface).GetName();
        const int place = node.surfaces.size() == 1 ? target : building.nodes.Add(target, name);
        building.nodes.SetMesh(place,
                               building.meshes.FindShared(surface, BoneNames(plan, surface.skeleton, added, building)));
    }
}

/// Files tie cameras and lights to nodes by name, so these need unique names.
void AddCamerasAndLights(const PlannedNode& node, int target, UniqueNames& names, Building& building)
{
    SceneContainer& scene = building.scene;
    Importing::Node& source = At(scene.NodeLibrary, node.source);
    const std::string targetName = building.nodes.NameOf(target);
    const bool isOnlyOne =
        source.CameraList.size() + source.LightList.size() == 1 && !targetName.empty() && names.Uses(targetName) == 1;
    const auto placeFor = [&](const std::string& name, const char* otherwise) -> std::string {
        if (isOnlyOne)
            return std::string(targetName);
        const std::string unique = names.Make(ExportName(name, building.format), otherwise);
        return building.nodes.NameOf(building.nodes.Add(target, unique));
    };
    for (const std::int32_t index : source.CameraList)
    {
        Importing::Camera& camera = At(scene.CameraLibrary, index);
        building.cameras.push_back(ConvertCamera(camera, placeFor(camera.GetName(), "camera")));
    }
    for (const std::int32_t index : source.LightList)
    {
        Importing::Light& light = At(scene.LightLibrary, index);
        building.lights.push_back(ConvertLight(light, placeFor(light.GetName(), "light")));
    }
}

void BuildHierarchy(ExportPlan& plan, Building& building)
{
    const std::vector<int> added = AddNodes(plan, building);
    const bool holdsObjects = building.format.Holds(Content::Cameras) || building.format.Holds(Content::Lights);
    for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    {
        const PlannedNode& node = plan.nodes[i];
        AddSurfaces(plan, node, added[i], added, building);
        if (holdsObjects && node.source >= 0)
            AddCamerasAndLights(node, added[i], plan.names, building);
    }
}

void AddAnimation(std::vector<std::unique_ptr<aiNodeAnim>>& channels, aiScene& target)
{
    if (channels.empty())
        return;
    std::vector<std::unique_ptr<aiAnimation>> animations;
    aiAnimation& animation = *animations.emplace_back(std::make_unique<aiAnimation>());
    animation.mTicksPerSecond = kTicksPerSecond;
    animation.mDuration = 0;
    for (const std::unique_ptr<aiNodeAnim>& channel : channels)
        animation.mDuration =
            std::max(animation.mDuration, channel->mPositionKeys[channel->mNumPositionKeys - 1].mTime);
    MoveInto(channels, animation.mChannels, animation.mNumChannels);
    MoveInto(animations, target.mAnimations, target.mNumAnimations);
}

std::unique_ptr<aiScene> Assemble(Building& building, const Textures& textures)
{
    auto target = std::make_unique<aiScene>();
    building.meshes.MoveTo(*target);
    building.materials.MoveTo(*target);
    MoveInto(building.cameras, target->mCameras, target->mNumCameras);
    MoveInto(building.lights, target->mLights, target->mNumLights);
    ExportEmbeddedTextures(textures, *target);
    AddAnimation(building.channels, *target);
    building.nodes.MoveTo(*target);
    return target;
}

}  // namespace

bool IsWrittenFlat(SceneContainer& scene, const WriteFormat& format)
{
    if (format.IsFlat() || format.HoldsShear())
        return format.IsFlat();
    const Pipeline::NodeWalk walk = Pipeline::WalkFromRoot(scene);
    return std::any_of(walk.order.begin(), walk.order.end(), [&](int node) {
        return !Pipeline::IsShearFree(At(scene.NodeLibrary, node).GetLocalTransform().GetMatrix());
    });
}

std::unique_ptr<aiScene> BuildExportScene(SceneContainer& scene, const Textures& textures, const WriteFormat& format)
{
    ExportPlan plan = PlanFor(scene, format);
    Building building(scene, textures, format);
    if (plan.nodes.empty())
        building.nodes.Add(-1, scene.GetName());
    else if (IsWrittenFlat(scene, format))
        BuildFlat(plan, building);
    else
        BuildHierarchy(plan, building);
    return Assemble(building, textures);
}

}  // namespace Sceneprep

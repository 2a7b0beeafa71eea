#include <sceneprep/export/gltf/BuildModel.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/export/gltf/Clips.h>
#include <sceneprep/export/gltf/DroppedObjects.h>
#include <sceneprep/export/gltf/GpuInstances.h>
#include <sceneprep/model/ExtensionReferences.h>

#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;
using Importing::SceneContainer;

std::size_t CountSurfaces(const ExportPlan& plan)
{
    std::size_t count = 0;
    for (const PlannedNode& node : plan.nodes)
        count += node.surfaces.size();
    return count;
}

/// Names that child nodes may get.
void CountOtherNames(SceneContainer& scene, UniqueNames& names)
{
    for (Importing::Surface& surface : scene.SurfaceLibrary)
        names.Count(surface.GetName());
    for (Importing::Camera& camera : scene.CameraLibrary)
        names.Count(camera.GetName());
    for (Importing::Light& light : scene.LightLibrary)
        names.Count(light.GetName());
}

ExportPlan PlanFor(const Model& model, MeshWriter& meshes, const KeptSkins& kept)
{
    const auto isShown = [&](int geometry) { return meshes.Find(geometry) != nullptr; };
    const auto hasBones = [&](int geometry, int node) {
        return isShown(geometry) && meshes.Find(geometry)->isSkinned && kept.Find(geometry, node) < 0;
    };
    const auto countOtherNames = [&](UniqueNames& names) { CountOtherNames(*model.scene, names); };
    return MakeExportPlan(*model.scene, {.isShown = isShown, .hasBones = hasBones, .countOtherNames = countOtherNames});
}

/// Sets what describes the whole document.
void SetFrame(const Model& model, const ExportPlan& plan, const WrittenNodes& nodes, Document& document)
{
    document.asset = model.carried.asset;
    for (const char* key : {"version", "generator", "minVersion"})
        document.asset.erase(key);
    document.asset["version"] = "2.0";
    document.asset["generator"] = "sceneprep";
    document.extras = model.carried.extras;
    document.requiredExtensions.insert(model.carried.required.begin(), model.carried.required.end());
    if (plan.nodes.empty())
        return;
    document.scene = model.carried.scene;
    if (model.carried.nodes.empty() && !model.scene->GetName().empty())
        document.scene["name"] = model.scene->GetName();
    for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    {
        const int parent = plan.nodes[i].parent;
        if (parent < 0 ? nodes.outer[i] >= 0 : At(nodes.outer, parent) < 0)
            document.scene["nodes"].push_back(nodes.outer[i]);
    }
}

/// Writes the bytes that extensions of the document refer to, and makes them refer to the views of these.
void SetExtensions(const Carried& carried, Buffers& buffers, Document& document)
{
    document.extensions = carried.extensions;
    VisitBufferViewReferences(document.extensions, [&](Json& view) {
        const std::vector<std::uint8_t>& bytes = At(carried.blobs, view.get<int>());
        view = buffers.AddView(bytes.data(), bytes.size(), Usage::Other);
    });
}

void AddUnplaced(std::size_t count, Notes& notes)
{
    if (count > 0)
        notes.Add(fmt::format("nodes with a NaN or infinite matrix are placed where their parents are ({})", count));
}

}  // namespace

BuiltFiles BuildModel(const Model& model, const WriteOptions& options, Buffers& buffers, Document& document,
                      const Pipeline::PartListener& listener)
{
    const AnimatedKeys animated = FindAnimatedKeys(model.carried);
    MeshWriter meshes(model, buffers, document);
    const KeptSkins kept(model, Pipeline::WalkFromRoot(*model.scene));
    ExportPlan plan = PlanFor(model, meshes, kept);
    const std::vector<InstanceGroup> instances =
        options.gpuInstancing ? JoinInstances(model, meshes, animated, plan) : std::vector<InstanceGroup>();

    AnimationWriter animations(buffers, document);
    const WrittenNodes nodes = WriteNodes(model, plan, animated, animations, document);

    ImageWriter images(options, buffers, document);
    TextureWriter textures(model, images, document);
    MaterialWriter materials(model, textures, document, animated.materials);
    CarriedAccessorList accessors(model.carried, buffers, document);
    SkinWriter skins(model, plan, buffers, document);
    NodeMeshWriter nodeMeshes(model, meshes, materials, skins, kept, accessors, document);
    NodeObjectWriter objects(model, document);
    Pipeline::PartCounter counter(listener, CountSurfaces(plan));
    for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    {
        if (nodes.outer[i] < 0 || plan.nodes[i].source < 0)
            continue;
        nodeMeshes.Write(plan, i, nodes);
        objects.Write(plan.nodes[i].source, nodes.inner[i]);
        counter.Add(plan.nodes[i].surfaces.size());
    }

    WriteInstances(instances, nodes, buffers, document);

    BuiltFiles built;
    const ClipTargets targets = {nodes, materials, nodeMeshes, objects};
    ClipWriter(model.carried, targets, accessors, document).Write(built.notes);
    animations.Finish();
    SetFrame(model, plan, nodes, document);
    SetExtensions(model.carried, buffers, document);

    meshes.Mended().AddNotes(built.notes);
    AddUnplaced(nodes.unplaced + objects.Unplaced(), built.notes);
    objects.AddNotes(built.notes);
    AddDroppedObjects(model, nodes, nodeMeshes, built.notes);
    materials.AddNotes(built.notes);
    images.AddNotes(built.notes);
    built.companions = images.Companions();
    built.copies = images.Copies();
    return built;
}

}  // namespace Sceneprep::Gltf

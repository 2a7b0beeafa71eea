#include <sceneprep/export/gltf/NodeMeshes.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/assimp/SurfaceExtras.h>
#include <sceneprep/model/ExtensionReferences.h>

#include <algorithm>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Surface;

void SetExtra(const char* key, Json value, Json& object)
{
    if (!object.contains("extras") || object["extras"].is_object())
        object["extras"][key] = std::move(value);
}

}  // namespace

void NodeMeshWriter::Write(const ExportPlan& plan, std::size_t planned, const WrittenNodes& nodes)
{
    const PlannedNode& node = plan.nodes[planned];
    const int target = nodes.inner[planned];
    const std::vector<Group> groups = GroupsOf(node, nodes);
    for (const Group& group : groups)
    {
        const bool isFirst = &group == &groups.front();
        const std::string name =
            isFirst ? std::string() : At(model_.scene->SurfaceLibrary, group.surfaces.front().surface).GetName();
        const int place = isFirst ? target : AppendChild(target, name, document_);
        Json& object = EntryAt(document_.nodes, place);
        object["mesh"] = FindMesh(group);
        if (group.surfaces.size() == 1)
            SetSurfaceExtras(group.surfaces.front(), object);
        if (group.skin >= 0)
            object["skin"] = group.skin;
    }
    // Weights belong to the node that has the morph targets.
    const int outer = nodes.outer[planned];
    const bool hasTargets = !groups.empty() && groups.front().hasTargets;
    if (outer < 0 || !EntryAt(document_.nodes, outer).contains("weights") || (hasTargets && target == outer))
        return;
    if (hasTargets)
        EntryAt(document_.nodes, target)["weights"] = EntryAt(document_.nodes, outer)["weights"];
    EntryAt(document_.nodes, outer).erase("weights");
}

int NodeMeshWriter::FindCarried(int key) const
{
    const auto found = carried_.find(key);
    return found == carried_.end() ? -1 : found->second;
}

/// Groups with morph targets come first: animations of weights refer to the node itself.
std::vector<NodeMeshWriter::Group> NodeMeshWriter::GroupsOf(const PlannedNode& node, const WrittenNodes& nodes)
{
    std::vector<Group> groups;
    std::map<std::pair<int, int>, std::size_t> groupOf;  // by skin and mesh
    for (const PlannedSurface& surface : node.surfaces)
    {
        const int skin = SkinOf(surface, node.source, nodes);
        const int mesh = OwnMeshOf(surface.geometry);
        const auto [found, isNew] = groupOf.emplace(std::pair(skin, mesh), groups.size());
        if (isNew)
            groups.push_back({.skin = skin, .mesh = mesh});
        Group& group = groups[found->second];
        group.surfaces.push_back(surface);
        group.hasTargets = group.hasTargets || !meshes_.Find(surface.geometry)->targets.empty();
    }
    std::stable_partition(groups.begin(), groups.end(), [](const Group& group) { return group.hasTargets; });
    return groups;
}

int NodeMeshWriter::SkinOf(const PlannedSurface& surface, int node, const WrittenNodes& nodes)
{
    if (!meshes_.Find(surface.geometry)->isSkinned)
        return -1;
    if (const int kept = kept_.Find(surface.geometry, node); kept >= 0)
        return skins_.AddKept(kept, nodes);
    return surface.skeleton < 0 ? -1 : skins_.AddMade(surface.geometry, surface.skeleton, nodes);
}

int NodeMeshWriter::OwnMeshOf(int geometry) const
{
    const CarriedMesh* carried = CarriedMeshOf(model_, geometry);
    if (carried == nullptr || !Importing::IsValidIndex(carried->mesh, model_.carried.meshes.size()))
        return -1;
    const Json& object = At(model_.carried.meshes, carried->mesh);
    const bool isMore = object.contains("weights") || object.contains("extras") || object.contains("extensions") ||
                        (carried->primitive && !carried->primitive->targets.empty());
    return isMore ? carried->mesh : -1;
}

/// Meshes with the same primitives become one mesh with the name of the first one.
int NodeMeshWriter::FindMesh(const Group& group)
{
    Json primitives = Json::array();
    for (const PlannedSurface& surface : group.surfaces)
    {
        Json& primitive = primitives.emplace_back(MakePrimitive(surface));
        if (group.surfaces.size() > 1)
            SetSurfaceExtras(surface, primitive);
    }
    const auto [found, isNew] =
        known_.emplace(fmt::format("{}|{}", group.mesh, TextOf(primitives)), static_cast<int>(document_.meshes.size()));
    if (isNew)
        document_.meshes.push_back(MakeMesh(group, std::move(primitives)));
    if (group.mesh >= 0)
        carried_.emplace(group.mesh, found->second);
    return found->second;
}

Json NodeMeshWriter::MakeMesh(const Group& group, Json primitives)
{
    Json mesh = group.mesh >= 0 ? At(model_.carried.meshes, group.mesh) : Json::object();
    ReindexAccessors(mesh);
    const std::string name = NameOf(group.surfaces.front());
    if (!name.empty())
        mesh["name"] = name;
    mesh["primitives"] = std::move(primitives);
    return mesh;
}

Json NodeMeshWriter::MakePrimitive(const PlannedSurface& planned)
{
    const MeshArrays& arrays = *meshes_.Find(planned.geometry);
    Surface& surface = At(model_.scene->SurfaceLibrary, planned.surface);
    const PrimitiveLook& look = materials_.Find(surface, arrays.CountTexCoords());
    Json primitive = look.primitive;
    ReindexAccessors(primitive);
    primitive["attributes"] = arrays.attributes;
    if (arrays.indices >= 0)
        primitive["indices"] = arrays.indices;
    if (look.material >= 0)
        primitive["material"] = look.material;
    if (arrays.mode != 4)
        primitive["mode"] = arrays.mode;
    if (!arrays.targets.empty())
        primitive["targets"] = arrays.targets;
    return primitive;
}

/// Writes the accessors that extensions of a mesh or primitive refer to, and renumbers the references.
void NodeMeshWriter::ReindexAccessors(Json& object)
{
    if (object.contains("extensions"))
        VisitAccessorReferences(object["extensions"],
                                [this](Json& accessor) { accessor = accessors_.Find(accessor.get<int>()); });
}

/// Sets the extras of a surface: in the node if it references nothing else, so that nodes can share the mesh, otherwise
/// in the primitive.
void NodeMeshWriter::SetSurfaceExtras(const PlannedSurface& planned, Json& object)
{
    Surface& surface = At(model_.scene->SurfaceLibrary, planned.surface);
    const std::string name = surface.GetName();
    if (planned.isNamed && !name.empty() && name != At(model_.scene->GeometryLibrary, planned.geometry).GetName())
        SetExtra(kSurfaceNameExtra, name, object);
    if (surface.GetCollisionOffset() != 0)
        SetExtra(kCollisionOffsetExtra, surface.GetCollisionOffset(), object);
}

std::string NodeMeshWriter::NameOf(const PlannedSurface& planned) const
{
    const std::string name = At(model_.scene->GeometryLibrary, planned.geometry).GetName();
    return name.empty() ? At(model_.scene->SurfaceLibrary, planned.surface).GetName() : name;
}

}  // namespace Sceneprep::Gltf

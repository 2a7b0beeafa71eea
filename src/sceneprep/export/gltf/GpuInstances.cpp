// Nodes are grouped by a text that holds their parent and everything that their surfaces have. The plan is compacted
// afterwards, so that the writers of nodes and meshes see only the nodes that remain.

#include <sceneprep/export/gltf/GpuInstances.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;

constexpr const char* kInstancing = "EXT_mesh_gpu_instancing";

/// Returns the transform of a node in three parts; none if these do not make up its matrix.
std::optional<Parts> ExactPartsOf(const D3DXMATRIX& matrix)
{
    constexpr float kTolerance = 2e-6F;
    if (!IsFinite(matrix) || Pipeline::IsMirroring(matrix))
        return std::nullopt;
    const Parts parts = SplitShearFree(matrix);
    D3DXMATRIX made;
    D3DXMatrixTransformation(&made, nullptr, nullptr, &parts.scale, nullptr, &parts.rotation, &parts.translation);
    for (unsigned row = 0; row < 3; ++row)
    {
        const float length = std::hypot(matrix(row, 0), matrix(row, 1), matrix(row, 2));
        for (unsigned column = 0; column < 3; ++column)
        {
            if (!(std::fabs(made(row, column) - matrix(row, column)) <= kTolerance * length))
                return std::nullopt;
        }
    }
    return parts;
}

bool HasMore(const CarriedNode& carried)
{
    return carried.object.contains("extras") || carried.object.contains("extensions") ||
           carried.object.contains("weights");
}

/// Returns whether a node shows meshes and nothing else. Its children are not asked.
bool ShowsMeshesOnly(const Model& model, const AnimatedKeys& animated, const PlannedNode& planned)
{
    if (planned.source < 0 || planned.parent < 0 || planned.animation >= 0 || planned.surfaces.empty())
        return false;
    Importing::Node& node = At(model.scene->NodeLibrary, planned.source);
    const CarriedNode* carried = CarriedNodeOf(model, planned.source);
    return node.CameraList.empty() && node.LightList.empty() && node.GetNote().empty() &&
           !Pipeline::IsKept(model.supplement, static_cast<std::size_t>(planned.source)) &&
           !animated.nodes.contains(KeyAt(model.supplement.nodeKeys, planned.source)) &&
           (carried == nullptr || !HasMore(*carried));
}

/// Returns whether the surfaces of a node are one mesh of the file, without joints and morph targets.
bool IsOnePlainMesh(const Model& model, MeshWriter& meshes, const PlannedNode& planned)
{
    const auto meshOf = [&model](int geometry) {
        const CarriedMesh* carried = CarriedMeshOf(model, geometry);
        return carried == nullptr ? -1 : carried->mesh;
    };
    return std::all_of(planned.surfaces.begin(), planned.surfaces.end(), [&](const PlannedSurface& surface) {
        const MeshArrays& arrays = *meshes.Find(surface.geometry);
        return !arrays.isSkinned && arrays.targets.empty() &&
               meshOf(surface.geometry) == meshOf(planned.surfaces.front().geometry);
    });
}

std::string KeyOf(const Model& model, const PlannedNode& planned)
{
    std::string key = std::to_string(planned.parent);
    for (const PlannedSurface& shown : planned.surfaces)
    {
        Importing::Surface& surface = At(model.scene->SurfaceLibrary, shown.surface);
        key += fmt::format("|{} {} {}", shown.geometry, surface.GetMaterialID(), surface.GetCollisionOffset());
        for (Importing::Map& map : surface.MapList)
            key += fmt::format(" {}", map.GetHash());
    }
    return key;
}

std::vector<bool> FindParents(const ExportPlan& plan)
{
    std::vector<bool> isParent(plan.nodes.size(), false);
    for (const PlannedNode& node : plan.nodes)
    {
        if (node.parent >= 0)
            isParent[static_cast<std::size_t>(node.parent)] = true;
    }
    for (const std::vector<int>& skeleton : plan.skeletons)
    {
        for (const int joint : skeleton)
            isParent[static_cast<std::size_t>(joint)] = true;  // a joint has to stay as well
    }
    return isParent;
}

/// A group while it is collected: all of its planned nodes.
struct Members
{
    std::vector<std::size_t> nodes;
    std::vector<Parts> transforms;
};

std::vector<Members> FindMembers(const Model& model, MeshWriter& meshes, const AnimatedKeys& animated,
                                 const ExportPlan& plan)
{
    std::vector<Members> groups;
    std::unordered_map<std::string, std::size_t> groupOf;
    const std::vector<bool> isParent = FindParents(plan);
    for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    {
        const PlannedNode& node = plan.nodes[i];
        if (isParent[i] || !ShowsMeshesOnly(model, animated, node) || !IsOnePlainMesh(model, meshes, node))
            continue;
        const std::optional<Parts> parts = ExactPartsOf(node.local);
        if (!parts)
            continue;
        const auto [found, isNew] = groupOf.emplace(KeyOf(model, node), groups.size());
        if (isNew)
            groups.emplace_back();
        groups[found->second].nodes.push_back(i);
        groups[found->second].transforms.push_back(*parts);
    }
    std::erase_if(groups, [](const Members& group) { return group.nodes.size() < 2; });
    return groups;
}

/// Unnames the surfaces of the first node of a group that have other names in other nodes.
void DropDifferentNames(const Model& model, const Members& group, ExportPlan& plan)
{
    std::vector<PlannedSurface>& surfaces = plan.nodes[group.nodes.front()].surfaces;
    const auto nameOf = [&](std::size_t node, std::size_t surface) {
        return At(model.scene->SurfaceLibrary, plan.nodes[node].surfaces[surface].surface).GetName();
    };
    for (std::size_t surface = 0; surface < surfaces.size(); ++surface)
    {
        const std::string name = nameOf(group.nodes.front(), surface);
        surfaces[surface].isNamed = std::all_of(group.nodes.begin(), group.nodes.end(),
                                                [&](std::size_t node) { return nameOf(node, surface) == name; });
    }
}

/// Removes planned nodes without children, and renumbers the others.
/// @return [planned nodes before] their new index; -1 for removed ones.
std::vector<int> RemoveNodes(const std::vector<bool>& isRemoved, ExportPlan& plan)
{
    std::vector<int> newIndex(plan.nodes.size(), -1);
    std::vector<PlannedNode> nodes;
    for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    {
        if (isRemoved[i])
            continue;
        newIndex[i] = static_cast<int>(nodes.size());
        nodes.push_back(std::move(plan.nodes[i]));
        int& parent = nodes.back().parent;
        parent = parent < 0 ? -1 : At(newIndex, parent);
    }
    plan.nodes = std::move(nodes);
    const auto renumber = [&newIndex](int& node) { node = node < 0 ? -1 : At(newIndex, node); };
    std::for_each(plan.nodeOf.begin(), plan.nodeOf.end(), renumber);
    for (std::vector<int>& skeleton : plan.skeletons)
        std::for_each(skeleton.begin(), skeleton.end(), renumber);
    return newIndex;
}

D3DXQUATERNION UnitRotation(const D3DXQUATERNION& q)
{
    const double length = std::hypot(std::hypot(q.x, q.y), std::hypot(q.z, q.w));
    return {static_cast<float>(q.x / length), static_cast<float>(q.y / length), static_cast<float>(q.z / length),
            static_cast<float>(q.w / length)};
}

int AddVectors(const std::vector<D3DXVECTOR3>& vectors, Buffers& buffers)
{
    return buffers.Add(vectors, {"VEC3"}, Usage::Other);
}

/// Returns the attributes of the extension. Rotations and scales are skipped where no instance has one.
Json WriteTransforms(const std::vector<Parts>& transforms, Buffers& buffers)
{
    std::vector<D3DXVECTOR3> translations;
    std::vector<D3DXVECTOR3> scales;
    std::vector<D3DXQUATERNION> rotations;
    bool isRotated = false;
    bool isScaled = false;
    for (const Parts& parts : transforms)
    {
        const D3DXQUATERNION rotation = UnitRotation(parts.rotation);
        translations.push_back(parts.translation);
        scales.push_back(parts.scale);
        rotations.push_back(rotation);
        isRotated = isRotated || rotation.x != 0 || rotation.y != 0 || rotation.z != 0;
        isScaled = isScaled || parts.scale.x != 1 || parts.scale.y != 1 || parts.scale.z != 1;
    }
    Json attributes = {{"TRANSLATION", AddVectors(translations, buffers)}};
    if (isRotated)
        attributes["ROTATION"] = buffers.Add(rotations, {"VEC4"}, Usage::Other);
    if (isScaled)
        attributes["SCALE"] = AddVectors(scales, buffers);
    return attributes;
}

}  // namespace

std::vector<InstanceGroup> JoinInstances(const Model& model, MeshWriter& meshes, const AnimatedKeys& animated,
                                         ExportPlan& plan)
{
    std::vector<Members> members = FindMembers(model, meshes, animated, plan);
    std::vector<bool> isRemoved(plan.nodes.size(), false);
    for (const Members& group : members)
    {
        for (const std::size_t node : group.nodes)
            isRemoved[node] = node != group.nodes.front();
        D3DXMatrixIdentity(&plan.nodes[group.nodes.front()].local);
        DropDifferentNames(model, group, plan);
    }
    const std::vector<int> newIndex = RemoveNodes(isRemoved, plan);
    std::vector<InstanceGroup> groups;
    groups.reserve(members.size());
    for (Members& group : members)
        groups.push_back({newIndex[group.nodes.front()], std::move(group.transforms)});
    return groups;
}

void WriteInstances(const std::vector<InstanceGroup>& groups, const WrittenNodes& nodes, Buffers& buffers,
                    Document& document)
{
    if (!groups.empty())
        document.requiredExtensions.insert(kInstancing);
    for (const InstanceGroup& group : groups)
        EntryAt(document.nodes, At(nodes.inner, group.node))["extensions"][kInstancing] = {
            {"attributes", WriteTransforms(group.transforms, buffers)}};
}

}  // namespace Sceneprep::Gltf

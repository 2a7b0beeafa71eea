#include <sceneprep/export/gltf/Nodes.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/export/gltf/Placement.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;

/// A child that a sheared node needs.
struct Shear
{
    std::size_t planned;
    D3DXQUATERNION rotation;
};

/// Returns whether all bits are equal, those of zeros and NaN included.
bool IsSameMatrix(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    using Bits = std::array<std::uint32_t, 16>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

/// Returns what the node keeps of the input.
Json KeptObject(const CarriedNode* carried)
{
    if (carried == nullptr)
        return Json::object();
    Json object = carried->object;
    for (const char* key : {"children", "mesh", "skin", "camera"})
        object.erase(key);
    if (object.contains("extensions"))
    {
        object["extensions"].erase("KHR_lights_punctual");
        object["extensions"].erase("EXT_mesh_gpu_instancing");
        if (object["extensions"].empty())
            object.erase("extensions");
    }
    return object;
}

void SetNote(const std::string& note, Json& node)
{
    if (!note.empty() && (!node.contains("extras") || node["extras"].is_object()))
        node["extras"]["note"] = note;
}

Json NamedNode(const PlannedNode& planned, const CarriedNode* carried)
{
    Json kept = KeptObject(carried);
    if (planned.name.empty())
        return kept;
    Json node = {{"name", planned.name}};
    kept.erase("name");
    node.update(kept);
    return node;
}

/// Sets the transform, unless the node still has the one that it came with.
/// @return the rotation of the child that the node needs; none without shear.
std::optional<D3DXQUATERNION> SetTransform(const PlannedNode& planned, const CarriedNode* carried, bool isAnimated,
                                           Json& node)
{
    const bool isKept = carried != nullptr && IsSameMatrix(carried->local, planned.local);
    if (isKept && !(isAnimated && node.contains("matrix")))
        return std::nullopt;
    for (const char* key : {"matrix", "translation", "rotation", "scale"})
        node.erase(key);
    if (!isAnimated)
        return Place(planned.local, node);
    // The format does not allow matrices of animated nodes.
    if (IsFinite(planned.local))
        SetParts(SplitShearFree(planned.local), node);
    return std::nullopt;
}

/// Returns whether two nodes of a list are below different children of the root.
bool DivergeAtRoot(const std::vector<int>& nodes, const std::vector<int>& branches)
{
    return std::any_of(nodes.begin(), nodes.end(),
                       [&](int node) { return At(branches, node) != At(branches, nodes.front()); });
}

/// Returns whether the joints of a skin have only the root in common: the format demands a common node.
bool JoinsJoints(const Model& model, const ExportPlan& plan)
{
    std::vector<int> branches;  // [planned nodes] the child of the root at or above each
    std::unordered_map<int, int> plannedOfKey;
    for (const PlannedNode& node : plan.nodes)
    {
        const int index = static_cast<int>(branches.size());
        branches.push_back(node.parent <= 0 ? index : At(branches, node.parent));
        plannedOfKey.emplace(KeyAt(model.supplement.nodeKeys, node.source), index);
    }
    for (const CarriedSkin& skin : model.carried.skins)
    {
        std::vector<int> joints;
        for (const int joint : skin.joints)
        {
            if (const auto found = plannedOfKey.find(joint); joint >= 0 && found != plannedOfKey.end())
                joints.push_back(found->second);
        }
        if (DivergeAtRoot(joints, branches))
            return true;
    }
    return std::any_of(plan.skeletons.begin(), plan.skeletons.end(),
                       [&](const std::vector<int>& joints) { return DivergeAtRoot(joints, branches); });
}

bool IsOmitted(const Model& model, const ExportPlan& plan)
{
    const PlannedNode& root = plan.nodes.front();
    if (!model.carried.hasMadeRoot || root.source < 0 || root.animation >= 0 || !root.surfaces.empty() ||
        KeyAt(model.supplement.nodeKeys, root.source) >= 0)
        return false;
    Importing::Node& node = At(model.scene->NodeLibrary, root.source);
    return node.CameraList.empty() && node.LightList.empty() && node.GetNote().empty() && !node.ChildList.empty() &&
           Pipeline::IsIdentity(root.local) && !JoinsJoints(model, plan);
}

/// Adds the child that rotates first. The name stays with the node that is a joint.
void AddInnerNode(const PlannedNode& planned, const Shear& shear, WrittenNodes& written, Document& document)
{
    const int outer = written.outer[shear.planned];
    const bool isMadeJoint = planned.source < 0;
    const int inner = AppendChild(outer, isMadeJoint ? planned.name : planned.name + " (rotated)", document);
    SetRotation(shear.rotation, EntryAt(document.nodes, inner));
    if (isMadeJoint)
        EntryAt(document.nodes, outer)["name"] = planned.name + " (sheared)";
    written.inner[shear.planned] = inner;
}

void LinkChildren(const ExportPlan& plan, const WrittenNodes& written, Document& document)
{
    for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    {
        const int parent = plan.nodes[i].parent;
        const int carrier = parent < 0 ? -1 : At(written.inner, parent);
        if (carrier >= 0)
            EntryAt(document.nodes, carrier)["children"].push_back(written.outer[i]);
    }
}

}  // namespace

int WrittenNodes::OuterOf(int key) const
{
    const auto found = plannedOfKey.find(key);
    return found == plannedOfKey.end() ? -1 : At(outer, found->second);
}

int WrittenNodes::InnerOf(int key) const
{
    const auto found = plannedOfKey.find(key);
    return found == plannedOfKey.end() ? -1 : At(inner, found->second);
}

int AppendChild(int parent, const std::string& name, Document& document)
{
    Json child = Json::object();
    if (!name.empty())
        child["name"] = name;
    const int index = Append(document.nodes, std::move(child));
    EntryAt(document.nodes, parent)["children"].push_back(index);
    return index;
}

WrittenNodes WriteNodes(const Model& model, const ExportPlan& plan, const AnimatedKeys& animated,
                        AnimationWriter& animations, Document& document)
{
    WrittenNodes written;
    std::vector<Shear> shears;
    for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    {
        const PlannedNode& planned = plan.nodes[i];
        if (i == 0 && IsOmitted(model, plan))
        {
            written.outer.push_back(-1);
            continue;
        }
        const int key = KeyAt(model.supplement.nodeKeys, planned.source);
        const CarriedNode* carried = CarriedNodeOf(model, planned.source);
        const bool hasClips = key >= 0 && animated.nodes.contains(key);
        const bool hasKeys = planned.animation >= 0 && !hasClips;
        Json node = NamedNode(planned, carried);
        if (planned.source >= 0)
            SetNote(At(model.scene->NodeLibrary, planned.source).GetNote(), node);
        if (const auto rotation = SetTransform(planned, carried, hasClips || hasKeys, node))
            shears.push_back({i, *rotation});
        written.unplaced += IsFinite(planned.local) ? 0 : 1;
        written.outer.push_back(Append(document.nodes, std::move(node)));
        if (key >= 0)
            written.plannedOfKey.emplace(key, static_cast<int>(i));
        if (hasKeys)
            animations.Add(At(model.scene->AnimationLibrary, planned.animation), written.outer.back());
    }
    written.inner = written.outer;
    for (const Shear& shear : shears)
        AddInnerNode(plan.nodes[shear.planned], shear, written, document);
    LinkChildren(plan, written, document);
    return written;
}

}  // namespace Sceneprep::Gltf

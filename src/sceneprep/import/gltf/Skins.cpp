#include <sceneprep/import/gltf/Skins.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/model/SkinPlacement.h>

#include <cstring>
#include <string>
#include <utility>

namespace Sceneprep::GltfImport
{

namespace
{

using Importing::At;

CarriedSkin ReadSkin(const Field& skin, std::size_t nodeCount, Accessors& accessors)
{
    CarriedSkin carried;
    carried.object = skin.Get();
    for (const char* key : {"joints", "skeleton", "inverseBindMatrices"})
        Take(carried.object, key);
    const Field joints = skin.Member("joints");
    for (std::size_t i = 0; i < joints.Size(); ++i)
        carried.joints.push_back(joints.Element(i).IndexBelow(nodeCount));
    carried.skeleton = skin.IndexOrNone("skeleton", nodeCount);
    const std::optional<Field> matrices = skin.Find("inverseBindMatrices");
    if (!matrices)
        return carried;
    const Accessor accessor = accessors.Get(*matrices, {"MAT4"});
    if (accessor.elements.component != Component::Float)
        matrices->Fail("the matrices are not floats");
    if (accessor.elements.count < carried.joints.size())
        matrices->Fail(fmt::format("{} elements, {} expected", accessor.elements.count, carried.joints.size()));
    carried.inverseBindMatrices = accessors.Carry(accessor);
    return carried;
}

D3DXMATRIX BindPoseInverse(const CarriedSkin& skin, std::size_t joint)
{
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    if (skin.inverseBindMatrices)
        std::memcpy(&matrix, skin.inverseBindMatrices->bytes.data() + joint * sizeof(matrix), sizeof(matrix));
    return matrix;
}

/// Joints outside of the scene that was read have no node.
std::vector<Bone> BonesOf(const CarriedSkin& skin, const SceneNodes& nodes, Importing::SceneContainer& scene)
{
    std::vector<Bone> bones;
    bones.reserve(skin.joints.size());
    for (std::size_t j = 0; j < skin.joints.size(); ++j)
    {
        const int node = At(nodes.nodeOf, skin.joints[j]);
        const std::string name = node < 0 ? std::string() : At(scene.NodeLibrary, node).GetName();
        bones.push_back({name, BindPoseInverse(skin, j), node});
    }
    return bones;
}

/// Makes the channels that change the weights of a node change those of another node, which has its mesh now.
void RedirectWeights(int from, int to, Carried& carried)
{
    const std::string pointer = fmt::format("/nodes/{}/weights", from);
    for (CarriedClip& clip : carried.clips)
    {
        for (CarriedChannel& channel : clip.channels)
        {
            if (channel.path == "weights" && channel.node == from)
                channel.node = to;
            if (channel.path == "pointer" && channel.pointer.starts_with(pointer))
            {
                channel.pointer = fmt::format("/nodes/{}/weights{}", to, channel.pointer.substr(pointer.size()));
                channel.node = to;
            }
        }
    }
}

/// Extends the supplement by what the placement has added.
void UpdateSupplement(const SkinPlacement& placement, Model& model)
{
    Pipeline::SceneSupplement& supplement = model.supplement;
    for (const auto& [copy, original] : placement.Copies())
    {
        const auto from = static_cast<std::size_t>(original);
        const auto to = static_cast<std::size_t>(copy);
        supplement.meshKeys.resize(to + 1, -1);
        supplement.meshKeys[to] = supplement.meshKeys[from];
        if (from < supplement.layouts.size())
        {
            supplement.layouts.resize(to + 1);
            supplement.layouts[to] = supplement.layouts[from];
        }
        if (from < supplement.pinnedMeshes.size())
        {
            supplement.pinnedMeshes.resize(to + 1);
            supplement.pinnedMeshes[to] = supplement.pinnedMeshes[from];
        }
    }
    for (const auto& [still, original] : placement.StillNodes())
    {
        const int key = At(supplement.nodeKeys, original);
        Importing::Node& node = At(model.scene->NodeLibrary, still);
        const CarriedNode& source = At(model.carried.nodes, key);
        CarriedNode carried{.local = node.GetLocalTransform().GetMatrix(), .skin = source.skin};
        carried.object["name"] = node.GetName();
        if (source.object.contains("weights"))
            carried.object["weights"] = source.object["weights"];
        const int stillKey = static_cast<int>(model.carried.nodes.size());
        RedirectWeights(key, stillKey, model.carried);
        supplement.nodeKeys.resize(static_cast<std::size_t>(still) + 1, -1);
        supplement.nodeKeys.back() = stillKey;
        model.carried.nodes.push_back(std::move(carried));
    }
}

}  // namespace

void CarrySkins(const Field& document, Accessors& accessors, Carried& carried)
{
    for (std::size_t i = 0; i < document.SizeOf("skins"); ++i)
        carried.skins.push_back(ReadSkin(document.Member("skins").Element(i), document.SizeOf("nodes"), accessors));
}

void PlaceSkins(const SceneNodes& nodes, Model& model)
{
    if (nodes.skinned.empty())
        return;
    SkinPlacement placement(*model.scene);
    for (const SkinnedSurface& skinned : nodes.skinned)
        placement.Place(skinned.surface, skinned.node,
                        BonesOf(At(model.carried.skins, skinned.skin), nodes, *model.scene));
    UpdateSupplement(placement, model);
    placement.AddNotes(model.notes);
}

}  // namespace Sceneprep::GltfImport

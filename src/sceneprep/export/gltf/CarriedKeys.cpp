#include <sceneprep/export/gltf/CarriedKeys.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::IsValidIndex;

bool IsTransformPath(std::string_view path) { return path == "translation" || path == "rotation" || path == "scale"; }

}  // namespace

const CarriedNode* CarriedNodeOf(const Model& model, int node)
{
    const int key = KeyAt(model.supplement.nodeKeys, node);
    return IsValidIndex(key, model.carried.nodes.size()) ? &Importing::At(model.carried.nodes, key) : nullptr;
}

const CarriedMesh* CarriedMeshOf(const Model& model, int geometry)
{
    const int key = KeyAt(model.supplement.meshKeys, geometry);
    return IsValidIndex(key, model.carried.meshOf.size()) ? &Importing::At(model.carried.meshOf, key) : nullptr;
}

AnimatedKeys FindAnimatedKeys(const Carried& carried)
{
    AnimatedKeys keys;
    for (const CarriedClip& clip : carried.clips)
    {
        for (const CarriedChannel& channel : clip.channels)
        {
            if (IsTransformPath(channel.path))
                keys.nodes.insert(channel.node);
            if (channel.path != "pointer")
                continue;
            const EntryPointer pointer = SplitPointer(channel.pointer);
            if (pointer.list == "/materials/")
                keys.materials.insert(pointer.index);
            if (pointer.list == "/nodes/" && IsTransformPath(std::string_view(pointer.rest).substr(1)))
                keys.nodes.insert(pointer.index);
        }
    }
    return keys;
}

EntryPointer SplitPointer(const std::string& pointer)
{
    constexpr std::array<std::string_view, 5> kLists = {"/nodes/", "/materials/", "/meshes/", "/cameras/",
                                                        "/extensions/KHR_lights_punctual/lights/"};
    const auto* list = std::find_if(kLists.begin(), kLists.end(),
                                    [&](std::string_view candidate) { return pointer.starts_with(candidate); });
    if (list == kLists.end())
        return {};
    int index = -1;
    const char* end = pointer.data() + pointer.size();
    const auto [rest, error] = std::from_chars(pointer.data() + list->size(), end, index);
    if (error != std::errc() || rest == end || *rest != '/')
        return {};
    return {std::string(*list), index, std::string(rest, end)};
}

}  // namespace Sceneprep::Gltf

#include <sceneprep/export/gltf/Clips.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>

#include <map>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;

constexpr const char* kPointer = "KHR_animation_pointer";

int FindEntry(const EntryPointer& pointer, const ClipTargets& targets)
{
    if (pointer.list == "/nodes/")
        return targets.nodes.OuterOf(pointer.index);
    if (pointer.list == "/materials/")
        return targets.materials.FindCarried(pointer.index);
    if (pointer.list == "/meshes/")
        return targets.meshes.FindCarried(pointer.index);
    if (pointer.list == "/cameras/")
        return targets.objects.FindCamera(pointer.index);
    return targets.objects.FindLight(pointer.index);
}

}  // namespace

void ClipWriter::Write(Notes& notes)
{
    std::vector<std::string> incomplete;
    std::size_t dropped = 0;
    for (const CarriedClip& clip : carried_.clips)
    {
        Json animation = clip.object;
        Json channels = Json::array();
        Json samplers = Json::array();
        std::map<int, std::size_t> samplerOf;  // by index into the clip's samplers
        const std::size_t droppedBefore = dropped;
        for (const CarriedChannel& channel : clip.channels)
        {
            Json target = TargetOf(channel);
            if (target.is_null())
            {
                ++dropped;
                continue;
            }
            const auto [sampler, isNew] = samplerOf.emplace(channel.sampler, samplers.size());
            if (isNew)
                samplers.push_back(WriteSampler(At(clip.samplers, channel.sampler)));
            Json object = {{"sampler", sampler->second}, {"target", std::move(target)}};
            if (!channel.extras.is_null())
                object["extras"] = channel.extras;
            channels.push_back(std::move(object));
        }
        if (dropped > droppedBefore)
            incomplete.push_back(fmt::format("'{}'", animation.value("name", std::string())));
        if (channels.empty())
            continue;
        animation["channels"] = std::move(channels);
        animation["samplers"] = std::move(samplers);
        Append(document_.animations, std::move(animation));
    }
    notes.AddLoss("animation-channels",
                  fmt::format("dropped animation channels whose targets are not in the result, of the clips {}",
                              fmt::join(incomplete, ", ")),
                  dropped);
}

/// @return null when the target is not in the document.
Json ClipWriter::TargetOf(const CarriedChannel& channel)
{
    if (channel.path == "pointer")
        return PointerTarget(channel);
    const int node = targets_.nodes.OuterOf(channel.node);
    if (node < 0 || (channel.path == "weights" && !HasMorphTargets(node)))
        return {};
    return {{"node", node}, {"path", channel.path}};
}

Json ClipWriter::PointerTarget(const CarriedChannel& channel)
{
    std::string text = channel.pointer;
    const EntryPointer pointer = SplitPointer(text);
    if (!pointer.list.empty())
    {
        const int entry = FindEntry(pointer, targets_);
        if (entry < 0)
            return {};
        text = pointer.list + std::to_string(entry) + pointer.rest;
    }
    return {{"path", "pointer"}, {"extensions", {{kPointer, {{"pointer", text}}}}}};
}

Json ClipWriter::WriteSampler(const CarriedSampler& sampler)
{
    return {{"input", accessors_.Find(sampler.input)},
            {"interpolation", sampler.interpolation},
            {"output", accessors_.Find(sampler.output)}};
}

bool ClipWriter::HasMorphTargets(int node) const
{
    const Json& object = EntryAt(document_.nodes, node);
    if (!object.contains("mesh"))
        return false;
    const Json& mesh = EntryAt(document_.meshes, object["mesh"].get<int>());
    return mesh["primitives"][0].contains("targets");
}

}  // namespace Sceneprep::Gltf

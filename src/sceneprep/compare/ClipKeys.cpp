#include <sceneprep/compare/ClipKeys.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/compare/ContentDigest.h>

#include <algorithm>
#include <cstring>

namespace Sceneprep
{

namespace
{

using Importing::At;

constexpr int kFloatComponents = 5126;

std::string AccessorText(const Carried& carried, int accessor)
{
    if (!Importing::IsValidIndex(accessor, carried.accessors.size()))
        return "none";
    const CarriedAccessor& values = At(carried.accessors, accessor);
    return fmt::format("{}{}{}", values.type, values.componentType,
                       ContentDigest(values.bytes.data(), values.bytes.size()));
}

/// Returns the last time of a sampler; its times ascend.
double LastTime(const Carried& carried, int accessor)
{
    if (!Importing::IsValidIndex(accessor, carried.accessors.size()))
        return 0;
    const CarriedAccessor& times = At(carried.accessors, accessor);
    float last = 0;
    if (times.componentType == kFloatComponents && times.bytes.size() >= sizeof(last))
        std::memcpy(&last, times.bytes.data() + times.bytes.size() - sizeof(last), sizeof(last));
    return last;
}

ClipKey KeyOf(const CarriedClip& clip, const Carried& carried)
{
    ClipKey key;
    key.name = clip.object.value("name", std::string());
    key.channels = clip.channels.size();
    std::vector<std::string> samplers;
    for (const CarriedSampler& sampler : clip.samplers)
        samplers.push_back(fmt::format("{}|{}|{}", sampler.interpolation, AccessorText(carried, sampler.input),
                                       AccessorText(carried, sampler.output)));
    std::vector<std::string> channels;
    for (const CarriedChannel& channel : clip.channels)
    {
        channels.push_back(fmt::format("{}|{}", channel.path, At(samplers, channel.sampler)));
        key.duration = std::max(key.duration, LastTime(carried, At(clip.samplers, channel.sampler).input));
    }
    std::sort(channels.begin(), channels.end());
    std::string all;
    for (const std::string& channel : channels)
        all += channel + '\n';
    key.text = ContentDigest(all.data(), all.size());
    return key;
}

}  // namespace

std::vector<ClipKey> ListClips(const Model& model)
{
    std::vector<ClipKey> clips;
    for (const CarriedClip& clip : model.carried.clips)
        clips.push_back(KeyOf(clip, model.carried));
    return clips;
}

}  // namespace Sceneprep

#include <sceneprep/import/ImportAnimations.h>
#include <sceneprep/model/AnimationTime.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/assimp/Conversions.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace Sceneprep
{

namespace
{

/// Used for files that do not state the length of a tick.
constexpr double kUsualTicksPerSecond = 25;

aiVector3D Between(const aiVector3D& a, const aiVector3D& b, float part) { return a + (b - a) * part; }

aiQuaternion Between(const aiQuaternion& a, const aiQuaternion& b, float part)
{
    aiQuaternion result;
    aiQuaternion::Interpolate(result, a, b, part);
    return result.Normalize();
}

/// Returns the value of one channel at a time: the first key's value before it, the last key's value after it.
template <typename SourceKey, typename Value>
Value ValueAt(const SourceKey* keys, unsigned count, double time, const Value& withoutKeys)
{
    if (count == 0)
        return withoutKeys;
    const SourceKey* end = keys + count;
    const SourceKey* next =
        std::lower_bound(keys, end, time, [](const SourceKey& key, double t) { return key.mTime < t; });
    if (next == keys)
        return keys->mValue;
    if (next == end)
        return keys[count - 1].mValue;
    const SourceKey& previous = next[-1];
    const double span = next->mTime - previous.mTime;
    const double part = span > 0 ? (time - previous.mTime) / span : 1;
    return Between(previous.mValue, next->mValue, static_cast<float>(part));
}

template <typename SourceKey>
void AddTimes(const SourceKey* keys, unsigned count, std::vector<double>& times)
{
    for (unsigned i = 0; i < count; ++i)
        times.push_back(keys[i].mTime);
}

template <typename SourceKey>
bool BeginEarly(const SourceKey* keys, unsigned count)
{
    return count > 0 && keys[0].mTime < 0;
}

bool BeginsEarly(const aiNodeAnim& channel)
{
    return BeginEarly(channel.mPositionKeys, channel.mNumPositionKeys) ||
           BeginEarly(channel.mRotationKeys, channel.mNumRotationKeys) ||
           BeginEarly(channel.mScalingKeys, channel.mNumScalingKeys);
}

/// Collects the key times of a channel, in ascending order. Keys before time 0 are replaced by one key at time 0.
std::vector<double> MergedTimes(const aiNodeAnim& channel)
{
    std::vector<double> times;
    AddTimes(channel.mPositionKeys, channel.mNumPositionKeys, times);
    AddTimes(channel.mRotationKeys, channel.mNumRotationKeys, times);
    AddTimes(channel.mScalingKeys, channel.mNumScalingKeys, times);
    for (double& time : times)
        time = std::max(time, 0.0);
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

std::uint32_t ToTicks(double time, double sourceTicksPerSecond)
{
    const double ticks = std::round(time / sourceTicksPerSecond * kTicksPerSecond);
    return static_cast<std::uint32_t>(
        std::clamp(ticks, 0.0, static_cast<double>(std::numeric_limits<std::uint32_t>::max())));
}

std::vector<Importing::Key> ConvertChannel(const aiNodeAnim& channel, double ticksPerSecond)
{
    std::vector<Importing::Key> keys;
    for (const double time : MergedTimes(channel))
    {
        const std::uint32_t ticks = ToTicks(time, ticksPerSecond);
        if (!keys.empty() && keys.back().GetTime() == ticks)
            continue;
        Importing::Key key;
        key.SetTime(ticks);
        key.SetPosition(ToVector(ValueAt(channel.mPositionKeys, channel.mNumPositionKeys, time, aiVector3D())));
        key.SetRotation(ToQuaternion(ValueAt(channel.mRotationKeys, channel.mNumRotationKeys, time, aiQuaternion())));
        key.SetScale(ToVector(ValueAt(channel.mScalingKeys, channel.mNumScalingKeys, time, aiVector3D(1, 1, 1))));
        keys.push_back(key);
    }
    return keys;
}

Notes NotesOn(std::size_t earlyStarts)
{
    Notes notes;
    if (earlyStarts > 0)
        notes.AddLoss("animation-keys",
                      fmt::format("animation keys before time 0 are dropped (nodes: {})", earlyStarts));
    return notes;
}

}  // namespace

Notes ImportAnimations(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene)
{
    std::size_t earlyStarts = 0;
    for (unsigned a = 0; a < source.mNumAnimations; ++a)
    {
        const aiAnimation& animation = *source.mAnimations[a];
        const double ticksPerSecond = animation.mTicksPerSecond > 0 ? animation.mTicksPerSecond : kUsualTicksPerSecond;
        for (unsigned c = 0; c < animation.mNumChannels; ++c)
        {
            const aiNodeAnim& channel = *animation.mChannels[c];
            const auto found = nodes.find(channel.mNodeName.C_Str());
            if (found == nodes.end())
                continue;
            Importing::Node& node = Importing::At(scene.NodeLibrary, found->second);
            if (node.GetAnimationID() >= 0)
                continue;
            std::vector<Importing::Key> keys = ConvertChannel(channel, ticksPerSecond);
            earlyStarts += BeginsEarly(channel) ? 1 : 0;
            if (!keys.empty())
                node.SetAnimationID(scene.AddAnimationToLibrary(std::move(keys), true));
        }
    }
    return NotesOn(earlyStarts);
}

}  // namespace Sceneprep

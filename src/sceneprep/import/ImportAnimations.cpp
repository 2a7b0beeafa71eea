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

/// For files that do not say how long a tick is.
constexpr double kUsualTicksPerSecond = 25;

aiVector3D Between(const aiVector3D& a, const aiVector3D& b, float part) { return a + (b - a) * part; }

aiQuaternion Between(const aiQuaternion& a, const aiQuaternion& b, float part)
{
    aiQuaternion result;
    aiQuaternion::Interpolate(result, a, b, part);
    return result.Normalize();
}

/// The value of one channel at a time; before its first and behind its last key it stands still.
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

/// Time begins at 0: what lies before comes down to where the movement has got to then.
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

struct LeftOut
{
    std::size_t movements = 0;
    std::size_t starts = 0;
    std::size_t morphs = 0;
};

std::vector<std::string> NotesOn(const LeftOut& leftOut)
{
    std::vector<std::string> notes;
    if (leftOut.movements > 0)
        notes.push_back(
            fmt::format("a node keeps one animation: further movements are left out ({})", leftOut.movements));
    if (leftOut.starts > 0)
        notes.push_back(fmt::format("what animations hold before time 0 is left out (nodes: {})", leftOut.starts));
    if (leftOut.morphs > 0)
        notes.push_back(fmt::format("movements of morph targets are left out ({})", leftOut.morphs));
    return notes;
}

}  // namespace

std::vector<std::string> ImportAnimations(const aiScene& source, const NodeNames& nodes,
                                          Importing::SceneContainer& scene)
{
    LeftOut leftOut;
    for (unsigned a = 0; a < source.mNumAnimations; ++a)
    {
        const aiAnimation& animation = *source.mAnimations[a];
        const double ticksPerSecond = animation.mTicksPerSecond > 0 ? animation.mTicksPerSecond : kUsualTicksPerSecond;
        leftOut.morphs += animation.mNumMeshChannels + animation.mNumMorphMeshChannels;
        for (unsigned c = 0; c < animation.mNumChannels; ++c)
        {
            const aiNodeAnim& channel = *animation.mChannels[c];
            const auto found = nodes.find(channel.mNodeName.C_Str());
            if (found == nodes.end())
                continue;
            Importing::Node& node = Importing::At(scene.NodeLibrary, found->second);
            if (node.GetAnimationID() >= 0)
            {
                ++leftOut.movements;
                continue;
            }
            std::vector<Importing::Key> keys = ConvertChannel(channel, ticksPerSecond);
            leftOut.starts += BeginsEarly(channel) ? 1 : 0;
            if (!keys.empty())
                node.SetAnimationID(scene.AddAnimationToLibrary(std::move(keys), true));
        }
    }
    return NotesOn(leftOut);
}

}  // namespace Sceneprep

#include <sceneprep/export/gltf/Animations.h>

#include <sceneprep/export/gltf/Finite.h>
#include <sceneprep/model/AnimationTime.h>

#include <cmath>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::Key;

/// The values as the file stores them.
struct Track
{
    std::vector<float> seconds;
    std::vector<D3DXVECTOR3> positions;
    std::vector<D3DXQUATERNION> rotations;
    std::vector<D3DXVECTOR3> scales;
};

D3DXQUATERNION Unit(const D3DXQUATERNION& q)
{
    const float length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    if (!(length > 0) || !std::isfinite(length))
        return {0, 0, 0, 1};
    return {q.x / length, q.y / length, q.z / length, q.w / length};
}

Track TrackOf(std::vector<Key>& keys)
{
    Track track;
    for (Key& key : keys)
    {
        const auto seconds = static_cast<float>(key.GetTime() / kTicksPerSecond);
        if (!track.seconds.empty() && seconds <= track.seconds.back())
            continue;
        track.seconds.push_back(seconds);
        track.positions.push_back(Finite(key.GetPosition(), 0));
        track.rotations.push_back(Unit(key.GetRotation()));
        track.scales.push_back(Finite(key.GetScale(), 1));
    }
    return track;
}

}  // namespace

void AnimationWriter::Add(std::vector<Key>& keys, int node)
{
    if (keys.empty())
        return;
    const Track track = TrackOf(keys);
    const int times = buffers_.Add(track.seconds, {}, Usage::Other);
    Json& accessor = EntryAt(document_.accessors, times);
    accessor["min"] = Json::array({track.seconds.front()});
    accessor["max"] = Json::array({track.seconds.back()});
    AddChannel(times, track.positions, "VEC3", "translation", node);
    AddChannel(times, track.rotations, "VEC4", "rotation", node);
    AddChannel(times, track.scales, "VEC3", "scale", node);
}

template <typename T>
void AnimationWriter::AddChannel(int times, const std::vector<T>& values, const char* type, const char* path, int node)
{
    const int output = buffers_.Add(values, {type}, Usage::Other);
    channels_.push_back({{"sampler", samplers_.size()}, {"target", {{"node", node}, {"path", path}}}});
    samplers_.push_back({{"input", times}, {"interpolation", "LINEAR"}, {"output", output}});
}

void AnimationWriter::Finish()
{
    if (!channels_.empty())
        Append(document_.animations, {{"channels", std::move(channels_)}, {"samplers", std::move(samplers_)}});
}

}  // namespace Sceneprep::Gltf

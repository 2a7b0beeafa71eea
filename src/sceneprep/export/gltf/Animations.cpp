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

/// Values in the order in which they lie in the file.
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
    const int times = buffers_.Add(track.seconds, {TINYGLTF_TYPE_SCALAR, TINYGLTF_COMPONENT_TYPE_FLOAT}, Usage::Other);
    tinygltf::Accessor& accessor = model_.accessors[static_cast<std::size_t>(times)];
    accessor.minValues = {track.seconds.front()};
    accessor.maxValues = {track.seconds.back()};
    AddChannel(times, track.positions, TINYGLTF_TYPE_VEC3, "translation", node);
    AddChannel(times, track.rotations, TINYGLTF_TYPE_VEC4, "rotation", node);
    AddChannel(times, track.scales, TINYGLTF_TYPE_VEC3, "scale", node);
}

template <typename T>
void AnimationWriter::AddChannel(int times, const std::vector<T>& values, int type, const char* path, int node)
{
    tinygltf::AnimationSampler sampler;
    sampler.input = times;
    sampler.output = buffers_.Add(values, {type, TINYGLTF_COMPONENT_TYPE_FLOAT}, Usage::Other);
    sampler.interpolation = "LINEAR";
    animation_.samplers.push_back(std::move(sampler));

    tinygltf::AnimationChannel channel;
    channel.sampler = static_cast<int>(animation_.samplers.size() - 1);
    channel.target_node = node;
    channel.target_path = path;
    animation_.channels.push_back(std::move(channel));
}

void AnimationWriter::Finish()
{
    if (!animation_.channels.empty())
        model_.animations.push_back(std::move(animation_));
}

}  // namespace Sceneprep::Gltf

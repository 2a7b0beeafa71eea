#include <sceneprep/import/CarryClips.h>

#include <sceneprep/import/CarryPrimitive.h>

#include <algorithm>
#include <utility>

namespace Sceneprep
{

namespace
{

/// Used for files that do not state the length of a tick.
constexpr double kUsualTicksPerSecond = 25;

int AddFloats(const std::vector<float>& values, std::size_t width, const char* type, Carried& carried)
{
    carried.accessors.push_back(FloatAccessor(values, width, type));
    return static_cast<int>(carried.accessors.size() - 1);
}

void Append(const aiVector3D& value, std::vector<float>& values)
{
    values.insert(values.end(), {value.x, value.y, value.z});
}

void Append(const aiQuaternion& value, std::vector<float>& values)
{
    values.insert(values.end(), {value.x, value.y, value.z, value.w});
}

/// Collects the channels of one animation.
class ClipBuilder
{
public:
    ClipBuilder(double ticksPerSecond, Carried& carried) : ticksPerSecond_(ticksPerSecond), carried_(carried) {}

    /// Skips keys whose time is not above that of the previous key, which glTF does not allow.
    template <typename Key>
    void Add(const Key* keys, unsigned count, int node, const char* path, const char* type)
    {
        std::vector<float> times;
        std::vector<float> values;
        for (unsigned k = 0; k < count; ++k)
        {
            const auto time = static_cast<float>(std::max(keys[k].mTime, 0.0) / ticksPerSecond_);
            if (!times.empty() && !(time > times.back()))
                continue;
            times.push_back(time);
            Append(keys[k].mValue, values);
        }
        if (times.empty())
            return;
        CarriedSampler sampler;
        sampler.input = AddFloats(times, 1, "SCALAR", carried_);
        carried_.accessors.back().min = Json::array({times.front()});
        carried_.accessors.back().max = Json::array({times.back()});
        sampler.output = AddFloats(values, values.size() / times.size(), type, carried_);
        CarriedChannel channel;
        channel.node = node;
        channel.path = path;
        channel.sampler = static_cast<int>(clip_.samplers.size());
        clip_.samplers.push_back(std::move(sampler));
        clip_.channels.push_back(std::move(channel));
    }

    void Finish(const char* name)
    {
        if (clip_.channels.empty())
            return;
        if (*name != '\0')
            clip_.object["name"] = name;
        carried_.clips.push_back(std::move(clip_));
    }

private:
    double ticksPerSecond_;
    Carried& carried_;
    CarriedClip clip_;
};

}  // namespace

std::size_t CarryClips(const aiScene& source, const NodeNames& nodes, Carried& carried)
{
    std::size_t skipped = 0;
    for (unsigned a = 0; a < source.mNumAnimations; ++a)
    {
        const aiAnimation& animation = *source.mAnimations[a];
        ClipBuilder clip(animation.mTicksPerSecond > 0 ? animation.mTicksPerSecond : kUsualTicksPerSecond, carried);
        for (unsigned c = 0; c < animation.mNumChannels; ++c)
        {
            const aiNodeAnim& channel = *animation.mChannels[c];
            const auto found = nodes.find(channel.mNodeName.C_Str());
            if (found == nodes.end())
            {
                ++skipped;
                continue;
            }
            clip.Add(channel.mPositionKeys, channel.mNumPositionKeys, found->second, "translation", "VEC3");
            clip.Add(channel.mRotationKeys, channel.mNumRotationKeys, found->second, "rotation", "VEC4");
            clip.Add(channel.mScalingKeys, channel.mNumScalingKeys, found->second, "scale", "VEC3");
        }
        clip.Finish(animation.mName.C_Str());
    }
    return skipped;
}

}  // namespace Sceneprep

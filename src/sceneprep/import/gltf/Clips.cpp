#include <sceneprep/import/gltf/Clips.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Pointers.h>

#include <string>
#include <utility>

namespace Sceneprep::GltfImport
{

namespace
{

bool IsTransform(const std::string& path) { return path == "translation" || path == "rotation" || path == "scale"; }

/// Carries each accessor once.
class AccessorList
{
public:
    AccessorList(Accessors& accessors, Carried& carried) : accessors_(accessors), carried_(carried) {}

    int Find(const Field& reference)
    {
        const int accessor = reference.IndexBelow(accessors_.Count());
        const auto [known, isNew] = known_.emplace(accessor, static_cast<int>(carried_.accessors.size()));
        if (isNew)
            carried_.accessors.push_back(accessors_.Carry(reference));
        return known->second;
    }

private:
    Accessors& accessors_;
    Carried& carried_;
    std::map<int, int> known_;
};

CarriedSampler ReadSampler(const Field& sampler, AccessorList& list, const Carried& carried)
{
    CarriedSampler result;
    result.interpolation = sampler.TextOr("interpolation", "LINEAR");
    if (result.interpolation != "LINEAR" && result.interpolation != "STEP" && result.interpolation != "CUBICSPLINE")
        sampler.Member("interpolation").Fail(fmt::format("'{}' is not an interpolation", result.interpolation));
    const Field input = sampler.Member("input");
    result.input = list.Find(input);
    const CarriedAccessor& times = carried.accessors[static_cast<std::size_t>(result.input)];
    if (times.type != "SCALAR" || times.componentType != static_cast<int>(Component::Float))
        input.Fail("the times are not single floats");
    result.output = list.Find(sampler.Member("output"));
    return result;
}

std::size_t KeyCount(const CarriedSampler& sampler, const Carried& carried)
{
    return carried.accessors[static_cast<std::size_t>(sampler.input)].count;
}

/// Values of a node's transform: one for each key, or three with the tangents of CUBICSPLINE. Other values: a multiple
/// of that.
void CheckCounts(const Field& sampler, const CarriedChannel& channel, const CarriedSampler& read,
                 const Carried& carried)
{
    const CarriedAccessor& output = carried.accessors[static_cast<std::size_t>(read.output)];
    const std::size_t expected = KeyCount(read, carried) * (read.interpolation == "CUBICSPLINE" ? 3 : 1);
    const Field field = sampler.Member("output");
    if (IsTransform(channel.path))
    {
        const std::string type = channel.path == "rotation" ? "VEC4" : "VEC3";
        if (output.type != type)
            field.Fail(fmt::format("'{}' is not {}", output.type, type));
        if (output.count != expected)
            field.Fail(fmt::format("{} elements, {} expected", output.count, expected));
    }
    else if (expected == 0 || output.count % expected != 0)
        field.Fail(fmt::format("{} elements, a multiple of {} expected", output.count, expected));
}

/// Returns whether the channel has a target.
bool ReadTarget(const Field& target, std::size_t nodeCount, CarriedChannel& channel)
{
    channel.path = target.Member("path").Text();
    if (const std::string* pointer = PointerOf(target))
    {
        channel.path = "pointer";
        channel.pointer = *pointer;
        const std::optional<std::size_t> node = IndexInPointer(*pointer, "/nodes/");
        channel.node = node && *node < nodeCount ? static_cast<int>(*node) : -1;
        return true;
    }
    channel.node = target.IndexOrNone("node", nodeCount);
    if (channel.node < 0)
        return false;
    if (!IsTransform(channel.path) && channel.path != "weights")
        target.Member("path").Fail(fmt::format("'{}' is not a property that can be animated", channel.path));
    return true;
}

CarriedClip ReadClip(const Field& animation, std::size_t nodeCount, AccessorList& list, Carried& carried)
{
    CarriedClip clip;
    clip.object = animation.Get();
    Take(clip.object, "channels");
    Take(clip.object, "samplers");
    const Field samplers = animation.Member("samplers");
    for (std::size_t s = 0; s < samplers.Size(); ++s)
        clip.samplers.push_back(ReadSampler(samplers.Element(s), list, carried));
    const Field channels = animation.Member("channels");
    for (std::size_t c = 0; c < channels.Size(); ++c)
    {
        const Field field = channels.Element(c);
        CarriedChannel channel;
        channel.sampler = field.Member("sampler").IndexBelow(clip.samplers.size());
        if (!ReadTarget(field.Member("target"), nodeCount, channel))
            continue;
        const auto sampler = static_cast<std::size_t>(channel.sampler);
        CheckCounts(samplers.Element(sampler), channel, clip.samplers[sampler], carried);
        if (const std::optional<Field> extras = field.Find("extras"))
            channel.extras = extras->Get();
        clip.channels.push_back(std::move(channel));
    }
    return clip;
}

}  // namespace

void CarryClips(const Field& document, Accessors& accessors, Carried& carried)
{
    AccessorList list(accessors, carried);
    const std::size_t nodeCount = document.SizeOf("nodes");
    for (std::size_t i = 0; i < document.SizeOf("animations"); ++i)
        carried.clips.push_back(ReadClip(document.Member("animations").Element(i), nodeCount, list, carried));
}

}  // namespace Sceneprep::GltfImport

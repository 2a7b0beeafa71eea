#include <sceneprep/import/gltf/NodeAnimations.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/import/gltf/LocalMatrix.h>
#include <sceneprep/import/gltf/Tracks.h>
#include <sceneprep/model/AnimationTime.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace Sceneprep::GltfImport
{

namespace
{

using Importing::At;
using Importing::Key;

constexpr std::array<const char*, 3> kPaths = {"translation", "rotation", "scale"};

/// The samplers of one clip that move one node, in the order of kPaths; -1 for none.
using Samplers = std::array<int, 3>;

std::map<int, Samplers> SamplersByNode(const CarriedClip& clip)
{
    std::map<int, Samplers> samplers;
    for (const CarriedChannel& channel : clip.channels)
    {
        const auto* path = std::find(kPaths.begin(), kPaths.end(), channel.path);
        if (path == kPaths.end())
            continue;
        Samplers& ofNode = samplers.try_emplace(channel.node, Samplers{-1, -1, -1}).first->second;
        ofNode[static_cast<std::size_t>(path - kPaths.begin())] = channel.sampler;
    }
    return samplers;
}

std::uint32_t ToTicks(double seconds)
{
    constexpr double kLast = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp(std::round(seconds * kTicksPerSecond), 0.0, kLast));
}

D3DXVECTOR3 VectorOf(const double* v)
{
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

class KeyMaker
{
public:
    KeyMaker(const CarriedClip& clip, const Samplers& samplers, const std::vector<CarriedAccessor>& accessors,
             const Placement& atRest)
        : atRest_(atRest)
    {
        for (std::size_t p = 0; p < kPaths.size(); ++p)
        {
            if (samplers[p] >= 0)
                tracks_[p].emplace(clip.samplers[static_cast<std::size_t>(samplers[p])], accessors, p == 1);
            if (tracks_[p] && tracks_[p]->Times().empty())
                tracks_[p].reset();
        }
    }

    std::vector<Key> Make() const
    {
        std::vector<Key> keys;
        for (const double time : Times())
        {
            const std::uint32_t ticks = ToTicks(time);
            if (keys.empty() || keys.back().GetTime() != ticks)
                keys.push_back(KeyAt(time, ticks));
        }
        return keys;
    }

private:
    std::vector<double> Times() const
    {
        std::vector<double> times;
        for (const std::optional<Track>& track : tracks_)
        {
            for (std::size_t i = 0; track && i < track->Times().size(); ++i)
            {
                const auto time = static_cast<double>(track->Times()[i]);
                if (std::isfinite(time))
                    times.push_back(std::max(time, 0.0));
            }
        }
        std::sort(times.begin(), times.end());
        times.erase(std::unique(times.begin(), times.end()), times.end());
        return times;
    }

    Key KeyAt(double time, std::uint32_t ticks) const
    {
        Placement placement = atRest_;
        const auto apply = [&](std::size_t p, auto& target) {
            if (!tracks_[p])
                return;
            const std::array<double, 4> value = tracks_[p]->ValueAt(time);
            std::copy_n(value.begin(), target.size(), target.begin());
        };
        apply(0, placement.translation);
        apply(1, placement.rotation);
        apply(2, placement.scale);
        const auto& q = placement.rotation;
        Key key;
        key.SetTime(ticks);
        key.SetPosition(VectorOf(placement.translation.data()));
        key.SetRotation(
            {static_cast<float>(q[0]), static_cast<float>(q[1]), static_cast<float>(q[2]), static_cast<float>(q[3])});
        key.SetScale(VectorOf(placement.scale.data()));
        return key;
    }

    std::array<std::optional<Track>, 3> tracks_;
    Placement atRest_;
};

}  // namespace

void AddNodeAnimations(const Field& document, const SceneNodes& nodes, Model& model)
{
    for (const CarriedClip& clip : model.carried.clips)
    {
        for (const auto& [key, samplers] : SamplersByNode(clip))
        {
            const int index = At(nodes.nodeOf, key);
            if (index < 0 || At(model.scene->NodeLibrary, index).GetAnimationID() >= 0)
                continue;
            const Field field = document.Member("nodes").Element(static_cast<std::size_t>(key));
            std::vector<Key> keys = KeyMaker(clip, samplers, model.carried.accessors, PlacementOf(field)).Make();
            if (!keys.empty())
                At(model.scene->NodeLibrary, index)
                    .SetAnimationID(model.scene->AddAnimationToLibrary(std::move(keys), false));
        }
    }
}

void MarkKeptNodes(const Field& document, const SceneNodes& nodes, Model& model)
{
    std::vector<bool>& kept = model.supplement.keptNodes;
    const auto keep = [&](int key) {
        const int node = At(nodes.nodeOf, key);
        if (node < 0)
            return;
        if (kept.size() <= static_cast<std::size_t>(node))
            kept.resize(static_cast<std::size_t>(node) + 1, false);
        kept[static_cast<std::size_t>(node)] = true;
    };
    for (const CarriedSkin& skin : model.carried.skins)
        std::for_each(skin.joints.begin(), skin.joints.end(), keep);
    for (const CarriedClip& clip : model.carried.clips)
    {
        for (const CarriedChannel& channel : clip.channels)
        {
            if (channel.node >= 0 && (channel.path == "weights" || channel.path == "pointer"))
                keep(channel.node);
        }
    }
    const std::optional<Field> list = document.Find("nodes");
    for (std::size_t key = 0; key < nodes.nodeOf.size(); ++key)
    {
        const Field node = list->Element(key);
        const std::optional<Field> visibility =
            node.Has("extensions") ? node.Extension("KHR_node_visibility") : std::nullopt;
        if (visibility && !visibility->FlagOr("visible", true))
            keep(static_cast<int>(key));
    }
}

}  // namespace Sceneprep::GltfImport

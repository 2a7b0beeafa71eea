// For every draw call the place where it could be merged is known: its anchor, unless something about its mesh or its
// node forbids merging. The first draw call of a material at each place represents the place, and one of them
// represents the material. Representatives of other places are separate because of the place, all other draw calls
// because of a limit of merging.

#include <pipeline/steps/MergeReasons.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/MaterialKey.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/steps/Anchors.h>
#include <pipeline/steps/SpatialCells.h>

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::SceneContainer;
using Importing::Surface;

/// One reference of a node to a surface.
struct DrawCall
{
    int node = -1;
    int surface = -1;
    int material = -1;
    int anchor = -1;    ///< where it could be merged
    MergeReason bar{};  ///< why it is not merged with surfaces of other places
    int subject = -1;   ///< the node that is the reason; -1 if there is none
    int rank = 0;       ///< 0 for rigid surfaces at the root; larger ones are less suitable for others to join
};

enum Rank
{
    AtRoot,
    AtAnchor,
    Frozen,
    Fixed
};

/// The surfaces of one material that could be merged with each other.
struct Place
{
    std::size_t first = 0;  ///< index of the draw call that represents it
    std::size_t count = 0;
    std::size_t vertices = 0;
};

class ReasonFinder
{
public:
    ReasonFinder(const WorkScene& work, const PrepareOptions& options)
        : work_(work), scene_(work.container), options_(options), walk_(WalkFromRoot(scene_)),
          anchors_(FindAnchors(work, walk_, options.ignoreAnimation))
    {
        if (options.cellSize > 0)
            cellOf_ = FindCells(scene_, walk_, options.cellSize);
    }

    MergeReasons Find()
    {
        ListDrawCalls();
        ChooseRepresentatives();
        MergeReasons reasons;
        reasons.drawCalls = calls_.size();
        reasons.needed = mains_.size();
        for (std::size_t i = 0; i < calls_.size(); ++i)
        {
            if (mains_.at(calls_[i].material) != i)
                Add(calls_[i], ReasonOf(i), reasons);
        }
        std::stable_sort(reasons.groups.begin(), reasons.groups.end(),
                         [](const auto& a, const auto& b) { return a.count > b.count; });
        return reasons;
    }

private:
    const Geometry& MeshOf(const DrawCall& call) const
    {
        return At(scene_.GeometryLibrary, At(scene_.SurfaceLibrary, call.surface).GetGeometryID());
    }

    void ListDrawCalls()
    {
        std::vector<int> frozenTop(scene_.NodeLibrary.size(), -1);  // the topmost frozen node above, or the node itself
        for (const int node : walk_.order)
        {
            const auto position = static_cast<std::size_t>(node);
            const int parent = walk_.parent[position];
            const int above = parent < 0 ? -1 : At(frozenTop, parent);
            if (IsFrozen(work_.supplement, position))
                frozenTop[position] = above >= 0 ? above : node;
            for (const std::int32_t surface : scene_.NodeLibrary[position].SurfaceList)
            {
                const Surface& record = At(scene_.SurfaceLibrary, surface);
                const int mesh = record.GetGeometryID();
                if (mesh < 0 || IsEmptied(At(scene_.GeometryLibrary, mesh)))
                    continue;
                calls_.push_back(MakeCall(node, surface, record, frozenTop[position]));
            }
        }
    }

    DrawCall MakeCall(int node, int surface, const Surface& record, int frozenTop) const
    {
        const int mesh = record.GetGeometryID();
        const bool hasTriangles = At(scene_.GeometryLibrary, mesh).GetPolySize() == 3;
        const int anchor = At(anchors_.of, node);
        DrawCall call{node, surface, record.GetMaterialID(), anchor, MergeReason::Other, -1, AtRoot};
        if (IsSkinned(scene_, surface))
            std::tie(call.bar, call.rank) = std::pair(MergeReason::Skinned, Fixed);
        else if (!hasTriangles)
            std::tie(call.bar, call.rank) = std::pair(MergeReason::PointsOrLines, Fixed);
        else if (IsPinned(work_.supplement, static_cast<std::size_t>(mesh)))
            std::tie(call.bar, call.rank) = std::pair(MergeReason::MorphTargets, Fixed);
        else if (frozenTop >= 0)
            std::tie(call.bar, call.subject, call.rank) = std::tuple(MergeReason::FrozenNode, frozenTop, Frozen);
        else if (!options_.flatten)
            call.bar = MergeReason::NotFlattened;
        else if (IsShared(work_.supplement, static_cast<std::size_t>(mesh)))
            std::tie(call.bar, call.rank) = std::pair(MergeReason::SharedMesh, Fixed);
        else if (anchor != scene_.GetRootNodeIndex())
            std::tie(call.bar, call.subject, call.rank) = std::tuple(ReasonOfAnchor(anchor), anchor, AtAnchor);
        return call;
    }

    MergeReason ReasonOfAnchor(int anchor) const
    {
        const bool isAnimated = At(scene_.NodeLibrary, anchor).GetAnimationID() != -1;
        return isAnimated && !options_.ignoreAnimation ? MergeReason::AnimatedNode : MergeReason::KeptNode;
    }

    bool IsMergeable(const DrawCall& call) const { return call.rank <= AtAnchor && options_.flatten; }

    void ChooseRepresentatives()
    {
        for (std::size_t i = 0; i < calls_.size(); ++i)
        {
            const DrawCall& call = calls_[i];
            const auto [main, isFirst] = mains_.try_emplace(call.material, i);
            if (!isFirst && call.rank < calls_[main->second].rank)
                main->second = i;
            if (!IsMergeable(call))
                continue;
            Place& place = places_.try_emplace({call.material, call.anchor}, Place{i, 0, 0}).first->second;
            ++place.count;
            place.vertices += MeshOf(call).VertexArray.size();
        }
    }

    MergeReason ReasonOf(std::size_t index)
    {
        const DrawCall& call = calls_[index];
        if (!IsMergeable(call))
            return call.bar;
        const Place& place = places_.at({call.material, call.anchor});
        if (place.first == index)
            return call.bar;  // of another place than that of the material's representative
        return LimitBetween(calls_[place.first], call, place);
    }

    /// Returns why two surfaces of one place are separate.
    MergeReason LimitBetween(const DrawCall& first, const DrawCall& call, const Place& place)
    {
        Surface& a = At(scene_.SurfaceLibrary, first.surface);
        Surface& b = At(scene_.SurfaceLibrary, call.surface);
        const bool canExceed =
            options_.maxVertices >= 0 && place.vertices > static_cast<std::size_t>(options_.maxVertices);
        if (MaterialKey(a) != MaterialKey(b))
            return MergeReason::TextureLayers;
        if (!cellOf_.empty() && At(cellOf_, first.surface) != At(cellOf_, call.surface))
            return MergeReason::OtherCell;
        if (canExceed)
            return MergeReason::VertexLimit;
        if (options_.minSurfaces > 0 && place.count < static_cast<std::size_t>(options_.minSurfaces))
            return MergeReason::MinimumCount;
        return MergeReason::Other;
    }

    void Add(const DrawCall& call, MergeReason reason, MergeReasons& reasons)
    {
        const int subject = reason == call.bar ? call.subject : -1;
        const auto [found, isNew] = groups_.try_emplace({call.material, reason, subject}, reasons.groups.size());
        if (isNew)
        {
            MergeReasonGroup& added = reasons.groups.emplace_back();
            added.reason = reason;
            if (Importing::IsValidIndex(call.material, scene_.MaterialLibrary.size()))
                added.material = At(scene_.MaterialLibrary, call.material).GetName();
            if (subject >= 0)
                added.subject = At(scene_.NodeLibrary, subject).GetName();
        }
        MergeReasonGroup& group = reasons.groups[found->second];
        ++group.count;
        if (group.surfaces.size() == MergeReasonGroup::kMostListed)
            return;
        Surface& surface = At(scene_.SurfaceLibrary, call.surface);
        const std::string mesh = At(scene_.GeometryLibrary, surface.GetGeometryID()).GetName();
        group.surfaces.push_back(
            {At(scene_.NodeLibrary, call.node).GetName(), mesh.empty() ? surface.GetName() : mesh, call.surface});
    }

    const WorkScene& work_;
    SceneContainer& scene_;
    const PrepareOptions& options_;
    NodeWalk walk_;
    Anchors anchors_;
    std::vector<int> cellOf_;
    std::vector<DrawCall> calls_;
    std::map<int, std::size_t> mains_;             // the draw call that represents a material, by material
    std::map<std::pair<int, int>, Place> places_;  // by material and anchor
    std::map<std::tuple<int, MergeReason, int>, std::size_t> groups_;  // by material, reason and subject
};

}  // namespace

const char* NameOf(MergeReason reason)
{
    switch (reason)
    {
        case MergeReason::AnimatedNode:
            return "animated-node";
        case MergeReason::KeptNode:
            return "kept-node";
        case MergeReason::FrozenNode:
            return "kept-by-name";
        case MergeReason::Skinned:
            return "skinned";
        case MergeReason::MorphTargets:
            return "morph-targets";
        case MergeReason::PointsOrLines:
            return "points-or-lines";
        case MergeReason::SharedMesh:
            return "shared-mesh";
        case MergeReason::TextureLayers:
            return "texture-layers";
        case MergeReason::OtherCell:
            return "other-cell";
        case MergeReason::MinimumCount:
            return "minimum-count";
        case MergeReason::VertexLimit:
            return "vertex-limit";
        case MergeReason::NotFlattened:
            return "not-flattened";
        case MergeReason::Other:
            break;
    }
    return "other";
}

MergeReasons FindMergeReasons(const WorkScene& scene, const PrepareOptions& options)
{
    return ReasonFinder(scene, options).Find();
}

std::string TextOf(MergeReason reason, const std::string& subject)
{
    switch (reason)
    {
        case MergeReason::AnimatedNode:
            return "below animated node '" + subject + "'";
        case MergeReason::KeptNode:
            return "below kept node '" + subject + "'";
        case MergeReason::FrozenNode:
            return "kept with node '" + subject + "'";
        case MergeReason::Skinned:
            return "skinned";
        case MergeReason::MorphTargets:
            return "with morph targets";
        case MergeReason::PointsOrLines:
            return "points or lines";
        case MergeReason::SharedMesh:
            return "sharing a mesh";
        case MergeReason::TextureLayers:
            return "with other texture layers";
        case MergeReason::OtherCell:
            return "in other cells";
        case MergeReason::MinimumCount:
            return "below the minimum count";
        case MergeReason::VertexLimit:
            return "vertex limit";
        case MergeReason::NotFlattened:
            return "not flattened";
        case MergeReason::Other:
            break;
    }
    return "for other reasons";
}

}  // namespace Pipeline

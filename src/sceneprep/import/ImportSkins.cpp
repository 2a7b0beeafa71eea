#include <sceneprep/import/ImportSkins.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/NodePath.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/model/MeshJoints.h>
#include <sceneprep/model/SkinPlacement.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

using Pipeline::NodePath;

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::SceneContainer;

/// Converts the skins of one file into joints of a scene.
class SkinImporter
{
public:
    explicit SkinImporter(SceneContainer& scene) : scene_(scene), placement_(scene)
    {
        for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
            nodesCalled_[scene.NodeLibrary[node].GetName()].push_back(static_cast<int>(node));
    }

    void Import(const SkinnedSurface& skinned)
    {
        EnterNode(skinned.node);
        placement_.Place(skinned.surface, skinned.node, BonesOf(*skinned.mesh));
    }

    void AddNotes(Notes& notes) const
    {
        notes.Add("bones without a node keep the transform of their bind pose", lost_);
        notes.Add("bones whose name several nodes have use the most likely of them", shared_);
        placement_.AddNotes(notes);
    }

private:
    using BoneNodes = std::unordered_map<std::string, int>;  // by name of a bone

    void EnterNode(int node)
    {
        if (!path_ || path_->Nodes().front() != node)
            path_.emplace(placement_.Parents(), node);
    }

    std::vector<Bone> BonesOf(const aiMesh& mesh)
    {
        BoneNodes nodeOf;
        for (unsigned b = 0; b < mesh.mNumBones; ++b)
            nodeOf.emplace(mesh.mBones[b]->mName.C_Str(), -1);
        for (auto& [name, node] : nodeOf)
            node = NodeCalled(name, nodeOf);

        std::vector<Bone> bones;
        for (unsigned b = 0; b < mesh.mNumBones; ++b)
        {
            const aiBone& bone = *mesh.mBones[b];
            const std::string name = bone.mName.C_Str();
            bones.push_back({name, ToMatrix(bone.mOffsetMatrix), nodeOf.at(name)});
            lost_ += bones.back().node < 0 ? 1 : 0;
        }
        return bones;
    }

    /// Bones refer to nodes by name, and several nodes may have that name.
    int NodeCalled(const std::string& name, const BoneNodes& bones)
    {
        const auto found = nodesCalled_.find(name);
        if (found == nodesCalled_.end())
            return -1;
        const std::vector<int>& nodes = found->second;
        if (nodes.size() == 1)
            return nodes.front();
        ++shared_;
        int best = nodes.front();
        for (const int node : nodes)
        {
            if (Unlikeness(node, bones) < Unlikeness(best, bones))
                best = node;
        }
        return best;
    }

    /// Ranks the candidates for a bone, the least first: nodes next to other bones, nodes without surfaces, nodes near
    /// the mesh in the hierarchy; in this order.
    std::tuple<bool, bool, std::size_t> Unlikeness(int node, const BoneNodes& bones)
    {
        const Importing::Node& record = At(scene_.NodeLibrary, node);
        const auto isBone = [&](int other) { return bones.count(At(scene_.NodeLibrary, other).GetName()) > 0; };
        const int parent = At(placement_.Parents(), node);
        const bool isAmongBones =
            (parent >= 0 && isBone(parent)) || std::any_of(record.ChildList.begin(), record.ChildList.end(), isBone);
        return {!isAmongBones, !record.SurfaceList.empty(), path_->HeightOfMeeting(node)};
    }

    SceneContainer& scene_;
    SkinPlacement placement_;
    std::unordered_map<std::string, std::vector<int>> nodesCalled_;
    std::optional<NodePath> path_;  // of the current node
    std::size_t lost_ = 0;
    std::size_t shared_ = 0;
};

}  // namespace

std::size_t ImportWeights(const aiMesh& mesh, Geometry& geometry)
{
    std::size_t dropped = 0;
    for (unsigned b = 0; b < mesh.mNumBones; ++b)
    {
        const aiBone& bone = *mesh.mBones[b];
        for (unsigned w = 0; w < bone.mNumWeights; ++w)
        {
            const aiVertexWeight& weight = bone.mWeights[w];
            if (weight.mVertexId >= geometry.VertexArray.size() || !std::isfinite(weight.mWeight))
                ++dropped;
            else if (weight.mWeight != 0)
                geometry.VertexArray[weight.mVertexId].AddWeight(b, weight.mWeight);
        }
    }
    return dropped;
}

Notes ImportSkins(const std::vector<SkinnedSurface>& skinned, SceneContainer& scene)
{
    Notes notes;
    if (skinned.empty())
        return notes;
    SkinImporter importer(scene);
    for (const SkinnedSurface& surface : skinned)
        importer.Import(surface);
    importer.AddNotes(notes);
    return notes;
}

}  // namespace Sceneprep

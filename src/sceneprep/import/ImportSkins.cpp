#include <sceneprep/import/ImportSkins.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/NodePath.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/model/MeshJoints.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

using Pipeline::NodePath;
using Pipeline::Product;
using Pipeline::WalkFromRoot;

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Joint;
using Importing::SceneContainer;

bool AreSame(const std::vector<Joint>& a, const std::vector<Joint>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Joint& x, const Joint& y) { return x == y && x.GetParentID() == y.GetParentID(); });
}

/// Converts the skins of one file into joints of a scene.
class SkinImporter
{
public:
    explicit SkinImporter(SceneContainer& scene) : scene_(scene), parents_(WalkFromRoot(scene).parent)
    {
        for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
            nodesCalled_[scene.NodeLibrary[node].GetName()].push_back(static_cast<int>(node));
    }

    void Import(const SkinnedSurface& skinned)
    {
        EnterNode(skinned.node);
        const std::vector<Bone> bones = BonesOf(*skinned.mesh);
        const int node = KeepStill(skinned, bones);
        const MeshJoints made = MakeJoints(scene_, parents_, bones, node);
        flattened_ += made.isPlaced ? 0 : 1;
        SetGeometry(skinned, made.joints);
    }

    std::vector<std::string> Notes() const
    {
        std::vector<std::string> notes;
        const auto count = [&notes](std::size_t number, const char* text) {
            if (number > 0)
                notes.push_back(fmt::format("{} ({})", text, number));
        };
        count(lost_, "bones without a node keep the transform of their bind pose");
        count(shared_, "bones whose name several nodes have use the most likely of them");
        count(moved_,
              "skinned meshes at animated nodes are moved to nodes without animation, as only joints move a skin");
        count(unstill_, "skinned meshes below their own animated bones are moved twice");
        count(flattened_, "skinned meshes at nodes with a singular matrix have wrong joint transforms");
        return notes;
    }

private:
    using BoneNodes = std::unordered_map<std::string, int>;  // by name of a bone

    void EnterNode(int node)
    {
        if (!path_ || path_->Nodes().front() != node)
            path_.emplace(parents_, node);
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
        const int parent = At(parents_, node);
        const bool isAmongBones =
            (parent >= 0 && isBone(parent)) || std::any_of(record.ChildList.begin(), record.ChildList.end(), isBone);
        return {!isAmongBones, !record.SurfaceList.empty(), path_->HeightOfMeeting(node)};
    }

    bool Moves(int node) const { return At(scene_.NodeLibrary, node).GetAnimationID() >= 0; }

    /// Moves the surface to a node that is not animated if the skin would be moved twice.
    /// @return the node that references the surface afterwards
    int KeepStill(const SkinnedSurface& skinned, const std::vector<Bone>& bones)
    {
        std::size_t common = 0;  // position on the path of the common ancestor of all joints
        for (const Bone& bone : bones)
        {
            if (bone.node >= 0)
                common = std::max(common, path_->HeightOfMeeting(At(parents_, bone.node)));
        }
        const std::vector<int>& path = path_->Nodes();
        const auto end = path.begin() + static_cast<std::ptrdiff_t>(common);
        if (std::none_of(path.begin(), end, [this](int node) { return Moves(node); }))
            return skinned.node;
        ++(end == path.end() ? unstill_ : moved_);
        return end == path.end() ? skinned.node : MoveSurface(skinned, *end);
    }

    int MoveSurface(const SkinnedSurface& skinned, int ancestor)
    {
        const auto [known, isNew] = stillNodes_.emplace(std::pair(skinned.node, ancestor), -1);
        if (isNew)
            known->second = AddStillNode(skinned.node, ancestor);
        std::vector<std::int32_t>& list = At(scene_.NodeLibrary, skinned.node).SurfaceList;
        list.erase(std::find(list.begin(), list.end(), skinned.surface));
        At(scene_.NodeLibrary, known->second).SurfaceList.push_back(skinned.surface);
        return known->second;
    }

    /// Adds a node with the transform of the given node as a child of one of its ancestors.
    int AddStillNode(int node, int ancestor)
    {
        Importing::Node still;
        still.SetName(At(scene_.NodeLibrary, node).GetName() + " (skin)");
        D3DXMATRIX transform;
        D3DXMatrixIdentity(&transform);
        for (; node != ancestor; node = At(parents_, node))
            transform = Product(transform, At(scene_.NodeLibrary, node).GetLocalTransform().GetMatrix());
        still.SetLocalTransform(Importing::Transform(transform));
        const int index = static_cast<int>(scene_.NodeLibrary.size());
        scene_.NodeLibrary.push_back(std::move(still));
        At(scene_.NodeLibrary, ancestor).ChildList.push_back(index);
        parents_.push_back(ancestor);
        return index;
    }

    /// Uses a geometry of the mesh that has these joints, or sets the joints of a new copy.
    void SetGeometry(const SkinnedSurface& skinned, const std::vector<Joint>& joints)
    {
        Importing::Surface& surface = At(scene_.SurfaceLibrary, skinned.surface);
        std::vector<int>& geometries = geometriesOf_[skinned.mesh];
        const auto same = std::find_if(geometries.begin(), geometries.end(), [&](int geometry) {
            return AreSame(At(scene_.GeometryLibrary, geometry).JointArray, joints);
        });
        int geometry = surface.GetGeometryID();
        if (same != geometries.end())
            geometry = *same;
        else
        {
            if (!geometries.empty())
            {
                Geometry copy = At(scene_.GeometryLibrary, geometries.front());
                geometry = scene_.AddGeometryToLibrary(copy, false);
            }
            At(scene_.GeometryLibrary, geometry).JointArray = joints;
            geometries.push_back(geometry);
        }
        surface.SetGeometryID(geometry);
    }

    SceneContainer& scene_;
    std::vector<int> parents_;
    std::unordered_map<std::string, std::vector<int>> nodesCalled_;
    std::optional<NodePath> path_;                   // of the current node
    std::map<std::pair<int, int>, int> stillNodes_;  // by animated node and ancestor
    std::unordered_map<const aiMesh*, std::vector<int>> geometriesOf_;
    std::size_t lost_ = 0;
    std::size_t shared_ = 0;
    std::size_t moved_ = 0;
    std::size_t unstill_ = 0;
    std::size_t flattened_ = 0;
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

std::vector<std::string> ImportSkins(const std::vector<SkinnedSurface>& skinned, SceneContainer& scene)
{
    if (skinned.empty())
        return {};
    SkinImporter importer(scene);
    for (const SkinnedSurface& surface : skinned)
        importer.Import(surface);
    return importer.Notes();
}

}  // namespace Sceneprep

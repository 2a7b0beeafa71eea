// Joints have only one transform relative to their parent and one list of keys, which are relative to the parent as
// well. Nodes between two bones are multiplied into the joint below if they are not animated; otherwise they become
// joints of their own. Transforms relative to the mesh are cached by node, so each node is visited once for each mesh,
// and a deep skeleton needs no recursion.

#include <sceneprep/model/MeshJoints.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/NodePath.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace Sceneprep
{

using Pipeline::InverseOf;
using Pipeline::NodePath;
using Pipeline::Product;

namespace
{

using Importing::At;
using Importing::SceneContainer;

/// Tolerance for rounding errors, relative to the distances that went into a matrix.
constexpr float kRounding = 1e-4F;

D3DXMATRIX Identity()
{
    D3DXMATRIX identity;
    D3DXMatrixIdentity(&identity);
    return identity;
}

/// @param distance  the largest coordinate that went into the matrices
bool IsNearly(const D3DXMATRIX& a, const D3DXMATRIX& b, float distance)
{
    for (unsigned row = 0; row < 4; ++row)
    {
        for (unsigned column = 0; column < 3; ++column)
        {
            const float tolerance = kRounding * (row < 3 ? std::max(1.0F, std::fabs(b(row, column))) : distance);
            if (!(std::fabs(a(row, column) - b(row, column)) <= tolerance))
                return false;
        }
    }
    return true;
}

float LargestCoordinate(const D3DXMATRIX& matrix)
{
    return std::max({std::fabs(matrix._41), std::fabs(matrix._42), std::fabs(matrix._43)});
}

class JointMaker
{
public:
    JointMaker(SceneContainer& scene, const std::vector<int>& parents, const std::vector<Bone>& bones, int meshNode)
        : scene_(scene), parents_(parents), bones_(bones), path_(parents, meshNode)
    {
        for (const Bone& bone : bones)
            AddJoint(bone.node);
    }

    MeshJoints Make()
    {
        AddMovingNodes();
        PlaceMesh();
        AddFrames();
        MeshJoints made;
        for (std::size_t j = 0; j < nodes_.size(); ++j)
            made.joints.push_back(MakeJoint(j));
        for (const int node : frames_)
            made.joints.push_back(MakeFrame(node));
        made.isPlaced = isPlaced_;
        return made;
    }

private:
    /// The nearest joint at or above a node (-1 for none), and the node's transform relative to that joint or, without
    /// a joint, relative to the mesh.
    struct Link
    {
        int joint;
        D3DXMATRIX frame;
    };

    void AddJoint(int node)
    {
        if (node >= 0)
            jointOf_.emplace(node, static_cast<int>(nodes_.size()));
        nodes_.push_back(node);
    }

    bool IsJoint(int node) const { return jointOf_.count(node) > 0; }

    bool IsAnimated(int node) const
    {
        return Importing::IsValidIndex(At(scene_.NodeLibrary, node).GetAnimationID(), scene_.AnimationLibrary.size());
    }

    D3DXMATRIX LocalOf(int node) const { return At(scene_.NodeLibrary, node).GetLocalTransform().GetMatrix(); }

    void AddMovingNodes()
    {
        std::unordered_set<int> visited;
        for (const Bone& bone : bones_)
        {
            int node = bone.node < 0 ? -1 : At(parents_, bone.node);
            for (; node >= 0 && !IsJoint(node) && !path_.Holds(node); node = At(parents_, node))
            {
                if (!visited.insert(node).second)
                    break;
                if (IsAnimated(node))
                    AddJoint(node);
            }
        }
    }

    /// Keys are relative to the parent of the node, so the parent becomes a joint unless a joint with the same
    /// transform exists.
    void AddFrames()
    {
        for (const int node : nodes_)
        {
            const int parent = node < 0 ? -1 : At(parents_, node);
            if (parent < 0 || !IsAnimated(node) || IsJoint(parent) || frameOf_.count(parent) > 0)
                continue;
            if (!IsNearly(LinkOf(parent).frame, Identity(), distance_))
                frameOf_.emplace(parent, FindOrAddFrame(parent));
        }
    }

    /// Returns the joint with the node's transform, -1 for the mesh.
    int FindOrAddFrame(int node)
    {
        const auto inMesh = seenByMesh_.find(node);
        if (inMesh != seenByMesh_.end() && IsNearly(inMesh->second.frame, Identity(), distance_))
            return -1;
        const int bone = FindStillBone(LinkOf(node));
        if (bone >= 0)
            return bone;
        frames_.push_back(node);
        return static_cast<int>(nodes_.size() + frames_.size()) - 1;
    }

    /// Finds a bone with this transform that is not animated. Files written from joints have their extra frames as
    /// bones.
    int FindStillBone(const Link& place)
    {
        for (std::size_t j = 0; j < bones_.size(); ++j)
        {
            const int node = nodes_[j];
            if (node < 0 || IsAnimated(node))
                continue;
            const Link link = LinkOf(At(parents_, node));
            if (link.joint == place.joint && IsNearly(Product(LocalOf(node), link.frame), place.frame, distance_))
                return static_cast<int>(j);
        }
        return -1;
    }

    /// Computes the transforms of the mesh's node and its ancestors relative to the mesh, up to the first joint.
    void PlaceMesh()
    {
        D3DXMATRIX mesh = Identity();
        for (const int node : path_.Nodes())
        {
            seenByMesh_.emplace(node, LinkToMesh(mesh));
            mesh = Product(mesh, LocalOf(node));
            distance_ = std::max(distance_, LargestCoordinate(mesh));
        }
        links_.emplace(-1, LinkToMesh(mesh));
        for (auto node = path_.Nodes().rbegin(); node != path_.Nodes().rend() && !IsJoint(*node); ++node)
            links_.emplace(*node, seenByMesh_.at(*node));
    }

    Link LinkToMesh(const D3DXMATRIX& mesh)
    {
        const std::optional<D3DXMATRIX> back = InverseOf(mesh);
        isPlaced_ = isPlaced_ && back.has_value();
        return {-1, back.value_or(Identity())};
    }

    Link LinkOf(int node)
    {
        std::vector<int> ancestors;
        for (; links_.count(node) == 0 && !IsJoint(node); node = At(parents_, node))
            ancestors.push_back(node);
        Link link = IsJoint(node) ? Link{jointOf_.at(node), Identity()} : links_.at(node);
        for (auto ancestor = ancestors.rbegin(); ancestor != ancestors.rend(); ++ancestor)
        {
            link.frame = Product(LocalOf(*ancestor), link.frame);
            distance_ = std::max(distance_, LargestCoordinate(link.frame));
            links_.emplace(*ancestor, link);
        }
        return link;
    }

    Importing::Joint MakeJoint(std::size_t index)
    {
        const int node = nodes_[index];
        Importing::Joint joint;
        if (index < bones_.size())
        {
            joint.SetName(bones_[index].name);
            joint.SetBindPoseInverse(bones_[index].bindPoseInverse);
        }
        else
            joint.SetName(At(scene_.NodeLibrary, node).GetName());
        if (node < 0)
        {
            joint.SetLocalTM(InverseOf(bones_[index].bindPoseInverse).value_or(Identity()));
            return joint;
        }
        const int parent = At(parents_, node);
        const auto frame = frameOf_.find(parent);
        const Link link =
            IsAnimated(node) && frame != frameOf_.end() ? Link{frame->second, Identity()} : LinkOf(parent);
        joint.SetParentID(link.joint);
        joint.SetLocalTM(Product(LocalOf(node), link.frame));
        if (IsAnimated(node))
            joint.SetAnimationID(At(scene_.NodeLibrary, node).GetAnimationID());
        return joint;
    }

    /// A frame has no animation: an animated frame is an ancestor of the mesh and moves the mesh as well.
    Importing::Joint MakeFrame(int node)
    {
        const Link link = LinkOf(node);
        Importing::Joint joint(At(scene_.NodeLibrary, node).GetName());
        joint.SetParentID(link.joint);
        joint.SetLocalTM(link.frame);
        return joint;
    }

    SceneContainer& scene_;
    const std::vector<int>& parents_;
    const std::vector<Bone>& bones_;
    NodePath path_;                             // of the mesh's node
    std::vector<int> nodes_;                    // by joint: its node
    std::unordered_map<int, int> jointOf_;      // by node
    std::vector<int> frames_;                   // nodes of the joints after those
    std::unordered_map<int, int> frameOf_;      // joint by node
    std::unordered_map<int, Link> seenByMesh_;  // by node at or above the mesh's node, ignoring joints
    std::unordered_map<int, Link> links_;       // by node, -1 for the world
    float distance_ = 0;
    bool isPlaced_ = true;
};

}  // namespace

MeshJoints MakeJoints(SceneContainer& scene, const std::vector<int>& parents, const std::vector<Bone>& bones,
                      int meshNode)
{
    return JointMaker(scene, parents, bones, meshNode).Make();
}

}  // namespace Sceneprep

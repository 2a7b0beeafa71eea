#include <sceneprep/export/gltf/Skins.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/export/gltf/Placement.h>
#include <sceneprep/export/gltf/Utf8.h>

#include <cstring>

namespace Sceneprep::Gltf
{

using Pipeline::JointNode;
using Pipeline::NodeWalk;
using Pipeline::Product;

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Joint;

template <typename Record>
void CountNames(std::vector<Record>& library, std::map<std::string, std::size_t>& uses)
{
    for (Record& record : library)
        ++uses[record.GetName()];
}

}  // namespace

SkinWriter::SkinWriter(Importing::SceneContainer& scene, const NodeWalk& walk, Buffers& buffers,
                       AnimationWriter& animations, tinygltf::Model& model)
    : scene_(scene), buffers_(buffers), animations_(animations), model_(model), walk_(walk),
      isJoint_(scene.NodeLibrary.size(), false)
{}

void SkinWriter::Announce(int geometry, int node)
{
    std::vector<int>& joints = jointsOf_[{geometry, node}];
    if (!joints.empty())
        return;
    if (!skeletons_)
        Prepare();
    joints = skeletons_->Find(At(scene_.GeometryLibrary, geometry), node);
    for (const int joint : joints)
    {
        if (Importing::IsValidIndex(joint, isJoint_.size()))
            isJoint_[static_cast<std::size_t>(joint)] = true;
    }
}

std::string SkinWriter::NameOf(int node)
{
    const std::string name = At(scene_.NodeLibrary, node).GetName();
    const bool needsOwnName = isJoint_[static_cast<std::size_t>(node)] && (name.empty() || nameUses_[name] > 1);
    return needsOwnName ? UniqueName(name) : name;
}

void SkinWriter::AddJointNodes(std::vector<int>& carriers)
{
    if (!skeletons_)
        return;
    for (const JointNode& joint : skeletons_->JointNodes())
    {
        const int parent = At(carriers, joint.parent);
        const int added = static_cast<int>(model_.nodes.size());
        carriers.push_back(AddNode(joint, UniqueName(joint.name)));
        At(model_.nodes, parent).children.push_back(added);
    }
}

int SkinWriter::Add(int geometry, int node, const std::vector<int>& carriers)
{
    Geometry& mesh = At(scene_.GeometryLibrary, geometry);
    tinygltf::Skin skin;
    skin.name = ToUtf8(mesh.GetName());
    skin.inverseBindMatrices = AddInverseBinds(mesh);
    for (const int joint : jointsOf_.at({geometry, node}))
        skin.joints.push_back(At(carriers, joint));

    const auto [same, isNew] =
        skins_.emplace(std::pair(skin.joints, skin.inverseBindMatrices), static_cast<int>(model_.skins.size()));
    if (isNew)
        model_.skins.push_back(std::move(skin));
    return same->second;
}

void SkinWriter::Prepare()
{
    skeletons_.emplace(scene_, walk_);
    CountNames(scene_.NodeLibrary, nameUses_);
    // Those of which a node has several get a node each.
    CountNames(scene_.SurfaceLibrary, nameUses_);
    CountNames(scene_.CameraLibrary, nameUses_);
    CountNames(scene_.LightLibrary, nameUses_);
}

std::string SkinWriter::UniqueName(const std::string& wanted)
{
    const std::string plain = wanted.empty() ? "joint" : wanted;
    std::string unique = plain;
    for (int number = 2; nameUses_[unique] > 0; ++number)
        unique = fmt::format("{}_{}", plain, number);
    ++nameUses_[unique];
    return unique;
}

/// @return the node that is the joint: the inner one of two where the placement shears.
int SkinWriter::AddNode(const JointNode& joint, const std::string& name)
{
    const int index = static_cast<int>(model_.nodes.size());
    tinygltf::Node node;
    node.name = ToUtf8(name);
    if (joint.animation >= 0)
    {
        // What moves has to be placed in parts.
        if (IsFinite(joint.local))
            SetParts(SplitShearFree(joint.local), node);
        model_.nodes.push_back(std::move(node));
        animations_.Add(At(scene_.AnimationLibrary, joint.animation), index);
        return index;
    }
    const std::optional<D3DXQUATERNION> turn = Place(joint.local, node);
    if (!turn)
    {
        model_.nodes.push_back(std::move(node));
        return index;
    }
    tinygltf::Node inner;
    std::swap(inner.name, node.name);
    node.name = inner.name + " (sheared)";
    node.children.push_back(index + 1);
    SetRotation(*turn, inner);
    model_.nodes.push_back(std::move(node));
    model_.nodes.push_back(std::move(inner));
    return index + 1;
}

int SkinWriter::AddInverseBinds(Geometry& geometry)
{
    Matrices matrices;
    for (Joint& joint : geometry.JointArray)
    {
        D3DXMATRIX matrix = Product(geometry.GetBindShapeTransform(), joint.GetBindPoseInverse());
        if (!IsFinite(matrix))
            D3DXMatrixIdentity(&matrix);
        matrix._14 = matrix._24 = matrix._34 = 0;
        matrix._44 = 1;
        std::memcpy(matrices.emplace_back().data(), &matrix, sizeof(matrix));
    }
    const auto [known, isNew] = inverseBinds_.emplace(std::move(matrices), -1);
    if (isNew)
        known->second = buffers_.Add(known->first, {TINYGLTF_TYPE_MAT4, TINYGLTF_COMPONENT_TYPE_FLOAT}, Usage::Other);
    return known->second;
}

}  // namespace Sceneprep::Gltf

#include <sceneprep/gltf/Skins.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/gltf/Placement.h>
#include <sceneprep/gltf/Utf8.h>

#include <array>
#include <cstring>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::Geometry;
using Importing::Joint;

/// [joints] the joint's parent; -1 for those below none.
std::vector<int> ParentsOf(Geometry& geometry)
{
    const std::size_t count = geometry.JointArray.size();
    std::vector<int> parents;
    for (Joint& joint : geometry.JointArray)
        parents.push_back(Importing::IsValidIndex(joint.GetParentID(), count) ? joint.GetParentID() : -1);

    // Whoever meets himself among his ancestors is cut off; each joint is walked over once.
    enum class State
    {
        Unknown,
        OnPath,
        Done
    };
    std::vector<State> states(count, State::Unknown);
    for (std::size_t start = 0; start < count; ++start)
    {
        std::vector<std::size_t> path;
        std::size_t joint = start;
        while (states[joint] == State::Unknown)
        {
            states[joint] = State::OnPath;
            path.push_back(joint);
            if (parents[joint] < 0)
                break;
            if (states[static_cast<std::size_t>(parents[joint])] == State::OnPath)
                parents[joint] = -1;
            else
                joint = static_cast<std::size_t>(parents[joint]);
        }
        for (const std::size_t walked : path)
            states[walked] = State::Done;
    }
    return parents;
}

}  // namespace

SkinWriter::SkinWriter(Importing::SceneContainer& scene, Buffers& buffers, AnimationWriter& animations,
                       tinygltf::Model& model)
    : scene_(scene), buffers_(buffers), animations_(animations), model_(model)
{}

int SkinWriter::Add(Geometry& geometry, int node)
{
    tinygltf::Skin skin;
    skin.name = ToUtf8(geometry.GetName());
    skin.inverseBindMatrices = AddInverseBinds(geometry);
    for (Joint& joint : geometry.JointArray)
        skin.joints.push_back(AddJoint(joint));

    const std::vector<int> parents = ParentsOf(geometry);
    for (std::size_t j = 0; j < parents.size(); ++j)
    {
        const int parent = parents[j] < 0 ? node : skin.joints[static_cast<std::size_t>(parents[j])];
        model_.nodes[static_cast<std::size_t>(parent)].children.push_back(skin.joints[j]);
    }
    model_.skins.push_back(std::move(skin));
    return static_cast<int>(model_.skins.size() - 1);
}

int SkinWriter::AddJoint(Joint& joint)
{
    const int index = static_cast<int>(model_.nodes.size());
    tinygltf::Node node;
    node.name = ToUtf8(joint.GetName());
    const D3DXMATRIX local = joint.GetLocalTM();
    if (IsFinite(local))
        SetParts(SplitShearFree(local), node);
    model_.nodes.push_back(std::move(node));
    if (Importing::IsValidIndex(joint.GetAnimationID(), scene_.AnimationLibrary.size()))
        animations_.Add(Importing::At(scene_.AnimationLibrary, joint.GetAnimationID()), index);
    return index;
}

int SkinWriter::AddInverseBinds(Geometry& geometry)
{
    const auto found = inverseBinds_.find(&geometry);
    if (found != inverseBinds_.end())
        return found->second;
    std::vector<std::array<float, 16>> matrices;
    for (Joint& joint : geometry.JointArray)
    {
        D3DXMATRIX matrix = joint.GetBindPoseInverse();
        if (!IsFinite(matrix))
            D3DXMatrixIdentity(&matrix);
        matrix._14 = matrix._24 = matrix._34 = 0;
        matrix._44 = 1;
        std::memcpy(matrices.emplace_back().data(), &matrix, sizeof(matrix));
    }
    return inverseBinds_[&geometry] =
               buffers_.Add(matrices, {TINYGLTF_TYPE_MAT4, TINYGLTF_COMPONENT_TYPE_FLOAT}, Usage::Other);
}

}  // namespace Sceneprep::Gltf

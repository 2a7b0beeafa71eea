#include <sceneprep/export/gltf/Skins.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/NodePath.h>
#include <sceneprep/export/gltf/CarriedAccessors.h>
#include <sceneprep/export/gltf/CarriedKeys.h>
#include <sceneprep/export/gltf/Placement.h>

#include <algorithm>
#include <cstring>
#include <set>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Joint;

}  // namespace

KeptSkins::KeptSkins(const Model& model, const Pipeline::NodeWalk& walk) : model_(model)
{
    std::set<int> keys;
    for (const int node : walk.order)
        keys.insert(KeyAt(model.supplement.nodeKeys, node));
    for (const CarriedSkin& skin : model.carried.skins)
        isKept_.push_back(std::all_of(skin.joints.begin(), skin.joints.end(),
                                      [&](int joint) { return joint >= 0 && keys.contains(joint); }));
}

int KeptSkins::Find(int geometry, int node) const
{
    const CarriedNode* carried = CarriedNodeOf(model_, node);
    if (carried == nullptr || !Importing::IsValidIndex(carried->skin, isKept_.size()))
        return -1;
    // Joints after those of the file are what formats need whose joints are no nodes; no weights belong to them.
    const std::size_t joints = At(model_.scene->GeometryLibrary, geometry).JointArray.size();
    const bool isKept = isKept_[static_cast<std::size_t>(carried->skin)] &&
                        joints >= At(model_.carried.skins, carried->skin).joints.size();
    return isKept ? carried->skin : -1;
}

int SkinWriter::AddKept(int skin, const WrittenNodes& nodes)
{
    const auto [found, isNew] = kept_.emplace(skin, static_cast<int>(document_.skins.size()));
    if (!isNew)
        return found->second;
    const CarriedSkin& source = At(model_.carried.skins, skin);
    Json target = source.object;
    if (source.inverseBindMatrices)
        target["inverseBindMatrices"] =
            AddCarried(*source.inverseBindMatrices, Usage::Other, false, buffers_, document_);
    if (const int root = FindSkeletonRoot(source, nodes); root >= 0)
        target["skeleton"] = root;
    target["joints"] = Json::array();
    for (const int joint : source.joints)
        target["joints"].push_back(nodes.InnerOf(joint));
    return Append(document_.skins, std::move(target));
}

/// Returns the node that the skin calls its skeleton or, where that node has collapsed, the lowest one above all
/// joints; -1 for none.
int SkinWriter::FindSkeletonRoot(const CarriedSkin& skin, const WrittenNodes& nodes) const
{
    const int root = nodes.InnerOf(skin.skeleton);
    if (root >= 0 || skin.skeleton < 0 || skin.joints.empty())
        return root;
    std::vector<int> parents;
    for (const PlannedNode& node : plan_.nodes)
        parents.push_back(node.parent);
    Pipeline::NodePath path(parents, nodes.plannedOfKey.at(skin.joints.front()));
    std::size_t height = 0;
    for (const int joint : skin.joints)
        height = std::max(height, path.HeightOfMeeting(nodes.plannedOfKey.at(joint)));
    return height < path.Nodes().size() ? At(nodes.inner, path.Nodes()[height]) : -1;
}

int SkinWriter::AddMade(int geometry, int skeleton, const WrittenNodes& nodes)
{
    Geometry& mesh = At(model_.scene->GeometryLibrary, geometry);
    const int inverseBinds = AddInverseBinds(mesh);
    const auto [same, isNew] =
        made_.emplace(std::pair(skeleton, inverseBinds), static_cast<int>(document_.skins.size()));
    if (!isNew)
        return same->second;
    Json skin = Json::object();
    if (!mesh.GetName().empty())
        skin["name"] = mesh.GetName();
    skin["inverseBindMatrices"] = inverseBinds;
    skin["joints"] = Json::array();
    for (const int joint : At(plan_.skeletons, skeleton))
        skin["joints"].push_back(At(nodes.inner, joint));
    return Append(document_.skins, std::move(skin));
}

int SkinWriter::AddInverseBinds(Geometry& geometry)
{
    Matrices matrices;
    for (Joint& joint : geometry.JointArray)
    {
        D3DXMATRIX matrix = Pipeline::Product(geometry.GetBindShapeTransform(), joint.GetBindPoseInverse());
        if (!IsFinite(matrix))
            D3DXMatrixIdentity(&matrix);
        matrix._14 = matrix._24 = matrix._34 = 0;
        matrix._44 = 1;
        std::memcpy(matrices.emplace_back().data(), &matrix, sizeof(matrix));
    }
    const auto [known, isNew] = inverseBinds_.emplace(std::move(matrices), -1);
    if (isNew)
        known->second = buffers_.Add(known->first, {"MAT4"}, Usage::Other);
    return known->second;
}

}  // namespace Sceneprep::Gltf

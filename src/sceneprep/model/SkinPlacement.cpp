// A skin must be referenced by a node that is not animated unless its joints are animated by the same node. So the path
// from the node to the nearest ancestor that it has in common with all joints must be free of animations; otherwise the
// surface moves to a new child of that ancestor.

#include <sceneprep/model/SkinPlacement.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>

#include <algorithm>

namespace Sceneprep
{

using Pipeline::NodePath;
using Pipeline::Product;
using Pipeline::WalkFromRoot;

namespace
{

using Importing::At;
using Importing::Joint;

bool AreSame(const std::vector<Joint>& a, const std::vector<Joint>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Joint& x, const Joint& y) { return x == y && x.GetParentID() == y.GetParentID(); });
}

}  // namespace

SkinPlacement::SkinPlacement(Importing::SceneContainer& scene) : scene_(scene), parents_(WalkFromRoot(scene).parent) {}

void SkinPlacement::Place(int surface, int node, const std::vector<Bone>& bones)
{
    if (!path_ || path_->Nodes().front() != node)
        path_.emplace(parents_, node);
    const int still = KeepStill(surface, node, bones);
    const MeshJoints made = MakeJoints(scene_, parents_, bones, still);
    flattened_ += made.isPlaced ? 0 : 1;
    SetGeometry(surface, made.joints);
}

void SkinPlacement::AddNotes(Notes& notes) const
{
    notes.Add("skinned meshes at animated nodes are moved to nodes without animation, as only joints move a skin",
              moved_);
    notes.AddLoss("skins", "skinned meshes below their own animated bones are moved twice", unstill_);
    notes.AddLoss("skins", "skinned meshes at nodes with a singular matrix have wrong joint transforms", flattened_);
}

/// Returns the node that references the surface from now on.
int SkinPlacement::KeepStill(int surface, int node, const std::vector<Bone>& bones)
{
    std::size_t common = 0;  // where on the path all joints hang from
    for (const Bone& bone : bones)
    {
        if (bone.node >= 0)
            common = std::max(common, path_->HeightOfMeeting(At(parents_, bone.node)));
    }
    const std::vector<int>& path = path_->Nodes();
    const auto end = path.begin() + static_cast<std::ptrdiff_t>(common);
    const auto moves = [this](int other) { return At(scene_.NodeLibrary, other).GetAnimationID() >= 0; };
    if (std::none_of(path.begin(), end, moves))
        return node;
    ++(end == path.end() ? unstill_ : moved_);
    return end == path.end() ? node : MoveSurface(surface, node, *end);
}

int SkinPlacement::MoveSurface(int surface, int node, int ancestor)
{
    const auto [known, isNew] = stillNodeOf_.emplace(std::pair(node, ancestor), -1);
    if (isNew)
        known->second = AddStillNode(node, ancestor);
    std::vector<std::int32_t>& list = At(scene_.NodeLibrary, node).SurfaceList;
    list.erase(std::find(list.begin(), list.end(), surface));
    At(scene_.NodeLibrary, known->second).SurfaceList.push_back(surface);
    return known->second;
}

/// Adds a node at the position of the node, below an ancestor of it.
int SkinPlacement::AddStillNode(int node, int ancestor)
{
    Importing::Node still;
    still.SetName(At(scene_.NodeLibrary, node).GetName() + " (skin)");
    D3DXMATRIX local;
    D3DXMatrixIdentity(&local);
    for (int above = node; above != ancestor; above = At(parents_, above))
        local = Product(local, At(scene_.NodeLibrary, above).GetLocalTransform().GetMatrix());
    still.SetLocalTransform(Importing::Transform(local));
    const int index = static_cast<int>(scene_.NodeLibrary.size());
    scene_.NodeLibrary.push_back(std::move(still));
    At(scene_.NodeLibrary, ancestor).ChildList.push_back(index);
    parents_.push_back(ancestor);
    stillNodes_.emplace_back(index, node);
    return index;
}

/// Uses the first geometry of the mesh that has these joints, or a copy of one that gets them.
void SkinPlacement::SetGeometry(int surfaceIndex, const std::vector<Joint>& joints)
{
    Importing::Surface& surface = At(scene_.SurfaceLibrary, surfaceIndex);
    const int original = surface.GetGeometryID();
    std::vector<int>& geometries = geometriesOf_[original];
    const auto same = std::find_if(geometries.begin(), geometries.end(), [&](int geometry) {
        return AreSame(At(scene_.GeometryLibrary, geometry).JointArray, joints);
    });
    if (same != geometries.end())
    {
        surface.SetGeometryID(*same);
        return;
    }
    int geometry = original;
    if (!geometries.empty())
    {
        Importing::Geometry copy = At(scene_.GeometryLibrary, original);
        geometry = scene_.AddGeometryToLibrary(copy, false);
        copies_.emplace_back(geometry, original);
    }
    At(scene_.GeometryLibrary, geometry).JointArray = joints;
    geometries.push_back(geometry);
    surface.SetGeometryID(geometry);
}

}  // namespace Sceneprep

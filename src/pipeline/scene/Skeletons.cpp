// Files contain skeletons several times, under equal names, so a name does not identify the node of a joint. Nodes are
// put into a table by name, animation and nearest animated node above; only the nodes of one entry are compared by
// their world matrices. The time is linear in nodes and joints unless many nodes share an entry.

#include <pipeline/scene/Skeletons.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <cmath>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Joint;
using Importing::SceneContainer;

/// Tolerance when matrices are compared: relative to the length of the axes, and to the extent of the skeleton for
/// translations.
constexpr float kSamePlace = 1e-4F;

float LargestCoordinate(const D3DXMATRIX& matrix)
{
    return std::max({std::fabs(matrix._41), std::fabs(matrix._42), std::fabs(matrix._43)});
}

bool IsSamePlace(const D3DXMATRIX& a, const D3DXMATRIX& b, float distance)
{
    float length = 0;
    for (unsigned row = 0; row < 3; ++row)
    {
        for (unsigned column = 0; column < 3; ++column)
            length = std::max(length, std::fabs(a(row, column)));
    }
    for (unsigned row = 0; row < 4; ++row)
    {
        const float tolerance = kSamePlace * (row < 3 ? length : distance);
        for (unsigned column = 0; column < 3; ++column)
        {
            if (!(std::fabs(a(row, column) - b(row, column)) <= tolerance))
                return false;
        }
    }
    return true;
}

/// Returns the joints in an order in which parents precede their children.
std::vector<std::size_t> OrderOf(const std::vector<int>& parents)
{
    std::vector<std::size_t> order;
    std::vector<bool> listed(parents.size(), false);
    for (std::size_t joint = 0; joint < parents.size(); ++joint)
    {
        std::vector<std::size_t> way;
        for (int up = static_cast<int>(joint); up >= 0 && !listed[static_cast<std::size_t>(up)]; up = At(parents, up))
        {
            listed[static_cast<std::size_t>(up)] = true;
            way.push_back(static_cast<std::size_t>(up));
        }
        order.insert(order.end(), way.rbegin(), way.rend());
    }
    return order;
}

/// Returns the largest coordinate of a joint in the space of the mesh.
float ExtentOf(Geometry& geometry, const std::vector<int>& parents, const std::vector<std::size_t>& order)
{
    std::vector<D3DXMATRIX> placed(parents.size());
    float extent = 0;
    for (const std::size_t joint : order)
    {
        placed[joint] = geometry.JointArray[joint].GetLocalTM();
        if (parents[joint] >= 0)
            placed[joint] = Product(placed[joint], At(placed, parents[joint]));
        extent = std::max(extent, LargestCoordinate(placed[joint]));
    }
    return extent;
}

/// Returns an estimate of the largest scale of a matrix: the length of its longest row.
float StretchOf(const D3DXMATRIX& m)
{
    return std::max(
        {std::hypot(m._11, m._12, m._13), std::hypot(m._21, m._22, m._23), std::hypot(m._31, m._32, m._33)});
}

}  // namespace

Skeletons::Skeletons(SceneContainer& scene, const NodeWalk& walk) : scene_(scene)
{
    places_.resize(scene.NodeLibrary.size());
    const std::vector<D3DXMATRIX> worlds = WorldMatricesOf(scene, walk);
    for (const int index : walk.order)
    {
        Importing::Node& node = At(scene.NodeLibrary, index);
        const int parent = At(walk.parent, index);
        Place& place = At(places_, index);
        place.world = At(worlds, index);
        D3DXMatrixIdentity(&place.frame);
        if (parent >= 0)
            place.frame = At(worlds, parent);
        place.animation = AnimationOf(node.GetAnimationID());
        place.mover = parent >= 0 ? MoverBelow(parent) : -1;
        Enter(node.GetName(), place, index);
    }
}

std::vector<int> Skeletons::Find(Geometry& geometry, int node)
{
    const std::vector<int> parents = JointParents(geometry);
    const std::vector<std::size_t> order = OrderOf(parents);
    const D3DXMATRIX world = At(places_, node).world;
    const float distance = LargestCoordinate(world) + ExtentOf(geometry, parents, order) * StretchOf(world);
    ++meshes_;
    std::vector<int> nodes(parents.size(), -1);
    for (const std::size_t joint : order)
    {
        const int parent = parents[joint] < 0 ? node : At(nodes, parents[joint]);
        nodes[joint] = FindOrAdd(geometry.JointArray[joint], parent, distance);
    }
    return nodes;
}

int Skeletons::AnimationOf(int animation) const
{
    return Importing::IsValidIndex(animation, scene_.AnimationLibrary.size()) ? animation : -1;
}

int Skeletons::MoverBelow(int node) const
{
    const Place& place = At(places_, node);
    return place.animation >= 0 ? node : place.mover;
}

void Skeletons::Enter(const std::string& name, const Place& place, int node)
{
    candidates_[{name, place.animation, place.mover}].push_back(node);
}

int Skeletons::FindSame(const std::string& name, const Place& place, float distance) const
{
    const auto found = candidates_.find({name, place.animation, place.mover});
    if (found == candidates_.end())
        return -1;
    const auto same = std::find_if(found->second.begin(), found->second.end(), [&](int candidate) {
        const Place& other = At(places_, candidate);
        return other.taken != meshes_ && IsSamePlace(place.world, other.world, distance) &&
               (place.animation < 0 || IsSamePlace(place.frame, other.frame, distance));
    });
    return same == found->second.end() ? -1 : *same;
}

int Skeletons::FindOrAdd(Joint& joint, int parent, float distance)
{
    const std::string name = joint.GetName();
    const D3DXMATRIX frame = At(places_, parent).world;
    const Place place = {.world = Product(joint.GetLocalTM(), frame),
                         .frame = frame,
                         .animation = AnimationOf(joint.GetAnimationID()),
                         .mover = MoverBelow(parent),
                         .taken = 0};
    int node = FindSame(name, place, distance);
    if (node < 0)
    {
        node = static_cast<int>(places_.size());
        jointNodes_.push_back({name, parent, joint.GetLocalTM(), place.animation});
        places_.push_back(place);
        Enter(name, place, node);
    }
    At(places_, node).taken = meshes_;
    return node;
}

std::vector<int> JointParents(Geometry& geometry)
{
    const std::size_t count = geometry.JointArray.size();
    std::vector<int> parents;
    for (Joint& joint : geometry.JointArray)
        parents.push_back(Importing::IsValidIndex(joint.GetParentID(), count) ? joint.GetParentID() : -1);

    // Breaks cycles of parents: the joint whose parent is on the current path becomes a root. Each joint is walked
    // once.
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

bool IsSkinned(const SceneContainer& scene, int surface)
{
    const int geometry = At(scene.SurfaceLibrary, surface).GetGeometryID();
    return geometry >= 0 && !At(scene.GeometryLibrary, geometry).JointArray.empty();
}

bool IsBakeable(const WorkScene& scene, int surface)
{
    const int geometry = At(scene.container.SurfaceLibrary, surface).GetGeometryID();
    return geometry >= 0 && !IsSkinned(scene.container, surface) &&
           !IsPinned(scene.supplement, static_cast<std::size_t>(geometry)) &&
           !IsShared(scene.supplement, static_cast<std::size_t>(geometry));
}

std::vector<SkinnedMesh> ListSkinnedMeshes(const SceneContainer& scene, const NodeWalk& walk)
{
    std::vector<SkinnedMesh> meshes;
    for (const int node : walk.order)
    {
        for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
        {
            if (IsSkinned(scene, surface))
                meshes.push_back({At(scene.SurfaceLibrary, surface).GetGeometryID(), node});
        }
    }
    return meshes;
}

std::vector<bool> FindJointNodes(SceneContainer& scene, const NodeWalk& walk)
{
    std::vector<bool> isJoint(scene.NodeLibrary.size(), false);
    const std::vector<SkinnedMesh> meshes = ListSkinnedMeshes(scene, walk);
    if (meshes.empty())
        return isJoint;
    Skeletons skeletons(scene, walk);
    for (const SkinnedMesh& mesh : meshes)
    {
        for (const int node : skeletons.Find(At(scene.GeometryLibrary, mesh.geometry), mesh.node))
        {
            if (Importing::IsValidIndex(node, isJoint.size()))
                isJoint[static_cast<std::size_t>(node)] = true;
        }
    }
    return isJoint;
}

}  // namespace Pipeline

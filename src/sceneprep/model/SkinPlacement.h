#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/NodePath.h>
#include <sceneprep/model/MeshJoints.h>
#include <sceneprep/run/Notes.h>

#include <cstddef>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Sceneprep
{

/// Gives the geometries of skinned surfaces their joints.
///
/// The transforms of joints are relative to the node that references the surface, so surfaces with different joint
/// transforms get a copy of the geometry. Only joints move a skin: if its node is animated and the joints do not move
/// with it, a new node without animation references the surface. Nodes and their animations must be in the scene.
class SkinPlacement
{
public:
    /// @param scene  has to outlive the object
    explicit SkinPlacement(Importing::SceneContainer& scene);

    /// Gives the geometry of a surface its joints.
    /// @param surface  shares its geometry only with surfaces of the same mesh
    /// @param node     the node that references the surface
    void Place(int surface, int node, const std::vector<Bone>& bones);

    /// [nodes] index of the parent, -1 for the root; with the nodes that were added.
    const std::vector<int>& Parents() const { return parents_; }

    /// Pairs of a new record and the record of which it is a copy.
    using Added = std::vector<std::pair<int, int>>;
    const Added& Copies() const { return copies_; }          ///< geometries
    const Added& StillNodes() const { return stillNodes_; }  ///< nodes

    /// Adds notes about skins that differ from the file. Skins with wrong positions are a loss, `skins`.
    void AddNotes(Notes& notes) const;

private:
    int KeepStill(int surface, int node, const std::vector<Bone>& bones);
    int MoveSurface(int surface, int node, int ancestor);
    int AddStillNode(int node, int ancestor);
    void SetGeometry(int surface, const std::vector<Importing::Joint>& joints);

    Importing::SceneContainer& scene_;
    std::vector<int> parents_;
    std::optional<Pipeline::NodePath> path_;                  ///< of the current node
    std::map<std::pair<int, int>, int> stillNodeOf_;          ///< by moving node and ancestor
    std::unordered_map<int, std::vector<int>> geometriesOf_;  ///< by original geometry: it and its copies
    Added copies_;
    Added stillNodes_;
    std::size_t moved_ = 0;
    std::size_t unstill_ = 0;
    std::size_t flattened_ = 0;
};

}  // namespace Sceneprep

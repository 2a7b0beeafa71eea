#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/NodePath.h>
#include <sceneprep/model/MeshJoints.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Sceneprep
{

/// Gives the geometries of skinned surfaces their joints.
///
/// Joints are placed in the frame of the node that references the surface, so surfaces that see them at different
/// places get a copy of the geometry. A skin follows its joints alone: if its node moves and the joints do not, the
/// surface is referenced by a new node that does not move. Nodes and their animations have to be in the scene.
class SkinPlacement
{
public:
    /// @param scene  has to outlive the object
    explicit SkinPlacement(Importing::SceneContainer& scene);

    /// @param surface  shares its geometry with surfaces of the same mesh alone
    /// @param node     the node that references the surface
    void Place(int surface, int node, const std::vector<Bone>& bones);

    /// [nodes] index of the parent, -1 for the root; with the nodes that were added.
    const std::vector<int>& Parents() const { return parents_; }

    /// What was added: the new record, and the one that it was made of.
    using Added = std::vector<std::pair<int, int>>;
    const Added& Copies() const { return copies_; }          ///< geometries
    const Added& StillNodes() const { return stillNodes_; }  ///< nodes

    /// @return what cannot be kept as the file has it, one line each.
    std::vector<std::string> Notes() const;

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

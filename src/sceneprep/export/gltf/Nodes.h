#pragma once

#include <sceneprep/export/gltf/Animations.h>
#include <sceneprep/export/gltf/CarriedKeys.h>
#include <sceneprep/export/plan/ExportPlan.h>
#include <sceneprep/model/Model.h>

#include <optional>
#include <unordered_map>
#include <vector>

namespace Sceneprep::Gltf
{

/// Where the planned nodes are in the document.
struct WrittenNodes
{
    std::vector<int> outer;  ///< [planned nodes] the node that has the transform; -1 for a root that is omitted
    /// [planned nodes] The node that has children, meshes, cameras and lights: the outer node, or its child where the
    /// transform shears.
    std::vector<int> inner;
    std::unordered_map<int, int> plannedOfKey;  ///< planned nodes by their key in Carried::nodes
    std::size_t unplaced = 0;                   ///< nodes whose matrix is not finite

    /// @return the node of a key, the outer or the inner one; -1 where no such node is written.
    int OuterOf(int key) const;
    int InnerOf(int key) const;
};

/// Writes the planned nodes with their transforms and their children.
///
/// A node that came from glTF keeps its name, extras and extensions, and its transform as it was written there while
/// its local matrix is the same bit for bit. The root that reading had to add is omitted when it adds nothing and the
/// joints of no skin need it in common. A note of a node becomes its extra `note`.
WrittenNodes WriteNodes(const Model& model, const ExportPlan& plan, const AnimatedKeys& animated,
                        AnimationWriter& animations, Document& document);

/// Appends a node, with a name unless it is empty, to the children of a node.
/// @return its index.
int AppendChild(int parent, const std::string& name, Document& document);

}  // namespace Sceneprep::Gltf

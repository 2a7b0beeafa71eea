#pragma once

#include <sceneprep/import/gltf/Field.h>

#include <optional>
#include <string>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The hierarchy of all nodes of a document. It has been checked: every node has at most one parent, and no node is its
/// own ancestor.
struct NodeTree
{
    std::vector<int> parent;                 ///< [nodes] -1 for roots
    std::vector<std::vector<int>> children;  ///< [nodes]
};

/// @throws FormatError if a node has two parents or is its own ancestor.
NodeTree ReadNodeTree(const Field& document);

/// The scene that is read.
struct ChosenScene
{
    int index = -1;          ///< -1 for documents without scenes
    std::vector<int> roots;  ///< in the order of the file
};

/// Chooses a scene: the one with that name or number, else the default scene, else the first one. In a document without
/// scenes, all nodes without a parent are roots.
/// @param wanted  a name, or a number counted from 0; names take precedence
/// @throws FormatError if the scene does not exist, or one of its roots is the child of a node.
ChosenScene ChooseScene(const Field& document, const NodeTree& tree, const std::optional<std::string>& wanted);

}  // namespace Sceneprep::GltfImport

#pragma once

#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/Meshes.h>
#include <sceneprep/import/gltf/NodeTree.h>
#include <sceneprep/model/Model.h>

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace Sceneprep::GltfImport
{

/// A surface that a skin moves.
struct SkinnedSurface
{
    int surface;
    int node;  ///< the container's node that references it
    int skin;
};

/// The nodes of the scene that was read.
struct SceneNodes
{
    std::vector<int> nodeOf = {};  ///< [nodes of the file] index into the node library; -1 outside of the scene
    std::vector<SkinnedSurface> skinned = {};
};

/// Adds the nodes of a scene to the container, parents before children, with surfaces, cameras and lights. A root is
/// added unless the scene has exactly one. An instance is a child node with the name of its node.
class Nodes
{
public:
    /// All have to outlive the object.
    Nodes(const Field& document, Accessors& accessors, Meshes& meshes, Model& model);

    /// @throws FormatError when nodes refer to objects that do not exist, or these are not valid.
    SceneNodes Read(const NodeTree& tree, const ChosenScene& scene);

    /// Adds notes about what could not be kept.
    void AddNotes(Notes& notes) const;

    /// To be called last: moves the objects of the nodes into Carried::nodes, without what the container holds. Those
    /// of nodes outside of the scene are empty.
    /// @param nodes  the list of the document
    void CarryNodes(Json& nodes);

private:
    int AddNode(const Field& field, int key, int parent);
    int AddBareNode(const std::string& name, const D3DXMATRIX& local, int key, int parent);
    void AddSurfaces(const Field& field, int node, SceneNodes& nodes);
    void AddMesh(const Field& field, int mesh, int skin, int node, SceneNodes& nodes);
    void AddCameras(const Field& field, int node);
    void AddLights(const Field& field, int node);
    bool IsOwnNode(const Field& field) const;

    Field document_;
    std::optional<Field> list_;  ///< none in documents without nodes
    std::size_t meshCount_;
    std::size_t skinCount_;
    std::size_t cameraCount_;
    Accessors& accessors_;
    Meshes& meshes_;
    Model& model_;
    std::vector<D3DXMATRIX> local_;                       ///< [nodes of the file]
    std::vector<int> skin_;                               ///< [nodes of the file]
    std::vector<bool> isRead_;                            ///< [nodes of the file] whether they are in the scene
    std::vector<std::pair<int, int>> weightedInstances_;  ///< nodes of instances, and the node of the file
    std::size_t instanceAttributes_ = 0;
};

}  // namespace Sceneprep::GltfImport

#pragma once

#include <sceneprep/export/gltf/CarriedAccessors.h>
#include <sceneprep/export/gltf/MaterialWriter.h>
#include <sceneprep/export/gltf/Skins.h>

#include <string>
#include <unordered_map>

namespace Sceneprep::Gltf
{

/// Writes the meshes of nodes: the surfaces of a node are the primitives of one mesh.
///
/// Surfaces with different skins, or from meshes with weights, extras or extensions of their own, become several
/// meshes. The first one belongs to the node, the others to a child each. Nodes with the same primitives share a mesh.
/// The extras of a primitive are the `collisionOffset` of its surface if it is not 0, and the `surfaceName` if it
/// differs from the name of the geometry.
class NodeMeshWriter
{
public:
    NodeMeshWriter(const Model& model, MeshWriter& meshes, MaterialWriter& materials, SkinWriter& skins,
                   const KeptSkins& kept, CarriedAccessorList& accessors, Document& document)
        : model_(model), meshes_(meshes), materials_(materials), skins_(skins), kept_(kept), accessors_(accessors),
          document_(document)
    {}

    /// @param planned  index into the plan
    void Write(const ExportPlan& plan, std::size_t planned, const WrittenNodes& nodes);

    /// Returns the index in the document of a mesh of Carried::meshes; -1 if it is not written.
    int FindCarried(int key) const;

private:
    /// Surfaces that become one mesh.
    struct Group
    {
        int skin = -1;  ///< in the document
        int mesh = -1;  ///< index into Carried::meshes if the mesh has more than a name, otherwise -1
        bool hasTargets = false;
        std::vector<PlannedSurface> surfaces = {};
    };

    std::vector<Group> GroupsOf(const PlannedNode& node, const WrittenNodes& nodes);
    int SkinOf(const PlannedSurface& surface, int node, const WrittenNodes& nodes);
    int OwnMeshOf(int geometry) const;
    int FindMesh(const Group& group);
    Json MakeMesh(const Group& group, Json primitives);
    void ReindexAccessors(Json& object);
    Json MakePrimitive(const PlannedSurface& planned);
    void SetSurfaceExtras(const PlannedSurface& planned, Json& object);
    std::string NameOf(const PlannedSurface& planned) const;

    const Model& model_;
    MeshWriter& meshes_;
    MaterialWriter& materials_;
    SkinWriter& skins_;
    const KeptSkins& kept_;
    CarriedAccessorList& accessors_;
    Document& document_;
    std::unordered_map<std::string, int> known_;  // meshes by their primitives
    std::unordered_map<int, int> carried_;        // by index into Carried::meshes
};

}  // namespace Sceneprep::Gltf

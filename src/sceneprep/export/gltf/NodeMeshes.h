#pragma once

#include <sceneprep/export/gltf/CarriedAccessors.h>
#include <sceneprep/export/gltf/MaterialWriter.h>
#include <sceneprep/export/gltf/Skins.h>

#include <string>
#include <unordered_map>

namespace Sceneprep::Gltf
{

/// Gives nodes their meshes: the surfaces of a node are the primitives of one mesh.
///
/// Surfaces that differ in their skin, or that came from meshes with weights, extras or extensions of their own, are
/// several meshes; the first is the node's, the others get a child each. Nodes with the same primitives share a mesh.
/// A primitive has as extras the `collisionOffset` of its surface, where it is not 0, and the `surfaceName`, where it
/// is not the name of the geometry.
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

    /// @return the index in the document of a mesh of Carried::meshes; -1 when it is not written.
    int FindCarried(int key) const;

private:
    /// Surfaces that become one mesh.
    struct Group
    {
        int skin = -1;  ///< in the document
        int mesh = -1;  ///< index into Carried::meshes, for meshes that have more than a name; -1 for others
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

#include <sceneprep/export/gltf/DroppedObjects.h>

#include <importing/base/CheckedAccess.h>

#include <map>
#include <set>
#include <string>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;

/// Counts what objects of the input had in addition to what the container holds.
struct DroppedParts
{
    std::size_t extras = 0;
    std::map<std::string, std::size_t> extensions;

    void Add(const Json& object)
    {
        extras += object.contains("extras") ? 1 : 0;
        const auto found = object.find("extensions");
        if (found == object.end() || !found->is_object())
            return;
        for (const auto& extension : found->items())
        {
            // Only visible nodes collapse, and visible is what nodes without the extension are.
            if (extension.key() != "KHR_node_visibility")
                ++extensions[extension.key()];
        }
    }

    /// @param objects  as "nodes that were collapsed"
    void AddNotes(const char* loss, const std::string& objects, Notes& notes) const
    {
        notes.AddLoss(loss, "dropped the extras of " + objects, extras);
        for (const auto& [name, count] : extensions)
            notes.AddLoss("extension " + name, "dropped the extension " + name + " of " + objects, count);
    }
};

/// Returns the meshes of the input, as indices into Carried::meshes, of which the document lacks at least one use.
std::set<int> FindDroppedMeshes(const Model& model, const NodeMeshWriter& meshes)
{
    std::set<int> dropped;
    for (const int key : model.supplement.mergedMeshKeys)
    {
        if (Importing::IsValidIndex(key, model.carried.meshOf.size()))
            dropped.insert(At(model.carried.meshOf, key).mesh);
    }
    for (const CarriedMesh& carried : model.carried.meshOf)
    {
        if (meshes.FindCarried(carried.mesh) < 0)
            dropped.insert(carried.mesh);
    }
    return dropped;
}

}  // namespace

void AddDroppedObjects(const Model& model, const WrittenNodes& nodes, const NodeMeshWriter& meshes, Notes& notes)
{
    DroppedParts ofNodes;
    for (std::size_t key = 0; key < model.carried.nodes.size(); ++key)
    {
        if (nodes.OuterOf(static_cast<int>(key)) < 0)
            ofNodes.Add(model.carried.nodes[key].object);
    }
    ofNodes.AddNotes("node-extras", "nodes that were collapsed", notes);

    DroppedParts ofMeshes;
    for (const int mesh : FindDroppedMeshes(model, meshes))
    {
        if (Importing::IsValidIndex(mesh, model.carried.meshes.size()))
            ofMeshes.Add(At(model.carried.meshes, mesh));
    }
    ofMeshes.AddNotes("mesh-extras", "meshes that were merged", notes);
}

}  // namespace Sceneprep::Gltf

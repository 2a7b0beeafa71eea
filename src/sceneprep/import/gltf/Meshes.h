#pragma once

#include <importing/records/Surface.h>
#include <pipeline/scene/PartCounter.h>
#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/BufferViews.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/FillGeometry.h>
#include <sceneprep/import/gltf/Materials.h>
#include <sceneprep/model/Model.h>

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace Sceneprep::GltfImport
{

/// Converts meshes when nodes first use them: one geometry for each primitive, which all nodes with the mesh share.
/// Primitives with morph targets, points and lines are pinned, and their stored numbers are carried.
class Meshes
{
public:
    /// All have to outlive the object.
    Meshes(const Field& document, Accessors& accessors, BufferViews& views, Materials& materials, Model& model,
           Pipeline::PartListener listener);

    /// Returns one surface for each primitive of a mesh.
    /// @param skin        the skin of the mesh, -1 for none; each skin gets its own geometries
    /// @param jointCount  number of joints of the skin
    const std::vector<Importing::Surface>& SurfacesOf(int mesh, int skin, std::size_t jointCount);

    /// Adds notes about content that has been dropped so far.
    void AddNotes(Notes& notes) const;

    /// Moves the objects of the meshes, without primitives, into Carried::meshes. Call it last.
    /// @param meshes  the list of the document
    void CarryMeshes(Json& meshes);

private:
    // Steps of SurfacesOf().
    void Convert(const Field& mesh, int meshIndex, std::size_t jointCount, std::vector<Importing::Surface>& surfaces);
    int AddGeometry(const Primitive& primitive, const Field& field, const std::string& name, std::size_t jointCount);
    void SetSupplement(int geometry, int meshIndex, Pipeline::VertexLayout layout,
                       std::optional<CarriedPrimitive> pinned);
    Json ExtrasOf(const Field& primitive, Importing::Surface& surface, bool& refersToAccessors);
    bool CarryAccessors(Json& extensions);
    std::size_t CountConverted() const;

    Field document_;
    Accessors& accessors_;
    BufferViews& views_;
    Materials& materials_;
    Model& model_;
    Pipeline::PartCounter counter_;
    GeometryFiller filler_;
    std::map<std::pair<int, int>, std::vector<Importing::Surface>> converted_;  ///< by mesh and skin
    std::vector<Json> extensions_;         ///< [meshes] with references to carried accessors; null if untouched
    std::vector<bool> isPinned_;           ///< [meshes] by their extensions
    std::map<int, int> carriedAccessors_;  ///< index into Carried::accessors by accessor
    std::size_t withoutPositions_ = 0;
    std::size_t incomplete_ = 0;
    std::size_t unskinned_ = 0;
};

}  // namespace Sceneprep::GltfImport

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

/// Converts meshes when nodes ask for them: one geometry for each primitive, which all nodes with the mesh share.
/// Primitives with morph targets, points and lines are pinned, and their numbers carried as they are stored.
class Meshes
{
public:
    /// All have to outlive the object.
    Meshes(const Field& document, Accessors& accessors, BufferViews& views, Materials& materials, Model& model,
           Pipeline::PartListener listener);

    /// @param skin        the skin that moves the mesh, -1 for none: each gets geometries of its own
    /// @param jointCount  of the skin
    /// @return one surface for each primitive.
    const std::vector<Importing::Surface>& SurfacesOf(int mesh, int skin, std::size_t jointCount);

    /// Adds notes about what could not be kept so far.
    void AddNotes(Notes& notes) const;

    /// To be called last: moves the objects of the meshes, without primitives, into Carried::meshes.
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

#pragma once

#include <sceneprep/import/gltf/Components.h>
#include <sceneprep/import/gltf/Field.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace draco
{
class Mesh;
}

namespace Sceneprep::GltfImport
{

/// Decodes a primitive that is compressed by KHR_draco_mesh_compression.
class DracoMesh
{
public:
    /// @param extension  the extension's object, for messages
    /// @throws FormatError if the bytes cannot be decoded.
    DracoMesh(const Field& extension, std::span<const std::uint8_t> encoded);
    ~DracoMesh();
    DracoMesh(DracoMesh&&) noexcept;
    DracoMesh& operator=(DracoMesh&&) noexcept;

    std::size_t VertexCount() const;

    /// Returns three indices for each triangle.
    std::vector<std::uint32_t> Indices() const;

    /// Copies the values of an attribute, one for each vertex, tightly packed.
    /// @param id    the number that the extension gives the attribute
    /// @param type, component  of the accessor that the attribute replaces
    /// @throws FormatError if the mesh does not have the attribute, or it has another number of components.
    std::vector<std::uint8_t> Values(const Field& id, ElementType type, Component component) const;

private:
    std::unique_ptr<draco::Mesh> mesh_;
};

}  // namespace Sceneprep::GltfImport

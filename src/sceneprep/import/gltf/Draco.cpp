#include <sceneprep/import/gltf/Draco.h>

#include <draco/compression/decode.h>
#include <draco/mesh/mesh.h>
#include <fmt/format.h>

#include <limits>

namespace Sceneprep::GltfImport
{

namespace
{

template <typename T>
std::vector<std::uint8_t> Convert(const draco::Mesh& mesh, const draco::PointAttribute& attribute,
                                  std::size_t components)
{
    const std::size_t size = components * sizeof(T);
    std::vector<std::uint8_t> bytes(mesh.num_points() * size);
    std::vector<T> value(components);
    for (std::uint32_t point = 0; point < mesh.num_points(); ++point)
    {
        attribute.ConvertValue<T>(attribute.mapped_index(draco::PointIndex(point)),
                                  static_cast<std::int8_t>(components), value.data());
        std::copy_n(reinterpret_cast<const std::uint8_t*>(value.data()), size, bytes.data() + point * size);
    }
    return bytes;
}

}  // namespace

DracoMesh::DracoMesh(const Field& extension, std::span<const std::uint8_t> encoded)
{
    draco::DecoderBuffer buffer;
    buffer.Init(reinterpret_cast<const char*>(encoded.data()), encoded.size());
    auto decoded = draco::Decoder().DecodeMeshFromBuffer(&buffer);
    if (!decoded.ok())
        extension.Fail(fmt::format("the bytes cannot be decoded: {}", decoded.status().error_msg_string()));
    mesh_ = std::move(decoded).value();
}

DracoMesh::~DracoMesh() = default;
DracoMesh::DracoMesh(DracoMesh&&) noexcept = default;
DracoMesh& DracoMesh::operator=(DracoMesh&&) noexcept = default;

std::size_t DracoMesh::VertexCount() const { return mesh_->num_points(); }

std::vector<std::uint32_t> DracoMesh::Indices() const
{
    std::vector<std::uint32_t> indices;
    indices.reserve(3 * static_cast<std::size_t>(mesh_->num_faces()));
    for (std::uint32_t f = 0; f < mesh_->num_faces(); ++f)
    {
        for (const draco::PointIndex& corner : mesh_->face(draco::FaceIndex(f)))
            indices.push_back(corner.value());
    }
    return indices;
}

std::vector<std::uint8_t> DracoMesh::Values(const Field& id, ElementType type, Component component) const
{
    const std::size_t number = id.Whole();
    const draco::PointAttribute* attribute = number > std::numeric_limits<std::uint32_t>::max()
                                                 ? nullptr
                                                 : mesh_->GetAttributeByUniqueId(static_cast<std::uint32_t>(number));
    if (attribute == nullptr)
        id.Fail(fmt::format("the compressed mesh has no attribute {}", number));
    if (static_cast<std::size_t>(attribute->num_components()) != type.Count())
        id.Fail(fmt::format("the attribute has {} components, {} expected", attribute->num_components(), type.Count()));
    switch (component)
    {
        case Component::Byte:
            return Convert<std::int8_t>(*mesh_, *attribute, type.Count());
        case Component::UnsignedByte:
            return Convert<std::uint8_t>(*mesh_, *attribute, type.Count());
        case Component::Short:
            return Convert<std::int16_t>(*mesh_, *attribute, type.Count());
        case Component::UnsignedShort:
            return Convert<std::uint16_t>(*mesh_, *attribute, type.Count());
        case Component::UnsignedInt:
            return Convert<std::uint32_t>(*mesh_, *attribute, type.Count());
        case Component::Float:
            break;
    }
    return Convert<float>(*mesh_, *attribute, type.Count());
}

}  // namespace Sceneprep::GltfImport

#include <sceneprep/import/gltf/Meshopt.h>

#include <fmt/format.h>
#include <meshoptimizer.h>

#include <string>

namespace Sceneprep::GltfImport
{

namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kLargestStride = 256;

/// The first byte of encoded vertices: the codec's mark in the upper half, its version in the lower one.
constexpr std::uint8_t kVertexMark = 0xA0;

void CheckVertexVersion(const Field& extension, std::span<const std::uint8_t> encoded)
{
    if (!encoded.empty() && (encoded[0] & 0xF0U) == kVertexMark && encoded[0] != kVertexMark)
        extension.Fail(fmt::format("version {} of the vertex codec is not supported, only 0", encoded[0] & 0x0FU));
}

int DecodeVertices(const Field& extension, std::span<const std::uint8_t> encoded, std::size_t count, std::size_t stride,
                   Bytes& bytes)
{
    if (stride == 0 || stride % 4 != 0 || stride > kLargestStride)
        extension.Fail(fmt::format("byteStride {} is not a multiple of 4 up to {}", stride, kLargestStride));
    CheckVertexVersion(extension, encoded);
    return meshopt_decodeVertexBuffer(bytes.data(), count, stride, encoded.data(), encoded.size());
}

int DecodeIndices(const Field& extension, std::span<const std::uint8_t> encoded, std::size_t count, std::size_t stride,
                  Bytes& bytes)
{
    if (stride != 2 && stride != 4)
        extension.Fail(fmt::format("byteStride {} is neither 2 nor 4", stride));
    if (extension.Member("mode").Text() == "INDICES")
        return meshopt_decodeIndexSequence(bytes.data(), count, stride, encoded.data(), encoded.size());
    if (count % 3 != 0)
        extension.Fail(fmt::format("count {} is not a multiple of 3", count));
    return meshopt_decodeIndexBuffer(bytes.data(), count, stride, encoded.data(), encoded.size());
}

void ApplyFilter(const Field& extension, std::size_t count, std::size_t stride, Bytes& bytes)
{
    const std::string filter = extension.TextOr("filter", "NONE");
    if (filter == "NONE")
        return;
    const auto checkStride = [&](bool isAllowed) {
        if (!isAllowed)
            extension.Fail(fmt::format("byteStride {} does not fit the filter {}", stride, filter));
    };
    if (filter == "OCTAHEDRAL")
    {
        checkStride(stride == 4 || stride == 8);
        meshopt_decodeFilterOct(bytes.data(), count, stride);
    }
    else if (filter == "QUATERNION")
    {
        checkStride(stride == 8);
        meshopt_decodeFilterQuat(bytes.data(), count, stride);
    }
    else if (filter == "EXPONENTIAL")
        meshopt_decodeFilterExp(bytes.data(), count, stride);
    else
        extension.Member("filter").Fail(fmt::format("'{}' is not supported", filter));
}

}  // namespace

Bytes DecodeMeshopt(const Field& extension, std::span<const std::uint8_t> encoded)
{
    const std::size_t count = extension.Member("count").Whole();
    const std::size_t stride = extension.Member("byteStride").Whole();
    // A block of the codec holds up to 256 elements in no fewer than a byte per four of them and byte of the element.
    constexpr std::size_t kMostPerByte = 4096;
    if (count > kMostPerByte * (encoded.size() + 1))
        extension.Fail(fmt::format("{} elements cannot be in {} bytes", count, encoded.size()));

    const std::string& mode = extension.Member("mode").Text();
    Bytes bytes(count * std::min(stride, kLargestStride));
    int status = 0;
    if (mode == "ATTRIBUTES")
        status = DecodeVertices(extension, encoded, count, stride, bytes);
    else if (mode == "TRIANGLES" || mode == "INDICES")
        status = DecodeIndices(extension, encoded, count, stride, bytes);
    else
        extension.Member("mode").Fail(fmt::format("'{}' is not supported", mode));
    if (status != 0)
        extension.Fail("the bytes cannot be decoded");
    if (mode == "ATTRIBUTES")
        ApplyFilter(extension, count, stride, bytes);
    return bytes;
}

}  // namespace Sceneprep::GltfImport

#include <sceneprep/import/gltf/BufferViews.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Meshopt.h>

namespace Sceneprep::GltfImport
{

BufferViews::BufferViews(const Field& document, Buffers& buffers)
    : list_(document.Find("bufferViews")), buffers_(buffers), count_(document.SizeOf("bufferViews"))
{}

BufferView BufferViews::Get(std::size_t index)
{
    const Field view = list_->Element(index);
    const std::size_t stride = view.WholeOr("byteStride", 0);
    const auto known = decoded_.find(index);
    if (known != decoded_.end())
        return {known->second, stride};
    if (!view.Has("extensions"))
        return {BytesOf(view), stride};
    std::optional<Field> compression = view.Extension("KHR_meshopt_compression");
    if (!compression)
        compression = view.Extension("EXT_meshopt_compression");
    if (!compression)
        return {BytesOf(view), stride};
    try
    {
        const auto decoded = decoded_.emplace(index, DecodeMeshopt(*compression, BytesOf(*compression))).first;
        return {decoded->second, stride};
    }
    catch (const FormatError&)
    {
        // Where the extension is optional, the view itself has the same elements without compression.
        if (!buffers_.HasBytes(static_cast<std::size_t>(view.Member("buffer").IndexBelow(buffers_.Count()))))
            throw;
        return {BytesOf(view), stride};
    }
}

/// The part of a buffer that an object with buffer, byteOffset and byteLength names.
std::span<const std::uint8_t> BufferViews::BytesOf(const Field& view)
{
    const int buffer = view.Member("buffer").IndexBelow(buffers_.Count());
    const std::span<const std::uint8_t> bytes = buffers_.Get(static_cast<std::size_t>(buffer));
    const std::size_t offset = view.WholeOr("byteOffset", 0);
    const std::size_t length = view.Member("byteLength").Whole();
    if (offset > bytes.size() || length > bytes.size() - offset)
        view.Fail(fmt::format("byteOffset {} and byteLength {} lead outside buffer {}, which has {} bytes", offset,
                              length, buffer, bytes.size()));
    return bytes.subspan(offset, length);
}

}  // namespace Sceneprep::GltfImport

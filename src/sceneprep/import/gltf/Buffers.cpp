#include <sceneprep/import/gltf/Buffers.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/DataUri.h>
#include <sceneprep/import/gltf/ReadFile.h>
#include <sceneprep/model/Uri.h>

#include <utility>

namespace Sceneprep::GltfImport
{

namespace
{

std::vector<std::uint8_t> LoadUri(const Field& uri, const std::filesystem::path& folder)
{
    if (IsDataUri(uri.Text()))
    {
        std::optional<DataUri> data = DecodeDataUri(uri.Text());
        if (!data)
            uri.Fail("is not a data URI in base64");
        return std::move(data->bytes);
    }
    if (uri.Text().find("://") != std::string::npos)
        uri.Fail(fmt::format("'{}' is not a local file", uri.Text()));
    const std::filesystem::path file = folder / DecodeUri(uri.Text());
    try
    {
        return ReadFile(file);
    }
    catch (const FormatError& error)
    {
        uri.Fail(fmt::format("cannot read '{}': {}", file.string(), error.what()));
    }
}

}  // namespace

Buffers::Buffers(const Field& document, std::filesystem::path file, std::optional<std::vector<std::uint8_t>> binary)
    : document_(document), file_(std::move(file)), binary_(std::move(binary)), buffers_(document.SizeOf("buffers"))
{}

bool Buffers::HasBytes(std::size_t index) const
{
    const Field buffer = document_.Member("buffers").Element(index);
    return buffer.Has("uri") || (index == 0 && (binary_ || buffers_[index].isLoaded));
}

std::span<const std::uint8_t> Buffers::Get(std::size_t index)
{
    Buffer& buffer = buffers_.at(index);
    if (!buffer.isLoaded)
    {
        const Field field = document_.Member("buffers").Element(index);
        buffer.length = field.Member("byteLength").Whole();
        buffer.bytes = Load(index, field);
        if (buffer.bytes.size() < buffer.length)
            field.Fail(fmt::format("has {} bytes, {} expected", buffer.bytes.size(), buffer.length));
        buffer.isLoaded = true;
    }
    return {buffer.bytes.data(), buffer.length};
}

std::vector<std::uint8_t> Buffers::Load(std::size_t index, const Field& buffer)
{
    if (const std::optional<Field> uri = buffer.Find("uri"))
        return LoadUri(*uri, file_.parent_path());
    if (index == 0 && binary_)
        return std::move(*binary_);
    buffer.Fail("has neither a uri nor a binary chunk");
}

}  // namespace Sceneprep::GltfImport

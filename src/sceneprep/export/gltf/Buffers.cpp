#include <sceneprep/export/gltf/Buffers.h>

#include <utility>

namespace Sceneprep::Gltf
{

int Buffers::AddView(const void* data, std::size_t size, Usage usage)
{
    constexpr char kPadding[3] = {};
    Put(kPadding, (4 - size_ % 4) % 4);
    Json view = {{"buffer", 0}, {"byteOffset", size_}, {"byteLength", size}};
    if (usage != Usage::Other)
        view["target"] = static_cast<int>(usage);
    Put(data, size);
    return Append(document_.bufferViews, std::move(view));
}

int Buffers::AddAccessor(int view, std::size_t count, const Layout& layout)
{
    Json accessor = {
        {"bufferView", view}, {"componentType", layout.componentType}, {"count", count}, {"type", layout.type}};
    if (layout.isNormalized)
        accessor["normalized"] = true;
    return Append(document_.accessors, std::move(accessor));
}

void Buffers::WriteTo(std::ostream& stream) const
{
    for (const std::vector<char>& bytes : kept_)
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void Buffers::Put(const void* data, std::size_t size)
{
    if (size == 0)
        return;
    const char* first = static_cast<const char*>(data);
    if (stream_ != nullptr)
        stream_->write(first, static_cast<std::streamsize>(size));
    else
        kept_.emplace_back(first, first + size);
    size_ += size;
}

}  // namespace Sceneprep::Gltf

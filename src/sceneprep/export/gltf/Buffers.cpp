#include <sceneprep/export/gltf/Buffers.h>

namespace Sceneprep::Gltf
{

int Buffers::AddView(const void* data, std::size_t size, Usage usage)
{
    if (model_.buffers.empty())
        model_.buffers.emplace_back().data.reserve(expected_);
    std::vector<unsigned char>& bytes = model_.buffers.front().data;
    bytes.resize((bytes.size() + 3) / 4 * 4);

    tinygltf::BufferView view;
    view.buffer = 0;
    view.byteOffset = bytes.size();
    view.byteLength = size;
    view.target = static_cast<int>(usage);
    model_.bufferViews.push_back(std::move(view));

    const auto* first = static_cast<const unsigned char*>(data);
    bytes.insert(bytes.end(), first, first + size);
    return static_cast<int>(model_.bufferViews.size() - 1);
}

int Buffers::AddBytes(const void* data, std::size_t count, std::size_t elementSize, const Layout& layout, Usage usage)
{
    tinygltf::Accessor accessor;
    accessor.bufferView = AddView(data, count * elementSize, usage);
    accessor.type = layout.type;
    accessor.componentType = layout.componentType;
    accessor.count = count;
    model_.accessors.push_back(std::move(accessor));
    return static_cast<int>(model_.accessors.size() - 1);
}

}  // namespace Sceneprep::Gltf

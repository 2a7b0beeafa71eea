#include <sceneprep/export/gltf/CarriedAccessors.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

namespace Sceneprep::Gltf
{

namespace
{

std::size_t SizeOf(int componentType)
{
    switch (componentType)
    {
        case kByte:
        case kUnsignedByte:
            return 1;
        case kShort:
        case kUnsignedShort:
            return 2;
        default:
            return 4;
    }
}

template <typename T>
double ReadAs(const std::uint8_t* bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return static_cast<double>(value);
}

double ComponentAt(const std::uint8_t* bytes, int componentType)
{
    switch (componentType)
    {
        case kByte:
            return ReadAs<std::int8_t>(bytes);
        case kUnsignedByte:
            return ReadAs<std::uint8_t>(bytes);
        case kShort:
            return ReadAs<std::int16_t>(bytes);
        case kUnsignedShort:
            return ReadAs<std::uint16_t>(bytes);
        case kUnsignedInt:
            return ReadAs<std::uint32_t>(bytes);
        default:
            return ReadAs<float>(bytes);
    }
}

/// Numbers of integer types are written without a decimal point.
Json BoundsJson(const std::vector<double>& bounds, int componentType)
{
    Json list = Json::array();
    for (const double bound : bounds)
    {
        if (componentType == kFloat)
            list.push_back(bound);
        else
            list.push_back(static_cast<std::int64_t>(bound));
    }
    return list;
}

void ComputeBounds(const CarriedAccessor& source, std::size_t components, Json& accessor)
{
    const std::size_t size = SizeOf(source.componentType);
    const std::size_t available = source.bytes.size() / (components * size);
    std::vector<double> low(components, INFINITY);
    std::vector<double> high(components, -INFINITY);
    for (std::size_t i = 0; i < std::min(source.count, available) * components; ++i)
    {
        const double value = ComponentAt(source.bytes.data() + i * size, source.componentType);
        low[i % components] = std::min(low[i % components], value);
        high[i % components] = std::max(high[i % components], value);
    }
    if (std::all_of(low.begin(), low.end(), [](double value) { return std::isfinite(value); }))
    {
        accessor["min"] = BoundsJson(low, source.componentType);
        accessor["max"] = BoundsJson(high, source.componentType);
    }
}

/// Returns the elements with bytes appended to each so that the next one starts at a multiple of 4.
std::vector<std::uint8_t> Spread(const CarriedAccessor& accessor, std::size_t size, std::size_t stride)
{
    std::vector<std::uint8_t> bytes(accessor.count * stride);
    for (std::size_t i = 0; i < accessor.count && (i + 1) * size <= accessor.bytes.size(); ++i)
        std::memcpy(bytes.data() + i * stride, accessor.bytes.data() + i * size, size);
    return bytes;
}

}  // namespace

std::size_t ComponentsOf(const std::string& type)
{
    static const std::map<std::string, std::size_t> kComponents = {{"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4},
                                                                   {"MAT2", 4},   {"MAT3", 9}, {"MAT4", 16}};
    const auto found = kComponents.find(type);
    return found == kComponents.end() ? 0 : found->second;
}

int AddCarried(const CarriedAccessor& accessor, Usage usage, bool needsBounds, Buffers& buffers, Document& document)
{
    const std::size_t components = ComponentsOf(accessor.type);
    const std::size_t size = components * SizeOf(accessor.componentType);
    const std::size_t stride = (size + 3) / 4 * 4;
    const bool isSpread = usage == Usage::Vertices && stride != size;
    int view = -1;
    if (isSpread)
    {
        const std::vector<std::uint8_t> bytes = Spread(accessor, size, stride);
        view = buffers.AddView(bytes.data(), bytes.size(), usage);
        EntryAt(document.bufferViews, view)["byteStride"] = stride;
    }
    else
        view = buffers.AddView(accessor.bytes.data(), accessor.bytes.size(), usage);

    const int index = buffers.AddAccessor(view, accessor.count,
                                          {accessor.type.c_str(), accessor.componentType, accessor.isNormalized});
    Json& entry = EntryAt(document.accessors, index);
    if (accessor.min.is_array() && accessor.max.is_array())
    {
        entry["min"] = accessor.min;
        entry["max"] = accessor.max;
    }
    else if (needsBounds && components > 0)
        ComputeBounds(accessor, components, entry);
    return index;
}

int CarriedAccessorList::Find(int accessor)
{
    const auto [found, isNew] = written_.emplace(accessor, -1);
    if (isNew)
    {
        const CarriedAccessor& source = Importing::At(carried_.accessors, accessor);
        found->second = AddCarried(source, Usage::Other, source.type == "SCALAR", buffers_, document_);
    }
    return found->second;
}

}  // namespace Sceneprep::Gltf

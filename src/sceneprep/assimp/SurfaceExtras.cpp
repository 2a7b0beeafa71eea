#include <sceneprep/assimp/SurfaceExtras.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace Sceneprep
{

namespace
{

const aiMetadataEntry* Find(const aiNode& node, const std::string& key)
{
    for (unsigned i = 0; node.mMetaData != nullptr && i < node.mMetaData->mNumProperties; ++i)
    {
        if (key == node.mMetaData->mKeys[i].C_Str())
            return &node.mMetaData->mValues[i];
    }
    return nullptr;
}

std::optional<int> ToInt(double value)
{
    const bool fits = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    return fits && std::trunc(value) == value ? std::optional(static_cast<int>(value)) : std::nullopt;
}

/// Importers store a number in different types, depending on its value.
std::optional<int> NumberIn(const aiMetadataEntry& entry)
{
    switch (entry.mType)
    {
        case AI_INT32:
            return *static_cast<std::int32_t*>(entry.mData);
        case AI_UINT64:
            return ToInt(static_cast<double>(*static_cast<std::uint64_t*>(entry.mData)));
        case AI_FLOAT:
            return ToInt(static_cast<double>(*static_cast<float*>(entry.mData)));
        case AI_DOUBLE:
            return ToInt(*static_cast<double*>(entry.mData));
        default:
            return std::nullopt;
    }
}

}  // namespace

void ApplyExtras(const aiNode& node, Importing::Surface& surface)
{
    if (const aiMetadataEntry* entry = Find(node, kCollisionOffsetExtra))
        surface.SetCollisionOffset(NumberIn(*entry).value_or(surface.GetCollisionOffset()));
    const aiMetadataEntry* name = Find(node, kSurfaceNameExtra);
    if (name != nullptr && name->mType == AI_AISTRING)
        surface.SetName(static_cast<aiString*>(name->mData)->C_Str());
}

}  // namespace Sceneprep

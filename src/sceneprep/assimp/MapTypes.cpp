#include <sceneprep/assimp/MapTypes.h>

#include <algorithm>

namespace Sceneprep
{

std::optional<aiTextureType> FindTextureType(const std::string& mapType)
{
    const auto* found = std::find_if(kMapTypes.begin(), kMapTypes.end(),
                                     [&mapType](const MapType& type) { return type.name == mapType; });
    return found == kMapTypes.end() ? std::nullopt : std::optional(found->texture);
}

}  // namespace Sceneprep

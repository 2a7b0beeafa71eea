#include <sceneprep/MaterialKey.h>

#include <fmt/format.h>

#include <bit>
#include <cstdint>

namespace Sceneprep
{

std::string MaterialKey(Importing::Surface& surface)
{
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    std::string key = std::to_string(surface.GetMaterialID());
    for (Importing::Map& map : surface.MapList)
    {
        key +=
            fmt::format("|{},{},{},{}", map.GetTextureID(), map.GetType(), map.GetUVSetIndex(), bits(map.GetAmount()));
        const D3DXMATRIX matrix = map.GetMatrix();
        for (const auto& row : matrix.m)
            for (const float element : row)
                key += fmt::format(",{}", bits(element));
    }
    return key;
}

}  // namespace Sceneprep

#include <pipeline/scene/MaterialKey.h>

#include <bit>
#include <cstdint>

namespace Pipeline
{

std::string MaterialKey(Importing::Surface& surface)
{
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    std::string key = std::to_string(surface.GetMaterialID());
    for (Importing::Map& map : surface.MapList)
    {
        key += "|" + std::to_string(map.GetTextureID()) + "," + map.GetType() + "," +
               std::to_string(map.GetUVSetIndex()) + "," + std::to_string(bits(map.GetAmount()));
        const D3DXMATRIX matrix = map.GetMatrix();
        for (const auto& row : matrix.m)
            for (const float element : row)
                key += "," + std::to_string(bits(element));
    }
    return key;
}

}  // namespace Pipeline

#include <sceneprep/assimp/Roughness.h>

#include <algorithm>
#include <cmath>

namespace Sceneprep
{

float RoughnessOf(float power)
{
    return power > 0 ? static_cast<float>(std::pow(2 / (static_cast<double>(power) + 2), 0.25)) : 1.0F;
}

float PowerOf(float roughness)
{
    constexpr double kLargest = 1e6;
    const double r = std::clamp(static_cast<double>(roughness), 0.0, 1.0);
    return static_cast<float>(std::min(2 / std::pow(r, 4.0) - 2, kLargest));
}

}  // namespace Sceneprep

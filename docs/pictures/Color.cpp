#include <pictures/Color.h>

#include <algorithm>
#include <cmath>

namespace Pictures
{
namespace
{

/// Full color of a hue between 0 and 1.
Color Hue(float hue)
{
    const auto channel = [hue](float offset) {
        const float turned = hue + offset - std::floor(hue + offset);
        return std::clamp(std::fabs(turned * 6 - 3) - 1, 0.0F, 1.0F);
    };
    return {channel(0), channel(2.0F / 3), channel(1.0F / 3)};
}

}  // namespace

Color DistinctColor(std::size_t number)
{
    // Steps of the golden section spread over the circle without coming back to the same place.
    constexpr double kGoldenSection = 0.6180339887498949;
    const double turned = static_cast<double>(number) * kGoldenSection;
    const auto hue = static_cast<float>(turned - std::floor(turned));
    const float light = 0.50F + 0.08F * static_cast<float>(number % 4);
    const Color grey{light, light, light};
    return Mix(grey, Mix(grey, Hue(hue), 0.6F), 0.85F);
}

}  // namespace Pictures

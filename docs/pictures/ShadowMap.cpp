#include <pictures/ShadowMap.h>

#include <pictures/Scan.h>
#include <pictures/Vectors.h>

#include <limits>

namespace Pictures
{

ShadowMap::ShadowMap(const D3DXVECTOR3& toLight, const D3DXVECTOR3& center, float radius, int size)
    : toLight_(toLight), right_(Normalized(Cross(D3DXVECTOR3(0, 1, 0), toLight))), up_(Cross(toLight, right_)),
      center_(center), radius_(radius), size_(size),
      depths_(static_cast<std::size_t>(size) * static_cast<std::size_t>(size), std::numeric_limits<float>::max())
{}

ScreenPoint ShadowMap::ToMap(const D3DXVECTOR3& point) const
{
    const D3DXVECTOR3 offset = point - center_;
    const float scale = static_cast<float>(size_) / (2 * radius_);
    const float middle = static_cast<float>(size_) / 2;
    return {middle + Dot(offset, right_) * scale, middle + Dot(offset, up_) * scale, -Dot(offset, toLight_)};
}

void ShadowMap::AddTriangle(const D3DXVECTOR3& a, const D3DXVECTOR3& b, const D3DXVECTOR3& c)
{
    const std::array<ScreenPoint, 3> points = {ToMap(a), ToMap(b), ToMap(c)};
    ScanTriangle(points, size_, size_, [&](int x, int y, const Shares& shares) {
        const float depth = shares[0] * points[0].depth + shares[1] * points[1].depth + shares[2] * points[2].depth;
        float& cell =
            depths_[static_cast<std::size_t>(y) * static_cast<std::size_t>(size_) + static_cast<std::size_t>(x)];
        cell = std::min(cell, depth);
    });
}

float ShadowMap::LightAt(const D3DXVECTOR3& point, const D3DXVECTOR3& faceNormal) const
{
    // Off the face by a few cells, on the side of the light, so that a face does not shade itself.
    constexpr float kCellsOff = 2.5F;
    constexpr int kReach = 2;
    const float cell = 2 * radius_ / static_cast<float>(size_);
    const float side = Dot(faceNormal, toLight_) < 0 ? -1.0F : 1.0F;
    const ScreenPoint p = ToMap(point + (faceNormal * side + toLight_) * (kCellsOff * cell));

    int lit = 0;
    int asked = 0;
    for (int y = static_cast<int>(p.y) - kReach; y <= static_cast<int>(p.y) + kReach; ++y)
    {
        for (int x = static_cast<int>(p.x) - kReach; x <= static_cast<int>(p.x) + kReach; ++x)
        {
            ++asked;
            const bool inside = x >= 0 && y >= 0 && x < size_ && y < size_;
            lit += !inside || p.depth <= depths_[static_cast<std::size_t>(y) * static_cast<std::size_t>(size_) +
                                                 static_cast<std::size_t>(x)];
        }
    }
    return static_cast<float>(lit) / static_cast<float>(asked);
}

}  // namespace Pictures

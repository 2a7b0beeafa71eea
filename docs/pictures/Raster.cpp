#include <pictures/Raster.h>

#include <pictures/Vectors.h>

#include <limits>

namespace Pictures
{
namespace
{

constexpr int kSamples = 3;
constexpr float kNear = 0.05F;
/// Lines lie on surfaces: they are taken to be this much nearer than they are.
constexpr float kLineDepth = 0.994F;

bool InSegment(float x, float y, const ScreenPoint& a, const ScreenPoint& b, float radius, float& share)
{
    const float dx = b.x - a.x;
    const float dy = b.y - a.y;
    const float lengthSquared = dx * dx + dy * dy;
    share = lengthSquared > 0 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / lengthSquared, 0.0F, 1.0F) : 0.0F;
    const float offX = a.x + share * dx - x;
    const float offY = a.y + share * dy - y;
    return offX * offX + offY * offY <= radius * radius;
}

}  // namespace

Raster::Raster(const Camera& camera, int width, int height, const Color& background)
    : camera_(camera), samples_(width * kSamples, height * kSamples, background),
      depths_(static_cast<std::size_t>(width * kSamples) * static_cast<std::size_t>(height * kSamples),
              std::numeric_limits<float>::max())
{
    camera_.SetImageSize(samples_.Width(), samples_.Height());
}

void Raster::DrawLine(const D3DXVECTOR3& from, const D3DXVECTOR3& to, float width, const Color& color,
                      Visibility visibility)
{
    const D3DXVECTOR3 a = camera_.ToView(from);
    const D3DXVECTOR3 b = camera_.ToView(to);
    if (a.z > kNear && b.z > kNear)
        DrawStroke(camera_.ToScreen(a), camera_.ToScreen(b), width, color, visibility);
}

void Raster::DrawDot(const D3DXVECTOR3& center, float radius, const Color& color, Visibility visibility)
{
    DrawLine(center, center, 2 * radius, color, visibility);
}

Image Raster::Finish() const { return samples_.Reduced(kSamples); }

Corner Raster::Blend(const std::array<Corner, 3>& corners, const Shares& shares)
{
    const auto& [a, b, c] = corners;
    return {a.position * shares[0] + b.position * shares[1] + c.position * shares[2],
            a.normal * shares[0] + b.normal * shares[1] + c.normal * shares[2],
            D3DXVECTOR2(a.uv.x * shares[0] + b.uv.x * shares[1] + c.uv.x * shares[2],
                        a.uv.y * shares[0] + b.uv.y * shares[1] + c.uv.y * shares[2])};
}

std::size_t Raster::ClipNear(const std::array<Corner, 3>& corners, std::array<Corner, 4>& polygon) const
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < corners.size(); ++i)
    {
        const std::size_t next = (i + 1) % corners.size();
        const float here = camera_.ToView(corners[i].position).z - kNear;
        const float there = camera_.ToView(corners[next].position).z - kNear;
        if (here >= 0)
            polygon[count++] = corners[i];
        if ((here >= 0) != (there >= 0))
        {
            Shares shares = {0, 0, 0};
            shares[next] = here / (here - there);
            shares[i] = 1 - shares[next];
            polygon[count++] = Blend(corners, shares);
        }
    }
    return count;
}

float& Raster::Depth(int x, int y)
{
    return depths_[static_cast<std::size_t>(y) * static_cast<std::size_t>(samples_.Width()) +
                   static_cast<std::size_t>(x)];
}

void Raster::DrawStroke(const ScreenPoint& a, const ScreenPoint& b, float width, const Color& color,
                        Visibility visibility)
{
    const float radius = width * kSamples / 2;
    const auto first = [radius](float p, float q) {
        return std::max(0, static_cast<int>(std::floor(std::min(p, q) - radius)));
    };
    const auto last = [radius](float p, float q, int size) {
        return std::min(size - 1, static_cast<int>(std::ceil(std::max(p, q) + radius)));
    };
    for (int y = first(a.y, b.y); y <= last(a.y, b.y, samples_.Height()); ++y)
    {
        for (int x = first(a.x, b.x); x <= last(a.x, b.x, samples_.Width()); ++x)
        {
            float share = 0;
            if (!InSegment(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F, a, b, radius, share))
                continue;
            const float depth = (a.depth + (b.depth - a.depth) * share) * kLineDepth;
            if (visibility == Visibility::Hidden && depth >= Depth(x, y))
                continue;
            Depth(x, y) = std::min(depth, Depth(x, y));
            samples_.At(x, y) = color;
        }
    }
}

}  // namespace Pictures

#pragma once

#include <pictures/Camera.h>
#include <pictures/Image.h>
#include <pictures/Scan.h>

#include <array>
#include <vector>

namespace Pictures
{

/// A point of a surface.
struct Corner
{
    D3DXVECTOR3 position;
    D3DXVECTOR3 normal;
    D3DXVECTOR2 uv;
};

/// Whether a line or a dot can be hidden by what is nearer.
enum class Visibility
{
    Hidden,
    Always
};

/// An image that is drawn with a depth buffer, every pixel sampled 3 x 3 times.
class Raster
{
public:
    Raster(const Camera& camera, int width, int height, const Color& background);

    const Camera& View() const { return camera_; }

    /// Fills a triangle; shade(corner) yields the color of a point in it.
    template <typename Shade>
    void DrawTriangle(const std::array<Corner, 3>& corners, Shade shade)
    {
        std::array<Corner, 4> polygon;
        const std::size_t count = ClipNear(corners, polygon);
        for (std::size_t last = 2; last < count; ++last)
            FillTriangle({polygon[0], polygon[last - 1], polygon[last]}, shade);
    }

    /// Width and radius in pixels.
    void DrawLine(const D3DXVECTOR3& from, const D3DXVECTOR3& to, float width, const Color& color,
                  Visibility visibility);
    void DrawDot(const D3DXVECTOR3& center, float radius, const Color& color, Visibility visibility);

    /// @return the image as it stands.
    Image Finish() const;

private:
    static Corner Blend(const std::array<Corner, 3>& corners, const Shares& shares);
    /// Cuts off what is behind the camera. @return the number of corners that remain
    std::size_t ClipNear(const std::array<Corner, 3>& corners, std::array<Corner, 4>& polygon) const;
    /// @return the depth buffer's cell
    float& Depth(int x, int y);
    void DrawStroke(const ScreenPoint& a, const ScreenPoint& b, float width, const Color& color, Visibility visibility);

    template <typename Shade>
    void FillTriangle(const std::array<Corner, 3>& corners, Shade shade)
    {
        std::array<ScreenPoint, 3> points;
        for (std::size_t i = 0; i < points.size(); ++i)
            points[i] = camera_.ToScreen(camera_.ToView(corners[i].position));
        ScanTriangle(points, samples_.Width(), samples_.Height(), [&](int x, int y, const Shares& shares) {
            // In perspective it is the reciprocals of the depths that change evenly over the image.
            Shares share = {shares[0] / points[0].depth, shares[1] / points[1].depth, shares[2] / points[2].depth};
            const float depth = 1.0F / (share[0] + share[1] + share[2]);
            if (depth >= Depth(x, y))
                return;
            Depth(x, y) = depth;
            for (float& part : share)
                part *= depth;
            samples_.At(x, y) = shade(Blend(corners, share));
        });
    }

    Camera camera_;
    Image samples_;
    std::vector<float> depths_;
};

}  // namespace Pictures

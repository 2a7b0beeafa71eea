#pragma once

#include <importing/math/D3DXMath.h>

namespace Pictures
{

/// Where a point falls: pixels from the upper left corner, and its distance along the view.
struct ScreenPoint
{
    float x;
    float y;
    float depth;
};

/// A perspective camera; y is up, right-handed.
class Camera
{
public:
    /// @param fieldOfView  vertical, in degrees
    Camera(const D3DXVECTOR3& eye, const D3DXVECTOR3& target, float fieldOfView);

    /// Sets the size of the image in pixels.
    void SetImageSize(int width, int height);

    const D3DXVECTOR3& Eye() const { return eye_; }
    /// @return the point in the camera's frame: x to the right, y up, z ahead.
    D3DXVECTOR3 ToView(const D3DXVECTOR3& point) const;
    /// Of a point in the camera's frame, which has to be ahead.
    ScreenPoint ToScreen(const D3DXVECTOR3& viewPoint) const;

private:
    D3DXVECTOR3 eye_;
    D3DXVECTOR3 right_;
    D3DXVECTOR3 up_;
    D3DXVECTOR3 ahead_;
    float slope_;  ///< half the image's height at distance 1
    float centerX_ = 0;
    float centerY_ = 0;
    float pixels_ = 0;  ///< per unit of slope
};

}  // namespace Pictures

#include <pictures/Camera.h>

#include <pictures/Vectors.h>

namespace Pictures
{

Camera::Camera(const D3DXVECTOR3& eye, const D3DXVECTOR3& target, float fieldOfView)
    : eye_(eye), ahead_(Normalized(target - eye)), slope_(std::tan(fieldOfView * kPi / 360))
{
    right_ = Normalized(Cross(ahead_, D3DXVECTOR3(0, 1, 0)));
    up_ = Cross(right_, ahead_);
}

void Camera::SetImageSize(int width, int height)
{
    centerX_ = static_cast<float>(width) / 2;
    centerY_ = static_cast<float>(height) / 2;
    pixels_ = centerY_ / slope_;
}

D3DXVECTOR3 Camera::ToView(const D3DXVECTOR3& point) const
{
    const D3DXVECTOR3 offset = point - eye_;
    return {Dot(offset, right_), Dot(offset, up_), Dot(offset, ahead_)};
}

ScreenPoint Camera::ToScreen(const D3DXVECTOR3& viewPoint) const
{
    const float scale = pixels_ / viewPoint.z;
    return {centerX_ + viewPoint.x * scale, centerY_ - viewPoint.y * scale, viewPoint.z};
}

}  // namespace Pictures

#include <importing/records/Camera.h>

#include <importing/records/ContentHash.h>

namespace Importing
{

Camera::Camera() = default;
Camera::Camera(const Camera&) = default;
Camera& Camera::operator=(const Camera&) = default;
Camera::~Camera() = default;

std::string Camera::GetName() { return name_; }

void Camera::SetName(const std::string& name)
{
    name_ = name;
    SetHashInvalid();
}

Transform Camera::GetOffsetMatrix() { return offset_; }

void Camera::SetOffsetMatrix(const Transform& offset)
{
    offset_ = offset;
    SetHashInvalid();
}

float Camera::GetFovX() const { return fovX_; }

void Camera::SetFovX(float fov)
{
    fovX_ = fov;
    SetHashInvalid();
}

float Camera::GetFovY() const { return fovY_; }

void Camera::SetFovY(float fov)
{
    fovY_ = fov;
    SetHashInvalid();
}

float Camera::GetNearZ() const { return nearZ_; }

void Camera::SetNearZ(float z)
{
    nearZ_ = z;
    SetHashInvalid();
}

float Camera::GetFarZ() const { return farZ_; }

void Camera::SetFarZ(float z)
{
    farZ_ = z;
    SetHashInvalid();
}

void Camera::CalculeteHash()
{
    ContentHash hash;
    hash.Add(name_).Add(fovX_).Add(fovY_).Add(offset_).Add(nearZ_).Add(farZ_);
    StoreHash(hash.Value());
}

}  // namespace Importing

#include <importing/records/Key.h>

#include <importing/base/ForReading.h>

namespace Importing
{

Key::Key() : rotation_(0, 0, 0, 1), position_(0, 0, 0), scale_(1, 1, 1) {}

Key::Key(const Key&) = default;
Key& Key::operator=(const Key&) = default;
Key::~Key() = default;

bool Key::operator==(const Key& other) const
{
    Key& that = ForReading(other);
    return position_ == that.GetPosition() && rotation_ == that.GetRotation() && scale_ == that.GetScale() &&
           time_ == that.GetTime();
}

bool Key::operator!=(const Key& other) const { return !(*this == other); }

std::uint32_t Key::GetTime() const { return time_; }

void Key::SetTime(std::uint32_t time) { time_ = time; }

D3DXVECTOR3 Key::GetPosition() { return position_; }

void Key::SetPosition(const D3DXVECTOR3& position) { position_ = position; }

D3DXVECTOR3 Key::GetScale() { return scale_; }

void Key::SetScale(const D3DXVECTOR3& scale) { scale_ = scale; }

D3DXQUATERNION Key::GetRotation() { return rotation_; }

void Key::SetRotation(const D3DXQUATERNION& rotation) { rotation_ = rotation; }

D3DXMATRIX Key::GetMatrix()
{
    D3DXMATRIX matrix;
    D3DXMatrixTransformation(&matrix, nullptr, nullptr, &scale_, nullptr, &rotation_, &position_);
    return matrix;
}

}  // namespace Importing

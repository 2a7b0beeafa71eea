#include <importing/records/Transform.h>

#include <algorithm>
#include <cmath>

namespace Importing
{
namespace
{

// Offsets of the parts within the 16 stored floats, for the Euler and Quaternion forms.
constexpr int kTranslation = 0;
constexpr int kRotation = 4;
constexpr int kScale = 8;

constexpr float kAttitudeAtPole = 1.57075F;  // 0x3FC90E56
constexpr double kPole = 0.499;

void Store(float* to, const D3DXVECTOR3& v)
{
    to[0] = v.x;
    to[1] = v.y;
    to[2] = v.z;
}

D3DXMATRIX Compose(const D3DXVECTOR3& translation, const D3DXQUATERNION& rotation, const D3DXVECTOR3& scale)
{
    D3DXMATRIX matrix;
    D3DXMatrixTransformation(&matrix, nullptr, nullptr, &scale, nullptr, &rotation, &translation);
    return matrix;
}

}  // namespace

D3DXMATRIX Transform::Indentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

Transform::Transform() : stored_{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, Type::Matrix} {}

Transform::Transform(const D3DXMATRIX& matrix) : Transform(&matrix.m[0][0]) {}

Transform::Transform(const float* matrix) : stored_{} { std::copy_n(matrix, 16, stored_.values); }

Transform::~Transform() = default;

void Transform::Quaterion2Euler(const D3DXQUATERNION& rotation, D3DXVECTOR3& euler) const
{
    const auto [x, y, z, w] = rotation;
    const float sqx = x * x;
    const float sqy = y * y;
    const float sqz = z * z;
    const float sqw = w * w;
    const float unit = sqy + sqx + sqz + sqw;
    const float test = x * y + z * w;

    if (static_cast<double>(test) > kPole * static_cast<double>(unit))
        euler = D3DXVECTOR3(2.0F * std::atan2(x, w), kAttitudeAtPole, 0.0F);
    else if (-kPole * static_cast<double>(unit) > static_cast<double>(test))
        euler = D3DXVECTOR3(-2.0F * std::atan2(x, w), -kAttitudeAtPole, 0.0F);
    else
        euler =
            D3DXVECTOR3(std::atan2(2.0F * y * w - 2.0F * x * z, sqx - sqy - sqz + sqw), std::asin(2.0F * test / unit),
                        std::atan2(2.0F * x * w - 2.0F * y * z, -sqx + sqy - sqz + sqw));
}

D3DXQUATERNION Transform::Euler2Quaterion(const D3DXVECTOR3& euler)
{
    const float c1 = std::cos(euler.x / 2.0F);
    const float s1 = std::sin(euler.x / 2.0F);
    const float c2 = std::cos(euler.y / 2.0F);
    const float s2 = std::sin(euler.y / 2.0F);
    const float c3 = std::cos(euler.z / 2.0F);
    const float s3 = std::sin(euler.z / 2.0F);
    return {c1 * c2 * s3 + s1 * s2 * c3, s1 * c2 * c3 + c1 * s2 * s3, c1 * s2 * c3 - s1 * c2 * s3,
            c1 * c2 * c3 - s1 * s2 * s3};
}

Transform::Type Transform::GetType() { return stored_.type; }

D3DXMATRIX Transform::GetMatrix()
{
    const float* values = stored_.values;
    D3DXVECTOR3 translation;
    D3DXVECTOR3 scale;
    LoadTranslationAndScale(translation, scale);
    switch (stored_.type)
    {
        case Type::Euler:
            return Compose(translation, Euler2Quaterion(D3DXVECTOR3(values + kRotation)), scale);
        case Type::Quaternion:
            return Compose(translation, D3DXQUATERNION(values + kRotation), scale);
        case Type::Matrix:
        default:
            return StoredMatrix();
    }
}

void Transform::SetMatrix(const D3DXMATRIX& matrix)
{
    std::copy_n(&matrix.m[0][0], 16, stored_.values);
    stored_.type = Type::Matrix;
}

bool Transform::GetEuler(D3DXVECTOR3& translation, D3DXVECTOR3& rotation, D3DXVECTOR3& scale) const
{
    switch (stored_.type)
    {
        case Type::Matrix:
        {
            const D3DXMATRIX matrix = StoredMatrix();
            // A failed decomposition writes no rotation, so it starts as the identity.
            D3DXQUATERNION quaternion(0, 0, 0, 1);
            D3DXMatrixDecompose(&scale, &quaternion, &translation, &matrix);
            Quaterion2Euler(quaternion, rotation);
            break;
        }
        case Type::Euler:
            LoadTranslationAndScale(translation, scale);
            rotation = D3DXVECTOR3(stored_.values + kRotation);
            break;
        case Type::Quaternion:
            LoadTranslationAndScale(translation, scale);
            Quaterion2Euler(D3DXQUATERNION(stored_.values + kRotation), rotation);
            break;
    }
    return true;
}

void Transform::SetEuler(D3DXVECTOR3& translation, const D3DXVECTOR3& rotation, const D3DXVECTOR3& scale)
{
    StoreTranslationAndScale(translation, scale);
    Store(stored_.values + kRotation, rotation);
    stored_.type = Type::Euler;
}

bool Transform::GetQuaterion(D3DXVECTOR3& translation, D3DXQUATERNION& rotation, D3DXVECTOR3& scale) const
{
    switch (stored_.type)
    {
        case Type::Matrix:
        {
            const D3DXMATRIX matrix = StoredMatrix();
            D3DXMatrixDecompose(&scale, &rotation, &translation, &matrix);
            break;
        }
        case Type::Euler:
        {
            LoadTranslationAndScale(translation, scale);
            const D3DXVECTOR3 angles(stored_.values + kRotation);
            rotation = D3DXQUATERNION(angles.x, angles.y, angles.z, 1.0F);
            break;
        }
        case Type::Quaternion:
            LoadTranslationAndScale(translation, scale);
            rotation = D3DXQUATERNION(stored_.values + kRotation);
            break;
    }
    return true;
}

void Transform::SetQuaterion(D3DXVECTOR3& translation, const D3DXQUATERNION& rotation, const D3DXVECTOR3& scale)
{
    StoreTranslationAndScale(translation, scale);
    float* to = stored_.values + kRotation;
    to[0] = rotation.x;
    to[1] = rotation.y;
    to[2] = rotation.z;
    to[3] = rotation.w;
    stored_.type = Type::Quaternion;
}

void Transform::StoreTranslationAndScale(const D3DXVECTOR3& translation, const D3DXVECTOR3& scale)
{
    Store(stored_.values + kTranslation, translation);
    Store(stored_.values + kScale, scale);
}

void Transform::LoadTranslationAndScale(D3DXVECTOR3& translation, D3DXVECTOR3& scale) const
{
    translation = D3DXVECTOR3(stored_.values + kTranslation);
    scale = D3DXVECTOR3(stored_.values + kScale);
}

}  // namespace Importing

#pragma once

#include <importing/math/D3DXMath.h>

#include <cstdint>
#include <random>

namespace Support
{

/// Random values that are the same on every platform: the generator of the standard library has fixed results; its
/// distributions do not and are not used.
class RandomFloats
{
public:
    explicit RandomFloats(std::uint32_t seed) : generator_(seed) {}

    std::uint32_t Integer(std::uint32_t count) { return static_cast<std::uint32_t>(generator_()) % count; }

    /// Returns a number from min to max, in 2^24 equal steps.
    float Between(float min, float max)
    {
        return min + (max - min) * (static_cast<float>(Integer(1U << 24U)) / static_cast<float>(1U << 24U));
    }

    D3DXVECTOR3 Vector(float size)
    {
        const float x = Between(-size, size);
        const float y = Between(-size, size);
        return {x, y, Between(-size, size)};
    }

    /// Returns a unit quaternion.
    D3DXQUATERNION Rotation()
    {
        for (;;)
        {
            const D3DXVECTOR3 v = Vector(1.0F);
            const float w = Between(-1.0F, 1.0F);
            const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z + w * w);
            if (length > 0.1F && length <= 1.0F)
                return {v.x / length, v.y / length, v.z / length, w / length};
        }
    }

    D3DXMATRIX Matrix(float size)
    {
        D3DXMATRIX matrix;
        for (auto& row : matrix.m)
            for (float& value : row)
                value = Between(-size, size);
        return matrix;
    }

private:
    std::mt19937 generator_;
};

}  // namespace Support

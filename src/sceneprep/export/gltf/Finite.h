#pragma once

#include <importing/math/D3DXMath.h>

#include <cmath>

namespace Sceneprep::Gltf
{

/// Returns the value, or the other one if it is infinite or NaN, which the format does not allow.
inline float Finite(float value, float otherwise) { return std::isfinite(value) ? value : otherwise; }

inline D3DXVECTOR3 Finite(const D3DXVECTOR3& value, float otherwise)
{
    return {Finite(value.x, otherwise), Finite(value.y, otherwise), Finite(value.z, otherwise)};
}

}  // namespace Sceneprep::Gltf

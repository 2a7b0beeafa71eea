#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>

namespace Importing
{

/// Decomposes a matrix into scale, rotation and translation. Unlike D3DXMatrixDecompose it keeps mirroring.
///
/// Writes: scale, the lengths of the first three rows, with x negated when the determinant of the upper 3x3 part is
///         below 0; translation, the fourth row; rotation, the quaternion of the rows divided by their signed scale.
///
/// Deliberate: the negative sign is always in x, regardless of the axis that was mirrored.
///
/// @return 0; or 0x8876086C when a row has length 0, and then only the scale has been written.
IMPORTING_API std::uint32_t DecomposeMatrix(D3DXVECTOR3& scale, D3DXQUATERNION& rotation, D3DXVECTOR3& translation,
                                            const D3DXMATRIX& matrix);

}  // namespace Importing

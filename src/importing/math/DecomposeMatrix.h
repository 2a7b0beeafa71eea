#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>

namespace Importing
{

/// Takes a matrix apart into scale, rotation and translation; unlike D3DXMatrixDecompose it keeps mirroring.
///
/// Writes: scale, the lengths of the first three rows, x negated when the determinant of the upper 3x3 part is below
///         0 (deliberate: mirroring is always carried by x, whichever axis was mirrored); translation, the fourth
///         row; rotation, the quaternion of the rows divided by their signed scale.
///
/// @return 0; or 0x8876086C when a row has length 0: then scale has been written, rotation and translation have not.
IMPORTING_API std::uint32_t DecomposeMatrix(D3DXVECTOR3& scale, D3DXQUATERNION& rotation, D3DXVECTOR3& translation,
                                            const D3DXMATRIX& matrix);

}  // namespace Importing

#pragma once

#include <importing/math/D3DXMath.h>

#include <cstring>

namespace Importing
{

/// True when all 64 bytes of two matrices agree; +0 and -0 differ, and a NaN agrees with itself.
inline bool SameBits(const D3DXMATRIX& a, const D3DXMATRIX& b) { return std::memcmp(&a, &b, sizeof(D3DXMATRIX)) == 0; }

}  // namespace Importing

#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

namespace Importing
{

/// The matrix that carries normals where the given matrix carries positions.
///
/// Each of the first three rows, cut to three elements, is normalised; a row of zeros is kept. The fourth row and the
/// fourth column are those of the identity, so the translation is dropped.
///
/// Deliberate: this removes the scale of each row and keeps rotation and shear; it is not the inverse transpose, so
/// normals under a non-uniform scale do not stay perpendicular to their faces.
IMPORTING_API D3DXMATRIX NormalMatrix(const D3DXMATRIX& matrix);

}  // namespace Importing

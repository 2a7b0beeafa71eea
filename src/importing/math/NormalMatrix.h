#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

namespace Importing
{

/// Returns the matrix that transforms normals where the given matrix transforms positions.
///
/// The first three elements of each of the first three rows are normalised; a row of zeros is kept. The fourth row and
/// the fourth column are those of the identity, so the translation is dropped.
///
/// Deliberate: the result keeps rotation and shear and drops the scale of each row. It is not the inverse transpose, so
/// under a non-uniform scale normals do not stay perpendicular to their faces.
IMPORTING_API D3DXMATRIX NormalMatrix(const D3DXMATRIX& matrix);

}  // namespace Importing

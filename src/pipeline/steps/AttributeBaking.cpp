// The container multiplies normals by the matrix with unit rows. Where that is wrong, normals are multiplied beforehand
// by the inverse transpose and by the inverse of the container's matrix, so that the container's own multiplication
// leads to the right result. Everything is computed in double precision, because the two inverses amplify rounding
// errors.

#include <pipeline/steps/AttributeBaking.h>

#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/Vector3.h>
#include <pipeline/scene/VertexLayouts.h>

#include <algorithm>
#include <cmath>

namespace Pipeline
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Matrix3 = std::array<Vector3, 3>;

/// Relative tolerance for right angles and equal lengths of the rows of a rotation with uniform scale.
constexpr double kTolerance = 1e-5;

Vector3 Times(const Vector3& v, const Matrix3& m)
{
    Vector3 result{};
    for (std::size_t c = 0; c < 3; ++c)
        result[c] = v[0] * m[0][c] + v[1] * m[1][c] + v[2] * m[2][c];
    return result;
}

/// Returns whether the matrix is a product of a rotation, a uniform scale and possibly a mirroring.
bool IsSimilarity(const Matrix3& m)
{
    const double size = Dot(m[0], m[0]);
    for (std::size_t row = 0; row < 3; ++row)
    {
        if (std::fabs(Dot(m[row], m[row]) - size) > kTolerance * size ||
            std::fabs(Dot(m[row], m[(row + 1) % 3])) > kTolerance * size)
            return false;
    }
    return true;
}

/// Returns nothing for a singular matrix.
std::optional<Matrix3> Inverse(const Matrix3& m)
{
    Matrix3 cofactors{};
    for (std::size_t r = 0; r < 3; ++r)
    {
        for (std::size_t c = 0; c < 3; ++c)
            cofactors[r][c] = m[(r + 1) % 3][(c + 1) % 3] * m[(r + 2) % 3][(c + 2) % 3] -
                              m[(r + 1) % 3][(c + 2) % 3] * m[(r + 2) % 3][(c + 1) % 3];
    }
    const double determinant = Dot(m[0], cofactors[0]);
    if (determinant == 0 || !std::isfinite(determinant))
        return std::nullopt;
    Matrix3 inverse{};
    for (std::size_t r = 0; r < 3; ++r)
    {
        for (std::size_t c = 0; c < 3; ++c)
            inverse[r][c] = cofactors[c][r] / determinant;
    }
    return inverse;
}

Matrix3 Transposed(const Matrix3& m)
{
    Matrix3 transposed{};
    for (std::size_t r = 0; r < 3; ++r)
    {
        for (std::size_t c = 0; c < 3; ++c)
            transposed[r][c] = m[c][r];
    }
    return transposed;
}

Matrix3 WithUnitRows(Matrix3 m)
{
    for (Vector3& row : m)
    {
        const double length = Length(row);
        for (double& element : row)
            element /= length;
    }
    return m;
}

Vector3 ToDouble(const D3DXVECTOR3& v) { return {v.x, v.y, v.z}; }

D3DXVECTOR3 ToFloat(const Vector3& v)
{
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

Vector3 WithLength(Vector3 v, double length)
{
    const double now = Length(v);
    if (now > 0)
    {
        for (double& element : v)
            element *= length / now;
    }
    return v;
}

}  // namespace

AttributeBaking::AttributeBaking(const D3DXMATRIX& matrix) : matrix_(), isMirroring_(IsMirroring(matrix))
{
    for (unsigned r = 0; r < 3; ++r)
    {
        for (unsigned c = 0; c < 3; ++c)
            matrix_[r][c] = matrix(r, c);
    }
    if (IsSimilarity(matrix_))
        return;
    const std::optional<Matrix3> inverse = Inverse(matrix_);
    const std::optional<Matrix3> undo = Inverse(WithUnitRows(matrix_));
    if (inverse && undo)
        correction_ = {Transposed(*inverse), *undo};
}

D3DXVECTOR3 AttributeBaking::Bake(const D3DXVECTOR3& normal) const
{
    const Vector3 before = ToDouble(normal);
    const Matrix3& m = correction_ ? correction_->inverseTranspose : matrix_;
    return ToFloat(WithLength(Times(before, m), Length(before)));
}

void AttributeBaking::PrepareNormals(Geometry& geometry) const
{
    if (!correction_)
        return;
    for (Vertex& vertex : geometry.VertexArray)
    {
        const Vector3 before = ToDouble(vertex.Vertex::GetNormal());
        const Vector3 right = WithLength(Times(before, correction_->inverseTranspose), Length(before));
        vertex.SetNormal(ToFloat(Times(right, correction_->undo)));
    }
}

void AttributeBaking::BakeTangents(Geometry& geometry, const VertexLayout& layout) const
{
    const VertexAttribute* attribute = FindAttribute(layout, "TANGENT");
    if (attribute == nullptr)
        return;
    const int set = attribute->firstSet;
    for (Vertex& vertex : geometry.VertexArray)
    {
        if (static_cast<int>(vertex.GetTexCoordCount()) < set + 2)
            continue;
        const D3DXVECTOR2 xy = vertex.GetTexCoord(set);
        const D3DXVECTOR2 zw = vertex.GetTexCoord(set + 1);
        const D3DXVECTOR3 tangent = ToFloat(WithLength(Times({xy.x, xy.y, zw.x}, matrix_), 1));
        vertex.SetTexCoord({tangent.x, tangent.y}, static_cast<std::uint64_t>(set));
        vertex.SetTexCoord({tangent.z, isMirroring_ ? -zw.y : zw.y}, static_cast<std::uint64_t>(set) + 1);
    }
}

}  // namespace Pipeline

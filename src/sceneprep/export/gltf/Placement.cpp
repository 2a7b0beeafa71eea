// A matrix with shear is the product of a rotation, a scale and another rotation: its singular value decomposition. It
// is computed by the one-sided Jacobi method, which is short, needs no start values and is accurate for small singular
// values; for 3x3 matrices a few sweeps suffice.

#include <sceneprep/export/gltf/Placement.h>

#include <importing/math/DecomposeMatrix.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/Vector3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Sceneprep::Gltf
{

using Pipeline::Cross;
using Pipeline::Dot;
using Pipeline::IsIdentity;
using Pipeline::IsShearFree;
using Pipeline::Length;

namespace
{

using Row = Pipeline::Vector3;
using Matrix3 = std::array<Row, 3>;

/// Singular values below this share of the largest one count as 0.
constexpr double kVanishing = 1e-12;

Row Times(const Row& a, double factor) { return {a[0] * factor, a[1] * factor, a[2] * factor}; }

Matrix3 Transposed(const Matrix3& m)
{
    return {{{m[0][0], m[1][0], m[2][0]}, {m[0][1], m[1][1], m[2][1]}, {m[0][2], m[1][2], m[2][2]}}};
}

Matrix3 UpperPart(const D3DXMATRIX& m)
{
    return {{{m._11, m._12, m._13}, {m._21, m._22, m._23}, {m._31, m._32, m._33}}};
}

D3DXQUATERNION RotationOf(const Matrix3& m)
{
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    for (std::size_t r = 0; r < 3; ++r)
        for (std::size_t c = 0; c < 3; ++c)
            matrix.m[r][c] = static_cast<float>(m[r][c]);
    D3DXQUATERNION rotation;
    return *D3DXQuaternionRotationMatrix(&rotation, &matrix);
}

/// Rotates columns p and q of both matrices so that they are at right angles in the first one: one step of the
/// one-sided Jacobi method (Hestenes 1958).
void Orthogonalize(Matrix3& a, Matrix3& v, std::size_t p, std::size_t q)
{
    const Matrix3 columns = Transposed(a);
    const double across = Dot(columns[p], columns[q]);
    if (across == 0)
        return;
    const double zeta = (Dot(columns[q], columns[q]) - Dot(columns[p], columns[p])) / (2 * across);
    const double t = std::copysign(1.0, zeta) / (std::fabs(zeta) + std::hypot(1.0, zeta));
    const double c = 1 / std::hypot(1.0, t);
    const double s = c * t;
    for (Matrix3* matrix : {&a, &v})
    {
        for (Row& row : *matrix)
        {
            const double kept = row[p];
            row[p] = c * kept - s * row[q];
            row[q] = s * kept + c * row[q];
        }
    }
}

/// Makes unit rows at right angles; rows that vanish are computed from the others.
void CompleteBasis(Matrix3& rows, const Row& lengths)
{
    std::array<std::size_t, 3> order = {0, 1, 2};
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return lengths[a] > lengths[b]; });
    const double smallest = lengths[order[0]] * kVanishing;
    Row& first = rows[order[0]];
    Row& second = rows[order[1]];
    Row& third = rows[order[2]];
    first = lengths[order[0]] > 0 ? Times(first, 1 / lengths[order[0]]) : Row{1, 0, 0};
    if (lengths[order[1]] > smallest)
        second = Times(second, 1 / lengths[order[1]]);
    else
    {
        second = Cross(first, std::fabs(first[0]) < 0.7 ? Row{1, 0, 0} : Row{0, 1, 0});
        second = Times(second, 1 / Length(second));
    }
    third = lengths[order[2]] > smallest ? Times(third, 1 / lengths[order[2]]) : Cross(first, second);
}

double Determinant(const Matrix3& m) { return Dot(m[0], Cross(m[1], m[2])); }

Json ToList(const D3DXVECTOR3& v) { return Json::array({v.x, v.y, v.z}); }

Json ToList(const D3DXQUATERNION& q)
{
    const double length = std::hypot(std::hypot(q.x, q.y), std::hypot(q.z, q.w));
    if (!(length > 0))
        return Json::array({0, 0, 0, 1});
    return Json::array({q.x / length, q.y / length, q.z / length, q.w / length});
}

}  // namespace

bool IsFinite(const D3DXMATRIX& matrix)
{
    const float* first = &matrix.m[0][0];
    return std::all_of(first, first + 16, [](float element) { return std::isfinite(element); });
}

Parts SplitShearFree(const D3DXMATRIX& matrix)
{
    Parts parts{{1, 1, 1}, {0, 0, 0, 1}, {0, 0, 0}};
    const bool isSingular = Importing::DecomposeMatrix(parts.scale, parts.rotation, parts.translation, matrix) != 0;
    return isSingular ? SplitSheared(matrix).outer : parts;
}

ShearedParts SplitSheared(const D3DXMATRIX& matrix)
{
    // For the transposed matrix A: rotates A by W until the columns of A W are at right angles.
    Matrix3 a = UpperPart(matrix);
    a = Transposed(a);
    Matrix3 rotation = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    constexpr int kSweeps = 30;
    for (int sweep = 0; sweep < kSweeps; ++sweep)
    {
        Orthogonalize(a, rotation, 0, 1);
        Orthogonalize(a, rotation, 0, 2);
        Orthogonalize(a, rotation, 1, 2);
    }
    Matrix3 outer = Transposed(a);
    Row sizes = {Length(outer[0]), Length(outer[1]), Length(outer[2])};
    CompleteBasis(outer, sizes);
    if (Determinant(outer) < 0)
    {
        outer[0] = Times(outer[0], -1);
        sizes[0] = -sizes[0];
    }
    return {.inner = RotationOf(rotation),
            .outer = {{static_cast<float>(sizes[0]), static_cast<float>(sizes[1]), static_cast<float>(sizes[2])},
                      RotationOf(outer),
                      {matrix._41, matrix._42, matrix._43}}};
}

void SetMatrix(const D3DXMATRIX& matrix, Json& node)
{
    if (IsIdentity(matrix))
        return;
    // Matrices for row vectors, stored by rows, are those of the format for column vectors, stored by columns.
    const float* first = &matrix.m[0][0];
    Json elements(std::vector<float>(first, first + 16));
    elements[3] = elements[7] = elements[11] = 0;
    elements[15] = 1;
    node["matrix"] = std::move(elements);
}

void SetParts(const Parts& parts, Json& node)
{
    node["scale"] = ToList(parts.scale);
    node["rotation"] = ToList(parts.rotation);
    node["translation"] = ToList(parts.translation);
}

void SetRotation(const D3DXQUATERNION& rotation, Json& node) { node["rotation"] = ToList(rotation); }

std::optional<D3DXQUATERNION> Place(const D3DXMATRIX& matrix, Json& node)
{
    if (!IsFinite(matrix))
        return std::nullopt;
    if (IsShearFree(matrix))
    {
        SetMatrix(matrix, node);
        return std::nullopt;
    }
    const ShearedParts parts = SplitSheared(matrix);
    SetParts(parts.outer, node);
    const D3DXQUATERNION& inner = parts.inner;
    return inner.x == 0 && inner.y == 0 && inner.z == 0 ? std::nullopt : std::optional(inner);
}

}  // namespace Sceneprep::Gltf

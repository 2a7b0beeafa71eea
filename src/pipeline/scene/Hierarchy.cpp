#include <pipeline/scene/Hierarchy.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <cmath>

namespace Pipeline
{

namespace
{

/// Tolerance for right angles between the axes of a node, as a cosine.
constexpr double kRightAngle = 1e-5;

/// Rounding error of products of matrices, relative to the largest determinant that rows of the given lengths can have.
constexpr double kRounding = 1e-6;

/// Returns the dot product of two rows of the upper 3x3 part.
double Dot(const float* a, const float* b)
{
    return static_cast<double>(a[0]) * b[0] + static_cast<double>(a[1]) * b[1] + static_cast<double>(a[2]) * b[2];
}

/// Returns the signed cofactor in the upper 3x3 part.
double Cofactor(const D3DXMATRIX& m, unsigned row, unsigned column)
{
    const unsigned r1 = (row + 1) % 3;
    const unsigned r2 = (row + 2) % 3;
    const unsigned c1 = (column + 1) % 3;
    const unsigned c2 = (column + 2) % 3;
    return static_cast<double>(m(r1, c1)) * m(r2, c2) - static_cast<double>(m(r1, c2)) * m(r2, c1);
}

double DeterminantOf3x3(const D3DXMATRIX& m)
{
    double determinant = 0;
    for (unsigned column = 0; column < 3; ++column)
        determinant += static_cast<double>(m(0, column)) * Cofactor(m, 0, column);
    return determinant;
}

}  // namespace

NodeWalk WalkFromRoot(Importing::SceneContainer& scene)
{
    const std::size_t count = scene.NodeLibrary.size();
    NodeWalk walk;
    walk.parent.assign(count, -1);
    if (!Importing::IsValidIndex(scene.GetRootNodeIndex(), count))
        return walk;

    struct Pending
    {
        int node;
        int parent;
    };
    std::vector<Pending> pending = {{scene.GetRootNodeIndex(), -1}};
    std::vector<bool> visited(count, false);
    while (!pending.empty())
    {
        const auto [node, parent] = pending.back();
        pending.pop_back();
        const auto position = static_cast<std::size_t>(node);
        if (visited[position])
            continue;
        visited[position] = true;
        walk.parent[position] = parent;
        walk.order.push_back(node);

        const std::vector<std::int32_t>& children = scene.NodeLibrary[position].ChildList;
        Importing::CheckIndices(children, count);
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({*child, node});
    }
    return walk;
}

std::vector<D3DXMATRIX> MatricesInRootFrame(Importing::SceneContainer& scene, const NodeWalk& walk)
{
    D3DXMATRIX identity;
    D3DXMatrixIdentity(&identity);
    std::vector<D3DXMATRIX> matrices(scene.NodeLibrary.size(), identity);
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        const int parent = walk.parent[position];
        if (parent >= 0)
            matrices[position] = Product(scene.NodeLibrary[position].GetLocalTransform().GetMatrix(),
                                         matrices[static_cast<std::size_t>(parent)]);
    }
    return matrices;
}

std::vector<D3DXMATRIX> WorldMatricesOf(Importing::SceneContainer& scene, const NodeWalk& walk)
{
    std::vector<D3DXMATRIX> matrices = MatricesInRootFrame(scene, walk);
    if (walk.order.empty())
        return matrices;
    const D3DXMATRIX root = Importing::At(scene.NodeLibrary, walk.order.front()).GetLocalTransform().GetMatrix();
    for (const int node : walk.order)
    {
        D3DXMATRIX& matrix = Importing::At(matrices, node);
        matrix = Product(matrix, root);
    }
    return matrices;
}

bool IsIdentity(const D3DXMATRIX& m)
{
    D3DXMATRIX identity;
    D3DXMatrixIdentity(&identity);
    return std::equal(&m.m[0][0], &m.m[0][0] + 16, &identity.m[0][0]);
}

bool IsMirroring(const D3DXMATRIX& m)
{
    const double largest = std::sqrt(Dot(m.m[0], m.m[0]) * Dot(m.m[1], m.m[1]) * Dot(m.m[2], m.m[2]));
    return DeterminantOf3x3(m) < -kRounding * largest;
}

bool IsShearFree(const D3DXMATRIX& m)
{
    for (unsigned row = 0; row < 3; ++row)
    {
        const float* a = m.m[row];
        const float* b = m.m[(row + 1) % 3];
        if (std::fabs(Dot(a, b)) > kRightAngle * std::sqrt(Dot(a, a) * Dot(b, b)))
            return false;
    }
    return DeterminantOf3x3(m) != 0;
}

std::optional<D3DXMATRIX> InverseOf(const D3DXMATRIX& m)
{
    const double determinant = DeterminantOf3x3(m);
    if (determinant == 0 || !std::isfinite(determinant))
        return std::nullopt;

    D3DXMATRIX inverse;
    D3DXMatrixIdentity(&inverse);
    for (unsigned row = 0; row < 3; ++row)
    {
        for (unsigned column = 0; column < 3; ++column)
            inverse(row, column) = static_cast<float>(Cofactor(m, column, row) / determinant);
    }
    for (unsigned column = 0; column < 3; ++column)
    {
        double moved = 0;
        for (unsigned k = 0; k < 3; ++k)
            moved -= static_cast<double>(m(3, k)) * inverse(k, column);
        inverse(3, column) = static_cast<float>(moved);
    }
    return inverse;
}

}  // namespace Pipeline

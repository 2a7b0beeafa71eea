#include <importing/geometry/Geometry.h>
#include <importing/math/NormalMatrix.h>

#include <algorithm>
#include <iterator>

namespace Importing
{
namespace
{

/// Reserves capacity for `added` more elements. Where the array must grow, it at least doubles, so that repeated calls
/// are amortised linear.
template <typename T>
void ReserveBehind(std::vector<T>& array, std::size_t added)
{
    const std::size_t needed = array.size() + added;
    if (needed > array.capacity())
        array.reserve(std::max(needed, 2 * array.capacity()));
}

/// Reserves capacity for everything that is appended, so that each array is reallocated at most once.
void ReserveForAppending(Geometry& mesh, const Geometry& other)
{
    ReserveBehind(mesh.VertexArray, other.VertexArray.size());
    ReserveBehind(mesh.IndexArray, other.IndexArray.size());
}

void AppendIndices(std::vector<std::uint32_t>& indices, const std::vector<std::uint32_t>& others, std::uint32_t base)
{
    std::transform(others.begin(), others.end(), std::back_inserter(indices),
                   [base](std::uint32_t index) { return index + base; });
}

}  // namespace

int Geometry::Append(const Geometry& other)
{
    if (other.GetPolySize() != polySize_)
        return -1;
    if (&other == this)
        return Geometry::Append(Geometry(other));

    ReserveForAppending(*this, other);
    const auto base = static_cast<std::uint32_t>(VertexArray.size());
    VertexArray.insert(VertexArray.end(), other.VertexArray.begin(), other.VertexArray.end());
    AppendIndices(IndexArray, other.IndexArray, base);
    SetHashInvalid();
    return 0;
}

int Geometry::Append(const Geometry& other, const D3DXMATRIX& matrix)
{
    if (other.GetPolySize() != polySize_)
        return -1;
    if (&other == this)
        return Geometry::Append(Geometry(other), matrix);

    ReserveForAppending(*this, other);
    const D3DXMATRIX normalMatrix = NormalMatrix(matrix);
    const auto base = static_cast<std::uint32_t>(VertexArray.size());
    for (const Vertex& vertex : other.VertexArray)
    {
        VertexArray.push_back(vertex);
        VertexArray.back().Transform(matrix, normalMatrix);
    }
    AppendIndices(IndexArray, other.IndexArray, base);
    SetHashInvalid();
    return 0;
}

}  // namespace Importing

#include <importing/geometry/Geometry.h>
#include <importing/math/NormalMatrix.h>
#include <importing/math/SameBits.h>
#include <importing/records/Transform.h>

namespace Importing
{

int Geometry::Transform(const D3DXMATRIX& matrix)
{
    if (SameBits(matrix, Importing::Transform::Indentity))
        return 0;

    // A copy and a qualified call make the loop one piece of code that keeps both matrices in registers; an element of
    // the array is a Vertex and nothing derived from it.
    const D3DXMATRIX positionMatrix = matrix;
    const D3DXMATRIX normalMatrix = NormalMatrix(matrix);
    for (Vertex& vertex : VertexArray)
        vertex.Vertex::Transform(positionMatrix, normalMatrix);
    SetHashInvalid();
    return 0;
}

int Geometry::TransformUVs(const D3DXMATRIX& matrix, int set)
{
    if (SameBits(matrix, Importing::Transform::Indentity))
        return 0;

    // A negative set becomes an index that no vertex accepts; the first vertex throws before anything has changed.
    const auto index = static_cast<std::uint64_t>(static_cast<std::int64_t>(set));
    for (Vertex& vertex : VertexArray)
        vertex.TransformTexCoord(matrix, index);
    SetHashInvalid();
    return 0;
}

}  // namespace Importing

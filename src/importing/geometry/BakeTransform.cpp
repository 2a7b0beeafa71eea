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

    // The copy and the qualified call let the compiler inline the loop and keep both matrices in registers. Elements of
    // the array are never of a class derived from Vertex.
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

    // A negative set becomes an index that no vertex accepts, so the first vertex throws before anything has changed.
    const auto index = static_cast<std::uint64_t>(static_cast<std::int64_t>(set));
    for (Vertex& vertex : VertexArray)
        vertex.TransformTexCoord(matrix, index);
    SetHashInvalid();
    return 0;
}

}  // namespace Importing

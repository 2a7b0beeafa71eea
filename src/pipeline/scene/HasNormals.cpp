#include <pipeline/scene/HasNormals.h>

#include <algorithm>

namespace Pipeline
{

bool HasNormals(Importing::Geometry& geometry)
{
    return std::any_of(geometry.VertexArray.begin(), geometry.VertexArray.end(),
                       [](Importing::Vertex& vertex) { return vertex.Vertex::GetNormal() != D3DXVECTOR3(0, 0, 0); });
}

}  // namespace Pipeline

#include <support/BenchScenes.h>

#include <array>
#include <string>
#include <utility>

using Importing::Geometry;
using Importing::Material;
using Importing::Node;
using Importing::SceneContainer;
using Importing::Surface;
using Importing::Vertex;

namespace
{

constexpr int kMaterials = 16;

/// Four corners around origin, spanned by two vectors, with the normal and the texture coordinates of a quad.
void AddQuad(Geometry& mesh, const D3DXVECTOR3& origin, const D3DXVECTOR3& right, const D3DXVECTOR3& up,
             const D3DXVECTOR3& normal)
{
    const auto base = static_cast<std::uint32_t>(mesh.VertexArray.size());
    const std::array<D3DXVECTOR2, 4> corners = {D3DXVECTOR2(0, 0), D3DXVECTOR2(1, 0), D3DXVECTOR2(1, 1),
                                                D3DXVECTOR2(0, 1)};
    for (const D3DXVECTOR2& corner : corners)
    {
        Vertex vertex(origin + right * corner.x + up * corner.y);
        vertex.SetNormal(normal);
        vertex.SetTexCoord(corner, 0);
        mesh.VertexArray.push_back(std::move(vertex));
    }
    for (const std::uint32_t corner : {0U, 1U, 2U, 0U, 2U, 3U})
        mesh.IndexArray.push_back(base + corner);
}

int ParentOf(Shape shape, int node)
{
    switch (shape)
    {
        case Shape::Flat:
            return 0;
        case Shape::Binary:
            return (node - 1) / 2;
        default:
            return node - 1;
    }
}

}  // namespace

Geometry MakeBox()
{
    const D3DXVECTOR3 low(0, 0, 0);
    const D3DXVECTOR3 high(1, 1, 1);
    const D3DXVECTOR3 x(1, 0, 0);
    const D3DXVECTOR3 y(0, 1, 0);
    const D3DXVECTOR3 z(0, 0, 1);

    Geometry box;
    box.VertexArray.reserve(24);
    box.IndexArray.reserve(36);
    AddQuad(box, low, y, x, -z);
    AddQuad(box, low, x, z, -y);
    AddQuad(box, low, z, y, -x);
    AddQuad(box, high, -x, -y, z);
    AddQuad(box, high, -z, -x, y);
    AddQuad(box, high, -y, -z, x);
    return box;
}

Geometry MakeGrid(std::int64_t vertexCount)
{
    const std::int64_t quads = (vertexCount + 3) / 4;
    constexpr std::int64_t kWidth = 500;

    Geometry grid;
    grid.VertexArray.reserve(static_cast<std::size_t>(4 * quads));
    grid.IndexArray.reserve(static_cast<std::size_t>(6 * quads));
    for (std::int64_t quad = 0; quad < quads; ++quad)
        AddQuad(grid, D3DXVECTOR3(static_cast<float>(quad % kWidth), static_cast<float>(quad / kWidth), 0),
                D3DXVECTOR3(1, 0, 0), D3DXVECTOR3(0, 1, 0), D3DXVECTOR3(0, 0, 1));
    return grid;
}

void FillScene(SceneContainer& scene, Shape shape, std::int64_t nodeCount)
{
    const auto nodes = static_cast<int>(nodeCount);
    for (int material = 0; material < kMaterials; ++material)
    {
        Material record;
        record.SetName("Material " + std::to_string(material));
        scene.AddMaterialToLibrary(record, false);
    }

    D3DXMATRIX step;
    D3DXMatrixTranslation(&step, 0.5F, 0.25F, 0.125F);
    const Geometry box = MakeBox();
    scene.NodeLibrary.resize(static_cast<std::size_t>(nodes) + 1);
    scene.GeometryLibrary.assign(static_cast<std::size_t>(nodes), box);
    scene.SurfaceLibrary.resize(static_cast<std::size_t>(nodes));
    scene.SetRootNodeIndex(0);
    for (int i = 1; i <= nodes; ++i)
    {
        Node& node = scene.NodeLibrary[static_cast<std::size_t>(i)];
        node.SetLocalTransform(Importing::Transform(step));
        node.SurfaceList.push_back(i - 1);
        scene.NodeLibrary[static_cast<std::size_t>(ParentOf(shape, i))].ChildList.push_back(i);

        Surface& surface = scene.SurfaceLibrary[static_cast<std::size_t>(i - 1)];
        surface.SetGeometryID(i - 1);
        surface.SetMaterialID(i % kMaterials);
    }
}

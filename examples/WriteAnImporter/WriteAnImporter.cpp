// Builds a small scene by hand, as an importer would from a file, and makes it fit for real time.

#include <importing/plugin/SceneContainer.h>
#include <pipeline/steps/PrepareScene.h>

#include <cstdio>
#include <initializer_list>

using namespace Importing;

namespace
{

/// A box of one unit: six sides with corners of their own, so that every side is flat.
Geometry Box()
{
    Geometry box;
    box.SetName("Box");
    for (int side = 0; side < 6; ++side)
    {
        const int axis = side / 2;
        const float outward = side % 2 == 0 ? -1.0F : 1.0F;
        const auto base = static_cast<std::uint32_t>(box.VertexArray.size());
        for (const D3DXVECTOR2 corner : {D3DXVECTOR2(-1, -1), {1, -1}, {1, 1}, {-1, 1}})
        {
            const float coordinates[3] = {outward, outward * corner.x, corner.y};
            const float normal[3] = {outward, 0, 0};
            Vertex vertex(0.5F * coordinates[(3 - axis) % 3], 0.5F * coordinates[(4 - axis) % 3],
                          0.5F * coordinates[(5 - axis) % 3]);
            vertex.SetNormal(D3DXVECTOR3(normal[(3 - axis) % 3], normal[(4 - axis) % 3], normal[(5 - axis) % 3]));
            vertex.SetTexCoord(corner, 0);
            box.VertexArray.push_back(vertex);
        }
        for (const std::uint32_t corner : {0U, 1U, 2U, 0U, 2U, 3U})
            box.IndexArray.push_back(base + corner);
    }
    return box;
}

int AddMaterial(SceneContainer& scene, const char* name, const D3DXCOLOR& diffuse)
{
    Material material;
    material.SetName(name);
    material.SetDiffuse(diffuse);
    return scene.AddMaterialToLibrary(material, true);
}

/// A node with a box of its own below a parent.
int AddBox(SceneContainer& scene, int parent, const char* name, const D3DXMATRIX& placement, int material)
{
    Geometry box = Box();
    Surface surface;
    surface.SetGeometryID(scene.AddGeometryToLibrary(box, false));
    surface.SetMaterialID(material);

    Node node;
    node.SetName(name);
    node.SetLocalTransform(Transform(placement));
    node.SurfaceList.push_back(scene.AddSurfaceToLibrary(surface, false));
    scene.NodeLibrary.push_back(node);

    const int index = static_cast<int>(scene.NodeLibrary.size()) - 1;
    scene.NodeLibrary[static_cast<std::size_t>(parent)].ChildList.push_back(index);
    return index;
}

void Print(const char* when, SceneContainer& scene)
{
    std::size_t surfaces = 0;
    std::size_t vertices = 0;
    for (const Node& node : scene.NodeLibrary)
    {
        for (const int surface : node.SurfaceList)
        {
            const int geometry = scene.SurfaceLibrary[static_cast<std::size_t>(surface)].GetGeometryID();
            vertices += scene.GeometryLibrary[static_cast<std::size_t>(geometry)].VertexArray.size();
            ++surfaces;
        }
    }
    std::printf("%s: %zu nodes, %zu surfaces, %zu vertices\n", when, scene.NodeLibrary.size(), surfaces, vertices);
}

}  // namespace

int main()
{
    SceneContainer scene;
    Node root;
    root.SetName("Root");
    scene.NodeLibrary.push_back(root);
    scene.SetRootNodeIndex(0);

    const int red = AddMaterial(scene, "Red", D3DXCOLOR(1, 0, 0, 1));
    const int blue = AddMaterial(scene, "Blue", D3DXCOLOR(0, 0, 1, 1));
    D3DXMATRIX placement;
    AddBox(scene, 0, "Left", *D3DXMatrixTranslation(&placement, -2, 0, 0), red);
    AddBox(scene, 0, "Right", *D3DXMatrixTranslation(&placement, 2, 0, 0), blue);
    AddBox(scene, 0, "Mirrored", *D3DXMatrixScaling(&placement, -1, 1, 1), red);
    Print("before", scene);

    // Bakes the mirroring into the meshes, welds vertices, moves everything into the root, and merges by material.
    for (const Pipeline::StepResult& step : Pipeline::PrepareScene(scene).steps)
    {
        for (const Pipeline::Change& change : step.changes)
            std::printf("%s: %zu %s\n", step.name.c_str(), change.count, change.what.c_str());
    }
    Print("after", scene);
    return 0;
}

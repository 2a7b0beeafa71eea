#include <golden/GoldenScene.h>

#include <support/Random.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Golden
{
namespace
{

using Importing::Geometry;
using Importing::Key;
using Importing::Map;
using Importing::Material;
using Importing::Node;
using Importing::SceneContainer;
using Importing::Surface;
using Importing::Transform;
using Importing::Vertex;
using Support::Random;

D3DXVECTOR3 RandomVector(Random& random, float size)
{
    const float x = random.Between(-size, size);
    const float y = random.Between(-size, size);
    const float z = random.Between(-size, size);
    return {x, y, z};
}

D3DXMATRIX Scaling(float x, float y, float z)
{
    D3DXMATRIX matrix;
    D3DXMatrixScaling(&matrix, x, y, z);
    return matrix;
}

/// Returns a matrix with rows so close to those of the identity that it is not singular, and with a translation.
D3DXMATRIX RandomMatrix(Random& random)
{
    D3DXMATRIX matrix = Scaling(1, 1, 1);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            matrix.m[row][column] += random.Between(-0.4F, 0.4F);
    for (int column = 0; column < 3; ++column)
        matrix.m[3][column] = random.Between(-6, 6);
    return matrix;
}

/// Returns a landscape of cells x cells squares, each with four vertices of its own, some with flipped winding.
Geometry Landscape(Random& random, std::uint32_t cells)
{
    std::vector<float> heights((cells + 1) * (cells + 1));
    for (float& height : heights)
        height = random.Between(-0.7F, 0.7F);

    Geometry mesh;
    for (std::uint32_t y = 0; y < cells; ++y)
        for (std::uint32_t x = 0; x < cells; ++x)
        {
            const auto first = static_cast<std::uint32_t>(mesh.VertexArray.size());
            for (std::uint32_t corner = 0; corner < 4; ++corner)
            {
                const std::uint32_t column = x + corner % 2;
                const std::uint32_t row = y + corner / 2;
                mesh.VertexArray.emplace_back(static_cast<float>(column), static_cast<float>(row),
                                              heights[row * (cells + 1) + column]);
            }
            const bool isFlipped = random.OneIn(3);
            const std::uint32_t second = isFlipped ? 2U : 1U;
            const std::uint32_t third = isFlipped ? 1U : 2U;
            for (const std::uint32_t corner : {0U, second, third, third, second, 3U})
                mesh.IndexArray.push_back(first + corner);
        }
    return mesh;
}

void AddPointCache(Geometry& mesh, Random& random, int frames)
{
    for (int frame = 0; frame < frames; ++frame)
        for (Vertex& vertex : mesh.VertexArray)
            mesh.PointCachePositions.push_back(vertex.GetPosition() + RandomVector(random, 0.3F));
    mesh.PointCacheNormals.assign(mesh.PointCachePositions.size(), D3DXVECTOR3(0, 0, 0));
    mesh.ComputePointCacheNormals();
}

Geometry ProcessedMesh(Random& random, int number)
{
    Geometry mesh = Landscape(random, 3);
    mesh.SetName("mesh" + std::to_string(number % 3));
    mesh.Optimize();
    mesh.UnifyNormals(number % 2 == 0);
    mesh.ComputeNormals();
    mesh.FixFaceCulling(false);
    if (number % 2 == 0)
    {
        mesh.GenerateUVsCubic(0, true);
        mesh.GenerateUVsPlanarX(1, false);
    }
    else
    {
        mesh.GenerateUVsPlanarY(0, true);
        mesh.GenerateUVsPlanarZ(1, false);
    }
    mesh.TransformUVs(RandomMatrix(random), 1);
    mesh.SetBindShapeTransform(RandomMatrix(random));
    if (number == 1)
    {
        const D3DXMATRIX placement = RandomMatrix(random);
        mesh.Append(Landscape(random, 1), placement);
    }
    if (number == 2)
        AddPointCache(mesh, random, 2);
    return mesh;
}

int AddMaterial(SceneContainer& scene, int number)
{
    Material material;
    material.SetName("material");
    material.SetOpacity(0.25F + 0.125F * static_cast<float>(number % 3));
    return scene.AddMaterialToLibrary(material, true);
}

int AddSurface(SceneContainer& scene, Random& random, int number)
{
    Geometry mesh = ProcessedMesh(random, number);
    Map map;
    map.SetTextureID(scene.AddTextureToLibrary(" Folder\\Wood" + std::to_string(number % 2) + ".PNG ", true));
    map.SetType("diffuse");
    map.SetAmount(0.5F);
    Surface surface;
    surface.SetName("surface");
    surface.SetGeometryID(scene.AddGeometryToLibrary(mesh, false));
    surface.SetMaterialID(AddMaterial(scene, number));
    surface.MapList.push_back(map);
    return scene.AddSurfaceToLibrary(surface, false);
}

Transform Placement(Random& random, int number)
{
    if (number % 3 != 0)
    {
        const float mirror = number % 4 == 1 ? -1.0F : 1.0F;
        D3DXMATRIX matrix = RandomMatrix(random);
        const D3DXMATRIX scaling = Scaling(mirror, 1.0F, 1.5F);
        D3DXMatrixMultiply(&matrix, &scaling, &matrix);
        return matrix;
    }
    D3DXVECTOR3 translation = RandomVector(random, 5);
    const D3DXVECTOR3 half = RandomVector(random, 0.5F);
    Transform placement;
    placement.SetQuaterion(translation, D3DXQUATERNION(half.x, half.y, half.z, 0.75F), D3DXVECTOR3(1, 2, 0.5F));
    return placement;
}

int AddAnimation(SceneContainer& scene, Random& random)
{
    std::vector<Key> keys(2);
    for (std::size_t i = 0; i < keys.size(); ++i)
    {
        keys[i].SetTime(static_cast<std::uint32_t>(1000 * i));
        keys[i].SetPosition(RandomVector(random, 3));
        keys[i].SetRotation(D3DXQUATERNION(0.25F, -0.5F, 0.125F, 0.8F));
    }
    return scene.AddAnimationToLibrary(keys, true);
}

void AddCameraAndLight(SceneContainer& scene, Random& random, Node& node)
{
    node.CameraList.push_back(static_cast<int>(scene.CameraLibrary.size()));
    scene.CameraLibrary.emplace_back();
    scene.CameraLibrary.back().SetOffsetMatrix(RandomMatrix(random));
    node.LightList.push_back(static_cast<int>(scene.LightLibrary.size()));
    scene.LightLibrary.emplace_back();
    scene.LightLibrary.back().SetOffsetMatrix(RandomMatrix(random));
}

/// Adds `count` nodes; node i is a child of node i / 2, and every fifth node is animated.
SceneContainer RawScene(Random& random, int count)
{
    SceneContainer scene;
    scene.SetName("golden");
    scene.SetRootNodeIndex(0);
    for (int number = 0; number < count; ++number)
    {
        Node node;
        node.SetName("node" + std::to_string(number % 4));
        if (number > 0)
        {
            node.SetLocalTransform(Placement(random, number));
            node.SurfaceList.push_back(AddSurface(scene, random, number));
        }
        if (number % 3 == 2)
            AddCameraAndLight(scene, random, node);
        if (number % 5 == 4)
            node.SetAnimationID(AddAnimation(scene, random));
        scene.NodeLibrary.push_back(node);
        if (number > 0)
            scene.NodeLibrary[static_cast<std::size_t>(number / 2)].ChildList.push_back(number);
    }
    // Surfaces of two different nodes share one mesh.
    const std::size_t last = scene.SurfaceLibrary.size() - 1;
    scene.SurfaceLibrary[last].SetGeometryID(scene.SurfaceLibrary[last - 1].GetGeometryID());
    return scene;
}

}  // namespace

SceneContainer ProcessedScene()
{
    Random random(20);
    SceneContainer scene = RawScene(random, 8);
    scene.ResolveGeomInstances();
    scene.MakeNodeNamesUnambiguous();
    scene.MakeGeometryNamesUnambiguous();
    scene.CreateSurfaceNames();
    scene.RemoveNegativeScaleMatricies(0, Transform::Indentity, Transform::Indentity);
    scene.FlatHierarchy(0, Transform::Indentity, 0, RandomMatrix(random), 2, -1, false);

    SceneContainer other = RawScene(random, 3);
    other.CheckFacesOrientation(0, RandomMatrix(random));
    scene.AppendSC(&other);
    scene.MakeSurfaceNamesUnambiguous();
    scene.CalculateSurfaceCollisionOffset();
    return scene;
}

}  // namespace Golden

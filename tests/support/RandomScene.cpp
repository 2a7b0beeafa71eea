#include <support/RandomScene.h>

#include <support/SceneText.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace Support
{
namespace
{

using namespace Importing;

std::string RandomName(Dice& dice)
{
    static const std::array<const char*, 9> kNames = {"Box",       "Box", "Box(1)", "Box(2)", "Box(1)[1]",
                                                      "Box(1)[2]", "box", "",       "Lid"};
    return kNames[static_cast<std::size_t>(dice.Below(static_cast<int>(kNames.size())))];
}

D3DXVECTOR3 RandomPoint(Dice& dice)
{
    return {static_cast<float>(dice.Between(-3, 3)), static_cast<float>(dice.Between(-3, 3)),
            static_cast<float>(dice.Between(-3, 3))};
}

D3DXVECTOR3 RandomScale(Dice& dice)
{
    static constexpr std::array<float, 5> kScales = {1, 1, -1, 2, 0.5F};
    const auto pick = [&dice] { return kScales[static_cast<std::size_t>(dice.Below(5))]; };
    return dice.OneIn(2) ? D3DXVECTOR3(1, 1, 1) : D3DXVECTOR3{pick(), pick(), pick()};
}

Transform RandomPlacement(Dice& dice)
{
    D3DXVECTOR3 translation = RandomPoint(dice);
    Transform placement;
    switch (dice.Below(6))
    {
        case 0:
            break;
        case 1:
            placement.SetEuler(translation, D3DXVECTOR3(0.3F, -0.2F, 1.1F), RandomScale(dice));
            break;
        case 2:
            placement.SetQuaterion(translation, D3DXQUATERNION(0.5F, -0.5F, 0.5F, 0.5F), RandomScale(dice));
            break;
        default:
            placement.SetMatrix(RandomMatrix(dice));
    }
    return placement;
}

Geometry RandomMesh(Dice& dice, const RandomSceneOptions& options)
{
    const D3DXVECTOR3 low = RandomPoint(dice);
    const auto side = [&dice] { return static_cast<float>(dice.Between(1, 3)); };
    Geometry mesh = BoxMesh(low, low + D3DXVECTOR3{side(), side(), side()});
    mesh.SetName(RandomName(dice));
    // The faces are rotated in the list, so that the first triangle differs between meshes. Some meshes lose vertices.
    const std::ptrdiff_t face = dice.Below(6);
    std::rotate(mesh.IndexArray.begin(), mesh.IndexArray.begin() + 6 * face, mesh.IndexArray.end());
    if (dice.OneIn(3))
    {
        mesh.VertexArray.resize(static_cast<std::size_t>(dice.Between(3, 7)));
        mesh.IndexArray = {0, 2, 1};
    }
    for (Vertex& vertex : mesh.VertexArray)
    {
        if (dice.OneIn(4))
            vertex.InverseNormal();
        if (dice.OneIn(4))
            vertex.SetTexCoord(D3DXVECTOR2(0.25F, 0.5F), 0);
        if (dice.OneIn(8))
            vertex.AddWeight(1, 0.5F);
    }
    if (options.largePolygons && dice.OneIn(5))
        mesh.SetPolySize(4);
    if (dice.OneIn(4))
    {
        Joint joint("bone");
        joint.SetAnimationID(dice.Between(-1, 1));
        mesh.JointArray.push_back(joint);
    }
    return mesh;
}

Material RandomMaterial(Dice& dice)
{
    Material material;
    material.SetName(dice.OneIn(2) ? "Red" : RandomName(dice));
    if (dice.OneIn(3))
        material.SetOpacity(0.5F);
    return material;
}

Map RandomMap(Dice& dice, std::size_t textures)
{
    Map map;
    map.SetType(dice.OneIn(3) ? "bump" : "colour");
    map.SetTextureID(dice.OneIn(3) ? -1 : dice.Index(textures));
    if (dice.OneIn(4))
        map.SetUVSetIndex(1);
    if (dice.OneIn(4))
        map.SetAmount(1.0000001F);  // The content is equal, because the lowest bits are masked.
    return map;
}

std::vector<Key> RandomAnimation(Dice& dice)
{
    std::vector<Key> keys(static_cast<std::size_t>(dice.Between(1, 2)));
    for (Key& key : keys)
    {
        key.SetPosition(RandomPoint(dice));
        key.SetScale(RandomScale(dice));
    }
    return keys;
}

void AddSurfaces(SceneContainer& scene, Dice& dice, const RandomSceneOptions& options)
{
    const int count = dice.Between(0, options.maxSurfaces);
    for (int i = 0; i < count; ++i)
    {
        Surface surface;
        surface.SetName(RandomName(dice));
        if (!options.sharedMeshes || scene.GeometryLibrary.empty() || !dice.OneIn(4))
            scene.GeometryLibrary.push_back(RandomMesh(dice, options));
        const bool isShared = options.sharedMeshes && dice.OneIn(4);
        surface.SetGeometryID(isShared ? dice.Index(scene.GeometryLibrary.size())
                                       : static_cast<int>(scene.GeometryLibrary.size()) - 1);
        if (options.missingMeshes && dice.OneIn(4))
            surface.SetGeometryID(-1);
        surface.SetMaterialID(dice.OneIn(5) ? -1 : dice.Index(scene.MaterialLibrary.size()));
        surface.SetCollisionOffset(dice.Below(3));
        for (int map = dice.Below(3); map > 0; --map)
            surface.MapList.push_back(RandomMap(dice, scene.TextureLibrary.size()));
        scene.SurfaceLibrary.push_back(surface);
    }
}

void AddAttachments(SceneContainer& scene, Dice& dice)
{
    scene.CameraLibrary.resize(static_cast<std::size_t>(dice.Below(4)));
    for (Camera& camera : scene.CameraLibrary)
        camera.SetOffsetMatrix(RandomPlacement(dice));
    scene.LightLibrary.resize(static_cast<std::size_t>(dice.Below(4)));
    for (Light& light : scene.LightLibrary)
        light.SetOffsetMatrix(RandomPlacement(dice));
}

void AddNodes(SceneContainer& scene, Dice& dice, const RandomSceneOptions& options)
{
    scene.NodeLibrary.resize(static_cast<std::size_t>(dice.Between(1, options.maxNodes)));
    int nextSurface = 0;
    for (Node& node : scene.NodeLibrary)
    {
        node.SetName(RandomName(dice));
        node.SetLocalTransform(RandomPlacement(dice));
        if (options.projections && dice.OneIn(6))
        {
            D3DXMATRIX matrix = RandomMatrix(dice);
            matrix(3, 3) = dice.OneIn(2) ? -1.0F : 2.0F;
            node.SetLocalTransform(Transform(matrix));
        }
        if (dice.OneIn(6))
            node.SetAnimationID(dice.Index(scene.AnimationLibrary.size()));
        for (int listing = dice.Below(4); listing > 0 && !scene.SurfaceLibrary.empty(); --listing)
        {
            if (options.secondReferences)
                node.SurfaceList.push_back(dice.Index(scene.SurfaceLibrary.size()));
            else if (nextSurface < static_cast<int>(scene.SurfaceLibrary.size()))
                node.SurfaceList.push_back(nextSurface++);
        }
        if (!scene.CameraLibrary.empty() && dice.OneIn(3))
            node.CameraList.push_back(dice.Index(scene.CameraLibrary.size()));
        if (!scene.LightLibrary.empty() && dice.OneIn(3))
            node.LightList.push_back(dice.Index(scene.LightLibrary.size()));
    }
}

/// Makes each node a child of a node before it in a shuffled order, so there are no cycles.
void LinkNodes(SceneContainer& scene, Dice& dice, const RandomSceneOptions& options)
{
    const auto count = static_cast<int>(scene.NodeLibrary.size());
    std::vector<int> order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    for (int i = count - 1; i > 0; --i)
        std::swap(order[static_cast<std::size_t>(i)], order[static_cast<std::size_t>(dice.Below(i + 1))]);

    const auto nodeAt = [&](int place) -> Node& {
        return scene.NodeLibrary[static_cast<std::size_t>(order[static_cast<std::size_t>(place)])];
    };
    const int reach = dice.OneIn(2) ? 2 : count;  // A short reach makes the hierarchy deep.
    for (int place = 1; place < count; ++place)
    {
        const int child = order[static_cast<std::size_t>(place)];
        const auto pickParent = [&] { return place - 1 - dice.Below(std::min(reach, place)); };
        if (!dice.OneIn(8))
            nodeAt(pickParent()).ChildList.push_back(child);
        if (options.secondReferences && dice.OneIn(16))
            nodeAt(pickParent()).ChildList.push_back(child);
    }
    if (!dice.OneIn(8))
        scene.SetRootNodeIndex(order[0]);
    else if (dice.OneIn(2))
        scene.SetRootNodeIndex(dice.Below(count));
}

template <typename Record>
void ComputeSomeHashes(std::vector<Record>& records, Dice& dice)
{
    for (Record& record : records)
        if (dice.OneIn(2))
            record.GetHash();
}

void ComputeSomeHashes(SceneContainer& scene, Dice& dice)
{
    for (Geometry& geometry : scene.GeometryLibrary)
        ComputeSomeHashes(geometry.VertexArray, dice);
    for (Surface& surface : scene.SurfaceLibrary)
        ComputeSomeHashes(surface.MapList, dice);
    ComputeSomeHashes(scene.GeometryLibrary, dice);
    ComputeSomeHashes(scene.SurfaceLibrary, dice);
    ComputeSomeHashes(scene.MaterialLibrary, dice);
    ComputeSomeHashes(scene.CameraLibrary, dice);
    ComputeSomeHashes(scene.LightLibrary, dice);
}

}  // namespace

D3DXMATRIX RandomMatrix(Dice& dice)
{
    if (dice.OneIn(5))
        return Translation(0, 0, 0);
    const D3DXVECTOR3 point = RandomPoint(dice);
    const D3DXVECTOR3 scale = RandomScale(dice);
    D3DXMATRIX matrix = Product(Scaling(scale.x, scale.y, scale.z), Translation(point.x, point.y, point.z));
    if (dice.OneIn(3))
        matrix = Product(D3DXMATRIX(0.6F, 0.8F, 0, 0, -0.8F, 0.6F, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), matrix);
    return matrix;
}

SceneContainer RandomScene(Dice& dice, const RandomSceneOptions& options)
{
    static const std::array<const char*, 4> kTextures = {"wood.png", " Wood.PNG\t", "stone.png", "WOOD.png"};
    SceneContainer scene;
    scene.SetName(RandomName(dice));
    scene.SetStatus(dice.Below(5));
    scene.ReservedList.assign(static_cast<std::size_t>(dice.Below(3)), 7);
    for (int i = dice.Below(4); i > 0; --i)
        scene.AnimationLibrary.push_back(RandomAnimation(dice));
    for (int i = dice.Below(5); i > 0; --i)
        scene.TextureLibrary.emplace_back(kTextures[static_cast<std::size_t>(dice.Below(4))]);
    for (int i = dice.Below(5); i > 0; --i)
        scene.MaterialLibrary.push_back(RandomMaterial(dice));
    AddSurfaces(scene, dice, options);
    AddAttachments(scene, dice);
    AddNodes(scene, dice, options);
    LinkNodes(scene, dice, options);
    ComputeSomeHashes(scene, dice);
    return scene;
}

}  // namespace Support

#include <runs/TownScene.h>

#include <support/BenchScenes.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

using Importing::Geometry;
using Importing::Material;
using Importing::Node;
using Importing::SceneContainer;
using Importing::Surface;
using Importing::Vertex;

namespace
{

constexpr int kMaterials = 24;
constexpr int kKinds = 100;
constexpr int kPartsOfWing = 8;
constexpr int kWingsOfBuilding = 2;
constexpr int kBuildingsOfBlock = 10;
constexpr int kBlocksOfDistrict = 13;
constexpr int kNodesOfBuilding = 1 + kWingsOfBuilding * (1 + kPartsOfWing);
constexpr float kPi = 3.14159265F;

/// The standard fixes the numbers of the generator, but not those of its distributions.
class Random
{
public:
    int Below(int count) { return static_cast<int>(generator_() % static_cast<unsigned>(count)); }
    float Between(float min, float max)
    {
        return min + (max - min) * (static_cast<float>(generator_() >> 8U) / 16777216.0F);
    }

private:
    std::mt19937 generator_{20};
};

/// A point of an outline that is rotated around the y axis.
struct OutlinePoint
{
    float radius;
    float height;
};

/// Around the y axis, lying between 0 and 1 on every axis as a box does, with four vertices for each quad.
Geometry TurnOutline(const std::vector<OutlinePoint>& outline, int sides)
{
    Geometry mesh;
    const auto at = [&](std::size_t ring, int side) {
        const float angle = 2 * kPi * static_cast<float>(side) / static_cast<float>(sides);
        const D3DXVECTOR3 outwards(std::cos(angle), 0, std::sin(angle));
        const OutlinePoint& point = outline[ring];
        Vertex vertex(outwards * point.radius + D3DXVECTOR3(0.5F, point.height, 0.5F));
        vertex.SetNormal(outwards);
        vertex.SetTexCoord({static_cast<float>(side) / static_cast<float>(sides), point.height}, 0);
        return vertex;
    };
    for (std::size_t ring = 0; ring + 1 < outline.size(); ++ring)
    {
        for (int side = 0; side < sides; ++side)
        {
            const auto base = static_cast<std::uint32_t>(mesh.VertexArray.size());
            for (const auto& [r, s] : {std::pair(ring, side), {ring + 1, side}, {ring + 1, side + 1}, {ring, side + 1}})
                mesh.VertexArray.push_back(at(r, s));
            for (const std::uint32_t corner : {0U, 1U, 2U, 0U, 2U, 3U})
                mesh.IndexArray.push_back(base + corner);
        }
    }
    return mesh;
}

Geometry MakePart(Random& random)
{
    if (random.Below(2) == 0)
        return MakeBox();
    std::vector<OutlinePoint> outline;
    const int rings = 1 + random.Below(3);
    for (int ring = 0; ring <= rings; ++ring)
        outline.push_back({random.Between(0.2F, 0.5F), static_cast<float>(ring) / static_cast<float>(rings)});
    return TurnOutline(outline, 6 + random.Below(13));
}

D3DXMATRIX ScaledAndMoved(const D3DXVECTOR3& scale, const D3DXVECTOR3& place)
{
    D3DXMATRIX matrix;
    D3DXMatrixScaling(&matrix, scale.x, scale.y, scale.z);
    matrix._41 = place.x;
    matrix._42 = place.y;
    matrix._43 = place.z;
    return matrix;
}

D3DXMATRIX Moved(float x, float y, float z) { return ScaledAndMoved({1, 1, 1}, {x, y, z}); }

/// A part that every wing of a kind of building has at the same position.
struct Part
{
    int surfaceMesh;
    int material;
    D3DXMATRIX placement;
};

class TownBuilder
{
public:
    explicit TownBuilder(SceneContainer& scene) : scene_(scene) {}

    void Build(int nodeCount)
    {
        AddMaterials();
        DesignKinds();
        scene_.SetRootNodeIndex(AddNode(-1, "Town", Moved(0, 0, 0)));
        for (int district = 0; NodeCount() < nodeCount; ++district)
            AddDistrict(district, nodeCount);
    }

private:
    int NodeCount() const { return static_cast<int>(scene_.NodeLibrary.size()); }

    void AddMaterials()
    {
        for (int i = 0; i < kMaterials; ++i)
        {
            Material material;
            material.SetName("Material " + std::to_string(i));
            material.SetDiffuse(
                {random_.Between(0.1F, 0.9F), random_.Between(0.1F, 0.9F), random_.Between(0.1F, 0.9F), 1});
            scene_.AddMaterialToLibrary(material, false);
        }
    }

    void DesignKinds()
    {
        kinds_.resize(kKinds);
        for (std::array<Part, kPartsOfWing>& kind : kinds_)
        {
            for (Part& part : kind)
            {
                Geometry mesh = MakePart(random_);
                mesh.SetName("Part " + std::to_string(scene_.GeometryLibrary.size()));
                part.surfaceMesh = scene_.AddGeometryToLibrary(mesh, false);
                part.material = random_.Below(kMaterials);
                part.placement = ScaledAndMoved({random_.Between(1, 4), random_.Between(1, 8), random_.Between(1, 4)},
                                                {random_.Between(0, 6), random_.Between(0, 3), random_.Between(0, 10)});
            }
        }
    }

    void AddDistrict(int district, int nodeCount)
    {
        const int node = AddNode(0, "District", Moved(0, 0, 320 * static_cast<float>(district)));
        for (int block = 0; block < kBlocksOfDistrict && NodeCount() < nodeCount; ++block)
            AddBlock(node, block, nodeCount);
    }

    void AddBlock(int district, int block, int nodeCount)
    {
        const int node = AddNode(district, "Block", Moved(80 * static_cast<float>(block), 0, 0));
        for (int building = 0; building < kBuildingsOfBlock && NodeCount() + kNodesOfBuilding <= nodeCount; ++building)
            AddBuilding(node, building);
        if (NodeCount() + kNodesOfBuilding > nodeCount)
            FillUp(node, nodeCount);
    }

    void AddBuilding(int block, int building)
    {
        const int node = AddNode(block, "Building", Moved(0, 0, 30 * static_cast<float>(building)));
        const std::array<Part, kPartsOfWing>& kind = kinds_[static_cast<std::size_t>(random_.Below(kKinds))];
        for (const float side : {1.0F, -1.0F})
        {
            const int wing = AddNode(node, "Wing", ScaledAndMoved({side, 1, 1}, {12 * side, 0, 0}));
            for (const Part& part : kind)
                AddSurface(part, AddNode(wing, "Part", part.placement));
        }
    }

    /// What no building fits into any more.
    void FillUp(int block, int nodeCount)
    {
        while (NodeCount() < nodeCount)
            AddSurface(kinds_.front().front(),
                       AddNode(block, "Kiosk", Moved(static_cast<float>(NodeCount() % 40), 0, -9)));
    }

    void AddSurface(const Part& part, int node)
    {
        Surface surface;
        surface.SetGeometryID(part.surfaceMesh);
        surface.SetMaterialID(part.material);
        const int index = scene_.AddSurfaceToLibrary(std::move(surface), false);
        scene_.NodeLibrary[static_cast<std::size_t>(node)].SurfaceList.push_back(index);
    }

    int AddNode(int parent, const char* name, const D3DXMATRIX& placement)
    {
        const int index = NodeCount();
        Node& node = scene_.NodeLibrary.emplace_back();
        node.SetName(name);
        node.SetLocalTransform(Importing::Transform(placement));
        if (parent >= 0)
            scene_.NodeLibrary[static_cast<std::size_t>(parent)].ChildList.push_back(index);
        return index;
    }

    SceneContainer& scene_;
    Random random_;
    std::vector<std::array<Part, kPartsOfWing>> kinds_;
};

}  // namespace

void FillTown(SceneContainer& scene, int nodeCount) { TownBuilder(scene).Build(nodeCount); }

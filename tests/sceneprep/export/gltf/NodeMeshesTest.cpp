#include <sceneprep/export/gltf/NodeMeshes.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuiltModel.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;

class GltfNodeMeshes : public SceneprepTests::BuiltModel
{
protected:
    /// Makes a geometry a pinned primitive, with one morph target, of a mesh of the input.
    void PinWithTarget(int geometry, int mesh)
    {
        const CarriedAccessor positions = {kFloat, "VEC3", false, 1, std::vector<std::uint8_t>(12)};
        model_.supplement.meshKeys.resize(scene_.GeometryLibrary.size(), -1);
        model_.supplement.meshKeys[static_cast<std::size_t>(geometry)] = static_cast<int>(model_.carried.meshOf.size());
        CarriedMesh& carried = model_.carried.meshOf.emplace_back();
        carried.mesh = mesh;
        carried.primitive.emplace();
        carried.primitive->attributes["POSITION"] = positions;
        carried.primitive->targets = {{{"POSITION", positions}}};
    }
};

TEST_F(GltfNodeMeshes, SurfacesOfANodeArePrimitivesOfOneMesh)
{
    const int hut = AddNode("Hut", 0);
    AddSurface(0, 0, "");
    AddSurface(hut, 0, "");
    scene_.GeometryLibrary.push_back(Support::Quad());
    AddSurface(hut, 1, "");
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 2U);
    ASSERT_EQ(document.meshes.size(), 2U);
    EXPECT_EQ(document.meshes[0]["primitives"].size(), 1U);
    const Json& primitives = document.meshes[1]["primitives"];
    ASSERT_EQ(primitives.size(), 2U);
    EXPECT_EQ(primitives[0], document.meshes[0]["primitives"][0]) << "one geometry is written once";
}

TEST_F(GltfNodeMeshes, NodesWithTheSamePrimitivesShareAMesh)
{
    AddSurface(AddNode("A", 0));
    AddSurface(AddNode("B", 0));
    const Document& document = Build();
    EXPECT_EQ(document.nodes[1]["mesh"], 0);
    EXPECT_EQ(document.nodes[2]["mesh"], 0);
}

TEST_F(GltfNodeMeshes, SeveralSurfacesHaveTheirExtrasInTheirPrimitives)
{
    scene_.GeometryLibrary[0].SetName("Mesh");
    SurfaceAt(AddSurface(0, 0, "Wall")).SetCollisionOffset(2);
    AddSurface(0, 0, "Mesh");
    const Json primitives = Build().meshes.at(0)["primitives"];
    EXPECT_EQ(primitives[0]["extras"], Json::parse(R"({"surfaceName": "Wall", "collisionOffset": 2})"));
    EXPECT_FALSE(primitives[1].contains("extras")) << "the mesh has this name";
    EXPECT_EQ(written_.document.meshes[0]["name"], "Mesh");
}

TEST_F(GltfNodeMeshes, AnOnlySurfaceHasItsExtrasInTheNodeSoThatTheMeshIsShared)
{
    const int first = AddNode("A", 0);
    NodeAt(first).SetNote("old");
    SurfaceAt(AddSurface(first, 0, "Wall")).SetCollisionOffset(2);
    AddSurface(AddNode("B", 0), 0, "Roof");
    const Document& document = Build();
    EXPECT_EQ(document.nodes[1]["extras"],
              Json::parse(R"({"note": "old", "surfaceName": "Wall", "collisionOffset": 2})"));
    EXPECT_EQ(document.nodes[2]["mesh"], document.nodes[1]["mesh"]);
}

TEST_F(GltfNodeMeshes, SurfacesOfDifferentMaterialsShareOnlyTheArrays)
{
    scene_.MaterialLibrary.resize(1);
    scene_.MaterialLibrary[0].SetName("Red");
    AddSurface(AddNode("A", 0));
    SurfaceAt(AddSurface(AddNode("B", 0))).SetMaterialID(0);
    const Document& document = Build();
    ASSERT_EQ(document.meshes.size(), 2U);
    EXPECT_EQ(document.meshes[0]["primitives"][0]["attributes"], document.meshes[1]["primitives"][0]["attributes"]);
    EXPECT_NE(document.meshes[0]["primitives"][0]["material"], document.meshes[1]["primitives"][0]["material"]);
}

TEST_F(GltfNodeMeshes, SurfacesWithoutTrianglesAreNotWritten)
{
    AddSurface(0, -1);
    scene_.GeometryLibrary.emplace_back();
    AddSurface(0, 1);
    const Document& document = Build();
    EXPECT_TRUE(document.meshes.empty());
    EXPECT_FALSE(document.nodes[0].contains("mesh"));
}

TEST_F(GltfNodeMeshes, AMeshOfTheInputKeepsItsExtrasAndWeights)
{
    model_.carried.meshes = {Json::parse(R"({"extras": {"targetNames": ["a"]}, "weights": [0.5]})")};
    PinWithTarget(0, 0);
    AddSurface(0);
    const Json mesh = Build().meshes.at(0);
    EXPECT_EQ(mesh["extras"], Json::parse(R"({"targetNames": ["a"]})"));
    EXPECT_EQ(mesh["weights"], Json::array({0.5}));
    EXPECT_EQ(mesh["primitives"][0]["targets"].size(), 1U);
}

TEST_F(GltfNodeMeshes, ExtensionsReferToTheWrittenAccessors)
{
    model_.carried.accessors = {{}, {kUnsignedInt, "SCALAR", false, 1, {7, 0, 0, 0}}};
    model_.carried.meshes = {Json::parse(R"({"extensions": {"X": {"indices": 1}}})")};
    model_.supplement.meshKeys = {0};
    model_.carried.meshOf.resize(1);
    model_.carried.meshOf[0].mesh = 0;
    AddSurface(0);
    const Json mesh = Build().meshes.at(0);
    EXPECT_EQ(written_.Read<std::uint32_t>(mesh["extensions"]["X"]["indices"]).at(0), 7U);
}

TEST_F(GltfNodeMeshes, MeshesWithMorphTargetsAreTheNodesAndOthersHaveAChild)
{
    model_.carried.meshes = {Json::object()};
    scene_.GeometryLibrary.push_back(Support::Quad());
    PinWithTarget(1, 0);
    const int node = AddCarried(R"({"name": "Face", "weights": [1]})", 0);
    AddSurface(node, 0, "Plain");
    AddSurface(node, 1);
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 3U);
    const auto meshOf = [&](std::size_t index) {
        return document.meshes.at(document.nodes[index]["mesh"].get<std::size_t>());
    };
    EXPECT_TRUE(meshOf(1)["primitives"][0].contains("targets"));
    EXPECT_EQ(document.nodes[1]["weights"], Json::array({1}));
    EXPECT_EQ(document.nodes[2]["name"], "Plain");
    EXPECT_FALSE(meshOf(2)["primitives"][0].contains("targets"));
}

TEST_F(GltfNodeMeshes, WeightsOfANodeWithoutMorphTargetsAreDropped)
{
    AddCarried(R"({"weights": [1]})", 0);
    EXPECT_EQ(Build().nodes[1], Json::object());
}

}  // namespace

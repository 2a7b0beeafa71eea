#include <sceneprep/export/gltf/Nodes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuiltModel.h>
#include <support/SceneText.h>

#include <limits>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using testing::ElementsAre;

class GltfNodes : public SceneprepTests::BuiltModel
{};

TEST_F(GltfNodes, NodesKeepTheirOrderNamesAndNotes)
{
    const int house = AddNode("House", 0);
    AddNode("Door", house);
    AddNode("Tree", 0);
    AddNode("Unreachable");
    NodeAt(1).SetNote("old");
    const Document& document = Build();
    EXPECT_THAT(document.nodes,
                ElementsAre(Json::parse(R"({"name": "Root", "children": [1, 3]})"),
                            Json::parse(R"({"name": "House", "extras": {"note": "old"}, "children": [2]})"),
                            Json::parse(R"({"name": "Door"})"), Json::parse(R"({"name": "Tree"})")));
}

TEST_F(GltfNodes, AnEmptyNodeIsAnEmptyObject)
{
    AddNode("", 0);
    EXPECT_EQ(Build().nodes[1], Json::object());
}

TEST_F(GltfNodes, ANodeOfTheInputKeepsItsTransformAsItWasWritten)
{
    const std::string object = R"({"name": "A", "rotation": [0, 0, 0, 1], "extras": "x", "extensions": {"X": {}}})";
    AddCarried(object, 0);
    EXPECT_EQ(Build().nodes[1], Json::parse(object));
}

TEST_F(GltfNodes, ANodeWhoseMatrixChangedGetsANewTransform)
{
    SetLocal(AddCarried(R"({"name": "A", "translation": [9, 9, 9], "extras": 1})", 0), Support::Translation(1, 2, 3));
    const Json node = Build().nodes[1];
    EXPECT_FALSE(node.contains("translation"));
    EXPECT_EQ(node["matrix"][13], 2);
    EXPECT_EQ(node["extras"], 1);
}

TEST_F(GltfNodes, ReferencesOfTheInputAreNotKept)
{
    AddCarried(R"({"mesh": 3, "camera": 1, "children": [5], "extensions": {"KHR_lights_punctual": {"light": 1}}})", 0);
    EXPECT_EQ(Build().nodes[1], Json::object());
}

TEST_F(GltfNodes, ARenamedNodeHasItsNewName)
{
    const int node = AddCarried(R"({"name": "A", "extras": 1})", 0);
    NodeAt(node).SetName("A_2");
    EXPECT_EQ(Build().nodes[1], Json::parse(R"({"name": "A_2", "extras": 1})"));
}

TEST_F(GltfNodes, AnAddedRootIsOmittedIfItIsNotNeeded)
{
    model_.carried.hasMadeRoot = true;
    AddCarried(R"({"name": "A"})", 0);
    AddCarried(R"({"name": "B"})", 0);
    Build();
    EXPECT_EQ(written_.document.nodes.size(), 2U);
    EXPECT_EQ(written_.document.scene["nodes"], Json::array({0, 1}));
}

TEST_F(GltfNodes, AnAddedRootIsWrittenIfItIsTheOnlyCommonParentOfJoints)
{
    model_.carried.hasMadeRoot = true;
    AddCarried(R"({"name": "A"})", 0);
    AddCarried(R"({"name": "B"})", 0);
    model_.carried.skins.emplace_back().joints = {0};
    EXPECT_EQ(Build().nodes.size(), 2U);
    model_.carried.skins[0].joints = {0, 1};
    written_.document = {};
    EXPECT_EQ(Build().nodes.size(), 3U);
}

TEST_F(GltfNodes, AnAddedRootIsWrittenIfItHasContent)
{
    model_.carried.hasMadeRoot = true;
    AddCarried(R"({"name": "A"})", 0);
    AddSurface(0);
    Build();
    EXPECT_EQ(written_.document.nodes.size(), 2U);
    EXPECT_EQ(written_.document.scene["nodes"], Json::array({0}));
}

TEST_F(GltfNodes, AShearedNodeHasItsChildrenAndMeshBelowARotation)
{
    const int sheared = AddNode("Leaning", 0);
    const int child = AddNode("Child", sheared);
    AddSurface(sheared);
    AddSurface(child);
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    matrix._21 = 0.5F;
    SetLocal(sheared, matrix);
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 4U);
    EXPECT_EQ(document.nodes[1]["children"], Json::array({3}));
    EXPECT_EQ(document.nodes[3]["children"], Json::array({2}));
    EXPECT_FALSE(document.nodes[1].contains("mesh"));
    EXPECT_EQ(document.nodes[3]["mesh"], 0);
    EXPECT_EQ(document.nodes[3]["name"], "Leaning (rotated)");
    EXPECT_EQ(document.nodes[3]["rotation"].size(), 4U);
    EXPECT_FALSE(document.nodes[3].contains("scale"));
}

TEST_F(GltfNodes, AMatrixThatIsNotFiniteIsReported)
{
    D3DXMATRIX matrix;
    D3DXMatrixScaling(&matrix, std::numeric_limits<float>::quiet_NaN(), 1, 1);
    SetLocal(AddNode("Lost", 0), matrix);
    Build();
    EXPECT_THAT(Notes(), ElementsAre("nodes with a NaN or infinite matrix are placed where their parents are (1)"));
}

TEST_F(GltfNodes, AnAnimatedNodeHasItsTransformInParts)
{
    const int mill = AddNode("Mill", 0);
    SetLocal(mill, Support::Translation(1, 2, 3));
    NodeAt(mill).SetAnimationID(0);
    scene_.AnimationLibrary.resize(1);
    scene_.AnimationLibrary[0].resize(1);
    const Document& document = Build();
    EXPECT_FALSE(document.nodes[1].contains("matrix"));
    EXPECT_EQ(document.nodes[1]["translation"], Json::array({1, 2, 3}));
    ASSERT_EQ(document.animations.size(), 1U);
    EXPECT_EQ(document.animations[0]["channels"][0]["target"]["node"], 1);
}

TEST_F(GltfNodes, KeysOfTheContainerAreNotWrittenWhereAClipOfTheInputAnimatesTheNode)
{
    const int mill = AddCarried(R"({"name": "Mill"})", 0);
    NodeAt(mill).SetAnimationID(0);
    scene_.AnimationLibrary.resize(1);
    scene_.AnimationLibrary[0].resize(1);
    model_.carried.clips.push_back({.channels = {{.node = 0, .path = "rotation"}}, .samplers = {{0, 0}}});
    model_.carried.accessors.push_back({kFloat, "SCALAR", false, 1, {0, 0, 0, 0}});
    const Document& document = Build();
    ASSERT_EQ(document.animations.size(), 1U);
    EXPECT_EQ(document.animations[0]["channels"].size(), 1U);
}

TEST_F(GltfNodes, ADeepHierarchyIsWritten)
{
    int parent = 0;
    for (int i = 0; i < 100000; ++i)
        parent = AddNode("", parent);
    EXPECT_EQ(Build().nodes.size(), 100001U);
}

}  // namespace

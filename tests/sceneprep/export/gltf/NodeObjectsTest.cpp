#include <sceneprep/export/gltf/NodeObjects.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuiltModel.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;

const D3DXMATRIX kHalfTurn(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1);

class GltfNodeObjects : public SceneprepTests::BuiltModel
{
protected:
    /// Adds a camera that came from glTF.
    void AddCamera(int node, const CarriedObject& carried, const D3DXMATRIX& offset = kHalfTurn)
    {
        Importing::Camera camera;
        camera.SetOffsetMatrix(Importing::Transform(offset));
        NodeAt(node).CameraList.push_back(static_cast<int>(scene_.CameraLibrary.size()));
        scene_.CameraLibrary.push_back(camera);
        model_.carried.cameraOf.push_back(carried);
    }
};

TEST_F(GltfNodeObjects, CamerasAndLightsAreAtChildrenUnlessTheyLookAlongMinusZ)
{
    Importing::Camera forwards;
    forwards.SetName("Eye");
    scene_.CameraLibrary.push_back(forwards);
    Importing::Light sun;
    sun.SetType(Importing::Light::LightType::Directional);
    sun.SetOffsetMatrix(Importing::Transform(kHalfTurn));
    scene_.LightLibrary.push_back(sun);
    scene_.LightLibrary.push_back(sun);
    NodeAt(0).CameraList = {0};
    NodeAt(0).LightList = {0, 1};
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 3U);
    EXPECT_EQ(document.nodes[1]["camera"], 0);
    EXPECT_EQ(document.nodes[1]["name"], "Eye");
    EXPECT_EQ(document.nodes[0]["extensions"]["KHR_lights_punctual"]["light"], 0);
    EXPECT_EQ(document.nodes[2]["extensions"]["KHR_lights_punctual"]["light"], 1)
        << "a second light needs a node of its own";
}

TEST_F(GltfNodeObjects, ACameraOfTheInputIsWrittenUnchangedAndShared)
{
    model_.carried.cameras = {Json::object(), Json::parse(R"({"type": "orthographic", "orthographic": {"xmag": 2}})")};
    AddCamera(AddCarried(R"({"name": "A"})", 0), {1, "A"});
    AddCamera(AddCarried(R"({"name": "B"})", 0), {1, "B"});
    const Document& document = Build();
    ASSERT_EQ(document.cameras.size(), 1U);
    EXPECT_EQ(document.cameras[0], model_.carried.cameras[1]);
    EXPECT_EQ(document.nodes[1]["camera"], 0);
    EXPECT_EQ(document.nodes[2]["camera"], 0);
}

TEST_F(GltfNodeObjects, ACameraThatMovedToAnotherNodeHasAChildOfItsNodesName)
{
    model_.carried.cameras = {Json::object()};
    AddCamera(0, {0, "Eye"});
    AddCamera(0, {0, "Ear", false}, *D3DXMatrixTranslation(std::make_unique<D3DXMATRIX>().get(), 1, 0, 0));
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 3U);
    EXPECT_EQ(document.nodes[1], Json::parse(R"({"name": "Eye", "camera": 0})"));
    EXPECT_EQ(document.nodes[2]["name"], "Ear");
    EXPECT_TRUE(document.nodes[2].contains("matrix"));
}

TEST_F(GltfNodeObjects, ACameraOfANodeWithOtherObjectsMayMoveToAnotherNode)
{
    model_.carried.cameras = {Json::object()};
    AddCamera(0, {0, "House", false});
    EXPECT_EQ(Build().nodes.at(0)["camera"], 0);
}

TEST_F(GltfNodeObjects, ALightOfTheInputIsWrittenUnchanged)
{
    model_.carried.lights = {Json::parse(R"({"type": "point", "range": 7})")};
    model_.carried.lightOf = {{0, "Root"}};
    Importing::Light light;  // without a type
    light.SetOffsetMatrix(Importing::Transform(kHalfTurn));
    scene_.LightLibrary.push_back(light);
    NodeAt(0).LightList = {0};
    const Document& document = Build();
    EXPECT_EQ(document.lights.at(0), model_.carried.lights[0]);
    EXPECT_EQ(document.nodes[0]["extensions"]["KHR_lights_punctual"]["light"], 0);
}

}  // namespace

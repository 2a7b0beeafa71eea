#include <sceneprep/export/gltf/BuildModel.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuiltModel.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using testing::ElementsAre;

class GltfBuildModel : public SceneprepTests::BuiltModel
{};

TEST_F(GltfBuildModel, ASceneWithoutARootIsEmpty)
{
    scene_.SetRootNodeIndex(-1);
    const Document& document = Build();
    EXPECT_TRUE(document.nodes.empty());
    EXPECT_TRUE(document.scene.is_null());
}

TEST_F(GltfBuildModel, TheSceneHasTheRootAndItsName)
{
    scene_.SetName("Street");
    const Document& document = Build();
    EXPECT_EQ(document.scene, Json::parse(R"({"name": "Street", "nodes": [0]})"));
    EXPECT_EQ(document.asset, Json::parse(R"({"version": "2.0", "generator": "sceneprep"})"));
}

TEST_F(GltfBuildModel, WhatDescribesTheInputIsKept)
{
    AddCarried(R"({"name": "A"})", 0);
    model_.carried.asset = Json::parse(R"({"version": "2.1", "copyright": "us", "extras": 1})");
    model_.carried.scene = Json::parse(R"({"name": "Yard", "extras": {"a": 1}})");
    model_.carried.extras = "text";
    model_.carried.required = {"X"};
    const Document& document = Build();
    EXPECT_EQ(document.asset,
              Json::parse(R"({"copyright": "us", "extras": 1, "version": "2.0", "generator": "sceneprep"})"));
    EXPECT_EQ(document.scene, Json::parse(R"({"name": "Yard", "extras": {"a": 1}, "nodes": [0]})"));
    EXPECT_EQ(document.extras, "text");
    EXPECT_TRUE(document.requiredExtensions.contains("X"));
}

TEST_F(GltfBuildModel, BytesOfDocumentExtensionsAreWritten)
{
    model_.carried.blobs = {{1, 2}, {3, 4, 5}};
    model_.carried.extensions = Json::parse(R"({"X": {"list": [{"bufferView": 1}]}})");
    const Document& document = Build();
    EXPECT_EQ(document.extensions, Json::parse(R"({"X": {"list": [{"bufferView": 0}]}})"));
    EXPECT_EQ(document.bufferViews[0]["byteLength"], 3);
}

TEST_F(GltfBuildModel, LossesAndMendedValuesAreReported)
{
    scene_.LightLibrary.emplace_back();
    NodeAt(0).LightList = {0};
    scene_.TextureLibrary.emplace_back("a.png");
    Importing::Map map;
    map.SetTextureID(0);
    map.SetType("sheen");
    SurfaceAt(AddSurface(0)).MapList.push_back(map);
    scene_.GeometryLibrary[0].VertexArray[0].SetNormal(D3DXVECTOR3(0, 0, 0));
    Build();
    EXPECT_THAT(Notes(), ElementsAre("replaced normals without a direction by the normals of faces (1)",
                                     "dropped lights without a type (1)",
                                     "dropped texture layers that glTF has no place for, or that the mesh has no "
                                     "texture coordinates for: sheen"));
}

TEST_F(GltfBuildModel, IndicesOutOfRangeThrow)
{
    AddSurface(0, 5);
    EXPECT_THROW(Build(), std::out_of_range);
}

TEST_F(GltfBuildModel, ReportsItsProgressBySurfaces)
{
    AddSurface(0);
    AddSurface(AddNode("A", 0));
    std::vector<double> parts;
    BuildModel(model_, {}, written_.buffers, written_.document, [&parts](double part) { parts.push_back(part); });
    EXPECT_EQ(parts, (std::vector<double>{0.5, 1}));
}

}  // namespace

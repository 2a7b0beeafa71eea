#include <sceneprep/import/gltf/FillGeometry.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

#include <cmath>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using Importing::Vertex;
using Pipeline::VertexAttribute;
using testing::ElementsAre;

/// A triangle with further attributes.
class FillGeometryTest : public testing::Test
{
protected:
    FillGeometryTest() { document_.AddTriangle(); }

    template <typename T>
    void Add(const std::string& name, const std::vector<T>& numbers, const std::string& type, const Json& more = {})
    {
        const int accessor =
            document_.Accessor<T>(numbers, type, numbers.size() / 3, more.is_null() ? Json::object() : more);
        document_.Primitive()["attributes"][name] = accessor;
    }

    void Read() { model_ = document_.Read(); }
    Vertex& At(std::size_t vertex) { return model_.scene->GeometryLibrary.at(0).VertexArray.at(vertex); }

    GltfDocument document_;
    Model model_;
};

TEST_F(FillGeometryTest, MeshesWithoutNormalsHaveNone)
{
    Read();
    EXPECT_EQ(At(1).GetPosition().x, 1);
    EXPECT_EQ(At(1).GetNormal().z, 0);
    EXPECT_EQ(At(1).GetTexCoordCount(), 0U);
    EXPECT_TRUE(model_.supplement.layouts.empty());
}

TEST_F(FillGeometryTest, NormalsAreReadAndTextureCoordinatesCountUpwards)
{
    Add<float>("NORMAL", {0, 0, 1, 0, 0, 1, 0, 0, 1}, "VEC3");
    Add<std::uint8_t>("TEXCOORD_0", {0, 0, 255, 0, 0, 255}, "VEC2", {{"normalized", true}});
    Add<float>("TEXCOORD_1", {0.25F, 0.25F, 0, 0, 0, 0}, "VEC2");
    Read();
    EXPECT_EQ(At(2).GetNormal().z, 1);
    EXPECT_EQ(At(2).GetTexCoord(0).y, 0);
    EXPECT_EQ(At(1).GetTexCoord(0).x, 1);
    EXPECT_EQ(At(0).GetTexCoord(1).y, 0.75F);
    EXPECT_TRUE(model_.supplement.layouts.empty());
}

TEST_F(FillGeometryTest, FurtherAttributesUseFurtherSets)
{
    Add<float>("_HEAT", {1, 2, 3}, "SCALAR");
    Add<float>("TANGENT", {1, 0, 0, -1, 1, 0, 0, -1, 1, 0, 0, -1}, "VEC4");
    Add<std::uint8_t>("COLOR_0", {255, 0, 51, 255, 0, 0, 255, 0, 0}, "VEC3", {{"normalized", true}});
    Add<float>("TEXCOORD_0", {0, 0, 0, 0, 0, 0}, "VEC2");
    Read();
    ASSERT_EQ(model_.supplement.layouts.size(), 1U);
    EXPECT_EQ(model_.supplement.layouts[0].texCoordSets, 1);
    EXPECT_THAT(model_.supplement.layouts[0].attributes,
                ElementsAre(VertexAttribute{"COLOR_0", 1, 4}, VertexAttribute{"TANGENT", 3, 4},
                            VertexAttribute{"_HEAT", 5, 1}));
    std::vector<float> numbers;
    for (int set = 1; set < 6; ++set)
        numbers.insert(numbers.end(), {At(0).GetTexCoord(set).x, At(0).GetTexCoord(set).y});
    EXPECT_THAT(numbers, ElementsAre(1, 0, 0.2F, 1, 1, 0, 0, -1, 1, 0));
}

TEST_F(FillGeometryTest, SetsWithoutCoordinatesAreFilled)
{
    Add<float>("TEXCOORD_1", {0.5F, 0, 0, 0, 0, 0}, "VEC2");
    Read();
    EXPECT_EQ(At(0).GetTexCoordCount(), 2U);
    EXPECT_EQ(At(0).GetTexCoord(1).x, 0.5F);
    Add<float>("TEXCOORD_1000000000", {0, 0, 0, 0, 0, 0}, "VEC2");
    EXPECT_EQ(document_.Problem(), "meshes[0].primitives[0].attributes.TEXCOORD_1000000000: 64 sets are supported");
}

TEST_F(FillGeometryTest, QuantizedPositionsAreNumbers)
{
    Add<std::int16_t>("POSITION", {-100, 0, 7, 0, 0, 0, 32767, 0, 0}, "VEC3");
    Read();
    EXPECT_EQ(At(0).GetPosition().x, -100);
    EXPECT_EQ(At(2).GetPosition().x, 32767);
    document_.json["accessors"].back()["normalized"] = true;
    Read();
    EXPECT_EQ(At(2).GetPosition().x, 1);
}

TEST_F(FillGeometryTest, WholeNumbersThatFloatsDoNotHoldAreALoss)
{
    Add<std::uint32_t>("_ID", {1, 2, 16777217}, "SCALAR");
    Read();
    ASSERT_EQ(model_.notes.All().size(), 1U);
    EXPECT_EQ(model_.notes.All()[0].loss, "attribute-precision");
    Add<std::uint32_t>("_ID", {1, 2, 16777216}, "SCALAR");
    Read();
    EXPECT_TRUE(model_.notes.Empty());
}

class WeightsTest : public FillGeometryTest
{
protected:
    WeightsTest()
    {
        document_.json["nodes"][0]["skin"] = 0;
        document_.json["nodes"].push_back({{"name", "Joint"}});
        document_.json["nodes"][0]["children"] = {1};
        document_.json["skins"] = {{{"joints", {1, 1}}}};
        Add<std::uint8_t>("JOINTS_0", {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "VEC4");
        Add<float>("WEIGHTS_0", {0.5F, 0.25F, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}, "VEC4");
    }
};

TEST_F(WeightsTest, AreKeptInOrderWithoutZeros)
{
    Add<std::uint16_t>("JOINTS_1", {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "VEC4");
    Add<std::uint16_t>("WEIGHTS_1", {13107, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "VEC4", {{"normalized", true}});
    Read();
    ASSERT_EQ(At(0).GetWeightsCount(), 3U);
    EXPECT_EQ(At(0).GetWeight(0), Vertex::Weight(1, 0.5F));
    EXPECT_EQ(At(0).GetWeight(1), Vertex::Weight(0, 0.25F));
    EXPECT_EQ(At(0).GetWeight(2), Vertex::Weight(1, 0.2F));
    EXPECT_EQ(At(1).GetWeightsCount(), 1U);
}

TEST_F(WeightsTest, OfUnknownJointsAreRefused)
{
    Add<std::uint8_t>("JOINTS_0", {0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0}, "VEC4");
    EXPECT_EQ(document_.Problem(), "meshes[0].primitives[0].attributes.JOINTS_0: 2 is not below 2");
    Add<std::uint8_t>("JOINTS_0", {0, 0, 0, 9, 1, 0, 0, 0, 0, 0, 0, 0}, "VEC4");
    EXPECT_EQ(document_.Problem(), "");  // the 9 has no weight
    document_.Primitive()["attributes"].erase("WEIGHTS_0");
    EXPECT_EQ(document_.Problem(), "meshes[0].primitives[0].attributes.JOINTS_0: there is no WEIGHTS_0");
}

TEST_F(WeightsTest, ThatAreInfiniteAreALoss)
{
    Add<float>("WEIGHTS_0", {INFINITY, 0.25F, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}, "VEC4");
    Read();
    EXPECT_EQ(At(0).GetWeightsCount(), 1U);
    ASSERT_EQ(model_.notes.All().size(), 1U);
    EXPECT_EQ(model_.notes.All()[0].loss, "weights");
}

TEST_F(WeightsTest, WithoutASkinAreDropped)
{
    document_.json["nodes"][0].erase("skin");
    Read();
    EXPECT_EQ(At(0).GetWeightsCount(), 0U);
    EXPECT_EQ(model_.notes.All().at(0).text, "dropped joints and weights of primitives that no skin moves (1)");
}

}  // namespace

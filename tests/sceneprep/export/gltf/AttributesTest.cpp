#include <sceneprep/export/gltf/Attributes.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>
#include <support/Meshes.h>

#include <array>
#include <limits>

namespace
{

using namespace Sceneprep::Gltf;
using Pipeline::VertexLayout;

class GltfAttributes : public testing::Test
{
protected:
    /// Sets the four components of every vertex, in two sets.
    void SetComponents(const std::array<float, 4>& values, std::uint64_t firstSet)
    {
        for (Importing::Vertex& vertex : mesh_.VertexArray)
        {
            vertex.SetTexCoord({values[0], values[1]}, firstSet);
            vertex.SetTexCoord({values[2], values[3]}, firstSet + 1);
        }
    }

    void Write(const VertexLayout& layout)
    {
        WriteAttributes(mesh_, layout, written_.buffers, written_.document, arrays_, mended_);
    }

    const Sceneprep::Json& Accessor(const char* name) { return written_.Accessor(arrays_.attributes.at(name)); }

    template <typename T>
    std::array<T, 4> First(const char* name)
    {
        return written_.Read<std::array<T, 4>>(arrays_.attributes.at(name)).at(0);
    }

    Importing::Geometry mesh_ = Support::Triangle();
    SceneprepTests::WrittenDocument written_;
    MeshArrays arrays_;
    MendedValues mended_;
};

TEST_F(GltfAttributes, AllSetsAreTextureCoordinatesByDefault)
{
    SetComponents({0, 0.25F, 0, 1}, 0);
    Write({});
    EXPECT_EQ(arrays_.CountTexCoords(), 2U);
    EXPECT_EQ(written_.Read<D3DXVECTOR2>(arrays_.attributes["TEXCOORD_0"])[0], D3DXVECTOR2(0, 0.75F));
}

TEST_F(GltfAttributes, ColoursAreBytesWhereTheseHoldThemExactly)
{
    SetComponents({51.0F / 255.0F, 0, 1, 1}, 0);
    Write({0, {{"COLOR_0", 0, 4}}});
    EXPECT_EQ(Accessor("COLOR_0")["componentType"], kUnsignedByte);
    EXPECT_EQ(Accessor("COLOR_0")["normalized"], true);
    EXPECT_EQ(First<std::uint8_t>("COLOR_0"), (std::array<std::uint8_t, 4>{51, 0, 255, 255}));
    EXPECT_EQ(arrays_.CountTexCoords(), 0U);
}

TEST_F(GltfAttributes, OtherColoursAreShortsOrFloats)
{
    SetComponents({1.0F / 65535.0F, 0, 1, 1}, 0);
    Write({0, {{"COLOR_0", 0, 4}}});
    EXPECT_EQ(First<std::uint16_t>("COLOR_0"), (std::array<std::uint16_t, 4>{1, 0, 65535, 65535}));
    SetComponents({0.3F, 0, 2, 1}, 0);
    Write({0, {{"COLOR_1", 0, 4}}});
    EXPECT_EQ(First<float>("COLOR_1"), (std::array<float, 4>{0.3F, 0, 2, 1}));
}

TEST_F(GltfAttributes, TangentsHaveUnitLengthAndASign)
{
    SetComponents({0, 3, 4, -0.5F}, 1);
    Write({1, {{"TANGENT", 1, 4}}});
    EXPECT_EQ(First<float>("TANGENT"), (std::array<float, 4>{0, 0.6F, 0.8F, -1}));
    EXPECT_EQ(mended_.tangents, 0U);
    EXPECT_EQ(arrays_.CountTexCoords(), 1U);
}

TEST_F(GltfAttributes, TangentsAreKeptWithoutNormals)
{
    SetComponents({1, 0, 0, 1}, 0);
    Write({0, {{"TANGENT", 0, 4}}});
    EXPECT_EQ(First<float>("TANGENT"), (std::array<float, 4>{1, 0, 0, 1}));
}

TEST_F(GltfAttributes, CustomAttributesAreTheIntegersThatTheyWere)
{
    SetComponents({-3, 7, 255, 0}, 0);
    Write({0, {{.name = "_A", .components = 4, .numberType = kShort}}});
    EXPECT_EQ(Accessor("_A")["componentType"], kShort);
    EXPECT_EQ(First<std::int16_t>("_A"), (std::array<std::int16_t, 4>{-3, 7, 255, 0}));
    SetComponents({1, 0, 51.0F / 255.0F, 0}, 0);
    Write({0, {{.name = "_B", .components = 4, .numberType = kUnsignedByte, .isNormalized = true}}});
    EXPECT_EQ(Accessor("_B")["normalized"], true);
    EXPECT_EQ(First<std::uint8_t>("_B"), (std::array<std::uint8_t, 4>{255, 0, 51, 0}));
}

TEST_F(GltfAttributes, ElementsOfSmallIntegersStartAtMultiplesOfFourBytes)
{
    SetComponents({9, 0, 0, 0}, 0);
    Write({0, {{.name = "_ID", .components = 1, .numberType = kUnsignedByte}}});
    EXPECT_EQ(Accessor("_ID")["type"], "SCALAR");
    const int view = Accessor("_ID")["bufferView"];
    EXPECT_EQ(EntryAt(written_.document.bufferViews, view)["byteStride"], 4);
}

TEST_F(GltfAttributes, NumbersThatTheirIntegerTypeDoesNotHoldAreFloats)
{
    SetComponents({0.5F, 300, -1, 0}, 0);
    Write({0, {{.name = "_A", .components = 1, .numberType = kUnsignedByte}}});
    EXPECT_EQ(Accessor("_A")["componentType"], kFloat);
    SetComponents({300, 0, 0, 0}, 0);
    Write({0, {{.name = "_B", .components = 1, .numberType = kUnsignedByte}}});
    EXPECT_EQ(Accessor("_B")["componentType"], kFloat);
}

TEST_F(GltfAttributes, CustomAttributesHaveTheTypeOfTheirComponents)
{
    SetComponents({1, 2, 3, 0}, 0);
    Write({0, {{"_A", 0, 3}, {"_B", 1, 1}}});
    EXPECT_EQ(Accessor("_A")["type"], "VEC3");
    EXPECT_EQ(written_.Read<D3DXVECTOR3>(arrays_.attributes["_A"])[0], D3DXVECTOR3(1, 2, 3));
    EXPECT_EQ(Accessor("_B")["type"], "SCALAR");
    EXPECT_EQ(written_.Read<float>(arrays_.attributes["_B"])[0], 3);
}

TEST_F(GltfAttributes, NanValuesAreReplacedAndCounted)
{
    SetComponents({std::numeric_limits<float>::quiet_NaN(), 2, 3, 4}, 0);
    Write({0, {{"_A", 0, 4}}});
    EXPECT_EQ(First<float>("_A"), (std::array<float, 4>{0, 2, 3, 4}));
    EXPECT_EQ(mended_.attributes, 3U);
}

}  // namespace

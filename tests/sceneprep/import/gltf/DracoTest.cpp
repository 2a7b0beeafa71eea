#include <sceneprep/import/gltf/Draco.h>

#include <draco/compression/encode.h>
#include <draco/mesh/triangle_soup_mesh_builder.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <importing/geometry/Geometry.h>
#include <sceneprep/import/gltf/GltfDocument.h>

#include <array>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::HasSubstr;

/// A triangle with corners at 0, x and y, and a colour of bytes.
std::string EncodedTriangle()
{
    draco::TriangleSoupMeshBuilder builder;
    builder.Start(1);
    const int positions = builder.AddAttribute(draco::GeometryAttribute::POSITION, 3, draco::DT_FLOAT32);
    const int colors = builder.AddAttribute(draco::GeometryAttribute::COLOR, 4, draco::DT_UINT8);
    const std::array<std::array<float, 3>, 3> corners = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    const std::array<std::array<std::uint8_t, 4>, 3> red = {{{255, 0, 0, 255}, {255, 0, 0, 255}, {255, 0, 0, 255}}};
    builder.SetAttributeValuesForFace(positions, draco::FaceIndex(0), corners[0].data(), corners[1].data(),
                                      corners[2].data());
    builder.SetAttributeValuesForFace(colors, draco::FaceIndex(0), red[0].data(), red[1].data(), red[2].data());
    const std::unique_ptr<draco::Mesh> mesh = builder.Finalize();
    draco::Encoder encoder;
    draco::EncoderBuffer buffer;
    EXPECT_TRUE(encoder.EncodeMeshToBuffer(*mesh, &buffer).ok());
    return {buffer.data(), buffer.size()};
}

GltfDocument CompressedTriangle(const std::string& encoded)
{
    GltfDocument document;
    document.AddTriangle();
    const int view = document.View(encoded);
    document.json["accessors"] = {{{"componentType", 5126}, {"count", 3}, {"type", "VEC3"}},
                                  {{"componentType", 5121}, {"count", 3}, {"type", "VEC4"}, {"normalized", true}},
                                  {{"componentType", 5123}, {"count", 3}, {"type", "SCALAR"}}};
    document.Primitive()["attributes"] = {{"POSITION", 0}, {"COLOR_0", 1}};
    document.Primitive()["indices"] = 2;
    document.Primitive()["extensions"]["KHR_draco_mesh_compression"] = {
        {"bufferView", view}, {"attributes", {{"POSITION", 0}, {"COLOR_0", 1}}}};
    return document;
}

TEST(Draco, DecodesIndicesAndAttributes)
{
    const Model model = CompressedTriangle(EncodedTriangle()).Read();
    Importing::Geometry& geometry = model.scene->GeometryLibrary.at(0);
    ASSERT_EQ(geometry.IndexArray.size(), 3U);
    D3DXVECTOR3 sum(0, 0, 0);
    for (const std::uint32_t index : geometry.IndexArray)
        sum = sum + geometry.VertexArray.at(index).GetPosition();
    EXPECT_NEAR(sum.x, 1, 1e-3);
    EXPECT_NEAR(sum.y, 1, 1e-3);
    EXPECT_NEAR(sum.z, 0, 1e-3);
    EXPECT_EQ(geometry.VertexArray.at(0).GetTexCoord(0).x, 1);
    EXPECT_EQ(geometry.VertexArray.at(0).GetTexCoord(0).y, 0);
    EXPECT_TRUE(model.carried.materialOf.at(0).primitive.empty());
}

TEST(Draco, RefusesWhatCannotBeDecoded)
{
    EXPECT_THAT(
        CompressedTriangle("DRACO and no more").Problem(),
        HasSubstr("meshes[0].primitives[0].extensions.KHR_draco_mesh_compression: the bytes cannot be decoded"));
    GltfDocument document = CompressedTriangle(EncodedTriangle());
    Json& ids = document.Primitive()["extensions"]["KHR_draco_mesh_compression"]["attributes"];
    ids["POSITION"] = 7;
    EXPECT_THAT(document.Problem(), HasSubstr("attributes.POSITION: the compressed mesh has no attribute 7"));
    ids["POSITION"] = 1;
    EXPECT_THAT(document.Problem(), HasSubstr("attributes.POSITION: the attribute has 4 components, 3 expected"));
}

}  // namespace

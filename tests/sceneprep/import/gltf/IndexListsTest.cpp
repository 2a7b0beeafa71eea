#include <sceneprep/import/gltf/IndexLists.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::HasSubstr;

/// A document whose primitive has five vertices in a row.
GltfDocument FiveVertices(int mode)
{
    GltfDocument document;
    document.AddTriangle() = {{"attributes", {{"POSITION", 1}}}, {"mode", mode}};
    document.Accessor<float>({0, 0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 4, 0, 0}, "VEC3", 3);
    return document;
}

Importing::Geometry Mesh(const GltfDocument& document) { return document.Read().scene->GeometryLibrary.at(0); }

TEST(IndexLists, AreMadeOfStripsAndFans)
{
    EXPECT_THAT(Mesh(FiveVertices(5)).IndexArray, ElementsAre(0, 1, 2, 1, 3, 2, 2, 3, 4));
    EXPECT_THAT(Mesh(FiveVertices(6)).IndexArray, ElementsAre(1, 2, 0, 2, 3, 0, 3, 4, 0));
    EXPECT_EQ(Mesh(FiveVertices(5)).GetPolySize(), 3U);
}

TEST(IndexLists, AreMadeOfPointsAndLines)
{
    EXPECT_THAT(Mesh(FiveVertices(0)).IndexArray, ElementsAre(0, 1, 2, 3, 4));
    EXPECT_EQ(Mesh(FiveVertices(0)).GetPolySize(), 1U);
    EXPECT_THAT(Mesh(FiveVertices(1)).IndexArray, ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(Mesh(FiveVertices(2)).IndexArray, ElementsAre(0, 1, 1, 2, 2, 3, 3, 4, 4, 0));
    EXPECT_THAT(Mesh(FiveVertices(3)).IndexArray, ElementsAre(0, 1, 1, 2, 2, 3, 3, 4));
    EXPECT_EQ(Mesh(FiveVertices(3)).GetPolySize(), 2U);
}

TEST(IndexLists, IndicesMayHaveOneTwoOrFourBytes)
{
    GltfDocument document = FiveVertices(4);
    document.Primitive()["indices"] = document.Accessor<std::uint8_t>({4, 3, 2}, "SCALAR", 1);
    EXPECT_THAT(Mesh(document).IndexArray, ElementsAre(4, 3, 2));
    document.Primitive()["indices"] = document.Accessor<std::uint16_t>({1, 3, 2}, "SCALAR", 1);
    EXPECT_THAT(Mesh(document).IndexArray, ElementsAre(1, 3, 2));
    document.Primitive()["indices"] = document.Accessor<std::uint32_t>({0, 3, 2}, "SCALAR", 1);
    EXPECT_THAT(Mesh(document).IndexArray, ElementsAre(0, 3, 2));
}

TEST(IndexLists, RefuseIndicesOutsideOfTheVertices)
{
    GltfDocument document = FiveVertices(4);
    document.Primitive()["indices"] = document.Accessor<std::uint8_t>({4, 40, 2}, "SCALAR", 1);
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].indices: 40 is not below 5");
}

TEST(IndexLists, ReportIncompletePolygons)
{
    const Model model = FiveVertices(4).Read();
    EXPECT_THAT(model.scene->GeometryLibrary.at(0).IndexArray, ElementsAre(0, 1, 2));
    ASSERT_EQ(model.notes.All().size(), 1U);
    EXPECT_EQ(model.notes.All()[0].text, "dropped incomplete polygons at the end of primitives (1)");
}

TEST(IndexLists, OfShortStripsAreEmpty)
{
    GltfDocument document = FiveVertices(5);
    document.Primitive()["indices"] = document.Accessor<std::uint8_t>({4, 3}, "SCALAR", 1);
    EXPECT_THAT(Mesh(document).IndexArray, testing::IsEmpty());
    document.Primitive()["mode"] = 6;
    EXPECT_THAT(Mesh(document).IndexArray, testing::IsEmpty());
}

}  // namespace

#include <sceneprep/import/gltf/Primitives.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

TEST(Primitives, CheckThatAttributesFitTheirName)
{
    GltfDocument document;
    document.AddTriangle();
    document.Primitive()["attributes"]["NORMAL"] = document.Accessor<float>({0, 0, 1, 0, 0, 1}, "VEC2", 2);
    EXPECT_EQ(document.Problem(), "accessors[1].type: 'VEC2' is not VEC3");
    document.Primitive()["attributes"]["NORMAL"] = document.Accessor<float>({0, 0, 1, 0, 0, 1}, "VEC3", 3);
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].attributes.NORMAL: 2 elements, 3 expected");
    document.Primitive()["attributes"]["NORMAL"] = 12;
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].attributes.NORMAL: 12 is not below 3");
}

TEST(Primitives, CheckModeAndIndices)
{
    GltfDocument document;
    document.AddTriangle()["mode"] = 7;
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].mode: 7 is not below 7");
    document.Primitive()["mode"] = 4;
    document.Primitive()["indices"] = document.Accessor<float>({0, 1, 2}, "SCALAR", 1);
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].indices: component type 5126 is not an unsigned integer");
    document.Primitive()["indices"] = 0;
    EXPECT_EQ(document.Problem(), "accessors[0].type: 'VEC3' is not SCALAR");
    document.Primitive().erase("attributes");
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].attributes: is missing");
}

TEST(Primitives, CheckMorphTargets)
{
    GltfDocument document;
    document.AddTriangle();
    document.Primitive()["targets"] = {{{"POSITION", document.Accessor<float>({1, 1, 1}, "VEC3", 3)}}};
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0].targets[0].POSITION: 1 elements, 3 expected");
}

TEST(Primitives, WithoutPositionsAreDropped)
{
    GltfDocument document;
    document.AddTriangle()["attributes"] = {{"NORMAL", 0}};
    const Model model = document.Read();
    EXPECT_EQ(model.scene->GeometryLibrary.size(), 0U);
    ASSERT_EQ(model.notes.All().size(), 1U);
    EXPECT_EQ(model.notes.All()[0].text, "dropped primitives without positions, which are not drawn (1)");
}

}  // namespace

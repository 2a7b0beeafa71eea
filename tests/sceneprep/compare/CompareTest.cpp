#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/steps/PrepareScene.h>
#include <sceneprep/compare/Compare.h>
#include <sceneprep/compare/TwoTriangles.h>
#include <sceneprep/run/Progress.h>
#include <support/Meshes.h>

#include <cmath>
#include <functional>
#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> TextsOf(const std::vector<Difference>& differences)
{
    std::vector<std::string> texts;
    for (const Difference& difference : differences)
        texts.push_back(difference.text);
    return texts;
}

/// Compares the two triangles with a changed document.
std::vector<Difference> AfterChange(const std::function<void(GltfDocument&)>& change,
                                    const CompareOptions& options = {})
{
    GltfDocument changed = TwoTriangles();
    change(changed);
    return Compare(TakeAppearance(TwoTriangles().Read()), TakeAppearance(changed.Read()), options);
}

std::vector<std::string> TextsAfterChange(const std::function<void(GltfDocument&)>& change)
{
    return TextsOf(AfterChange(change));
}

TEST(CompareTest, EqualModelsHaveNoDifference)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument&) {}), IsEmpty());
}

TEST(CompareTest, HierarchyAndNamesDoNotMatter)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) {
                    document.json["scenes"][0]["nodes"] = {4, 3, 2, 1};
                    document.json["nodes"][0].erase("children");
                    document.json["nodes"][1]["name"] = "Other";
                    document.json["materials"][0]["name"] = "Other";
                }),
                IsEmpty());
}

TEST(CompareTest, NamesAMissingTriangle)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) { document.json["nodes"][1].erase("mesh"); }),
                ElementsAre("material 'Red': 1 triangle missing, at (-1.66667, 0.333333, 0) of node 'Left'"));
}

TEST(CompareTest, NamesAnAddedTriangle)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) { document.json["nodes"][4]["mesh"] = 1; }),
                ElementsAre("material 'Blue': 1 triangle added, at (0.333333, 0.333333, 0) of node 'Lamp'"));
}

TEST(CompareTest, NamesAMovedTriangle)
{
    const std::vector<std::string> texts = TextsAfterChange([](GltfDocument& document) {
        document.json["nodes"][1]["translation"] = {-2.01, 0, 0};
    });
    EXPECT_THAT(texts, ElementsAre(HasSubstr("material 'Red': 1 triangle added"),
                                   HasSubstr("material 'Red': 1 triangle missing")));
}

TEST(CompareTest, NamesAChangedMaterial)
{
    EXPECT_THAT(
        TextsAfterChange([](GltfDocument& document) { document.json["meshes"][0]["primitives"][0]["material"] = 1; }),
        ElementsAre(HasSubstr("material 'Red': replaced by 'Blue' on 1 triangle, at (")));
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) { document.json["materials"][0]["doubleSided"] = true; }),
                ElementsAre(HasSubstr("material 'Red': its values or textures differ on 1 triangle")));
}

TEST(CompareTest, FindsNormalsThatTurn)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) {
                    const float angle = 31 * 3.14159265F / 180;
                    const float x = std::sin(angle);
                    const float z = std::cos(angle);
                    const int turned = document.Accessor<float>({x, 0, z, x, 0, z, x, 0, z}, "VEC3", 3);
                    document.json["meshes"][1]["primitives"][0]["attributes"]["NORMAL"] = turned;
                }),
                ElementsAre(HasSubstr("material 'Blue': the normals differ on 1 triangle")));
}

TEST(CompareTest, FindsAChangedVertexColour)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) {
                    const int colors = document.Accessor<float>({1, 0, 0, 0, 1, 0, 0, 0.02F, 1}, "VEC3", 3);
                    document.json["meshes"][1]["primitives"][0]["attributes"]["COLOR_0"] = colors;
                }),
                ElementsAre(HasSubstr("material 'Blue': colours or other attributes differ on 1 triangle")));
}

TEST(CompareTest, FindsFlippedWinding)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) {
                    document.json["meshes"][1]["primitives"][0]["indices"] =
                        document.Accessor<std::uint16_t>({0, 2, 1}, "SCALAR", 1);
                }),
                ElementsAre(HasSubstr("material 'Blue': the winding differs on 1 triangle")));
}

TEST(CompareTest, FindsLostAndMovedCamerasAndLights)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) { document.json["nodes"][3].erase("camera"); }),
                ElementsAre("camera 'View': 1 camera missing, at (0, 0, 9) of node 'Eye'"));
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) { document.json["nodes"][4].erase("extensions"); }),
                ElementsAre("light 'Sun': 1 light missing, at (0, 0, 0) of node 'Lamp'"));
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) {
                    document.json["nodes"][4]["rotation"] = {0.7071068, 0, 0, 0.7071068};
                }),
                ElementsAre(HasSubstr("light 'Sun'")));
    EXPECT_THAT(
        TextsAfterChange([](GltfDocument& document) { document.json["cameras"][0]["perspective"]["yfov"] = 0.9; }),
        ElementsAre(HasSubstr("camera 'View': its values differ")));
}

TEST(CompareTest, FindsLostAndChangedClips)
{
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) { document.json.erase("animations"); }),
                ElementsAre("clip 'Walk': missing"));
    EXPECT_THAT(TextsAfterChange([](GltfDocument& document) {
                    document.json["animations"][0]["samplers"][0]["output"] =
                        document.Accessor<float>({0, 0, 0, 0, 0, 6}, "VEC3", 3);
                }),
                ElementsAre("clip 'Walk': its keys differ"));
}

TEST(CompareTest, FindsASwappedTexture)
{
    const auto withImage = [](GltfDocument& document, const char* image) {
        document.json["images"] = {{{"uri", image}}};
        document.json["textures"] = {{{"source", 0}}};
        document.json["materials"][0]["pbrMetallicRoughness"]["baseColorTexture"] = {{"index", 0}};
    };
    GltfDocument before = TwoTriangles();
    withImage(before, "data:image/png;base64,iVBORw0KGgpvbmU=");
    GltfDocument after = TwoTriangles();
    withImage(after, "data:image/png;base64,iVBORw0KGgp0d28=");
    EXPECT_THAT(TextsOf(Compare(TakeAppearance(before.Read()), TakeAppearance(after.Read()))),
                ElementsAre(HasSubstr("material 'Red': its values or textures differ")));
    EXPECT_THAT(Compare(TakeAppearance(before.Read()), TakeAppearance(before.Read())), IsEmpty());
}

TEST(CompareTest, MergingRegardlessOfMaterialIsADifference)
{
    Model model = TwoTriangles().Read();
    const Appearance before = TakeAppearance(model);
    std::ostringstream out;
    Progress progress(out, false);
    Pipeline::PrepareScene(*model.scene, {.flatten = true, .minSurfaces = 0, .ignoreAnimation = true}, model.supplement,
                           progress);
    EXPECT_THAT(TextsOf(Compare(before, TakeAppearance(model), {.clips = false})),
                ElementsAre(HasSubstr("replaced by")));
}

TEST(CompareTest, TheRecommendedStepsMakeNoDifference)
{
    Model model = TwoTriangles().Read();
    const Appearance before = TakeAppearance(model);
    std::ostringstream out;
    Progress progress(out, false);
    Pipeline::PrepareScene(*model.scene, Pipeline::RecommendedSteps(), model.supplement, progress);
    EXPECT_THAT(TextsOf(Compare(before, TakeAppearance(model))), IsEmpty());
}

/// A grid of 100,000 triangles.
Model Grid()
{
    Model model;
    Importing::SceneContainer& scene = *model.scene;
    scene.GeometryLibrary.push_back(Support::Grid(250, 200));
    Importing::Surface surface;
    surface.SetGeometryID(0);
    scene.SurfaceLibrary.push_back(surface);
    scene.NodeLibrary.emplace_back();
    scene.NodeLibrary[0].SurfaceList.push_back(0);
    scene.SetRootNodeIndex(0);
    return model;
}

TEST(CompareTest, FindsOneMovedTriangleAmongMany)
{
    Model model = Grid();
    const Appearance before = TakeAppearance(model);
    EXPECT_EQ(before.pieces.size(), 100000U);
    Importing::Geometry& geometry = model.scene->GeometryLibrary[0];
    for (unsigned corner = 0; corner < 3; ++corner)
    {
        const std::uint32_t copy = geometry.IndexArray[77700 + corner];
        geometry.IndexArray[77700 + corner] = static_cast<std::uint32_t>(geometry.VertexArray.size());
        geometry.VertexArray.push_back(geometry.VertexArray[copy]);
        geometry.VertexArray.back().SetPosition(geometry.VertexArray[copy].GetPosition() + D3DXVECTOR3(0, 0, 0.01F));
    }
    EXPECT_THAT(TextsOf(Compare(before, TakeAppearance(model))),
                ElementsAre(HasSubstr("1 triangle added"), HasSubstr("1 triangle missing")));
}

TEST(CompareTest, FindsDroppedTriangles)
{
    Model model = Grid();
    const Appearance before = TakeAppearance(model);
    model.scene->GeometryLibrary[0].IndexArray.resize(3 * 99988);
    EXPECT_THAT(TextsOf(Compare(before, TakeAppearance(model))),
                ElementsAre(HasSubstr("material 'Default material': 12 triangles missing, the first at (")));
    model.scene->GeometryLibrary[0].IndexArray.clear();
    EXPECT_THAT(TextsOf(Compare(before, TakeAppearance(model))), ElementsAre(HasSubstr("100000 triangles missing")));
}

TEST(CompareTest, ListsWhatIsCompared)
{
    const Appearance appearance = TakeAppearance(TwoTriangles().Read());
    EXPECT_THAT(DescribeComparison(appearance, {}),
                ElementsAre("2 triangles: positions, winding, materials, normals, tangents, texture coordinates, "
                            "colours and other attributes",
                            "1 camera", "1 light", "1 clip: names, channels, keys"));
    EXPECT_THAT(DescribeComparison(appearance, {.materials = false,
                                                .normals = false,
                                                .texCoords = false,
                                                .attributes = false,
                                                .cameras = false,
                                                .lights = false,
                                                .clips = false}),
                ElementsAre("2 triangles: positions, winding"));
}

}  // namespace

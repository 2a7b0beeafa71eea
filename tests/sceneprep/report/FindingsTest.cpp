#include <sceneprep/report/Findings.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <string>
#include <vector>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;
using testing::IsEmpty;

Model ModelOf(const std::string& text)
{
    Model model;
    *model.scene = Support::Scene(text);
    // Meshes of the notation are equal.
    for (std::size_t mesh = 0; mesh < model.scene->GeometryLibrary.size(); ++mesh)
        model.scene->GeometryLibrary[mesh].VertexArray[0].SetPosition(D3DXVECTOR3(static_cast<float>(mesh), 0, 0));
    return model;
}

std::vector<std::string> TextsOf(const Model& model, const std::string& kind)
{
    std::vector<std::string> texts;
    for (const Finding& finding : FindImprovements(model))
    {
        if (finding.kind == kind)
            texts.push_back(finding.text);
    }
    return texts;
}

TEST(Findings, MaterialsThatNoSurfaceUsesAreNotCompared)
{
    Model model = ModelOf("Root[a=m:c b=n:d]");
    model.scene->MaterialLibrary.push_back(model.scene->MaterialLibrary[0]);
    model.scene->MaterialLibrary[1].SetOpacity(0.5F);
    EXPECT_THAT(TextsOf(model, "similar-materials"),
                ElementsAre("materials 'c' and 'd' differ only in opacity: 1 and 0.5"));
}

TEST(Findings, MeshesOfEqualContent)
{
    Model model = ModelOf("Root[a b c d e]");
    for (const char* name : {"b", "c", "d", "e"})
        Support::MeshOf(*model.scene, name).VertexArray = Support::MeshOf(*model.scene, "a").VertexArray;
    Support::MeshOf(*model.scene, "c").VertexArray[7].SetNormal(D3DXVECTOR3(0, 0, 5));
    Support::MeshOf(*model.scene, "d").JointArray.resize(1);
    model.supplement.pinnedMeshes = {false, false, false, false, true};
    EXPECT_THAT(TextsOf(model, "equal-meshes"), ElementsAre("2 meshes have equal content: 'a', 'b'"));
    model.supplement.layouts = {{.texCoordSets = 0, .attributes = {{"_X", 0, 1}}}};
    EXPECT_THAT(TextsOf(model, "equal-meshes"), IsEmpty());
}

TEST(Findings, NamesThatOccurSeveralTimes)
{
    Model model = ModelOf("Root[a=m:c b=n:d]( A B C D E )");
    for (const char* name : {"B", "C"})
        Support::NodeNamed(*model.scene, name).SetName("A");
    Support::NodeNamed(*model.scene, "E").SetName("D");
    EXPECT_THAT(TextsOf(model, "repeated-names"), ElementsAre("2 names of nodes occur several times: 'A', 'D'"));
    model.scene->GeometryLibrary[1].SetName("m");
    model.scene->MaterialLibrary[1].SetName("c");
    EXPECT_THAT(TextsOf(model, "repeated-names"), ElementsAre("2 names of nodes occur several times: 'A', 'D'",
                                                              "1 name of meshes occurs several times: 'm'",
                                                              "1 name of materials occurs several times: 'c'"));
    model.supplement.meshKeys = {0, 1};
    model.carried.meshOf = {{.mesh = 4}, {.mesh = 4}};  // two primitives of one mesh
    EXPECT_EQ(TextsOf(model, "repeated-names").size(), 2U);
}

TEST(Findings, UVSetsThatNoTextureUses)
{
    Model model = ModelOf("Root[a b=m:c d=m:e]");
    for (Importing::Geometry& mesh : model.scene->GeometryLibrary)
        mesh.VertexArray[0].SetTexCoord({0, 0}, 1);
    Importing::Map map;
    map.SetUVSetIndex(1);
    model.scene->SurfaceLibrary[2].MapList.push_back(map);
    EXPECT_THAT(TextsOf(model, "unused-uvs"), ElementsAre("no texture uses UV set 0 of 2 meshes: 'a', 'm'",
                                                          "no texture uses UV set 1 of 1 mesh: 'a'"));
    model.carried.materialOf = {{.material = 0}};
    model.carried.materials = {
        Json::parse(R"({"extensions":{"KHR_materials_clearcoat":{"clearcoatTexture":{"index":2}}}})")};
    EXPECT_THAT(TextsOf(model, "unused-uvs"),
                ElementsAre("no texture uses UV set 0 of 1 mesh: 'a'", "no texture uses UV set 1 of 1 mesh: 'a'"));
}

TEST(Findings, AGoodModelHasNone) { EXPECT_THAT(FindImprovements(ModelOf("Root( A[a] B[b] )")), IsEmpty()); }

TEST(Findings, TextHasALimitAndOneLineEach)
{
    const std::vector<Finding> findings = {{"repeated-names", "a\nb", {}, 2}, {"unused-uvs", "c", {}, 1}};
    EXPECT_EQ(FindingsText(findings, 5), "Findings:\n  a b\n  c\n");
    EXPECT_EQ(FindingsText(findings, 1), "Findings:\n  a b\n  and 1 more\n");
    EXPECT_EQ(FindingsText({}, 5), "");
}

TEST(Findings, JsonHasTheNames)
{
    EXPECT_EQ(FindingsAsJson({{"equal-meshes", "text", {"a", "b"}, 30}}).dump(),
              R"([{"kind":"equal-meshes","text":"text","names":["a","b"],"count":30}])");
}

}  // namespace

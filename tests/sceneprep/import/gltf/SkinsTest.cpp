#include <sceneprep/import/gltf/Skins.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/SkinnedFiles.h>
#include <sceneprep/import/gltf/GltfDocument.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;

Json SkinnedDocument(const TemporaryFolder& folder) { return Json::parse(ReadText(WriteSkinnedGltf(folder))); }

std::string ProblemOf(const TemporaryFolder& folder, const Json& document)
{
    try
    {
        GltfDocument::ReadFile(folder.Write("changed.gltf", document.dump()));
    }
    catch (const ToolError& error)
    {
        const std::string text = error.what();
        return text.substr(text.find("gltf: ") + 6);
    }
    return {};
}

TEST(Skins, GiveGeometriesJoints)
{
    const TemporaryFolder folder;
    const Model model = GltfDocument::ReadFile(WriteSkinnedGltf(folder));
    Importing::Geometry& geometry = Support::MeshOf(*model.scene, "Skin");
    ASSERT_EQ(geometry.JointArray.size(), 2U);
    EXPECT_EQ(geometry.JointArray[0].GetName(), "Hip");
    EXPECT_EQ(geometry.JointArray[1].GetParentID(), 0);
    EXPECT_EQ(geometry.JointArray[1].GetBindPoseInverse()._42, -3);
    EXPECT_EQ(geometry.VertexArray.at(1).GetWeight(1), Importing::Vertex::Weight(1, 0.75F));
    ASSERT_EQ(model.carried.skins.size(), 1U);
    EXPECT_THAT(model.carried.skins[0].joints, ElementsAre(1, 3));
    EXPECT_EQ(model.carried.skins[0].inverseBindMatrices->count, 2U);
    EXPECT_EQ(model.carried.nodes.at(2).skin, 0);
    const std::vector<bool>& kept = model.supplement.keptNodes;
    EXPECT_TRUE(kept.at(static_cast<std::size_t>(Support::NodeIndex(*model.scene, "Hip"))));
    EXPECT_TRUE(kept.at(static_cast<std::size_t>(Support::NodeIndex(*model.scene, "Leg"))));
    EXPECT_FALSE(kept.at(static_cast<std::size_t>(Support::NodeIndex(*model.scene, "Top"))));
}

TEST(Skins, WithoutInverseBindMatricesHaveIdentities)
{
    const TemporaryFolder folder;
    Json document = SkinnedDocument(folder);
    document["skins"][0].erase("inverseBindMatrices");
    const Model model = GltfDocument::ReadFile(folder.Write("changed.gltf", document.dump()));
    EXPECT_EQ(Support::MeshOf(*model.scene, "Skin").JointArray.at(1).GetBindPoseInverse()._42, 0);
    EXPECT_FALSE(model.carried.skins.at(0).inverseBindMatrices);
}

TEST(Skins, AtSeveralPlacesGetCopiesWithTheSameKey)
{
    const TemporaryFolder folder;
    Json document = SkinnedDocument(folder);
    document["nodes"].push_back({{"name", "Other"}, {"mesh", 0}, {"skin", 0}, {"translation", {5, 0, 0}}});
    document["nodes"][0]["children"].push_back(4);
    const Model model = GltfDocument::ReadFile(folder.Write("changed.gltf", document.dump()));
    EXPECT_EQ(model.scene->GeometryLibrary.size(), 2U);
    EXPECT_THAT(model.supplement.meshKeys, ElementsAre(0, 0));
}

TEST(Skins, AtAnAnimatedNodeMoveToAnotherNodeThatIsCarried)
{
    const TemporaryFolder folder;
    Json document = SkinnedDocument(folder);
    document["accessors"].push_back({{"componentType", 5126}, {"count", 1}, {"type", "SCALAR"}});
    document["accessors"].push_back({{"componentType", 5126}, {"count", 1}, {"type", "VEC3"}});
    document["animations"] = Json::parse(R"([{"samplers":[{"input":4,"output":5}],
        "channels":[{"sampler":0,"target":{"node":2,"path":"translation"}}]}])");
    const Model model = GltfDocument::ReadFile(folder.Write("changed.gltf", document.dump()));
    EXPECT_EQ(Support::ToText(*model.scene), "Top( Hip( Leg ) Body* Body (skin)[Skin] )");
    ASSERT_EQ(model.carried.nodes.size(), 5U);
    EXPECT_EQ(model.carried.nodes[4].skin, 0);
    EXPECT_EQ(model.supplement.nodeKeys.back(), 4);
    EXPECT_EQ(model.notes.All().size(), 1U);
}

TEST(Skins, AtAnAnimatedNodeTakeTheWeightsOfMorphTargetsAlong)
{
    const TemporaryFolder folder;
    Json document = SkinnedDocument(folder);
    document["nodes"][2]["weights"] = {0.5};
    document["accessors"].push_back({{"componentType", 5126}, {"count", 1}, {"type", "SCALAR"}});
    document["accessors"].push_back({{"componentType", 5126}, {"count", 1}, {"type", "VEC3"}});
    document["animations"] = Json::parse(R"([{"samplers":[{"input":4,"output":5},{"input":4,"output":4}],
        "channels":[{"sampler":0,"target":{"node":2,"path":"translation"}},
            {"sampler":1,"target":{"node":2,"path":"weights"}},
            {"sampler":1,"target":{"path":"pointer",
                "extensions":{"KHR_animation_pointer":{"pointer":"/nodes/2/weights/0"}}}}]}])");
    const Model model = GltfDocument::ReadFile(folder.Write("changed.gltf", document.dump()));
    EXPECT_EQ(model.carried.nodes.at(4).object["weights"], Json::array({0.5}));
    const std::vector<CarriedChannel>& channels = model.carried.clips.at(0).channels;
    EXPECT_EQ(channels.at(0).node, 2);
    EXPECT_EQ(channels.at(1).node, 4);
    EXPECT_EQ(channels.at(2).pointer, "/nodes/4/weights/0");
}

TEST(Skins, ThatAreNotValidAreRefused)
{
    const TemporaryFolder folder;
    Json document = SkinnedDocument(folder);
    document["skins"][0]["joints"].push_back(9);
    EXPECT_EQ(ProblemOf(folder, document), "skins[0].joints[2]: 9 is not below 4");
    document["skins"][0]["joints"][2] = 0;
    EXPECT_EQ(ProblemOf(folder, document), "skins[0].inverseBindMatrices: 2 elements, 3 expected");
    document["skins"][0]["inverseBindMatrices"] = 0;
    EXPECT_EQ(ProblemOf(folder, document), "accessors[0].type: 'VEC3' is not MAT4");
    document["skins"][0].erase("joints");
    EXPECT_EQ(ProblemOf(folder, document), "skins[0].joints: is missing");
}

}  // namespace

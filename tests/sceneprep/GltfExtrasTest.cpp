#include <sceneprep/GltfExtras.h>

#include <gtest/gtest.h>
#include <sceneprep/Error.h>
#include <sceneprep/ExportModel.h>
#include <sceneprep/ImportModel.h>
#include <sceneprep/TestFiles.h>
#include <support/SceneText.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using Importing::SceneContainer;

/// A root with a child that carries a value.
aiScene SceneWithExtras()
{
    aiScene scene;
    scene.mRootNode = new aiNode("Root");  // the scene owns it
    auto* child = new aiNode("Child");
    child->mMetaData = new aiMetadata();
    child->mMetaData->Add("collisionOffset", std::int32_t{5});
    child->mMetaData->Add("surfaceName", aiString("A \"b\"\r\nc"));
    scene.mRootNode->addChildren(1, &child);
    return scene;
}

constexpr const char* kDocument =
    R"({"asset":{"version":"2.0"},"scenes":[{"nodes":[1]}],"nodes":[{"name":"Child"},{"name":"Root","children":[0]}]})";

TEST(GltfExtras, StandAtTheirNodes)
{
    const TemporaryFolder folder;
    const auto file = folder.Write("a.gltf", kDocument);
    AddExtras(SceneWithExtras(), file);
    const auto document = nlohmann::json::parse(ReadText(file));
    EXPECT_EQ(document["nodes"][0]["extras"]["collisionOffset"], 5);
    EXPECT_EQ(document["nodes"][0]["extras"]["surfaceName"], "A \"b\"\r\nc");
    EXPECT_FALSE(document["nodes"][1].contains("extras"));
    EXPECT_EQ(document["asset"]["version"], "2.0");
}

TEST(GltfExtras, AFileWithoutAnyStaysAsItIs)
{
    const TemporaryFolder folder;
    const auto file = folder.Write("a.gltf", kDocument);
    aiScene scene;
    scene.mRootNode = new aiNode("Root");
    AddExtras(scene, file);
    EXPECT_EQ(ReadText(file), kDocument);
}

TEST(GltfExtras, AFileThatIsNotTheScenesIsRefused)
{
    const TemporaryFolder folder;
    const auto file = folder.Write("a.gltf", R"({"scenes":[{"nodes":[0]}],"nodes":[{"name":"Root"}]})");
    EXPECT_THROW(AddExtras(SceneWithExtras(), file), ToolError);
}

class GltfExtrasTest : public testing::TestWithParam<const char*>
{};

TEST_P(GltfExtrasTest, SurfacesComeBackWithOffsetAndName)
{
    const TemporaryFolder folder;
    std::ostringstream out;
    Progress progress(out, false);
    SceneContainer scene = Support::Scene("Root( A[a=m] B[b=m c=n] )");
    scene.SurfaceLibrary[0].SetCollisionOffset(2);
    scene.SurfaceLibrary[2].SetCollisionOffset(1);
    ExportModel(scene, {}, folder / GetParam(), progress);

    SceneContainer back;
    ImportModel(folder / GetParam(), {}, back, progress);
    EXPECT_EQ(Support::SurfaceNamed(back, "a").GetCollisionOffset(), 2);
    EXPECT_EQ(Support::SurfaceNamed(back, "b").GetCollisionOffset(), 0);
    EXPECT_EQ(Support::SurfaceNamed(back, "c").GetCollisionOffset(), 1);
}

INSTANTIATE_TEST_SUITE_P(Forms, GltfExtrasTest, testing::Values("a.gltf", "a.glb"));

}  // namespace

#include <sceneprep/ReportViews.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <support/Meshes.h>
#include <nlohmann/json.hpp>

#include <iterator>
#include <string>

namespace
{

using namespace Sceneprep;
using Report::PageView;
using SceneprepTests::TemporaryFolder;
using testing::IsEmpty;
using testing::MatchesRegex;

/// A textured triangle.
class ReportViews : public testing::Test
{
protected:
    ReportViews()
    {
        scene_.NodeLibrary.resize(1);
        scene_.NodeLibrary[0].SurfaceList = {0};
        scene_.SetRootNodeIndex(0);
        scene_.GeometryLibrary.push_back(Support::Triangle());
        scene_.GeometryLibrary[0].VertexArray[0].SetTexCoord({0, 0}, 0);
        scene_.SurfaceLibrary.resize(1);
        scene_.SurfaceLibrary[0].SetGeometryID(0);
        Importing::Map map;
        map.SetTextureID(0);
        map.SetType("diffuse");
        scene_.SurfaceLibrary[0].MapList.push_back(map);
        scene_.TextureLibrary.emplace_back("wood.png");
        std::filesystem::create_directory(folder_ / "in");
        folder_.Write("in/wood.png", "\x89PNG" + std::string(5000, 'x'));
    }

    PageView Write(std::uintmax_t limit = kMostViewBytes)
    {
        return WriteView(model_, folder_ / "in", folder_.Path(), Pipeline::IgnorePart, limit);
    }

    /// Reads the whole file of a view.
    static std::string ContentOf(PageView& view) { return {std::istreambuf_iterator<char>(view.file), {}}; }

    /// Returns the JSON chunk of a .glb file.
    static nlohmann::json DocumentOf(const std::string& glb)
    {
        return nlohmann::json::parse(glb.begin() + 20,
                                     glb.begin() + static_cast<std::ptrdiff_t>(glb.find("BIN\0") - 4));
    }

    TemporaryFolder folder_;
    Model model_;
    Importing::SceneContainer& scene_ = *model_.scene;
};

TEST_F(ReportViews, ShowTheSceneWithItsImages)
{
    PageView view = Write();
    const std::string glb = ContentOf(view);
    EXPECT_EQ(glb.size(), view.bytes);
    EXPECT_GT(view.bytes, 5000U);
    const nlohmann::json document = DocumentOf(glb);
    EXPECT_EQ(document["images"][0]["mimeType"], "image/png");
    EXPECT_EQ(document["meshes"].size(), 1U);
    EXPECT_EQ(view.remark, "");
}

TEST_F(ReportViews, LeaveNoFiles)
{
    PageView view = Write();
    EXPECT_EQ(folder_.CountEntries(), 1U);
}

TEST_F(ReportViews, OmitImagesThatMakeTheFileTooLarge)
{
    PageView view = Write(5000);
    EXPECT_LE(view.bytes, 5000U);
    const nlohmann::json document = DocumentOf(ContentOf(view));
    EXPECT_FALSE(document.contains("images"));
    EXPECT_EQ(document["meshes"].size(), 1U);
    EXPECT_THAT(view.remark, MatchesRegex("Shown without textures: .*"));
}

TEST_F(ReportViews, OmitScenesThatAreTooLarge)
{
    for (const std::uintmax_t limit : {10U, 200U})
    {
        PageView view = Write(limit);
        EXPECT_EQ(view.bytes, 0U);
        EXPECT_THAT(ContentOf(view), IsEmpty());
        EXPECT_THAT(view.remark, MatchesRegex("The scene is not shown: .*"));
    }
}

TEST_F(ReportViews, OmitScenesOfTooManyNodes)
{
    scene_.NodeLibrary.resize(kMostViewNodes + 1);
    PageView view = Write();
    EXPECT_EQ(view.bytes, 0U);
    EXPECT_EQ(view.remark, "The scene is not shown: it has 100001 nodes, and this page shows at most 100000.");
    EXPECT_FALSE(CanOpenView(model_, folder_.Write("a.glb", "glTF")));
}

TEST_F(ReportViews, OpenGlbFilesWithinTheLimit)
{
    const std::filesystem::path file = folder_.Write("a.glb", "glTF");
    EXPECT_TRUE(CanOpenView(model_, file));
    EXPECT_FALSE(CanOpenView(model_, file, 3));
    EXPECT_FALSE(CanOpenView(model_, folder_.Write("a.gltf", "glTF")));
    EXPECT_FALSE(CanOpenView(model_, folder_ / "missing.glb"));
    PageView view = OpenView(file);
    EXPECT_EQ(view.bytes, 4U);
    EXPECT_EQ(ContentOf(view), "glTF");
}

}  // namespace

#include <sceneprep/import/OpenModel.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>
#include <support/SceneText.h>

#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::HasSubstr;
using testing::ThrowsMessage;

class OpenModelTest : public testing::Test
{
protected:
    std::string SceneOf(const std::filesystem::path& file, const GltfReadOptions& options = {})
    {
        Model model;
        ConvertModel(OpenModel(file, progress_), model, options);
        return Support::ToText(*model.scene);
    }

    TemporaryFolder folder_;
    std::ostringstream out_;
    Progress progress_{out_, false};
};

TEST_F(OpenModelTest, ReadsGltfWithoutAssimp)
{
    const auto file = folder_.Write("a.GLTF", R"({"asset":{"version":"2.0"},"nodes":[{"name":"A"}],
        "scenes":[{"nodes":[]},{"nodes":[0]}]})");
    EXPECT_TRUE(std::holds_alternative<GltfFile>(OpenModel(file, progress_)));
    EXPECT_EQ(SceneOf(file), "Root");
    EXPECT_EQ(SceneOf(file, {.scene = "1"}), "A");
}

TEST_F(OpenModelTest, ReadsOtherFormatsByAssimp)
{
    const auto file = WriteSmallObj(folder_);
    EXPECT_TRUE(std::holds_alternative<ModelSource>(OpenModel(file, progress_)));
    EXPECT_THAT(SceneOf(file), HasSubstr("Square"));
}

TEST_F(OpenModelTest, ReportsUnreadableFiles)
{
    EXPECT_THAT([&] { OpenModel(folder_ / "a.glb", progress_); }, ThrowsMessage<ToolError>(HasSubstr("a.glb")));
    EXPECT_THAT([&] { OpenModel(folder_.Write("b.glb", "{"), progress_); },
                ThrowsMessage<ToolError>(HasSubstr("b.glb: the file is truncated: its JSON")));
    EXPECT_THAT([&] { OpenModel(folder_.Write("c.glb", "{]"), progress_); },
                ThrowsMessage<ToolError>(HasSubstr("c.glb: the text is not JSON")));
}

}  // namespace

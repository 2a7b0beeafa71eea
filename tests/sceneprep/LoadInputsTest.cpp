#include <sceneprep/LoadInputs.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/Error.h>
#include <sceneprep/TestFiles.h>
#include <support/SceneText.h>

#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LoadInputsTest : public testing::Test
{
protected:
    LoadedInputs Load(const PrepareOptions& options) { return LoadInputs(options, plugin_, progress_); }

    std::filesystem::path Broken() { return folder_.Write("broken.obj.glb", "no glTF at all"); }

    PluginLibrary plugin_{SCENEPREP_PLUGIN};
    TemporaryFolder folder_;
    std::ostringstream out_;
    Progress progress_{out_, false};
};

TEST_F(LoadInputsTest, OneInputIsTheSceneAsItIs)
{
    const LoadedInputs loaded = Load({.inputs = {WriteSmallObj(folder_)}});
    EXPECT_EQ(Support::ToText(*loaded.scene).substr(0, 9), "small.obj");
    EXPECT_EQ(loaded.steps.size(), 1U);
    EXPECT_EQ(loaded.steps[0].name, "Import small.obj");
    EXPECT_THAT(loaded.notes, ElementsAre(HasSubstr("points and lines")));
    EXPECT_THAT(loaded.leftOut, IsEmpty());
}

TEST_F(LoadInputsTest, FurtherInputsAreAppendedWithoutSpareNodes)
{
    const auto small = WriteSmallObj(folder_);
    const LoadedInputs loaded = Load({.inputs = {small, small, small}});
    EXPECT_EQ(loaded.scene->NodeLibrary.size(), 3U * 4 + 1);
    EXPECT_EQ(loaded.scene->SurfaceLibrary.size(), 6U);
    EXPECT_EQ(loaded.scene->MaterialLibrary.size(), 2U);
    EXPECT_EQ(Support::NodeNamed(*loaded.scene, "Root").ChildList.size(), 3U);
    EXPECT_EQ(loaded.steps[2].name, "Append small.obj");
    EXPECT_THAT(loaded.inputs, ElementsAre(small, small, small));
}

TEST_F(LoadInputsTest, AnInputThatCannotBeReadEndsTheWork)
{
    EXPECT_THROW(Load({.inputs = {WriteSmallObj(folder_), Broken()}}), ToolError);
}

TEST_F(LoadInputsTest, OrIsLeftOut)
{
    const auto small = WriteSmallObj(folder_);
    const auto broken = Broken();
    const LoadedInputs loaded =
        Load({.inputs = {broken, small, folder_ / "none.obj"}, .keepGoing = true, .leftOut = {"crashed.off"}});
    EXPECT_THAT(loaded.inputs, ElementsAre(small));
    EXPECT_THAT(loaded.leftOut, ElementsAre("crashed.off", broken, folder_ / "none.obj"));
    EXPECT_THAT(loaded.problems, ElementsAre(HasSubstr("broken.obj.glb"), HasSubstr("there is no such file")));
}

TEST_F(LoadInputsTest, OneInputMustRemain)
{
    EXPECT_THROW(Load({.inputs = {Broken(), folder_ / "none.obj"}, .keepGoing = true}), ToolError);
}

}  // namespace

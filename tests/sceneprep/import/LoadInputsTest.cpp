#include <sceneprep/Options.h>
#include <sceneprep/import/LoadInputs.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/WorkState.h>
#include <support/SceneText.h>

#include <exception>
#include <new>
#include <sstream>
#include <utility>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LoadInputsTest : public testing::Test
{
protected:
    LoadedInputs Load(const PrepareOptions& options)
    {
        return LoadInputs(options.inputs, options.keepGoing, plugin_, progress_);
    }

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
    ASSERT_EQ(loaded.steps.size(), 2U);
    EXPECT_EQ(loaded.steps[0].name, "Read small.obj");
    EXPECT_EQ(loaded.steps[1].name, "Import small.obj");
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
    EXPECT_EQ(loaded.steps[4].name, "Append small.obj");
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
    const LoadedInputs loaded = Load({.inputs = {broken, small, folder_ / "none.obj"}, .keepGoing = true});
    EXPECT_THAT(loaded.inputs, ElementsAre(small));
    EXPECT_THAT(loaded.leftOut, ElementsAre(broken, folder_ / "none.obj"));
    EXPECT_THAT(loaded.problems, ElementsAre(HasSubstr("broken.obj.glb"), HasSubstr("there is no such file")));
}

TEST_F(LoadInputsTest, AllMayBeLeftOut)
{
    const LoadedInputs loaded = Load({.inputs = {Broken(), folder_ / "none.obj"}, .keepGoing = true});
    EXPECT_EQ(loaded.scene, nullptr);
    EXPECT_THAT(loaded.inputs, IsEmpty());
    EXPECT_EQ(loaded.problems.size(), 2U);
}

/// A stream buffer that fails in one way when the progress of one file is told, in the middle of reading it.
template <typename Failure>
class FailingAt : public std::stringbuf
{
public:
    explicit FailingAt(std::string word) : word_(std::move(word)) {}

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override
    {
        if (std::string(text, static_cast<std::size_t>(size)).find(word_) != std::string::npos)
            throw Failure();
        return size;
    }

private:
    std::string word_;
};

struct OddFailure : std::exception
{
    const char* what() const noexcept override { return "odd\nfailure"; }
};

template <typename Failure>
LoadedInputs LoadWithFailure(const std::vector<std::filesystem::path>& inputs, const std::string& word,
                             const PluginLibrary& plugin)
{
    FailingAt<Failure> buffer(word);
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);  // or the stream would keep the failure to itself
    Progress progress(out, false);
    return LoadInputs(inputs, true, plugin, progress);
}

TEST_F(LoadInputsTest, WhateverGoesWrongWithAnInputItIsLeftOut)
{
    const auto small = WriteSmallObj(folder_);
    const auto bad = folder_.Write("bad.obj", ReadText(small));
    WorkState::Reset();
    const LoadedInputs poor = LoadWithFailure<std::bad_alloc>({small, bad}, "bad.obj", plugin_);
    EXPECT_THAT(poor.inputs, ElementsAre(small));
    EXPECT_THAT(poor.problems, ElementsAre("reading " + bad.string() +
                                           " needs more memory than it may have; raise --memory-limit or use a "
                                           "smaller model"));
    const LoadedInputs odd = LoadWithFailure<OddFailure>({small, bad}, "bad.obj", plugin_);
    EXPECT_THAT(odd.leftOut, ElementsAre(bad));
    EXPECT_THAT(odd.problems, ElementsAre("reading " + bad.string() + " went wrong (odd failure); check the model"));
}

TEST_F(LoadInputsTest, WhatGoesWrongWhileAppendingEndsTheWork)
{
    const auto small = WriteSmallObj(folder_);
    EXPECT_THROW(LoadWithFailure<OddFailure>({small, small}, "Append", plugin_), OddFailure);
}

}  // namespace

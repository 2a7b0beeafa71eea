#include <sceneprep/Options.h>
#include <sceneprep/import/LoadInputs.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/Models.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>
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

std::vector<std::filesystem::path> FilesOf(const std::vector<SkippedInput>& skipped)
{
    std::vector<std::filesystem::path> files;
    for (const SkippedInput& input : skipped)
        files.push_back(input.file);
    return files;
}

std::vector<std::string> ProblemsOf(const std::vector<SkippedInput>& skipped)
{
    std::vector<std::string> problems;
    for (const SkippedInput& input : skipped)
        problems.push_back(input.problem);
    return problems;
}

class LoadInputsTest : public testing::Test
{
protected:
    Inputs Load(const PrepareCommand& options)
    {
        return LoadInputs(options.inputs, {.keepGoing = options.keepGoing, .scene = options.scene}, plugin_, progress_,
                          state_);
    }

    std::filesystem::path Broken() { return folder_.Write("broken.obj.glb", "no glTF at all"); }

    PluginLibrary plugin_{SCENEPREP_PLUGIN};
    TemporaryFolder folder_;
    std::ostringstream out_;
    Progress progress_{out_, false};
    WorkState state_;
};

TEST_F(LoadInputsTest, OneInputIsNotChanged)
{
    const Inputs loaded = Load({.inputs = {WriteSmallObj(folder_)}});
    EXPECT_EQ(Support::ToText(*loaded.model.scene).substr(0, 9), "small.obj");
    ASSERT_EQ(loaded.steps.size(), 2U);
    EXPECT_EQ(loaded.steps[0].name, "Read small.obj");
    EXPECT_EQ(loaded.steps[1].name, "Import small.obj");
    EXPECT_TRUE(loaded.model.notes.Empty());
    EXPECT_TRUE(loaded.skipped.empty());
}

TEST_F(LoadInputsTest, FurtherInputsAreAppendedWithoutUnusedNodes)
{
    const auto small = WriteSmallObj(folder_);
    const Inputs loaded = Load({.inputs = {small, small, small}});
    EXPECT_EQ(loaded.model.scene->NodeLibrary.size(), 3U * 4 + 1);
    EXPECT_EQ(loaded.model.scene->SurfaceLibrary.size(), 9U);
    EXPECT_EQ(loaded.model.scene->MaterialLibrary.size(), 2U);
    EXPECT_EQ(Support::NodeNamed(*loaded.model.scene, "Root").ChildList.size(), 3U);
    EXPECT_EQ(loaded.steps[4].name, "Append small.obj");
    EXPECT_THAT(loaded.read, ElementsAre(small, small, small));
    EXPECT_THAT(loaded.files, ElementsAre(small, folder_ / "small.mtl"));
}

TEST_F(LoadInputsTest, ReadsTheChosenScene)
{
    const auto file = folder_.Write("a.gltf", R"({"asset":{"version":"2.0"},"nodes":[{"name":"A"},{"name":"B"}],
        "scenes":[{"nodes":[0]},{"name":"Second","nodes":[1]}]})");
    EXPECT_EQ(Support::ToText(*Load({.inputs = {file}}).model.scene), "A");
    EXPECT_EQ(Support::ToText(*Load({.inputs = {file}, .scene = "Second"}).model.scene), "B");
}

TEST_F(LoadInputsTest, AnUnreadableInputIsAnError)
{
    EXPECT_THROW(Load({.inputs = {WriteSmallObj(folder_), Broken()}}), ToolError);
}

TEST_F(LoadInputsTest, AnUnreadableInputIsSkippedOnRequest)
{
    const auto small = WriteSmallObj(folder_);
    const auto broken = Broken();
    const Inputs loaded = Load({.inputs = {broken, small, folder_ / "none.obj"}, .keepGoing = true});
    EXPECT_THAT(loaded.read, ElementsAre(small));
    EXPECT_THAT(FilesOf(loaded.skipped), ElementsAre(broken, folder_ / "none.obj"));
    EXPECT_THAT(ProblemsOf(loaded.skipped),
                ElementsAre(HasSubstr("broken.obj.glb"), HasSubstr("there is no such file")));
}

TEST_F(LoadInputsTest, AllInputsMayBeSkipped)
{
    const Inputs loaded = Load({.inputs = {Broken(), folder_ / "none.obj"}, .keepGoing = true});
    EXPECT_TRUE(loaded.model.scene->NodeLibrary.empty());
    EXPECT_THAT(loaded.read, IsEmpty());
    EXPECT_EQ(loaded.skipped.size(), 2U);
}

/// A stream buffer that throws when progress with this word is written, which is in the middle of reading a file.
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
Inputs LoadWithFailure(const std::vector<std::filesystem::path>& inputs, const std::string& word,
                       const PluginLibrary& plugin)
{
    FailingAt<Failure> buffer(word);
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);  // otherwise the stream catches the exception
    Progress progress(out, false);
    WorkState state;
    return LoadInputs(inputs, {.keepGoing = true, .scene = {}}, plugin, progress, state);
}

TEST_F(LoadInputsTest, InputsAreSkippedForAnyError)
{
    const auto small = WriteSmallObj(folder_);
    const auto bad = folder_.Write("bad.obj", ReadText(small));
    const Inputs poor = LoadWithFailure<std::bad_alloc>({small, bad}, "bad.obj", plugin_);
    EXPECT_THAT(poor.read, ElementsAre(small));
    EXPECT_THAT(ProblemsOf(poor.skipped), ElementsAre("reading " + bad.string() +
                                                      " needs more memory than there is; raise --memory-limit or use a "
                                                      "smaller model"));
    const Inputs odd = LoadWithFailure<OddFailure>({small, bad}, "bad.obj", plugin_);
    EXPECT_THAT(FilesOf(odd.skipped), ElementsAre(bad));
    EXPECT_THAT(ProblemsOf(odd.skipped),
                ElementsAre("reading " + bad.string() + " failed: odd failure; check the model"));
}

TEST_F(LoadInputsTest, AFailureWhileAppendingIsAnError)
{
    const auto small = WriteSmallObj(folder_);
    EXPECT_THROW(LoadWithFailure<OddFailure>({small, small}, "Append", plugin_), OddFailure);
}

}  // namespace

#include <sceneprep/run/PlaceFiles.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/WorkState.h>

#include <fstream>

namespace
{

using namespace Sceneprep;
using SceneprepTests::ReadText;
namespace fs = std::filesystem;

TEST(PlaceFiles, RemovesTheTemporaryFolderAtTheEnd)
{
    WorkState state;
    const SceneprepTests::TemporaryFolder parent;
    fs::path path;
    {
        const TemporaryFolder folder(parent.Path(), state);
        path = folder.Path();
        EXPECT_EQ(path.parent_path(), parent.Path());
        std::ofstream(path / "a") << "text";
        EXPECT_TRUE(fs::exists(path / "a"));
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST(PlaceFiles, FailsIfTheParentFolderDoesNotExist)
{
    WorkState state;
    const SceneprepTests::TemporaryFolder parent;
    EXPECT_THROW(TemporaryFolder(parent / "none", state), ToolError);
}

TEST(PlaceFiles, ReplacesExistingFiles)
{
    WorkState state;
    const SceneprepTests::TemporaryFolder parent;
    parent.Write("house.obj", "old");
    parent.Write("house.mtl", "old");
    const TemporaryFolder folder(parent.Path(), state);
    std::ofstream(folder.Path() / "house.obj") << "new";
    std::ofstream(folder.Path() / "house.mtl") << "beside";
    MoveIntoPlace(folder.Path(), parent / "house.obj", state);
    EXPECT_EQ(state.CurrentPhase(), WorkState::Phase::Written);
    EXPECT_EQ(state.CurrentFile(), parent / "house.obj");
    EXPECT_EQ(ReadText(parent / "house.obj"), "new");
    EXPECT_EQ(ReadText(parent / "house.mtl"), "beside");
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(PlaceFiles, FailsIfFilesCannotBeMoved)
{
    WorkState state;
    const SceneprepTests::TemporaryFolder parent;
    const TemporaryFolder folder(parent.Path(), state);
    std::ofstream(folder.Path() / "house.obj") << "new";
    state.Enter(WorkState::Phase::Writing, "house.obj");
    EXPECT_THROW(MoveIntoPlace(folder.Path(), parent / "none" / "house.obj", state), ToolError);
    EXPECT_EQ(state.CurrentPhase(), WorkState::Phase::Writing);
    EXPECT_TRUE(fs::exists(folder.Path() / "house.obj"));
}

/// A file with companions to move into a folder.
class CompanionTest : public testing::Test
{
protected:
    CompanionTest() : written_(parent_.Path(), state_)
    {
        std::ofstream(written_.Path() / "house.gltf") << "new";
        std::ofstream(written_.Path() / "house.bin") << "new";
        std::ofstream(written_.Path() / "a-image.png") << "new";
    }

    /// Returns the error message, after checking that nothing has been moved.
    std::string MoveError(const std::vector<fs::path>& others = {})
    {
        try
        {
            MoveIntoPlace(written_.Path(), parent_ / "house.gltf", state_, others);
        }
        catch (const ToolError& error)
        {
            EXPECT_TRUE(fs::exists(written_.Path() / "house.gltf"));
            EXPECT_TRUE(fs::exists(written_.Path() / "house.bin"));
            EXPECT_TRUE(fs::exists(written_.Path() / "a-image.png"));
            return error.what();
        }
        return "no error";
    }

    std::string Cannot(const std::string& what)
    {
        return "cannot write " + (parent_ / "house.gltf").string() + ": its companion house.bin " + what;
    }

    const SceneprepTests::TemporaryFolder parent_;
    WorkState state_;
    const TemporaryFolder written_;
};

TEST_F(CompanionTest, DoesNotReplaceAnotherFileIfTheOutputIsNew)
{
    parent_.Write("house.bin", "of another file");
    EXPECT_EQ(MoveError(), Cannot("would replace another file; choose another name, or remove that file"));
    EXPECT_EQ(ReadText(parent_ / "house.bin"), "of another file");
}

TEST_F(CompanionTest, ReplacesTheCompanionOfAReplacedFile)
{
    parent_.Write("house.gltf", "old");
    parent_.Write("house.bin", "old");
    EXPECT_EQ(MoveError(), "no error");
    EXPECT_EQ(ReadText(parent_ / "house.gltf"), "new");
    EXPECT_EQ(ReadText(parent_ / "house.bin"), "new");
}

TEST_F(CompanionTest, MayExistWithEqualContents)
{
    parent_.Write("house.bin", "new");
    EXPECT_EQ(MoveError(), "no error");
    EXPECT_TRUE(fs::exists(parent_ / "house.gltf"));
}

TEST_F(CompanionTest, DoesNotReplaceAnotherOutput)
{
    parent_.Write("house.gltf", "old");
    fs::create_directory_symlink(parent_.Path(), parent_ / "link");
    const std::string error = Cannot("is also named as another output; choose another name for one of them");
    EXPECT_EQ(MoveError({"", parent_ / "house.bin"}), error);
    EXPECT_EQ(MoveError({parent_ / "link" / "house.bin"}), error);
    EXPECT_EQ(MoveError({"", parent_ / "report.json"}), "no error");
}

TEST_F(CompanionTest, FailsBeforeMovingIfAFolderIsInTheWay)
{
    parent_.Write("house.gltf", "old");
    fs::create_directory(parent_ / "house.bin");
    EXPECT_EQ(MoveError(), Cannot("has the name of an existing folder; choose another name"));
    EXPECT_EQ(ReadText(parent_ / "house.gltf"), "old");
}

TEST(PlaceFiles, RecognizesNamesOfOneFile)
{
    const SceneprepTests::TemporaryFolder parent;
    fs::create_directory_symlink(parent.Path(), parent / "link");
    EXPECT_TRUE(NameOneFile(parent / "a", parent / "none/../a"));
    EXPECT_TRUE(NameOneFile(parent / "a", parent / "link/a"));
    EXPECT_FALSE(NameOneFile(parent / "a", parent / "b"));
    EXPECT_FALSE(NameOneFile(parent / std::string(300, 'a'), parent / std::string(300, 'b')));
    EXPECT_FALSE(NameOneFile("", parent / "a"));
}

void WriteNew(std::ostream& stream) { stream << "new"; }

TEST(PlaceFiles, ReplacesAFileAtomically)
{
    WorkState state;
    const SceneprepTests::TemporaryFolder folder;
    const fs::path file = folder.Write("report.json", "old");
    fs::create_hard_link(file, folder / "kept.json");
    WriteWhole(file, state, WriteNew);
    EXPECT_EQ(ReadText(file), "new");
    EXPECT_EQ(ReadText(folder / "kept.json"), "old");
    EXPECT_EQ(folder.CountEntries(), 2U);
}

TEST(PlaceFiles, LeavesTheFileUnchangedIfWritingFails)
{
    WorkState state;
    const SceneprepTests::TemporaryFolder folder;
    const fs::path file = folder.Write("report.json", "old");
    EXPECT_THROW(WriteWhole(file, state, [](std::ostream& stream) { stream.setstate(std::ios::badbit); }), ToolError);
    EXPECT_EQ(ReadText(file), "old");
    EXPECT_EQ(folder.CountEntries(), 1U);
}

TEST(PlaceFiles, WritesThroughLinks)
{
    WorkState state;
    const SceneprepTests::TemporaryFolder folder;
    fs::create_symlink(folder / "far.json", folder / "link.json");
    WriteWhole(folder / "link.json", state, WriteNew);
    EXPECT_TRUE(fs::is_symlink(folder / "link.json"));
    EXPECT_EQ(ReadText(folder / "far.json"), "new");
}

TEST(PlaceFiles, FailsOnAFullDisk)
{
    WorkState state;
    if (!fs::exists("/dev/full"))
        return;
    try
    {
        WriteWhole("/dev/full", state, WriteNew);
        ADD_FAILURE() << "no error";
    }
    catch (const ToolError& error)
    {
        EXPECT_STREQ(error.what(), "cannot write /dev/full; choose another name");
    }
}

}  // namespace

#include <sceneprep/PlaceFiles.h>

#include <gtest/gtest.h>
#include <sceneprep/Error.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/WorkState.h>

#include <fstream>

namespace
{

using namespace Sceneprep;
using SceneprepTests::ReadText;
namespace fs = std::filesystem;

TEST(PlaceFiles, AFolderIsGoneAtTheEnd)
{
    const SceneprepTests::TemporaryFolder parent;
    fs::path path;
    {
        const TemporaryFolder folder(parent.Path());
        path = folder.Path();
        EXPECT_EQ(path.parent_path(), parent.Path());
        std::ofstream(path / "a") << "text";
        EXPECT_TRUE(fs::exists(path / "a"));
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST(PlaceFiles, AFolderInNoFolderIsAnError)
{
    const SceneprepTests::TemporaryFolder parent;
    EXPECT_THROW(TemporaryFolder(parent / "none"), ToolError);
}

TEST(PlaceFiles, FilesReplaceThoseThatWereThere)
{
    const SceneprepTests::TemporaryFolder parent;
    parent.Write("house.obj", "old");
    const TemporaryFolder folder(parent.Path());
    std::ofstream(folder.Path() / "house.obj") << "new";
    std::ofstream(folder.Path() / "house.mtl") << "beside";
    MoveIntoPlace(folder.Path(), parent / "house.obj");
    EXPECT_EQ(WorkState::CurrentPhase(), WorkState::Phase::Written);
    EXPECT_EQ(WorkState::CurrentFile(), parent / "house.obj");
    EXPECT_EQ(ReadText(parent / "house.obj"), "new");
    EXPECT_EQ(ReadText(parent / "house.mtl"), "beside");
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(PlaceFiles, WhatCannotBeMovedIsAnError)
{
    const SceneprepTests::TemporaryFolder parent;
    const TemporaryFolder folder(parent.Path());
    std::ofstream(folder.Path() / "house.obj") << "new";
    WorkState::Enter(WorkState::Phase::Writing, "house.obj");
    EXPECT_THROW(MoveIntoPlace(folder.Path(), parent / "none" / "house.obj"), ToolError);
    EXPECT_EQ(WorkState::CurrentPhase(), WorkState::Phase::Writing);
    EXPECT_TRUE(fs::exists(folder.Path() / "house.obj"));
}

void WriteNew(std::ostream& stream) { stream << "new"; }

TEST(PlaceFiles, AFileIsReplacedWhole)
{
    const SceneprepTests::TemporaryFolder folder;
    const fs::path file = folder.Write("report.json", "old");
    fs::create_hard_link(file, folder / "kept.json");
    WriteWhole(file, WriteNew);
    EXPECT_EQ(ReadText(file), "new");
    EXPECT_EQ(ReadText(folder / "kept.json"), "old");
    EXPECT_EQ(folder.CountEntries(), 2U);
}

TEST(PlaceFiles, AFileThatCannotBeWrittenWholeIsLeftAsItWas)
{
    const SceneprepTests::TemporaryFolder folder;
    const fs::path file = folder.Write("report.json", "old");
    EXPECT_THROW(WriteWhole(file, [](std::ostream& stream) { stream.setstate(std::ios::badbit); }), ToolError);
    EXPECT_EQ(ReadText(file), "old");
    EXPECT_EQ(folder.CountEntries(), 1U);
}

TEST(PlaceFiles, LinksAreWrittenThrough)
{
    const SceneprepTests::TemporaryFolder folder;
    fs::create_symlink(folder / "far.json", folder / "link.json");
    WriteWhole(folder / "link.json", WriteNew);
    EXPECT_TRUE(fs::is_symlink(folder / "link.json"));
    EXPECT_EQ(ReadText(folder / "far.json"), "new");
}

TEST(PlaceFiles, AFullDiskIsAnError)
{
    if (!fs::exists("/dev/full"))
        return;
    try
    {
        WriteWhole("/dev/full", WriteNew);
        ADD_FAILURE() << "no error";
    }
    catch (const ToolError& error)
    {
        EXPECT_STREQ(error.what(), "cannot write /dev/full; choose another name");
    }
}

}  // namespace

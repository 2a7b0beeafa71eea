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

}  // namespace

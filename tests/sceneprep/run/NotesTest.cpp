#include <sceneprep/run/Notes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using Sceneprep::Note;
using Sceneprep::Notes;
using testing::ElementsAre;

TEST(Notes, KeepTheirOrder)
{
    Notes notes;
    EXPECT_TRUE(notes.Empty());
    notes.Add("first");
    Notes others;
    others.AddLoss("cameras", "second");
    notes.Append(std::move(others));
    EXPECT_THAT(notes.All(), ElementsAre(Note{"first", ""}, Note{"second", "cameras"}));
}

TEST(Notes, AddLossesThatOccur)
{
    Notes notes;
    notes.AddLoss("lights", "lights are dropped", 0);
    notes.AddLoss("cameras", "cameras are dropped", 3);
    EXPECT_THAT(notes.All(), ElementsAre(Note{"cameras are dropped (3)", "cameras"}));
}

TEST(Notes, ListLossesOnceWithoutThoseThatAreAllowed)
{
    Notes notes;
    notes.Add("nothing is lost");
    notes.AddLoss("skins", "a");
    notes.AddLoss("cameras", "b");
    notes.AddLoss("skins", "c");
    EXPECT_THAT(notes.LossesExcept({}), ElementsAre("skins", "cameras"));
    EXPECT_THAT(notes.LossesExcept({"skins", "other"}), ElementsAre("cameras"));
}

}  // namespace

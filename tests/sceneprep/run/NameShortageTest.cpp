#include <sceneprep/run/NameShortage.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using namespace Sceneprep;

TEST(NameShortage, NamesAShortageRegardlessOfTheReasonGiven)
{
    WorkState state;
    state.WatchMemory(std::uint64_t{1} << 30);
    EXPECT_EQ(NameShortage(state, [] { return 5; }), 5);
    EXPECT_THROW(NameShortage(state, []() -> int { throw ToolError("no suitable reader"); }), ToolError);
    EXPECT_THROW(std::get_new_handler()(), std::bad_alloc);
    EXPECT_THROW(NameShortage(state, []() -> int { throw ToolError("no suitable reader"); }), std::bad_alloc);
    EXPECT_THROW(NameShortage(state, []() -> int { throw std::logic_error("bug"); }), std::logic_error);
}

}  // namespace

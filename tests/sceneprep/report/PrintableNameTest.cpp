#include <sceneprep/report/PrintableName.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::PrintableName;

TEST(PrintableName, KeepsOrdinaryNames)
{
    EXPECT_EQ(PrintableName("Wheel.001 \xC3\xA4"), "Wheel.001 \xC3\xA4");
    EXPECT_EQ(PrintableName(""), "");
}

TEST(PrintableName, EscapesControlCharactersAndBackslashes)
{
    EXPECT_EQ(PrintableName("a\r\nb\tc\\n"), "a\\r\\nb\\tc\\\\n");
    EXPECT_EQ(PrintableName(std::string("\x1B[2J\x7F\0", 6)), "\\x1b[2J\\x7f\\x00");
}

}  // namespace

#include <sceneprep/report/Base64.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace
{

std::string Encode(const std::string& bytes)
{
    std::ostringstream out;
    Sceneprep::Report::WriteBase64(out, bytes.data(), bytes.size());
    return out.str();
}

// The examples of RFC 4648.
TEST(Base64, PadsTheLastGroup)
{
    EXPECT_EQ(Encode(""), "");
    EXPECT_EQ(Encode("f"), "Zg==");
    EXPECT_EQ(Encode("fo"), "Zm8=");
    EXPECT_EQ(Encode("foo"), "Zm9v");
    EXPECT_EQ(Encode("foobar"), "Zm9vYmFy");
}

TEST(Base64, KnowsEveryDigitAndBytesAbove127)
{
    EXPECT_EQ(Encode("\xFB\xFF\xBF"), "+/+/");
    EXPECT_EQ(Encode(std::string(3, '\0')), "AAAA");
}

TEST(Base64, LongArraysAreOneText)
{
    std::string groups;
    for (int i = 0; i < 10000; ++i)
        groups += "Zm9v";
    std::string bytes;
    for (int i = 0; i < 10000; ++i)
        bytes += "foo";
    EXPECT_EQ(Encode(bytes + "f"), groups + "Zg==");
}

}  // namespace

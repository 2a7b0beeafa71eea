#include <sceneprep/report/PageText.h>

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace Sceneprep::Report;

std::string Join(const std::vector<std::string_view>& pieces)
{
    std::string text;
    for (const std::string_view piece : pieces)
        text += piece;
    return text;
}

std::size_t Count(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// A build without the page has no text at all; with it the text is whole.
TEST(PageText, IsOnePageOrNone)
{
    const std::string before = Join(GetPageText().beforeData);
    const std::string behind = Join(GetPageText().afterData);
    const std::size_t pages = HasPage() ? 1 : 0;
    EXPECT_EQ(before.find("<!doctype html>") == 0, HasPage());
    EXPECT_EQ(Count(before, "<style>"), pages);
    EXPECT_EQ(Count(behind, "<script>"), pages);
    EXPECT_EQ(Count(behind, "</script>"), pages);
    EXPECT_EQ(Count(behind, "</html>"), pages);
}

TEST(PageText, CarriesTheLicenceOfWhatItBringsAlong)
{
    const std::string behind = Join(GetPageText().afterData);
    EXPECT_EQ(Count(behind, "three.js authors"), HasPage() ? 1U : 0U);
    EXPECT_EQ(Count(behind, "The above copyright notice and this permission notice shall be included"),
              HasPage() ? 1U : 0U);
}

TEST(PageText, MayAskTheNetworkForNothing)
{
    EXPECT_EQ(Count(Join(GetPageText().beforeData), "content=\"default-src 'none';"), HasPage() ? 1U : 0U);
}

}  // namespace

#include <sceneprep/report/ReportPage.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/report/Base64.h>
#include <sceneprep/report/PageText.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Report;
using SceneprepTests::TemporaryFolder;

PageView ViewOf(const TemporaryFolder& folder, const std::string& content)
{
    const std::filesystem::path file = folder.Write("view.glb", content);
    return {.file = std::ifstream(file, std::ios::binary), .bytes = content.size()};
}

std::string PageOf(const PrepareReport& report, PageView before, PageView after)
{
    std::ostringstream out;
    WritePage(out, report, before, after);
    return out.str();
}

/// Returns the content of the element with that name.
std::string ElementOf(const std::string& page, const std::string& name)
{
    const std::size_t nameAt = page.find(" id=\"" + name + "\">");
    if (nameAt == std::string::npos)
        return "no such element";
    const std::size_t start = page.find('>', nameAt) + 1;
    return page.substr(start, page.find("</script>", start) - start);
}

TEST(ReportPage, ContainsTheReportAndWhatTheViewsShow)
{
    const TemporaryFolder folder;
    PrepareReport report;
    report.output = "out.glb";
    const std::string page = PageOf(report, ViewOf(folder, "glTF!"), {.remark = "too large"});
    EXPECT_EQ(ElementOf(page, "report"), ReportJson(report));
    EXPECT_EQ(nlohmann::json::parse(ElementOf(page, "before")), nlohmann::json({{"bytes", 5}, {"remark", ""}}));
    EXPECT_EQ(nlohmann::json::parse(ElementOf(page, "after")), nlohmann::json({{"bytes", 0}, {"remark", "too large"}}));
    EXPECT_EQ(ElementOf(page, "before-file"), "Z2xURiE=");
    EXPECT_EQ(ElementOf(page, "after-file"), "");
}

TEST(ReportPage, FilesThatAreCopiedInPiecesAreOneBase64Text)
{
    const TemporaryFolder folder;
    std::string content(100'000, 'a');
    content.back() = 'b';
    const std::string text = ElementOf(PageOf({}, ViewOf(folder, content), {}), "before-file");
    std::ostringstream expected;
    WriteBase64(expected, content.data(), content.size());
    EXPECT_EQ(text, expected.str());
}

TEST(ReportPage, FailsIfAFileIsShorterThanItWas)
{
    const TemporaryFolder folder;
    PageView before = ViewOf(folder, "glTF!");
    before.bytes = 6;
    PageView after;
    std::ostringstream out;
    WritePage(out, {}, before, after);
    EXPECT_TRUE(out.fail());
}

TEST(ReportPage, NamesCannotEndTheirElement)
{
    const std::string name = "</script><script>alert(1)</script><!--";
    PrepareReport report;
    report.notes.Add(name);
    const std::string page = PageOf(report, {.remark = name}, {});
    EXPECT_EQ(nlohmann::json::parse(ElementOf(page, "report"))["notes"][0], name);
    EXPECT_EQ(nlohmann::json::parse(ElementOf(page, "before"))["remark"], name);
    EXPECT_THAT(page, testing::Not(testing::HasSubstr("<script>alert")));
    EXPECT_THAT(page, testing::Not(testing::HasSubstr("<!--")));
}

TEST(ReportPage, TheDataAreBetweenMarkupAndViewer)
{
    const std::string page = PageOf({}, {}, {});
    std::size_t around = 0;
    for (const std::string_view piece : GetPageText().beforeData)
        around += piece.size();
    EXPECT_EQ(page.find("<script type=\"application/json\" id=\"report\">"), around);
}

}  // namespace

#include <sceneprep/report/ReportPage.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/report/PageText.h>
#include <support/SceneText.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace Sceneprep::Report;

std::string PageOf(const PrepareReport& report, const Picture& before, const Picture& after)
{
    std::ostringstream out;
    WritePage(out, report, before, after);
    return out.str();
}

/// What stands in the element with that name.
std::string ElementOf(const std::string& page, const std::string& name)
{
    const std::size_t nameAt = page.find(" id=\"" + name + "\">");
    if (nameAt == std::string::npos)
        return "no such element";
    const std::size_t start = page.find('>', nameAt) + 1;
    return page.substr(start, page.find("</script>", start) - start);
}

Picture SmallPicture()
{
    Picture picture;
    picture.max = {1, 2, 3};
    picture.triangles = 9;
    picture.corners = {{0, 0, 0}, {65535, 1, 0}, {0, 256, 0}};
    picture.parts = {{1, 0, -1, 2}};
    picture.nodeNames = {"Box"};
    picture.materialNames = {"red"};
    picture.materialColors = {0xFF0000};
    return picture;
}

TEST(ReportPage, HoldsTheReportAndBothPictures)
{
    PrepareReport report;
    report.output = "out.glb";
    const std::string page = PageOf(report, SmallPicture(), Picture());
    EXPECT_EQ(ElementOf(page, "report"), ReportJson(report));
    const auto before = nlohmann::json::parse(ElementOf(page, "before"));
    EXPECT_EQ(before["max"], (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(before["triangles"], 9);
    EXPECT_EQ(before["nodeNames"][0], "Box");
    EXPECT_EQ(before["materialNames"][0], "red");
    EXPECT_EQ(before["materialColors"][0], 0xFF0000);
    EXPECT_EQ(nlohmann::json::parse(ElementOf(page, "after"))["triangles"], 0);
}

TEST(ReportPage, ArraysAreBytesInBase64)
{
    const std::string page = PageOf({}, SmallPicture(), Picture());
    EXPECT_EQ(ElementOf(page, "before-corners"), "AAAAAAAA//8BAAAAAAAAAQAA");
    EXPECT_EQ(ElementOf(page, "before-parts"), "AQAAAAAAAAD/////AgAAAA==");
    EXPECT_EQ(ElementOf(page, "after-corners"), "");
}

TEST(ReportPage, NamesCannotEndTheirElement)
{
    const std::string name = "</script><script>alert(1)</script><!--";
    PrepareReport report;
    report.notes.Add(name);
    Picture picture = SmallPicture();
    picture.nodeNames = {name};
    const std::string page = PageOf(report, picture, picture);
    EXPECT_EQ(nlohmann::json::parse(ElementOf(page, "report"))["notes"][0], name);
    EXPECT_EQ(nlohmann::json::parse(ElementOf(page, "before"))["nodeNames"][0], name);
    EXPECT_THAT(page, testing::Not(testing::HasSubstr("<script>alert")));
    EXPECT_THAT(page, testing::Not(testing::HasSubstr("<!--")));
}

TEST(ReportPage, TheDataStandBetweenMarkupAndViewer)
{
    const std::string page = PageOf({}, SmallPicture(), Picture());
    std::size_t around = 0;
    for (const std::string_view piece : GetPageText().beforeData)
        around += piece.size();
    EXPECT_EQ(page.find("<script type=\"application/json\" id=\"report\">"), around);
}

}  // namespace

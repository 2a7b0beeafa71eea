#pragma once

#include <string_view>
#include <vector>

namespace Sceneprep::Report
{

/// The HTML report without its data: markup, style and viewer. In pieces, since compilers limit the length of a string.
struct PageText
{
    std::vector<std::string_view> beforeData;
    std::vector<std::string_view> afterData;
};

/// Returns whether this build has the HTML report.
bool HasPage();

/// Returns the HTML report; empty if this build has none.
const PageText& GetPageText();

}  // namespace Sceneprep::Report

#pragma once

#include <string_view>
#include <vector>

namespace Sceneprep::Report
{

/// The page without its data: markup, style and viewer. In pieces, since compilers limit how long a text may be.
struct PageText
{
    std::vector<std::string_view> beforeData;
    std::vector<std::string_view> behindData;
};

/// @return whether this build has the page.
bool HasPage();

/// @return the page; empty when this build has none.
const PageText& GetPageText();

}  // namespace Sceneprep::Report

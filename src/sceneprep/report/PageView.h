#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace Sceneprep::Report
{

/// What one view of the HTML report shows: a .glb file, or none and a sentence that says why.
struct PageView
{
    std::ifstream file = {};   ///< read once, from its start; may have been removed from its folder already
    std::uintmax_t bytes = 0;  ///< the size of the file; 0 if there is none
    std::string remark = {};   ///< what the view omits and why; empty if it shows everything
};

}  // namespace Sceneprep::Report

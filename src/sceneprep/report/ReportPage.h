#pragma once

#include <sceneprep/report/Picture.h>
#include <sceneprep/report/PrepareReport.h>

#include <ostream>

namespace Sceneprep::Report
{

/// Writes the HTML report as one self-contained file: the numbers of the report, and two views that can be rotated.
///
/// The data are in elements of their own: "report" as in --json, "before" and "after" (the JSON of a view), and
/// "before-corners", "before-parts" and so on, arrays of little-endian numbers as base64.
void WritePage(std::ostream& out, const PrepareReport& report, const Picture& before, const Picture& after);

}  // namespace Sceneprep::Report

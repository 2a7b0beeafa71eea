#pragma once

#include <sceneprep/report/Picture.h>
#include <sceneprep/report/PrepareReport.h>

#include <ostream>

namespace Sceneprep::Report
{

/// Writes one HTML page that needs nothing beside it: the report's numbers, and two pictures that can be turned.
///
/// The data stand in elements of their own: "report" as --json has it, "before" and "after" (what JSON says of a
/// picture), and "before-corners", "before-parts" and so on, arrays of little-endian numbers as base64.
void WritePage(std::ostream& out, const PrepareReport& report, const Picture& before, const Picture& after);

}  // namespace Sceneprep::Report

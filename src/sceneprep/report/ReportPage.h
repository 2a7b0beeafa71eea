#pragma once

#include <sceneprep/report/PageView.h>
#include <sceneprep/report/PrepareReport.h>

#include <ostream>

namespace Sceneprep::Report
{

/// Writes the HTML report as one self-contained file: the numbers of the report, and two views that can be rotated.
///
/// The data are in elements of their own: "report" as in --json; "before" and "after" with the size of the file and the
/// remark of a view; "before-file" and "after-file", the .glb files as base64. The files are copied in pieces.
/// Sets the failbit of `out` if a file cannot be read.
void WritePage(std::ostream& out, const PrepareReport& report, PageView& before, PageView& after);

}  // namespace Sceneprep::Report

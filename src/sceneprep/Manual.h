#pragma once

#include <string>

namespace Sceneprep
{

/// Returns a text that is generated from the description of the command line and from the tables of steps and formats.
/// @param name  "man" for the manual page; "bash", "zsh" or "fish" for completions; "steps" or "formats" for a Markdown
///              table
/// @throws ToolError for other names.
std::string ManualText(const std::string& name);

}  // namespace Sceneprep

#pragma once

#include <pipeline/steps/Steps.h>
#include <sceneprep/Options.h>
#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace Sceneprep
{

inline constexpr const char* kVerificationGroup = "Verification and reports";
inline constexpr const char* kStepGroup = "Steps";

/// Returns the option that omits a recommended step from --all, as "--no-weld".
std::string OmissionOf(const Pipeline::Step& step);

/// Describes the command line: commands, options and their help. Parsing fills `options`, which has to outlive the
/// result. The options of steps come from Pipeline::Steps() and Pipeline::StepSettings().
///
/// Help, man page and completions are generated from this description, see Manual.h.
std::unique_ptr<CLI::App> DescribeCommandLine(Options& options);

}  // namespace Sceneprep

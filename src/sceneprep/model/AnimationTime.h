#pragma once

namespace Sceneprep
{

/// Times of keys are in these ticks: a whole number of them fits a frame at 24, 25, 30, 50 and 60 frames a second.
inline constexpr double kTicksPerSecond = 4800;

}  // namespace Sceneprep

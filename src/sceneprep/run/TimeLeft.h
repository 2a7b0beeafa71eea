#pragma once

#include <chrono>
#include <optional>

namespace Sceneprep
{

/// Estimates the remaining time of a step from the fraction done and the time that it took.
///
/// The result counts down steadily: between two estimates by the clock, and an estimate a second or more later moves
/// the expected end only part of the way.
class TimeLeft
{
public:
    using Clock = std::chrono::steady_clock;

    /// Records that a step begins.
    void Begin(Clock::time_point now);

    /// @param part  the fraction done, 0 to 1
    /// @return none before a step has begun, until a second after the first progress, and when everything is done. A
    ///         fraction that is reported once, at the end of a part of unknown length, allows no estimate
    std::optional<std::chrono::seconds> Estimate(double part, Clock::time_point now);

private:
    using Duration = std::chrono::duration<double>;

    std::optional<Clock::time_point> begin_;
    std::optional<Clock::time_point> firstReportAt_;
    Clock::time_point estimatedAt_;
    std::optional<Duration> end_;  ///< after the beginning
};

}  // namespace Sceneprep

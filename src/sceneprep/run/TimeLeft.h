#pragma once

#include <chrono>
#include <optional>

namespace Sceneprep
{

/// Estimates how long a step still takes from the share that is done and the time that it took.
///
/// What is told counts down steadily: between two estimates by the clock, and an estimate a second or more later moves
/// the expected end only part of the way.
class TimeLeft
{
public:
    using Clock = std::chrono::steady_clock;

    /// A step begins.
    void Begin(Clock::time_point now);

    /// @param part  the share that is done, 0 to 1
    /// @return none before a step has begun, while next to nothing is done and for a second after that, and when all is
    ///         done. A share that is told once, at the end of a part of unknown length, says nothing.
    std::optional<std::chrono::seconds> Estimate(double part, Clock::time_point now);

private:
    using Duration = std::chrono::duration<double>;

    std::optional<Clock::time_point> begin_;
    std::optional<Clock::time_point> firstToldAt_;
    Clock::time_point estimatedAt_;
    std::optional<Duration> end_;  ///< after the beginning
};

}  // namespace Sceneprep

#include <sceneprep/run/TimeLeft.h>

namespace Sceneprep
{

namespace
{

using namespace std::chrono_literals;

constexpr auto kSoonest = 1s;
constexpr auto kBetweenEstimates = 1s;
constexpr double kLeastPart = 0.01;
/// The fraction by which a later estimate moves the expected end towards itself.
constexpr double kTrust = 0.25;

}  // namespace

void TimeLeft::Begin(Clock::time_point now)
{
    begin_ = now;
    firstReportAt_.reset();
    end_.reset();
}

std::optional<std::chrono::seconds> TimeLeft::Estimate(double part, Clock::time_point now)
{
    if (!begin_ || !(part >= kLeastPart && part < 1))
        return std::nullopt;
    firstReportAt_ = firstReportAt_.value_or(now);
    if (now - *firstReportAt_ < kSoonest)
        return std::nullopt;

    const Duration elapsed = now - *begin_;
    const Duration end = elapsed / part;
    const bool isOver = end_ && *end_ <= elapsed;
    if (!end_ || isOver)
    {
        end_ = end;
        estimatedAt_ = now;
    }
    else if (now - estimatedAt_ >= kBetweenEstimates)
    {
        *end_ += (end - *end_) * kTrust;
        estimatedAt_ = now;
    }
    return std::chrono::ceil<std::chrono::seconds>(*end_ - elapsed);
}

}  // namespace Sceneprep

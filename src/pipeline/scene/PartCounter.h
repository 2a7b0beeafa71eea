#pragma once

#include <cstddef>
#include <functional>
#include <utility>

namespace Pipeline
{

/// Receives the part of a step that is done, 0 to 1.
using PartListener = std::function<void(double part)>;

/// A listener that does nothing.
inline void IgnorePart(double) {}

/// Counts the units of work that a step has done, and reports the part of all units to a listener.
class PartCounter
{
public:
    PartCounter(PartListener listener, std::size_t all)
        : listener_(std::move(listener)), all_(all), interval_(all / kReports + 1)
    {}

    /// Reports `count` further units as done. Calls the listener about 400 times at most, regardless of the size of
    /// the units.
    void Add(std::size_t count)
    {
        done_ += count;
        if (done_ - reported_ < interval_ && done_ < all_)
            return;
        reported_ = done_;
        listener_(all_ > 0 ? static_cast<double>(done_) / static_cast<double>(all_) : 1);
    }

private:
    static constexpr std::size_t kReports = 400;

    PartListener listener_;
    std::size_t all_;
    std::size_t interval_;
    std::size_t done_ = 0;
    std::size_t reported_ = 0;
};

}  // namespace Pipeline

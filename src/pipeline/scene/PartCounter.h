#pragma once

#include <cstddef>
#include <functional>
#include <utility>

namespace Pipeline
{

/// Is told which part of a step is done, 0 to 1.
using PartListener = std::function<void(double part)>;

/// The listener where nobody listens.
inline void IgnorePart(double) {}

/// Counts what a step has done of all that there is to do.
class PartCounter
{
public:
    PartCounter(PartListener listener, std::size_t all)
        : listener_(std::move(listener)), all_(all), untilTold_(all / kTimes + 1)
    {}

    /// So much more is done. The listener is told a few hundred times in all, however small the pieces are.
    void Add(std::size_t count)
    {
        done_ += count;
        if (done_ - told_ < untilTold_ && done_ < all_)
            return;
        told_ = done_;
        listener_(all_ > 0 ? static_cast<double>(done_) / static_cast<double>(all_) : 1);
    }

private:
    static constexpr std::size_t kTimes = 400;

    PartListener listener_;
    std::size_t all_;
    std::size_t untilTold_;
    std::size_t done_ = 0;
    std::size_t told_ = 0;
};

}  // namespace Pipeline

#pragma once

#include <algorithm>
#include <cstddef>

namespace Sceneprep::Report
{

/// Picks some items of a sequence, spread evenly over it.
class EvenChoice
{
public:
    /// @param limit  the number of items to pick; all if there are fewer
    EvenChoice(std::size_t total, std::size_t limit) : total_(total), picked_(std::min(total, limit)) {}

    /// Returns whether the next item is picked.
    bool Next()
    {
        due_ += picked_;
        if (due_ < total_)
            return false;
        due_ -= total_;
        return true;
    }

private:
    std::size_t total_;
    std::size_t picked_;
    std::size_t due_ = 0;
};

}  // namespace Sceneprep::Report

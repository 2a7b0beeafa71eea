#pragma once

#include <algorithm>
#include <cstddef>

namespace Sceneprep::Report
{

/// Picks some of a row of things, spread evenly over it.
class EvenChoice
{
public:
    /// @param limit  how many to pick; all, when there are no more
    EvenChoice(std::size_t total, std::size_t limit) : total_(total), picked_(std::min(total, limit)) {}

    /// @return whether the next one is picked.
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

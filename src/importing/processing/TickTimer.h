#pragma once

#include <cstdint>

namespace Importing
{

/// Measures elapsed time by the platform's 32-bit millisecond counter; off Windows by a steady clock cut to 32 bits.
class TickTimer
{
public:
    /// Starts.
    TickTimer();

    /// @return milliseconds since the start, in the wrapping arithmetic of the counter.
    int ElapsedMilliseconds() const;

private:
    std::uint32_t start_;
};

}  // namespace Importing

#pragma once

#include <cstdint>

namespace Importing
{

/// Measures elapsed time with the platform's 32-bit millisecond counter. Elsewhere than on Windows this is a steady
/// clock truncated to 32 bits.
class TickTimer
{
public:
    /// Starts the measurement.
    TickTimer();

    /// Returns the milliseconds since the start, in the wrapping arithmetic of the counter.
    int ElapsedMilliseconds() const;

private:
    std::uint32_t start_;
};

}  // namespace Importing

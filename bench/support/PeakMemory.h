#pragma once

#include <cstddef>

/// Follows what the benchmark program and its libraries take from operator new, from here to the end of its life;
/// PeakMemory.cpp replaces it. One at a time, and not while time is measured.
class PeakMemory
{
public:
    PeakMemory();
    ~PeakMemory();
    PeakMemory(const PeakMemory&) = delete;
    PeakMemory& operator=(const PeakMemory&) = delete;

    /// The most bytes that were in use at once, beyond those that were in use at the start.
    std::size_t GetBytes() const;
};

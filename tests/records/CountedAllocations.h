#pragma once

#include <cstddef>

namespace Support
{

/// Counts what the test program takes from operator new; CountedAllocations.cpp replaces it.
///
/// Not safe for more than one thread.
class CountedAllocations
{
public:
    /// Blocks taken since the program began.
    static std::size_t Taken();
    /// Blocks that are in use now.
    static std::size_t InUse();

    /// Lets `count` more allocations succeed; from then on std::bad_alloc is thrown, until Recover() is called.
    static void FailAfter(std::size_t count);
    static void Recover();
};

}  // namespace Support

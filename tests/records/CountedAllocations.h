#pragma once

#include <cstddef>

namespace Support
{

/// Counts the allocations of the test program. CountedAllocations.cpp replaces operator new.
///
/// Not safe for concurrent use.
class CountedAllocations
{
public:
    /// Returns the number of allocations since the program began.
    static std::size_t Taken();
    /// Returns the number of allocations that have not been freed.
    static std::size_t InUse();

    /// Lets `count` more allocations succeed. After that std::bad_alloc is thrown until Recover() is called.
    static void FailAfter(std::size_t count);
    static void Recover();
};

}  // namespace Support

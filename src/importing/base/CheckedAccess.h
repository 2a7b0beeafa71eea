#pragma once

/// @file
/// Checked element access. Every operation reports a bad index by std::out_of_range with the text "invalid vector<T>
/// subscript", in every build type.
///
/// Cost: constant for each index.

#include <cstddef>
#include <stdexcept>
#include <vector>

namespace Importing
{

/// Throws the exception for a bad index.
[[noreturn]] inline void ThrowBadSubscript() { throw std::out_of_range("invalid vector<T> subscript"); }

/// Returns whether index designates one of count elements. A negative index is never valid.
template <typename Index>
constexpr bool IsValidIndex(Index index, std::size_t count)
{
    // The conversion makes a negative index larger than any count.
    return static_cast<std::size_t>(index) < count;
}

/// Checks one index.
/// @throws std::out_of_range when index does not designate one of count elements.
template <typename Index>
void CheckIndex(Index index, std::size_t count)
{
    if (!IsValidIndex(index, count))
        ThrowBadSubscript();
}

/// Checks a whole list of indices, so that an operation can refuse it before it changes anything.
/// @throws std::out_of_range when one of the indices does not designate one of count elements.
template <typename Index>
void CheckIndices(const std::vector<Index>& indices, std::size_t count)
{
    for (const Index index : indices)
        CheckIndex(index, count);
}

/// Returns the element at index.
/// @throws std::out_of_range when the sequence has no such element.
template <typename Sequence, typename Index>
auto& At(Sequence& sequence, Index index)
{
    CheckIndex(index, sequence.size());
    return sequence[static_cast<std::size_t>(index)];
}

}  // namespace Importing

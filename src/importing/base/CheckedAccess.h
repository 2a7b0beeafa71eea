#pragma once

/// @file
/// The one way in which an index goes wrong: std::out_of_range with the text "invalid vector<T> subscript", in every
/// operation and every build type.

#include <cstddef>
#include <stdexcept>
#include <vector>

namespace Importing
{

[[noreturn]] inline void ThrowBadSubscript() { throw std::out_of_range("invalid vector<T> subscript"); }

/// True when index designates one of count elements. A negative index designates none.
template <typename Index>
constexpr bool IsValidIndex(Index index, std::size_t count)
{
    // A negative index becomes larger than any count by the conversion.
    return static_cast<std::size_t>(index) < count;
}

/// @throws std::out_of_range when index does not designate one of count elements.
template <typename Index>
void CheckIndex(Index index, std::size_t count)
{
    if (!IsValidIndex(index, count))
        ThrowBadSubscript();
}

/// Checks a whole list before anything is changed by means of it.
/// @throws std::out_of_range when one of the indices does not designate one of count elements.
template <typename Index>
void CheckIndices(const std::vector<Index>& indices, std::size_t count)
{
    for (const Index index : indices)
        CheckIndex(index, count);
}

/// @return the element at index.
/// @throws std::out_of_range when there is none.
template <typename Sequence, typename Index>
auto& At(Sequence& sequence, Index index)
{
    CheckIndex(index, sequence.size());
    return sequence[static_cast<std::size_t>(index)];
}

}  // namespace Importing

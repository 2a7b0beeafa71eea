#pragma once

namespace Importing
{

/// Gives a const operation access to the getters of a record.
///
/// The getters of records are not declared const, because their signatures are part of the interface. Call only getters
/// that change nothing.
template <typename Record>
Record& ForReading(const Record& record)
{
    return const_cast<Record&>(record);
}

}  // namespace Importing

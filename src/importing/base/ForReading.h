#pragma once

namespace Importing
{

/// Lets an operation that is const call the getters of a record.
///
/// The records' getters are not declared const, for their signatures are part of the interface; those that this is
/// used for change nothing all the same.
template <typename Record>
Record& ForReading(const Record& record)
{
    return const_cast<Record&>(record);
}

}  // namespace Importing

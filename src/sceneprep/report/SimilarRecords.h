#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// One value of a record.
struct Property
{
    std::string name;
    std::string value;

    friend bool operator==(const Property&, const Property&) = default;
};

/// The values of a record, such as a material. Each name occurs once; the order does not matter.
using Properties = std::vector<Property>;

/// Records that are equal, or that differ in the value of one property only.
struct SimilarRecords
{
    std::string property;              ///< its name; empty for records that are equal
    std::vector<std::size_t> records;  ///< indices, ascending; at least two
    std::vector<std::string> values;   ///< of the property, one per record; empty for records without it
};

/// Finds all groups of similar records. A record may be in several groups. Of records that are equal, only the first is
/// compared with others. Takes n log n time in the properties of all records, on average.
std::vector<SimilarRecords> FindSimilarRecords(const std::vector<Properties>& records);

}  // namespace Sceneprep

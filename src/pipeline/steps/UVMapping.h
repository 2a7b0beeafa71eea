#pragma once

#include <importing/geometry/Geometry.h>

#include <optional>
#include <string>

namespace Pipeline
{

/// A projection that generates texture coordinates, and the set that it writes.
struct UVMapping
{
    std::string projection = {};  ///< one of UVProjectionNames()
    int set = 0;                  ///< 0 to 7, as files support
    bool worldUnits = false;      ///< units of the mesh instead of parts of its bounding box

    friend bool operator==(const UVMapping&, const UVMapping&) = default;
};

/// Returns the names of all projections: "planar-x, planar-y, ... or spherical".
std::string UVProjectionNames();

/// Parses "projection[:set[:world]]". Returns nothing if the text is not a valid mapping.
std::optional<UVMapping> ParseUVMapping(const std::string& text);

/// Generates texture coordinates for every vertex. Takes linear time.
void GenerateUVs(Importing::Geometry& geometry, const UVMapping& mapping);

}  // namespace Pipeline

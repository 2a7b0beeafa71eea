#pragma once

#include <importing/geometry/Geometry.h>

#include <optional>
#include <string>

namespace Pipeline
{

/// Which texture coordinates to make, and where to.
struct UVMapping
{
    std::string projection = {};  ///< one of UVProjectionNames()
    int set = 0;                  ///< 0 to 7, which is what files hold
    bool worldUnits = false;      ///< lengths of the mesh instead of parts of its box

    friend bool operator==(const UVMapping&, const UVMapping&) = default;
};

/// @return "planar-x, planar-y, ... or spherical".
std::string UVProjectionNames();

/// Understands "projection[:set[:world]]".
/// @return nothing when the text is none.
std::optional<UVMapping> ParseUVMapping(const std::string& text);

/// Writes the mapping's set of every vertex.
void GenerateUVs(Importing::Geometry& geometry, const UVMapping& mapping);

}  // namespace Pipeline

#include <pipeline/steps/UVMapping.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace Pipeline
{

namespace
{

using Importing::Geometry;

struct Projection
{
    std::string_view name;
    int (Geometry::*generate)(int set, bool worldUnits);
};

constexpr std::array<Projection, 6> kProjections = {{{"planar-x", &Geometry::GenerateUVsPlanarX},
                                                     {"planar-y", &Geometry::GenerateUVsPlanarY},
                                                     {"planar-z", &Geometry::GenerateUVsPlanarZ},
                                                     {"cubic", &Geometry::GenerateUVsCubic},
                                                     {"cylindrical", &Geometry::GenerateUVsCylindrical},
                                                     {"spherical", &Geometry::GenerateUVsSpherical}}};

const Projection* FindProjection(const std::string& name)
{
    const auto* found = std::find_if(kProjections.begin(), kProjections.end(),
                                     [&name](const Projection& projection) { return projection.name == name; });
    return found == kProjections.end() ? nullptr : found;
}

std::vector<std::string> SplitAtColons(const std::string& text)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', start))
    {
        parts.push_back(text.substr(start, colon - start));
        start = colon + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

bool IsSet(const std::string& text) { return text.size() == 1 && text.front() >= '0' && text.front() <= '7'; }

}  // namespace

std::string UVProjectionNames()
{
    std::string names;
    for (const Projection& projection : kProjections)
    {
        if (!names.empty())
            names += projection.name == kProjections.back().name ? " or " : ", ";
        names += projection.name;
    }
    return names;
}

std::optional<UVMapping> ParseUVMapping(const std::string& text)
{
    const std::vector<std::string> parts = SplitAtColons(text);
    if (FindProjection(parts[0]) == nullptr || parts.size() > 3)
        return std::nullopt;
    UVMapping mapping{.projection = parts[0]};
    if (parts.size() > 1)
    {
        if (!IsSet(parts[1]))
            return std::nullopt;
        mapping.set = parts[1].front() - '0';
    }
    if (parts.size() > 2)
    {
        if (parts[2] != "world")
            return std::nullopt;
        mapping.worldUnits = true;
    }
    return mapping;
}

void GenerateUVs(Geometry& geometry, const UVMapping& mapping)
{
    if (const Projection* projection = FindProjection(mapping.projection))
        (geometry.*projection->generate)(mapping.set, mapping.worldUnits);
}

}  // namespace Pipeline

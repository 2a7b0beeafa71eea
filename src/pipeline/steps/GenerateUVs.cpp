#include <pipeline/steps/GenerateUVs.h>

#include <pipeline/steps/ForEachMesh.h>

#include <optional>

namespace Pipeline
{

Changes GenerateUVs(const WorkScene& scene, const PrepareOptions& options, const PartListener& listener)
{
    std::size_t sets = 0;
    ForEachMesh(scene, listener, [&](std::size_t, Importing::Geometry& geometry) {
        for (const UVMapping& mapping : options.uvs)
            GenerateUVs(geometry, mapping);
        sets += options.uvs.size();
    });
    return {{"UV sets generated", sets}};
}

std::string AddUVMapping(PrepareOptions& options, const std::string& text)
{
    const std::optional<UVMapping> mapping = ParseUVMapping(text);
    if (!mapping)
        return "'" + text + "' is not a mapping; allowed are " + UVProjectionNames() +
               ", optionally followed by :SET from 0 to 7, optionally followed by :world";
    for (const UVMapping& other : options.uvs)
    {
        if (other.set == mapping->set)
            return "set " + std::to_string(mapping->set) + " is generated twice; give each mapping a set of its own";
    }
    options.uvs.push_back(*mapping);
    return {};
}

}  // namespace Pipeline

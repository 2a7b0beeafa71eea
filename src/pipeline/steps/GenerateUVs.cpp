#include <pipeline/steps/GenerateUVs.h>

#include <pipeline/scene/VertexLayouts.h>
#include <pipeline/steps/ForEachMesh.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace Pipeline
{

namespace
{

/// Moves attributes that occupy a set which is going to be generated to the sets after it.
void MakeRoom(SceneSupplement& supplement, std::size_t index, Importing::Geometry& geometry,
              const std::vector<UVMapping>& mappings)
{
    const VertexLayout layout = LayoutOf(supplement, index, geometry);
    if (layout.attributes.empty())
        return;
    VertexLayout wider{.texCoordSets = layout.texCoordSets};
    for (const UVMapping& mapping : mappings)
        wider.texCoordSets = std::max(wider.texCoordSets, mapping.set + 1);
    if (wider.texCoordSets == layout.texCoordSets)
        return;
    for (const VertexAttribute& attribute : layout.attributes)
        AppendAttribute(wider, attribute);
    ChangeLayout(geometry, layout, wider);
    SetLayout(supplement, index, wider);
}

}  // namespace

Changes GenerateUVs(const WorkScene& scene, const PrepareOptions& options, const PartListener& listener)
{
    std::size_t sets = 0;
    ForEachMesh(scene, listener, [&](std::size_t index, Importing::Geometry& geometry) {
        MakeRoom(scene.supplement, index, geometry, options.uvs);
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

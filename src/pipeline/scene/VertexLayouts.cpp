// A change of layout rebuilds one vertex after the other, so no second copy of the mesh is needed. A vertex gets its
// last set first, which makes room for all of its sets in one allocation.

#include <pipeline/scene/VertexLayouts.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Pipeline
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;

int SetsOf(const VertexAttribute& attribute) { return (attribute.components + 1) / 2; }

int CountSets(const VertexLayout& layout)
{
    int sets = layout.texCoordSets;
    for (const VertexAttribute& attribute : layout.attributes)
        sets = std::max(sets, attribute.firstSet + SetsOf(attribute));
    return sets;
}

bool IsColor(const VertexAttribute& attribute) { return attribute.name.rfind("COLOR_", 0) == 0; }

/// Where each set of a layout comes from.
struct Source
{
    int set = -1;            ///< in the old layout; -1: filled
    D3DXVECTOR2 fill{0, 0};  ///< also where a vertex has too few sets
};

std::vector<Source> SourcesOf(const VertexLayout& from, const VertexLayout& to)
{
    std::vector<Source> sources(static_cast<std::size_t>(CountSets(to)));
    for (int set = 0; set < std::min(from.texCoordSets, to.texCoordSets); ++set)
        sources[static_cast<std::size_t>(set)].set = set;
    for (const VertexAttribute& attribute : to.attributes)
    {
        const VertexAttribute* old = FindAttribute(from, attribute.name);
        for (int set = 0; set < SetsOf(attribute); ++set)
        {
            Source& source = sources[static_cast<std::size_t>(attribute.firstSet) + static_cast<std::size_t>(set)];
            if (IsColor(attribute))
                source.fill = D3DXVECTOR2(1, 1);
            if (old != nullptr && set < SetsOf(*old))
                source.set = old->firstSet + set;
        }
    }
    return sources;
}

/// A vertex cannot lose sets, so it is built again.
Vertex Rebuilt(Vertex& vertex, const std::vector<Source>& sources)
{
    Vertex rebuilt(vertex.Vertex::GetPosition());
    rebuilt.SetNormal(vertex.Vertex::GetNormal());
    const auto count = static_cast<int>(vertex.Vertex::GetTexCoordCount());
    for (std::size_t set = sources.size(); set-- > 0;)  // the last first, so that there is one allocation
    {
        const Source& source = sources[set];
        const bool isThere = source.set >= 0 && source.set < count;
        rebuilt.SetTexCoord(isThere ? vertex.Vertex::GetTexCoord(source.set) : source.fill, set);
    }
    for (std::uint64_t i = vertex.Vertex::GetWeightsCount(); i-- > 0;)
    {
        const Vertex::Weight weight = vertex.Vertex::GetWeight(i);
        rebuilt.SetWeight(weight.first, weight.second, i);
    }
    return rebuilt;
}

}  // namespace

VertexLayout LayoutOf(const SceneSupplement& supplement, std::size_t geometry, const Geometry& mesh)
{
    VertexLayout layout = EntryOr(supplement.layouts, geometry, VertexLayout());
    if (layout.texCoordSets < 0)
    {
        layout.texCoordSets = 0;
        for (const Vertex& vertex : mesh.VertexArray)
            layout.texCoordSets = std::max(layout.texCoordSets, static_cast<int>(vertex.Vertex::GetTexCoordCount()));
    }
    return layout;
}

void SetLayout(SceneSupplement& supplement, std::size_t geometry, VertexLayout layout)
{
    if (geometry >= supplement.layouts.size())
        supplement.layouts.resize(geometry + 1);
    supplement.layouts[geometry] = std::move(layout);
}

const VertexAttribute* FindAttribute(const VertexLayout& layout, const std::string& name)
{
    const auto found = std::find_if(layout.attributes.begin(), layout.attributes.end(),
                                    [&name](const VertexAttribute& attribute) { return attribute.name == name; });
    return found == layout.attributes.end() ? nullptr : &*found;
}

void AppendAttribute(VertexLayout& layout, VertexAttribute attribute)
{
    attribute.firstSet = CountSets(layout);
    layout.attributes.push_back(std::move(attribute));
}

void ChangeLayout(Geometry& mesh, const VertexLayout& from, const VertexLayout& to)
{
    const std::vector<Source> sources = SourcesOf(from, to);
    for (Vertex& vertex : mesh.VertexArray)
        vertex = Rebuilt(vertex, sources);
    mesh.SetPolySize(mesh.GetPolySize());  // invalidates the content hash
}

}  // namespace Pipeline

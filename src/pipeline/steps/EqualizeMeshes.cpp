// Surfaces are grouped by the properties in which surfaces must agree to be merged, and the meshes of each group get
// the union of their attributes. The groups are found by sorting keys, which takes n log n; comparing the surfaces in
// pairs would be quadratic. Meshes of surfaces that stay alone are not touched.

#include <pipeline/steps/EqualizeMeshes.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/HasNormals.h>
#include <pipeline/scene/VertexLayouts.h>
#include <pipeline/steps/MissingNormals.h>
#include <pipeline/steps/WeldMesh.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Geometry;

/// Meshes whose surfaces SceneContainer::MergeSurfaces() merges, in list order.
using Group = std::vector<std::size_t>;

/// What surfaces must agree in to be merged: poly size, material, and the content of their maps.
std::vector<std::uint32_t> MergeKey(const WorkScene& scene, Importing::Surface& surface, const PrepareOptions& options)
{
    const Geometry& geometry = At(scene.container.GeometryLibrary, surface.GetGeometryID());
    std::vector<std::uint32_t> key = {static_cast<std::uint32_t>(geometry.GetPolySize())};
    if (options.minSurfaces <= 0)
        return key;
    key.push_back(static_cast<std::uint32_t>(surface.GetMaterialID()));
    for (Importing::Map& map : surface.MapList)
        key.push_back(map.GetHash());
    return key;
}

std::vector<Group> FindGroups(const WorkScene& scene, const std::vector<std::int32_t>& surfaces,
                              const PrepareOptions& options)
{
    std::map<int, int> countOf;  // by material
    for (const std::int32_t surface : surfaces)
        ++countOf[At(scene.container.SurfaceLibrary, surface).GetMaterialID()];

    std::map<std::vector<std::uint32_t>, Group> groups;
    for (const std::int32_t index : surfaces)
    {
        Importing::Surface& surface = At(scene.container.SurfaceLibrary, index);
        if (countOf[surface.GetMaterialID()] >= options.minSurfaces)
            groups[MergeKey(scene, surface, options)].push_back(static_cast<std::size_t>(surface.GetGeometryID()));
    }
    std::vector<Group> merged;
    for (auto& [key, group] : groups)
    {
        if (group.size() > 1)
            merged.push_back(std::move(group));
    }
    return merged;
}

std::size_t EqualizeNormals(const WorkScene& scene, const Group& group, const PrepareOptions& options)
{
    std::vector<std::size_t> without;
    for (const std::size_t mesh : group)
    {
        if (!HasNormals(scene.container.GeometryLibrary[mesh]))
            without.push_back(mesh);
    }
    if (without.size() == group.size())
        return 0;
    for (const std::size_t mesh : without)
    {
        MakeFlatNormals(scene.container.GeometryLibrary[mesh]);
        if (options.weld)
            WeldMesh(scene.container.GeometryLibrary[mesh]);
    }
    return without.size();
}

/// Makes an attribute hold what another one of its name holds.
void Widen(VertexAttribute& attribute, const VertexAttribute& other)
{
    attribute.components = std::max(attribute.components, other.components);
    if (attribute.numberType != other.numberType || attribute.isNormalized != other.isNormalized)
    {
        attribute.numberType = 0;
        attribute.isNormalized = false;
    }
}

/// Returns the layout that holds everything that one of the layouts holds; tangents only if all of them do.
VertexLayout UnionOf(const std::vector<VertexLayout>& layouts)
{
    VertexLayout all{.texCoordSets = 0};
    for (const VertexLayout& layout : layouts)
        all.texCoordSets = std::max(all.texCoordSets, layout.texCoordSets);
    std::vector<VertexAttribute> attributes;  // in the order in which they are met
    std::map<std::string, std::size_t> positions;
    std::map<std::string, std::size_t> uses;
    for (const VertexLayout& layout : layouts)
    {
        for (const VertexAttribute& attribute : layout.attributes)
        {
            ++uses[attribute.name];
            const auto [found, isNew] = positions.emplace(attribute.name, attributes.size());
            if (isNew)
                attributes.push_back(attribute);
            else
                Widen(attributes[found->second], attribute);
        }
    }
    for (VertexAttribute& attribute : attributes)
    {
        if (attribute.name != "TANGENT" || uses[attribute.name] == layouts.size())
            AppendAttribute(all, std::move(attribute));
    }
    return all;
}

/// @return how many meshes lose their tangents.
std::size_t EqualizeLayouts(const WorkScene& scene, const Group& group)
{
    std::vector<VertexLayout> layouts;
    for (const std::size_t mesh : group)
        layouts.push_back(LayoutOf(scene.supplement, mesh, scene.container.GeometryLibrary[mesh]));
    if (std::all_of(layouts.begin(), layouts.end(),
                    [](const VertexLayout& layout) { return layout.attributes.empty(); }))
        return 0;

    const VertexLayout all = UnionOf(layouts);
    std::size_t dropped = 0;
    for (std::size_t i = 0; i < group.size(); ++i)
    {
        if (FindAttribute(layouts[i], "TANGENT") != nullptr && FindAttribute(all, "TANGENT") == nullptr)
            ++dropped;
        if (layouts[i] != all)
            ChangeLayout(scene.container.GeometryLibrary[group[i]], layouts[i], all);
        SetLayout(scene.supplement, group[i], all);
    }
    return dropped;
}

}  // namespace

Equalized EqualizeMeshes(const WorkScene& scene, const std::vector<std::int32_t>& surfaces,
                         const PrepareOptions& options)
{
    Equalized result;
    for (const Group& group : FindGroups(scene, surfaces, options))
    {
        result.flatNormals += EqualizeNormals(scene, group, options);
        result.droppedTangents += EqualizeLayouts(scene, group);
    }
    return result;
}

}  // namespace Pipeline

#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>

#include <string>

namespace Pipeline
{

/// Returns the layout of a mesh with its number of texture coordinate sets. Takes linear time where the supplement does
/// not name that number: it is then the largest of any vertex.
VertexLayout LayoutOf(const SceneSupplement& supplement, std::size_t geometry, const Importing::Geometry& mesh);

/// Stores the layout of a mesh.
void SetLayout(SceneSupplement& supplement, std::size_t geometry, VertexLayout layout);

/// Returns the attribute of a name; null when the layout has none. The pointer is valid while the layout is unchanged.
const VertexAttribute* FindAttribute(const VertexLayout& layout, const std::string& name);

/// Appends an attribute after the sets that are in use.
/// @param attribute  its first set is ignored
void AppendAttribute(VertexLayout& layout, VertexAttribute attribute);

/// Moves the sets of every vertex from one layout to another. Texture coordinate sets and attributes that only `to` has
/// are filled: colours with (1, 1, 1, 1), everything else with 0. Those that only `from` has are dropped.
void ChangeLayout(Importing::Geometry& mesh, const VertexLayout& from, const VertexLayout& to);

}  // namespace Pipeline

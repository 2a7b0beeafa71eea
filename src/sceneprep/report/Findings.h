#pragma once

#include <sceneprep/model/Json.h>
#include <sceneprep/model/Model.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Something in a model that costs draw calls, memory or clarity, and that its author can change.
struct Finding
{
    std::string kind = {};                ///< "similar-materials", "equal-meshes", "repeated-names" or "unused-uvs"
    std::string text = {};                ///< one sentence without its full stop
    std::vector<std::string> names = {};  ///< of the records concerned; the first 20
    std::size_t count = 0;                ///< how many records

    friend bool operator==(const Finding&, const Finding&) = default;
};

/// Finds what could be improved in a model:
///
/// - materials that differ only in their name, or in one number. Materials that no surface uses are not compared.
/// - meshes of equal content that are stored more than once. Skinned and pinned meshes are not compared.
/// - names that several nodes, meshes or materials have.
/// - UV sets that no texture uses.
///
/// There are at most 20 findings of the first two kinds each, those with the most records. Takes n log n time in the
/// records, and linear time in vertices. Changes nothing.
std::vector<Finding> FindImprovements(const Model& model);

/// Returns the findings, one a line, under a heading; no more than `limit`, with the number of the others. Empty
/// without findings.
std::string FindingsText(const std::vector<Finding>& findings, std::size_t limit);

/// Returns a list of objects with the keys "kind", "text", "names" and "count".
Json FindingsAsJson(const std::vector<Finding>& findings);

}  // namespace Sceneprep

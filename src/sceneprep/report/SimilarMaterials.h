#pragma once

#include <sceneprep/model/Model.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Materials that differ only in their name, or in one number.
struct SimilarMaterials
{
    std::string text = {};            ///< "materials 'Wood' and 'Wood.001' differ only in roughness: 0.5 and 0.52"
    std::vector<int> materials = {};  ///< indices in the material library
};

/// Finds the similar ones among the given materials, the largest groups first.
///
/// A material that came from glTF is compared by its JSON object without name and extras, any other one by the values
/// of the container and those that were carried for it. Texture layers are those of the first surface with the
/// material. Every component of a colour is one number. Takes n log n time in the values of all materials, on average.
std::vector<SimilarMaterials> FindSimilarMaterials(const Model& model, const std::vector<int>& materials);

}  // namespace Sceneprep

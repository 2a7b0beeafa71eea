#pragma once

#include <sceneprep/model/Carried.h>
#include <sceneprep/run/Notes.h>

#include <cstddef>
#include <filesystem>
#include <vector>

namespace Sceneprep
{

/// The indices at which the objects of an appended model begin, and the files that both were read from.
struct AppendedBases
{
    int embedded = 0;                 ///< in Textures::embedded
    std::filesystem::path file = {};  ///< of the first model: references to image files become relative to its folder
    std::filesystem::path otherFile = {};
};

/// The new keys of the other model after AppendCarried().
struct AppendedKeys
{
    int nodes = 0;                                ///< to be added to the other model's node keys
    int meshes = 0;                               ///< to be added to the other model's mesh keys
    std::vector<CarriedMaterial> materials = {};  ///< the other model's materialOf, with indices into the first's lists
};

/// Appends the lists of one model to those of another, and renumbers every reference in them: materials to textures,
/// textures to samplers and images, clips to nodes, skins to joints, and so on.
///
/// Samplers, images, textures and materials that are equal in everything become one; a material that a clip changes
/// stays separate. Of the document's own objects (asset, scene, extras, extensions) the first model's are kept and the
/// other's are added where the first has none. Names of KHR_materials_variants are joined. What is dropped is added to
/// `notes`.
///
/// `first.materialOf` is not changed. Takes time linear in the size of both, apart from a logarithm.
AppendedKeys AppendCarried(Carried& first, Carried other, const AppendedBases& bases, Notes& notes);

}  // namespace Sceneprep

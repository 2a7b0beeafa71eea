#pragma once

#include <sceneprep/model/Json.h>
#include <sceneprep/run/Notes.h>

#include <cstddef>

namespace Sceneprep::Gltf
{

/// The number of values that were corrected because the format does not allow them.
struct MendedValues
{
    std::size_t triangles = 0;   ///< dropped: NaN or infinite corners
    std::size_t normals = 0;     ///< of length 0: replaced by the normal of a face
    std::size_t tangents = 0;    ///< of length 0: replaced
    std::size_t texCoords = 0;   ///< not finite: replaced by (0, 0)
    std::size_t attributes = 0;  ///< values of other attributes that are not finite: replaced by 0
    std::size_t skins = 0;       ///< dropped: weights of joints that do not exist
    std::size_t weights = 0;     ///< vertices whose weights did not add up to 1

    void AddNotes(Notes& notes) const;
};

/// The arrays of a geometry in the document, which all of its primitives share.
struct MeshArrays
{
    Json attributes = Json::object();
    int indices = -1;  ///< -1 for none
    int mode = 4;
    Json targets = Json::array();
    bool isSkinned = false;

    /// Returns the number of texture coordinate sets.
    std::size_t CountTexCoords() const;
};

}  // namespace Sceneprep::Gltf

#pragma once

#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Model.h>

#include <vector>

namespace Sceneprep::GltfImport
{

/// Adds the textures that materials use to the container's texture library, each image once.
class TextureLibrary
{
public:
    /// Images must have been read. Both have to outlive the object.
    TextureLibrary(const Field& document, Model& model);

    /// @param reference  the number of a texture
    /// @return the entry for the image of a texture; -1 if the texture has no image
    int Find(const Field& reference);

private:
    int ImageOf(const Field& texture) const;
    int Add(const CarriedImage& image);

    Field document_;
    Model& model_;
    std::vector<int> entryOf_;  ///< [images] -1 for images that are not in the library
};

}  // namespace Sceneprep::GltfImport

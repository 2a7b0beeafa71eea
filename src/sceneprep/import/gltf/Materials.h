#pragma once

#include <importing/records/Surface.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/TextureLibrary.h>
#include <sceneprep/model/Model.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Sceneprep::GltfImport
{

/// Adds the materials that primitives use to the container: one for each combination of a material with the extras and
/// extensions of a primitive, so that steps merge only surfaces that agree in everything. Equal materials become one.
class Materials
{
public:
    /// Images must have been read. Both have to outlive the object.
    Materials(const Field& document, Model& model);

    /// Sets the material and the layers of a surface to those of a primitive.
    /// @param extras  extras and extensions of the primitive
    void Apply(const Field& primitive, const Json& extras, Importing::Surface& surface);

private:
    struct Added
    {
        int material;
        std::vector<Importing::Map> layers;
    };

    Added Add(int material, const Json& extras);

    Field document_;
    Model& model_;
    TextureLibrary textures_;
    std::vector<int> first_;  ///< [materials] the first material that is equal
    std::map<std::pair<int, std::string>, Added> added_;
};

}  // namespace Sceneprep::GltfImport

#pragma once

#include <importing/records/Surface.h>
#include <sceneprep/model/Model.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// What a viewer shows of a material.
struct MaterialKey
{
    std::string name;
    std::string text;  ///< equal for materials that show the same, whatever their names
    int number = -1;   ///< distinguishes the materials that the model has as glTF, also those that show the same
};

/// Compares materials by their content, as glTF has it: factors, alpha mode, extensions, and textures by the bytes of
/// their images. Materials that come from other formats are converted as the writer of glTF converts them.
///
/// Image files are read to compare them. One that is missing is known by its file name.
class MaterialKeys
{
public:
    /// @param model    has to outlive the object
    /// @param folders  where references to image files are looked up, in addition to the folder of the model's file
    explicit MaterialKeys(const Model& model, std::vector<std::filesystem::path> folders = {});
    ~MaterialKeys();
    MaterialKeys(const MaterialKeys&) = delete;
    MaterialKeys& operator=(const MaterialKeys&) = delete;

    /// @param texCoordSets  how many sets the surface's mesh has
    const MaterialKey& Find(Importing::Surface& surface, std::size_t texCoordSets);

    /// Returns the number of the surface's material without reading image files.
    /// @param texCoordSets  as for Find()
    int FindNumber(Importing::Surface& surface, std::size_t texCoordSets);

    /// Returns the image files that the materials found so far refer to, and that exist.
    std::vector<std::filesystem::path> ImageFiles() const;

private:
    class Converter;
    std::unique_ptr<Converter> converter_;
};

}  // namespace Sceneprep

#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/model/CompanionFiles.h>
#include <sceneprep/model/Textures.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Sceneprep::Gltf
{

/// Writes the textures that materials ask for.
///
/// Files are referred to as the input refers to them. Pictures that lay in the input go into a binary model file, or
/// beside one that is text.
class ImageWriter
{
public:
    /// @param stem      name of the model file without its ending; companions' names begin with it
    /// @param isBinary  whether pictures go into the buffer
    ImageWriter(Importing::SceneContainer& scene, const Textures& textures, std::string stem, bool isBinary,
                Buffers& buffers, tinygltf::Model& model);

    /// @return the texture's index in the file; -1 when it is of a kind that the format cannot hold.
    int Find(int texture);

    const std::vector<CompanionFile>& Companions() const { return companions_; }
    /// References that were left out.
    const std::set<std::string>& LeftOut() const { return leftOut_; }

private:
    int Write(int texture);
    bool Fill(const EmbeddedTexture& picture, tinygltf::Image& image);

    Importing::SceneContainer& scene_;
    const Textures& textures_;
    std::string stem_;
    bool isBinary_;
    Buffers& buffers_;
    tinygltf::Model& model_;
    std::map<int, int> written_;
    std::vector<CompanionFile> companions_;
    std::set<std::string> leftOut_;
};

}  // namespace Sceneprep::Gltf

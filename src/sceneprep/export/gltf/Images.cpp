#include <sceneprep/export/gltf/Images.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/export/gltf/Utf8.h>
#include <sceneprep/model/PictureKind.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/model/Uri.h>

#include <utility>

namespace Sceneprep::Gltf
{

ImageWriter::ImageWriter(Importing::SceneContainer& scene, const Textures& textures, std::string stem, bool isBinary,
                         Buffers& buffers, tinygltf::Model& model)
    : scene_(scene), textures_(textures), stem_(std::move(stem)), isBinary_(isBinary), buffers_(buffers), model_(model)
{}

int ImageWriter::Find(int texture)
{
    auto found = written_.find(texture);
    if (found == written_.end())
        found = written_.emplace(texture, Write(texture)).first;
    return found->second;
}

int ImageWriter::Write(int texture)
{
    const std::string reference = SpellingOf(textures_, Importing::At(scene_.TextureLibrary, texture));
    tinygltf::Image image;
    const EmbeddedTexture* picture = FindEmbedded(textures_, reference);
    if (picture == nullptr)
        image.uri = EncodeUri(reference);
    else if (!Fill(*picture, image))
    {
        leftOut_.insert(reference);
        return -1;
    }
    model_.images.push_back(std::move(image));

    tinygltf::Texture target;
    target.source = static_cast<int>(model_.images.size() - 1);
    model_.textures.push_back(std::move(target));
    return static_cast<int>(model_.textures.size() - 1);
}

bool ImageWriter::Fill(const EmbeddedTexture& picture, tinygltf::Image& image)
{
    const PictureKind* kind = KindOf(picture.content);  // those that every reader of the format knows
    if (kind == nullptr)
        return false;
    image.name = ToUtf8(picture.fileName);
    if (isBinary_)
    {
        image.mimeType = kind->mimeType;
        image.bufferView = buffers_.AddView(picture.content.data(), picture.content.size(), Usage::Other);
        return true;
    }
    const std::string name = CompanionName(stem_, companions_.size(), picture);
    image.uri = EncodeUri(name);
    companions_.push_back({name, &picture.content});
    return true;
}

}  // namespace Sceneprep::Gltf

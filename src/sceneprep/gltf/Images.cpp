#include <sceneprep/gltf/Images.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/PictureKind.h>
#include <sceneprep/TextureReferences.h>
#include <sceneprep/gltf/Utf8.h>

#include <cctype>
#include <string_view>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

/// May stand in a reference as it is: RFC 3986, section 3.3.
bool IsPlain(unsigned char byte)
{
    constexpr std::string_view kAllowed = "-._~/!$&'()*+,;=@";
    return byte < 0x80 && (std::isalnum(byte) != 0 || kAllowed.find(static_cast<char>(byte)) != std::string_view::npos);
}

/// glTF files hand their references on as they stand there.
bool IsEncoded(const std::string& reference, std::size_t place)
{
    const auto isHex = [&](std::size_t i) {
        return i < reference.size() && std::isxdigit(static_cast<unsigned char>(reference[i])) != 0;
    };
    return reference[place] == '%' && isHex(place + 1) && isHex(place + 2);
}

}  // namespace

std::string EncodeUri(const std::string& reference)
{
    if (reference.find("://") != std::string::npos)
        return reference;  // a reference into the net is encoded already
    std::string uri;
    for (std::size_t i = 0; i < reference.size(); ++i)
    {
        const char letter = reference[i];
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '\\')
            uri += '/';
        else if (IsPlain(byte) || IsEncoded(reference, i))
            uri += letter;
        else
            uri += fmt::format("%{:02X}", byte);
    }
    return uri;
}

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

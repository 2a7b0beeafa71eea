#include <sceneprep/import/gltf/TextureLibrary.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>

#include <array>

namespace Sceneprep::GltfImport
{

namespace
{

/// Extensions that name an image in another format in addition to, or instead of, that of the texture.
constexpr std::array<std::string_view, 3> kFormats = {"KHR_texture_basisu", "EXT_texture_webp", "MSFT_texture_dds"};

}  // namespace

TextureLibrary::TextureLibrary(const Field& document, Model& model)
    : document_(document), model_(model), entryOf_(model.carried.images.size(), -1)
{}

int TextureLibrary::Find(const Field& reference)
{
    const int texture = reference.IndexBelow(document_.SizeOf("textures"));
    const int image = ImageOf(document_.Member("textures").Element(static_cast<std::size_t>(texture)));
    if (image < 0)
        return -1;
    int& entry = entryOf_[static_cast<std::size_t>(image)];
    if (entry < 0)
        entry = Add(model_.carried.images[static_cast<std::size_t>(image)]);
    return entry;
}

int TextureLibrary::ImageOf(const Field& texture) const
{
    int image = texture.IndexOrNone("source", entryOf_.size());
    for (const std::string_view format : kFormats)
    {
        const std::optional<Field> extension = image < 0 ? texture.Extension(format) : std::nullopt;
        if (extension)
            image = extension->IndexOrNone("source", entryOf_.size());
    }
    return image;
}

int TextureLibrary::Add(const CarriedImage& image)
{
    const std::string reference = image.embedded >= 0 ? fmt::format("*{}", image.embedded) : image.file.string();
    if (reference.empty())
        return -1;
    const int entry = model_.scene->AddTextureToLibrary(reference, true);
    model_.textures.spelling.emplace(Importing::At(model_.scene->TextureLibrary, entry), reference);
    return entry;
}

}  // namespace Sceneprep::GltfImport

#include <sceneprep/import/gltf/Images.h>

#include <sceneprep/import/gltf/DataUri.h>
#include <sceneprep/model/Uri.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace Sceneprep::GltfImport
{

namespace
{

struct ImageType
{
    std::string_view mediaType;
    const char* hint;
};

constexpr std::array<ImageType, 5> kImageTypes = {{{"image/png", "png"},
                                                   {"image/jpeg", "jpg"},
                                                   {"image/webp", "webp"},
                                                   {"image/ktx2", "ktx2"},
                                                   {"image/vnd-ms.dds", "dds"}}};

std::string HintFor(std::string_view mediaType)
{
    for (const ImageType& type : kImageTypes)
    {
        if (type.mediaType == mediaType)
            return type.hint;
    }
    return {};
}

int Embed(std::vector<unsigned char> bytes, const std::string& mediaType, Textures& textures)
{
    textures.embedded.push_back({.formatHint = HintFor(mediaType), .content = std::move(bytes)});
    return static_cast<int>(textures.embedded.size() - 1);
}

CarriedImage ReadImage(const Field& image, BufferViews& views, Textures& textures)
{
    CarriedImage carried;
    carried.object = image.Get();
    Take(carried.object, "uri");
    Take(carried.object, "bufferView");
    const std::string mediaType = image.TextOr("mimeType", "");
    const int view = image.IndexOrNone("bufferView", views.Count());
    if (view >= 0)
    {
        const std::span<const std::uint8_t> bytes = views.Get(static_cast<std::size_t>(view)).bytes;
        carried.embedded = Embed({bytes.begin(), bytes.end()}, mediaType, textures);
        return carried;
    }
    const std::optional<Field> uri = image.Find("uri");
    if (!uri)
        return carried;  // of an extension
    if (!IsDataUri(uri->Text()))
    {
        carried.file = DecodeUri(uri->Text());
        return carried;
    }
    std::optional<DataUri> data = DecodeDataUri(uri->Text());
    if (!data)
        uri->Fail("is not a data URI in base64");
    if (mediaType.empty() && !data->mediaType.empty())
        carried.object["mimeType"] = data->mediaType;
    carried.embedded = Embed(std::move(data->bytes), mediaType.empty() ? data->mediaType : mediaType, textures);
    return carried;
}

}  // namespace

void ReadImages(const Field& document, BufferViews& views, Model& model)
{
    const std::size_t count = document.SizeOf("images");
    for (std::size_t i = 0; i < count; ++i)
        model.carried.images.push_back(ReadImage(document.Member("images").Element(i), views, model.textures));
}

}  // namespace Sceneprep::GltfImport

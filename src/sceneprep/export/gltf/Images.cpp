#include <sceneprep/export/gltf/Images.h>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/model/Uri.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

namespace fs = std::filesystem;

std::vector<unsigned char> FirstBytes(std::istream& in)
{
    std::array<char, 16> bytes = {};
    in.read(bytes.data(), bytes.size());
    return {bytes.begin(), bytes.begin() + in.gcount()};
}

std::string WithSlashes(std::string reference)
{
    std::replace(reference.begin(), reference.end(), '\\', '/');
    return reference;
}

/// Returns the regular file that a reference means: as it is spelled, else with backslashes as separators.
std::optional<fs::path> FindFile(const std::string& reference, const fs::path& folder)
{
    for (const std::string& spelling : {reference, WithSlashes(reference)})
    {
        std::error_code error;
        const fs::path file = (folder / spelling).lexically_normal();
        if (fs::is_regular_file(file, error))
            return file;
    }
    return std::nullopt;
}

bool IsBelow(const fs::path& file, const fs::path& folder)
{
    const fs::path relative = fs::absolute(file).lexically_normal().lexically_relative(
        (fs::absolute(folder) / "").lexically_normal().parent_path());
    return !relative.empty() && *relative.begin() != "..";
}

bool IsOnTheNet(const std::string& reference) { return reference.find("://") != std::string::npos; }

std::string LowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// Returns a name that a URI does not have to encode and that no file system refuses.
std::string PlainName(std::string name)
{
    std::replace_if(
        name.begin(), name.end(),
        [](unsigned char c) { return std::isalnum(c) == 0 && c != '.' && c != '-' && c != '_'; }, '_');
    return name.empty() || name.front() == '.' ? "image" + name : name;
}

Json WithUri(Json object, const std::string& path)
{
    object["uri"] = EncodeUri(path);
    return object;
}

}  // namespace

WrittenImage ImageWriter::AddEmbedded(const EmbeddedTexture& image, Json object)
{
    if (options_.images == ImageUse::Omitted)
        return {};
    const std::string key = fmt::format("{}|{}", static_cast<const void*>(&image), TextOf(object));
    const auto [found, isNew] = written_.emplace(key, WrittenImage());
    if (isNew)
        found->second = WriteEmbedded(image, std::move(object));
    return found->second;
}

WrittenImage ImageWriter::AddFile(const std::string& reference, Json object, const std::string& original)
{
    if (options_.images == ImageUse::Omitted)
        return {};
    const std::string key = fmt::format("{}|{}", reference, TextOf(object));
    const auto [found, isNew] = written_.emplace(key, WrittenImage());
    if (isNew)
        found->second = WriteFile(reference, std::move(object), original);
    return found->second;
}

WrittenImage ImageWriter::WriteEmbedded(const EmbeddedTexture& image, Json object)
{
    const ImageKind* kind = ImageKindOf(image.content);
    if (kind == nullptr && !object.contains("mimeType"))
    {
        dropped_.insert(image.fileName.empty() ? "an embedded image" : image.fileName);
        return {};
    }
    if (kind != nullptr)
        object["mimeType"] = kind->mimeType;
    if (options_.isBinary)
        object["bufferView"] = buffers_.AddView(image.content.data(), image.content.size(), Usage::Other);
    else
    {
        const std::string name = CompanionName(options_.stem, companions_.size(), image);
        fileNames_.insert(LowerCase(name));
        companions_.push_back({name, &image.content});
        object["uri"] = EncodeUri(name);
    }
    return {Append(document_.images, std::move(object)), kind};
}

WrittenImage ImageWriter::WriteFile(const std::string& reference, Json object, const std::string& original)
{
    const auto writeReference = [&](const std::string& path, const ImageKind* kind) {
        return WrittenImage{Append(document_.images, WithUri(std::move(object), path)), kind};
    };
    const auto keepReference = [&](const ImageKind* kind) { return writeReference(reference, kind); };
    if (IsOnTheNet(reference))
        return keepReference(nullptr);
    const std::optional<fs::path> file = FindFile(reference, options_.folder);
    if (!file)
    {
        missing_.insert((options_.folder / reference).lexically_normal().string());
        return writeReference(original.empty() || options_.images == ImageUse::External ? reference : original,
                              nullptr);
    }
    std::ifstream in(*file, std::ios::binary);
    const ImageKind* kind = ImageKindOf(FirstBytes(in));
    if (kind == nullptr)
        unknown_.insert(reference);
    if (kind == nullptr || options_.images == ImageUse::External)
        return keepReference(kind);
    if (options_.isBinary)
        return Embed(*file, kind, std::move(object));
    if (IsBelow(*file, options_.folder))
        return keepReference(kind);
    const std::string name = CopyNameFor(*file);
    copies_.push_back({name, *file});
    return {Append(document_.images, WithUri(std::move(object), name)), kind};
}

WrittenImage ImageWriter::Embed(const fs::path& file, const ImageKind* kind, Json object)
{
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    object["mimeType"] = kind->mimeType;
    object["bufferView"] = buffers_.AddView(bytes.data(), bytes.size(), Usage::Other);
    return {Append(document_.images, std::move(object)), kind};
}

std::string ImageWriter::CopyNameFor(const fs::path& file)
{
    const std::string stem = PlainName(file.stem().string());
    const std::string extension = PlainName("x" + file.extension().string()).substr(1);
    std::string name = stem + extension;
    for (int number = 2; !fileNames_.insert(LowerCase(name)).second; ++number)
        name = fmt::format("{}_{}{}", stem, number, extension);
    return name;
}

void ImageWriter::AddNotes(Notes& notes) const
{
    for (const std::string& file : missing_)
        notes.Add(fmt::format("the image file '{}' is missing; the reference to it is kept", file));
    for (const std::string& file : unknown_)
        notes.Add(fmt::format("the file '{}' has an unknown image type; the reference to it is kept", file));
    if (!dropped_.empty())
        notes.AddLoss("images", fmt::format("dropped images that are not PNG, JPEG, WebP, AVIF, KTX2 or DDS: {}",
                                            fmt::join(dropped_, ", ")));
}

}  // namespace Sceneprep::Gltf

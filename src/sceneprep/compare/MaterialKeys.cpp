// The writer of glTF makes the material in a document that is thrown away; so there is one place that says how
// materials of other formats become glTF. References to textures are then replaced by what the textures are.

#include <sceneprep/compare/MaterialKeys.h>

#include <fmt/format.h>
#include <sceneprep/compare/CanonicalJson.h>
#include <sceneprep/compare/ContentDigest.h>
#include <sceneprep/export/gltf/MaterialWriter.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/model/Uri.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;
using Gltf::EntryAt;

/// Companions of the throw-away document; no image file of a model has this name.
constexpr const char* kStem = "?embedded";

fs::path FolderOf(const Model& model)
{
    return model.file.empty() ? fs::path() : fs::absolute(model.file).parent_path();
}

}  // namespace

class MaterialKeys::Converter
{
public:
    Converter(const Model& model, std::vector<fs::path> folders)
        : options_{.isBinary = false, .images = Gltf::ImageUse::External, .stem = kStem, .folder = FolderOf(model)},
          folders_(std::move(folders)), buffers_(document_), images_(options_, buffers_, document_),
          textures_(model, images_, document_), materials_(model, textures_, document_)
    {
        folders_.insert(folders_.begin(), options_.folder);
    }

    const MaterialKey& Find(Importing::Surface& surface, std::size_t texCoordSets)
    {
        const Gltf::PrimitiveLook& look = materials_.Find(surface, texCoordSets);
        const auto [found, isNew] = keys_.try_emplace(&look);
        if (isNew)
            found->second = KeyOf(look);
        return found->second;
    }

    int FindNumber(Importing::Surface& surface, std::size_t texCoordSets)
    {
        return materials_.Find(surface, texCoordSets).material;
    }

    const std::set<fs::path>& Files() const { return files_; }

private:
    MaterialKey KeyOf(const Gltf::PrimitiveLook& look)
    {
        MaterialKey key;
        key.number = look.material;
        if (look.material >= 0)
            key.name = EntryAt(document_.materials, look.material).value("name", std::string());
        key.text = MaterialText(look.material) + VariantsText(look.primitive);
        return key;
    }

    std::string MaterialText(int material)
    {
        if (material < 0)
            return CanonicalText(Json::object());
        Json object = EntryAt(document_.materials, material);
        ResolveTextures(object);
        return CanonicalText(object);
    }

    /// Variants replace the material of a primitive.
    std::string VariantsText(const Json& primitive)
    {
        constexpr const char* kVariants = "KHR_materials_variants";
        if (!primitive.contains("extensions") || !primitive["extensions"].contains(kVariants))
            return {};
        std::string text;
        for (const Json& mapping : primitive["extensions"][kVariants]["mappings"])
        {
            if (mapping.contains("material") && mapping.contains("variants"))
                text += fmt::format("|{}:{}", mapping["variants"].dump(), MaterialText(mapping["material"].get<int>()));
        }
        return text;
    }

    /// Replaces the indices of textures by texts that say what the textures are.
    void ResolveTextures(Json& object)
    {
        if (!object.is_structured())
            return;
        for (auto& [key, value] : object.items())
        {
            const bool isReference = (key == "texture" || key.ends_with("Texture")) && value.is_object() &&
                                     value.contains("index") && value["index"].is_number_integer();
            if (isReference)
                value["index"] = TextureText(value["index"].get<int>());
            ResolveTextures(value);
        }
    }

    std::string TextureText(int texture)
    {
        const Json& object = EntryAt(document_.textures, texture);
        std::string text = object.contains("sampler")
                               ? CanonicalText(EntryAt(document_.samplers, object["sampler"].get<int>()))
                               : std::string("{}");
        if (object.contains("source"))
            text += "|" + ImageText(object["source"].get<int>());
        if (!object.contains("extensions"))
            return text;
        for (const auto& [name, extension] : object["extensions"].items())
        {
            if (extension.is_object() && extension.contains("source"))
                text += "|" + ImageText(extension["source"].get<int>());
        }
        return text;
    }

    const std::string& ImageText(int image)
    {
        const auto [found, isNew] = imageTexts_.try_emplace(image);
        if (isNew)
            found->second = DescribeImage(EntryAt(document_.images, image).value("uri", std::string()));
        return found->second;
    }

    std::string DescribeImage(const std::string& uri)
    {
        const std::string reference = DecodeUri(uri);
        for (const CompanionFile& companion : images_.Companions())
        {
            if (companion.name == reference)
                return ContentDigest(companion.content->data(), companion.content->size());
        }
        const std::optional<fs::path> file = FindImageFile(reference);
        if (!file)
            return "file " + FileNameOf(reference);
        files_.insert(*file);
        std::ifstream in(*file, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        return ContentDigest(bytes.data(), bytes.size());
    }

    std::optional<fs::path> FindImageFile(const std::string& reference) const
    {
        std::string withSlashes = reference;
        std::replace(withSlashes.begin(), withSlashes.end(), '\\', '/');
        for (const fs::path& folder : folders_)
        {
            for (const std::string& spelling : {reference, withSlashes})
            {
                std::error_code error;
                const fs::path file = (folder / spelling).lexically_normal();
                if (fs::is_regular_file(file, error))
                    return file;
            }
        }
        return std::nullopt;
    }

    Gltf::WriteOptions options_;
    std::vector<fs::path> folders_;
    Gltf::Document document_;
    Gltf::Buffers buffers_;
    Gltf::ImageWriter images_;
    Gltf::TextureWriter textures_;
    Gltf::MaterialWriter materials_;
    std::unordered_map<const Gltf::PrimitiveLook*, MaterialKey> keys_;
    std::unordered_map<int, std::string> imageTexts_;
    std::set<fs::path> files_;
};

MaterialKeys::MaterialKeys(const Model& model, std::vector<fs::path> folders)
    : converter_(std::make_unique<Converter>(model, std::move(folders)))
{}

MaterialKeys::~MaterialKeys() = default;

const MaterialKey& MaterialKeys::Find(Importing::Surface& surface, std::size_t texCoordSets)
{
    return converter_->Find(surface, texCoordSets);
}

int MaterialKeys::FindNumber(Importing::Surface& surface, std::size_t texCoordSets)
{
    return converter_->FindNumber(surface, texCoordSets);
}

std::vector<fs::path> MaterialKeys::ImageFiles() const
{
    return {converter_->Files().begin(), converter_->Files().end()};
}

}  // namespace Sceneprep

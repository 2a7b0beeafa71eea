#include <sceneprep/import/gltf/Extensions.h>

#include <fmt/format.h>
#include <sceneprep/model/ExtensionReferences.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace Sceneprep::GltfImport
{

namespace
{

/// Extensions of geometry that are read, or do not change it.
constexpr std::array<std::string_view, 8> kKnown = {
    "KHR_draco_mesh_compression", "KHR_meshopt_compression", "EXT_meshopt_compression", "KHR_materials_variants",
    "EXT_mesh_features",          "EXT_structural_metadata", "EXT_mesh_manifold",       "FB_ngon_encoding"};

using Names = std::unordered_set<std::string>;

Names UnknownRequired(const Field& document)
{
    Names unknown;
    for (std::size_t i = 0; i < document.SizeOf("extensionsRequired"); ++i)
    {
        const std::string& name = document.Member("extensionsRequired").Element(i).Text();
        if (std::find(kKnown.begin(), kKnown.end(), name) == kKnown.end())
            unknown.insert(name);
    }
    return unknown;
}

void CheckObject(const Field& object, const Names& unknown)
{
    const std::optional<Field> extensions = object.Find("extensions");
    if (!extensions)
        return;
    for (const auto& [name, value] : extensions->Members())
    {
        if (unknown.count(name) > 0)
            object.Fail(fmt::format("the required extension {} is not supported", name));
    }
}

void CheckList(const Field& owner, std::string_view list, const Names& unknown)
{
    for (std::size_t i = 0; i < owner.SizeOf(list); ++i)
        CheckObject(owner.Member(list).Element(i), unknown);
}

}  // namespace

void CheckRequired(const Field& document)
{
    const Names unknown = UnknownRequired(document);
    if (unknown.empty())
        return;
    for (const std::string_view list : {"buffers", "bufferViews", "accessors", "meshes"})
        CheckList(document, list, unknown);
    for (std::size_t i = 0; i < document.SizeOf("meshes"); ++i)
        CheckList(document.Member("meshes").Element(i), "primitives", unknown);
}

void CarryDocument(const Field& document, BufferViews& views, Carried& carried)
{
    carried.asset = document.Member("asset").Get();
    for (const char* key : {"version", "minVersion", "generator"})
        Take(carried.asset, key);
    for (std::size_t i = 0; i < document.SizeOf("extensionsRequired"); ++i)
        carried.required.push_back(document.Member("extensionsRequired").Element(i).Text());
    if (const std::optional<Field> extras = document.Find("extras"))
        carried.extras = extras->Get();
    const std::optional<Field> extensions = document.Find("extensions");
    if (!extensions || !extensions->Get().is_object())
        return;
    carried.extensions = extensions->Get();
    carried.extensions.erase("KHR_lights_punctual");
    std::map<int, int> blobOf;
    VisitBufferViewReferences(carried.extensions, [&](Json& reference) {
        const int view = Field(reference, extensions->Where()).IndexBelow(views.Count());
        const auto [known, isNew] = blobOf.emplace(view, static_cast<int>(carried.blobs.size()));
        if (isNew)
        {
            const std::span<const std::uint8_t> bytes = views.Get(static_cast<std::size_t>(view)).bytes;
            carried.blobs.emplace_back(bytes.begin(), bytes.end());
        }
        reference = known->second;
    });
}

}  // namespace Sceneprep::GltfImport

#include <sceneprep/export/gltf/MaterialWriter.h>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/MaterialKey.h>
#include <sceneprep/model/JsonReferences.h>

#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;

bool IsOfGltf(const CarriedMaterial* carried)
{
    return carried != nullptr && carried->material != CarriedMaterial::kNotCarried;
}

std::string NameIn(const Json& object)
{
    return object.contains("name") && object["name"].is_string() ? object["name"].get<std::string>() : std::string();
}

}  // namespace

const PrimitiveLook& MaterialWriter::Find(Importing::Surface& surface, std::size_t texCoordSets)
{
    const CarriedMaterial* carried = CarriedOf(surface);
    const std::string key = IsOfGltf(carried) ? fmt::format("glTF|{}", surface.GetMaterialID())
                                              : fmt::format("{}|{}", Pipeline::MaterialKey(surface), texCoordSets);
    const auto found = looks_.find(key);
    if (found != looks_.end())
        return found->second;
    return looks_.emplace(key, LookOf(surface, carried, texCoordSets)).first->second;
}

PrimitiveLook MaterialWriter::LookOf(Importing::Surface& surface, const CarriedMaterial* carried,
                                     std::size_t texCoordSets)
{
    if (!IsOfGltf(carried))
    {
        Json material = converter_.Convert(surface, texCoordSets);
        if (carried != nullptr)
            material.merge_patch(carried->patch);
        return {AppendOnce(std::move(material), true), Json::object()};
    }
    PrimitiveLook look;
    if (carried->material >= 0)
        look.material =
            WriteCarried(carried->material, At(model_.scene->MaterialLibrary, surface.GetMaterialID()).GetName());
    look.primitive = ReindexPrimitive(carried->primitive);
    return look;
}

const CarriedMaterial* MaterialWriter::CarriedOf(const Importing::Surface& surface) const
{
    const int material = surface.GetMaterialID();
    const std::vector<CarriedMaterial>& all = model_.carried.materialOf;
    return Importing::IsValidIndex(material, all.size()) ? &At(all, material) : nullptr;
}

int MaterialWriter::WriteCarried(int key, const std::string& name)
{
    const Json& source = At(model_.carried.materials, key);
    const std::string oldName = NameIn(source);
    const bool isRenamed = !name.empty() && !oldName.empty() && name != oldName;
    const auto [found, isNew] = carried_.emplace(std::pair(key, isRenamed ? name : oldName), -1);
    if (!isNew)
        return found->second;
    Json material = source;
    if (isRenamed)
        material["name"] = name;
    textures_.Reindex(material);
    return found->second = AppendOnce(std::move(material), !animated_.contains(key));
}

int MaterialWriter::FindCarried(int key) const
{
    const auto found = carried_.lower_bound({key, ""});
    return found == carried_.end() || found->first.first != key ? -1 : found->second;
}

/// Makes references to materials and textures refer to those of the document.
Json MaterialWriter::ReindexPrimitive(Json primitive)
{
    textures_.Reindex(primitive);
    RenumberVariants(
        primitive, [this](int material) { return WriteCarried(material); }, [](int variant) { return variant; });
    return primitive;
}

int MaterialWriter::AppendOnce(Json material, bool mayShare)
{
    if (!mayShare)
        return Append(document_.materials, std::move(material));
    const auto [found, isNew] = known_.emplace(TextOf(material), static_cast<int>(document_.materials.size()));
    if (isNew)
        document_.materials.push_back(std::move(material));
    return found->second;
}

void MaterialWriter::AddNotes(Notes& notes) const
{
    if (!converter_.DroppedLayers().empty())
        notes.AddLoss("texture-layers", fmt::format("dropped texture layers that glTF has no place for, or that the "
                                                    "mesh has no texture coordinates for: {}",
                                                    fmt::join(converter_.DroppedLayers(), ", ")));
}

}  // namespace Sceneprep::Gltf

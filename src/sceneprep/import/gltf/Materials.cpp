#include <sceneprep/import/gltf/Materials.h>

#include <sceneprep/import/gltf/EqualMaterials.h>
#include <sceneprep/import/gltf/SurfaceLayers.h>

namespace Sceneprep::GltfImport
{

Materials::Materials(const Field& document, Model& model)
    : document_(document), model_(model), textures_(document, model), first_(FindEqualMaterials(document))
{}

void Materials::Apply(const Field& primitive, const Json& extras, Importing::Surface& surface)
{
    int material = primitive.IndexOrNone("material", first_.size());
    if (material >= 0)
        material = first_[static_cast<std::size_t>(material)];
    const std::pair key(material, extras.empty() ? std::string() : extras.dump());
    auto found = added_.find(key);
    if (found == added_.end())
        found = added_.emplace(key, Add(material, extras)).first;
    surface.SetMaterialID(found->second.material);
    surface.MapList = found->second.layers;
}

Materials::Added Materials::Add(int material, const Json& extras)
{
    CarriedMaterial& carried = model_.carried.materialOf.emplace_back();
    carried.material = material;
    carried.primitive = extras;
    if (material < 0)
    {
        static const Json kDefaults = Json::object();
        Importing::Material defaults = ConvertMaterial(Field(kDefaults, {}));
        defaults.SetName(Importing::Material().GetName());
        return {model_.scene->AddMaterialToLibrary(defaults, false), {}};
    }
    const Field source = document_.Member("materials").Element(static_cast<std::size_t>(material));
    Importing::Material converted = ConvertMaterial(source);
    return {model_.scene->AddMaterialToLibrary(converted, false), ConvertLayers(source, textures_)};
}

}  // namespace Sceneprep::GltfImport

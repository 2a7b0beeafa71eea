#include <sceneprep/export/CarriedLosses.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>

namespace Sceneprep
{

namespace
{

/// A property of a glTF material that the container's material does not have.
struct MaterialProperty
{
    const char* loss;
    const char* text;
    bool (*isIn)(const Json& material, bool isFromGltf);
};

bool HasExtension(const Json& material, const char* name)
{
    const auto extensions = material.find("extensions");
    return extensions != material.end() && extensions->contains(name);
}

bool IsCutOut(const Json& material, bool) { return material.value("alphaMode", "OPAQUE") == "MASK"; }

bool IsDoubleSided(const Json& material, bool) { return material.value("doubleSided", false); }

bool IsUnlit(const Json& material, bool) { return HasExtension(material, "KHR_materials_unlit"); }

/// A glTF material is metallic by default.
bool IsMetallic(const Json& material, bool isFromGltf)
{
    const double otherwise = isFromGltf ? 1 : 0;
    const auto pbr = material.find("pbrMetallicRoughness");
    return (pbr == material.end() ? otherwise : pbr->value("metallicFactor", otherwise)) > 0;
}

/// The container has emission above 1 and a specular colour, so these are not lost.
bool HasLayers(const Json& material, bool)
{
    const auto extensions = material.find("extensions");
    if (extensions == material.end())
        return false;
    const auto items = extensions->items();
    return std::any_of(items.begin(), items.end(), [](const auto& extension) {
        return extension.key() != "KHR_materials_unlit" && extension.key() != "KHR_materials_emissive_strength" &&
               extension.key() != "KHR_materials_specular";
    });
}

constexpr MaterialProperty kMaterialProperties[] = {
    {"alpha-cutouts", "alpha cut-outs of materials are dropped", IsCutOut},
    {"double-sided", "double-sided materials become one-sided", IsDoubleSided},
    {"metalness", "metallic materials become non-metallic", IsMetallic},
    {"unlit", "unlit materials become lit", IsUnlit},
    {"material-layers", "materials lose layers such as clear coat, sheen and transmission", HasLayers}};

void AddMaterialLosses(const Carried& carried, Notes& notes)
{
    for (const MaterialProperty& property : kMaterialProperties)
    {
        const auto count =
            std::count_if(carried.materialOf.begin(), carried.materialOf.end(), [&](const CarriedMaterial& entry) {
                if (entry.material < 0)
                    return property.isIn(entry.patch, false);
                return property.isIn(carried.materials[static_cast<std::size_t>(entry.material)], true);
            });
        notes.AddLoss(property.loss, property.text, static_cast<std::size_t>(count));
    }
}

/// "COLOR_1" and "COLOR_0" are one kind; attributes whose name begins with an underscore keep it.
std::string AttributeFamily(const std::string& attribute)
{
    return attribute.starts_with("COLOR_") ? "COLOR" : attribute;
}

void AddAttributeLosses(const Pipeline::SceneSupplement& supplement, Notes& notes)
{
    std::map<std::string, std::size_t> meshes;
    for (const Pipeline::VertexLayout& layout : supplement.layouts)
    {
        for (const Pipeline::VertexAttribute& attribute : layout.attributes)
            ++meshes[AttributeFamily(attribute.name)];
    }
    for (const auto& [kind, count] : meshes)
    {
        if (kind == "COLOR")
            notes.AddLoss("vertex-colours", "vertex colours are dropped, in meshes", count);
        else if (kind == "TANGENT")
            notes.AddLoss("tangents", "tangents are dropped, in meshes", count);
        else
            notes.AddLoss("attribute " + kind, "the vertex attribute " + kind + " is dropped, in meshes", count);
    }
}

void AddPrimitiveLosses(const Carried& carried, Notes& notes)
{
    std::size_t morphed = 0;
    std::size_t pointsAndLines = 0;
    for (const CarriedMesh& mesh : carried.meshOf)
    {
        if (!mesh.primitive)
            continue;
        morphed += mesh.primitive->targets.empty() ? 0 : 1;
        pointsAndLines += mesh.primitive->mode < 4 ? 1 : 0;
    }
    notes.AddLoss("morph-targets", "morph targets are dropped, in meshes", morphed);
    notes.AddLoss("points-and-lines", "meshes of points or lines are dropped", pointsAndLines);
}

bool IsOrthographic(const Carried& carried, const CarriedObject& camera)
{
    return camera.object >= 0 &&
           carried.cameras[static_cast<std::size_t>(camera.object)].value("type", "") == "orthographic";
}

void AddObjectLosses(const Carried& carried, Notes& notes)
{
    const auto flat = std::count_if(carried.cameraOf.begin(), carried.cameraOf.end(),
                                    [&](const CarriedObject& camera) { return IsOrthographic(carried, camera); });
    notes.AddLoss("orthographic-cameras", "orthographic cameras become perspective ones",
                  static_cast<std::size_t>(flat));
    if (carried.clips.size() > 1)
        notes.AddLoss("clips", "each node keeps the first animation that moves it; clips", carried.clips.size());
    const auto withExtras = std::count_if(carried.nodes.begin(), carried.nodes.end(), [](const CarriedNode& node) {
        return node.object.contains("extras") || node.object.contains("extensions");
    });
    notes.AddLoss("node-extras", "extras and extensions of nodes are dropped", static_cast<std::size_t>(withExtras));
}

}  // namespace

void AddCarriedLosses(const Model& model, Notes& notes)
{
    AddMaterialLosses(model.carried, notes);
    AddAttributeLosses(model.supplement, notes);
    AddPrimitiveLosses(model.carried, notes);
    AddObjectLosses(model.carried, notes);
}

}  // namespace Sceneprep

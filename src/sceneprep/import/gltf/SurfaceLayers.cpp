#include <sceneprep/import/gltf/SurfaceLayers.h>

#include <sceneprep/assimp/Roughness.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace Sceneprep::GltfImport
{

namespace
{

using Importing::Map;
using Importing::Material;

constexpr std::string_view kSpecularGlossiness = "KHR_materials_pbrSpecularGlossiness";
constexpr std::string_view kMetallicRoughness = "pbrMetallicRoughness";

D3DXCOLOR ColorOf(const std::array<double, 3>& color)
{
    return {static_cast<float>(color[0]), static_cast<float>(color[1]), static_cast<float>(color[2]), 1};
}

void SetBase(const std::array<double, 4>& base, const std::string& alphaMode, Material& material)
{
    material.SetDiffuse(ColorOf({base[0], base[1], base[2]}));
    material.SetOpacity(alphaMode == "BLEND" ? static_cast<float>(base[3]) : 1.0F);
}

/// A texture slot of a material: the object that has it (empty for the material itself), its key, and the layer.
struct Slot
{
    std::string_view owner;
    bool isExtension;
    std::string_view key;
    const char* layer;
    std::string_view amount;  ///< the member of the texture reference with its strength
};

constexpr std::array<Slot, 13> kSlots = {{
    {kSpecularGlossiness, true, "diffuseTexture", "diffuse", ""},
    {kMetallicRoughness, false, "baseColorTexture", "diffuse", ""},
    {kSpecularGlossiness, true, "specularGlossinessTexture", "specular", ""},
    {"", false, "emissiveTexture", "emissive", ""},
    {"", false, "normalTexture", "normal", "scale"},
    {"", false, "occlusionTexture", "lightmap", "strength"},
    {kMetallicRoughness, false, "metallicRoughnessTexture", "metallic-roughness", ""},
    {"KHR_materials_sheen", true, "sheenColorTexture", "sheen", ""},
    {"KHR_materials_sheen", true, "sheenRoughnessTexture", "sheen", ""},
    {"KHR_materials_clearcoat", true, "clearcoatTexture", "clearcoat", ""},
    {"KHR_materials_clearcoat", true, "clearcoatRoughnessTexture", "clearcoat", ""},
    {"KHR_materials_clearcoat", true, "clearcoatNormalTexture", "clearcoat", ""},
    {"KHR_materials_transmission", true, "transmissionTexture", "transmission", ""},
}};

std::optional<Field> FindSlot(const Field& material, const Slot& slot)
{
    if (slot.owner.empty())
        return material.Find(slot.key);
    const std::optional<Field> owner = slot.isExtension ? material.Extension(slot.owner) : material.Find(slot.owner);
    return owner ? owner->Find(slot.key) : std::nullopt;
}

/// The format's transform, u' = sx cos r u + sy sin r v + x and v' = -sx sin r u + sy cos r v + y, with v replaced by
/// 1 - v on both sides.
D3DXMATRIX TextureMatrix(const Field& transform)
{
    std::array<double, 2> offset = {0, 0};
    std::array<double, 2> scale = {1, 1};
    transform.NumbersIfAny("offset", offset);
    transform.NumbersIfAny("scale", scale);
    const double rotation = transform.NumberOr("rotation", 0);
    const double c = std::cos(rotation);
    const double s = std::sin(rotation);
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    matrix._11 = static_cast<float>(scale[0] * c);
    matrix._12 = static_cast<float>(scale[0] * s);
    matrix._21 = static_cast<float>(-scale[1] * s);
    matrix._22 = static_cast<float>(scale[1] * c);
    matrix._41 = static_cast<float>(scale[1] * s + offset[0]);
    matrix._42 = static_cast<float>(1 - scale[1] * c - offset[1]);
    return matrix;
}

Map ConvertLayer(const Field& reference, const Slot& slot, int texture)
{
    std::size_t set = reference.WholeOr("texCoord", 0);
    Map map;
    map.SetType(slot.layer);
    map.SetTextureID(texture);
    if (!slot.amount.empty())
        map.SetAmount(static_cast<float>(reference.NumberOr(slot.amount, 1)));
    if (const std::optional<Field> transform = reference.Extension("KHR_texture_transform"))
    {
        set = transform->WholeOr("texCoord", set);
        map.SetMatrix(TextureMatrix(*transform));
    }
    if (set > std::numeric_limits<std::uint32_t>::max())
        reference.Fail("texCoord is too large");
    map.SetUVSetIndex(static_cast<std::uint32_t>(set));
    return map;
}

}  // namespace

Material ConvertMaterial(const Field& source)
{
    Material material;
    material.SetName(source.TextOr("name", ""));
    const std::string alphaMode = source.TextOr("alphaMode", "OPAQUE");
    std::array<double, 4> base = {1, 1, 1, 1};
    double roughness = 1;
    if (const std::optional<Field> metallicRoughness = source.Find(kMetallicRoughness))
    {
        metallicRoughness->NumbersIfAny("baseColorFactor", base);
        roughness = metallicRoughness->NumberOr("roughnessFactor", 1);
    }
    if (const std::optional<Field> specularGlossiness = source.Extension(kSpecularGlossiness))
    {
        std::array<double, 3> specular = {1, 1, 1};
        base = {1, 1, 1, 1};
        specularGlossiness->NumbersIfAny("diffuseFactor", base);
        specularGlossiness->NumbersIfAny("specularFactor", specular);
        roughness = 1 - specularGlossiness->NumberOr("glossinessFactor", 1);
        material.SetSpecular(ColorOf(specular));
    }
    SetBase(base, alphaMode, material);
    material.SetSpecularPower(PowerOf(static_cast<float>(roughness)));
    std::array<double, 3> emissive = {0, 0, 0};
    source.NumbersIfAny("emissiveFactor", emissive);
    material.SetEmissive(ColorOf(emissive));
    return material;
}

std::vector<Map> ConvertLayers(const Field& material, TextureLibrary& textures)
{
    std::vector<Map> layers;
    bool hasDiffuse = false;
    for (const Slot& slot : kSlots)
    {
        const std::optional<Field> reference = FindSlot(material, slot);
        const bool isDiffuse = std::string_view(slot.layer) == "diffuse";
        if (!reference || (isDiffuse && hasDiffuse))
            continue;
        const int texture = textures.Find(reference->Member("index"));
        if (texture < 0)
            continue;
        hasDiffuse = hasDiffuse || isDiffuse;
        layers.push_back(ConvertLayer(*reference, slot, texture));
    }
    return layers;
}

}  // namespace Sceneprep::GltfImport

#include <sceneprep/report/SimilarMaterials.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <importing/base/ForReading.h>
#include <pipeline/scene/MaterialKey.h>
#include <sceneprep/report/SimilarRecords.h>

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace Sceneprep
{

namespace
{

using Importing::At;
using Importing::ForReading;

constexpr std::size_t kMostValues = 3;

/// Values that are numbers begin with this character, so that other values can be recognised.
constexpr char kNumber = '#';

std::string NumberText(double number) { return fmt::format("{}{:.6g}", kNumber, number); }

/// Adds the values of a JSON object, named by their path.
void AddValues(const Json& json, Properties& properties)
{
    const Json flat = json.flatten();
    for (const auto& [path, value] : flat.items())
    {
        if (value.is_null() || value.empty())  // an empty object
            continue;
        // References to other objects are not numbers to compare.
        const bool isReference = path.ends_with("/index") || path.ends_with("/texCoord");
        const std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
        properties.push_back({path, value.is_number() && !isReference ? NumberText(value.get<double>()) : text});
    }
}

void AddColor(const std::string& name, const D3DXCOLOR& color, Properties& properties)
{
    const std::pair<const char*, float> components[] = {
        {"/0", color.r}, {"/1", color.g}, {"/2", color.b}, {"/3", color.a}};
    for (const auto& [index, value] : components)
        properties.push_back({name + index, NumberText(static_cast<double>(value))});
}

void AddContainerValues(const Importing::Material& record, const std::string& layers, Properties& properties)
{
    Importing::Material& material = ForReading(record);
    AddColor("/diffuse", material.GetDiffuse(), properties);
    AddColor("/emissive", material.GetEmissive(), properties);
    AddColor("/specular", material.GetSpecular(), properties);
    properties.push_back({"/specularPower", NumberText(static_cast<double>(material.GetSpecularPower()))});
    properties.push_back({"/opacity", NumberText(static_cast<double>(material.GetOpacity()))});
    properties.push_back({"/layers", layers});
}

Properties ValuesOf(const Model& model, int material, const std::string& layers)
{
    Properties properties;
    const auto position = static_cast<std::size_t>(material);
    const bool isCarried = position < model.carried.materialOf.size();
    const int source = isCarried ? model.carried.materialOf[position].material : CarriedMaterial::kNotCarried;
    if (isCarried && !model.carried.materialOf[position].primitive.empty())
        properties.push_back({"/primitive", model.carried.materialOf[position].primitive.dump(
                                                -1, ' ', false, Json::error_handler_t::replace)});
    if (source >= 0)
    {
        Json object = At(model.carried.materials, source);
        object.erase("name");
        object.erase("extras");
        AddValues(object, properties);
        return properties;
    }
    AddContainerValues(At(model.scene->MaterialLibrary, material), layers, properties);
    if (isCarried)
        AddValues(model.carried.materialOf[position].patch, properties);
    return properties;
}

/// Returns for each material in use the texture layers of its first surface.
std::map<int, std::string> LayersByMaterial(const Model& model)
{
    std::map<int, std::string> layers;
    for (const Importing::Surface& surface : model.scene->SurfaceLibrary)
    {
        if (surface.GetMaterialID() >= 0 && !layers.contains(surface.GetMaterialID()))
            layers.emplace(surface.GetMaterialID(), Pipeline::MaterialKey(ForReading(surface)));
    }
    for (auto& [material, key] : layers)
        key = key.substr(std::min(key.find('|'), key.size()));  // without the index of the material
    return layers;
}

/// Returns the name of a value for users: "roughness" for "/pbrMetallicRoughness/roughnessFactor".
std::string LabelOf(const std::string& path)
{
    std::vector<std::string> parts;
    for (std::size_t begin = 1; begin <= path.size();)
    {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        parts.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    std::string index;
    if (parts.size() > 1 && parts.back().find_first_not_of("0123456789") == std::string::npos)
    {
        index = '[' + parts.back() + ']';
        parts.pop_back();
    }
    std::string label = parts.empty() ? path : parts.back();
    constexpr std::string_view kFactor = "Factor";
    if (label.size() > kFactor.size() && label.ends_with(kFactor))
        label.resize(label.size() - kFactor.size());
    const bool isOfTexture = parts.size() > 1 && parts[parts.size() - 2].ends_with("Texture");
    return (isOfTexture ? parts[parts.size() - 2] + ' ' : std::string()) + label + index;
}

std::string ValueText(const std::string& value) { return value.empty() ? "its default" : value.substr(1); }

std::string TextOf(const SimilarRecords& group, const std::vector<std::string>& names)
{
    const bool areEqual = group.property.empty();
    if (names.size() == 2)
        return fmt::format("materials '{}' and '{}' differ only in {}", names[0], names[1],
                           areEqual ? "their names"
                                    : fmt::format("{}: {} and {}", LabelOf(group.property), ValueText(group.values[0]),
                                                  ValueText(group.values[1])));
    std::string text = fmt::format("{} materials differ only in {}: ", names.size(),
                                   areEqual ? "their names" : LabelOf(group.property));
    const std::size_t shown = std::min(names.size(), kMostValues);
    for (std::size_t i = 0; i < shown; ++i)
        text += fmt::format("{}'{}'{}", i == 0 ? "" : ", ", names[i], areEqual ? "" : ' ' + ValueText(group.values[i]));
    return text + (names.size() > shown ? fmt::format(" and {} more", names.size() - shown) : "");
}

bool AreNumbers(const std::vector<std::string>& values)
{
    return std::all_of(values.begin(), values.end(),
                       [](const std::string& value) { return value.empty() || value.front() == kNumber; });
}

}  // namespace

std::vector<SimilarMaterials> FindSimilarMaterials(const Model& model, const std::vector<int>& materials)
{
    const std::map<int, std::string> layers = LayersByMaterial(model);
    std::vector<Properties> records;
    for (const int material : materials)
    {
        const auto known = layers.find(material);
        records.push_back(ValuesOf(model, material, known == layers.end() ? "" : known->second));
    }

    std::vector<SimilarMaterials> similar;
    for (const SimilarRecords& group : FindSimilarRecords(records))
    {
        if (!group.property.empty() && !AreNumbers(group.values))
            continue;
        SimilarMaterials& added = similar.emplace_back();
        std::vector<std::string> names;
        for (const std::size_t record : group.records)
        {
            added.materials.push_back(materials[record]);
            names.push_back(ForReading(At(model.scene->MaterialLibrary, materials[record])).GetName());
        }
        added.text = TextOf(group, names);
    }
    std::stable_sort(similar.begin(), similar.end(), [](const SimilarMaterials& a, const SimilarMaterials& b) {
        return a.materials.size() > b.materials.size();
    });
    return similar;
}

}  // namespace Sceneprep

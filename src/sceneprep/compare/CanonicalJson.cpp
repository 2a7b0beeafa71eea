#include <sceneprep/compare/CanonicalJson.h>

#include <fmt/format.h>

#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace Sceneprep
{

namespace
{

struct DefaultValue
{
    std::string_view key;
    std::string_view text;  ///< canonical
};

/// Members of materials, references to textures, and samplers. Their names have one meaning wherever they occur.
constexpr std::array kDefaults = {
    DefaultValue{"alphaCutoff", "0.5"},
    DefaultValue{"alphaMode", "\"OPAQUE\""},
    DefaultValue{"baseColorFactor", "[1,1,1,1]"},
    DefaultValue{"clearcoatFactor", "0"},
    DefaultValue{"clearcoatRoughnessFactor", "0"},
    DefaultValue{"doubleSided", "false"},
    DefaultValue{"emissiveFactor", "[0,0,0]"},
    DefaultValue{"emissiveStrength", "1"},
    DefaultValue{"metallicFactor", "1"},
    DefaultValue{"offset", "[0,0]"},
    DefaultValue{"pbrMetallicRoughness", "{}"},
    DefaultValue{"rotation", "0"},
    DefaultValue{"roughnessFactor", "1"},
    DefaultValue{"strength", "1"},
    DefaultValue{"texCoord", "0"},
    DefaultValue{"transmissionFactor", "0"},
    DefaultValue{"wrapS", "10497"},
    DefaultValue{"wrapT", "10497"},
    DefaultValue{"sampler", "{}"},
    DefaultValue{"extensions", "{}"},
};

bool IsOmitted(std::string_view key, std::string_view text)
{
    if (key == "name" || key == "extras" || text == "null")
        return true;
    for (const DefaultValue& value : kDefaults)
    {
        if (value.key == key && value.text == text)
            return true;
    }
    // "scale" is 1 for normal textures, and (1, 1) for transforms of textures.
    return key == "scale" && (text == "1" || text == "[1,1]");
}

/// Extensions whose presence alone means something.
bool IsMark(std::string_view key) { return key == "KHR_materials_unlit"; }

std::string ObjectText(const Json& object)
{
    std::map<std::string, std::string> members;
    for (const auto& [key, value] : object.items())
    {
        std::string member = CanonicalText(value);
        const bool isEmptyExtension = (key.starts_with("KHR_") || key.starts_with("EXT_")) && member == "{}";
        if (!IsOmitted(key, member) && (!isEmptyExtension || IsMark(key)))
            members.emplace(key, std::move(member));
    }
    std::string text;
    for (const auto& [key, member] : members)
        text += fmt::format("{}\"{}\":{}", text.empty() ? "" : ",", key, member);
    return '{' + text + '}';
}

std::string ArrayText(const Json& array)
{
    std::string text;
    for (const Json& element : array)
        text += (text.empty() ? "" : ",") + CanonicalText(element);
    return '[' + text + ']';
}

}  // namespace

std::string CanonicalText(const Json& object)
{
    if (object.is_object())
        return ObjectText(object);
    if (object.is_array())
        return ArrayText(object);
    if (object.is_number())
        return fmt::format("{:.6g}", object.get<double>() + 0.0);  // without the sign of -0
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace Sceneprep

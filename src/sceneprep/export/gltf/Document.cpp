#include <sceneprep/export/gltf/Document.h>

#include <array>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

constexpr const char* kLights = "KHR_lights_punctual";

using List = std::pair<const char*, const std::vector<Json>*>;

std::array<List, 11> ListsOf(const Document& document)
{
    return {List("nodes", &document.nodes),
            List("meshes", &document.meshes),
            List("materials", &document.materials),
            List("textures", &document.textures),
            List("samplers", &document.samplers),
            List("images", &document.images),
            List("cameras", &document.cameras),
            List("skins", &document.skins),
            List("animations", &document.animations),
            List("accessors", &document.accessors),
            List("bufferViews", &document.bufferViews)};
}

/// The depth of the values is limited by the reader of the input.
void FindExtensions(const Json& value, std::set<std::string>& names)
{
    if (value.is_array())
    {
        for (const Json& element : value)
            FindExtensions(element, names);
    }
    if (!value.is_object())
        return;
    for (const auto& [key, member] : value.items())
    {
        if (key == "extensions" && member.is_object())
        {
            for (const auto& extension : member.items())
                names.insert(extension.key());
        }
        if (key != "extras")
            FindExtensions(member, names);
    }
}

void AddMember(const std::string& key, const std::string& value, std::string& text)
{
    text += text.size() > 1 ? ",\n" : "\n";
    text += '"' + key + "\":" + value;
}

std::string ListText(const std::vector<Json>& list)
{
    std::string text = "[";
    for (const Json& entry : list)
    {
        text += text.size() > 1 ? ",\n" : "\n";
        text += TextOf(entry);
    }
    return text + "\n]";
}

Json ExtensionsOf(const Document& document)
{
    Json extensions = document.extensions;
    if (!document.lights.empty())
        extensions[kLights] = {{"lights", document.lights}};
    return extensions;
}

void AddExtensionNames(const Document& document, std::string& text)
{
    const std::set<std::string> used = UsedExtensions(document);
    Json required = Json::array();
    for (const std::string& name : document.requiredExtensions)
    {
        if (used.contains(name))
            required.push_back(name);
    }
    if (!used.empty())
        AddMember("extensionsUsed", TextOf(Json(used)), text);
    if (!required.empty())
        AddMember("extensionsRequired", TextOf(required), text);
}

}  // namespace

int Append(std::vector<Json>& list, Json entry)
{
    list.push_back(std::move(entry));
    return static_cast<int>(list.size() - 1);
}

std::string TextOf(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

std::set<std::string> UsedExtensions(const Document& document)
{
    std::set<std::string> names = document.impliedExtensions;
    for (const auto& [name, list] : ListsOf(document))
    {
        for (const Json& entry : *list)
            FindExtensions(entry, names);
    }
    for (const Json& entry : document.lights)
        FindExtensions(entry, names);
    if (!document.lights.empty())
        names.insert(kLights);
    FindExtensions(document.asset, names);
    FindExtensions(document.scene, names);
    FindExtensions(Json{{"extensions", document.extensions}}, names);
    return names;
}

std::string TextOf(const Document& document, std::size_t bufferSize, const std::string& bufferUri)
{
    std::string text = "{";
    AddMember("asset", TextOf(document.asset), text);
    AddExtensionNames(document, text);
    if (!document.scene.is_null())
    {
        AddMember("scene", "0", text);
        AddMember("scenes", ListText({document.scene}), text);
    }
    for (const auto& [name, list] : ListsOf(document))
    {
        if (!list->empty())
            AddMember(name, ListText(*list), text);
    }
    if (bufferSize > 0)
    {
        Json buffer = {{"byteLength", bufferSize}};
        if (!bufferUri.empty())
            buffer["uri"] = bufferUri;
        AddMember("buffers", "[" + TextOf(buffer) + "]", text);
    }
    if (const Json extensions = ExtensionsOf(document); !extensions.empty())
        AddMember("extensions", TextOf(extensions), text);
    if (!document.extras.is_null())
        AddMember("extras", TextOf(document.extras), text);
    return text + "\n}\n";
}

}  // namespace Sceneprep::Gltf

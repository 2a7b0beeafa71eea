// Objects are compared as text, after their references have been replaced by the first of the equal objects: samplers
// and images first, then textures, then materials. One hash lookup per object makes it linear; comparing all pairs
// would be quadratic for files with thousands of materials.

#include <sceneprep/import/gltf/EqualMaterials.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Pointers.h>

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace Sceneprep::GltfImport
{

namespace
{

/// Finds for each object of a list the first one that is equal to it.
class Classes
{
public:
    /// @param key  equal exactly for equal objects
    int Add(std::string key) { return first_.emplace(std::move(key), count_++).first->second; }

private:
    std::unordered_map<std::string, int> first_;
    int count_ = 0;
};

/// Replaces references by the first object that is equal to the one they refer to.
void Replace(Json& object, const char* key, const std::vector<int>& first)
{
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_unsigned() || found->get<std::size_t>() >= first.size())
        return;
    *found = first[found->get<std::size_t>()];
}

std::vector<int> EqualOnes(const Field& document, std::string_view list, const auto& resolve)
{
    std::vector<int> first;
    Classes classes;
    for (std::size_t i = 0; i < document.SizeOf(list); ++i)
    {
        Json object = document.Member(list).Element(i).Get();
        resolve(i, object);
        first.push_back(classes.Add(object.dump(-1, ' ', false, Json::error_handler_t::replace)));
    }
    return first;
}

/// Texture references are objects with an index, in members whose names end with "Texture".
void ReplaceTextures(Json& json, const std::vector<int>& textures)
{
    if (!json.is_structured())
        return;
    for (auto& [key, value] : json.items())
    {
        if (value.is_object() && key.ends_with("Texture"))
            Replace(value, "index", textures);
        ReplaceTextures(value, textures);
    }
}

std::unordered_set<std::size_t> AnimatedMaterials(const Field& document)
{
    std::unordered_set<std::size_t> animated;
    for (const std::string& pointer : AnimationPointers(document))
    {
        if (const std::optional<std::size_t> material = IndexInPointer(pointer, "/materials/"))
            animated.insert(*material);
    }
    return animated;
}

}  // namespace

std::vector<int> FindEqualMaterials(const Field& document)
{
    const auto unchanged = [](std::size_t, Json&) {};
    const std::vector<int> samplers = EqualOnes(document, "samplers", unchanged);
    const std::vector<int> images = EqualOnes(document, "images", unchanged);
    const std::vector<int> textures = EqualOnes(document, "textures", [&](std::size_t, Json& texture) {
        Replace(texture, "sampler", samplers);
        Replace(texture, "source", images);
    });
    const std::unordered_set<std::size_t> animated = AnimatedMaterials(document);
    return EqualOnes(document, "materials", [&](std::size_t index, Json& material) {
        ReplaceTextures(material, textures);
        if (animated.count(index) > 0)
            material["index"] = index;
    });
}

}  // namespace Sceneprep::GltfImport

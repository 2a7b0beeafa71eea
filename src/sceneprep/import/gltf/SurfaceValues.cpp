#include <sceneprep/import/gltf/SurfaceValues.h>

#include <sceneprep/assimp/SurfaceExtras.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace Sceneprep::GltfImport
{

namespace
{

const Json* FindExtra(const Json& object, const char* key)
{
    const auto extras = object.find("extras");
    if (extras == object.end() || !extras->is_object())
        return nullptr;
    const auto extra = extras->find(key);
    return extra == extras->end() ? nullptr : &*extra;
}

std::optional<int> OffsetOf(const Json& object)
{
    const Json* extra = FindExtra(object, kCollisionOffsetExtra);
    const double number = extra != nullptr && extra->is_number() ? extra->get<double>() : 0.5;
    const bool fits = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    return fits && std::trunc(number) == number ? std::optional(static_cast<int>(number)) : std::nullopt;
}

const std::string* NameOf(const Json& object)
{
    const Json* extra = FindExtra(object, kSurfaceNameExtra);
    return extra != nullptr && extra->is_string() ? &extra->get_ref<const std::string&>() : nullptr;
}

}  // namespace

void TakeSurfaceValues(Json& object, Importing::Surface& surface)
{
    if (const std::optional<int> offset = OffsetOf(object))
    {
        surface.SetCollisionOffset(*offset);
        object["extras"].erase(kCollisionOffsetExtra);
    }
    if (const std::string* name = NameOf(object))
    {
        surface.SetName(*name);
        object["extras"].erase(kSurfaceNameExtra);
    }
    const auto extras = object.find("extras");
    if (extras != object.end() && extras->is_object() && extras->empty())
        object.erase("extras");
}

bool HasSurfaceValues(const Json& object) { return OffsetOf(object).has_value() || NameOf(object) != nullptr; }

}  // namespace Sceneprep::GltfImport

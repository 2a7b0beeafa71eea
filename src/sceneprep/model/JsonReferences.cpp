#include <sceneprep/model/JsonReferences.h>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <vector>

namespace Sceneprep
{

namespace
{

constexpr const char* kVariants = "KHR_materials_variants";

/// Returns the member of an object; null if there is none.
Json* FindMember(Json& object, const char* key)
{
    if (!object.is_object())
        return nullptr;
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

bool IsTextureKey(std::string_view key) { return key == "texture" || key.ends_with("Texture"); }

/// Renumbers the references among the members of an object.
void RenumberTextureMembers(Json& object, const Renumber& renumber)
{
    for (auto member = object.begin(); member != object.end();)
    {
        Json* index = IsTextureKey(member.key()) ? FindMember(member.value(), "index") : nullptr;
        const bool isReference = index != nullptr && index->is_number_integer();
        const int renumbered = isReference ? renumber(index->get<int>()) : -1;
        if (isReference && renumbered < 0)
        {
            member = object.erase(member);
            continue;
        }
        if (isReference)
            *index = renumbered;
        ++member;
    }
}

}  // namespace

void RenumberMember(Json& object, const char* key, const Renumber& renumber)
{
    Json* member = FindMember(object, key);
    if (member != nullptr && member->is_number_integer())
        *member = renumber(member->get<int>());
}

void RenumberTextures(Json& value, const Renumber& renumber)
{
    std::vector<Json*> pending = {&value};
    while (!pending.empty())
    {
        Json& current = *pending.back();
        pending.pop_back();
        if (current.is_object())
            RenumberTextureMembers(current, renumber);
        for (auto& [key, member] : current.items())
        {
            if (member.is_structured() && !(current.is_object() && key == "extras"))
                pending.push_back(&member);
        }
    }
}

void RenumberVariants(Json& primitive, const Renumber& material, const Renumber& variant)
{
    Json* extensions = FindMember(primitive, "extensions");
    Json* variants = extensions == nullptr ? nullptr : FindMember(*extensions, kVariants);
    Json* mappings = variants == nullptr ? nullptr : FindMember(*variants, "mappings");
    if (mappings == nullptr || !mappings->is_array())
        return;
    for (Json& mapping : *mappings)
    {
        RenumberMember(mapping, "material", material);
        Json* numbers = FindMember(mapping, "variants");
        if (numbers == nullptr || !numbers->is_array())
            continue;
        for (Json& number : *numbers)
        {
            if (number.is_number_integer())
                number = variant(number.get<int>());
        }
    }
}

std::string RenumberPointer(const std::string& pointer,
                            const std::function<int(const std::string& list, int index)>& renumber)
{
    std::size_t begin = 0;
    std::string list;
    while (begin < pointer.size())
    {
        ++begin;  // the slash
        const std::size_t end = std::min(pointer.find('/', begin), pointer.size());
        const std::string part = pointer.substr(begin, end - begin);
        int index = 0;
        const auto [read, error] = std::from_chars(part.data(), part.data() + part.size(), index);
        if (error == std::errc() && read == part.data() + part.size())
            return pointer.substr(0, begin) + std::to_string(renumber(list, index)) + pointer.substr(end);
        list = part;
        begin = end;
    }
    return pointer;
}

}  // namespace Sceneprep

#include <sceneprep/model/ExtensionReferences.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace Sceneprep
{

namespace
{

constexpr std::array<std::string_view, 4> kAccessors = {"indices", "accessor", "mergeIndices", "mergeValues"};
constexpr std::array<std::string_view, 1> kBufferViews = {"bufferView"};
constexpr std::array<std::string_view, 3> kTableColumns = {"values", "arrayOffsets", "stringOffsets"};

/// Visits all whole numbers at or below a value that isReference(parent's key, key) accepts.
template <typename IsReference>
void VisitAll(Json& root, const IsReference& isReference, const ReferenceVisitor& visit)
{
    struct Pending
    {
        Json* value;
        std::string key;
    };
    std::vector<Pending> pending = {{&root, {}}};
    while (!pending.empty())
    {
        const Pending parent = std::move(pending.back());
        pending.pop_back();
        for (auto& [key, value] : parent.value->items())
        {
            if (value.is_structured())
                pending.push_back({&value, parent.value->is_array() ? parent.key : key});
            else if (value.is_number_integer() && isReference(parent.key, key))
                visit(value);
        }
    }
}

template <std::size_t Count>
bool IsOneOf(const std::array<std::string_view, Count>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

void VisitAccessorReferences(Json& extensions, const ReferenceVisitor& visit)
{
    VisitAll(
        extensions,
        [](const std::string& parent, const std::string& key) {
            return IsOneOf(kAccessors, key) || parent == "attributes";
        },
        visit);
}

void VisitBufferViewReferences(Json& extensions, const ReferenceVisitor& visit)
{
    VisitAll(
        extensions, [](const std::string&, const std::string& key) { return IsOneOf(kBufferViews, key); }, visit);
    const auto metadata = extensions.find("EXT_structural_metadata");
    if (metadata == extensions.end() || !metadata->is_object() || !metadata->contains("propertyTables"))
        return;
    VisitAll((*metadata)["propertyTables"],
             [](const std::string&, const std::string& key) { return IsOneOf(kTableColumns, key); }, visit);
}

}  // namespace Sceneprep

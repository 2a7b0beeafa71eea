#include <sceneprep/import/gltf/Field.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Sceneprep::GltfImport
{

namespace
{

/// Values in messages are cut: a line stays a line.
std::string Quote(const Json& json)
{
    constexpr std::size_t kLongest = 40;
    if (json.is_object())
        return "an object";
    if (json.is_array())
        return "an array";
    const std::string text = json.dump(-1, ' ', true);
    return text.size() <= kLongest ? text : text.substr(0, kLongest) + "...";
}

}  // namespace

JsonPath JsonPath::Member(std::string_view key) const { return With({key.data(), key.size()}); }

JsonPath JsonPath::Element(std::size_t index) const { return With({nullptr, index}); }

JsonPath JsonPath::With(Part part) const
{
    JsonPath longer = *this;
    if (count_ < parts_.size())
        longer.parts_[longer.count_++] = part;
    return longer;
}

std::string JsonPath::Text() const
{
    std::string text;
    for (std::size_t i = 0; i < count_; ++i)
    {
        const Part& part = parts_[i];
        if (part.key == nullptr)
            text += fmt::format("[{}]", part.number);
        else
            text += fmt::format("{}{}", text.empty() ? "" : ".", std::string_view(part.key, part.number));
    }
    return text.empty() ? "the document" : text;
}

void Field::Fail(const std::string& problem) const { throw FormatError(path_.Text() + ": " + problem); }

const Json* Field::FindMember(std::string_view key) const
{
    if (!json_->is_object())
        Fail(Quote(*json_) + " is not an object");
    for (const auto& [name, value] : json_->get_ref<const Json::object_t&>())
    {
        if (name == key)
            return &value;
    }
    return nullptr;
}

std::optional<Field> Field::Find(std::string_view key) const
{
    const Json* member = FindMember(key);
    return member == nullptr ? std::nullopt : std::optional(Field(*member, path_.Member(key)));
}

Field Field::Member(std::string_view key) const
{
    const Json* member = FindMember(key);
    if (member == nullptr)
        throw FormatError(path_.Member(key).Text() + ": is missing");
    return {*member, path_.Member(key)};
}

std::size_t Field::Size() const
{
    if (!json_->is_array())
        Fail(Quote(*json_) + " is not an array");
    return json_->size();
}

Field Field::Element(std::size_t index) const
{
    if (index >= Size())
        Fail(fmt::format("has {} elements, {} expected", Size(), index + 1));
    return {(*json_)[index], path_.Element(index)};
}

std::size_t Field::SizeOf(std::string_view key) const
{
    const std::optional<Field> member = Find(key);
    return member ? member->Size() : 0;
}

double Field::Number() const
{
    if (!json_->is_number())
        Fail(Quote(*json_) + " is not a number");
    return json_->get<double>();
}

std::size_t Field::Whole() const
{
    if (json_->is_number_unsigned())
        return json_->get<std::size_t>();
    // Some writers spell whole numbers with a decimal point.
    constexpr double kLargest = 9007199254740992.0;
    const double number = Number();
    if (!(number >= 0 && number <= kLargest) || std::trunc(number) != number)
        Fail(Quote(*json_) + " is not a whole number of at least 0");
    return static_cast<std::size_t>(number);
}

int Field::IndexBelow(std::size_t count) const
{
    const std::size_t index = Whole();
    if (index >= count)
        Fail(fmt::format("{} is not below {}", index, count));
    if (index > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        Fail(fmt::format("{} is too large for an index", index));
    return static_cast<int>(index);
}

const std::string& Field::Text() const
{
    if (!json_->is_string())
        Fail(Quote(*json_) + " is not a string");
    return json_->get_ref<const std::string&>();
}

void Field::Numbers(double* numbers, std::size_t count) const
{
    if (Size() != count)
        Fail(fmt::format("has {} elements, {} expected", Size(), count));
    for (std::size_t i = 0; i < count; ++i)
    {
        const Json& element = (*json_)[i];
        numbers[i] = element.is_number() ? element.get<double>() : Element(i).Number();
    }
}

int Field::IndexOrNone(std::string_view key, std::size_t count) const
{
    const Json* member = FindMember(key);
    return member == nullptr ? -1 : Field(*member, path_.Member(key)).IndexBelow(count);
}

std::size_t Field::WholeOr(std::string_view key, std::size_t otherwise) const
{
    const Json* member = FindMember(key);
    return member == nullptr ? otherwise : Field(*member, path_.Member(key)).Whole();
}

double Field::NumberOr(std::string_view key, double otherwise) const
{
    const Json* member = FindMember(key);
    return member == nullptr ? otherwise : Field(*member, path_.Member(key)).Number();
}

std::string Field::TextOr(std::string_view key, const std::string& otherwise) const
{
    const Json* member = FindMember(key);
    return member == nullptr ? otherwise : Field(*member, path_.Member(key)).Text();
}

bool Field::FlagOr(std::string_view key, bool otherwise) const
{
    const Json* member = FindMember(key);
    if (member == nullptr)
        return otherwise;
    if (!member->is_boolean())
        Field(*member, path_.Member(key)).Fail(Quote(*member) + " is not true or false");
    return member->get<bool>();
}

std::optional<Field> Field::Extension(std::string_view name) const
{
    const std::optional<Field> extensions = Find("extensions");
    return extensions ? extensions->Find(name) : std::nullopt;
}

const Json::object_t& Field::Members() const
{
    if (!json_->is_object())
        Fail(Quote(*json_) + " is not an object");
    return json_->get_ref<const Json::object_t&>();
}

Json Take(Json& object, std::string_view key)
{
    auto& members = object.get_ref<Json::object_t&>();
    const auto found =
        std::find_if(members.begin(), members.end(), [&](const auto& member) { return member.first == key; });
    if (found == members.end())
        return {};
    Json taken = std::move(found->second);
    members.erase(found);
    return taken;
}

}  // namespace Sceneprep::GltfImport

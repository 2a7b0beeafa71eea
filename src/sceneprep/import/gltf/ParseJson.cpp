#include <sceneprep/import/gltf/ParseJson.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Field.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Sceneprep::GltfImport
{

namespace
{

/// Builds the document from the parser's events. Members are appended to their object without a search for their key,
/// which takes quadratic time in objects with many members; keys are compared once, when the object is complete.
class DocumentBuilder
{
public:
    Json TakeDocument() { return std::move(document_); }

    // The names of the parser's interface.
    // NOLINTBEGIN(readability-identifier-naming)
    bool null() { return Add(nullptr) != nullptr; }
    bool boolean(bool value) { return Add(value) != nullptr; }
    bool number_integer(std::int64_t value) { return Add(value) != nullptr; }
    bool number_unsigned(std::uint64_t value) { return Add(value) != nullptr; }
    bool number_float(double value, const std::string& /*text*/) { return Add(value) != nullptr; }
    bool string(std::string& value) { return Add(std::move(value)) != nullptr; }
    bool binary(Json::binary_t& /*value*/) { return false; }
    bool start_object(std::size_t /*size*/) { return Open(Json::value_t::object); }
    bool start_array(std::size_t /*size*/) { return Open(Json::value_t::array); }

    bool key(std::string& key)
    {
        key_ = std::move(key);
        return true;
    }

    bool end_object()
    {
        CheckKeys(open_.back()->get_ref<const Json::object_t&>());
        return Close();
    }

    bool end_array() { return Close(); }

    template <typename Exception>
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/, const Exception& error)
    {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: ..."
        const std::string text = error.what();
        const std::size_t end = text.find("] ");
        throw FormatError("the text is not JSON: " + (end == std::string::npos ? text : text.substr(end + 2)));
    }
    // NOLINTEND(readability-identifier-naming)

private:
    static constexpr std::size_t kDeepest = 500;
    static constexpr std::size_t kFew = 16;

    template <typename Value>
    Json* Add(Value&& value)
    {
        if (open_.empty())
        {
            document_ = Json(std::forward<Value>(value));
            return &document_;
        }
        Json& parent = *open_.back();
        if (parent.is_array())
            return &parent.get_ref<Json::array_t&>().emplace_back(std::forward<Value>(value));
        using Members = std::vector<Json::object_t::value_type>;
        Members& members = parent.get_ref<Json::object_t&>();
        return &members.emplace_back(std::move(key_), std::forward<Value>(value)).second;
    }

    bool Open(Json::value_t type)
    {
        if (open_.size() == kDeepest)
            throw FormatError(fmt::format("the text is nested more than {} deep", kDeepest));
        open_.push_back(Add(type));
        return true;
    }

    bool Close()
    {
        open_.pop_back();
        return true;
    }

    void CheckKeys(const Json::object_t& members)
    {
        if (members.size() <= kFew)
        {
            for (auto member = members.begin(); member != members.end(); ++member)
            {
                for (auto other = members.begin(); other != member; ++other)
                    CheckDiffer(member->first, other->first);
            }
            return;
        }
        std::vector<std::string_view> keys;
        keys.reserve(members.size());
        for (const auto& [key, value] : members)
            keys.emplace_back(key);
        std::sort(keys.begin(), keys.end());
        for (std::size_t i = 1; i < keys.size(); ++i)
            CheckDiffer(keys[i], keys[i - 1]);
    }

    static void CheckDiffer(std::string_view key, std::string_view other)
    {
        if (key == other)
            throw FormatError(fmt::format("an object has the key '{}' twice", key));
    }

    Json document_;
    std::vector<Json*> open_;  ///< the arrays and objects around the value to come, outermost first
    std::string key_;
};

}  // namespace

Json ParseJson(std::string_view text)
{
    DocumentBuilder builder;
    Json::sax_parse(text.begin(), text.end(), &builder);
    return builder.TakeDocument();
}

}  // namespace Sceneprep::GltfImport

#include <sceneprep/import/gltf/ParseJson.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Field.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Most of the time that reading a large scene takes is spent on its JSON text, and most of that, with the parser of
// nlohmann-json, on strings and numbers that are collected character by character and on containers that grow. So a
// parser of our own builds the same values: strings and numbers are cut out of the text, and containers get their final
// size at once, from stacks of finished values. Strings with escapes or other characters than ASCII, and the
// description of errors, are left to nlohmann-json.

namespace Sceneprep::GltfImport
{

namespace
{

constexpr std::size_t kDeepest = 500;
constexpr std::size_t kFewKeys = 16;

/// The text is not JSON.
struct SyntaxError
{};

void CheckDiffer(std::string_view key, std::string_view other)
{
    if (key == other)
        throw FormatError(fmt::format("an object has the key '{}' twice", key));
}

void CheckKeys(const std::string* first, const std::string* last)
{
    if (last - first <= static_cast<std::ptrdiff_t>(kFewKeys))
    {
        for (const std::string* key = first; key != last; ++key)
        {
            for (const std::string* other = first; other != key; ++other)
                CheckDiffer(*key, *other);
        }
        return;
    }
    std::vector<std::string_view> keys(first, last);
    std::sort(keys.begin(), keys.end());
    for (std::size_t i = 1; i < keys.size(); ++i)
        CheckDiffer(keys[i], keys[i - 1]);
}

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

class Parser
{
public:
    explicit Parser(std::string_view text) : next_(text.data()), end_(text.data() + text.size()) {}

    /// @throws SyntaxError, or FormatError for JSON that is refused.
    Json ParseDocument()
    {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (std::string_view(next_, static_cast<std::size_t>(end_ - next_)).starts_with(kByteOrderMark))
            next_ += kByteOrderMark.size();
        Json document = ParseValue(0);
        if (Peek() != '\0' || next_ != end_)
            throw SyntaxError();
        return document;
    }

private:
    /// Skips white space.
    /// @return the next character; 0 at the end.
    char Peek()
    {
        while (next_ != end_ && (*next_ == ' ' || *next_ == '\n' || *next_ == '\r' || *next_ == '\t'))
            ++next_;
        return next_ == end_ ? '\0' : *next_;
    }

    void Expect(char character)
    {
        if (Peek() != character || next_ == end_)
            throw SyntaxError();
        ++next_;
    }

    /// @return whether the character came next, which is skipped.
    bool Skip(char character)
    {
        if (Peek() != character)
            return false;
        ++next_;
        return true;
    }

    Json ParseValue(std::size_t depth)
    {
        switch (Peek())
        {
            case '{':
                return ParseObject(depth + 1);
            case '[':
                return ParseArray(depth + 1);
            case '"':
                return ParseString();
            case 't':
                return ParseWord("true", true);
            case 'f':
                return ParseWord("false", false);
            case 'n':
                return ParseWord("null", nullptr);
            default:
                return ParseNumber();
        }
    }

    static void CheckDepth(std::size_t depth)
    {
        if (depth > kDeepest)
            throw FormatError(fmt::format("the text is nested more than {} deep", kDeepest));
    }

    Json ParseObject(std::size_t depth)
    {
        CheckDepth(depth);
        const std::size_t firstKey = keys_.size();
        const std::size_t firstValue = values_.size();
        Expect('{');
        if (!Skip('}'))
        {
            do
            {
                if (Peek() != '"')
                    throw SyntaxError();
                keys_.push_back(ParseString());
                Expect(':');
                values_.push_back(ParseValue(depth));
            } while (Skip(','));
            Expect('}');
        }
        CheckKeys(keys_.data() + firstKey, keys_.data() + keys_.size());
        Json object = Json::object();
        auto& members = object.get_ref<Json::object_t&>();
        std::vector<Json::object_t::value_type>& list = members;  // whose own insertions search for equal keys
        list.reserve(keys_.size() - firstKey);
        for (std::size_t i = firstKey; i < keys_.size(); ++i)
            list.emplace_back(std::move(keys_[i]), std::move(values_[firstValue + i - firstKey]));
        keys_.resize(firstKey);
        values_.resize(firstValue);
        return object;
    }

    Json ParseArray(std::size_t depth)
    {
        CheckDepth(depth);
        const std::size_t first = values_.size();
        Expect('[');
        if (!Skip(']'))
        {
            do
                values_.push_back(ParseValue(depth));
            while (Skip(','));
            Expect(']');
        }
        Json array = Json::array();
        const auto begin = values_.begin() + static_cast<std::ptrdiff_t>(first);
        array.get_ref<Json::array_t&>().assign(std::make_move_iterator(begin), std::make_move_iterator(values_.end()));
        values_.resize(first);
        return array;
    }

    std::string ParseString()
    {
        const char* const begin = next_++;
        bool isPlain = true;
        for (; next_ != end_ && *next_ != '"'; ++next_)
        {
            isPlain = isPlain && *next_ >= ' ' && *next_ != '\\' && *next_ < '\x7F';
            if (*next_ == '\\' && ++next_ == end_)
                break;
        }
        if (next_ == end_)
            throw SyntaxError();
        ++next_;
        if (isPlain)
            return {begin + 1, next_ - 1};
        Json string = Json::parse(begin, next_, nullptr, false);
        if (!string.is_string())
            throw SyntaxError();
        return std::move(string.get_ref<std::string&>());
    }

    template <typename Value>
    Json ParseWord(std::string_view word, Value value)
    {
        if (!std::string_view(next_, static_cast<std::size_t>(end_ - next_)).starts_with(word))
            throw SyntaxError();
        next_ += word.size();
        return value;
    }

    void SkipDigits()
    {
        if (next_ == end_ || !IsDigit(*next_))
            throw SyntaxError();
        while (next_ != end_ && IsDigit(*next_))
            ++next_;
    }

    bool SkipOneOf(char first, char second)
    {
        if (next_ == end_ || (*next_ != first && *next_ != second))
            return false;
        ++next_;
        return true;
    }

    Json ParseNumber()
    {
        const char* const begin = next_;
        const bool isNegative = SkipOneOf('-', '-');
        if (!SkipOneOf('0', '0'))
            SkipDigits();
        bool isWhole = true;
        if (SkipOneOf('.', '.'))
        {
            SkipDigits();
            isWhole = false;
        }
        if (SkipOneOf('e', 'E'))
        {
            SkipOneOf('+', '-');
            SkipDigits();
            isWhole = false;
        }
        if (isWhole && isNegative)
        {
            if (const std::optional<std::int64_t> whole = Convert<std::int64_t>(begin))
                return *whole;
        }
        else if (isWhole)
        {
            if (const std::optional<std::uint64_t> whole = Convert<std::uint64_t>(begin))
                return *whole;
        }
        if (const std::optional<double> number = Convert<double>(begin))
            return *number;
        // Too small for a double, or too large, which nlohmann-json refuses.
        Json number = Json::parse(begin, next_, nullptr, false);
        if (!number.is_number())
            throw SyntaxError();
        return number;
    }

    template <typename Number>
    std::optional<Number> Convert(const char* begin)
    {
        Number number{};
        const auto [read, error] = std::from_chars(begin, next_, number);
        return error == std::errc() ? std::optional(number) : std::nullopt;
    }

    const char* next_;
    const char* end_;
    std::vector<std::string> keys_;  ///< of the objects that are not complete, outermost first
    std::vector<Json> values_;       ///< of the objects and arrays that are not complete
};

/// Accepts any JSON, and describes the first error.
class ErrorFinder
{
public:
    std::string description = "it cannot be parsed";
    std::size_t charactersRead = 0;  ///< up to the error; the end of the text counts as one

    // The names of the parser's interface.
    // NOLINTBEGIN(readability-identifier-naming)
    bool null() { return true; }
    bool boolean(bool /*value*/) { return true; }
    bool number_integer(std::int64_t /*value*/) { return true; }
    bool number_unsigned(std::uint64_t /*value*/) { return true; }
    bool number_float(double /*value*/, const std::string& /*text*/) { return true; }
    bool string(std::string& /*value*/) { return true; }
    bool binary(Json::binary_t& /*value*/) { return true; }
    bool start_object(std::size_t /*size*/) { return true; }
    bool key(std::string& /*key*/) { return true; }
    bool end_object() { return true; }
    bool start_array(std::size_t /*size*/) { return true; }
    bool end_array() { return true; }

    template <typename Exception>
    bool parse_error(std::size_t position, const std::string& /*token*/, const Exception& error)
    {
        charactersRead = position;
        // "[json.exception.parse_error.101] parse error at line 1, column 2: ..."
        const std::string text = error.what();
        const std::size_t end = text.find("] ");
        description = end == std::string::npos ? text : text.substr(end + 2);
        return false;
    }
    // NOLINTEND(readability-identifier-naming)
};

}  // namespace

Json ParseJson(std::string_view text)
{
    try
    {
        return Parser(text).ParseDocument();
    }
    catch (const SyntaxError&)
    {
        ErrorFinder finder;
        Json::sax_parse(text.begin(), text.end(), &finder);
        if (finder.charactersRead > text.size())
            throw FormatError("the file is truncated: its JSON text ends before it is complete");
        throw FormatError("the text is not JSON: " + finder.description);
    }
}

}  // namespace Sceneprep::GltfImport

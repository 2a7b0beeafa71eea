#pragma once

#include <sceneprep/model/Json.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Sceneprep::GltfImport
{

/// A file that violates the format. The text is one line: the JSON path, the value and the error.
class FormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The path of a value in the document, as "meshes[3].primitives[0].indices". Costs no allocation until it is printed.
/// Keys are not copied: they have to outlive the path. Paths that are deeper than in the format are cut.
class JsonPath
{
public:
    /// The document itself.
    JsonPath() = default;
    JsonPath(const JsonPath& other) : count_(other.count_)
    {
        std::copy_n(other.parts_.begin(), count_, parts_.begin());
    }
    JsonPath& operator=(const JsonPath& other)
    {
        count_ = other.count_;
        std::copy_n(other.parts_.begin(), count_, parts_.begin());
        return *this;
    }

    JsonPath Member(std::string_view key) const;
    JsonPath Element(std::size_t index) const;
    std::string Text() const;

private:
    struct Part
    {
        const char* key;     ///< null for an element
        std::size_t number;  ///< length of the key, or index
    };

    JsonPath With(Part part) const;

    std::array<Part, 14> parts_;  // the first count_ of them
    std::size_t count_ = 0;
};

/// A value of the document together with its path, for error messages. The document has to outlive it. All members
/// throw FormatError if the value does not have the requested type or range.
class Field
{
public:
    Field(const Json& json, const JsonPath& path) : json_(&json), path_(path) {}

    const Json& Get() const { return *json_; }
    const JsonPath& Where() const { return path_; }
    [[noreturn]] void Fail(const std::string& problem) const;

    /// Returns the member; nothing if the object does not have it.
    std::optional<Field> Find(std::string_view key) const;
    bool Has(std::string_view key) const { return FindMember(key) != nullptr; }
    Field Member(std::string_view key) const;

    /// Returns the length of an array.
    std::size_t Size() const;
    Field Element(std::size_t index) const;
    /// Returns the length of a member that is an array; 0 without the member.
    std::size_t SizeOf(std::string_view key) const;

    /// The value itself.
    /// @{
    double Number() const;
    std::size_t Whole() const;
    /// Returns a whole number below `count`.
    int IndexBelow(std::size_t count) const;
    const std::string& Text() const;
    /// Fills all numbers from an array of exactly that length.
    void Numbers(double* numbers, std::size_t count) const;
    /// @}

    /// A member that may be missing.
    /// @{
    /// Returns -1 without the member.
    int IndexOrNone(std::string_view key, std::size_t count) const;
    std::size_t WholeOr(std::string_view key, std::size_t otherwise) const;
    double NumberOr(std::string_view key, double otherwise) const;
    std::string TextOr(std::string_view key, const std::string& otherwise) const;
    bool FlagOr(std::string_view key, bool otherwise) const;
    /// Does not change the numbers without the member.
    template <std::size_t Count>
    void NumbersIfAny(std::string_view key, std::array<double, Count>& numbers) const
    {
        if (const Json* member = FindMember(key))
            Field(*member, path_.Member(key)).Numbers(numbers.data(), Count);
    }
    /// Returns the extension of that name of this object.
    std::optional<Field> Extension(std::string_view name) const;
    /// @}

    /// Returns keys and values of an object, in the order of the file.
    const Json::object_t& Members() const;

private:
    const Json* FindMember(std::string_view key) const;

    const Json* json_;
    JsonPath path_;
};

/// Removes a member from an object and returns it; null if there is none.
Json Take(Json& object, std::string_view key);

}  // namespace Sceneprep::GltfImport

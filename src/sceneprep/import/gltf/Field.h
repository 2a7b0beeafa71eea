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

/// A file that does not follow the format. The text is one line: the JSON path, and what is wrong with which value.
class FormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The path of a value in the document, as "meshes[3].primitives[0].indices". Costs no allocation until it is printed.
/// Keys are not copied: they have to outlive the path. Deeper paths than the format has are cut.
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

/// A value of the document together with its path, so that whatever is wrong with it can be reported. The document has
/// to outlive it. All members throw FormatError where the value is not what was asked for.
class Field
{
public:
    Field(const Json& json, const JsonPath& path) : json_(&json), path_(path) {}

    const Json& Get() const { return *json_; }
    const JsonPath& Where() const { return path_; }
    [[noreturn]] void Fail(const std::string& problem) const;

    /// @return the member; none where there is none.
    std::optional<Field> Find(std::string_view key) const;
    bool Has(std::string_view key) const { return FindMember(key) != nullptr; }
    Field Member(std::string_view key) const;

    /// @return the length of an array.
    std::size_t Size() const;
    Field Element(std::size_t index) const;
    /// @return the length of the array that the member is; 0 without the member.
    std::size_t SizeOf(std::string_view key) const;

    /// The value itself.
    /// @{
    double Number() const;
    std::size_t Whole() const;
    /// @return a whole number below `count`.
    int IndexBelow(std::size_t count) const;
    const std::string& Text() const;
    /// Fills all numbers from an array of exactly that length.
    void Numbers(double* numbers, std::size_t count) const;
    /// @}

    /// A member that may be missing.
    /// @{
    /// @return -1 without the member.
    int IndexOrNone(std::string_view key, std::size_t count) const;
    std::size_t WholeOr(std::string_view key, std::size_t otherwise) const;
    double NumberOr(std::string_view key, double otherwise) const;
    std::string TextOr(std::string_view key, const std::string& otherwise) const;
    bool FlagOr(std::string_view key, bool otherwise) const;
    /// Leaves the numbers alone without the member.
    template <std::size_t Count>
    void NumbersIfAny(std::string_view key, std::array<double, Count>& numbers) const
    {
        if (const Json* member = FindMember(key))
            Field(*member, path_.Member(key)).Numbers(numbers.data(), Count);
    }
    /// @return the extension of that name of this object.
    std::optional<Field> Extension(std::string_view name) const;
    /// @}

    /// @return keys and values of an object, in the order of the file.
    const Json::object_t& Members() const;

private:
    const Json* FindMember(std::string_view key) const;

    const Json* json_;
    JsonPath path_;
};

/// Takes a member out of an object.
/// @return null where there is none.
Json Take(Json& object, std::string_view key);

}  // namespace Sceneprep::GltfImport

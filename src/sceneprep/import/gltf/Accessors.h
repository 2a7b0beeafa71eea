#pragma once

#include <sceneprep/import/gltf/BufferViews.h>
#include <sceneprep/import/gltf/Components.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Carried.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The elements of an accessor: bytes of a buffer, or of `own`.
struct Accessor
{
    Elements elements;
    std::vector<std::uint8_t> own = {};  ///< of sparse accessors, and of those without a buffer view
    std::string_view typeName = {};      ///< in the document
    int index = -1;
};

/// The accessors of a document. Sparse ones are resolved.
class Accessors
{
public:
    /// Both have to outlive the object and its results.
    Accessors(const Field& document, BufferViews& views);

    std::size_t Count() const { return count_; }

    /// @param reference  a number that refers to an accessor
    /// @param types      the element types that are allowed there, as "VEC3"; empty for all
    /// @throws FormatError if the accessor does not exist, its type is not allowed, or it exceeds its buffer view.
    Accessor Get(const Field& reference, std::initializer_list<std::string_view> types = {});

    /// Copies the stored numbers of an accessor.
    CarriedAccessor Carry(const Field& reference, std::initializer_list<std::string_view> types = {});
    /// Copies the stored numbers of an accessor that has been looked up. The index is needed for min and max.
    CarriedAccessor Carry(const Accessor& accessor);

    /// Returns all components as floats.
    std::vector<float> Floats(const Field& reference, std::initializer_list<std::string_view> types);

private:
    void ReadView(const Field& field, Elements& elements);
    void ResolveSparse(const Field& sparse, Accessor& accessor);

    std::optional<Field> list_;  ///< empty in documents without accessors
    BufferViews& views_;
    std::size_t count_;
};

}  // namespace Sceneprep::GltfImport

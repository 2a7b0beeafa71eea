#include <sceneprep/import/gltf/Meshes.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/import/gltf/IndexLists.h>
#include <sceneprep/import/gltf/SurfaceValues.h>
#include <sceneprep/model/ExtensionReferences.h>

#include <algorithm>
#include <string>

namespace Sceneprep::GltfImport
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::Surface;

bool IsDefault(const Pipeline::VertexLayout& layout) { return layout == Pipeline::VertexLayout(); }

/// Returns the extensions of an object as a copy, null if there are none.
Json CopyExtensions(const Field& field)
{
    const std::optional<Field> extensions = field.Find("extensions");
    return extensions && extensions->Get().is_object() ? extensions->Get() : Json();
}

template <typename T>
void Grow(std::vector<T>& list, std::size_t size)
{
    if (list.size() < size)
        list.resize(size);
}

}  // namespace

Meshes::Meshes(const Field& document, Accessors& accessors, BufferViews& views, Materials& materials, Model& model,
               Pipeline::PartListener listener)
    : document_(document), accessors_(accessors), views_(views), materials_(materials), model_(model),
      counter_(std::move(listener), document.SizeOf("meshes")), extensions_(document.SizeOf("meshes")),
      isPinned_(document.SizeOf("meshes"), false)
{}

const std::vector<Surface>& Meshes::SurfacesOf(int mesh, int skin, std::size_t jointCount)
{
    const auto [found, isNew] = converted_.try_emplace({mesh, skin});
    if (isNew)
    {
        Convert(document_.Member("meshes").Element(static_cast<std::size_t>(mesh)), mesh, jointCount, found->second);
        counter_.Add(1);
    }
    return found->second;
}

void Meshes::Convert(const Field& mesh, int meshIndex, std::size_t jointCount, std::vector<Surface>& surfaces)
{
    const auto index = static_cast<std::size_t>(meshIndex);
    if (extensions_[index].is_null() && mesh.Has("extensions"))
    {
        extensions_[index] = CopyExtensions(mesh);
        isPinned_[index] = CarryAccessors(extensions_[index]);
    }
    const std::string name = mesh.TextOr("name", "");
    const Field primitives = mesh.Member("primitives");
    for (std::size_t p = 0; p < primitives.Size(); ++p)
    {
        const Field field = primitives.Element(p);
        const std::optional<Primitive> primitive = ReadPrimitive(field, accessors_, views_);
        if (!primitive)
        {
            ++withoutPositions_;
            continue;
        }
        Surface surface;
        surface.SetName(name);
        bool isPinned = isPinned_[index] || !primitive->HasTriangles() || !primitive->targets.empty();
        const Json extras = ExtrasOf(field, surface, isPinned);
        const int geometry = AddGeometry(*primitive, field, name, jointCount);
        SetSupplement(geometry, meshIndex,
                      filler_.Fill(*primitive, jointCount, At(model_.scene->GeometryLibrary, geometry)),
                      isPinned ? std::optional(Carry(*primitive, accessors_)) : std::nullopt);
        surface.SetGeometryID(geometry);
        materials_.Apply(field, extras, surface);
        surfaces.push_back(std::move(surface));
    }
}

int Meshes::AddGeometry(const Primitive& primitive, const Field& field, const std::string& name, std::size_t jointCount)
{
    IndexList list = MakeIndexList(primitive, field);
    incomplete_ += list.leftOver > 0 ? 1 : 0;
    unskinned_ += jointCount == 0 && primitive.Find("JOINTS_0") != nullptr ? 1 : 0;
    const int index = model_.scene->CreateNewGeometryInLibrary();
    Geometry& geometry = At(model_.scene->GeometryLibrary, index);
    geometry.SetName(name);
    if (list.polySize != geometry.GetPolySize())
        geometry.SetPolySize(list.polySize);
    geometry.IndexArray = std::move(list.indices);
    return index;
}

void Meshes::SetSupplement(int geometry, int meshIndex, Pipeline::VertexLayout layout,
                           std::optional<CarriedPrimitive> pinned)
{
    const std::size_t count = static_cast<std::size_t>(geometry) + 1;
    Pipeline::SceneSupplement& supplement = model_.supplement;
    if (!IsDefault(layout))
    {
        Grow(supplement.layouts, count);
        supplement.layouts.back() = std::move(layout);
    }
    if (pinned)
    {
        Grow(supplement.pinnedMeshes, count);
        supplement.pinnedMeshes.back() = true;
    }
    supplement.meshKeys.resize(count, -1);
    supplement.meshKeys.back() = static_cast<int>(model_.carried.meshOf.size());
    model_.carried.meshOf.push_back({.mesh = meshIndex, .primitive = std::move(pinned)});
}

/// Returns the extras of a primitive and those of its extensions that are not decoded.
Json Meshes::ExtrasOf(const Field& primitive, Surface& surface, bool& refersToAccessors)
{
    Json object = Json::object();
    if (const std::optional<Field> extras = primitive.Find("extras"))
        object["extras"] = extras->Get();
    TakeSurfaceValues(object, surface);
    if (!primitive.Has("extensions"))
        return object;
    Json extensions = CopyExtensions(primitive);
    if (extensions.is_object())
        extensions.erase("KHR_draco_mesh_compression");
    refersToAccessors = CarryAccessors(extensions) || refersToAccessors;
    if (!extensions.empty())
        object["extensions"] = std::move(extensions);
    return object;
}

/// Carries the accessors that extensions refer to.
/// @return whether there are any.
bool Meshes::CarryAccessors(Json& extensions)
{
    bool hasAny = false;
    VisitAccessorReferences(extensions, [&](Json& reference) {
        const int accessor = Field(reference, {}).IndexBelow(accessors_.Count());
        const auto [known, isNew] =
            carriedAccessors_.emplace(accessor, static_cast<int>(model_.carried.accessors.size()));
        if (isNew)
            model_.carried.accessors.push_back(accessors_.Carry(Field(reference, {})));
        reference = known->second;
        hasAny = true;
    });
    return hasAny;
}

std::size_t Meshes::CountConverted() const
{
    std::size_t count = 0;
    int last = -1;
    for (const auto& [meshAndSkin, surfaces] : converted_)
    {
        count += meshAndSkin.first == last ? 0 : 1;
        last = meshAndSkin.first;
    }
    return count;
}

void Meshes::AddNotes(Notes& notes) const
{
    const auto note = [&](std::size_t count, const std::string& text) {
        if (count > 0)
            notes.Add(text + " (" + std::to_string(count) + ")");
    };
    note(extensions_.size() - CountConverted(), "dropped meshes that no node of the scene uses");
    note(withoutPositions_, "dropped primitives without positions, which are not drawn");
    note(incomplete_, "dropped incomplete polygons at the end of primitives");
    note(unskinned_, "dropped joints and weights of primitives that no skin moves");
    notes.AddLoss("weights", "dropped weights that are NaN or infinite", filler_.Losses().weights);
    notes.AddLoss("attribute-precision", "rounded attributes with whole numbers above 16777216 to floats",
                  filler_.Losses().integers);
}

void Meshes::CarryMeshes(Json& meshes)
{
    for (std::size_t i = 0; i < meshes.size(); ++i)
    {
        Json& mesh = meshes[i];
        Take(mesh, "primitives");
        if (extensions_[i].is_object())
            mesh["extensions"] = std::move(extensions_[i]);
        model_.carried.meshes.push_back(std::move(mesh));
    }
}

}  // namespace Sceneprep::GltfImport

#include <sceneprep/export/gltf/Meshes.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/HasNormals.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <sceneprep/export/gltf/Attributes.h>
#include <sceneprep/export/gltf/PinnedPrimitives.h>
#include <sceneprep/export/gltf/Weights.h>

#include <algorithm>
#include <cmath>

namespace Sceneprep::Gltf
{

using Pipeline::HasNormals;
using Pipeline::HasTriangles;

namespace
{

using Importing::Geometry;
using Importing::Vertex;

bool IsFinitePosition(const D3DXVECTOR3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

/// Gives a vector unit length, in double precision, so that short normals keep their direction.
/// @return whether the vector has a direction.
bool Normalize(D3DXVECTOR3& v)
{
    const double length = std::hypot(static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z));
    if (!std::isfinite(length) || length == 0)
        return false;
    v = {static_cast<float>(v.x / length), static_cast<float>(v.y / length), static_cast<float>(v.z / length)};
    return true;
}

D3DXVECTOR3 FaceNormal(Geometry& geometry, const std::uint32_t* corners)
{
    const D3DXVECTOR3 origin = geometry.VertexArray[corners[0]].GetPosition();
    const D3DXVECTOR3 a = geometry.VertexArray[corners[1]].GetPosition() - origin;
    const D3DXVECTOR3 b = geometry.VertexArray[corners[2]].GetPosition() - origin;
    D3DXVECTOR3 normal(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    return Normalize(normal) ? normal : D3DXVECTOR3(0, 0, 1);
}

void SetBounds(const std::vector<D3DXVECTOR3>& positions, Json& accessor)
{
    D3DXVECTOR3 min = positions.front();
    D3DXVECTOR3 max = min;
    for (const D3DXVECTOR3& p : positions)
    {
        min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
    }
    accessor["min"] = Json::array({min.x, min.y, min.z});
    accessor["max"] = Json::array({max.x, max.y, max.z});
}

/// The largest index of two bytes restarts strips, so no vertex may have it.
constexpr std::size_t kMostShort = 65535;

/// Returns the primitive of the input that a geometry has to be written as; null for none.
const CarriedPrimitive* CarriedPrimitiveOf(const Model& model, int geometry)
{
    const auto index = static_cast<std::size_t>(geometry);
    const std::vector<int>& keys = model.supplement.meshKeys;
    if (index >= keys.size() || !Importing::IsValidIndex(keys[index], model.carried.meshOf.size()))
        return nullptr;
    const CarriedMesh& mesh = Importing::At(model.carried.meshOf, keys[index]);
    return mesh.primitive ? &*mesh.primitive : nullptr;
}

}  // namespace

MeshWriter::MeshWriter(const Model& model, Buffers& buffers, Document& document)
    : model_(model), buffers_(buffers), document_(document)
{}

const MeshArrays* MeshWriter::Find(int geometry)
{
    auto found = written_.find(geometry);
    if (found == written_.end())
        found = written_.emplace(geometry, Write(geometry)).first;
    return found->second ? &*found->second : nullptr;
}

std::optional<MeshArrays> MeshWriter::Write(int geometry)
{
    Geometry& mesh = Importing::At(model_.scene->GeometryLibrary, geometry);
    if (const CarriedPrimitive* primitive = CarriedPrimitiveOf(model_, geometry))
        return WritePinned(*primitive, buffers_, document_);
    const auto index = static_cast<std::size_t>(geometry);
    const std::vector<Pipeline::VertexLayout>& layouts = model_.supplement.layouts;
    return WriteTriangles(mesh, index < layouts.size() ? layouts[index] : Pipeline::VertexLayout());
}

std::optional<MeshArrays> MeshWriter::WriteTriangles(Geometry& geometry, const Pipeline::VertexLayout& layout)
{
    if (!HasTriangles(geometry))
        return std::nullopt;
    const std::vector<std::uint32_t> triangles = UsableTriangles(geometry);
    if (triangles.empty())
        return std::nullopt;

    MeshArrays arrays;
    WritePositions(geometry, triangles, arrays);
    if (HasNormals(geometry))
        WriteNormals(geometry, triangles, arrays);
    WriteAttributes(geometry, layout, buffers_, document_, arrays, mended_);
    WriteWeights(geometry, arrays);
    WriteIndices(triangles, geometry.VertexArray.size(), arrays);
    return arrays;
}

std::vector<std::uint32_t> MeshWriter::UsableTriangles(Geometry& geometry)
{
    Importing::CheckIndices(geometry.IndexArray, geometry.VertexArray.size());
    const auto isFinite = [](Vertex& vertex) { return IsFinitePosition(vertex.Vertex::GetPosition()); };
    if (geometry.IndexArray.size() % 3 == 0 &&
        std::all_of(geometry.VertexArray.begin(), geometry.VertexArray.end(), isFinite))
        return geometry.IndexArray;

    std::vector<std::uint32_t> triangles;
    triangles.reserve(geometry.IndexArray.size());
    const auto isUsable = [&](std::uint32_t v) { return isFinite(geometry.VertexArray[v]); };
    for (std::size_t i = 0; i + 2 < geometry.IndexArray.size(); i += 3)
    {
        const auto first = geometry.IndexArray.begin() + static_cast<std::ptrdiff_t>(i);
        if (std::all_of(first, first + 3, isUsable))
            triangles.insert(triangles.end(), first, first + 3);
        else
            ++mended_.triangles;
    }
    return triangles;
}

void MeshWriter::WritePositions(Geometry& geometry, const std::vector<std::uint32_t>& triangles, MeshArrays& arrays)
{
    // Only vertices that no usable triangle uses are not finite.
    const D3DXVECTOR3 usable = geometry.VertexArray[triangles.front()].GetPosition();
    std::vector<D3DXVECTOR3> positions;
    positions.reserve(geometry.VertexArray.size());
    for (Vertex& vertex : geometry.VertexArray)
    {
        const D3DXVECTOR3 position = vertex.Vertex::GetPosition();
        positions.push_back(IsFinitePosition(position) ? position : usable);
    }

    const int accessor = buffers_.Add(positions, {"VEC3"}, Usage::Vertices);
    SetBounds(positions, EntryAt(document_.accessors, accessor));
    arrays.attributes["POSITION"] = accessor;
}

void MeshWriter::WriteNormals(Geometry& geometry, const std::vector<std::uint32_t>& triangles, MeshArrays& arrays)
{
    if (!Pipeline::HasNormals(geometry))
        return;
    std::vector<D3DXVECTOR3> normals;
    normals.reserve(geometry.VertexArray.size());
    std::vector<bool> isMissing(geometry.VertexArray.size(), false);
    bool anyIsMissing = false;
    for (Vertex& vertex : geometry.VertexArray)
    {
        D3DXVECTOR3 normal = vertex.Vertex::GetNormal();
        if (!Normalize(normal))
        {
            isMissing[normals.size()] = true;
            anyIsMissing = true;
            ++mended_.normals;
            normal = {0, 0, 1};
        }
        normals.push_back(normal);
    }
    for (std::size_t i = 0; anyIsMissing && i < triangles.size(); ++i)
    {
        if (isMissing[triangles[i]])
            normals[triangles[i]] = FaceNormal(geometry, &triangles[i - i % 3]);
    }
    arrays.attributes["NORMAL"] = buffers_.Add(normals, {"VEC3"}, Usage::Vertices);
}

void MeshWriter::WriteWeights(Geometry& geometry, MeshArrays& arrays)
{
    if (geometry.JointArray.empty())
        return;
    const std::optional<WeightSets> weights = CollectWeights(geometry);
    if (!weights)
    {
        ++mended_.skins;
        return;
    }
    mended_.weights += weights->normalized;
    for (std::size_t set = 0; set < weights->joints.size(); ++set)
    {
        arrays.attributes[fmt::format("JOINTS_{}", set)] =
            buffers_.Add(weights->joints[set], {"VEC4", kUnsignedShort}, Usage::Vertices);
        arrays.attributes[fmt::format("WEIGHTS_{}", set)] =
            buffers_.Add(weights->weights[set], {"VEC4"}, Usage::Vertices);
    }
    arrays.isSkinned = true;
}

void MeshWriter::WriteIndices(const std::vector<std::uint32_t>& triangles, std::size_t vertexCount, MeshArrays& arrays)
{
    if (vertexCount <= kMostShort)
        arrays.indices = buffers_.Add(std::vector<std::uint16_t>(triangles.begin(), triangles.end()),
                                      {"SCALAR", kUnsignedShort}, Usage::Indices);
    else
        arrays.indices = buffers_.Add(triangles, {"SCALAR", kUnsignedInt}, Usage::Indices);
}

}  // namespace Sceneprep::Gltf

#include <sceneprep/export/gltf/Meshes.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <sceneprep/export/gltf/Weights.h>

#include <algorithm>
#include <cmath>

namespace Sceneprep::Gltf
{

using Pipeline::HasTriangles;

namespace
{

using Importing::Geometry;
using Importing::Vertex;

constexpr Layout kVectors2 = {TINYGLTF_TYPE_VEC2, TINYGLTF_COMPONENT_TYPE_FLOAT};
constexpr Layout kVectors3 = {TINYGLTF_TYPE_VEC3, TINYGLTF_COMPONENT_TYPE_FLOAT};
constexpr Layout kShortIndices = {TINYGLTF_TYPE_SCALAR, TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT};
constexpr Layout kLongIndices = {TINYGLTF_TYPE_SCALAR, TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT};

bool IsFinite(const D3DXVECTOR3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

bool IsFinite(const D3DXVECTOR2& v) { return std::isfinite(v.x) && std::isfinite(v.y); }

/// To unit length, in double precision: short normals keep their direction.
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

void SetBounds(const std::vector<D3DXVECTOR3>& positions, tinygltf::Accessor& accessor)
{
    D3DXVECTOR3 min = positions.front();
    D3DXVECTOR3 max = min;
    for (const D3DXVECTOR3& p : positions)
    {
        min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
    }
    accessor.minValues = {min.x, min.y, min.z};
    accessor.maxValues = {max.x, max.y, max.z};
}

/// The largest number of an index of two bytes is kept for other purposes.
constexpr std::size_t kMostShort = 65535;

/// Of a mesh every vertex of which has as many UV sets as the first.
std::size_t ExpectedBytes(const Geometry& geometry)
{
    const std::size_t vertices = geometry.VertexArray.size();
    const std::size_t sets = vertices > 0 ? geometry.VertexArray.front().GetTexCoordCount() : 0;
    const std::size_t indexSize = vertices <= kMostShort ? sizeof(std::uint16_t) : sizeof(std::uint32_t);
    return vertices * (2 * sizeof(D3DXVECTOR3) + sets * sizeof(D3DXVECTOR2)) + geometry.IndexArray.size() * indexSize;
}

std::size_t ExpectedBytes(const Importing::SceneContainer& scene)
{
    std::size_t bytes = 0;
    for (const Geometry& geometry : scene.GeometryLibrary)
        bytes += ExpectedBytes(geometry);
    return bytes;
}

}  // namespace

std::size_t MeshArrays::CountTexCoords() const
{
    return static_cast<std::size_t>(std::count_if(attributes.begin(), attributes.end(), [](const auto& attribute) {
        return attribute.first.starts_with("TEXCOORD_");
    }));
}

MeshWriter::MeshWriter(Importing::SceneContainer& scene, Buffers& buffers, tinygltf::Model& model)
    : scene_(scene), buffers_(buffers), model_(model)
{
    buffers_.Expect(ExpectedBytes(scene));
}

const MeshArrays* MeshWriter::Find(int geometry)
{
    auto found = written_.find(geometry);
    if (found == written_.end())
        found = written_.emplace(geometry, Write(Importing::At(scene_.GeometryLibrary, geometry))).first;
    return found->second ? &*found->second : nullptr;
}

std::optional<MeshArrays> MeshWriter::Write(Geometry& geometry)
{
    if (!HasTriangles(geometry))
        return std::nullopt;
    const std::vector<std::uint32_t> triangles = UsableTriangles(geometry);
    if (triangles.empty())
        return std::nullopt;

    MeshArrays arrays;
    WritePositions(geometry, triangles, arrays);
    WriteNormals(geometry, triangles, arrays);
    WriteTexCoords(geometry, arrays);
    WriteWeights(geometry, arrays);
    WriteIndices(triangles, geometry.VertexArray.size(), arrays);
    return arrays;
}

std::vector<std::uint32_t> MeshWriter::UsableTriangles(Geometry& geometry)
{
    Importing::CheckIndices(geometry.IndexArray, geometry.VertexArray.size());
    const auto isFinite = [](Vertex& vertex) { return IsFinite(vertex.Vertex::GetPosition()); };
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
    // Vertices that cannot be written are those that no triangle uses.
    const D3DXVECTOR3 usable = geometry.VertexArray[triangles.front()].GetPosition();
    std::vector<D3DXVECTOR3> positions;
    positions.reserve(geometry.VertexArray.size());
    for (Vertex& vertex : geometry.VertexArray)
    {
        const D3DXVECTOR3 position = vertex.Vertex::GetPosition();
        positions.push_back(IsFinite(position) ? position : usable);
    }

    const int accessor = buffers_.Add(positions, kVectors3, Usage::Vertices);
    SetBounds(positions, model_.accessors[static_cast<std::size_t>(accessor)]);
    arrays.attributes["POSITION"] = accessor;
}

void MeshWriter::WriteNormals(Geometry& geometry, const std::vector<std::uint32_t>& triangles, MeshArrays& arrays)
{
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
    arrays.attributes["NORMAL"] = buffers_.Add(normals, kVectors3, Usage::Vertices);
}

/// The format counts v downwards, the scene upwards. Merged meshes may hold vertices with fewer sets than others; what
/// they lack is (0, 0).
void MeshWriter::WriteTexCoords(Geometry& geometry, MeshArrays& arrays)
{
    std::uint64_t sets = 0;
    for (const Vertex& vertex : geometry.VertexArray)
        sets = std::max(sets, vertex.GetTexCoordCount());
    for (std::uint64_t set = 0; set < sets; ++set)
    {
        std::vector<D3DXVECTOR2> texCoords(geometry.VertexArray.size(), D3DXVECTOR2(0, 1));
        for (std::size_t v = 0; v < texCoords.size(); ++v)
        {
            Vertex& vertex = geometry.VertexArray[v];
            if (set >= vertex.GetTexCoordCount())
                continue;
            const D3DXVECTOR2 uv = vertex.GetTexCoord(static_cast<int>(set));
            if (IsFinite(uv))
                texCoords[v] = {uv.x, 1 - uv.y};
            else
                ++mended_.texCoords;
        }
        arrays.attributes[fmt::format("TEXCOORD_{}", set)] = buffers_.Add(texCoords, kVectors2, Usage::Vertices);
    }
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
    mended_.weights += weights->sharedAnew;
    for (std::size_t set = 0; set < weights->joints.size(); ++set)
    {
        arrays.attributes[fmt::format("JOINTS_{}", set)] = buffers_.Add(
            weights->joints[set], {TINYGLTF_TYPE_VEC4, TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT}, Usage::Vertices);
        arrays.attributes[fmt::format("WEIGHTS_{}", set)] =
            buffers_.Add(weights->weights[set], {TINYGLTF_TYPE_VEC4, TINYGLTF_COMPONENT_TYPE_FLOAT}, Usage::Vertices);
    }
    arrays.isSkinned = true;
}

void MeshWriter::WriteIndices(const std::vector<std::uint32_t>& triangles, std::size_t vertexCount, MeshArrays& arrays)
{
    if (vertexCount <= kMostShort)
        arrays.indices =
            buffers_.Add(std::vector<std::uint16_t>(triangles.begin(), triangles.end()), kShortIndices, Usage::Indices);
    else
        arrays.indices = buffers_.Add(triangles, kLongIndices, Usage::Indices);
}

}  // namespace Sceneprep::Gltf

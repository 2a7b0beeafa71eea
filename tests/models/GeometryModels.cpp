#include <models/GeometryModels.h>

#include <importing/base/ForReading.h>

#include <array>
#include <bit>
#include <cstddef>
#include <map>
#include <stdexcept>

namespace Models
{

using Importing::ForReading;
using Importing::Vertex;

namespace
{

constexpr D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

bool IsIdentity(const D3DXMATRIX& matrix)
{
    using Bits = std::array<std::uint32_t, 16>;
    return std::bit_cast<Bits>(matrix) == std::bit_cast<Bits>(kIdentity);
}

/// Invalidates the hash of a mesh, by a setter that stores hashed content.
void InvalidateHash(Geometry& mesh) { mesh.SetPolySize(mesh.GetPolySize()); }

void ThrowBadIndex() { throw std::out_of_range("invalid vector<T> subscript"); }

bool DifferInTheLowestBitsAtMost(float a, float b)
{
    return ((std::bit_cast<std::uint32_t>(a) ^ std::bit_cast<std::uint32_t>(b)) & 0xFFFFFF00U) == 0;
}

bool AllHashesDiffer(Geometry& mesh)
{
    std::map<std::uint32_t, std::uint32_t> numbers;
    for (std::uint32_t i = 0; i < mesh.VertexArray.size(); ++i)
    {
        const std::uint32_t hash = mesh.VertexArray[i].GetHash();
        if (numbers.count(hash) != 0)
            break;
        numbers[hash] = i;
    }
    return numbers.size() == mesh.VertexArray.size();
}

}  // namespace

D3DXMATRIX NormalMatrix(const D3DXMATRIX& matrix)
{
    D3DXMATRIX result = kIdentity;
    for (unsigned row = 0; row < 3; ++row)
    {
        D3DXVECTOR3 v(matrix(row, 0), matrix(row, 1), matrix(row, 2));
        if (!(v.x == 0 && v.y == 0 && v.z == 0))
            D3DXVec3Normalize(&v, &v);
        result(row, 0) = v.x;
        result(row, 1) = v.y;
        result(row, 2) = v.z;
    }
    return result;
}

int Transform(Geometry& mesh, const D3DXMATRIX& matrix)
{
    if (IsIdentity(matrix))
        return 0;
    const D3DXMATRIX normalMatrix = NormalMatrix(matrix);
    for (Vertex& vertex : mesh.VertexArray)
    {
        D3DXVECTOR3 position = vertex.GetPosition();
        D3DXVECTOR3 normal = vertex.GetNormal();
        vertex.SetPosition(*D3DXVec3TransformCoord(&position, &position, &matrix));
        vertex.SetNormal(*D3DXVec3TransformCoord(&normal, &normal, &normalMatrix));
    }
    InvalidateHash(mesh);
    return 0;
}

int TransformUVs(Geometry& mesh, const D3DXMATRIX& matrix, int set)
{
    if (IsIdentity(matrix))
        return 0;
    for (Vertex& vertex : mesh.VertexArray)
    {
        D3DXVECTOR2 uv(0, 0);
        if (static_cast<std::uint64_t>(set) < vertex.GetTexCoordCount())
            uv = vertex.GetTexCoord(set);
        vertex.SetTexCoord(*D3DXVec2TransformCoord(&uv, &uv, &matrix), static_cast<std::uint64_t>(set));
    }
    InvalidateHash(mesh);
    return 0;
}

int GetBoundingBox(const Geometry& mesh, D3DXVECTOR3& min, D3DXVECTOR3& max)
{
    const auto largest = std::bit_cast<float>(0x7F7FFFFFU);
    const auto smallestPositive = std::bit_cast<float>(0x00800000U);
    min = D3DXVECTOR3(largest, largest, largest);
    max = D3DXVECTOR3(smallestPositive, smallestPositive, smallestPositive);
    for (const Vertex& vertex : mesh.VertexArray)
    {
        const D3DXVECTOR3 p = ForReading(vertex).GetPosition();
        for (float D3DXVECTOR3::*axis : {&D3DXVECTOR3::x, &D3DXVECTOR3::y, &D3DXVECTOR3::z})
        {
            if (min.*axis > p.*axis)
                min.*axis = p.*axis;
            if (p.*axis > max.*axis)
                max.*axis = p.*axis;
        }
    }
    return 0;
}

int Append(Geometry& mesh, const Geometry& other)
{
    if (other.GetPolySize() != mesh.GetPolySize())
        return -1;
    const auto base = static_cast<std::uint32_t>(mesh.VertexArray.size());
    const std::size_t first = mesh.IndexArray.size();
    for (const Vertex& vertex : other.VertexArray)
        mesh.VertexArray.push_back(vertex);
    for (const std::uint32_t index : other.IndexArray)
        mesh.IndexArray.push_back(index);
    for (std::size_t i = first; i < mesh.IndexArray.size(); ++i)
        mesh.IndexArray[i] += base;
    InvalidateHash(mesh);
    return 0;
}

int Append(Geometry& mesh, const Geometry& other, const D3DXMATRIX& matrix)
{
    if (other.GetPolySize() != mesh.GetPolySize())
        return -1;
    const D3DXMATRIX normalMatrix = NormalMatrix(matrix);
    const std::size_t base = mesh.VertexArray.size();
    mesh.VertexArray.resize(base + other.VertexArray.size());
    for (std::size_t i = 0; i < other.VertexArray.size(); ++i)
    {
        mesh.VertexArray[base + i] = other.VertexArray[i];
        mesh.VertexArray[base + i].Transform(matrix, normalMatrix);
    }
    const std::size_t first = mesh.IndexArray.size();
    mesh.IndexArray.resize(first + other.IndexArray.size(), 0);
    for (std::size_t t = 0; t < other.IndexArray.size(); ++t)
        mesh.IndexArray[first + t] = other.IndexArray[t] + static_cast<std::uint32_t>(base);
    InvalidateHash(mesh);
    return 0;
}

int Optimize(Geometry& mesh)
{
    if (AllHashesDiffer(mesh))
        return 0;
    for (const std::uint32_t index : mesh.IndexArray)
        if (index >= mesh.VertexArray.size())
            ThrowBadIndex();

    std::map<std::uint32_t, std::uint32_t> numbers;
    std::vector<Vertex> welded(mesh.VertexArray.size());
    std::vector<std::uint32_t> indices = mesh.IndexArray;
    std::uint32_t n = 0;
    for (std::uint32_t& index : indices)
    {
        Vertex& vertex = mesh.VertexArray[index];
        const std::uint32_t hash = vertex.GetHash();
        const auto known = numbers.find(hash);
        if (known != numbers.end() &&
            DifferInTheLowestBitsAtMost(welded[known->second].GetPosition().x, vertex.GetPosition().x))
        {
            index = known->second;
            continue;
        }
        if (n >= welded.size())
            ThrowBadIndex();
        welded[n] = vertex;
        numbers[hash] = n;
        index = n;
        ++n;
    }
    welded.resize(n);
    mesh.VertexArray = welded;
    mesh.IndexArray = indices;
    InvalidateHash(mesh);
    return 0;
}

int Release(Geometry& mesh)
{
    mesh.SetName("");
    mesh.VertexArray.clear();
    mesh.IndexArray.clear();
    mesh.JointArray.clear();
    InvalidateHash(mesh);
    return 0;
}

}  // namespace Models

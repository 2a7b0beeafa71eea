#include <models/GeometryModels.h>

#include <bit>
#include <cstddef>
#include <map>
#include <stdexcept>

namespace Models
{

using Importing::Vertex;

namespace
{

void CheckFaces(const Geometry& mesh)
{
    for (std::size_t i = 0; i < mesh.IndexArray.size() / 3 * 3; ++i)
        if (mesh.IndexArray[i] >= mesh.VertexArray.size())
            throw std::out_of_range("invalid vector<T> subscript");
}

/// Checks every entry that the frames before `end` read or write.
void CheckPointCacheEntries(const Geometry& mesh, std::size_t end)
{
    for (std::size_t base = 0; base < end; base += mesh.VertexArray.size())
        for (std::size_t i = 0; i < mesh.IndexArray.size() / 3 * 3; ++i)
            if (base + mesh.IndexArray[i] >= mesh.PointCachePositions.size() ||
                base + mesh.IndexArray[i] >= mesh.PointCacheNormals.size())
                throw std::out_of_range("invalid vector<T> subscript");
}

D3DXVECTOR3 CrossOfEdges(const D3DXVECTOR3& p0, const D3DXVECTOR3& p1, const D3DXVECTOR3& p2)
{
    const D3DXVECTOR3 e1(p1.x - p0.x, p1.y - p0.y, p1.z - p0.z);
    const D3DXVECTOR3 e2(p2.x - p0.x, p2.y - p0.y, p2.z - p0.z);
    return {e1.y * e2.z - e1.z * e2.y, e1.z * e2.x - e1.x * e2.z, e1.x * e2.y - e1.y * e2.x};
}

D3DXVECTOR3 CrossOfFace(Geometry& mesh, std::size_t face)
{
    const std::uint32_t i0 = mesh.IndexArray[3 * face];
    const std::uint32_t i1 = mesh.IndexArray[3 * face + 1];
    const std::uint32_t i2 = mesh.IndexArray[3 * face + 2];
    return CrossOfEdges(mesh.VertexArray[i0].GetPosition(), mesh.VertexArray[i1].GetPosition(),
                        mesh.VertexArray[i2].GetPosition());
}

float DotOf(const D3DXVECTOR3& n, const D3DXVECTOR3& m) { return (n.y * m.y + n.x * m.x) + n.z * m.z; }

D3DXVECTOR3 SumOf(const D3DXVECTOR3& n, const D3DXVECTOR3& m) { return {n.x + m.x, n.y + m.y, n.z + m.z}; }

}  // namespace

int FlipNormals(Geometry& mesh)
{
    for (Vertex& vertex : mesh.VertexArray)
    {
        const D3DXVECTOR3 normal = vertex.GetNormal();
        vertex.SetNormal(D3DXVECTOR3(-normal.x, -normal.y, -normal.z));
    }
    return 0;
}

int FlipFaces(Geometry& mesh)
{
    if (mesh.GetPolySize() != 3)
        return -1;
    std::vector<std::uint32_t> indices = mesh.IndexArray;
    std::uint32_t remembered = 0;
    for (std::size_t i = 0; i < indices.size(); ++i)
    {
        if (i % 3 == 1)
        {
            if (i + 1 == indices.size())
                throw std::out_of_range("invalid vector<T> subscript");
            remembered = indices[i];
            indices[i] = indices[i + 1];
        }
        if (i % 3 == 2)
            indices[i] = remembered;
    }
    mesh.IndexArray = indices;
    return 0;
}

int ComputeNormals(Geometry& mesh)
{
    if (mesh.GetPolySize() != 3)
        return -1;
    CheckFaces(mesh);
    const auto threshold = std::bit_cast<float>(0x3F4CCCCDU);
    std::map<std::int32_t, bool> visited;
    for (std::size_t face = 0; face < mesh.IndexArray.size() / 3; ++face)
    {
        D3DXVECTOR3 n = CrossOfFace(mesh, face);
        D3DXVec3Normalize(&n, &n);
        for (std::size_t corner = 0; corner < 3; ++corner)
        {
            std::uint32_t& index = mesh.IndexArray[3 * face + corner];
            if (!visited[static_cast<std::int32_t>(index)])
            {
                mesh.VertexArray[index].SetNormal(n);
                visited[static_cast<std::int32_t>(index)] = true;
                continue;
            }
            const D3DXVECTOR3 m = mesh.VertexArray[index].GetNormal();
            if (DotOf(n, m) > threshold)
            {
                mesh.VertexArray[index].SetNormal(SumOf(n, m));
                mesh.VertexArray[index].NormalizeNormal();
                continue;
            }
            Vertex copy(mesh.VertexArray[index]);
            copy.SetNormal(n);
            mesh.VertexArray.push_back(copy);
            index = static_cast<std::uint32_t>(mesh.VertexArray.size() - 1);
        }
    }
    return 0;
}

int ComputePointCacheNormals(Geometry& mesh)
{
    if (mesh.GetPolySize() != 3)
        return -1;
    const std::size_t vertexCount = mesh.VertexArray.size();
    if (vertexCount == 0)
        return 0;
    const auto frames = static_cast<std::int32_t>(mesh.PointCachePositions.size() / vertexCount);
    if (frames <= 0)
        return 0;
    CheckPointCacheEntries(mesh, static_cast<std::size_t>(frames) * vertexCount);

    for (std::int32_t frame = 0; frame < frames; ++frame)
    {
        const std::size_t base = static_cast<std::size_t>(frame) * vertexCount;
        std::map<std::int32_t, bool> visited;
        for (std::size_t face = 0; face < mesh.IndexArray.size() / 3; ++face)
        {
            const auto position = [&](std::size_t corner) {
                return mesh.PointCachePositions[base + mesh.IndexArray[3 * face + corner]];
            };
            D3DXVECTOR3 n = CrossOfEdges(position(0), position(1), position(2));
            D3DXVec3Normalize(&n, &n);
            for (std::size_t corner = 0; corner < 3; ++corner)
            {
                const auto v = static_cast<std::int32_t>(mesh.IndexArray[3 * face + corner]);
                D3DXVECTOR3& normal = mesh.PointCacheNormals[base + static_cast<std::size_t>(v)];
                if (visited[v])
                {
                    normal = SumOf(n, normal);
                    D3DXVec3Normalize(&normal, &normal);
                }
                else
                {
                    normal = n;
                    visited[v] = true;
                }
            }
        }
    }
    return 0;
}

int UnifyNormals(Geometry& mesh, bool suppress)
{
    if (mesh.GetPolySize() != 3)
        return -1;
    CheckFaces(mesh);
    for (std::size_t face = 0; face < mesh.IndexArray.size() / 3; ++face)
    {
        const D3DXVECTOR3 n = CrossOfFace(mesh, face);
        for (std::size_t corner = 0; corner < 3; ++corner)
        {
            Vertex& vertex = mesh.VertexArray[mesh.IndexArray[3 * face + corner]];
            const D3DXVECTOR3 m = vertex.GetNormal();
            if (DotOf(n, m) < 0 && !suppress)
                vertex.SetNormal(D3DXVECTOR3(-m.x, -m.y, -m.z));
        }
    }
    return 0;
}

int FixFaceCulling(Geometry& mesh, bool suppress)
{
    if (mesh.GetPolySize() != 3)
        return -1;
    CheckFaces(mesh);
    for (std::size_t face = 0; face < mesh.IndexArray.size() / 3; ++face)
    {
        const D3DXVECTOR3 n = CrossOfFace(mesh, face);
        int count = 0;
        for (std::size_t corner = 0; corner < 3; ++corner)
            if (DotOf(n, mesh.VertexArray[mesh.IndexArray[3 * face + corner]].GetNormal()) < 0 && !suppress)
                ++count;
        if (count < 3)
            continue;
        const std::uint32_t i1 = mesh.IndexArray[3 * face + 1];
        const std::uint32_t i2 = mesh.IndexArray[3 * face + 2];
        mesh.IndexArray[3 * face + 1] = i2;
        mesh.IndexArray[3 * face + 2] = i1;
    }
    return 0;
}

}  // namespace Models

#include <support/RandomMesh.h>

#include <support/Random.h>

#include <bit>
#include <limits>
#include <string>
#include <utility>

namespace Support
{

using Importing::Geometry;
using Importing::Joint;
using Importing::Vertex;

namespace
{

float SpecialFloat(Random& random)
{
    using Limits = std::numeric_limits<float>;
    const float values[] = {
        -0.0F,          Limits::quiet_NaN(), Limits::infinity(),   -Limits::infinity(), Limits::max(),
        -Limits::max(), Limits::min(),       Limits::denorm_min(), Limits::epsilon()};
    return values[random.Below(std::size(values))];
}

/// Returns a float that differs from the given one at most in the lowest 8 bits.
float Nudged(float value, Random& random)
{
    return std::bit_cast<float>(std::bit_cast<std::uint32_t>(value) ^ random.Below(256));
}

class MeshBuilder
{
public:
    MeshBuilder(std::uint32_t seed, const RandomMeshOptions& options)
        : random_(seed), options_(options), isWild_(options.specialFloats && random_.OneIn(2)),
          isFlat_(random_.OneIn(2))
    {}

    Vertex NextVertex()
    {
        Vertex vertex(Coordinate(), Coordinate(), isFlat_ ? 0.05F * Coordinate() : Coordinate());
        vertex.SetNormal(Normal());
        const std::uint32_t sets = random_.Below(5);
        for (std::uint32_t set = 0; set < sets; ++set)
        {
            const float u = Coordinate();
            vertex.SetTexCoord(D3DXVECTOR2(u, Coordinate()), set);
        }
        const std::uint32_t weights = random_.OneIn(2) ? 0 : random_.Below(5);
        for (std::uint32_t i = 0; i < weights; ++i)
            vertex.AddWeight(random_.Below(8), random_.Between(0, 1));
        return vertex;
    }

    Geometry Build()
    {
        AddVertices();
        if (!mesh_.VertexArray.empty())
            AddFaces();
        AddTheRest();
        SpoilAnIndex();
        ComputeSomeHashes();
        return std::move(mesh_);
    }

private:
    float Coordinate()
    {
        if (isWild_ && random_.OneIn(12))
            return SpecialFloat(random_);
        const float coarse = 0.5F * static_cast<float>(random_.Below(9)) - 2;
        return random_.OneIn(2) ? coarse : random_.Between(-2, 2);
    }

    D3DXVECTOR3 Normal()
    {
        const float sign = random_.OneIn(2) ? -1.0F : 1.0F;
        switch (random_.Below(6))
        {
            case 0:
                return {0, 0, sign};
            case 1:
                return {sign, 0, 0};
            case 2:
                return {0, 0, 0};
            default:
                break;
        }
        const float x = 0.6F * Coordinate();
        const float y = 0.6F * Coordinate();
        return {x, y, 0.6F * Coordinate()};
    }

    Vertex DoubledVertex()
    {
        std::vector<Vertex>& vertices = mesh_.VertexArray;
        Vertex vertex = vertices[random_.Below(static_cast<std::uint32_t>(vertices.size()))];
        const D3DXVECTOR3 p = vertex.GetPosition();
        switch (random_.Below(4))
        {
            case 0:
            {
                const float x = Nudged(p.x, random_);
                const float y = Nudged(p.y, random_);
                vertex.SetPosition(D3DXVECTOR3(x, y, Nudged(p.z, random_)));
                break;
            }
            case 1:
                vertex.SetPosition(D3DXVECTOR3(p.x == 0 ? -p.x : p.x, p.y, p.z));
                break;
            default:
                break;
        }
        return vertex;
    }

    void AddVertices()
    {
        const std::uint32_t count = random_.OneIn(16) ? 0 : 1 + random_.Below(options_.maxVertices);
        for (std::uint32_t i = 0; i < count; ++i)
        {
            Vertex vertex = i > 0 && random_.OneIn(3) ? DoubledVertex() : NextVertex();
            mesh_.VertexArray.push_back(std::move(vertex));
        }
    }

    std::uint32_t AnyIndex() { return random_.Below(static_cast<std::uint32_t>(mesh_.VertexArray.size())); }

    /// Adds the faces. In a flat mesh most triangles face the same way, so that neighbours are smoothed and not split.
    bool LooksDown(std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        const D3DXVECTOR3 p0 = mesh_.VertexArray[a].GetPosition();
        const D3DXVECTOR3 e1 = mesh_.VertexArray[b].GetPosition() - p0;
        const D3DXVECTOR3 e2 = mesh_.VertexArray[c].GetPosition() - p0;
        return e1.x * e2.y - e1.y * e2.x < 0;
    }

    void AddFaces()
    {
        const std::uint32_t faces = random_.Below(options_.maxFaces + 1);
        for (std::uint32_t face = 0; face < faces; ++face)
        {
            const std::uint32_t a = AnyIndex();
            std::uint32_t b = AnyIndex();
            std::uint32_t c = random_.OneIn(8) ? a : AnyIndex();
            if (isFlat_ && LooksDown(a, b, c))
                std::swap(b, c);
            mesh_.IndexArray.insert(mesh_.IndexArray.end(), {a, b, c});
        }
        if (!options_.trailingIndices)
            return;
        for (std::uint32_t rest = random_.Below(3); rest > 0; --rest)
            mesh_.IndexArray.push_back(AnyIndex());
    }

    void AddTheRest()
    {
        const std::string number = std::to_string(random_.Below(100));
        mesh_.SetName("mesh " + number);
        if (options_.otherPolySizes && random_.OneIn(16))
            mesh_.SetPolySize(4);
        mesh_.SetBindShapeTransform(RandomMatrix(random_.Next()));
        if (random_.OneIn(2))
        {
            Joint joint("joint " + number);
            joint.SetParentID(-1);
            joint.SetAnimationID(static_cast<int>(random_.Below(4)));
            mesh_.JointArray.push_back(joint);
        }
        AddPointCache();
    }

    void AddPointCache()
    {
        const auto vertexCount = static_cast<std::uint32_t>(mesh_.VertexArray.size());
        const std::uint32_t rest = vertexCount > 0 ? random_.Below(vertexCount) : 2;
        const std::uint32_t entries = random_.Below(4) * vertexCount + rest;
        for (std::uint32_t i = 0; i < entries; ++i)
        {
            const float x = Coordinate();
            const float y = Coordinate();
            mesh_.PointCachePositions.emplace_back(x, y, Coordinate());
        }
        mesh_.PointCacheNormals.assign(entries, D3DXVECTOR3(7, 8, 9));
    }

    void SpoilAnIndex()
    {
        if (!options_.badIndices || mesh_.IndexArray.empty() || !random_.OneIn(12))
            return;
        const std::uint32_t position = random_.Below(static_cast<std::uint32_t>(mesh_.IndexArray.size()));
        mesh_.IndexArray[position] = static_cast<std::uint32_t>(mesh_.VertexArray.size()) + random_.Below(2);
    }

    void ComputeSomeHashes()
    {
        if (random_.OneIn(2))
            mesh_.GetHash();
        for (Vertex& vertex : mesh_.VertexArray)
        {
            if (random_.OneIn(3))
                vertex.GetHash();
            if (random_.OneIn(3))
                vertex.SetNormal(vertex.GetNormal());
        }
    }

    Geometry mesh_;
    Random random_;
    RandomMeshOptions options_;
    bool isWild_;
    bool isFlat_;
};

}  // namespace

Geometry RandomMesh(std::uint32_t seed, const RandomMeshOptions& options) { return MeshBuilder(seed, options).Build(); }

Vertex RandomVertex(std::uint32_t seed)
{
    RandomMeshOptions options;
    options.specialFloats = false;
    return MeshBuilder(seed, options).NextVertex();
}

D3DXMATRIX RandomMatrix(std::uint32_t seed)
{
    Random random(seed);
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    if (random.OneIn(8))
        return matrix;
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 3; ++column)
            matrix(row, column) = random.Between(-2, 2);
    if (random.OneIn(6))
        matrix(0, 0) = matrix(0, 1) = matrix(0, 2) = -0.0F;
    if (random.OneIn(6))
        matrix(1, 3) = random.Between(-1, 1);
    return matrix;
}

}  // namespace Support

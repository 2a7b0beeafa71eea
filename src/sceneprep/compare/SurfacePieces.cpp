// The values of an attribute at the corners of a triangle become one number: each component is multiplied by a
// coefficient of its own, and each corner by a weight that depends on where the corner is. So the number notices a
// changed value, and values that changed places, but not another order of the corners.

#include <sceneprep/compare/SurfacePieces.h>

#include <fmt/format.h>
#include <importing/math/D3DXMath.h>
#include <pipeline/scene/HasNormals.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <pipeline/scene/Vector3.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

namespace Sceneprep
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Pipeline::Cross;
using Pipeline::Dot;
using Pipeline::Length;
using Pipeline::Minus;
using Vector = Pipeline::Vector3;

/// Directions that axes of models hardly have.
constexpr Vector kNormalAxis = {0.9171, 0.6733, 0.3119};
constexpr Vector kTangentAxis = {0.3711, 0.8527, 0.6389};
constexpr Vector kCornerAxis = {0.5323, 0.2711, 0.8019};

constexpr float kAny = std::numeric_limits<float>::quiet_NaN();

/// Returns a number from 0.5 to 1.5 that depends on the name.
double Coefficient(std::string_view name, std::size_t component)
{
    std::uint64_t hash = 0xCBF29CE484222325ULL + component;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
    hash *= 0x9E3779B97F4A7C15ULL;
    return 0.5 + static_cast<double>(hash >> 11U) / 9007199254740992.0;
}

/// The linear part of a world matrix, and what it does to normals: its cofactors, with the sign of the determinant.
class Frame
{
public:
    explicit Frame(const D3DXMATRIX& matrix)
    {
        for (unsigned r = 0; r < 3; ++r)
            rows_[r] = {matrix(r, 0), matrix(r, 1), matrix(r, 2)};
        for (std::size_t r = 0; r < 3; ++r)
            cofactors_[r] = Cross(rows_[(r + 1) % 3], rows_[(r + 2) % 3]);
        const double determinant = Dot(rows_[0], cofactors_[0]);
        const double largest = Length(rows_[0]) * Length(rows_[1]) * Length(rows_[2]);
        isSingular_ = !(std::fabs(determinant) > 1e-6 * largest);
        if (determinant < 0)
        {
            for (Vector& row : cofactors_)
                row = {-row[0], -row[1], -row[2]};
        }
    }

    bool IsSingular() const { return isSingular_; }
    Vector Direction(const Vector& v) const { return Times(v, rows_); }
    Vector Normal(const Vector& v) const { return Times(v, cofactors_); }

private:
    static Vector Times(const Vector& v, const std::array<Vector, 3>& rows)
    {
        Vector result{};
        for (std::size_t c = 0; c < 3; ++c)
            result[c] = v[0] * rows[0][c] + v[1] * rows[1][c] + v[2] * rows[2][c];
        return result;
    }

    std::array<Vector, 3> rows_{};
    std::array<Vector, 3> cofactors_{};
    bool isSingular_ = false;
};

/// How far rounding may move the corners of a mesh: much only if large numbers cancel each other out.
double NoiseOf(const Vector& largestLocal, const Vector& largestWorld, const D3DXMATRIX& world)
{
    constexpr double kRounding = 5e-7;
    double noise = 0;
    for (unsigned c = 0; c < 3; ++c)
    {
        double sum = std::fabs(world(3, c));
        for (unsigned r = 0; r < 3; ++r)
            sum += largestLocal[r] * std::fabs(world(r, c));
        noise = std::max(noise, kRounding * (sum - 4 * *std::max_element(largestWorld.begin(), largestWorld.end())));
    }
    return std::isfinite(noise) ? noise : 0;
}

}  // namespace

double ProjectedNormal(const std::array<double, 3>& normal) { return Dot(normal, kNormalAxis); }

/// Where the attributes of one mesh are, and what their components are multiplied by.
class SurfacePieces::Attributes
{
public:
    Attributes(Geometry& geometry, const Pipeline::VertexLayout& layout, const D3DXMATRIX& world,
               const IgnoredAttributes& ignored)
        : frame_(world), isMirroring_(Pipeline::IsMirroring(world))
    {
        hasNormals_ = Pipeline::HasNormals(geometry);
        takesNormals_ = !ignored.normals && !frame_.IsSingular();
        std::uint64_t count = 0;
        for (const Vertex& vertex : geometry.VertexArray)
            count = std::max(count, vertex.Vertex::GetTexCoordCount());
        const int sets =
            layout.texCoordSets < 0 ? static_cast<int>(count) : std::min(layout.texCoordSets, static_cast<int>(count));
        for (int set = 0; set < sets; ++set)
        {
            const std::string name = fmt::format("TEXCOORD_{}", set);
            if (!ignored.texCoordSets.contains(set))
                texCoords_.push_back({set, Coefficient(name, 0), Coefficient(name, 1), 0});
        }
        for (const Pipeline::VertexAttribute& attribute : layout.attributes)
            AddAttribute(attribute);
    }

    bool AreFlat() const { return !hasNormals_ && takesNormals_; }

    /// Normals of length 0 are taken for any.
    float NormalsOf(Vertex& vertex) const
    {
        if (!takesNormals_ || !hasNormals_)
            return kAny;
        const D3DXVECTOR3 local = vertex.Vertex::GetNormal();
        const Vector normal = frame_.Normal({local.x, local.y, local.z});
        const double length = Length(normal);
        return length > 0 ? static_cast<float>(Dot(normal, kNormalAxis) / length) : kAny;
    }

    float TangentsOf(Vertex& vertex) const
    {
        if (!takesNormals_ || !hasNormals_ || tangentSet_ < 0 ||
            vertex.Vertex::GetTexCoordCount() < static_cast<std::uint64_t>(tangentSet_) + 2)
            return kAny;
        const D3DXVECTOR2 xy = vertex.Vertex::GetTexCoord(tangentSet_);
        const D3DXVECTOR2 zw = vertex.Vertex::GetTexCoord(tangentSet_ + 1);
        const Vector tangent = frame_.Direction({xy.x, xy.y, zw.x});
        const double length = Length(tangent);
        const double side = (zw.y < 0) != isMirroring_ ? -1 : 1;
        return length > 0 ? static_cast<float>(Dot(tangent, kTangentAxis) / length + side) : kAny;
    }

    float TexCoordsOf(Vertex& vertex) const { return Sum(texCoords_, vertex); }

    float OthersOf(Vertex& vertex) const { return Sum(others_, vertex) + WeightsOf(vertex); }

private:
    /// Two components of an attribute, and the value at which they count as 0.
    struct Pair
    {
        int set;
        double first;
        double second;
        float base;
    };

    void AddAttribute(const Pipeline::VertexAttribute& attribute)
    {
        if (attribute.name == "TANGENT")
        {
            tangentSet_ = attribute.firstSet;
            return;
        }
        const float base = attribute.name.starts_with("COLOR_") ? 1.0F : 0.0F;
        for (int c = 0; c < attribute.components; c += 2)
        {
            const bool hasSecond = c + 1 < attribute.components;
            others_.push_back({attribute.firstSet + c / 2, Coefficient(attribute.name, static_cast<std::size_t>(c)),
                               hasSecond ? Coefficient(attribute.name, static_cast<std::size_t>(c) + 1) : 0.0, base});
        }
    }

    static float Sum(const std::vector<Pair>& pairs, Vertex& vertex)
    {
        if (pairs.empty())
            return 0;
        const std::uint64_t count = vertex.Vertex::GetTexCoordCount();
        double sum = 0;
        for (const Pair& pair : pairs)
        {
            if (static_cast<std::uint64_t>(pair.set) >= count)
                continue;
            const D3DXVECTOR2 value = vertex.Vertex::GetTexCoord(pair.set);
            sum += pair.first * (std::isfinite(value.x) ? value.x - pair.base : 0) +
                   pair.second * (std::isfinite(value.y) ? value.y - pair.base : 0);
        }
        return static_cast<float>(sum);
    }

    /// The writer scales the weights of a vertex to a sum of 1. The order of joints does not matter.
    static float WeightsOf(Vertex& vertex)
    {
        const std::uint64_t count = vertex.Vertex::GetWeightsCount();
        double sum = 0;
        double squares = 0;
        for (std::uint64_t i = 0; i < count; ++i)
        {
            const double weight = vertex.GetWeight(i).second;
            sum += weight;
            squares += weight * weight;
        }
        return sum > 0 && std::isfinite(squares) ? static_cast<float>(squares / (sum * sum)) : 0.0F;
    }

    Frame frame_;
    bool isMirroring_;
    bool hasNormals_ = false;
    bool takesNormals_ = true;
    int tangentSet_ = -1;
    std::vector<Pair> texCoords_;
    std::vector<Pair> others_;
};

PieceCounts SurfacePieces::Add(Geometry& geometry, const Pipeline::VertexLayout& layout, const D3DXMATRIX& world,
                               std::uint32_t look, std::vector<Piece>& pieces)
{
    PieceCounts counts;
    const std::size_t corners = std::min<std::size_t>(geometry.GetPolySize(), 3);
    if (corners == 0)
        return counts;
    const Attributes attributes(geometry, layout, world, ignored_);
    FillCorners(geometry, attributes, world);
    const double handedness = Pipeline::IsMirroring(world) ? -1 : 1;
    const std::uint32_t marked = look | (attributes.AreFlat() && corners == 3 ? kFlatNormals : 0);

    const std::vector<std::uint32_t>& indices = geometry.IndexArray;
    for (std::size_t i = 0; i + corners <= indices.size(); i += corners)
        counts.broken += AddPiece(&indices[i], corners, marked, handedness, pieces, counts.area) ? 0 : 1;

    Vector local{};
    Vector largest{};
    for (std::size_t v = 0; v < corners_.size(); ++v)
    {
        const D3DXVECTOR3 p = geometry.VertexArray[v].Vertex::GetPosition();
        local = {std::max<double>(local[0], std::fabs(p.x)), std::max<double>(local[1], std::fabs(p.y)),
                 std::max<double>(local[2], std::fabs(p.z))};
        for (std::size_t c = 0; c < 3; ++c)
            largest[c] = std::max(largest[c], std::fabs(corners_[v].position[c]));
    }
    counts.noise = NoiseOf(local, largest, world);
    return counts;
}

void SurfacePieces::FillCorners(Geometry& geometry, const Attributes& attributes, const D3DXMATRIX& world)
{
    corners_.clear();
    corners_.reserve(geometry.VertexArray.size());
    for (Vertex& vertex : geometry.VertexArray)
        corners_.push_back({Pipeline::ToWorld(vertex.Vertex::GetPosition(), world), attributes.NormalsOf(vertex),
                            attributes.TexCoordsOf(vertex), attributes.OthersOf(vertex),
                            attributes.TangentsOf(vertex)});
}

/// @return false for a piece with a corner that is NaN or infinite.
bool SurfacePieces::AddPiece(const std::uint32_t* indices, std::size_t count, std::uint32_t look, double handedness,
                             std::vector<Piece>& pieces, double& area) const
{
    Vector center{};
    for (std::size_t i = 0; i < count; ++i)
    {
        const Vector& position = corners_[indices[i]].position;
        if (!Pipeline::IsFinite(position))
            return false;
        for (std::size_t c = 0; c < 3; ++c)
            center[c] += position[c] / static_cast<double>(count);
    }
    std::array<Vector, 3> arms{};
    double squares = 0;
    for (std::size_t i = 0; i < count; ++i)
    {
        arms[i] = Minus(corners_[indices[i]].position, center);
        squares += Dot(arms[i], arms[i]);
    }
    const double size = std::sqrt(squares);

    Piece piece{.look = look, .size = static_cast<float>(size)};
    for (std::size_t i = 0; i < count; ++i)
    {
        const Corner& corner = corners_[indices[i]];
        const double weight = 1.0 / static_cast<double>(count) + (size > 0 ? Dot(arms[i], kCornerAxis) / size : 0.0);
        piece.normals += static_cast<float>(weight * corner.normals);
        piece.texCoords += static_cast<float>(weight * corner.texCoords);
        piece.others += static_cast<float>(weight * corner.others);
        piece.tangents += static_cast<float>(weight * corner.tangents);
    }
    for (std::size_t c = 0; c < 3; ++c)
        piece.center[c] = static_cast<float>(center[c]);
    if (count == 3)
    {
        const Vector across = Cross(Minus(arms[1], arms[0]), Minus(arms[2], arms[0]));
        const double doubleArea = Length(across);
        if (doubleArea == 0)
            return true;  // shows nothing
        for (std::size_t c = 0; c < 3; ++c)
            piece.across[c] = static_cast<float>(handedness * across[c]);
        if ((look & kFlatNormals) != 0)
            piece.normals = static_cast<float>(handedness * Dot(across, kNormalAxis) / doubleArea);
        area += doubleArea / 2;
    }
    pieces.push_back(piece);
    return true;
}

}  // namespace Sceneprep

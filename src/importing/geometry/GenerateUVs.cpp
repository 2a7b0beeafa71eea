// Each mapping is a small function of the position and the normal of a vertex, and one loop applies it to all vertices.
// A separate loop for each mapping would repeat the handling of sets and hashes six times.

#include <importing/geometry/Geometry.h>

#include <cmath>

namespace Importing
{
namespace
{

constexpr float kPi = 3.1415927F;     // 0x40490FDB
constexpr float kTwoPi = 6.2831855F;  // 0x40C90FDB

/// The box that mappings measure positions by.
struct Frame
{
    D3DXVECTOR3 min;
    D3DXVECTOR3 divisor;  ///< the size of the box, or 1 for world units
    D3DXVECTOR3 center;   ///< the centre of the box, divided by the divisor
};

float CenterOver(float size, float min, float divisor) { return (size * 0.5F + min) / divisor; }

Frame FrameOf(const Geometry& mesh, bool worldUnits)
{
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
    mesh.GetBoundingBox(min, max);
    const D3DXVECTOR3 size = max - min;
    const D3DXVECTOR3 divisor = worldUnits ? D3DXVECTOR3(1, 1, 1) : size;
    return {min, divisor,
            D3DXVECTOR3(CenterOver(size.x, min.x, divisor.x), CenterOver(size.y, min.y, divisor.y),
                        CenterOver(size.z, min.z, divisor.z))};
}

/// Returns one coordinate of a planar projection: divides, adds a half and subtracts the centre, in this order.
float Planar(float position, float divisor, float center) { return position / divisor + 0.5F - center; }

/// Returns the angle of a normal about y as a fraction of a full turn. The normal is not normalised first, so |x| above
/// 1 gives NaN.
float TurnAboutY(const D3DXVECTOR3& normal)
{
    return normal.z > 0.0F ? std::acos(normal.x) / kTwoPi : (std::acos(-normal.x) + kPi) / kTwoPi;
}

/// Projects each vertex along the axis of the largest component of its normal.
class CubicMapping
{
public:
    explicit CubicMapping(const Frame& frame) : frame_(frame) {}

    D3DXVECTOR2 operator()(const D3DXVECTOR3& position, const D3DXVECTOR3& normal)
    {
        const float ax = std::fabs(normal.x);
        const float ay = std::fabs(normal.y);
        const float az = std::fabs(normal.z);
        const float x = (position.x - frame_.min.x) / frame_.divisor.x;
        const float y = (position.y - frame_.min.y) / frame_.divisor.y;
        const float z = (position.z - frame_.min.z) / frame_.divisor.z;

        if (ax >= ay && ax >= az)
            last_ = D3DXVECTOR2(z * (normal.x / ax), -y);
        else if (az >= ay && az >= ax)
            last_ = D3DXVECTOR2(-(x * (normal.z / az)), -y);
        else if (ay >= az && ay >= ax)
            last_ = D3DXVECTOR2(x * (normal.y / ay), -z);
        // Otherwise the normal contains NaN, and the coordinates of the previous vertex are used.
        return last_;
    }

private:
    Frame frame_;
    D3DXVECTOR2 last_{0, 0};
};

/// Writes mapping(position, normal) into one UV set of every vertex. Calls to vertices are qualified so that they can
/// be inlined: elements of the array are never of a class derived from Vertex.
template <typename Mapping>
int WriteUVs(std::vector<Vertex>& vertices, int set, Mapping mapping)
{
    // A negative set becomes an index that no vertex accepts, so the first vertex throws before anything has changed.
    const auto index = static_cast<std::uint64_t>(static_cast<std::int64_t>(set));
    for (Vertex& vertex : vertices)
        vertex.Vertex::SetTexCoord(mapping(vertex.Vertex::GetPosition(), vertex.Vertex::GetNormal()), index);
    return 0;
}

}  // namespace

int Geometry::GenerateUVsPlanarX(int set, bool worldUnits)
{
    const Frame f = FrameOf(*this, worldUnits);
    return WriteUVs(VertexArray, set, [f](const D3DXVECTOR3& p, const D3DXVECTOR3&) {
        return D3DXVECTOR2(Planar(p.z, f.divisor.z, f.center.z), Planar(p.y, f.divisor.y, f.center.y));
    });
}

int Geometry::GenerateUVsPlanarY(int set, bool worldUnits)
{
    const Frame f = FrameOf(*this, worldUnits);
    return WriteUVs(VertexArray, set, [f](const D3DXVECTOR3& p, const D3DXVECTOR3&) {
        return D3DXVECTOR2(Planar(p.x, f.divisor.x, f.center.x), Planar(p.z, f.divisor.z, f.center.z));
    });
}

int Geometry::GenerateUVsPlanarZ(int set, bool worldUnits)
{
    const Frame f = FrameOf(*this, worldUnits);
    return WriteUVs(VertexArray, set, [f](const D3DXVECTOR3& p, const D3DXVECTOR3&) {
        return D3DXVECTOR2(Planar(p.x, f.divisor.x, f.center.x), Planar(p.y, f.divisor.y, f.center.y));
    });
}

int Geometry::GenerateUVsCubic(int set, bool worldUnits)
{
    return WriteUVs(VertexArray, set, CubicMapping(FrameOf(*this, worldUnits)));
}

int Geometry::GenerateUVsCylindrical(int set, bool worldUnits)
{
    const Frame f = FrameOf(*this, worldUnits);
    return WriteUVs(VertexArray, set, [f](const D3DXVECTOR3& p, const D3DXVECTOR3& normal) {
        return D3DXVECTOR2(TurnAboutY(normal), -((p.y / f.divisor.y - 0.5F) - f.center.y));
    });
}

int Geometry::GenerateUVsSpherical(int set, bool worldUnits)
{
    // The box is computed but not used: an override of GetBoundingBox gets the call.
    FrameOf(*this, worldUnits);
    const float v = std::acos(0.0F) / kPi;
    return WriteUVs(VertexArray, set,
                    [v](const D3DXVECTOR3&, const D3DXVECTOR3& normal) { return D3DXVECTOR2(TurnAboutY(normal), v); });
}

}  // namespace Importing

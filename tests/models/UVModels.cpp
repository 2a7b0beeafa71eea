#include <models/GeometryModels.h>

#include <bit>
#include <cmath>
#include <functional>

namespace Models
{

using Importing::Vertex;

namespace
{

const auto kPi = std::bit_cast<float>(0x40490FDBU);
const auto kTwoPi = std::bit_cast<float>(0x40C90FDBU);

/// The bounds of the box on one axis.
struct Axis
{
    float min;
    float divisor;
    float center;
};

struct Axes
{
    Axis x;
    Axis y;
    Axis z;
};

Axis AxisOf(float min, float max, bool worldUnits)
{
    const float size = max - min;
    const float divisor = worldUnits ? 1.0F : size;
    const float center = size * 0.5F + min;
    return {min, divisor, center / divisor};
}

Axes AxesOf(const Geometry& mesh, bool worldUnits)
{
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
    GetBoundingBox(mesh, min, max);
    return {AxisOf(min.x, max.x, worldUnits), AxisOf(min.y, max.y, worldUnits), AxisOf(min.z, max.z, worldUnits)};
}

float Planar(float p, const Axis& axis)
{
    float value = p / axis.divisor;
    value = value + 0.5F;
    value = value - axis.center;
    return value;
}

float Along(float p, const Axis& axis) { return (p - axis.min) / axis.divisor; }

float Turn(const D3DXVECTOR3& n)
{
    if (n.z > 0)
        return std::acos(n.x) / kTwoPi;
    return (std::acos(-n.x) + kPi) / kTwoPi;
}

using Mapping = std::function<D3DXVECTOR2(const D3DXVECTOR3& position, const D3DXVECTOR3& normal)>;

int Write(Geometry& mesh, int set, const Mapping& mapping)
{
    for (Vertex& vertex : mesh.VertexArray)
        vertex.SetTexCoord(mapping(vertex.GetPosition(), vertex.GetNormal()), static_cast<std::uint64_t>(set));
    return 0;
}

}  // namespace

int GenerateUVsPlanarX(Geometry& mesh, int set, bool worldUnits)
{
    const Axes box = AxesOf(mesh, worldUnits);
    return Write(mesh, set, [&](const D3DXVECTOR3& p, const D3DXVECTOR3&) {
        return D3DXVECTOR2(Planar(p.z, box.z), Planar(p.y, box.y));
    });
}

int GenerateUVsPlanarY(Geometry& mesh, int set, bool worldUnits)
{
    const Axes box = AxesOf(mesh, worldUnits);
    return Write(mesh, set, [&](const D3DXVECTOR3& p, const D3DXVECTOR3&) {
        return D3DXVECTOR2(Planar(p.x, box.x), Planar(p.z, box.z));
    });
}

int GenerateUVsPlanarZ(Geometry& mesh, int set, bool worldUnits)
{
    const Axes box = AxesOf(mesh, worldUnits);
    return Write(mesh, set, [&](const D3DXVECTOR3& p, const D3DXVECTOR3&) {
        return D3DXVECTOR2(Planar(p.x, box.x), Planar(p.y, box.y));
    });
}

int GenerateUVsCubic(Geometry& mesh, int set, bool worldUnits)
{
    const Axes box = AxesOf(mesh, worldUnits);
    D3DXVECTOR2 uv(0, 0);
    return Write(mesh, set, [&](const D3DXVECTOR3& p, const D3DXVECTOR3& n) {
        const D3DXVECTOR3 a(std::fabs(n.x), std::fabs(n.y), std::fabs(n.z));
        if (a.x >= a.y && a.x >= a.z)
            uv = D3DXVECTOR2(Along(p.z, box.z) * (n.x / a.x), -Along(p.y, box.y));
        else if (a.z >= a.y && a.z >= a.x)
            uv = D3DXVECTOR2(-(Along(p.x, box.x) * (n.z / a.z)), -Along(p.y, box.y));
        else if (a.y >= a.z && a.y >= a.x)
            uv = D3DXVECTOR2(Along(p.x, box.x) * (n.y / a.y), -Along(p.z, box.z));
        return uv;
    });
}

int GenerateUVsCylindrical(Geometry& mesh, int set, bool worldUnits)
{
    const Axes box = AxesOf(mesh, worldUnits);
    return Write(mesh, set, [&](const D3DXVECTOR3& p, const D3DXVECTOR3& n) {
        float v = p.y / box.y.divisor;
        v = v - 0.5F;
        v = v - box.y.center;
        return D3DXVECTOR2(Turn(n), -v);
    });
}

int GenerateUVsSpherical(Geometry& mesh, int set, bool /*worldUnits*/)
{
    const float v = std::acos(0.0F) / kPi;
    return Write(mesh, set, [v](const D3DXVECTOR3&, const D3DXVECTOR3& n) { return D3DXVECTOR2(Turn(n), v); });
}

}  // namespace Models

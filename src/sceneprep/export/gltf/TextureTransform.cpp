#include <sceneprep/export/gltf/TextureTransform.h>

#include <sceneprep/export/gltf/Placement.h>

#include <cmath>

namespace Sceneprep::Gltf
{

namespace
{

using tinygltf::Value;

/// What happens to (u, v, 1), by columns: u' = a u + c v + x, v' = b u + d v + y.
struct Affine2
{
    double a, b, c, d, x, y;
};

/// The same movement where v counts downwards: turned over, moved, turned over.
Affine2 CountedDownwards(const D3DXMATRIX& m)
{
    const double v = static_cast<double>(m._22) + m._42;
    return {m._11, -m._12, -m._21, m._22, static_cast<double>(m._41) + m._21, 1 - v};
}

Value Pair(double first, double second) { return Value(Value::Array{Value(first), Value(second)}); }

}  // namespace

Value TextureTransform(const D3DXMATRIX& matrix)
{
    if (!IsFinite(matrix))
        return {};
    const Affine2 m = CountedDownwards(matrix);
    // The format's matrix is a translation times a rotation by r times a scale:
    // u' = sx cos r u + sy sin r v + x, v' = -sx sin r u + sy cos r v + y.
    const double rotation = std::atan2(-m.b, m.a);
    const double scaleX = std::hypot(m.a, m.b);
    const double determinant = m.a * m.d - m.b * m.c;
    const double scaleY = std::copysign(std::hypot(m.c, m.d), determinant);

    Value::Object transform;
    if (m.x != 0 || m.y != 0)
        transform["offset"] = Pair(m.x, m.y);
    if (rotation != 0)
        transform["rotation"] = Value(rotation);
    if (scaleX != 1 || scaleY != 1)
        transform["scale"] = Pair(scaleX, scaleY);
    return transform.empty() ? Value() : Value(std::move(transform));
}

}  // namespace Sceneprep::Gltf

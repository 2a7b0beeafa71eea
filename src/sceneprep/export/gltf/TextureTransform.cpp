#include <sceneprep/export/gltf/TextureTransform.h>

#include <sceneprep/export/gltf/Placement.h>

#include <cmath>

namespace Sceneprep::Gltf
{

namespace
{

/// An affine map of the plane: u' = a u + c v + x, v' = b u + d v + y.
struct Affine2
{
    double a, b, c, d, x, y;
};

/// Returns the same transform for v counted downwards.
Affine2 CountedDownwards(const D3DXMATRIX& m)
{
    const double v = static_cast<double>(m._22) + m._42;
    return {m._11, -m._12, -m._21, m._22, static_cast<double>(m._41) + m._21, 1 - v};
}

}  // namespace

Json TextureTransform(const D3DXMATRIX& matrix)
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

    Json transform;
    if (m.x != 0 || m.y != 0)
        transform["offset"] = Json::array({m.x, m.y});
    if (rotation != 0)
        transform["rotation"] = rotation;
    if (scaleX != 1 || scaleY != 1)
        transform["scale"] = Json::array({scaleX, scaleY});
    return transform;
}

}  // namespace Sceneprep::Gltf

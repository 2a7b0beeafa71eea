#include <sceneprep/assimp/CameraFrame.h>

#include <importing/math/Products.h>

#include <cmath>

namespace Sceneprep
{

namespace
{

using Importing::Cross;
using Importing::Dot;

constexpr float kSmallest = 1e-6F;

D3DXVECTOR3 Unit(const D3DXVECTOR3& v)
{
    D3DXVECTOR3 unit;
    return *D3DXVec3Normalize(&unit, &v);
}

/// Returns an axis that is not nearly parallel to the direction.
D3DXVECTOR3 SomethingAcross(const D3DXVECTOR3& direction)
{
    return std::fabs(direction.y) < 0.9F ? D3DXVECTOR3(0, 1, 0) : D3DXVECTOR3(1, 0, 0);
}

}  // namespace

D3DXMATRIX OffsetFromFrame(const CameraFrame& frame)
{
    const D3DXVECTOR3& p = frame.position;
    const D3DXVECTOR3 z = Unit(frame.forward);
    if (Dot(z, z) < kSmallest)
        return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, p.x, p.y, p.z, 1};

    D3DXVECTOR3 across = Cross(Unit(frame.up), z);
    if (Dot(across, across) < kSmallest)
        across = Cross(SomethingAcross(z), z);
    const D3DXVECTOR3 x = Unit(across);
    const D3DXVECTOR3 y = Cross(z, x);
    return {x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0, p.x, p.y, p.z, 1};
}

CameraFrame FrameFromOffset(const D3DXMATRIX& m)
{
    return {
        .position = {m._41, m._42, m._43}, .forward = Unit({m._31, m._32, m._33}), .up = Unit({m._21, m._22, m._23})};
}

float OtherFieldOfView(float radians, float ratio) { return 2 * std::atan(std::tan(radians / 2) * ratio); }

}  // namespace Sceneprep

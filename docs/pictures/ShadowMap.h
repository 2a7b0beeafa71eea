#pragma once

#include <importing/math/D3DXMath.h>
#include <pictures/Camera.h>

#include <array>
#include <vector>

namespace Pictures
{

/// Tells how much of a distant light reaches a point.
class ShadowMap
{
public:
    /// @param toLight  unit vector towards the light
    /// @param center, radius  the ball in which things may stand
    /// @param size  the map's width and height in cells
    ShadowMap(const D3DXVECTOR3& toLight, const D3DXVECTOR3& center, float radius, int size);

    /// A triangle that keeps light away.
    void AddTriangle(const D3DXVECTOR3& a, const D3DXVECTOR3& b, const D3DXVECTOR3& c);

    /// @param faceNormal  unit normal of the face on which the point lies
    /// @return the share of the light, 0 to 1.
    float LightAt(const D3DXVECTOR3& point, const D3DXVECTOR3& faceNormal) const;

private:
    /// Cells across and down, and the distance to the light's plane.
    ScreenPoint ToMap(const D3DXVECTOR3& point) const;

    D3DXVECTOR3 toLight_;
    D3DXVECTOR3 right_;
    D3DXVECTOR3 up_;
    D3DXVECTOR3 center_;
    float radius_;
    int size_;
    std::vector<float> depths_;
};

}  // namespace Pictures

#pragma once

#include <importing/math/D3DXMath.h>

namespace Sceneprep
{

/// How cameras and lights stand in their node, by three vectors. As an offset matrix: an unmoved camera stands at the
/// origin, looks along +z and has +y upwards.
struct CameraFrame
{
    D3DXVECTOR3 position;
    D3DXVECTOR3 forward;
    D3DXVECTOR3 up;
};

/// @return the matrix that carries the unmoved camera into the frame; a rotation and a translation. Where forward and
///         up span no plane, some other upward direction is taken; without a forward direction there is no rotation.
D3DXMATRIX OffsetFromFrame(const CameraFrame& frame);

/// @return position, unit forward and unit up direction of a camera that the matrix has carried.
CameraFrame FrameFromOffset(const D3DXMATRIX& offset);

/// The field of view across the other side of a picture, in radians, by the tangents of the half angles.
/// @param ratio  length of the asked side divided by the given one
float OtherFieldOfView(float radians, float ratio);

}  // namespace Sceneprep

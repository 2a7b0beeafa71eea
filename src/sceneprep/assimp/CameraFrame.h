#pragma once

#include <importing/math/D3DXMath.h>

namespace Sceneprep
{

/// Position and orientation of a camera or light in its node, as three vectors. The identity as offset matrix means: at
/// the origin, looking along +z, with +y up.
struct CameraFrame
{
    D3DXVECTOR3 position;
    D3DXVECTOR3 forward;
    D3DXVECTOR3 up;
};

/// Computes the offset matrix of a frame: a rotation and a translation. If forward and up are parallel, another up
/// direction is used; if forward is the zero vector, the matrix has no rotation.
D3DXMATRIX OffsetFromFrame(const CameraFrame& frame);

/// Returns position, unit forward and unit up direction of a camera with this offset matrix.
CameraFrame FrameFromOffset(const D3DXMATRIX& offset);

/// Converts the field of view along one side of the image into that along the other side, in radians.
/// @param ratio  length of the other side divided by the length of the given side
float OtherFieldOfView(float radians, float ratio);

}  // namespace Sceneprep

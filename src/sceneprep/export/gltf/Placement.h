#pragma once

#include <importing/math/D3DXMath.h>
#include <sceneprep/model/Json.h>

#include <optional>

namespace Sceneprep::Gltf
{

/// A transform in three parts, applied in this order.
struct Parts
{
    D3DXVECTOR3 scale;
    D3DXQUATERNION rotation;
    D3DXVECTOR3 translation;
};

/// Returns whether every element is a finite number.
bool IsFinite(const D3DXMATRIX& matrix);

/// Splits a matrix without shear; the x scale is negative if the matrix mirrors. The rotation and the translation of a
/// singular matrix are those of its singular value decomposition.
Parts SplitShearFree(const D3DXMATRIX& matrix);

/// Two transforms whose product can be any affine matrix: first the rotation `inner`, then `outer`.
struct ShearedParts
{
    D3DXQUATERNION inner;
    Parts outer;
};

/// Splits a matrix by its singular values: rotation, scale along the axes, rotation, translation.
ShearedParts SplitSheared(const D3DXMATRIX& matrix);

/// Sets the matrix of a node, bit for bit, except the fourth column, which is (0, 0, 0, 1) in this format. Sets nothing
/// for the identity.
void SetMatrix(const D3DXMATRIX& matrix, Json& node);

/// Sets translation, rotation and scale of a node, as animated nodes need them.
void SetParts(const Parts& parts, Json& node);

/// Sets the rotation of a node that has no transform yet.
void SetRotation(const D3DXQUATERNION& rotation, Json& node);

/// Sets the transform of a node. Nodes of this format have no shear: for a sheared matrix, the node gets the outer
/// transform. Sets nothing for a matrix that is not finite.
/// @return the inner rotation, for a child that gets the content of the node; nothing without shear
std::optional<D3DXQUATERNION> Place(const D3DXMATRIX& matrix, Json& node);

}  // namespace Sceneprep::Gltf

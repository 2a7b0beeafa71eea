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

/// Splits a matrix without shear; the x scale is negative where the matrix mirrors. Of a singular matrix, rotation and
/// translation are those of its singular value decomposition.
Parts SplitShearFree(const D3DXMATRIX& matrix);

/// Two transforms that make up any affine matrix: first the rotation `inner`, then `outer`.
struct ShearedParts
{
    D3DXQUATERNION inner;
    Parts outer;
};

/// Splits a matrix by its singular values: rotation, scale along the axes, rotation, translation.
ShearedParts SplitSheared(const D3DXMATRIX& matrix);

/// Sets the matrix of a node, bit for bit; nothing is set for the identity. The fourth column is taken as (0, 0, 0, 1),
/// as the format demands.
void SetMatrix(const D3DXMATRIX& matrix, Json& node);

/// Sets translation, rotation and scale of a node, as animated nodes need them.
void SetParts(const Parts& parts, Json& node);

/// Sets the rotation of a node that has no transform yet.
void SetRotation(const D3DXQUATERNION& rotation, Json& node);

/// Sets the transform of a node. Nodes of this format cannot shear: where a matrix does, the node gets the outer
/// transform. A matrix that is not finite sets nothing.
/// @return the inner rotation, which a child has to add and which then holds all that the node should; none without
///         shear.
std::optional<D3DXQUATERNION> Place(const D3DXMATRIX& matrix, Json& node);

}  // namespace Sceneprep::Gltf

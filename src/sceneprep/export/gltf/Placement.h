#pragma once

#include <importing/math/D3DXMath.h>
#include <sceneprep/export/gltf/TinyGltf.h>

#include <optional>

namespace Sceneprep::Gltf
{

/// A placement in three parts, applied in this order.
struct Parts
{
    D3DXVECTOR3 scale;
    D3DXQUATERNION rotation;
    D3DXVECTOR3 translation;
};

/// @return whether every element is a finite number.
bool IsFinite(const D3DXMATRIX& matrix);

/// The parts of a matrix without shear; mirroring is carried by the x scale. A matrix that flattens keeps its place and
/// turn.
Parts SplitShearFree(const D3DXMATRIX& matrix);

/// Two placements that make up any affine matrix: first turn by `inner`, then place by `outer`.
struct ShearedParts
{
    D3DXQUATERNION inner;
    Parts outer;
};

/// Splits a matrix by its singular values: rotation, scale along the axes, rotation, translation.
ShearedParts SplitSheared(const D3DXMATRIX& matrix);

/// Gives a node its place as a matrix, bit by bit; nothing is written for the identity. The fourth column is taken as
/// (0, 0, 0, 1), which the format asks for.
void SetMatrix(const D3DXMATRIX& matrix, tinygltf::Node& node);

/// Gives a node its place in parts, as nodes that move need it.
void SetParts(const Parts& parts, tinygltf::Node& node);

/// Turns a node that has no place yet.
void SetRotation(const D3DXQUATERNION& rotation, tinygltf::Node& node);

/// Gives a node its place. The nodes of this format cannot shear: of a matrix that does, the node takes the outer
/// placement. A matrix that is not finite leaves the node where its parent is.
/// @return the inner turn that a child has to add, which then carries all that the node should; none without shear.
std::optional<D3DXQUATERNION> Place(const D3DXMATRIX& matrix, tinygltf::Node& node);

}  // namespace Sceneprep::Gltf

#pragma once

#include <importing/math/Products.h>
#include <importing/plugin/SceneContainer.h>

#include <optional>
#include <vector>

namespace Pipeline
{

using Importing::Product;

/// The nodes that are reachable from the scene's root: the root first, parents before children, siblings in the order
/// of their list. Empty if the scene has no root.
struct NodeWalk
{
    std::vector<int> order;
    std::vector<int> parent;  ///< [nodes] index of the parent; -1 for the root and for nodes that are not reached
};

/// Walks the hierarchy without recursion, in linear time. A node is visited once, below the first parent that
/// references it, so cycles end.
/// @throws std::out_of_range if a child index is not valid.
NodeWalk WalkFromRoot(Importing::SceneContainer& scene);

/// Returns for each reached node [nodes] its transform in the space of the root, without the root's own local matrix.
/// The result is the identity for nodes that are not reached.
std::vector<D3DXMATRIX> MatricesInRootFrame(Importing::SceneContainer& scene, const NodeWalk& walk);

/// Returns for each reached node [nodes] its world matrix: its transform in the space of the root, times the root's
/// local matrix.
std::vector<D3DXMATRIX> WorldMatricesOf(Importing::SceneContainer& scene, const NodeWalk& walk);

bool IsIdentity(const D3DXMATRIX& matrix);

/// Returns whether the matrix mirrors: its determinant is negative by more than rounding. A singular matrix does not.
bool IsMirroring(const D3DXMATRIX& matrix);

/// Returns whether the matrix consists of scale, rotation and translation: its axes are at right angles. False for a
/// singular matrix.
bool IsShearFree(const D3DXMATRIX& matrix);

/// Returns the inverse of an affine matrix; nothing if it is singular.
std::optional<D3DXMATRIX> InverseOf(const D3DXMATRIX& matrix);

}  // namespace Pipeline

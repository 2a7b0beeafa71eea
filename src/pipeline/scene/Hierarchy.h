#pragma once

#include <importing/math/Products.h>
#include <importing/plugin/SceneContainer.h>

#include <optional>
#include <vector>

namespace Pipeline
{

using Importing::Product;

/// The nodes that can be reached from the scene's root, parents before children, siblings in the order of their list;
/// the first is the root. Empty when the scene has no root.
struct NodeWalk
{
    std::vector<int> order;
    std::vector<int> parent;  ///< [nodes] index of the parent; -1 for the root and for nodes that are not reached
};

/// Walks without recursion, so that depth does not matter. A node is visited once, under the first parent that lists
/// it, so a cycle ends the walk.
/// @throws std::out_of_range when a child list leads outside the node library.
NodeWalk WalkFromRoot(Importing::SceneContainer& scene);

/// @return for each reached node [nodes] its placement in the frame of the root; the root's own local matrix is not
///         part of it. Identity for nodes that are not reached.
std::vector<D3DXMATRIX> MatricesInRootFrame(Importing::SceneContainer& scene, const NodeWalk& walk);

/// @return for each reached node [nodes] its world matrix: its placement in the frame of the root, carried by the
/// root's
///         local matrix.
std::vector<D3DXMATRIX> WorldMatricesOf(Importing::SceneContainer& scene, const NodeWalk& walk);

bool IsIdentity(const D3DXMATRIX& matrix);

/// @return whether the matrix turns a left hand into a right one. Not so one that flattens, whatever rounding says.
bool IsMirroring(const D3DXMATRIX& matrix);

/// @return whether the axes stay at right angles, so that scale, rotation and translation make up the matrix. False
///         for one that flattens.
bool IsShearFree(const D3DXMATRIX& matrix);

/// @return the matrix that undoes an affine one; nothing when it flattens.
std::optional<D3DXMATRIX> InverseOf(const D3DXMATRIX& matrix);

}  // namespace Pipeline
